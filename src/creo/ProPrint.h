// Prints of what a window shows, into a file.
#pragma once

#include "creo/ProDrawing.h"

namespace creo {

struct ProPrintPrinterOptions {
  std::wstring type;  // "TIFF"
  int dotsPerInch = 300;
};
// What is printed, and how large: Creo's numbers.
enum class ProPrintUse : int { wholeSheet = 1, asShown = 2 };
struct ProPrintMdlOptions {
  ProPrintUse use = ProPrintUse::asShown;
  int scaling = 1;  // 0: in true size, 1: to the paper's
  int sheets = 0;   // 3: the current one alone
};
struct ProPrintPlacementOptions {
  double scale = 1;
};
struct ProPrintOptions {
  ProPrintPrinterOptions printer;
  ProPrintMdlOptions model;
  ProPrintPlacementOptions placement;
  ProSheetSize paper = ProSheetSize::a4;
  double width = 0, height = 0;  // of paper of a size of its own (ProSheetSize::variableMm), in mm
};

// What the printer of that kind begins with. ProNotFound: there is no such printer; this session has "TIFF". Then what
// a model's prints begin with, and the placement in force.
Got<ProPrintPrinterOptions> ProPrintPrinterOptionsGet(const std::wstring& type);
Got<ProPrintMdlOptions> ProPrintMdlOptionsGet(ProMdl model);
Got<ProPrintPlacementOptions> ProPrintPlacementOptionsGet(ProMdl model);
// Writes the print of a window, in lines and unshaded; the window needs no graphics. path: whole, or a name in plot_dir
// or the working folder; an old file is replaced once the new one is whole. The paper lies as the model's sheet does, a
// solid's across. ProNotFound: no such window, or it shows nothing; ProBadInputs: paper without a size;
// ProGeneralError: a solid without geometry, the message area says so; ProCantWrite.
ProError ProPrintExecute(int window, const ProPrintOptions& options, const std::wstring& path);

}  // namespace creo

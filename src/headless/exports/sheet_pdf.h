// Sheets as the pages of a PDF file.
#pragma once

#include <span>
#include <string>

#include "creo/ProPDF.h"
#include "headless/pictures/sheet_picture.h"

namespace headless {

struct PdfForm {
  creo::ProPDFfonts fonts = creo::ProPDFfonts::embedded;
  creo::ProPDFcolor color = creo::ProPDFcolor::color;
  creo::ProPDFlayers layers = creo::ProPDFlayers::visible;
  int lineCap = 1, lineJoin = 1;  // 0 butt and mitre, 1 round, 2 square and bevel
  bool bookmarks = false;         // each sheet's name leads to its page
  std::wstring title, author, subject;
  std::wstring fontFile;  // of the embedded face, as a TrueType file of the system; empty: there is none
};
struct PdfPage {
  std::wstring name;  // of the sheet
  SheetPicture picture;
};
// fault: why there is no file; empty for none.
struct PdfMade {
  std::string bytes;
  std::wstring fault;
};
// Pages of the sheets' true size. Lines have their widths and dashes, circles are curves within 3e-4 of their radius,
// ends of strokes as thick as they are long stay square, so that codes keep their modules. A sheet that is too small or
// too large for a page is a fault. Without a file of a face texts are written by the name of one, in Latin letters.
PdfMade sheetPdf(std::span<const PdfPage> pages, const PdfForm& form);

}  // namespace headless

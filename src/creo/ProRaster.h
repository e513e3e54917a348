// Pictures of what a window shows.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

enum class ProRasterDepth : int { bits8 = 0, bits24 = 1, bits8Grey = 2, bits24Color = 3 };
enum class ProRasterType : int { bitmap = 0, tiff = 1, jpeg = 2 };

struct ProRasterForm {
  ProRasterDepth depth = ProRasterDepth::bits24Color;
  double width = 0, height = 0;  // inches
  int dotsPerInch = 0;
  ProRasterType type = ProRasterType::jpeg;
};
// Writes what the window shows: a solid shaded in its active view; drawings are printed. path: with its extension. An
// old file is replaced once the new one is whole. ProNotFound: no such window; ProNoGraphics without graphics;
// ProInvalidType: the window shows a drawing or a format; ProBadInputs: a size that is no picture (at most 10,000 dots
// an edge); ProGeneralError: a solid without geometry; ProCantWrite.
ProError ProRasterFileWrite(int window, const ProRasterForm& form, const std::wstring& path);

}  // namespace creo

// Inside this folder, for kelvane-import: files of other systems are loaded into the library.
#pragma once

#include <STEPControl_Reader.hxx>
#include <string>
#include <string_view>
#include <vector>

#include "headless/geometry/exchange_shapes.h"

namespace headless::geometry {

// What a file says of its whole.
struct Loaded {
  double unit = 1;                     // the length of its unit in mm
  double resolution = 0;               // of its points, in mm; 0: it doesn't say
  std::vector<std::wstring> warnings;  // of the load check
};
// These throw ShapeFault where the file is none of that format, holds no model, or points that are no points.
Loaded loadStep(std::string_view bytes, const ExchangeDocument& document);
Loaded loadIges(const std::string& path, const ExchangeDocument& document);
// All of a STEP file as one shape, in mm.
TopoDS_Shape loadShape(std::string_view bytes, Loaded& loaded);

}  // namespace headless::geometry

// Inside this folder only: the body that a STEP text holds.
#pragma once

#include <TopoDS_Shape.hxx>
#include <string>
#include <vector>

namespace headless::geometry {

// In mm. shape: null with a fault.
struct ForeignBody {
  TopoDS_Shape shape;
  std::wstring fault;
  std::vector<std::wstring> warnings;
};

}  // namespace headless::geometry

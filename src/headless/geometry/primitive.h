// What bodies are made of, with all numbers worked out, in one system of units.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "creo/ProTransform.h"

namespace headless::geometry {

enum class PrimitiveKind { box, cylinder, cone, sphere, extrusion, revolution, hole, import };
enum class PrimitiveUse { add, cut };

// A box has a corner at the origin of its placement; all that is round stands on it, its axis along z.
struct Primitive {
  PrimitiveKind kind = PrimitiveKind::box;
  PrimitiveUse use = PrimitiveUse::add;
  creo::ProVector size;                        // of a box
  double diameter = 0, topDiameter = 0;        // a cone has both, a sphere's origin is its centre
  double length = 0;                           // along z; 0 of a hole: through all
  double angle = 360;                          // of a revolution, in degrees
  std::vector<std::array<double, 2>> profile;  // closed: x and y of an extrusion, radius and z of a revolution
  std::wstring file;                           // STEP, of an import; a path
  std::string_view step;                       // the same as text, in place of a file; it outlives the primitive
  double scale = 1;                            // from the file's millimetres
  creo::ProTransform placement;
};

}  // namespace headless::geometry

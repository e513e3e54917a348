// Solid bodies. This folder alone knows the library that builds and measures them.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "creo/ProSolid.h"
#include "headless/geometry/measured.h"
#include "headless/geometry/primitive.h"

namespace headless::geometry {

// A body that was built; it never changes.
class Body;
using BodyPtr = std::shared_ptr<const Body>;

// fault: why there is no body, such as "primitive 2: the diameter must be over 0"; empty for none. warnings: what of an
// import is doubtful, named likewise.
struct Built {
  BodyPtr body;
  std::wstring fault;
  std::vector<std::wstring> warnings;
  int faulty = 0;  // the place of the primitive that it is about, from 1; 0: there is none, or it can't be told
};
// Each primitive adds to what those before it left, or cuts from it. Gives no body where there are none.
Built build(const std::vector<Primitive>& primitives);
// Several at once, on all cores of the machine. Nothing for one that only build() itself can tell of. None of them may
// be imported: what a file holds is asked for by the session's own thread.
std::vector<std::optional<Built>> buildAll(const std::vector<std::vector<Primitive>>& bodies);

// Measured once, then kept. Throws std::runtime_error, as outline does, for what the library can't measure.
const Measured& measure(const Body& body);

// The exact box around the body, in the coordinates that `into` leads to.
creo::ProOutline outline(const Body& body, const creo::ProTransform& into);

}  // namespace headless::geometry

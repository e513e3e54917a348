// In place of the library of solids, where it isn't built in: no body can be built, and whoever asks for one is told
// so. Files of other systems are neither read nor written, and views show nothing.
#include <stdexcept>

#include "headless/geometry/exchange.h"
#include "headless/geometry/face_prints.h"
#include "headless/geometry/faces.h"
#include "headless/geometry/mesh.h"
#include "headless/geometry/seen.h"

namespace headless::geometry {
namespace {

constexpr const wchar_t* kWithout = L"this program was built without solids";

// What is asked of a body, and there are none.
[[noreturn]] void refuse() { throw std::logic_error("a body, in a program that was built without solids"); }

}  // namespace

class Body {};

Built build(const std::vector<Primitive>& primitives) {
  if (primitives.empty()) return {};
  return {nullptr, kWithout, {}, 0};
}
const Measured& measure(const Body& /*body*/) { refuse(); }
creo::ProOutline outline(const Body& /*body*/, const creo::ProTransform& /*into*/) { refuse(); }
std::vector<FacePrint> facePrints(const Body& /*body*/) { refuse(); }
const std::vector<Face>& faces(const Body& /*body*/) { refuse(); }
Mesh mesh(const Body& /*body*/, double /*deflection*/, double /*turn*/) { refuse(); }

ExchangeBytes writeExchange(const ExchangeNode& /*root*/, const ExchangeForm& /*form*/) { return {{}, kWithout}; }
ExchangeRead readExchange(const std::wstring& /*path*/, ExchangeFormat /*format*/, ImportAs /*as*/) {
  ExchangeRead read;
  read.fault = kWithout;
  return read;
}
ExchangeBytes stepText(const Body& /*body*/, double /*unit*/) { return {{}, kWithout}; }

Seen seen(const Sight& sight) {
  Seen nothing;
  if (!sight.bodies.empty()) nothing.reason = kWithout;
  return nothing;
}
// There is nothing to work out beforehand.
void seeAhead(const std::vector<Sight>&) {}
void readyToSeeAhead() {}
void forgetSeen() {}

}  // namespace headless::geometry

#include "creo/ProPart.h"

#include <cmath>

#include "headless/creo/operation.h"
#include "headless/model/density.h"

namespace creo {

using headless::Model;
using State = headless::Session::State;

ProError ProPartDensitySet(ProMdl part, double density) {
  return headless::onModel("ProPartDensitySet", part, [&](State&, Model& m) -> ProError {
    if (m.type() != ProMdlType::part || !std::isfinite(density) || density <= 0) return ProBadInputs;
    headless::setPartDensity(m, density);
    return ProNoError;
  });
}

}  // namespace creo

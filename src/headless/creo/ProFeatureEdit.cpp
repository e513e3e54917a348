#include "creo/ProFeatureEdit.h"

#include "creo/ProXsec.h"
#include "headless/creo/solid_operation.h"
#include "headless/model/first_features.h"

namespace creo {

using headless::Model;
using headless::NewDatum;
using headless::onSolid;
using State = headless::Session::State;

namespace {

Got<ProFeature> added(const Model& m, NewDatum datum) {
  const auto id = headless::addDatum(m, std::move(datum));
  if (!id) return id.error;
  return ProFeature{m.handle, id.value};
}

}  // namespace

Got<ProFeature> ProDefaultCsysCreate(ProMdl solid, const std::wstring& name) {
  return onSolid("ProDefaultCsysCreate", solid, [&](State&, Model& m) {
    return added(m, {.type = kCsysFeature,
                     .typeName = "COORDINATE SYSTEM",
                     .subtype = "DEFAULT",
                     .name = name,
                     .list = &headless::SolidRecord::coordinateSystems,
                     .placement = nullptr});
  });
}

Got<ProFeature> ProDefaultPlaneCreate(ProMdl solid, const std::wstring& name, ProDefaultPlane plane) {
  return onSolid("ProDefaultPlaneCreate", solid, [&](State&, Model& m) {
    static constexpr const char* kSubtypes[] = {"DEFAULT X", "DEFAULT Y", "DEFAULT Z"};
    auto across = std::make_unique<headless::PlacementRecord>();
    across->zAxis = {0, 0, 0};
    across->zAxis[static_cast<std::size_t>(plane)] = 1;
    return added(m, {.type = kDatumPlaneFeature,
                     .typeName = "DATUM PLANE",
                     .subtype = kSubtypes[static_cast<int>(plane)],
                     .name = name,
                     .list = &headless::SolidRecord::planes,
                     .placement = std::move(across)});
  });
}

}  // namespace creo

#include "creo/ProXsec.h"

#include <cmath>
#include <utility>

#include "headless/creo/solid_operation.h"
#include "headless/model/features.h"
#include "headless/model/new_features.h"
#include "headless/model/states.h"
#include "text/encoding.h"

namespace creo {

using headless::CrossSectionRecord;
using headless::Model;
using headless::onSolid;
using State = headless::Session::State;

namespace {

// What the distance is made of: a dimension's number is positive, its direction is told beside it.
int dimensionOf(headless::ModelRecord& record, double distance) {
  headless::DimensionRecord& added = headless::addDimension(record, std::abs(distance));
  added.flipped = distance < 0;
  return added.id;
}

Got<CrossSectionRecord*> create(Model& model, const std::wstring& name, const ProFeature& plane) {
  const auto feature = plane.owner == model.handle ? headless::featureOf(model, plane.id) : std::nullopt;
  if (!feature || headless::featureType(*feature) != kDatumPlaneFeature) return ProBadInputs;
  auto& sections = model.document->record.crossSections;
  if (headless::recordNamed(sections, text::toUtf8(name))) return ProExists;
  CrossSectionRecord& added = headless::addRecord(sections, text::toUtf8(name));
  added.plane = headless::featureColumn(*feature);
  model.document->touch(nullptr);
  return &added;
}

ProModelitem itemOf(const Model& model, const CrossSectionRecord& section) {
  return {ProItemType::crossSection, section.id, model.handle, {}};
}

}  // namespace

Got<ProModelitem> ProXsecPlanarCreate(ProMdl solid, const std::wstring& name, const ProFeature& plane) {
  return onSolid("ProXsecPlanarCreate", solid, [&](State&, Model& m) -> Got<ProModelitem> {
    if (name.empty()) return ProGeneralError;
    const auto made = create(m, name, plane);
    if (!made) return made.error;
    return itemOf(m, *made.value);
  });
}

Got<ProModelitem> ProXsecParallelCreate(ProMdl solid, const std::wstring& name, const ProFeature& plane,
                                        double distance) {
  return onSolid("ProXsecParallelCreate", solid, [&](State&, Model& m) -> Got<ProModelitem> {
    if (name.empty()) return ProBadInputs;
    if (!std::isfinite(distance)) return ProGeneralError;
    const auto made = create(m, name, plane);
    if (!made) return made.error;
    made.value->distance = distance;
    made.value->dimension = dimensionOf(m.document->record, distance);
    return itemOf(m, *made.value);
  });
}

ProError ProXsecDelete(const ProModelitem& section) {
  return onSolid("ProXsecDelete", section.owner, [&](State&, Model& m) -> ProError {
    if (section.type != ProItemType::crossSection) return ProBadInputs;
    return headless::deleteState(m, section);
  });
}

ProError ProXsecOldToNewConvert(ProMdl solid) {
  return onSolid("ProXsecOldToNewConvert", solid, [](State&, Model& m) -> ProError {
    for (CrossSectionRecord& section : m.document->record.crossSections)
      if (std::exchange(section.oldForm, false)) m.document->touch(nullptr);
    return ProNoError;
  });
}

}  // namespace creo

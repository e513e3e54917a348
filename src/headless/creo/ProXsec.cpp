#include "creo/ProXsec.h"

#include <cmath>
#include <utility>

#include "headless/creo/solid_operation.h"
#include "headless/model/features.h"
#include "headless/model/states.h"
#include "text/encoding.h"

namespace creo {

using headless::CrossSectionRecord;
using headless::Model;
using headless::onSolid;
using State = headless::Session::State;

namespace {

Got<ProModelitem> create(Model& model, const std::wstring& name, const ProFeature& plane, double distance) {
  const auto feature = plane.owner == model.handle ? headless::featureOf(model, plane.id) : std::nullopt;
  if (!feature || headless::featureType(*feature) != kDatumPlaneFeature) return ProBadInputs;
  if (name.empty() || !std::isfinite(distance)) return ProGeneralError;
  auto& sections = model.document->record.crossSections;
  if (headless::recordNamed(sections, text::toUtf8(name))) return ProExists;
  CrossSectionRecord& added = headless::addRecord(sections, text::toUtf8(name));
  added.plane = headless::featureColumn(*feature);
  added.distance = distance;
  model.document->touch(nullptr);
  return ProModelitem{ProItemType::crossSection, added.id, model.handle, {}};
}

}  // namespace

Got<ProModelitem> ProXsecPlanarCreate(ProMdl solid, const std::wstring& name, const ProFeature& plane) {
  return onSolid("ProXsecPlanarCreate", solid, [&](State&, Model& m) { return create(m, name, plane, 0); });
}

Got<ProModelitem> ProXsecParallelCreate(ProMdl solid, const std::wstring& name, const ProFeature& plane,
                                        double distance) {
  return onSolid("ProXsecParallelCreate", solid, [&](State&, Model& m) { return create(m, name, plane, distance); });
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

// Accuracy, tolerance class, units and regeneration of solids.
#include "creo/ProSolid.h"
#include "headless/creo/solid_operation.h"
#include "headless/model/accuracy.h"
#include "headless/model/regenerate.h"
#include "headless/model/units.h"
#include "text/encoding.h"

namespace creo {

using headless::Model;
using headless::onSolid;
using State = headless::Session::State;

namespace {

void tellFeature(State& state, headless::RegeneratedFeature feature) {
  ProNotification notification;
  notification.type = ProNotifyType::featureRegenerated;
  notification.model = feature.model;
  notification.feature = feature.id;
  notification.name = std::move(feature.name);
  state.notify(notification);
}

}  // namespace

Got<ProAccuracy> ProSolidAccuracyGet(ProMdl solid) {
  return onSolid("ProSolidAccuracyGet", solid,
                 [](State&, Model& m) -> Got<ProAccuracy> { return headless::accuracyOf(m.document->record); });
}

Got<ProToleranceClass> ProSolidModelclassGet(ProMdl solid) {
  return onSolid("ProSolidModelclassGet", solid, [](State&, Model& m) -> Got<ProToleranceClass> {
    if (m.document->record.toleranceClass == ProToleranceClass::none) return ProNotFound;
    return m.document->record.toleranceClass;
  });
}

Got<std::wstring> ProMdlPrincipalunitsystemGet(ProMdl model) {
  return onSolid("ProMdlPrincipalunitsystemGet", model, [](State&, Model& m) -> Got<std::wstring> {
    return text::fromUtf8(headless::systemName(m.document->record.units));
  });
}

Got<ProRegenerationStatus> ProSolidRegenerationstatusGet(ProMdl solid) {
  return onSolid("ProSolidRegenerationstatusGet", solid,
                 [](State&, Model& m) -> Got<ProRegenerationStatus> { return headless::regenerationStatus(m); });
}

ProError ProSolidRegenerate(ProMdl solid, unsigned flags) {
  return onSolid("ProSolidRegenerate", solid, [&](State& state, Model&) -> ProError {
    state.raise(ProNotifyType::regenerateBefore, solid);
    // A handler may have erased the model.
    const bool instancesToo = (flags & kRegenerateUpdateInstances) != 0;
    std::vector<headless::RegeneratedFeature> features;
    const bool heard = state.events.isHeard(ProNotifyType::featureRegenerated);
    const ProError result =
        headless::regenerate(state.models, state.bodies, solid, instancesToo, heard ? &features : nullptr);
    if (result == ProBadInputs) return result;
    for (headless::RegeneratedFeature& feature : features) tellFeature(state, std::move(feature));
    state.raise(ProNotifyType::regenerateAfter, solid);
    return result;
  });
}

}  // namespace creo

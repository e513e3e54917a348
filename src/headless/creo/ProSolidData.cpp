// Accuracy, tolerance class, units and regeneration of solids.
#include "creo/ProSolid.h"
#include "headless/creo/solid_operation.h"
#include "headless/model/regenerate.h"
#include "headless/model/units.h"
#include "text/encoding.h"

namespace creo {

using headless::Model;
using headless::onSolid;
using State = headless::Session::State;

Got<ProAccuracy> ProSolidAccuracyGet(ProMdl solid) {
  return onSolid("ProSolidAccuracyGet", solid, [](State&, Model& m) -> Got<ProAccuracy> {
    const auto& accuracy = m.document->record.accuracy;
    if (!accuracy) return ProNotFound;
    return ProAccuracy{accuracy->kind, accuracy->value};
  });
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
  return onSolid("ProSolidRegenerate", solid, [&](State& state, Model& m) -> ProError {
    ProNotification told;
    told.type = ProNotifyType::regenerateBefore;
    told.model = solid;
    told.name = m.name;
    told.typeText = typeExtension(m.type());
    state.notify(told);
    // A handler may have erased the model.
    const ProError result = headless::regenerate(state.models, solid, (flags & kRegenerateUpdateInstances) != 0);
    if (result == ProBadInputs) return result;
    told.type = ProNotifyType::regenerateAfter;
    state.notify(told);
    return result;
  });
}

}  // namespace creo

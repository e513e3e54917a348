#include "creo/ProAsmcomp.h"

#include <algorithm>
#include <cmath>

#include "headless/creo/solid_operation.h"
#include "headless/model/features.h"
#include "headless/model/measures.h"
#include "headless/model/parameters.h"
#include "headless/model/placed.h"
#include "headless/model/raw_placement.h"
#include "headless/store/names.h"
#include "text/encoding.h"

namespace creo {

using headless::Model;
using headless::ModelFeature;
using headless::UsedModelRecord;
using headless::VariantItemRecord;
using State = headless::Session::State;

namespace {

// body: (state, model, component).
template <class Body>
auto onComponent(std::string_view name, const ProFeature& component, Body body)
    -> std::invoke_result_t<Body, State&, Model&, const ModelFeature&> {
  using Result = std::invoke_result_t<Body, State&, Model&, const ModelFeature&>;
  return headless::onSolid(name, component.owner, [&](State& state, Model& m) -> Result {
    const auto found = headless::featureOf(m, component.id);
    if (!found) return Result(ProNotFound);
    if (!found->isComponent()) return Result(ProBadInputs);
    return body(state, m, *found);
  });
}

// Null for one that the component doesn't vary.
VariantItemRecord* variedItem(const ModelFeature& component, const ProModelitem& item) {
  headless::FeatureRecord* record = component.record();
  if (!record) return nullptr;
  const auto found =
      std::find_if(record->variantItems.begin(), record->variantItems.end(), [&](const VariantItemRecord& entry) {
        if (entry.type != item.type) return false;
        return item.type == kParameterItem ? headless::sameName(entry.name, text::toUtf8(item.name))
                                           : entry.id == item.id;
      });
  return found == record->variantItems.end() ? nullptr : &*found;
}

}  // namespace

Got<bool> ProAsmcompIsPackaged(const ProFeature& component) {
  return onComponent("ProAsmcompIsPackaged", component,
                     [](State&, Model&, const ModelFeature& f) -> Got<bool> { return f.component()->packaged; });
}

Got<ProTransform> ProAsmcompPositionGet(const ProFeature& component) {
  return onComponent("ProAsmcompPositionGet", component,
                     [](State& state, Model& m, const ModelFeature& f) -> Got<ProTransform> {
                       try {
                         return headless::componentPlacement(m, *f.component());
                       } catch (const headless::MeasureFault& fault) {
                         state.showMessage(m.name + L'.' + typeExtension(m.type()) + L": " + fault.reason);
                         return ProGeneralError;
                       }
                     });
}

ProError ProAsmcompOriginSet(const ProFeature& component, const ProVector& origin) {
  return onComponent("ProAsmcompOriginSet", component, [&](State& state, Model& m, const ModelFeature& f) -> ProError {
    constexpr double kMostLength = 1e9;
    for (const double number : {origin.x, origin.y, origin.z})
      if (!(std::abs(number) <= kMostLength)) return ProBadInputs;
    UsedModelRecord& record = m.document->record.components[f.place.component];
    if (!record.packaged) {
      state.showMessage(m.name + L": the component " + headless::featureName(f) + L" is held by references");
      return ProGeneralError;
    }
    const headless::Measures wanted = {origin.x, origin.y, origin.z};
    headless::PlacementRecord place = headless::placementRecord(record.placement);
    if (place.position == wanted) return ProNoError;
    place.position = wanted;
    record.placement = headless::rawPlacement(place);
    m.document->touch(nullptr);
    return ProNoError;
  });
}

ProError ProVariantfeatDriverSet(const ProFeature& component, const ProModelitem& item, const std::wstring& parameter) {
  return onComponent("ProVariantfeatDriverSet", component,
                     [&](State& state, Model& m, const ModelFeature& f) -> ProError {
                       VariantItemRecord* varied = variedItem(f, item);
                       if (!varied) return ProNotFound;
                       const ProModelitem owner{ProItemType::feature, component.id, m.handle, {}};
                       const auto driver = headless::Parameters(state.models).first(owner, parameter);
                       if (!driver) return ProBadInputs;
                       std::string name = text::toUtf8(driver.value.id);
                       if (varied->parameter == name) return ProNoError;
                       varied->parameter = std::move(name);
                       m.document->touch(nullptr);
                       return ProNoError;
                     });
}

}  // namespace creo

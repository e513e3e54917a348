// Masses and outlines of solids, their coordinate systems and datum points, and where components stand.
#include "creo/ProDatum.h"
#include "creo/ProSolid.h"
#include "headless/creo/solid_operation.h"
#include "headless/model/datums.h"
#include "headless/model/features.h"
#include "headless/model/measures.h"
#include "headless/model/placed.h"
#include "text/encoding.h"

namespace creo {

using headless::DatumRecord;
using headless::Model;
using headless::onSolid;
using State = headless::Session::State;

namespace {

using DatumList = std::vector<DatumRecord> headless::SolidRecord::*;

// The ids of datums that are there: their places, from 1.
template <class Datum>
ProError visitDatums(std::string_view operation, ProMdl solid, DatumList list, Visitor<Datum> visitor) {
  return onSolid(operation, solid, [&](State&, Model& m) -> ProError {
    std::vector<Datum> datums;
    int id = 0;
    for (const DatumRecord& record : m.document->solid().*list) {
      ++id;
      if (headless::hasGeometry(m, record.feature)) datums.push_back({m.handle, id});
    }
    return headless::visit<Datum>(datums, visitor);
  });
}

// get: (model, datum).
template <class Datum, class Get>
auto onDatum(std::string_view operation, const Datum& datum, DatumList list, Get get)
    -> std::invoke_result_t<Get, State&, Model&, const DatumRecord&> {
  using Result = std::invoke_result_t<Get, State&, Model&, const DatumRecord&>;
  return onSolid(operation, datum.owner, [&](State& state, Model& m) -> Result {
    const auto& records = m.document->solid().*list;
    if (datum.id < 1 || static_cast<std::size_t>(datum.id) > records.size()) return Result(ProNotFound);
    const DatumRecord& record = records[static_cast<std::size_t>(datum.id) - 1];
    if (!headless::hasGeometry(m, record.feature)) return Result(ProNotFound);
    return get(state, m, record);
  });
}

Got<std::wstring> nameOf(State&, Model& m, const DatumRecord& record) { return headless::datumName(m, record); }

// Runs a body that works numbers out; a fault becomes a line of the message area.
template <class Body>
auto measuring(const State& state, const Model& m, Body body) -> std::invoke_result_t<Body> {
  try {
    return body();
  } catch (const headless::MeasureFault& fault) {
    state.models.message(m.name + L'.' + typeExtension(m.type()) + L": " + fault.reason);
    return ProGeneralError;
  }
}

Got<ProTransform> placementOf(State& state, Model& m, const DatumRecord& record) {
  return measuring(state, m, [&]() -> Got<ProTransform> { return headless::datumPlacement(m, record); });
}

// One step down a path: the component's place in `assembly`, which becomes the component's model.
Got<ProTransform> stepDown(const State& state, const Model*& assembly, int id) {
  const auto component = headless::featureOf(*assembly, id);
  if (!component || !component->isComponent() || !headless::hasGeometry(*assembly, id)) return ProNotFound;
  const headless::UsedModelRecord& record = *component->component();
  auto place = measuring(state, *assembly,
                         [&]() -> Got<ProTransform> { return headless::componentPlacement(*assembly, record); });
  assembly = headless::componentModel(state.models, *component);
  return assembly ? place : ProNotFound;
}

}  // namespace

Got<ProMassProperty> ProSolidMassPropertyGet(ProMdl solid) {
  return onSolid("ProSolidMassPropertyGet", solid, [](State& state, Model& m) { return state.bodies.mass(m); });
}

Got<ProOutline> ProSolidOutlineGet(ProMdl solid, const ProTransform* into) {
  return onSolid("ProSolidOutlineGet", solid,
                 [into](State& state, Model& m) { return state.bodies.outline(m, into ? *into : ProTransform()); });
}

ProError ProSolidCsysVisit(ProMdl solid, Visitor<ProCsys> visitor) {
  return visitDatums("ProSolidCsysVisit", solid, &headless::SolidRecord::coordinateSystems, visitor);
}

ProError ProSolidDatumPointVisit(ProMdl solid, Visitor<ProDatumPoint> visitor) {
  return visitDatums("ProSolidDatumPointVisit", solid, &headless::SolidRecord::points, visitor);
}

Got<std::wstring> ProCsysNameGet(const ProCsys& csys) {
  return onDatum("ProCsysNameGet", csys, &headless::SolidRecord::coordinateSystems, nameOf);
}

Got<std::wstring> ProDatumPointNameGet(const ProDatumPoint& point) {
  return onDatum("ProDatumPointNameGet", point, &headless::SolidRecord::points, nameOf);
}

Got<ProTransform> ProCsysDataGet(const ProCsys& csys) {
  return onDatum("ProCsysDataGet", csys, &headless::SolidRecord::coordinateSystems, placementOf);
}

Got<ProVector> ProDatumPointGet(const ProDatumPoint& point) {
  return onDatum("ProDatumPointGet", point, &headless::SolidRecord::points,
                 [](State& state, Model& m, const DatumRecord& record) -> Got<ProVector> {
                   const auto place = placementOf(state, m, record);
                   if (!place) return place.error;
                   return place.value.origin;
                 });
}

Got<ProTransform> ProAsmcomppathTrfGet(ProMdl top, const std::vector<int>& path) {
  return onSolid("ProAsmcomppathTrfGet", top, [&path](State& state, Model& m) -> Got<ProTransform> {
    ProTransform whole;
    const Model* at = &m;
    for (const int id : path) {
      const auto step = stepDown(state, at, id);
      if (!step) return step;
      whole = transformed(whole, step.value);
    }
    return whole;
  });
}

}  // namespace creo

#include "creo/ProState.h"

#include "headless/creo/solid_operation.h"
#include "headless/model/items.h"
#include "text/encoding.h"

namespace creo {

using headless::Model;
using headless::onSolid;
using State = headless::Session::State;

namespace {

std::vector<ProModelitem> itemsOf(const Model& model, ProItemType type) {
  std::vector<ProModelitem> items;
  for (const headless::NamedItem& item : headless::namedItems(model, type))
    items.push_back({type, item.id, model.handle, {}});
  return items;
}

ProError visitStates(std::string_view operation, ProMdl solid, ProItemType type, Visitor<ProModelitem> visitor) {
  return onSolid(operation, solid, [&](State&, Model& m) -> ProError {
    return headless::visit<ProModelitem>(itemsOf(m, type), visitor);
  });
}

}  // namespace

Got<ProViewNames> ProViewNamesGet(ProMdl model) {
  return headless::onModel("ProViewNamesGet", model, [](State&, Model& m) -> Got<ProViewNames> {
    // A drawing's would be the places that it is shown at, which no document has.
    if (headless::hasSheets(m.type())) return ProNotFound;
    ProViewNames names;
    for (const headless::ViewRecord& view : m.document->record.views) {
      names.names.push_back(text::fromUtf8(view.name));
      names.alternateNames.push_back(text::fromUtf8(view.alternateName));
    }
    if (names.names.empty()) return ProNotFound;
    return names;
  });
}

Got<std::vector<ProModelitem>> ProMdlCombstatesGet(ProMdl model) {
  return onSolid("ProMdlCombstatesGet", model, [](State&, Model& m) -> Got<std::vector<ProModelitem>> {
    std::vector<ProModelitem> states = itemsOf(m, ProItemType::combinedState);
    if (states.empty()) return ProNotFound;
    return states;
  });
}

Got<ProCombstateData> ProCombstateDataGet(const ProModelitem& state) {
  return onSolid("ProCombstateDataGet", state.owner, [&](State&, Model& m) -> Got<ProCombstateData> {
    if (state.type != ProItemType::combinedState) return ProBadInputs;
    const auto name = headless::itemName(m, state);
    if (!name) return name.error;
    return ProCombstateData{name.value};
  });
}

ProError ProSolidSimprepVisit(ProMdl solid, Visitor<ProModelitem> visitor) {
  return visitStates("ProSolidSimprepVisit", solid, ProItemType::simplifiedRep, visitor);
}

ProError ProSolidExpldstateVisit(ProMdl solid, Visitor<ProModelitem> visitor) {
  return visitStates("ProSolidExpldstateVisit", solid, ProItemType::explodedState, visitor);
}

ProError ProSolidCompdisplayVisit(ProMdl solid, Visitor<ProModelitem> visitor) {
  return visitStates("ProSolidCompdisplayVisit", solid, ProItemType::styleState, visitor);
}

ProError ProSolidXsecVisit(ProMdl solid, Visitor<ProModelitem> visitor) {
  return visitStates("ProSolidXsecVisit", solid, ProItemType::crossSection, visitor);
}

Got<ProXsecData> ProXsecDataGet(const ProModelitem& section) {
  return onSolid("ProXsecDataGet", section.owner, [&](State&, Model& m) -> Got<ProXsecData> {
    if (section.type != ProItemType::crossSection) return ProBadInputs;
    for (const headless::CrossSectionRecord& entry : m.document->record.crossSections)
      if (entry.id == section.id) return ProXsecData{entry.type, entry.objects};
    return ProNotFound;
  });
}

}  // namespace creo

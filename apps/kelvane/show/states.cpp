#include "kelvane/show/states.h"

#include "headless/model/items.h"
#include "headless/model/layer_rules.h"
#include "kelvane/base/words.h"
#include "kelvane/show/enum_words.h"
#include "text/encoding.h"
#include "text/numbers.h"

namespace kelvane {
namespace {

using headless::Model;
using headless::ModelRecord;

// Names of items by their ids, looked up once.
class ItemNames {
 public:
  explicit ItemNames(const Model& model) : model_(model) {}
  // "feature 20 BORE_IN".
  std::string operator()(creo::ProItemType type, int id) {
    auto [kind, fresh] = names_.try_emplace(type);
    if (fresh)
      for (const headless::NamedItem& item : headless::namedItems(model_, type))
        kind->second.try_emplace(item.id, text::toUtf8(item.name));
    std::string text = word(type) + " " + std::to_string(id);
    if (const auto found = kind->second.find(id); found != kind->second.end()) addPiece(text, found->second, " ");
    return text;
  }

 private:
  const Model& model_;
  std::map<creo::ProItemType, std::unordered_map<int, std::string>> names_;
};

Section layersOf(const Model& model) {
  Section section{"layers", {}};
  ItemNames names(model);
  for (const headless::LayerRecord& layer : model.document->record.layers) {
    std::string items;
    for (const headless::ItemRecord& item : layer.items) addPiece(items, names(item.type, item.id));
    section.rows.push_back({layer.name, word(layer.status), counted(layer.items.size(), "item"), items});
    std::string kind = layer.ruleBased ? "rules" : "";
    if (layer.associativeRules) addPiece(kind, "associative");
    if (layer.independentRules) addPiece(kind, "independent");
    if (!kind.empty()) section.rows.push_back({"", "", "by", kind});
    for (const std::string& rule : layer.rules)
      section.rows.push_back({"", "", headless::layerRule(rule) ? "rule" : "rule, finds nothing", rule});
    if (!layer.associativeRules) continue;  // else all that they found lies on the layer
    std::string found;
    for (const creo::ProModelitem& item : headless::foundByRules(model, layer))
      addPiece(found, names(item.type, item.id));
    if (!found.empty()) section.rows.push_back({"", "", "found now", found});
  }
  return section;
}

std::string activeMark(const std::string& active, const std::string& name) {
  return !name.empty() && headless::sameName(active, name) ? "active" : "";
}

Section layerStatesOf(const ModelRecord& record) {
  Section section{"layer states", {}};
  for (const headless::LayerStateRecord& state : record.layerStates) {
    std::string layers;
    for (const headless::LayerStatusRecord& layer : state.layers)
      addPiece(layers, layer.name + " " + word(layer.status));
    section.rows.push_back({state.name, layers, activeMark(record.activeLayerState, state.name)});
  }
  return section;
}

template <class Records>
void addNames(Section& section, const char* kind, const Records& records, const std::string& active) {
  std::string names;
  for (const auto& record : records)
    addPiece(names, record.name + (activeMark(active, record.name).empty() ? "" : " (active)"));
  if (!names.empty()) section.rows.push_back({kind, names});
}

Section namesOf(const ModelRecord& record) {
  Section section{"states", {}};
  addNames(section, "view", record.views, record.activeView);
  addNames(section, "exploded state", record.explodedStates, record.activeExplodedState);
  addNames(section, "style state", record.styleStates, record.activeStyleState);
  return section;
}

Section representationsOf(const Model& model) {
  Section section{"simplified representations", {}};
  ItemNames names(model);
  for (const headless::SimplifiedRepRecord& rep : model.document->record.simplifiedReps) {
    std::string items;
    for (const headless::SimplifiedRepItemRecord& item : rep.items) {
      std::string what = names(creo::ProItemType::feature, item.feature) + " " + word(item.action);
      if (!item.substitute.empty()) what += " by " + item.substitute;
      addPiece(items, what);
    }
    section.rows.push_back({rep.name, "default " + word(rep.defaultAction), items});
  }
  return section;
}

Section combinedStatesOf(const ModelRecord& record) {
  Section section{"combined states", {}};
  for (const headless::CombinedStateRecord& state : record.combinedStates) {
    const std::pair<const char*, const std::string&> parts[] = {
        {"view ", state.view},        {"layers ", state.layerState},      {"representation ", state.simplifiedRep},
        {"style ", state.styleState}, {"exploded ", state.explodedState}, {"section ", state.crossSection}};
    std::string all;
    for (const auto& [what, name] : parts)
      if (!name.empty()) addPiece(all, what + name);
    if (state.exploded) addPiece(all, "shown exploded");
    if (state.sectionVisibility != 0) addPiece(all, "section shows as " + std::to_string(state.sectionVisibility));
    section.rows.push_back({state.name, activeMark(record.activeCombinedState, state.name), all});
  }
  return section;
}

Section crossSectionsOf(const ModelRecord& record) {
  Section section{"cross sections", {}};
  for (const headless::CrossSectionRecord& entry : record.crossSections) {
    std::string place = entry.plane.empty() ? "" : "plane " + entry.plane;
    if (entry.distance != 0) addPiece(place, "at " + text::toUtf8(text::shortest(entry.distance)));
    std::string marks = activeMark(record.activeCrossSection, entry.name);
    if (entry.visible) addPiece(marks, "visible");
    if (entry.oldForm) addPiece(marks, "old form");
    section.rows.push_back({entry.name, word(entry.type), "cuts " + word(entry.objects), place, marks});
  }
  return section;
}

}  // namespace

std::vector<Section> layerSections(const Model& model) {
  const ModelRecord& record = model.document->record;
  return {layersOf(model), layerStatesOf(record)};
}

std::vector<Section> stateSections(const Model& model) {
  const ModelRecord& record = model.document->record;
  return {namesOf(record), representationsOf(model), combinedStatesOf(record), crossSectionsOf(record)};
}

}  // namespace kelvane

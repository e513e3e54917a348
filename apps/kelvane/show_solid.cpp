#include "kelvane/show_solid.h"

#include <cmath>

#include "creo/ProSolid.h"
#include "headless/model/density.h"
#include "headless/model/items.h"
#include "headless/model/regenerate.h"
#include "headless/model/units.h"
#include "headless/store/enum_texts.h"
#include "kelvane/values.h"
#include "text/encoding.h"
#include "text/numbers.h"

namespace kelvane {
namespace {

using headless::ModelRecord;

template <class E>
std::string word(E value) {
  for (const auto& [name, one] : headless::EnumTexts<E>::texts)
    if (one == value) return std::string(name);
  return {};
}

Section settingsOf(const headless::Model& model) {
  const ModelRecord& record = model.document->record;
  Section section{"settings", {}};
  if (record.accuracy)
    section.rows.push_back(
        {"accuracy", word(record.accuracy->kind) + " " + text::toUtf8(text::shortest(record.accuracy->value))});
  if (record.toleranceClass != creo::ProToleranceClass::none)
    section.rows.push_back({"tolerance class", word(record.toleranceClass)});
  const auto status = headless::regenerationStatus(model);
  if (status != creo::ProRegenerationStatus::regenerated) section.rows.push_back({"regeneration", word(status)});
  if (record.insertAfter > 0) section.rows.push_back({"insert mode", "after " + std::to_string(record.insertAfter)});
  return section;
}

// A row for each parameter of each material; the current one's name is marked.
Section materialsOf(const headless::Model& model) {
  Section section{"materials", {}};
  const std::wstring current = headless::currentMaterial(model);
  for (const headless::MaterialRecord& material : model.document->record.materials) {
    const std::wstring name = text::fromUtf8(material.name);
    section.rows.push_back({material.name, name == current ? "current" : ""});
    const creo::ProModelitem owner{creo::ProItemType::material, 0, model.handle, name};
    creo::ProParameterVisit(owner, [&](const creo::ProParameter& parameter) {
      const auto units = creo::ProParameterUnitsGet(parameter);
      std::string value = valueText(creo::ProParameterValueGet(parameter).value);
      if (units) value += " " + text::toUtf8(units.value);
      section.rows.push_back({"  " + text::toUtf8(parameter.id), value});
      return creo::ProNoError;
    });
  }
  return section;
}

Section layersOf(const ModelRecord& record) {
  Section section{"layers", {}};
  for (const headless::LayerRecord& layer : record.layers)
    section.rows.push_back({layer.name, word(layer.status),
                            std::to_string(layer.items.size()) + (layer.items.size() == 1 ? " item" : " items")});
  return section;
}

Section layerStatesOf(const ModelRecord& record) {
  Section section{"layer states", {}};
  for (const headless::LayerStateRecord& state : record.layerStates) {
    std::string layers;
    for (const headless::LayerStatusRecord& layer : state.layers)
      layers += (layers.empty() ? "" : ", ") + layer.name + " " + word(layer.status);
    section.rows.push_back({state.name, layers});
  }
  return section;
}

Section statesOf(const headless::Model& model) {
  static constexpr std::pair<const char*, creo::ProItemType> kKinds[] = {
      {"view", creo::ProItemType::view},
      {"simplified representation", creo::ProItemType::simplifiedRep},
      {"exploded state", creo::ProItemType::explodedState},
      {"style state", creo::ProItemType::styleState},
      {"combined state", creo::ProItemType::combinedState},
      {"cross section", creo::ProItemType::crossSection},
  };
  Section section{"states", {}};
  for (const auto& [kind, type] : kKinds) {
    std::string names;
    for (const headless::NamedItem& item : headless::namedItems(model, type))
      names += (names.empty() ? "" : ", ") + text::toUtf8(item.name);
    if (!names.empty()) section.rows.push_back({kind, names});
  }
  return section;
}

// Six digits are enough for a person.
std::string rounded(double value) {
  constexpr double kDigits = 6;
  if (value == 0 || !std::isfinite(value)) return text::toUtf8(text::shortest(value));
  const double scale = std::pow(10, kDigits - 1 - std::floor(std::log10(std::abs(value))));
  return text::toUtf8(text::shortest(std::round(value * scale) / scale));
}

std::string rounded(const creo::ProVector& v) { return rounded(v.x) + ", " + rounded(v.y) + ", " + rounded(v.z); }

// Nothing for a solid without a body.
Section bodyOf(const headless::Model& model) {
  Section section{"body", {}};
  const auto mass = creo::ProSolidMassPropertyGet(model.handle);
  if (!mass) return section;
  const std::string& system = model.document->record.units;
  const std::string length(headless::systemUnit(model.document->record, system, creo::ProUnitType::length));
  const std::string weight(headless::systemUnit(model.document->record, system, creo::ProUnitType::mass));
  const bool guessed = model.type() == creo::ProMdlType::part && !headless::materialDensity(model);
  const auto& of = mass.value;
  section.rows = {{"mass", rounded(of.mass) + " " + weight, guessed ? "its material has no density: 1" : ""},
                  {"volume", rounded(of.volume) + " " + length + "^3"},
                  {"surface area", rounded(of.surfaceArea) + " " + length + "^2"},
                  {"centre of gravity", rounded(of.gravityCenter)}};
  if (const auto box = creo::ProSolidOutlineGet(model.handle)) {
    const auto& [low, high] = box.value;
    section.rows.push_back({"size", rounded(high.x - low.x) + " x " + rounded(high.y - low.y) + " x " +
                                        rounded(high.z - low.z) + " " + length});
    section.rows.push_back({"outline", rounded(low) + " to " + rounded(high)});
  }
  return section;
}

}  // namespace

std::vector<Section> solidSections(creo::ProMdl handle) {
  const headless::Model* model = headless::Session::current().models().find(handle);
  if (!model) return {};
  const ModelRecord& record = model->document->record;
  std::vector<Section> sections = {layersOf(record), layerStatesOf(record)};
  if (model->type() != creo::ProMdlType::drawing)
    sections.insert(sections.begin(), {settingsOf(*model), bodyOf(*model), materialsOf(*model), statesOf(*model)});
  return sections;
}

}  // namespace kelvane

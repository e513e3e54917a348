#include "kelvane/show/solid.h"

#include <cmath>

#include "creo/ProSolid.h"
#include "headless/model/datums.h"
#include "headless/model/density.h"
#include "headless/model/drawing.h"
#include "headless/model/gears.h"
#include "headless/model/items.h"
#include "headless/model/measures.h"
#include "headless/model/models.h"
#include "headless/model/regenerate.h"
#include "headless/model/units.h"
#include "headless/session.h"
#include "kelvane/base/words.h"
#include "kelvane/show/enum_words.h"
#include "kelvane/show/states.h"
#include "kelvane/show/values.h"
#include "text/encoding.h"
#include "text/numbers.h"

namespace kelvane {
namespace {

using headless::ModelRecord;

std::string number(double value) { return text::toUtf8(text::shortest(value)); }

// "color 0.2, 0.4, 0.6, transparency 0.5, label STEEL"; what is 0 isn't told.
std::string lookOf(const headless::AppearanceRecord& look) {
  std::string text;
  for (const double part : look.color) addPiece(text, number(part));
  if (!text.empty()) text.insert(0, "color ");
  const std::pair<const char*, double> parts[] = {{"ambient ", look.ambient},
                                                  {"diffuse ", look.diffuse},
                                                  {"highlight ", look.highlight},
                                                  {"shininess ", look.shininess},
                                                  {"transparency ", look.transparency}};
  for (const auto& [what, value] : parts)
    if (value != 0) addPiece(text, what + number(value));
  if (!look.label.empty()) addPiece(text, "label " + look.label);
  return text.empty() ? "default" : text;
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
  if (record.density != 0) {
    const char* how = record.densityEstimated ? "estimated" : "stated";
    section.rows.push_back(
        {"density", number(record.density), headless::materialDensity(model) ? "its material's counts" : how});
  }
  if (record.appearance) section.rows.push_back({"appearance", lookOf(*record.appearance)});
  for (const headless::FeatureRecord& feature : record.features)
    if (feature.appearance)
      section.rows.push_back({"appearance of feature " + std::to_string(feature.id), lookOf(*feature.appearance)});
  for (const headless::SurfaceAppearanceRecord& entry : record.surfaceAppearances)
    section.rows.push_back(
        {"appearance of surface " + std::to_string(entry.surface) + ", side " + std::to_string(entry.side),
         lookOf(entry.appearance)});
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
      std::string value = valueText(creo::ProParameterScaledvalueGet(parameter).value);
      if (units) value += " " + text::toUtf8(units.value);
      section.rows.push_back({"  " + text::toUtf8(parameter.id), value});
      return creo::ProNoError;
    });
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
  const bool guessed = model.type() == creo::ProMdlType::part && !headless::partDensity(model);
  const auto& of = mass.value;
  section.rows = {{"mass", rounded(of.mass) + " " + weight, guessed ? "it has no density: 1" : ""},
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

// Coordinate systems and planes with what they count in; points are too many to be told one by one.
Section datumsOf(const headless::Model& model) {
  Section section{"datums", {}};
  const headless::SolidRecord& solid = model.document->solid();
  const auto row = [&](const char* kind, const headless::DatumRecord& datum) {
    const std::string name = text::toUtf8(headless::datumName(model, datum));
    section.rows.push_back({kind, name, datum.csys.empty() ? "" : "in " + datum.csys});
  };
  for (const headless::DatumRecord& system : solid.coordinateSystems) row("coordinate system", system);
  for (const headless::DatumRecord& plane : solid.planes) row("plane", plane);
  if (!solid.points.empty()) section.rows.push_back({"points", std::to_string(solid.points.size())});
  return section;
}

// What sheets show in place of teeth.
Section gearSection(const headless::Model& model) {
  Section section{"gears", {}};
  if (model.type() != creo::ProMdlType::part) return section;
  try {
    for (const auto& [feature, teeth] : headless::gearsOf(model))
      section.rows.push_back({"tip " + rounded(teeth.tip), "pitch " + rounded(teeth.pitch),
                              "root " + rounded(teeth.root), "length " + rounded(teeth.length)});
  } catch (const headless::MeasureFault& fault) {
    section.rows.push_back({text::toUtf8(fault.reason)});
  }
  return section;
}

}  // namespace

std::vector<Section> solidSections(creo::ProMdl handle) {
  const headless::Model* model = headless::Session::current().models().find(handle);
  if (!model) return {};
  std::vector<Section> sections;
  if (!headless::hasSheets(model->type())) {
    sections = {settingsOf(*model), bodyOf(*model), gearSection(*model), datumsOf(*model), materialsOf(*model)};
    for (Section& section : stateSections(*model)) sections.push_back(std::move(section));
  }
  for (Section& entry : layerSections(*model)) sections.push_back(std::move(entry));
  return sections;
}

}  // namespace kelvane

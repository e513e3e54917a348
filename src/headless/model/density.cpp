#include "headless/model/density.h"

#include "headless/model/items.h"
#include "headless/model/units.h"
#include "text/encoding.h"

namespace headless {

namespace {

constexpr std::string_view kDensity = "PTC_MASS_DENSITY";

// Null: the part has no current material.
MaterialRecord* materialOf(const Model& part) {
  const std::string current = text::toUtf8(currentMaterial(part));
  for (MaterialRecord& material : part.document->record.materials)
    if (sameName(material.name, current)) return &material;
  return nullptr;
}

// Null: the material tells none.
ParameterRecord* densityOf(MaterialRecord& material) {
  for (ParameterRecord& record : material.parameters.list)
    if (sameName(record.name, kDensity)) return &record;
  return nullptr;
}

// "kg/mm^3" of the part's system; empty for a system whose units have no names that parameters could have.
std::string densityUnit(const ModelRecord& record) {
  const std::string unit = systemUnit(record, record.units, creo::ProUnitType::mass) + "/" +
                           systemUnit(record, record.units, creo::ProUnitType::length) + "^3";
  return unitScale(unit) ? unit : std::string();
}

void setMaterialDensity(MaterialRecord& material, double density, const ModelRecord& record) {
  ParameterRecord* parameter = densityOf(material);
  if (!parameter) {
    parameter = &material.parameters.list.emplace_back();
    parameter->name = kDensity;
    parameter->units = densityUnit(record);
  }
  parameter->type = creo::ProParamvalueType::real;
  parameter->value = density / inSystem(1, parameter->units, record);
}

}  // namespace

std::optional<double> materialDensity(const Model& part) {
  MaterialRecord* material = materialOf(part);
  const ParameterRecord* parameter = material ? densityOf(*material) : nullptr;
  if (!parameter) return std::nullopt;
  const double* real = std::get_if<double>(&parameter->value);
  const int* integer = std::get_if<int>(&parameter->value);
  if (!real && !integer) return std::nullopt;
  const double density = inSystem(real ? *real : *integer, parameter->units, part.document->record);
  return density > 0 ? std::optional(density) : std::nullopt;
}

std::optional<double> partDensity(const Model& part) {
  if (const auto ofMaterial = materialDensity(part)) return ofMaterial;
  const double own = part.document->record.density;
  return own > 0 ? std::optional(own) : std::nullopt;
}

void setPartDensity(Model& part, double density) {
  ModelRecord& record = part.document->record;
  const bool holds = partDensity(part) == density;
  if (holds && (materialDensity(part) || !record.densityEstimated)) return;
  if (MaterialRecord* material = holds ? nullptr : materialOf(part)) {
    setMaterialDensity(*material, density, record);
  } else {
    record.density = density;
    record.densityEstimated = false;
  }
  part.document->touch(nullptr);
}

}  // namespace headless

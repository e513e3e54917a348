#include "headless/model/convert_units.h"

#include <cmath>

#include "headless/model/models.h"
#include "headless/model/raw_placement.h"
#include "headless/model/units.h"
#include "text/encoding.h"

namespace headless {
namespace {

// Numbers that change, each with its factor; nothing is written before all of them are known to be good.
class Conversion {
 public:
  void add(double& number, double factor) { reals_.push_back({&number, number * factor}); }
  void add(Scalar& value, double factor) {
    if (const auto* real = std::get_if<double>(&value)) scalars_.push_back({&value, *real * factor});
    if (const auto* integer = std::get_if<int>(&value)) scalars_.push_back({&value, *integer * factor});
  }
  template <class T>
  void add(std::vector<T>& numbers, double factor) {
    for (T& one : numbers) add(one, factor);
  }
  [[nodiscard]] bool isGood() const {
    const auto good = [](const auto& one) { return std::isfinite(one.second); };
    return std::all_of(reals_.begin(), reals_.end(), good) && std::all_of(scalars_.begin(), scalars_.end(), good);
  }
  void apply() const {
    for (const auto& [number, value] : reals_) *number = value;
    for (const auto& [scalar, value] : scalars_) *scalar = value;
  }

 private:
  std::vector<std::pair<double*, double>> reals_;
  std::vector<std::pair<Scalar*, double>> scalars_;
};

void addRows(FamilyTableRecord& table, const ModelRecord& model, double length, Conversion& into) {
  const auto isLength = [&](const std::string& column) {
    const bool isDimension =
        std::any_of(table.items.list.begin(), table.items.list.end(), [&](const ColumnRecord& one) {
          return one.type == creo::ProFamitemType::dimension && sameName(one.name, column);
        });
    return isDimension && std::none_of(model.dimensions.begin(), model.dimensions.end(),
                                       [&](const auto& one) { return one.angular && sameName(symbolOf(one), column); });
  };
  for (const auto& row : table.instances) {
    for (auto& member : row->values)
      if (isLength(member.name)) into.add(member.value, length);
    if (row->familyTable) addRows(*row->familyTable, model, length, into);
  }
}

void addDimensions(ModelRecord& record, double length, Conversion& into) {
  for (DimensionRecord& one : record.dimensions) {
    if (one.angular) continue;
    into.add(one.value, length);
    if (!one.tolerance) continue;
    into.add(one.tolerance->upper, length);
    into.add(one.tolerance->lower, length);
  }
  for (FeatureRecord& feature : record.features)
    if (feature.pattern)
      for (PatternMemberRecord& member : feature.pattern->members) into.add(member.values, length);
  if (record.familyTable) addRows(*record.familyTable, record, length, into);
}

void addPlace(std::unique_ptr<PlacementRecord>& placement, double length, Conversion& into) {
  if (placement) into.add(placement->position, length);
}

void addBody(SolidRecord& solid, double length, Conversion& into) {
  for (PrimitiveRecord& one : solid.primitives) {
    into.add(one.size, length);
    for (Measure* measure : {&one.diameter, &one.topDiameter, &one.length}) into.add(*measure, length);
    for (Measures& point : one.profile) into.add(point, length);
    addPlace(one.placement, length, into);
  }
  for (DatumRecord& one : solid.coordinateSystems) addPlace(one.placement, length, into);
  for (DatumRecord& one : solid.points) addPlace(one.placement, length, into);
  for (DatumRecord& one : solid.planes) addPlace(one.placement, length, into);
}

}  // namespace

creo::ProError setPrincipalSystem(const Models& models, const Model& model, const std::string& system, bool keepSizes) {
  ModelDocument& document = *model.document;
  ModelRecord& record = document.record;
  const std::string before = std::exchange(record.units, system);
  const auto oneIn = [&](const std::string& units, std::string_view unit) {
    record.units = units;
    return inSystem(1, unit, record);
  };
  const double length = oneIn(system, "mm") / oneIn(before, "mm");
  const double mass = oneIn(system, "kg") / oneIn(before, "kg");
  Conversion conversion;
  SolidRecord solid = solidRecord(record.solid);
  std::vector<PlacementRecord> places;
  if (keepSizes) {
    addDimensions(record, length, conversion);
    addBody(solid, length, conversion);
    for (const UsedModelRecord& component : record.components) places.push_back(placementRecord(component.placement));
    for (PlacementRecord& place : places) conversion.add(place.position, length);
    for (CrossSectionRecord& section : record.crossSections) conversion.add(section.distance, length);
    for (ToleranceEntryRecord& one : record.toleranceTable) conversion.add(one.value, length);
    if (record.accuracy && record.accuracy->kind == creo::ProAccuracyKind::absolute)
      conversion.add(record.accuracy->value, length);
    conversion.add(record.density, mass / (length * length * length));
  }
  if (!conversion.isGood()) {
    record.units = before;
    models.message(model.name + L": a number is too large for " + text::fromUtf8(systemName(system)));
    return creo::ProGeneralError;
  }
  conversion.apply();
  if (keepSizes && !record.solid.text.empty()) record.solid = rawSolid(solid);
  for (std::size_t i = 0; i < places.size(); ++i)
    if (RawJson& raw = record.components[i].placement; !raw.text.empty()) raw = rawPlacement(places[i]);
  document.solidChanged();
  record.units = system;
  document.touch(nullptr);
  return creo::ProNoError;
}

}  // namespace headless

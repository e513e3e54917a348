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
    for (T& entry : numbers) add(entry, factor);
  }
  [[nodiscard]] bool isGood() const {
    const auto good = [](const auto& item) { return std::isfinite(item.second); };
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
        std::any_of(table.items.list.begin(), table.items.list.end(), [&](const ColumnRecord& record) {
          return record.type == creo::ProFamitemType::dimension && sameName(record.name, column);
        });
    return isDimension && std::none_of(model.dimensions.begin(), model.dimensions.end(), [&](const auto& candidate) {
             return candidate.angular && sameName(symbolOf(candidate), column);
           });
  };
  for (const auto& row : table.instances) {
    for (auto& member : row->values)
      if (isLength(member.name)) into.add(member.value, length);
    if (row->familyTable) addRows(*row->familyTable, model, length, into);
  }
}

void addDimensions(ModelRecord& record, double length, Conversion& into) {
  for (DimensionRecord& dimension : record.dimensions) {
    if (dimension.angular) continue;
    into.add(dimension.value, length);
    if (!dimension.tolerance) continue;
    into.add(dimension.tolerance->upper, length);
    into.add(dimension.tolerance->lower, length);
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
  for (PrimitiveRecord& primitive : solid.primitives) {
    into.add(primitive.size, length);
    for (Measure* measure : {&primitive.diameter, &primitive.topDiameter, &primitive.length})
      into.add(*measure, length);
    for (Measures& point : primitive.profile) into.add(point, length);
    addPlace(primitive.placement, length, into);
  }
  for (GearRecord& gear : solid.gears) {
    for (Measure* measure : {&gear.tipDiameter, &gear.pitchDiameter, &gear.rootDiameter, &gear.length})
      into.add(*measure, length);
    addPlace(gear.placement, length, into);
  }
  for (DatumRecord& system : solid.coordinateSystems) addPlace(system.placement, length, into);
  for (DatumRecord& record : solid.points) addPlace(record.placement, length, into);
  for (DatumRecord& plane : solid.planes) addPlace(plane.placement, length, into);
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
    for (StateRecord& state : record.explodedStates)
      for (StateItemRecord& item : state.items) conversion.add(item.move, length);
    for (ToleranceEntryRecord& entry : record.toleranceTable) conversion.add(entry.value, length);
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

// The tables of the records of parts and assemblies.
#pragma once

#include "headless/store/enum_texts.h"

namespace headless {

template <>
struct RecordTable<ItemRecord> {
  using R = ItemRecord;
  static constexpr std::array fields = {field<&R::type>("type", kRequired), field<&R::id>("id", kRequired)};
};
template <>
struct RecordTable<EntityRecord> {
  using R = EntityRecord;
  static constexpr std::array fields = {field<&R::id>("id", kRequired), field<&R::type>("type")};
};
template <>
struct RecordTable<SectionRecord> {
  using R = SectionRecord;
  static constexpr std::array fields = {field<&R::entities>("entities"), field<&R::relations>("relations"),
                                        field<&R::unitSensitive>("unitSensitive")};
};
template <>
struct RecordTable<PatternMemberRecord> {
  using R = PatternMemberRecord;
  static constexpr std::array fields = {field<&R::number>("number", kRequired), field<&R::values>("values")};
};
template <>
struct RecordTable<PatternRecord> {
  using R = PatternRecord;
  static constexpr std::array fields = {field<&R::group>("group"), field<&R::regeneration>("regeneration"),
                                        field<&R::dimensions>("dimensions"), field<&R::members>("members")};
};
template <>
struct RecordTable<VariantItemRecord> {
  using R = VariantItemRecord;
  static constexpr std::array fields = {field<&R::type>("type", kRequired), field<&R::id>("id"),
                                        field<&R::name>("name"), field<&R::parameter>("parameter")};
};
template <>
struct RecordTable<FeatureRecord> {
  using R = FeatureRecord;
  static constexpr std::array fields = {field<&R::id>("id", kRequired),
                                        field<&R::number>("number"),
                                        field<&R::name>("name"),
                                        field<&R::type>("type"),
                                        field<&R::typeName>("typeName"),
                                        field<&R::subtype>("subtype"),
                                        field<&R::status>("status"),
                                        field<&R::geometryChecks>("geometryChecks"),
                                        field<&R::hidden>("hidden"),
                                        field<&R::parents>("parents"),
                                        field<&R::pattern>("pattern"),
                                        field<&R::variantItems>("variantItems"),
                                        field<&R::dimensions>("dimensions"),
                                        field<&R::sections>("sections"),
                                        field<&R::relations>("relations"),
                                        field<&R::unitSensitive>("unitSensitive"),
                                        field<&R::parameters>("parameters"),
                                        field<&R::appearance>("appearance")};
};
template <>
struct RecordTable<AppearanceRecord> {
  using R = AppearanceRecord;
  static constexpr std::array fields = {field<&R::label>("label"),
                                        field<&R::color>("color"),
                                        field<&R::ambient>("ambient"),
                                        field<&R::diffuse>("diffuse"),
                                        field<&R::highlight>("highlight"),
                                        field<&R::shininess>("shininess"),
                                        field<&R::transparency>("transparency")};
  static constexpr std::string_view schema =
      R"("allOf": [{"properties": {"color": {"anyOf": [{"maxItems": 0}, {"minItems": 3, "maxItems": 3}]}}}])";
  static void check(R& record, const Json& json, Reader& in) {
    if (!record.color.empty() && record.color.size() != 3) in.fail(json, L"a color is three numbers");
  }
};
// A surface's is always written.
inline bool isDefault(const AppearanceRecord&) { return false; }
template <>
struct RecordTable<SurfaceAppearanceRecord> {
  using R = SurfaceAppearanceRecord;
  static constexpr std::array fields = {field<&R::surface>("surface", kRequired), field<&R::side>("side"),
                                        field<&R::appearance>("appearance", kRequired)};
};
template <>
struct RecordTable<MaterialRecord> {
  using R = MaterialRecord;
  static constexpr std::array fields = {field<&R::name>("name", kRequired), field<&R::parameters>("parameters")};
};
template <>
struct RecordTable<ToleranceEntryRecord> {
  using R = ToleranceEntryRecord;
  static constexpr std::array fields = {field<&R::name>("name", kRequired), field<&R::value>("value", kRequired)};
};
template <>
struct RecordTable<UnitSystemRecord> {
  using R = UnitSystemRecord;
  static constexpr std::array fields = {field<&R::name>("name", kRequired), field<&R::length>("length"),
                                        field<&R::mass>("mass"), field<&R::time>("time"),
                                        field<&R::temperature>("temperature")};
};
template <>
struct RecordTable<AccuracyRecord> {
  using R = AccuracyRecord;
  static constexpr std::array fields = {field<&R::kind>("kind", kRequired), field<&R::value>("value", kRequired)};
};
template <>
struct RecordTable<LayerRecord> {
  using R = LayerRecord;
  static constexpr std::array fields = {field<&R::id>("id", kRequired),
                                        field<&R::name>("name", kRequired),
                                        field<&R::status>("status"),
                                        field<&R::items>("items"),
                                        field<&R::ruleBased>("ruleBased"),
                                        field<&R::associativeRules>("associativeRules"),
                                        field<&R::independentRules>("independentRules"),
                                        field<&R::rules>("rules")};
};
template <>
struct RecordTable<LayerStatusRecord> {
  using R = LayerStatusRecord;
  static constexpr std::array fields = {field<&R::name>("name", kRequired), field<&R::status>("status")};
};
template <>
struct RecordTable<LayerStateRecord> {
  using R = LayerStateRecord;
  static constexpr std::array fields = {field<&R::name>("name", kRequired), field<&R::layers>("layers")};
};
template <>
struct RecordTable<StateItemRecord> {
  using R = StateItemRecord;
  static constexpr std::array fields = {field<&R::feature>("feature", kRequired), field<&R::move>("move"),
                                        field<&R::blanked>("blanked"), field<&R::transparent>("transparent")};
  static constexpr std::string_view schema =
      R"("allOf": [{"properties": {"move": {"anyOf": [{"maxItems": 0}, {"minItems": 3, "maxItems": 3}]}}}])";
  static void check(R& record, const Json& json, Reader& in) {
    if (!record.move.empty() && record.move.size() != 3) in.fail(json, L"a move has three lengths");
  }
};
template <>
struct RecordTable<StateRecord> {
  using R = StateRecord;
  static constexpr std::array fields = {field<&R::id>("id", kRequired), field<&R::name>("name", kRequired),
                                        field<&R::items>("items")};
};
template <>
struct RecordTable<SimplifiedRepItemRecord> {
  using R = SimplifiedRepItemRecord;
  static constexpr std::array fields = {field<&R::feature>("feature", kRequired), field<&R::action>("action"),
                                        field<&R::substitution>("substitution"), field<&R::substitute>("substitute")};
};
template <>
struct RecordTable<SimplifiedRepRecord> {
  using R = SimplifiedRepRecord;
  static constexpr std::array fields = {field<&R::id>("id", kRequired), field<&R::name>("name", kRequired),
                                        field<&R::defaultAction>("defaultAction"), field<&R::items>("items")};
};
template <>
struct RecordTable<CombinedStateRecord> {
  using R = CombinedStateRecord;
  static constexpr std::array fields = {field<&R::id>("id", kRequired),
                                        field<&R::name>("name", kRequired),
                                        field<&R::view>("view"),
                                        field<&R::layerState>("layerState"),
                                        field<&R::simplifiedRep>("simplifiedRep"),
                                        field<&R::explodedState>("explodedState"),
                                        field<&R::styleState>("styleState"),
                                        field<&R::crossSection>("crossSection"),
                                        field<&R::exploded>("exploded"),
                                        field<&R::sectionVisibility>("sectionVisibility")};
};
template <>
struct RecordTable<CrossSectionRecord> {
  using R = CrossSectionRecord;
  static constexpr std::array fields = {
      field<&R::id>("id", kRequired),    field<&R::name>("name", kRequired), field<&R::type>("type"),
      field<&R::objects>("objects"),     field<&R::plane>("plane"),          field<&R::distance>("distance"),
      field<&R::dimension>("dimension"), field<&R::visible>("visible"),      field<&R::oldForm>("oldForm")};
};
template <>
struct RecordTable<LayoutRecord> {
  using R = LayoutRecord;
  static constexpr std::array fields = {field<&R::name>("name", kRequired)};
};

}  // namespace headless

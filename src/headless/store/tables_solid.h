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
  static constexpr std::array fields = {field<&R::entities>("entities")};
};
template <>
struct RecordTable<PatternRecord> {
  using R = PatternRecord;
  static constexpr std::array fields = {field<&R::group>("group"), field<&R::regeneration>("regeneration")};
};
template <>
struct RecordTable<VariantItemRecord> {
  using R = VariantItemRecord;
  static constexpr std::array fields = {field<&R::type>("type", kRequired), field<&R::id>("id"),
                                        field<&R::name>("name")};
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
                                        field<&R::pattern>("pattern"),
                                        field<&R::variantItems>("variantItems"),
                                        field<&R::dimensions>("dimensions"),
                                        field<&R::sections>("sections"),
                                        field<&R::parameters>("parameters")};
};
template <>
struct RecordTable<MaterialRecord> {
  using R = MaterialRecord;
  static constexpr std::array fields = {field<&R::name>("name", kRequired), field<&R::parameters>("parameters")};
};
template <>
struct RecordTable<AccuracyRecord> {
  using R = AccuracyRecord;
  static constexpr std::array fields = {field<&R::kind>("kind", kRequired), field<&R::value>("value", kRequired)};
};
template <>
struct RecordTable<LayerRecord> {
  using R = LayerRecord;
  static constexpr std::array fields = {field<&R::id>("id", kRequired), field<&R::name>("name", kRequired),
                                        field<&R::status>("status"), field<&R::items>("items")};
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
struct RecordTable<StateRecord> {
  using R = StateRecord;
  static constexpr std::array fields = {field<&R::id>("id", kRequired), field<&R::name>("name", kRequired)};
};
template <>
struct RecordTable<CrossSectionRecord> {
  using R = CrossSectionRecord;
  static constexpr std::array fields = {field<&R::id>("id", kRequired), field<&R::name>("name", kRequired),
                                        field<&R::type>("type"), field<&R::objects>("objects")};
};
template <>
struct RecordTable<LayoutRecord> {
  using R = LayoutRecord;
  static constexpr std::array fields = {field<&R::name>("name", kRequired)};
};

}  // namespace headless

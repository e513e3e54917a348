#include "headless/store/document.h"

#include "headless/store/enum_texts.h"
#include "headless/store/tables_drawing.h"
#include "headless/store/tables_geometry.h"
#include "headless/store/tables_solid.h"

namespace headless {

using creo::ProExtdataType;
using creo::ProParamvalueType;

namespace {

std::wstring valueOf(std::string_view type) { return L"a value of the type '" + text::fromUtf8(type) + L"'"; }

}  // namespace

template <>
struct RecordTable<RestrictionRecord> {
  using R = RestrictionRecord;
  static constexpr std::array fields = {field<&R::minimum>("minimum"), field<&R::maximum>("maximum"),
                                        field<&R::values>("values")};
};
template <>
struct RecordTable<ParameterRecord> {
  using R = ParameterRecord;
  static constexpr std::array fields = {
      field<&R::name>("name", kRequired), field<&R::type>("type", kRequired),    field<&R::value>("value"),
      field<&R::units>("units"),          field<&R::description>("description"), field<&R::designated>("designated"),
      field<&R::driver>("driver"),        field<&R::restriction>("restriction")};
  static constexpr std::string_view schema = R"("allOf": [
    {"if": {"properties": {"type": {"const": "string"}}}, "then": {"properties": {"value": {"type": "string"}}}},
    {"if": {"properties": {"type": {"const": "double"}}}, "then": {"properties": {"value": {"type": "number"}}}},
    {"if": {"properties": {"type": {"enum": ["integer", "note"]}}},
     "then": {"properties": {"value": {"$ref": "#/$defs/int32"}}}},
    {"if": {"properties": {"type": {"const": "boolean"}}}, "then": {"properties": {"value": {"type": "boolean"}}}}])";
  static void check(R& record, const Json& json, Reader& in) {
    const Json* value = json.member("value");
    if (value && !fitsType(record.value, record.type)) in.failKind(*value, valueOf(json.member("type")->text));
  }
};
template <>
struct RecordTable<SlotRecord> {
  using R = SlotRecord;
  static constexpr std::array fields = {field<&R::type>("type"), field<&R::value>("value")};
  static constexpr std::string_view schema = R"("dependentRequired": {"value": ["type"]}, "allOf": [
    {"if": {"properties": {"type": {"const": "text"}}}, "then": {"properties": {"value": {"type": "string"}}}},
    {"if": {"properties": {"type": {"const": "integer"}}},
     "then": {"properties": {"value": {"$ref": "#/$defs/int32"}}}}])";
  static void check(R& record, const Json& json, Reader& in) {
    const Json* value = json.member("value");
    if (!value) return;
    const bool fits = record.type == ProExtdataType::text      ? std::holds_alternative<std::string>(record.value)
                      : record.type == ProExtdataType::integer ? std::holds_alternative<int>(record.value)
                                                               : false;
    const Json* type = json.member("type");
    if (!fits) in.failKind(*value, valueOf(type ? std::string_view(type->text) : "none"));
  }
};
template <>
struct RecordTable<ToleranceRecord> {
  using R = ToleranceRecord;
  static constexpr std::array fields = {field<&R::upper>("upper"), field<&R::lower>("lower"), field<&R::type>("type")};
};
template <>
struct RecordTable<DimensionRecord> {
  using R = DimensionRecord;
  static constexpr std::array fields = {field<&R::id>("id", kRequired),
                                        field<&R::symbol>("symbol"),
                                        field<&R::value>("value"),
                                        field<&R::reference>("reference"),
                                        field<&R::associative>("associative"),
                                        field<&R::angular>("angular"),
                                        field<&R::flipped>("flipped"),
                                        field<&R::tolerance>("tolerance"),
                                        field<&R::bound>("bound"),
                                        field<&R::text>("text")};
  static constexpr std::string_view schema = kDimensionPlaceSchema;
};
template <>
struct RecordTable<ColumnRecord> {
  using R = ColumnRecord;
  static constexpr std::array fields = {field<&R::type>("type", kRequired), field<&R::name>("name", kRequired)};
};
template <>
struct RecordTable<RowRecord> {
  using R = RowRecord;
  static constexpr std::array fields = {field<&R::name>("name", kRequired),
                                        field<&R::values>("values"),
                                        field<&R::parameters>("parameters"),
                                        field<&R::externalData>("externalData"),
                                        field<&R::familyTable>("familyTable"),
                                        field<&R::verification>("verification"),
                                        field<&R::locked>("locked")};
};
template <>
struct RecordTable<FamilyTableRecord> {
  using R = FamilyTableRecord;
  static constexpr std::array fields = {field<&R::items>("items"), field<&R::instances>("instances")};
};
template <>
struct RecordTable<UsedModelRecord> {
  using R = UsedModelRecord;
  static constexpr std::array fields = {
      field<&R::name>("name", kRequired), field<&R::type>("type", kRequired),
      field<&R::feature>("feature"),      field<&R::flexible>("flexible"),
      field<&R::packaged>("packaged"),    keptField<PlacementRecord, &R::placement>("placement")};
};
template <>
struct RecordTable<ModelRecord> {
  using R = ModelRecord;
  static constexpr std::array fields = {field<&R::format>("format", kRequired),
                                        field<&R::readOnly>("readOnly"),
                                        field<&R::skeleton>("skeleton"),
                                        field<&R::subtype>("subtype"),
                                        field<&R::commonName>("commonName"),
                                        field<&R::units>("units"),
                                        field<&R::parameters>("parameters"),
                                        field<&R::material>("material"),
                                        field<&R::materials>("materials"),
                                        field<&R::accuracy>("accuracy"),
                                        field<&R::toleranceClass>("toleranceClass"),
                                        field<&R::toleranceTable>("toleranceTable"),
                                        field<&R::unitSystems>("unitSystems"),
                                        field<&R::features>("features"),
                                        field<&R::insertAfter>("insertAfter"),
                                        field<&R::dimensions>("dimensions"),
                                        field<&R::relations>("relations"),
                                        field<&R::unitSensitive>("unitSensitive"),
                                        field<&R::postRelations>("postRelations"),
                                        field<&R::postUnitSensitive>("postUnitSensitive"),
                                        field<&R::program>("program"),
                                        field<&R::density>("density"),
                                        field<&R::densityEstimated>("densityEstimated"),
                                        field<&R::appearance>("appearance"),
                                        field<&R::surfaceAppearances>("surfaceAppearances"),
                                        field<&R::regeneration>("regeneration"),
                                        field<&R::components>("components"),
                                        field<&R::models>("models"),
                                        field<&R::currentModel>("currentModel"),
                                        field<&R::currentSheet>("currentSheet"),
                                        field<&R::sheets>("sheets"),
                                        field<&R::tables>("tables"),
                                        field<&R::symbolDefinitions>("symbolDefinitions"),
                                        field<&R::symbols>("symbols"),
                                        field<&R::drafts>("drafts"),
                                        field<&R::shownDimensions>("shownDimensions"),
                                        field<&R::detailOptions>("detailOptions"),
                                        field<&R::layers>("layers"),
                                        field<&R::layerStates>("layerStates"),
                                        field<&R::activeLayerState>("activeLayerState"),
                                        field<&R::views>("views"),
                                        field<&R::activeView>("activeView"),
                                        field<&R::notes>("notes"),
                                        field<&R::simplifiedReps>("simplifiedReps"),
                                        field<&R::explodedStates>("explodedStates"),
                                        field<&R::activeExplodedState>("activeExplodedState"),
                                        field<&R::styleStates>("styleStates"),
                                        field<&R::activeStyleState>("activeStyleState"),
                                        field<&R::combinedStates>("combinedStates"),
                                        field<&R::activeCombinedState>("activeCombinedState"),
                                        field<&R::crossSections>("crossSections"),
                                        field<&R::activeCrossSection>("activeCrossSection"),
                                        field<&R::layouts>("layouts"),
                                        keptField<SolidRecord, &R::solid>("solid"),
                                        field<&R::familyTable>("familyTable"),
                                        field<&R::externalData>("externalData")};
  static_assert(kDocumentFormat == 1);
  static constexpr std::string_view schema = R"("allOf": [{"properties": {"format": {"const": 1}}}])";
};

bool fitsType(const Scalar& value, ProParamvalueType type) {
  switch (type) {
    case ProParamvalueType::string:
      return std::holds_alternative<std::string>(value);
    case ProParamvalueType::real:
      return std::holds_alternative<double>(value) || std::holds_alternative<int>(value);
    case ProParamvalueType::integer:
    case ProParamvalueType::noteId:
      return std::holds_alternative<int>(value);
    case ProParamvalueType::boolean:
      return std::holds_alternative<bool>(value);
    case ProParamvalueType::none:
      break;
  }
  return false;
}

std::string_view textOf(creo::ProFeatureStatus status) {
  for (const auto& [name, value] : EnumTexts<creo::ProFeatureStatus>::texts)
    if (value == status) return name;
  return {};
}

namespace {

template <class Form>
Form fromRaw(const RawJson& raw) {
  Form form;
  Json tree;
  if (raw.text.empty() || parseJson(raw.text, tree)) return form;
  Reader in(raw.text);
  readValue(form, tree, in);
  return form;
}

}  // namespace

SolidRecord solidRecord(const RawJson& solid) { return fromRaw<SolidRecord>(solid); }
RawJson rawSolid(const SolidRecord& solid) {
  RawJson raw;
  writeValue(solid, raw.text, 1);
  return raw;
}
PlacementRecord placementRecord(const RawJson& placement) { return fromRaw<PlacementRecord>(placement); }

std::span<const Migration> knownMigrations() { return {}; }

JsonFault readDocument(std::string_view source, ModelRecord& into, std::span<const Migration> migrations) {
  Json tree;
  if (JsonFault fault = parseJson(source, tree)) return fault;
  Reader in(source);
  if (!tree.is(JsonKind::object)) return {1, L"a model document is an object"};
  int format = 0;
  const Json* member = tree.member("format");
  if (!member) return {1, L"'format' is missing"};
  readValue(format, *member, in);
  if (in.failed()) return in.fault();
  if (format > kDocumentFormat) {
    in.fail(*member,
            text::format(L"format %d is newer than %d, the newest that this version reads", format, kDocumentFormat));
    return in.fault();
  }
  for (const Migration& migration : migrations) {
    if (migration.from != format) continue;
    migration.run(tree);
    ++format;
  }
  if (format != kDocumentFormat) {
    in.fail(*tree.member("format"), text::format(L"format %d isn't known", format));
    return in.fault();
  }
  readValue(into, tree, in);
  into.format = kDocumentFormat;
  return in.fault();
}

std::string writeDocument(const ModelRecord& record) {
  std::string out;
  writeValue(record, out, 0);
  if (out.find(kNoNumber) != out.npos) return {};
  out += '\n';
  return out;
}

ModelRecord copyOf(const ModelRecord& record) {
  ModelRecord copy;
  copyValue(record, copy);
  return copy;
}

std::string modelSchema() {
  Schema schema;
  describeValue(schema, Of<ModelRecord>{});
  return schema.finished(
      "a model's document",
      "The words of a list count in any case. Members that aren't named here are kept as they stand.");
}

void addUnknownMembers(ModelRecord& record, const RowRecord& row) { addUnknown(record, row); }

}  // namespace headless

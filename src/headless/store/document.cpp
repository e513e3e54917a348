#include "headless/store/document.h"

namespace headless {

using creo::ProExtdataType;
using creo::ProFamitemType;
using creo::ProMdlType;
using creo::ProParameterDriver;
using creo::ProParamvalueType;

template <class E>
using Texts = std::pair<std::string_view, E>;

template <>
struct EnumTexts<ProParamvalueType> {
  static constexpr Texts<ProParamvalueType> texts[] = {{"string", ProParamvalueType::string},
                                                       {"integer", ProParamvalueType::integer},
                                                       {"double", ProParamvalueType::real},
                                                       {"boolean", ProParamvalueType::boolean},
                                                       {"note", ProParamvalueType::noteId}};
};
template <>
struct EnumTexts<ProParameterDriver> {
  static constexpr Texts<ProParameterDriver> texts[] = {{"none", ProParameterDriver::none},
                                                        {"parameter", ProParameterDriver::parameter},
                                                        {"function", ProParameterDriver::function},
                                                        {"relation", ProParameterDriver::relation}};
};
template <>
struct EnumTexts<ProExtdataType> {
  static constexpr Texts<ProExtdataType> texts[] = {{"integer", ProExtdataType::integer},
                                                    {"text", ProExtdataType::text}};
};
template <>
struct EnumTexts<ProFamitemType> {
  static constexpr Texts<ProFamitemType> texts[] = {{"parameter", ProFamitemType::parameter},
                                                    {"dimension", ProFamitemType::dimension},
                                                    {"feature", ProFamitemType::feature},
                                                    {"component", ProFamitemType::component}};
};
template <>
struct EnumTexts<ProMdlType> {
  static constexpr Texts<ProMdlType> texts[] = {{"prt", ProMdlType::part},
                                                {"asm", ProMdlType::assembly},
                                                {"drw", ProMdlType::drawing},
                                                {"mfg", ProMdlType::manufacturing}};
};

namespace {

std::wstring valueOf(std::string_view type) { return L"a value of the type '" + text::fromUtf8(type) + L"'"; }

}  // namespace

template <>
struct RecordTable<ParameterRecord> {
  using R = ParameterRecord;
  static constexpr std::array fields = {
      field<&R::name>("name", kRequired), field<&R::type>("type", kRequired),    field<&R::value>("value"),
      field<&R::units>("units"),          field<&R::description>("description"), field<&R::designated>("designated"),
      field<&R::driver>("driver")};
  static void check(R& record, const Json& json, Reader& in) {
    const Json* value = json.member("value");
    if (value && !fitsType(record.value, record.type)) in.failKind(*value, valueOf(json.member("type")->text));
  }
};
template <>
struct RecordTable<SlotRecord> {
  using R = SlotRecord;
  static constexpr std::array fields = {field<&R::type>("type"), field<&R::value>("value")};
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
struct RecordTable<FeatureRecord> {
  using R = FeatureRecord;
  static constexpr std::array fields = {field<&R::id>("id", kRequired),
                                        field<&R::number>("number"),
                                        field<&R::name>("name"),
                                        field<&R::type>("type"),
                                        field<&R::status>("status"),
                                        field<&R::dimensions>("dimensions"),
                                        field<&R::parameters>("parameters")};
};
template <>
struct RecordTable<DimensionRecord> {
  using R = DimensionRecord;
  static constexpr std::array fields = {field<&R::id>("id", kRequired), field<&R::symbol>("symbol"),
                                        field<&R::value>("value"), field<&R::reference>("reference")};
};
template <>
struct RecordTable<MaterialRecord> {
  using R = MaterialRecord;
  static constexpr std::array fields = {field<&R::name>("name", kRequired), field<&R::parameters>("parameters")};
};
template <>
struct RecordTable<ColumnRecord> {
  using R = ColumnRecord;
  static constexpr std::array fields = {field<&R::type>("type", kRequired), field<&R::name>("name", kRequired)};
};
template <>
struct RecordTable<RowRecord> {
  using R = RowRecord;
  static constexpr std::array fields = {field<&R::name>("name", kRequired), field<&R::values>("values"),
                                        field<&R::parameters>("parameters"), field<&R::externalData>("externalData"),
                                        field<&R::familyTable>("familyTable")};
};
template <>
struct RecordTable<FamilyTableRecord> {
  using R = FamilyTableRecord;
  static constexpr std::array fields = {field<&R::items>("items"), field<&R::instances>("instances")};
};
template <>
struct RecordTable<UsedModelRecord> {
  using R = UsedModelRecord;
  static constexpr std::array fields = {field<&R::name>("name", kRequired), field<&R::type>("type", kRequired),
                                        field<&R::feature>("feature"), field<&R::placement>("placement")};
};
template <>
struct RecordTable<ModelRecord> {
  using R = ModelRecord;
  static constexpr std::array fields = {field<&R::format>("format", kRequired),
                                        field<&R::readOnly>("readOnly"),
                                        field<&R::skeleton>("skeleton"),
                                        field<&R::units>("units"),
                                        field<&R::parameters>("parameters"),
                                        field<&R::material>("material"),
                                        field<&R::materials>("materials"),
                                        field<&R::features>("features"),
                                        field<&R::dimensions>("dimensions"),
                                        field<&R::relations>("relations"),
                                        field<&R::components>("components"),
                                        field<&R::models>("models"),
                                        field<&R::sheets>("sheets"),
                                        field<&R::solid>("solid"),
                                        field<&R::familyTable>("familyTable"),
                                        field<&R::externalData>("externalData")};
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
  out += '\n';
  return out;
}

}  // namespace headless

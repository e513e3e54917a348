// The tables of the records of geometry.
#pragma once

#include "headless/store/enum_texts.h"
#include "headless/store/records_geometry.h"

namespace headless {

template <>
struct EnumTexts<PrimitiveKind> {
  using E = PrimitiveKind;
  static constexpr Texts<E> texts[] = {
      {"box", E::box},       {"cylinder", E::cylinder},   {"cone", E::cone},
      {"sphere", E::sphere}, {"extrusion", E::extrusion}, {"revolution", E::revolution},
      {"hole", E::hole},     {"import", E::import}};
};
template <>
struct EnumTexts<PrimitiveUse> {
  static constexpr Texts<PrimitiveUse> texts[] = {{"add", PrimitiveUse::add}, {"cut", PrimitiveUse::cut}};
};

// A list of measures that must have `count` entries where it is given.
inline void checkCount(const Measures& measures, std::size_t count, std::string_view name, const Json& json,
                       Reader& in) {
  if (const Json* given = json.member(name); given && measures.size() != count)
    in.failKind(*given, text::format(L"an array of %d numbers", static_cast<int>(count)));
}

template <>
struct RecordTable<PlacementRecord> {
  using R = PlacementRecord;
  static constexpr std::array fields = {field<&R::position>("position"), field<&R::xAxis>("xAxis"),
                                        field<&R::zAxis>("zAxis")};
  static constexpr std::string_view schema = R"("allOf": [{"properties": {
    "position": {"minItems": 3, "maxItems": 3},
    "xAxis": {"minItems": 3, "maxItems": 3},
    "zAxis": {"minItems": 3, "maxItems": 3}}}])";
  static void check(const R& record, const Json& json, Reader& in) {
    checkCount(record.position, 3, "position", json, in);
    checkCount(record.xAxis, 3, "xAxis", json, in);
    checkCount(record.zAxis, 3, "zAxis", json, in);
  }
};

template <>
struct RecordTable<PrimitiveRecord> {
  using R = PrimitiveRecord;
  static constexpr std::array fields = {field<&R::type>("type", kRequired),
                                        field<&R::use>("use"),
                                        field<&R::feature>("feature"),
                                        field<&R::size>("size"),
                                        field<&R::diameter>("diameter"),
                                        field<&R::topDiameter>("topDiameter"),
                                        field<&R::length>("length"),
                                        field<&R::angle>("angle"),
                                        field<&R::profile>("profile"),
                                        field<&R::file>("file"),
                                        field<&R::step>("step"),
                                        field<&R::placement>("placement")};
  static constexpr std::string_view schema = R"("allOf": [
    {"properties": {"size": {"minItems": 3, "maxItems": 3},
                    "profile": {"minItems": 3, "items": {"minItems": 2, "maxItems": 2}},
                    "file": {"pattern": "^[^/\\\\:]*$"}}},
    {"if": {"properties": {"type": {"const": "box"}}}, "then": {"required": ["size"]}},
    {"if": {"properties": {"type": {"enum": ["cylinder", "cone"]}}}, "then": {"required": ["diameter", "length"]}},
    {"if": {"properties": {"type": {"enum": ["sphere", "hole"]}}}, "then": {"required": ["diameter"]}},
    {"if": {"properties": {"type": {"const": "extrusion"}}}, "then": {"required": ["profile", "length"]}},
    {"if": {"properties": {"type": {"const": "revolution"}}}, "then": {"required": ["profile"]}},
    {"if": {"properties": {"type": {"const": "import"}}},
     "then": {"oneOf": [{"required": ["file"], "properties": {"file": {"minLength": 1}}},
                        {"required": ["step"], "properties": {"step": {"minLength": 1}}}]}}])";
  // What each kind can't do without.
  static constexpr std::pair<PrimitiveKind, std::string_view> needs[] = {
      {PrimitiveKind::box, "size"},           {PrimitiveKind::cylinder, "diameter"},
      {PrimitiveKind::cylinder, "length"},    {PrimitiveKind::cone, "diameter"},
      {PrimitiveKind::cone, "length"},        {PrimitiveKind::sphere, "diameter"},
      {PrimitiveKind::extrusion, "profile"},  {PrimitiveKind::extrusion, "length"},
      {PrimitiveKind::revolution, "profile"}, {PrimitiveKind::hole, "diameter"}};
  static void check(const R& record, const Json& json, Reader& in) {
    for (const auto& [kind, member] : needs)
      if (kind == record.type && !json.member(member))
        in.fail(json, text::format(L"'%s' is missing", text::fromUtf8(member)));
    if (record.type == PrimitiveKind::import && record.file.empty() == record.step.empty())
      in.fail(json, record.file.empty() ? L"'file' is missing" : L"'file' and 'step' can't both be there");
    checkCount(record.size, 3, "size", json, in);
    const Json* profile = json.member("profile");
    if (profile && record.profile.size() < 3) in.failKind(*profile, L"an array of three points or more");
    for (const Measures& point : record.profile)
      if (point.size() != 2) in.fail(*profile, L"a point of 'profile' must be an array of 2 numbers");
    // A file elsewhere would be lost when the folder is copied.
    if (record.file.find_first_of("/\\:") != record.file.npos)
      in.failKind(*json.member("file"), L"the name of a file beside the document");
  }
};
template <>
struct RecordTable<GearRecord> {
  using R = GearRecord;
  static constexpr std::array fields = {field<&R::feature>("feature"),
                                        field<&R::tipDiameter>("tipDiameter", kRequired),
                                        field<&R::pitchDiameter>("pitchDiameter", kRequired),
                                        field<&R::rootDiameter>("rootDiameter", kRequired),
                                        field<&R::length>("length", kRequired),
                                        field<&R::placement>("placement")};
};
template <>
struct RecordTable<DatumRecord> {
  using R = DatumRecord;
  static constexpr std::array fields = {field<&R::name>("name"), field<&R::feature>("feature"), field<&R::csys>("csys"),
                                        field<&R::placement>("placement")};
};
template <>
struct RecordTable<SolidRecord> {
  using R = SolidRecord;
  static constexpr std::array fields = {field<&R::primitives>("primitives"), field<&R::gears>("gears"),
                                        field<&R::coordinateSystems>("coordinateSystems"), field<&R::points>("points"),
                                        field<&R::planes>("planes")};
  static constexpr std::string_view schema =
      R"("allOf": [{"properties": {"coordinateSystems": {"items": {"properties": {"csys": {"const": ""}}}}}}])";
  static void check(const R& record, const Json& json, Reader& in) {
    for (const DatumRecord& system : record.coordinateSystems)
      if (!system.csys.empty()) in.fail(json, L"a coordinate system counts in the model's own, without 'csys'");
  }
};

// A member that is kept as it was written, once it has been read as a record of this form without a fault.
template <class Form, auto M>
constexpr auto keptField(std::string_view name) {
  using R = typename ClassOfMember<decltype(M)>::type;
  Field<R> kept = field<M>(name);
  kept.read = [](R& record, const Json& json, Reader& in) {
    Form form;
    readValue(form, json, in);
    if (!in.failed()) readValue(record.*M, json, in);
  };
  kept.describe = [](Schema& schema) { describeValue(schema, Of<Form>{}); };
  return kept;
}

}  // namespace headless

// The tables of the records of drawings.
#pragma once

#include "headless/store/enum_texts.h"

namespace headless {

template <>
struct RecordTable<PointRecord> {
  using R = PointRecord;
  static constexpr std::array fields = {field<&R::x>("x", kRequired), field<&R::y>("y", kRequired)};
};
template <>
struct RecordTable<SheetMatrixRecord> {
  using R = SheetMatrixRecord;
  static constexpr std::array fields = {field<&R::scaleX>("scaleX"), field<&R::scaleY>("scaleY"),
                                        field<&R::offsetX>("offsetX"), field<&R::offsetY>("offsetY")};
  static constexpr std::string_view schema =
      R"("allOf": [{"properties": {"scaleX": {"not": {"const": 0}}, "scaleY": {"not": {"const": 0}}}}])";
  static void check(R& record, const Json& json, Reader& in) {
    if (record.scaleX == 0 || record.scaleY == 0) in.fail(json, L"a sheet's scale can't be 0");
  }
};
template <>
struct RecordTable<SheetRecord> {
  using R = SheetRecord;
  static constexpr std::array fields = {field<&R::name>("name"),
                                        field<&R::size>("size"),
                                        field<&R::portrait>("portrait"),
                                        field<&R::width>("width"),
                                        field<&R::height>("height"),
                                        field<&R::scale>("scale"),
                                        field<&R::format>("format"),
                                        field<&R::formatSheet>("formatSheet"),
                                        field<&R::formatBlanked>("formatBlanked"),
                                        field<&R::matrix>("matrix")};
};
template <>
struct RecordTable<BreakRecord> {
  using R = BreakRecord;
  static constexpr std::array fields = {field<&R::from>("from", kRequired), field<&R::to>("to", kRequired),
                                        field<&R::upright>("upright")};
  static void check(R& record, const Json& json, Reader& in) {
    if (!(record.from < record.to)) in.fail(json, L"a break leads from a smaller place to a larger one");
  }
};
template <>
struct RecordTable<ViewRecord> {
  using R = ViewRecord;
  static constexpr std::array fields = {field<&R::id>("id"),
                                        field<&R::name>("name", kRequired),
                                        field<&R::alternateName>("alternateName"),
                                        field<&R::sheet>("sheet"),
                                        field<&R::model>("model"),
                                        field<&R::scale>("scale"),
                                        field<&R::position>("position"),
                                        field<&R::displayStyle>("displayStyle"),
                                        field<&R::matrix>("matrix"),
                                        field<&R::section>("section"),
                                        field<&R::uncut>("uncut"),
                                        field<&R::teeth>("teeth"),
                                        field<&R::breaks>("breaks"),
                                        field<&R::detailOf>("detailOf"),
                                        field<&R::centre>("centre"),
                                        field<&R::radius>("radius")};
  static constexpr std::string_view schema =
      R"("allOf": [{"properties": {"matrix": {"anyOf": [{"maxItems": 0}, {"minItems": 9, "maxItems": 9}]}}}])";
  static void check(R& record, const Json& json, Reader& in) {
    if (record.detailOf != 0 && !(record.radius > 0)) in.fail(json, L"a detail's radius must be over 0");
    if (!record.matrix.empty() && record.matrix.size() != 9) in.fail(json, L"a view's matrix has nine numbers");
  }
};
template <>
struct RecordTable<CellRecord> {
  using R = CellRecord;
  static constexpr std::array fields = {field<&R::row>("row", kRequired), field<&R::column>("column", kRequired),
                                        field<&R::lines>("lines")};
};
template <>
struct RecordTable<SegmentRecord> {
  using R = SegmentRecord;
  static constexpr std::array fields = {field<&R::sheet>("sheet"), field<&R::position>("position")};
};
template <>
struct RecordTable<RepeatRegionRecord> {
  using R = RepeatRegionRecord;
  static constexpr std::array fields = {field<&R::model>("model", kRequired)};
};
template <>
struct RecordTable<TableRecord> {
  using R = TableRecord;
  static constexpr std::array fields = {field<&R::id>("id", kRequired),      field<&R::name>("name"),
                                        field<&R::fromFormat>("fromFormat"), field<&R::segments>("segments"),
                                        field<&R::columns>("columns"),       field<&R::rows>("rows"),
                                        field<&R::cells>("cells"),           field<&R::repeatRegions>("repeatRegions")};
};
template <>
struct RecordTable<NoteTextRecord> {
  using R = NoteTextRecord;
  static constexpr std::array fields = {field<&R::text>("text", kRequired), field<&R::height>("height"),
                                        field<&R::width>("width"),          field<&R::slant>("slant"),
                                        field<&R::thickness>("thickness"),  field<&R::font>("font")};
};
template <>
struct RecordTable<NoteRecord> {
  using R = NoteRecord;
  static constexpr std::array fields = {field<&R::id>("id", kRequired), field<&R::name>("name"),
                                        field<&R::lines>("lines"),      field<&R::sheet>("sheet"),
                                        field<&R::view>("view"),        field<&R::erased>("erased"),
                                        field<&R::csys>("csys"),        field<&R::position>("position")};
};
template <>
struct RecordTable<DraftRecord> {
  using R = DraftRecord;
  static constexpr std::array fields = {field<&R::sheet>("sheet", kRequired), field<&R::lines>("lines")};
};
template <>
struct RecordTable<SymbolGroupRecord> {
  using R = SymbolGroupRecord;
  static constexpr std::array fields = {field<&R::id>("id", kRequired), field<&R::name>("name", kRequired),
                                        field<&R::lines>("lines"), field<&R::groups>("groups")};
};
template <>
struct RecordTable<SymbolTextRecord> {
  using R = SymbolTextRecord;
  static constexpr std::array fields = {field<&R::text>("text", kRequired), field<&R::height>("height"),
                                        field<&R::position>("position")};
};
template <>
struct RecordTable<SymbolDefinitionRecord> {
  using R = SymbolDefinitionRecord;
  static constexpr std::array fields = {field<&R::id>("id", kRequired), field<&R::name>("name", kRequired),
                                        field<&R::path>("path"),        field<&R::lines>("lines"),
                                        field<&R::texts>("texts"),      field<&R::groups>("groups")};
};
template <>
struct RecordTable<SymbolRecord> {
  using R = SymbolRecord;
  static constexpr std::array fields = {
      field<&R::id>("id", kRequired),      field<&R::definition>("definition", kRequired),
      field<&R::sheet>("sheet"),           field<&R::view>("view"),
      field<&R::attachment>("attachment"), field<&R::erased>("erased"),
      field<&R::position>("position"),     field<&R::height>("height"),
      field<&R::angle>("angle"),           field<&R::groupOption>("groupOption"),
      field<&R::groups>("groups"),         field<&R::texts>("texts")};
};
// Where a dimension stands: pictures read these members from what records keep of members that they don't know.
inline constexpr std::string_view kDimensionPlaceSchema =
    R"("allOf": [{"properties": {"view": {"type": "integer"}, "position": {"type": "object",
       "properties": {"x": {"type": "number"}, "y": {"type": "number"}}, "required": ["x", "y"]}}}])";
template <>
struct RecordTable<ShownDimensionRecord> {
  using R = ShownDimensionRecord;
  static constexpr std::array fields = {field<&R::model>("model", kRequired), field<&R::id>("id", kRequired),
                                        field<&R::reference>("reference")};
  static constexpr std::string_view schema = kDimensionPlaceSchema;
};

template <>
struct RecordTable<DetailOptionRecord> {
  using R = DetailOptionRecord;
  static constexpr std::array fields = {field<&R::name>("name", kRequired), field<&R::value>("value")};
};

}  // namespace headless

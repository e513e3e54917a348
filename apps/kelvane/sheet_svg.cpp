#include "kelvane/sheet_svg.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "creo/ProDwgtable.h"
#include "creo/ProNote.h"
#include "headless/model/drawing.h"
#include "headless/model/drawing_text.h"
#include "headless/model/formats.h"
#include "headless/model/sheet_units.h"
#include "headless/session/state.h"
#include "kelvane/svg.h"
#include "text/encoding.h"
#include "text/numbers.h"

namespace kelvane {
namespace {

using headless::DraftRecord;
using headless::LineRecord;
using headless::PointRecord;

constexpr double kGap = 10;         // between sheets, and around them, in mm
constexpr double kThinnest = 0.18;  // the narrowest pen of ISO 128, in mm
constexpr double kMmAnInch = 25.4;
constexpr std::string_view kBlack = "#000";

// Creo's first colours as a drawing on white paper shows them.
std::string_view colorOf(const LineRecord& line) {
  static constexpr std::string_view kColors[] = {"#000",    "#000",    "#b00000", "#606060", "#404040", "#0050a0",
                                                 "#008040", "#a06000", "#7000a0", "#008080", "#a00060", "#505000"};
  if (line.colorMethod == 0) return kBlack;
  const auto place = static_cast<std::size_t>(std::abs(static_cast<long long>(line.color)));
  return kColors[place % std::size(kColors)];
}

// Where a point of the drawing lies on the picture.
struct SheetView {
  creo::ProSheetMatrix matrix;
  double left = 0, bottom = 0;  // of the sheet on the picture
  double unit = 1;              // how long a millimetre is

  [[nodiscard]] double x(double stored) const { return left + stored * matrix.scaleX + matrix.offsetX; }
  [[nodiscard]] double y(double stored) const { return bottom - (stored * matrix.scaleY + matrix.offsetY); }
  [[nodiscard]] double width(double stored) const {
    return std::max(stored * std::fabs(matrix.scaleX), kThinnest * unit);
  }
};

class SheetPicture {
 public:
  SheetPicture(Svg& svg, headless::Session& session, const headless::Model& drawing, int number, SheetView view)
      : svg_(svg), session_(session), drawing_(drawing), number_(number), view_(view) {}

  void draw() {
    const headless::SheetRecord& sheet = *headless::sheetOf(*drawing_.document, number_);
    const creo::ProSheetDimensions size = headless::sheetDimensions(sheet);
    svg_.rectangle(view_.left, view_.bottom - size.height, size.width, size.height,
                   "fill=\"#fff\" stroke=\"#888\" stroke-width=\"" + svgNumber(kThinnest * view_.unit) + "\"");
    if (!sheet.format.empty() && !sheet.formatBlanked) format(sheet);
    const headless::ModelRecord& record = drawing_.document->record;
    for (const headless::ViewRecord& one : record.views)
      if (one.sheet == number_) viewMark(one);
    for (const headless::TableRecord& one : record.tables)
      if (!one.erased && !(one.fromFormat && sheet.formatBlanked)) table(one);
    for (const headless::SymbolRecord& one : record.symbols)
      if (one.sheet == number_) symbol(one);
    for (const headless::NoteRecord& one : record.notes)
      if (one.sheet == number_ && !one.erased) note(one);
    drafts(record.drafts, number_);
  }

 private:
  [[nodiscard]] double textHeight() const { return headless::textHeight(*drawing_.document, number_); }

  void stroke(const LineRecord& line, const PointRecord& origin = {}, double scale = 1, double angle = 0) {
    const double c = std::cos(angle) * scale, s = std::sin(angle) * scale;
    const auto x = [&](double px, double py) { return view_.x(origin.x + c * px - s * py); };
    const auto y = [&](double px, double py) { return view_.y(origin.y + s * px + c * py); };
    svg_.line(x(line.x1, line.y1), y(line.x1, line.y1), x(line.x2, line.y2), y(line.x2, line.y2),
              view_.width(line.width * scale), colorOf(line));
  }

  void drafts(const std::vector<DraftRecord>& drafts, int sheet) {
    for (const DraftRecord& draft : drafts) {
      if (draft.sheet != sheet) continue;
      for (const LineRecord& line : draft.lines) stroke(line);
    }
  }

  // The lines and notes of the format, in its own coordinates; its tables are the drawing's own.
  void format(const headless::SheetRecord& sheet) {
    const headless::Model* model = headless::formatOf(session_.state().models, sheet);
    if (!model) return;
    const int number = headless::formatSheetOf(sheet);
    const SheetView own = view_;
    view_.matrix = creo::ProDrawingSheetTrfGet(model->handle, number).value;
    drafts(model->document->record.drafts, number);
    for (const headless::NoteRecord& one : model->document->record.notes)
      if (one.sheet == number && !one.erased) note(one);
    view_ = own;
  }

  void viewMark(const headless::ViewRecord& view) {
    const double x = view_.x(view.position.x), y = view_.y(view.position.y), arm = 5 * view_.unit;
    const double thin = kThinnest * view_.unit;
    svg_.line(x - arm, y, x + arm, y, thin, "#6080c0");
    svg_.line(x, y - arm, x, y + arm, thin, "#6080c0");
    svg_.text(x + arm / 2, y - arm / 2, textHeight(), view.name, "fill=\"#6080c0\"");
  }

  // Its lower left corner stands at its place; the first row is the uppermost.
  void table(const headless::TableRecord& table) {
    for (const headless::SegmentRecord& segment : table.segments) {
      if (segment.sheet != number_) continue;
      grid(table, segment.position);
      cells(table, segment.position);
    }
  }

  void grid(const headless::TableRecord& table, const PointRecord& at) {
    const double width = std::accumulate(table.columns.begin(), table.columns.end(), 0.0);
    const double height = std::accumulate(table.rows.begin(), table.rows.end(), 0.0);
    double x = at.x, y = at.y + height;
    stroke({.x1 = x, .y1 = at.y, .x2 = x, .y2 = y});
    for (const double column : table.columns) {
      x += column;
      stroke({.x1 = x, .y1 = at.y, .x2 = x, .y2 = at.y + height});
    }
    stroke({.x1 = at.x, .y1 = y, .x2 = at.x + width, .y2 = y});
    for (const double row : table.rows) {
      y -= row;
      stroke({.x1 = at.x, .y1 = y, .x2 = at.x + width, .y2 = y});
    }
  }

  void cells(const headless::TableRecord& table, const PointRecord& at) {
    const creo::ProDwgtable handle{drawing_.handle, table.id};
    std::vector<double> lefts = {at.x}, tops = {at.y + std::accumulate(table.rows.begin(), table.rows.end(), 0.0)};
    for (const double column : table.columns) lefts.push_back(lefts.back() + column);
    for (const double row : table.rows) tops.push_back(tops.back() - row);
    for (const headless::CellRecord& cell : table.cells) {
      if (cell.row < 1 || cell.column < 1 || static_cast<std::size_t>(cell.row) >= tops.size() ||
          static_cast<std::size_t>(cell.column) >= lefts.size())
        continue;
      const auto lines = creo::ProDwgtableCelltextGet(handle, cell.column, cell.row, creo::ProDwgtableText::displayed);
      const auto row = static_cast<std::size_t>(cell.row - 1), column = static_cast<std::size_t>(cell.column - 1);
      cellText(lines.value, lefts[column], tops[row], table.columns[column], table.rows[row]);
    }
  }

  // Lines share the cell's height.
  void cellText(const std::vector<std::wstring>& lines, double left, double top, double width, double height) {
    if (lines.empty()) return;
    const double room = height * std::fabs(view_.matrix.scaleY) / static_cast<double>(lines.size());
    const double size = std::min(textHeight(), room * 0.7);
    for (std::size_t i = 0; i < lines.size(); ++i)
      svg_.text(view_.x(left) + size * 0.3, view_.y(top) + room * static_cast<double>(i) + (room + size * 0.7) / 2,
                size, text::toUtf8(lines[i]), {}, width * std::fabs(view_.matrix.scaleX) - size * 0.6);
  }

  void note(const headless::NoteRecord& note) {
    double y = view_.y(note.position.y);
    for (std::size_t i = 0; i < note.lines.size(); ++i) {
      const auto& pieces = note.lines[i].texts;
      static const headless::NoteTextRecord plain;
      const headless::NoteTextRecord& form = pieces.empty() ? plain : pieces.front();
      const double size = form.height > 0 ? form.height : textHeight();
      std::string style;
      if (form.slant != 0) style += "font-style=\"oblique\" ";
      if (form.thickness > 0) style += "font-weight=\"bold\" ";
      if (!form.font.empty()) style += "font-family=\"" + escaped(form.font) + "\"";
      svg_.text(view_.x(note.position.x), y, size, shownHere(note.lines[i].text()), style);
      y += size * 1.5;
    }
  }

  // The groups that a placed symbol shows: all of them, none, or those that it names with what is around them.
  static void shownGroups(const std::vector<headless::SymbolGroupRecord>& groups, const headless::SymbolRecord& symbol,
                          std::vector<const headless::SymbolGroupRecord*>& into) {
    using creo::ProSymbolGroups;
    if (symbol.groupOption == ProSymbolGroups::none) return;
    for (const headless::SymbolGroupRecord& group : groups) {
      const bool isNamed = std::find(symbol.groups.begin(), symbol.groups.end(), group.id) != symbol.groups.end();
      if (symbol.groupOption == ProSymbolGroups::custom && !isNamed) continue;
      into.push_back(&group);
      shownGroups(group.groups, symbol, into);
    }
  }

  void symbol(const headless::SymbolRecord& symbol) {
    const auto& definitions = drawing_.document->record.symbolDefinitions;
    const auto found = std::find_if(definitions.begin(), definitions.end(),
                                    [&](const auto& one) { return headless::sameName(one.name, symbol.definition); });
    const double angle = symbol.angle * std::acos(-1.0) / 180, scale = symbol.height > 0 ? symbol.height : 1;
    std::vector<const headless::SymbolGroupRecord*> groups;
    if (found != definitions.end()) {
      for (const LineRecord& line : found->lines) stroke(line, symbol.position, scale, angle);
      shownGroups(found->groups, symbol, groups);
    }
    for (const headless::SymbolGroupRecord* group : groups)
      for (const LineRecord& line : group->lines) stroke(line, symbol.position, scale, angle);
    const bool isBare = found == definitions.end() || (found->lines.empty() && found->texts.empty() && groups.empty());
    if (isBare) return bareSymbol(symbol);
    symbolTexts(*found, symbol, scale);
  }

  // A definition without graphics: a diamond with its name.
  void bareSymbol(const headless::SymbolRecord& symbol) {
    const double x = view_.x(symbol.position.x), y = view_.y(symbol.position.y), arm = 2.5 * view_.unit;
    const double thin = kThinnest * view_.unit;
    svg_.line(x - arm, y, x, y - arm, thin, kBlack);
    svg_.line(x, y - arm, x + arm, y, thin, kBlack);
    svg_.line(x + arm, y, x, y + arm, thin, kBlack);
    svg_.line(x, y + arm, x - arm, y, thin, kBlack);
    svg_.text(x + arm * 1.4, y + arm / 2, textHeight(), symbol.definition, {});
  }

  // A text with its "&" forms as this sheet shows them.
  [[nodiscard]] std::string shownHere(const std::string& symbolic) const {
    headless::Session::State& state = session_.state();
    return text::toUtf8(
        headless::displayedText(state.models, state.parameters, drawing_, number_, text::fromUtf8(symbolic)));
  }

  // The instance's texts take the places of the definition's, in their order.
  void symbolTexts(const headless::SymbolDefinitionRecord& definition, const headless::SymbolRecord& symbol,
                   double scale) {
    const auto own = creo::ProDtlsyminstTextGet({drawing_.handle, symbol.id}, creo::ProDtlText::displayed);
    for (std::size_t i = 0; i < definition.texts.size(); ++i) {
      const headless::SymbolTextRecord& text = definition.texts[i];
      svg_.text(view_.x(symbol.position.x + text.position.x * scale),
                view_.y(symbol.position.y + text.position.y * scale),
                text.height > 0 ? text.height * scale : textHeight(),
                i < own.value.size() ? text::toUtf8(own.value[i]) : shownHere(text.text), {});
    }
  }

  Svg& svg_;
  headless::Session& session_;
  const headless::Model& drawing_;
  int number_;
  SheetView view_;
};

}  // namespace

std::string sheetSvg(headless::Session& session, creo::ProMdl drawing, int sheet) {
  const headless::Model* model = session.models().find(drawing);
  if (!model || model->type() == creo::ProMdlType::part || model->type() == creo::ProMdlType::assembly) return {};
  const int count = headless::sheetCount(*model->document);
  if (sheet < 0 || sheet > count) return {};
  const int first = sheet == 0 ? 1 : sheet, last = sheet == 0 ? count : sheet;
  const bool isMm = headless::isInMm(headless::sheetDimensions(*headless::sheetOf(*model->document, first)).size);
  const double unit = isMm ? 1 : 1 / kMmAnInch, gap = kGap * unit;
  double width = 0, height = gap;
  for (int number = first; number <= last; ++number) {
    const creo::ProSheetDimensions size = headless::sheetDimensions(*headless::sheetOf(*model->document, number));
    width = std::max(width, size.width);
    height += size.height + gap;
  }
  Svg svg(width + 2 * gap, height, isMm ? "mm" : "in");
  svg.rectangle(0, 0, width + 2 * gap, height, "fill=\"#ddd\"");
  double top = gap;
  for (int number = first; number <= last; ++number) {
    const headless::SheetRecord& record = *headless::sheetOf(*model->document, number);
    const double bottom = top + headless::sheetDimensions(record).height;
    const creo::ProSheetMatrix matrix = creo::ProDrawingSheetTrfGet(drawing, number).value;
    SheetPicture(svg, session, *model, number, {matrix, gap, bottom, unit}).draw();
    top = bottom + gap;
  }
  return svg.finished();
}

}  // namespace kelvane

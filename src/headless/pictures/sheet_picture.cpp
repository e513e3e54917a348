#include "headless/pictures/sheet_picture.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>
#include <numeric>
#include <utility>

#include "headless/model/bodies.h"
#include "headless/model/drawing.h"
#include "headless/model/drawing_text.h"
#include "headless/model/formats.h"
#include "headless/model/repeated_rows.h"
#include "headless/model/sheet_units.h"
#include "headless/pictures/dimension_text.h"
#include "headless/pictures/drawn_views.h"
#include "headless/pictures/sheet_dimensions.h"
#include "headless/pictures/shown_parts.h"
#include "headless/store/names.h"
#include "text/encoding.h"
#include "text/format.h"

namespace headless {
namespace {

constexpr double kThinnest = 0.18;  // of strokes that have a width, in mm: the narrowest pen of ISO 128
constexpr double kMmAnInch = 25.4;
constexpr double kLabel = 1.4;         // of other texts: letters and labels of views (ISO 128)
constexpr double kSmallestText = 1.8;  // mm: the smallest height of ISO 3098
constexpr SheetColor kBlack = 0, kViewColor = 0x6080c0;
constexpr const wchar_t* kFaceted = L"drawn by facets";

// Creo's first colours as a drawing on white paper shows them.
SheetColor colorOf(const LineRecord& line) {
  static constexpr SheetColor kColors[] = {0x000000, 0x000000, 0xb00000, 0x606060, 0x404040, 0x0050a0,
                                           0x008040, 0xa06000, 0x7000a0, 0x008080, 0xa00060, 0x505000};
  if (line.colorMethod == 0) return kBlack;
  const auto place = static_cast<std::size_t>(std::abs(static_cast<long long>(line.color)));
  return kColors[place % std::size(kColors)];
}

creo::ProSheetMatrix matrixOf(const SheetRecord& sheet) {
  if (!sheet.matrix) return {};
  return {sheet.matrix->scaleX, sheet.matrix->scaleY, sheet.matrix->offsetX, sheet.matrix->offsetY};
}

// Where a symbol's own coordinates lie on the sheet.
struct SymbolFrame {
  creo::ProPoint origin = {};
  double scale = 1, angle = 0;  // degrees

  [[nodiscard]] creo::ProPoint at(double x, double y) const {
    const double turn = angle * std::numbers::pi / 180;
    const double c = std::cos(turn) * scale, s = std::sin(turn) * scale;
    return {origin.x + c * x - s * y, origin.y + s * x + c * y};
  }
};

// What a view shows of its model, in mm on paper.
struct Extent {
  geometry::FlatPoint middle;
  double width = 0, height = 0;
};

class Painter {
 public:
  Painter(const PictureSources& sources, ShownModels& models, const Model& drawing, int number)
      : sources_(sources),
        models_(models),
        drawing_(drawing),
        number_(number),
        textHeight_(headless::textHeight(*drawing.document, number)) {}

  SheetPicture paint() {
    const SheetRecord* sheet = sheetOf(*drawing_.document, number_);
    if (!sheet) return {};
    const creo::ProSheetDimensions size = sheetDimensions(*sheet);
    picture_.isInMm = isInMm(size.size);
    unit_ = picture_.isInMm ? 1 : kMmAnInch;
    picture_.width = size.width * unit_;
    picture_.height = size.height * unit_;
    matrix_ = matrixOf(*sheet);
    if (!sheet->format.empty() && !sheet->formatBlanked) format(*sheet);
    contents(*sheet);
    return std::move(picture_);
  }

 private:
  void contents(const SheetRecord& sheet) {
    const ModelRecord& record = drawing_.document->record;
    part_ = SheetPart::views;
    DrawnViews views(sources_.models, models_, drawing_, picture_.width, picture_.height,
                     std::fabs(matrix_.scaleX) * unit_, sheet.scale);
    std::vector<const ViewRecord*> own;
    for (const ViewRecord& entry : record.views)
      if (std::max(entry.sheet, 1) == number_) own.push_back(&entry);
    views.prepare(own);
    for (const ViewRecord* entry : own) {
      const auto drawn = views.draw(*entry);
      if (drawn) drawn_.emplace(entry, Extent{drawn->middle, drawn->width, drawn->height});
      view(*entry, drawn);
    }
    for (const TableRecord& item : record.tables) {
      part_ = item.fromFormat ? SheetPart::format : SheetPart::tables;
      if (!(item.fromFormat && sheet.formatBlanked)) table(item);
    }
    part_ = SheetPart::symbols;
    for (const SymbolRecord& candidate : record.symbols)
      if (candidate.sheet == number_ && !candidate.erased) symbol(candidate);
    part_ = SheetPart::notes;
    for (const NoteRecord& element : record.notes)
      if (element.sheet == number_ && !element.erased) note(element);
    part_ = SheetPart::lines;
    drafts(record.drafts, number_);
    if (record.shownDimensions.empty() && record.dimensions.empty()) return;
    const auto toSheet = [this](geometry::FlatPoint p) -> geometry::FlatPoint { return {x(p.x), y(p.y)}; };
    addDimensions(models_, drawing_, number_, dimensionedViews(), otherViews_, textHeight(), toSheet, picture_);
  }

  // Of a model that isn't drawn here.
  std::optional<Extent> wholeExtent(const ViewPlane& plane) {
    const auto box = sources_.bodies.outline(*plane.model, toScreen(plane.screen));
    if (!box) return std::nullopt;
    const creo::ProVector &low = box.value.min, &high = box.value.max;
    const double scale = plane.scale;
    return Extent{{(low.x + high.x) / 2 * scale, (low.y + high.y) / 2 * scale},
                  (high.x - low.x) * scale,
                  (high.y - low.y) * scale};
  }

  // Those that show a model as a whole, of all sheets.
  std::vector<DimensionedView> dimensionedViews() {
    std::vector<DimensionedView> views;
    for (const ViewRecord& entry : drawing_.document->record.views) {
      const int number = std::max(entry.sheet, 1);
      const SheetRecord* sheet = sheetOf(*drawing_.document, number);
      const auto plane = sheet ? planeOf(sources_.models, entry, sheet->scale) : std::nullopt;
      const auto drawn = drawn_.find(&entry);
      if (!plane) continue;
      DimensionedView view{
          .view = &entry, .model = plane->model, .screen = plane->screen, .scale = plane->scale, .sheet = number};
      view.isDrawn = number != number_ || drawn != drawn_.end();
      view.place = {x(entry.position.x), y(entry.position.y)};
      // A section may have taken away what the model reaches to, and gears have no teeth.
      const auto extent = drawn != drawn_.end() ? std::optional(drawn->second) : wholeExtent(*plane);
      if (!extent) continue;
      view.middle = extent->middle;
      view.width = extent->width;
      view.height = extent->height;
      const creo::ProSheetDimensions size = sheetDimensions(*sheet);
      const double unit = isInMm(size.size) ? 1 : kMmAnInch;
      if (view.width <= size.width * unit && view.height <= size.height * unit) views.push_back(view);
    }
    return views;
  }

  [[nodiscard]] double x(double stored) const { return (stored * matrix_.scaleX + matrix_.offsetX) * unit_; }
  [[nodiscard]] double y(double stored) const { return (stored * matrix_.scaleY + matrix_.offsetY) * unit_; }
  // The height of a text that has none of its own, in mm.
  [[nodiscard]] double textHeight() const { return textHeight_ * unit_; }

  void stroke(const LineRecord& line, const SymbolFrame& frame = {}) {
    const creo::ProPoint from = frame.at(line.x1, line.y1), to = frame.at(line.x2, line.y2);
    const double width = line.width * frame.scale * std::fabs(matrix_.scaleX) * unit_;
    const double pen = line.width > 0 ? std::max(width, kThinnest) : kNarrowPen;
    picture_.strokes.push_back({geometry::FlatLine{{x(from.x), y(from.y)}, {x(to.x), y(to.y)}},
                                {.width = pen, .color = colorOf(line), .part = part_}});
  }
  // A line of the picture's own, in mm.
  void mark(double x1, double y1, double x2, double y2, SheetColor color) {
    picture_.strokes.push_back(
        {geometry::FlatLine{{x1, y1}, {x2, y2}}, {.width = kNarrowPen, .color = color, .part = part_}});
  }
  SheetText& write(double left, double base, double height, std::wstring text, SheetColor color = kBlack) {
    return picture_.texts.emplace_back(
        SheetText{.x = left, .y = base, .height = height, .text = std::move(text), .color = color, .part = part_});
  }

  void drafts(const std::vector<DraftRecord>& drafts, int sheet) {
    for (const DraftRecord& draft : drafts) {
      if (draft.sheet != sheet) continue;
      for (const LineRecord& line : draft.lines) stroke(line);
    }
  }

  // The lines and notes of the format, in its own coordinates; its tables are the drawing's own.
  void format(const SheetRecord& sheet) {
    const Model* model = formatOf(sources_.models, sheet);
    if (!model) return;
    const int number = formatSheetOf(sheet);
    const SheetRecord* source = sheetOf(*model->document, number);
    const creo::ProSheetMatrix own = std::exchange(matrix_, source ? matrixOf(*source) : creo::ProSheetMatrix{});
    part_ = SheetPart::format;
    drafts(model->document->record.drafts, number);
    for (const NoteRecord& one : model->document->record.notes)
      if (one.sheet == number && !one.erased) note(one);
    matrix_ = own;
  }

  // Of a view that has no dimensions of its own.
  void keepFree(double at, double up, double width, double height) {
    geometry::FlatBox& box = otherViews_.emplace_back();
    box.take(geometry::FlatPoint{at - width / 2, up - height / 2});
    box.take(geometry::FlatPoint{at + width / 2, up + height / 2});
  }

  // Its lines, or a frame with the model's name and its own.
  void view(const ViewRecord& view, const std::optional<DrawnView>& drawn) {
    const double at = x(view.position.x), up = y(view.position.y);
    if (!drawn) return viewFrame(view, at, up);
    if (view.detailOf != 0 || !view.breaks.empty()) keepFree(at, up, drawn->width, drawn->height);
    for (const SheetStroke& stroke : drawn->lines.strokes)
      picture_.strokes.push_back({geometry::moved(stroke.curve, at, up), stroke.pen});
    for (const SheetHatch& hatch : drawn->lines.hatches)
      if (hatch.pen.isOfArea) picture_.hatches.push_back(moved(hatch, at, up));
    const double size = kLabel * textHeight();
    const auto label = [&](double middle, double base, const std::wstring& words) {
      write(at + middle - textWidth(words, size) / 2, up + base, size, words);
    };
    for (const ViewText& text : drawn->lines.texts) label(text.at.x, text.at.y - size / 2, text.text);
    if (!drawn->label.empty()) label(0, drawn->height / 2 + size, drawn->label);
    if (drawn->isFaceted)
      write(at - drawn->width / 2, up - drawn->height / 2 - 2 * textHeight(), textHeight(), kFaceted);
  }

  void viewFrame(const ViewRecord& view, double at, double up) {
    constexpr double kHalfWidth = 20, kHalfHeight = 12.5;
    const double left = at - kHalfWidth, right = at + kHalfWidth, low = up - kHalfHeight, high = up + kHalfHeight;
    mark(left, low, right, low, kViewColor);
    mark(right, low, right, high, kViewColor);
    mark(right, high, left, high, kViewColor);
    mark(left, high, left, low, kViewColor);
    keepFree(at, up, 2 * kHalfWidth, 2 * kHalfHeight);
    double base = up + textHeight() / 2;
    for (const std::string& line : {view.model, view.name}) {
      const std::wstring words = text::fromUtf8(line);
      if (!words.empty()) write(at - textWidth(words, textHeight()) / 2, base, textHeight(), words, kViewColor);
      base -= textHeight() * 1.5;
    }
  }

  // Its lower left corner stands at its place; the first row is the uppermost. Rows that repeat themselves grow down.
  void table(const TableRecord& table) {
    if (auto repeated = repeatedRows(sources_.models, sources_.parameters, drawing_, table)) {
      TableRecord shown;
      shown.columns = table.columns;
      const auto sum = [](const std::vector<double>& rows) { return std::accumulate(rows.begin(), rows.end(), 0.0); };
      for (const SegmentRecord& segment : table.segments) {
        SegmentRecord& moved = shown.segments.emplace_back();
        moved.sheet = segment.sheet;
        moved.position.x = segment.position.x;
        moved.position.y = segment.position.y + sum(table.rows) - sum(repeated->rows);
      }
      shown.rows = std::move(repeated->rows);
      shown.cells = std::move(repeated->cells);
      return plainTable(shown);
    }
    plainTable(table);
  }

  void plainTable(const TableRecord& table) {
    for (const SegmentRecord& segment : table.segments) {
      if (segment.sheet != number_) continue;
      grid(table, segment.position);
      cells(table, segment.position);
    }
  }

  void rule(double x1, double y1, double x2, double y2) {
    LineRecord line;
    line.x1 = x1;
    line.y1 = y1;
    line.x2 = x2;
    line.y2 = y2;
    stroke(line);
  }

  void grid(const TableRecord& table, const PointRecord& at) {
    const double width = std::accumulate(table.columns.begin(), table.columns.end(), 0.0);
    const double height = std::accumulate(table.rows.begin(), table.rows.end(), 0.0);
    double left = at.x, top = at.y + height;
    rule(left, at.y, left, top);
    for (const double column : table.columns) {
      left += column;
      rule(left, at.y, left, at.y + height);
    }
    rule(at.x, top, at.x + width, top);
    for (const double row : table.rows) {
      top -= row;
      rule(at.x, top, at.x + width, top);
    }
  }

  void cells(const TableRecord& table, const PointRecord& at) {
    std::vector<double> lefts = {at.x}, tops = {at.y + std::accumulate(table.rows.begin(), table.rows.end(), 0.0)};
    for (const double column : table.columns) lefts.push_back(lefts.back() + column);
    for (const double row : table.rows) tops.push_back(tops.back() - row);
    for (const CellRecord& cell : table.cells) {
      if (cell.row < 1 || cell.column < 1 || static_cast<std::size_t>(cell.row) >= tops.size() ||
          static_cast<std::size_t>(cell.column) >= lefts.size())
        continue;
      const auto row = static_cast<std::size_t>(cell.row - 1), column = static_cast<std::size_t>(cell.column - 1);
      cellText(cell.lines, lefts[column], tops[row], table.columns[column], table.rows[row]);
    }
  }

  // Lines share the cell's height.
  void cellText(const std::vector<std::string>& lines, double left, double top, double width, double height) {
    if (lines.empty()) return;
    const double line = height * std::fabs(matrix_.scaleY) * unit_ / static_cast<double>(lines.size());
    const double size = std::min(textHeight(), line * 0.7);
    const double room = width * std::fabs(matrix_.scaleX) * unit_ - size * 0.6;
    for (std::size_t i = 0; i < lines.size(); ++i) {
      std::wstring shown = shownHere(lines[i]);
      const double wanted = textWidth(shown, size);
      const double least = std::min(size, kSmallestText);
      const double fitted = room > 0 && wanted > room ? std::max(least, size * room / wanted) : size;
      if (!shown.empty() && faceWidth(shown, fitted) > room)
        models_.warn(text::format(L"'%s' is too long for its cell on sheet %d of %s.%s", shown, number_, drawing_.name,
                                  creo::typeExtension(drawing_.type())));
      const double base = y(top) - line * static_cast<double>(i) - (line + size * 0.7) / 2;
      write(x(left) + size * 0.3, base, fitted, std::move(shown)).room = std::max(room, 0.0);
    }
  }

  void note(const NoteRecord& note) {
    double up = y(note.position.y);
    for (const NoteLineRecord& line : note.lines) {
      double size = 0, along = x(note.position.x);
      for (const NoteTextRecord& form : line.texts) {
        const double height = form.height > 0 ? form.height * unit_ : textHeight();
        SheetText& text = write(along, up, height, shownHere(form.text));
        text.isOblique = form.slant != 0;
        text.isBold = form.thickness > 0;
        text.font = form.font;
        along += faceWidth(text.text, height);
        size = std::max(size, height);
      }
      if (size == 0) size = textHeight();
      up -= size * 1.5;
    }
  }

  // The groups that a placed symbol shows: all of them, none, or those that it names with what is around them.
  static void shownGroups(const std::vector<SymbolGroupRecord>& groups, const SymbolRecord& symbol,
                          std::vector<const SymbolGroupRecord*>& into) {
    using creo::ProSymbolGroups;
    if (symbol.groupOption == ProSymbolGroups::none) return;
    for (const SymbolGroupRecord& group : groups) {
      const bool isNamed = std::find(symbol.groups.begin(), symbol.groups.end(), group.id) != symbol.groups.end();
      if (symbol.groupOption == ProSymbolGroups::custom && !isNamed) continue;
      into.push_back(&group);
      shownGroups(group.groups, symbol, into);
    }
  }

  const SymbolDefinitionRecord* definitionOf(const SymbolRecord& symbol) {
    const auto& all = drawing_.document->record.symbolDefinitions;
    const std::size_t place = definitions_.find(symbol.definition, all.size(),
                                                [&](std::size_t i) -> const std::string& { return all[i].name; });
    return place == NameIndex::kNone ? nullptr : &all[place];
  }

  void symbol(const SymbolRecord& symbol) {
    const SymbolDefinitionRecord* definition = definitionOf(symbol);
    const SymbolFrame frame{.origin = {symbol.position.x, symbol.position.y},
                            .scale = symbol.height > 0 ? symbol.height : 1,
                            .angle = symbol.angle};
    std::vector<const SymbolGroupRecord*> groups;
    if (definition) shownGroups(definition->groups, symbol, groups);
    if (!definition || (definition->lines.empty() && definition->texts.empty() && groups.empty()))
      return bareSymbol(symbol);
    for (const LineRecord& line : definition->lines) stroke(line, frame);
    for (const SymbolGroupRecord* group : groups)
      for (const LineRecord& line : group->lines) stroke(line, frame);
    symbolTexts(*definition, symbol, frame);
  }

  // A definition without graphics: a diamond with its name.
  void bareSymbol(const SymbolRecord& symbol) {
    constexpr double kArm = 2.5;
    const double at = x(symbol.position.x), up = y(symbol.position.y);
    mark(at - kArm, up, at, up + kArm, kBlack);
    mark(at, up + kArm, at + kArm, up, kBlack);
    mark(at + kArm, up, at, up - kArm, kBlack);
    mark(at, up - kArm, at - kArm, up, kBlack);
    write(at + kArm * 1.4, up - kArm / 2, textHeight(), text::fromUtf8(symbol.definition));
  }

  // A text with its "&" forms as this sheet shows them.
  [[nodiscard]] std::wstring shownHere(const std::string& symbolic) const {
    return displayedText(sources_.models, sources_.parameters, drawing_, number_, text::fromUtf8(symbolic));
  }

  // The instance's texts take the places of the definition's, in their order.
  void symbolTexts(const SymbolDefinitionRecord& definition, const SymbolRecord& symbol, const SymbolFrame& frame) {
    for (std::size_t i = 0; i < definition.texts.size(); ++i) {
      const SymbolTextRecord& text = definition.texts[i];
      const creo::ProPoint place = frame.at(text.position.x, text.position.y);
      const double height = text.height > 0 ? text.height * frame.scale * unit_ : textHeight();
      write(x(place.x), y(place.y), height, shownHere(i < symbol.texts.size() ? symbol.texts[i] : text.text)).angle =
          frame.angle;
    }
  }

  PictureSources sources_;
  ShownModels& models_;
  const Model& drawing_;
  int number_;
  double textHeight_;  // in units of the sheet
  double unit_ = 1;    // mm a unit of the sheet
  creo::ProSheetMatrix matrix_;
  SheetPart part_ = SheetPart::lines;
  std::map<const ViewRecord*, Extent> drawn_;  // the views that show their model's lines
  std::vector<geometry::FlatBox> otherViews_;
  NameIndex definitions_;
  SheetPicture picture_;
};

}  // namespace

SheetPicture sheetPicture(const PictureSources& sources, ShownModels& models, const Model& drawing, int sheet) {
  return Painter(sources, models, drawing, sheet).paint();
}

SheetPicture sheetPicture(const PictureSources& sources, const Model& drawing, int sheet) {
  ShownModels models(sources);
  return sheetPicture(sources, models, drawing, sheet);
}

double textWidth(std::wstring_view text, double height) { return 0.6 * height * static_cast<double>(text.size()); }

}  // namespace headless

#include "headless/pictures/sheet_dimensions.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <set>
#include <tuple>

#include "headless/model/dimension_value.h"
#include "headless/model/drawing.h"
#include "headless/model/models.h"
#include "headless/pictures/dimension_room.h"
#include "headless/pictures/drawn_views.h"
#include "headless/store/fields.h"
#include "headless/store/names.h"
#include "text/encoding.h"
#include "text/format.h"

namespace headless {

using creo::ProVector;
using geometry::FlatBox;
using geometry::FlatPoint;

namespace {

constexpr double kFirst = 10, kStep = 8;  // mm: from the outline to the first line, from line to line
constexpr int kRows = 6;
constexpr double kMargin = 5;       // of the sheet, in mm
constexpr double kLevel = 1e-6;     // what counts as parallel
constexpr double kRounding = 1e-6;  // mm: by which a length may be short of what something needs
constexpr double kListHeight = 2.5, kListLine = 3.5, kListMargin = 15;

double dot(const ProVector& a, const ProVector& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
ProVector cross(const ProVector& a, const ProVector& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

// Where a document wants it. Only pictures read these members, which stay in the record as they were written.
struct Wish {
  int view = 0;  // an id; 0: none
  std::optional<FlatPoint> position;
};
Wish wishOf(const Open& record) {
  Wish wish;
  if (!record.extra) return wish;
  for (const auto& [name, written] : record.extra->unknown) {
    Json value;
    if (parseJson(written, value).line != 0) continue;
    if (name == "view" && value.is(JsonKind::integer)) wish.view = static_cast<int>(value.integer);
    if (name != "position") continue;
    const Json *x = value.member("x"), *y = value.member("y");
    if (x && y && x->isNumber() && y->isNumber()) wish.position = FlatPoint{x->real, y->real};
  }
  return wish;
}

struct Item {
  std::wstring name = {};        // "SEAT of SHAFT.PRT"
  const Model* model = nullptr;  // whose views show it; null: any part's of the drawing
  const DimensionRecord* record = nullptr;
  double value = 0;
  Wish wish = {};
};
struct Shown {
  const DimensionedView* view = nullptr;
  DimensionAnchor anchor;
};

class Dimensioner {
 public:
  Dimensioner(const ShownModels& models, const Model& drawing, int sheet, const std::vector<DimensionedView>& views,
              const std::vector<FlatBox>& otherViews, double textHeight, SheetPicture& picture)
      : models_(models),
        drawing_(drawing),
        sheet_(sheet),
        views_(views),
        textHeight_(textHeight),
        pen_(picture, textHeight),
        room_(picture, kMargin),
        picture_(picture) {
    for (const DimensionedView& view : views_)
      if (isDrawnHere(view)) room_.addView(outlineOf(view));
    for (const FlatBox& box : otherViews) room_.addView(box);
    room_.addMarks();
  }

  void addAll(const creo::FunctionRef<FlatPoint(FlatPoint)>& toSheet) {
    std::vector<std::pair<Item, Shown>> shownHere;
    for (Item& item : items()) {
      if (item.wish.position) item.wish.position = toSheet(*item.wish.position);
      const bool isOff = item.wish.position && !isOnSheet(*item.wish.position);
      if (isOff) item.wish.position.reset();
      // All sheets must find the same one, or each leaves it to another.
      auto shown = find(item, [](const DimensionedView&) { return true; });
      if (!shown && homeOf(item) == sheet_) leave(item, L"no view shows what it measures");
      if (!shown || shown->view->sheet != sheet_) continue;
      if (!shown->view->isDrawn) {
        shown = find(item, [this](const DimensionedView& view) { return isDrawnHere(view); });
        if (!shown) leave(item, L"the view that shows it isn't drawn");
        if (!shown) continue;
      }
      if (isOff) warn(item.name, L"isn't put where it should be", L"that is off the sheet");
      shownHere.emplace_back(std::move(item), std::move(*shown));
    }
    // What is placed by hand is there first; short ones lie inside, circles take what lines leave.
    std::ranges::stable_sort(shownHere, {}, [](const auto& entry) {
      const auto& [item, shown] = entry;
      const bool isRound = shown.anchor.measuring != Measuring::length && isAlong(*shown.view, shown.anchor);
      return std::tuple(!item.wish.position, isRound, item.value * shown.view->scale);
    });
    for (const auto& [item, shown] : shownHere)
      if (!draw(item, shown)) leave(item, L"there is no room for it beside its view");
    list();
  }

 private:
  using ViewChoice = creo::FunctionRef<bool(const DimensionedView&)>;

  [[nodiscard]] bool isDrawnHere(const DimensionedView& view) const { return view.sheet == sheet_ && view.isDrawn; }
  [[nodiscard]] bool isOnSheet(const FlatPoint& p) const {
    return p.x >= 0 && p.y >= 0 && p.x <= picture_.width && p.y <= picture_.height;
  }

  // ---- what there is to be shown

  std::vector<Item> items() {
    std::vector<Item> items;
    const ModelRecord& record = drawing_.document->record;
    for (const ShownDimensionRecord& entry : record.shownDimensions) {
      const auto view = std::ranges::find_if(views_, [&](const DimensionedView& candidate) {
        return isLabelOf(entry.model, candidate.model->name, candidate.model->type());
      });
      const std::wstring name =
          (entry.reference ? L"rd" : L"d") + std::to_wstring(entry.id) + L" of " + text::fromUtf8(entry.model);
      if (view == views_.end()) {
        if (sheet_ == 1) tell(name, name, L"no view shows its model");
        continue;
      }
      const Model& model = *view->model;
      const DimensionRecord* dimension = model.document->dimension(entry.id, entry.reference);
      if (dimension)
        take(items, &model, model, *dimension, wishOf(entry));
      else if (view->sheet == sheet_)
        tell(name, name, L"the model has no such dimension");
    }
    for (const DimensionRecord& dimension : record.dimensions)
      take(items, nullptr, drawing_, dimension, wishOf(dimension));
    return items;
  }
  void take(std::vector<Item>& items, const Model* model, const Model& owner, const DimensionRecord& record,
            const Wish& wish) {
    Item item{.name = text::format(L"%s of %s.%s", text::fromUtf8(symbolOf(record)), owner.name,
                                   creo::typeExtension(owner.type())),
              .model = model,
              .record = &record,
              .wish = wish};
    const auto value = dimensionValue(owner, record);
    item.value = std::fabs(value.value_or(0));
    if (value)
      items.push_back(std::move(item));
    else if (homeOf(item) == sheet_)
      tell(item.name, item.name, L"it has no value");
  }

  // ---- where it is seen

  static ProVector onScreen(const DimensionedView& view, const ProVector& v) {
    return {dot(v, view.screen.xAxis), dot(v, view.screen.yAxis), dot(v, view.screen.zAxis)};
  }
  static FlatPoint onSheet(const DimensionedView& view, const ProVector& point) {
    const ProVector at = onScreen(view, point);
    return {at.x * view.scale - view.middle.x + view.place.x, at.y * view.scale - view.middle.y + view.place.y};
  }
  // Does the anchor's axis point to the viewer?
  static bool isAlong(const DimensionedView& view, const DimensionAnchor& anchor) {
    return std::fabs(onScreen(view, anchor.place.zAxis).z) > 1 - kLevel;
  }
  static bool isAcross(const DimensionedView& view, const DimensionAnchor& anchor) {
    return std::fabs(onScreen(view, anchor.place.zAxis).z) < kLevel;
  }
  FlatBox outlineOf(const DimensionedView& view) const {
    FlatBox box;
    box.take(FlatPoint{view.place.x - view.width / 2, view.place.y - view.height / 2});
    box.take(FlatPoint{view.place.x + view.width / 2, view.place.y + view.height / 2});
    return box;
  }

  std::optional<Shown> find(const Item& item, const ViewChoice& mayShow) const {
    std::set<const Model*> tried;
    for (const DimensionedView& view : views_) {
      if ((item.model && view.model != item.model) || !tried.insert(view.model).second) continue;
      auto anchors = item.model ? anchorsOf(*view.model, *item.record, item.value)
                                : anchorsOf(*view.model, item.value, item.record->angular);
      for (DimensionAnchor& anchor : anchors)
        if (const DimensionedView* seen = viewOf(item, *view.model, anchor, mayShow))
          return Shown{seen, std::move(anchor)};
    }
    return std::nullopt;
  }
  const DimensionedView* viewOf(const Item& item, const Model& model, const DimensionAnchor& anchor,
                                const ViewChoice& mayShow) const {
    for (const bool isSecondChoice : {false, true})
      for (const DimensionedView& view : views_) {
        const bool isMeant = item.wish.view == 0 || view.view->id == item.wish.view;
        if (view.model == &model && isMeant && mayShow(view) && sees(view, anchor, isSecondChoice)) return &view;
      }
    return nullptr;
  }
  static bool sees(const DimensionedView& view, const DimensionAnchor& anchor, bool isSecondChoice) {
    if (anchor.measuring == Measuring::length) return isAcross(view, anchor);
    if (anchor.measuring != Measuring::diameter || anchor.isBore) return isAlong(view, anchor);
    return isSecondChoice ? isAlong(view, anchor) : isAcross(view, anchor);
  }

  // ---- how it is drawn

  bool draw(const Item& item, const Shown& shown) {
    const DimensionText text = dimensionText(*item.record, item.value, shown.anchor.measuring);
    SheetDimension made{.measuring = shown.anchor.measuring,
                        .scale = shown.anchor.measuring == Measuring::angle ? 1 : shown.view->scale,
                        .value = item.value,
                        .text = text.inOneLine(),
                        .firstStroke = picture_.strokes.size(),
                        .firstText = picture_.texts.size()};
    const bool isDrawn = shown.anchor.measuring == Measuring::angle ? angle(item, shown, text, made)
                         : isAcross(*shown.view, shown.anchor)      ? straight(item, shown, text, made)
                                                                    : circle(item, shown, text, made);
    if (!isDrawn) return false;
    made.strokes = picture_.strokes.size() - made.firstStroke;
    made.texts = picture_.texts.size() - made.firstText;
    picture_.dimensions.push_back(std::move(made));
    return true;
  }

  // The two ends of what is measured, as places on the sheet.
  static void endsOf(const Shown& shown, std::vector<FlatPoint>& first, std::vector<FlatPoint>& second) {
    const DimensionedView& view = *shown.view;
    const DimensionAnchor& anchor = shown.anchor;
    if (anchor.measuring == Measuring::length) {
      for (const ProVector& p : anchor.first) first.push_back(onSheet(view, p));
      for (const ProVector& p : anchor.second) second.push_back(onSheet(view, p));
      return;
    }
    const ProVector across = cross(anchor.place.zAxis, view.screen.zAxis);
    for (const auto* middles : {&anchor.first, &anchor.second})
      for (const ProVector& m : *middles) {
        const double r = anchor.radius;
        first.push_back(onSheet(view, {m.x - r * across.x, m.y - r * across.y, m.z - r * across.z}));
        second.push_back(onSheet(view, {m.x + r * across.x, m.y + r * across.y, m.z + r * across.z}));
      }
  }

  bool straight(const Item& item, const Shown& shown, const DimensionText& text, SheetDimension& made) {
    std::vector<FlatPoint> first, second;
    endsOf(shown, first, second);
    ProVector way = shown.anchor.place.zAxis;
    if (shown.anchor.measuring != Measuring::length) way = cross(way, shown.view->screen.zAxis);
    const ProVector seen = onScreen(*shown.view, way);
    DimensionFrame frame = DimensionFrame::along({seen.x, seen.y});
    const double a = frame.s(first.front()), b = frame.s(second.front());
    if (a > b) std::swap(first, second);
    made.angle = frame.degrees;
    StraightLine line{.from = std::min(a, b), .to = std::max(a, b), .width = pen_.widthOf(text)};
    line.hasTextInside = line.to - line.from >= line.width + 1 - kRounding;
    line.hasArrowsInside = line.to - line.from >= 2 * kArrow + 2 - kRounding;
    if (item.wish.position) {
      line.level = frame.t(*item.wish.position) - kTextGap - textHeight_ / 2;
      line.textAt = frame.s(*item.wish.position) - line.width / 2;
      return put(frame, line, first, second, text, made);
    }
    line.textAt =
        line.hasTextInside ? (line.from + line.to - line.width) / 2 : line.to + (line.hasArrowsInside ? 1 : kArrow + 1);
    const auto [low, high] = frame.range(outlineOf(*shown.view));
    const double step = std::max(kStep, pen_.above() + pen_.below(text) + kTextGap);
    for (const int side : sidesFor(frame, first, second, low, high))
      for (int row = 0; row < kRows; ++row) {
        const double away = kFirst + row * step;
        line.level = side < 0 ? low - away : high + away;
        if (isFree(frame, line, first, second, text)) return put(frame, line, first, second, text, made);
      }
    return false;
  }

  // The side to which what is measured lies nearer comes first; below and on the right where both are the same.
  static std::array<int, 2> sidesFor(const DimensionFrame& frame, const std::vector<FlatPoint>& first,
                                     const std::vector<FlatPoint>& second, double low, double high) {
    double toLow = high - low, toHigh = high - low;
    for (const auto* end : {&first, &second})
      for (const FlatPoint& p : *end) {
        toLow = std::min(toLow, frame.t(p) - low);
        toHigh = std::min(toHigh, high - frame.t(p));
      }
    return toHigh < toLow - kLevel ? std::array{1, -1} : std::array{-1, 1};
  }
  FlatBox lineBox(const DimensionFrame& frame, const StraightLine& line, const DimensionText& text) const {
    return frame.box(line.left(), line.right(), line.level - std::max(pen_.below(text), kArrowWidth / 2),
                     line.level + pen_.above());
  }
  // Where an extension line begins: at the place of its end that lies nearest to the line.
  static FlatPoint startOf(const DimensionFrame& frame, const std::vector<FlatPoint>& end, double level) {
    return *std::ranges::min_element(end, {}, [&](const FlatPoint& p) { return std::fabs(frame.t(p) - level); });
  }
  static FlatBox extensionBox(const DimensionFrame& frame, const FlatPoint& from, double level) {
    const double s = frame.s(from);
    return frame.box(s, s, std::min(frame.t(from), level), std::max(frame.t(from), level));
  }
  bool isFree(const DimensionFrame& frame, const StraightLine& line, const std::vector<FlatPoint>& first,
              const std::vector<FlatPoint>& second, const DimensionText& text) const {
    return room_.hasRoom(lineBox(frame, line, text)) &&
           room_.maySpan(extensionBox(frame, startOf(frame, first, line.level), line.level)) &&
           room_.maySpan(extensionBox(frame, startOf(frame, second, line.level), line.level));
  }

  bool put(const DimensionFrame& frame, const StraightLine& line, const std::vector<FlatPoint>& first,
           const std::vector<FlatPoint>& second, const DimensionText& text, SheetDimension& made) {
    made.from = startOf(frame, first, line.level);
    made.to = startOf(frame, second, line.level);
    made.line = frame.at(line.to, line.level);
    made.third = frame.at(line.textAt + line.width / 2, line.level + kTextGap + textHeight_ / 2);
    for (const FlatPoint& from : {made.from, made.to}) {
      const double s = frame.s(from), t = frame.t(from), side = line.level < t ? -1 : 1;
      if (std::fabs(line.level - t) > kBeyondLine)
        pen_.line(frame.at(s, t + side * kBeyondLine), frame.at(s, line.level + side * kBeyondLine));
      room_.addSpan(extensionBox(frame, from, line.level));
    }
    pen_.line(frame.at(line.left(), line.level), frame.at(line.right(), line.level));
    const double sign = line.hasArrowsInside ? 1 : -1;
    pen_.arrow(frame.at(line.from, line.level), frame.way(-sign));
    pen_.arrow(frame.at(line.to, line.level), frame.way(sign));
    pen_.text(text, frame.at(line.textAt, line.level), frame.degrees);
    room_.add(lineBox(frame, line, text));
    return true;
  }

  // A leader from outside that points at the middle, with its text upon a level end. Where the circle isn't whole and
  // lacks the place that the leader meets, it goes on to the other side.
  bool circle(const Item& item, const Shown& shown, const DimensionText& text, SheetDimension& made) {
    const FlatPoint middle = onSheet(*shown.view, shown.anchor.first.front());
    const double radius = shown.anchor.radius * shown.view->scale, width = pen_.widthOf(text);
    if (!room_.isCircleSeen(middle, radius)) return false;
    made.isCircle = true;
    const auto draw = [&](const Leader& leader) {
      const bool isHere = room_.isCircleSeen(middle, radius, std::atan2(leader.way.y, leader.way.x));
      const double reach = isHere ? radius : -radius;
      const FlatPoint tip{middle.x + reach * leader.way.x, middle.y + reach * leader.way.y};
      made.from = made.measuring == Measuring::radius
                      ? middle
                      : FlatPoint{middle.x - reach * leader.way.x, middle.y - reach * leader.way.y};
      made.to = tip;
      made.line = leader.knee;
      made.third = {leader.left + width / 2, leader.knee.y + kTextGap + textHeight_ / 2};
      pen_.line(tip, leader.knee);
      pen_.line(leader.knee, {leader.isToLeft ? leader.left : leader.left + width, leader.knee.y});
      pen_.arrow(tip, {-leader.way.x, -leader.way.y});
      pen_.text(text, {leader.left, leader.knee.y}, 0);
      room_.add(leader.box(width, pen_.below(text), pen_.above()));
      room_.addLeader(tip, leader.knee);
    };
    if (item.wish.position) {
      const FlatPoint& at = *item.wish.position;
      draw(Leader::to({at.x - width / 2, at.y - kTextGap - textHeight_ / 2}, middle, width));
      return true;
    }
    for (const Leader& leader : Leader::around(middle, outlineOf(*shown.view), width))
      if (room_.hasRoom(leader.box(width, pen_.below(text), pen_.above())) && room_.mayLead(middle, leader.knee)) {
        draw(leader);
        return true;
      }
    return false;
  }

  bool angle(const Item& item, const Shown& shown, const DimensionText& text, SheetDimension& made) {
    const DimensionedView& view = *shown.view;
    const FlatPoint vertex = onSheet(view, shown.anchor.first.front());
    const ProVector start = onScreen(view, shown.anchor.place.xAxis);
    const bool isTurnedBack = onScreen(view, shown.anchor.place.zAxis).z < 0;
    const double sweep = shown.anchor.angle * std::numbers::pi / 180;
    const double from = std::atan2(start.y, start.x) - (isTurnedBack ? sweep : 0);
    const double arms = shown.anchor.radius * view.scale;
    const auto at = [&](double t, double r) -> FlatPoint {
      return {vertex.x + r * std::cos(t), vertex.y + r * std::sin(t)};
    };
    const double middle = from + sweep / 2;
    double degrees = std::remainder(middle * 180 / std::numbers::pi - 90, 180);
    if (degrees <= -90 + 1e-9) degrees += 180;
    const double turn = degrees * std::numbers::pi / 180, width = pen_.widthOf(text);
    const bool isOutward = std::cos(turn) * std::sin(middle) - std::sin(turn) * std::cos(middle) > 0;
    for (int row = 0; row < kRows; ++row) {
      const double r = arms + kFirst + row * kStep, up = r + (isOutward ? 0 : pen_.above() + kTextGap);
      const FlatPoint on = item.wish.position ? *item.wish.position : at(middle, up);
      const FlatPoint left{on.x - std::cos(turn) * width / 2, on.y - std::sin(turn) * width / 2};
      FlatBox box;
      for (const double s : {0.0, width})
        for (const double t : {kTextGap / 2, pen_.above()})
          box.take(FlatPoint{left.x + std::cos(turn) * s - std::sin(turn) * t,
                             left.y + std::sin(turn) * s + std::cos(turn) * t});
      if (!item.wish.position && !room_.hasRoom(box)) continue;
      made.from = at(from, arms);
      made.to = at(from + sweep, arms);
      made.line = at(middle, r);
      made.third = vertex;
      const double lean = kArrow / 2 / r;
      for (const auto& [t, side] : {std::pair(from, -1.0), {from + sweep, 1.0}}) {
        pen_.line(at(t, arms + kBeyondLine), at(t, r + kBeyondLine));
        const double tangent = t - side * lean;
        pen_.arrow(at(t, r), {-side * std::sin(tangent), side * std::cos(tangent)});
      }
      pen_.curve(
          {vertex, {r * std::cos(from), r * std::sin(from)}, {-r * std::sin(from), r * std::cos(from)}, 0, sweep});
      pen_.text(text, left, degrees);
      room_.add(box);
      return true;
    }
    return false;
  }

  // ---- what finds no place

  // One sheet tells: the first that shows its model, else the first of all.
  [[nodiscard]] int homeOf(const Item& item) const {
    for (const DimensionedView& view : views_)
      if (!item.model || view.model == item.model) return view.sheet;
    return 1;
  }
  void leave(const Item& item, const std::wstring& reason) {
    const std::wstring text = dimensionText(*item.record, item.value, Measuring::length).inOneLine();
    tell(item.name, item.name + L" = " + text, reason);
  }
  void tell(const std::wstring& name, const std::wstring& listed, const std::wstring& reason) {
    left_.push_back(listed);
    warn(name, L"finds no place", reason);
  }
  void warn(const std::wstring& name, const wchar_t* what, const std::wstring& reason) {
    models_.warn(text::format(L"the dimension %s %s on sheet %d of %s.%s: %s", name, what, sheet_, drawing_.name,
                              creo::typeExtension(drawing_.type()), reason));
  }
  void list() {
    if (left_.empty()) return;
    std::wstring line = L"Dimensions without a place: ";
    double up = picture_.height - kListLine;
    const auto write = [&] {
      picture_.texts.push_back(
          {.x = kListMargin, .y = up, .height = kListHeight, .text = line, .part = SheetPart::dimensions});
      up -= kListLine;
      line.clear();
    };
    for (std::size_t i = 0; i < left_.size(); ++i) {
      const std::wstring entry = left_[i] + (i + 1 < left_.size() ? L"; " : L"");
      if (!line.empty() && faceWidth(line + entry, kListHeight) > picture_.width - 2 * kListMargin) write();
      line += entry;
    }
    write();
  }

  const ShownModels& models_;
  const Model& drawing_;
  int sheet_;
  const std::vector<DimensionedView>& views_;
  double textHeight_;
  DimensionPen pen_;
  DimensionRoom room_;
  SheetPicture& picture_;
  std::vector<std::wstring> left_;
};

}  // namespace

void addDimensions(const ShownModels& models, const Model& drawing, int sheet,
                   const std::vector<DimensionedView>& views, const std::vector<FlatBox>& otherViews, double textHeight,
                   const creo::FunctionRef<FlatPoint(FlatPoint)>& toSheet, SheetPicture& picture) {
  const ModelRecord& record = drawing.document->record;
  if (record.shownDimensions.empty() && record.dimensions.empty()) return;
  Dimensioner(models, drawing, sheet, views, otherViews, textHeight, picture).addAll(toSheet);
}

}  // namespace headless

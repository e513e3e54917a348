#include "headless/pictures/view_marks.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "headless/geometry/flat_clip.h"
#include "text/format.h"
#include "text/numbers.h"

namespace headless {

using geometry::FlatBound;
using geometry::FlatPoint;

namespace {

constexpr double kBeyond = 8;                 // mm of a cutting line beyond its view
constexpr double kEnd = 6, kArrow = 8;        // its wide ends; its arrows
constexpr double kHead = 3.5, kSlope = 0.25;  // of an arrow: length, and half its width for each mm of it
constexpr double kLetter = 5;                 // mm from a line to a letter's middle
constexpr double kUpon = 0.1;                 // mm by which lines may be apart and count as one
constexpr double kGap = 3;                    // mm between the lines of a break
constexpr double kOver = 2;                   // mm of such a line beyond the view

SheetPen penOf(LineKind kind) {
  return {.width = kind == LineKind::visible ? kWidePen : kNarrowPen, .part = SheetPart::views, .kind = kind};
}
FlatPoint ahead(const FlatPoint& p, const FlatPoint& way, double by) { return {p.x + way.x * by, p.y + way.y * by}; }
void addLine(ViewLines& lines, const FlatPoint& from, const FlatPoint& to, LineKind kind) {
  lines.strokes.push_back({geometry::FlatLine{from, to}, penOf(kind)});
}

// Closed and filled, as ISO 128-3 draws it.
void addArrow(ViewLines& lines, const FlatPoint& from, const FlatPoint& way) {
  const FlatPoint tip = ahead(from, way, kArrow), foot = ahead(tip, way, -kHead);
  const FlatPoint across{-way.y, way.x};
  addLine(lines, from, foot, LineKind::smooth);
  SheetPen pen = penOf(LineKind::smooth);
  pen.isFilled = true;
  lines.strokes.push_back(
      {geometry::FlatPath{{tip, ahead(foot, across, kHead * kSlope), ahead(foot, across, -kHead * kSlope), tip}}, pen});
}

// Keeps what of the strokes lies within the bounds, moved.
std::vector<SheetStroke> kept(const std::vector<SheetStroke>& strokes, const std::vector<FlatBound>& bounds, double x,
                              double y) {
  std::vector<SheetStroke> all;
  for (const SheetStroke& stroke : strokes) {
    std::vector<geometry::FlatCurve> curves{stroke.curve};
    for (const FlatBound& bound : bounds) {
      std::vector<geometry::FlatCurve> inside;
      for (const geometry::FlatCurve& curve : curves)
        for (geometry::FlatCurve& piece : geometry::within(curve, bound)) inside.push_back(std::move(piece));
      curves = std::move(inside);
    }
    for (const geometry::FlatCurve& curve : curves) all.push_back({geometry::moved(curve, x, y), stroke.pen});
  }
  return all;
}

// How far strokes reach along the line across which the view is broken.
struct Span {
  double low = HUGE_VAL, high = -HUGE_VAL;
};
Span spanNear(const std::vector<SheetStroke>& strokes, double place, bool upright) {
  constexpr double kNear = 1e-3;
  Span span;
  for (const SheetStroke& stroke : strokes) {
    geometry::FlatBox box;
    box.take(stroke.curve);
    const double from = upright ? box.low : box.left, to = upright ? box.high : box.right;
    if (from > place + kNear || to < place - kNear) continue;
    span.low = std::min(span.low, upright ? box.left : box.low);
    span.high = std::max(span.high, upright ? box.right : box.high);
  }
  return span;
}

// A narrow line with a zigzag in its middle.
void addBreakLine(ViewLines& lines, double place, const Span& span, bool upright) {
  if (!(span.low < span.high)) return;
  const double middle = (span.low + span.high) / 2;
  geometry::FlatPath path;
  for (const auto& [across, along] : {std::pair(0.0, span.low - kOver),
                                      {0.0, middle - 2},
                                      {-kGap / 3, middle - 1},
                                      {kGap / 3, middle + 1},
                                      {0.0, middle + 2},
                                      {0.0, span.high + kOver}})
    path.points.push_back(upright ? FlatPoint{along, place + across} : FlatPoint{place + across, along});
  lines.strokes.push_back({std::move(path), penOf(LineKind::smooth)});
}

std::wstring scaleText(double scale) {
  return scale >= 1 ? text::shortest(scale) + L":1" : L"1:" + text::shortest(std::round(1e6 / scale) / 1e6);
}

}  // namespace

void addCuttingLine(ViewLines& lines, const FlatPoint& at, const FlatPoint& along, const FlatPoint& looking,
                    double width, double height, const std::wstring& letter) {
  // The foot of the view's middle on the line, and how far the view reaches from there.
  const double away = -(at.x * along.x + at.y * along.y);
  const FlatPoint foot = ahead(at, along, away);
  const double reach = (std::fabs(along.x) * width + std::fabs(along.y) * height) / 2 + kBeyond;
  const FlatPoint ends[] = {ahead(foot, along, -reach), ahead(foot, along, reach)};
  std::erase_if(lines.strokes, [&](const SheetStroke& stroke) {
    const auto* axis = stroke.pen.kind == LineKind::axis ? std::get_if<geometry::FlatLine>(&stroke.curve) : nullptr;
    const auto isUnder = [&](const FlatPoint& p) {
      return std::fabs((p.x - foot.x) * along.y - (p.y - foot.y) * along.x) < kUpon &&
             std::fabs((p.x - foot.x) * along.x + (p.y - foot.y) * along.y) <= reach;
    };
    return axis && isUnder(axis->from) && isUnder(axis->to);
  });
  addLine(lines, ahead(ends[0], along, kEnd), ahead(ends[1], along, -kEnd), LineKind::axis);
  for (const auto& [end, inwards] : {std::pair(ends[0], 1.0), {ends[1], -1.0}}) {
    addLine(lines, end, ahead(end, along, inwards * kEnd), LineKind::visible);
    addArrow(lines, ahead(end, looking, -kArrow), looking);
    lines.texts.push_back({ahead(ahead(end, looking, -kArrow / 2), along, -inwards * kLetter), letter});
  }
}

void addDetailCircle(ViewLines& lines, const FlatPoint& centre, double radius, const std::wstring& letter) {
  lines.strokes.push_back(
      {geometry::FlatArc{centre, {radius, 0}, {0, radius}, 0, 2 * std::numbers::pi}, penOf(LineKind::smooth)});
  const double away = (radius + kLetter) / std::numbers::sqrt2;
  lines.texts.push_back({{centre.x + away, centre.y + away}, letter});
}

void keepCircle(ViewLines& lines, const FlatPoint& centre, double radius) {
  lines.strokes = kept(lines.strokes, {{FlatBound::Kind::circle, centre, radius}}, -centre.x, -centre.y);
  lines.strokes.push_back(
      {geometry::FlatArc{{}, {radius, 0}, {0, radius}, 0, 2 * std::numbers::pi}, penOf(LineKind::smooth)});
  lines.hatches.clear();
  lines.texts.clear();
}

double leaveOut(ViewLines& lines, std::vector<ViewBreak> breaks, bool upright) {
  std::ranges::sort(breaks, {}, &ViewBreak::from);
  std::vector<ViewBreak> counting;
  double smaller = 0;
  for (const ViewBreak& next : breaks) {
    if (!(next.to - next.from > kGap) || (!counting.empty() && next.from < counting.back().to)) continue;
    counting.push_back(next);
    smaller += next.to - next.from - kGap;
  }
  if (counting.empty()) return 0;
  using Kind = FlatBound::Kind;
  const Kind after = upright ? Kind::above : Kind::right, before = upright ? Kind::below : Kind::left;
  ViewLines made;
  made.texts = lines.texts;
  double shift = smaller / 2;
  for (std::size_t i = 0; i <= counting.size(); ++i) {
    std::vector<FlatBound> bounds;
    if (i > 0) bounds.push_back({after, {}, counting[i - 1].to});
    if (i < counting.size()) bounds.push_back({before, {}, counting[i].from});
    const std::vector<SheetStroke> pieces = kept(lines.strokes, bounds, upright ? 0 : shift, upright ? shift : 0);
    for (const auto& [isEdge, place] : {std::pair(i > 0, i > 0 ? counting[i - 1].to : 0.0),
                                        {i < counting.size(), i < counting.size() ? counting[i].from : 0.0}})
      if (isEdge) addBreakLine(made, place + shift, spanNear(pieces, place + shift, upright), upright);
    for (std::size_t k = 0; k < lines.texts.size(); ++k) {
      const double at = upright ? lines.texts[k].at.y : lines.texts[k].at.x;
      if (i > 0 && at < counting[i - 1].to) continue;
      (upright ? made.texts[k].at.y : made.texts[k].at.x) = at + shift;
    }
    made.strokes.insert(made.strokes.end(), pieces.begin(), pieces.end());
    if (i < counting.size()) shift -= counting[i].to - counting[i].from - kGap;
  }
  lines = std::move(made);
  return smaller;
}

std::wstring sectionLabel(const std::wstring& name, double scale, double sheetScale) {
  const std::wstring label = text::format(L"%s-%s", name, name);
  return scale == sheetScale ? label : text::format(L"%s (%s)", label, scaleText(scale));
}

std::wstring detailLabel(const std::wstring& name, double scale) {
  return text::format(L"%s (%s)", name, scaleText(scale));
}

}  // namespace headless

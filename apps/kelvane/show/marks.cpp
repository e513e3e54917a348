#include "kelvane/show/marks.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>
#include <set>
#include <tuple>
#include <unordered_map>

#include "headless/geometry/face_prints.h"
#include "headless/pictures/sheet_stroke.h"

namespace kelvane {
namespace {

using headless::ShadedPart;
using headless::SheetPicture;
using headless::SheetStroke;
using headless::SheetText;
using Solid = headless::ShownParts;
using Rgb = std::array<double, 3>;

// One state's mark: of lines and texts, behind texts, of faces.
struct Mark {
  headless::SheetColor ink = 0, behind = 0;
  Rgb face = {};
};
constexpr Mark kGone{0xC00020, 0xFFD5DA, {0.86, 0.16, 0.2}}, kNew{0x00783A, 0xC9F2D6, {0.1, 0.66, 0.3}};
constexpr double kPale = 0.65;  // how far faces that stayed go to white

// A thing in numbers; equal things have the same.
using Key = std::vector<long long>;

// A place or a length in steps. None of a plain number of steps is a plain number itself: two values that rounding
// alone parts aren't taken apart where people put things.
long long steps(double value) {
  constexpr double kStep = 0.0012347;
  return std::isfinite(value) ? std::llround(std::clamp(value / kStep, -1e18, 1e18)) : 0;
}
void add(Key& key, std::initializer_list<double> values) {
  for (const double value : values) key.push_back(steps(value));
}
void add(Key& key, const std::wstring& text) {
  for (const wchar_t c : text) key.push_back(c);
  key.push_back(-1);
}

Key keyOf(const SheetStroke& stroke) {
  Key key{stroke.pen.color, static_cast<long long>(stroke.pen.kind), stroke.pen.isFilled,
          static_cast<long long>(stroke.curve.index())};
  add(key, {stroke.pen.width});
  if (const auto* line = std::get_if<headless::geometry::FlatLine>(&stroke.curve)) {
    // From either end it is the same line.
    const auto &a = line->from, &b = line->to;
    const bool isTurned = std::pair(steps(b.x), steps(b.y)) < std::pair(steps(a.x), steps(a.y));
    isTurned ? add(key, {b.x, b.y, a.x, a.y}) : add(key, {a.x, a.y, b.x, b.y});
  } else if (const auto* arc = std::get_if<headless::geometry::FlatArc>(&stroke.curve)) {
    add(key, {arc->centre.x, arc->centre.y, arc->u.x, arc->u.y, arc->v.x, arc->v.y, arc->from, arc->to});
  } else {
    for (const auto& point : std::get<headless::geometry::FlatPath>(stroke.curve).points) add(key, {point.x, point.y});
  }
  return key;
}
Key keyOf(const SheetText& text) {
  Key key{text.color, text.isBold, text.isOblique};
  add(key, {text.x, text.y, text.height, text.angle});
  add(key, text.text);
  key.insert(key.end(), text.font.begin(), text.font.end());
  return key;
}

// What two states have in common: as many of a kind as the poorer one has.
class Common {
 public:
  void count(Key key, bool isAfter) { counts_[std::move(key)][isAfter ? 1 : 0]++; }
  // Of things of a kind the first ones stayed.
  bool stayed(const Key& key, bool isAfter) {
    const auto& [before, after] = counts_[key];
    return taken_[isAfter ? 1 : 0][key]++ < std::min(before, after);
  }

 private:
  std::map<Key, std::array<int, 2>> counts_;
  std::array<std::map<Key, int>, 2> taken_;
};

// ---- sheets

// A bar behind a text.
SheetStroke barBehind(const SheetText& text, headless::SheetColor color) {
  constexpr double kHigh = 1.3, kUp = 0.35;  // of the text's height; its middle above the base line
  const double turn = text.angle * std::numbers::pi / 180, c = std::cos(turn), s = std::sin(turn);
  double width = headless::textWidth(text.text, text.height);
  if (text.room > 0) width = std::min(width, text.room);
  const headless::geometry::FlatPoint from{text.x - s * kUp * text.height, text.y + c * kUp * text.height};
  const headless::geometry::FlatPoint to{from.x + c * width, from.y + s * width};
  return {headless::geometry::FlatLine{from, to}, {.width = kHigh * text.height, .color = color}};
}

bool markSheet(SheetPicture& sheet, Common& strokes, Common& texts, bool isAfter) {
  const Mark& mark = isAfter ? kNew : kGone;
  std::vector<SheetStroke> bars;
  bool isMarked = false;
  for (SheetStroke& stroke : sheet.strokes)
    if (!strokes.stayed(keyOf(stroke), isAfter)) {
      stroke.pen.color = mark.ink;
      isMarked = true;
    }
  for (SheetText& text : sheet.texts)
    if (!texts.stayed(keyOf(text), isAfter)) {
      bars.push_back(barBehind(text, mark.behind));
      text.color = mark.ink;
      isMarked = true;
    }
  sheet.strokes.insert(sheet.strokes.begin(), bars.begin(), bars.end());
  return isMarked;
}

// A sheet that only one state has is marked as a whole.
bool markSheets(std::vector<SheetPicture>& before, std::vector<SheetPicture>& after) {
  bool isMarked = before.size() != after.size();
  for (std::size_t i = 0; i < std::max(before.size(), after.size()); ++i) {
    Common strokes, texts;
    const auto count = [&](const std::vector<SheetPicture>& sheets, bool isAfter) {
      if (i >= sheets.size()) return;
      for (const SheetStroke& stroke : sheets[i].strokes) strokes.count(keyOf(stroke), isAfter);
      for (const SheetText& text : sheets[i].texts) texts.count(keyOf(text), isAfter);
    };
    count(before, false);
    count(after, true);
    if (i < before.size()) isMarked |= markSheet(before[i], strokes, texts, false);
    if (i < after.size()) isMarked |= markSheet(after[i], strokes, texts, true);
  }
  return isMarked;
}

// ---- solids

Rgb paled(const Rgb& color) {
  Rgb pale{};
  for (std::size_t i = 0; i < 3; ++i) pale[i] = color[i] + (1 - color[i]) * kPale;
  return pale;
}

Rgb colorOf(const ShadedPart& part, int face) {
  const auto own = part.faceColors.find(face);
  return own == part.faceColors.end() ? part.color : own->second;
}

// The faces of a solid's parts as keys, part by part; each body is measured once.
std::vector<std::vector<Key>> facesOf(const Solid& solid) {
  std::unordered_map<const headless::geometry::Mesh*, std::vector<headless::geometry::FacePrint>> prints;
  for (const auto& [body, mesh] : solid.meshes) prints[&mesh] = headless::geometry::facePrints(*body);
  std::vector<std::vector<Key>> all;
  for (const ShadedPart& part : solid.parts) {
    std::vector<Key>& keys = all.emplace_back();
    int number = 0;
    for (const auto& print : prints[part.mesh]) {
      constexpr double kRelative = 1e3;  // of areas the logarithm counts, in millionths of the area
      const double s = part.scale;
      const auto centre =
          creo::transformPoint(part.place, {print.centre.x * s, print.centre.y * s, print.centre.z * s});
      const Rgb color = colorOf(part, ++number);
      Key& key = keys.emplace_back(Key{print.kind});
      add(key, {std::log(std::max(print.area * s * s, 1e-12)) * kRelative, centre.x, centre.y, centre.z, color[0],
                color[1], color[2], part.transparency});
    }
  }
  return all;
}

bool markParts(Solid& solid, const std::vector<std::vector<Key>>& faces, Common& common, bool isAfter) {
  bool isMarked = false;
  for (std::size_t i = 0; i < solid.parts.size(); ++i) {
    ShadedPart& part = solid.parts[i];
    std::map<int, Rgb> colors;
    for (std::size_t k = 0; k < faces[i].size(); ++k) {
      const int number = static_cast<int>(k) + 1;
      const bool stayed = common.stayed(faces[i][k], isAfter);
      colors[number] = stayed ? paled(colorOf(part, number)) : (isAfter ? kNew : kGone).face;
      isMarked |= !stayed;
    }
    part.faceColors = std::move(colors);
  }
  return isMarked;
}

bool markSolids(Solid& before, Solid& after) {
  const auto facesBefore = facesOf(before), facesAfter = facesOf(after);
  Common common;
  for (const auto& faces : facesBefore)
    for (const Key& key : faces) common.count(key, false);
  for (const auto& faces : facesAfter)
    for (const Key& key : faces) common.count(key, true);
  const bool isMarked = markParts(before, facesBefore, common, false);
  return markParts(after, facesAfter, common, true) || isMarked;
}

}  // namespace

bool mark(Shown& before, Shown& after) {
  const bool sheets = markSheets(before.sheets, after.sheets), faces = markSolids(before.parts, after.parts);
  return sheets || faces;
}

}  // namespace kelvane

#include "headless/pictures/sheet_hatch.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>

#include "headless/model/density.h"
#include "headless/model/models.h"
#include "headless/model/units.h"

namespace headless {

using geometry::FlatBox;
using geometry::HatchLines;

namespace {

constexpr double kPlastic = 2000, kLightMetal = 3500;  // kg/m^3
constexpr double kUsual = 3, kNarrow = 1.5;            // mm between lines; of parts that are thin on paper
constexpr double kThin = 10;                           // mm
constexpr double kBeside = 0.2;                        // mm between boxes of parts that lie beside one another

enum class Material { metal, lightMetal, plastic };
Material materialOf(const Model& part) {
  const auto density = materialDensity(part);
  if (!density) return Material::metal;
  const ModelRecord& record = part.document->record;
  const double metre = inSystem(1, "m", record), kilogram = inSystem(1, "kg", record);
  const double heavy = *density * metre * metre * metre / kilogram;
  if (heavy < kPlastic) return Material::plastic;
  return heavy < kLightMetal ? Material::lightMetal : Material::metal;
}

// A hatching that others beside it don't have.
struct Look {
  double angle = 45, distance = 1;  // of the usual one
};
constexpr Look kLooks[] = {{45, 1}, {135, 1}, {45, 2.0 / 3}, {135, 2.0 / 3}, {45, 1.5}, {135, 1.5}, {30, 1}, {120, 1}};

std::vector<HatchLines> linesOf(Material material, const Look& look, double spacing) {
  const double apart = spacing * look.distance;
  switch (material) {
    case Material::plastic:
      return {{look.angle, apart}, {look.angle + 90, apart}};
    case Material::lightMetal:
      return {{look.angle, 3 * apart}, {look.angle, 3 * apart, apart}};
    case Material::metal:
      break;
  }
  return {{look.angle, apart}};
}

// What of a part is cut.
struct CutPart {
  std::vector<FlatBox> boxes;
  std::size_t look = 0;
  double spacing = kUsual;
};

FlatBox boxOf(const geometry::SeenCut& cut) {
  FlatBox box;
  for (const geometry::FlatLoop& loop : cut.loops)
    for (const geometry::FlatCurve& curve : loop) box.take(curve);
  return box;
}

bool areBeside(const CutPart& a, const CutPart& b) {
  const auto meet = [](const FlatBox& p, const FlatBox& q) {
    return p.left <= q.right + kBeside && q.left <= p.right + kBeside && p.low <= q.high + kBeside &&
           q.low <= p.high + kBeside;
  };
  return std::ranges::any_of(
      a.boxes, [&](const FlatBox& p) { return std::ranges::any_of(b.boxes, [&](auto& q) { return meet(p, q); }); });
}

std::map<int, CutPart> cutParts(const std::vector<geometry::SeenCut>& cuts) {
  std::map<int, CutPart> parts;
  for (const geometry::SeenCut& cut : cuts) parts[cut.number].boxes.push_back(boxOf(cut));
  for (auto at = parts.begin(); at != parts.end(); ++at) {
    CutPart& part = at->second;
    double width = 0;
    for (const FlatBox& box : part.boxes) width = std::max(width, std::min(box.right - box.left, box.high - box.low));
    if (width < kThin) part.spacing = kNarrow;
    std::vector<bool> taken(std::size(kLooks));
    for (auto before = parts.begin(); before != at; ++before)
      if (areBeside(before->second, part)) taken[before->second.look] = true;
    const auto free = std::ranges::find(taken, false);
    if (free != taken.end()) part.look = static_cast<std::size_t>(free - taken.begin());
  }
  return parts;
}

}  // namespace

std::vector<SheetHatch> hatchesOf(const std::vector<geometry::SeenCut>& cuts, const std::vector<const Model*>& parts) {
  const std::map<int, CutPart> looks = cutParts(cuts);
  std::vector<SheetHatch> hatches;
  for (const geometry::SeenCut& cut : cuts) {
    const auto number = static_cast<std::size_t>(cut.number);
    if (cut.number < 0 || number >= parts.size() || cut.loops.empty()) continue;
    const CutPart& look = looks.at(cut.number);
    hatches.push_back({cut.loops,
                       linesOf(materialOf(*parts[number]), kLooks[look.look], look.spacing),
                       {.width = kNarrowPen, .part = SheetPart::views, .kind = LineKind::hatch}});
  }
  return hatches;
}

std::vector<SheetStroke> strokesOf(const SheetHatch& hatch) {
  std::vector<SheetStroke> strokes;
  for (const HatchLines& lines : hatch.lines)
    for (const geometry::FlatLine& line : geometry::hatched(hatch.loops, lines)) strokes.push_back({line, hatch.pen});
  return strokes;
}

SheetHatch moved(SheetHatch hatch, double x, double y) {
  for (geometry::FlatLoop& loop : hatch.loops)
    for (geometry::FlatCurve& curve : loop) curve = geometry::moved(curve, x, y);
  for (HatchLines& lines : hatch.lines) {
    // The lines move along.
    const double turn = lines.angle * std::numbers::pi / 180;
    lines.shift += y * std::cos(turn) - x * std::sin(turn);
  }
  return hatch;
}

}  // namespace headless

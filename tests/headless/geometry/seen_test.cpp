// What is visible of bodies, whatever else is asked for.
#include "headless/geometry/seen.h"

#include <gmock/gmock.h>

#include <cmath>
#include <set>

#include "headless/geometry/foreign_place.h"

namespace headless::geometry {
namespace {

Primitive primitive(PrimitiveKind kind, double diameter, double length, const creo::ProTransform& placement = {}) {
  Primitive made;
  made.kind = kind;
  made.diameter = diameter;
  made.length = length;
  made.placement = placement;
  return made;
}
Primitive block(double x, double y, double z, const creo::ProTransform& placement = {}) {
  Primitive made = primitive(PrimitiveKind::box, 0, 0, placement);
  made.size = {x, y, z};
  return made;
}
Primitive tapered(double bottom, double top, double length, const creo::ProTransform& placement) {
  Primitive made = primitive(PrimitiveKind::cone, bottom, length, placement);
  made.topDiameter = top;
  return made;
}
Primitive extruded(std::vector<std::array<double, 2>> profile, double length) {
  Primitive made = primitive(PrimitiveKind::extrusion, 0, length);
  made.profile = std::move(profile);
  return made;
}

std::vector<PlacedBody> placed(std::vector<Primitive> primitives, const creo::ProTransform& place = {}) {
  return {{build(primitives).body, place, 1}};
}

// Visible lines, to a ten-thousandth of a millimetre, from where the body's origin is seen.
std::multiset<std::string> visible(const Seen& seen) {
  std::multiset<std::string> lines;
  const auto text = [&](FlatPoint p) {
    const auto rounded = [](double value) { return std::to_string(std::llround(value * 1e4)); };
    return rounded(p.x + seen.middle.x) + "," + rounded(p.y + seen.middle.y) + " ";
  };
  for (const auto& [as, curve] : seen.curves) {
    if (as != SeenAs::edge && as != SeenAs::smooth) continue;
    std::string line = as == SeenAs::edge ? "edge " : "smooth ";
    if (const auto* straight = std::get_if<FlatLine>(&curve)) {
      line += text(straight->from) + text(straight->to);
    } else if (const auto* arc = std::get_if<FlatArc>(&curve)) {
      line += "arc " + text(arc->centre) + text(pointAt(*arc, arc->from)) + text(pointAt(*arc, arc->to));
    } else {
      const auto& points = std::get<FlatPath>(curve).points;
      line += "path " + text(points.front()) + text(points.back());
    }
    lines.insert(line);
  }
  return lines;
}

constexpr creo::ProTransform kAcross{{0, 1, 0}, {0, 0, 1}, {1, 0, 0}, {-30, 15, 12}},
    kLeft{{0, -1, 0}, {1, 0, 0}, {0, 0, 1}, {0, 0, 0}};

// Bodies with all kinds of faces: what looks away of them is left out where no hidden lines are asked for.
std::vector<std::pair<const char*, std::vector<PlacedBody>>> bodies() {
  using enum PrimitiveKind;
  std::vector<std::pair<const char*, std::vector<PlacedBody>>> all = {
      {"bored",
       placed({block(60, 40, 25), primitive(hole, 8, 0, {kAcross.xAxis, kAcross.yAxis, kAcross.zAxis, {0, 15, 7}}),
               primitive(hole, 20, 10, {.origin = {30, 20, 15}}), block(10, 50, 8, {.origin = {50, 20, 20}})})},
      {"turned", placed({tapered(40, 20, 30, {}), tapered(20, 44, 20, {.origin = {0, 0, 30}}), primitive(hole, 8, 0),
                         primitive(cylinder, 16, 70, kAcross)})},
      {"notched", placed({extruded({{0, 0}, {40, 0}, {40, 10}, {25, 10}, {20, 22}, {15, 10}, {0, 10}}, 30)})},
      {"rounded", placed({block(40, 20, 10), primitive(cylinder, 20, 10, {.origin = {0, 10, 0}}),
                          primitive(sphere, 12, 0, {.origin = {30, 10, 10}})})},
  };
  auto& [name, several] = all.emplace_back("several", all.front().second);
  for (const double away : {-40.0, 70.0}) several.push_back({several.front().body, {.origin = {5, away, away}}, 1});
  several.push_back({all[2].second.front().body, kLeft, 1});
  return all;
}

TEST(SeenLines, AreTheSameWhetherHiddenOnesAreAskedForOrNot) {
  // From all six sides, leaning, and along an edge.
  const creo::ProTransform sides[] = {{},
                                      {{-1, 0, 0}, {0, 1, 0}, {0, 0, -1}, {}},
                                      {{1, 0, 0}, {0, 0, -1}, {0, 1, 0}, {}},
                                      {{1, 0, 0}, {0, 0, 1}, {0, -1, 0}, {}},
                                      {{0, 0, -1}, {0, 1, 0}, {1, 0, 0}, {}},
                                      {{0, 1, 0}, {0, 0, -1}, {-1, 0, 0}, {}},
                                      {{0.8, 0, 0.6}, {0.36, 0.8, -0.48}, {-0.48, 0.6, 0.64}, {}},
                                      {{-0.6, 0.8, 0}, {0, 0, 1}, {0.8, 0.6, 0}, {}}};
  for (const auto& [name, body] : bodies())
    for (const creo::ProTransform& side : sides) {
      Sight sight{.bodies = body, .screen = side};
      const Seen alone = seen(sight);
      sight.hidden = true;
      const Seen whole = seen(sight);
      EXPECT_EQ(visible(whole), visible(alone)) << name << " from " << side.zAxis.x << " " << side.zAxis.y;
      EXPECT_GE(visible(alone).size(), 3U) << name;
      EXPECT_FALSE(alone.isFaceted || whole.isFaceted) << name;
    }
}

// Work done side by side comes to the right views, also where there are more of them than programs.
TEST(SeenLines, AreKeptOfSeveralViewsThatAreWorkedOutTogether) {
  const ForeignPlaceGuard guard;
  forgetSeen();
  std::vector<Sight> sights;
  for (const double size : {3.0, 4.0, 5.0, 6.0, 7.0})
    sights.push_back({.bodies = placed({block(size, 2, 1)}), .screen = {}});
  seeAhead(sights);
  foreignPlace().program = "/bin/no-such-program";
  double expected = 3;
  for (const Sight& sight : sights) EXPECT_NEAR(expected++, seen(sight).width, 1e-9);
}

}  // namespace
}  // namespace headless::geometry

#include "headless/geometry/flat_joiner.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace headless::geometry {
namespace {

constexpr double kTurn = 2 * std::numbers::pi;
// What is one place on paper, and one direction. The shift keeps round numbers away from where one step ends and the
// next begins.
constexpr double kSamePlace = 0.004, kSameAngle = 1e-5, kShift = 0.37;
constexpr double kGap = 0.002, kLeast = 0.004;  // between pieces of one line; of a piece that is drawn

long long step(double value, double size) { return std::llround(value / size + kShift); }

}  // namespace

FlatJoiner::LineGroup FlatJoiner::groupOf(const FlatLine& line) {
  FlatPoint way{line.to.x - line.from.x, line.to.y - line.from.y};
  const double length = lengthOf(way);
  way = {way.x / length, way.y / length};
  // Of its two directions the one to the right, or upwards.
  if (way.x < -kSameAngle || (way.x < kSameAngle && way.y < 0)) way = {-way.x, -way.y};
  return {way, line.from.y * way.x - line.from.x * way.y, {}};
}
FlatJoiner::LineKey FlatJoiner::keyOf(const LineGroup& group) {
  return {step(std::atan2(group.along.y, group.along.x), kSameAngle), step(group.across, kSamePlace)};
}
FlatJoiner::Interval FlatJoiner::intervalOn(const LineGroup& group, const FlatLine& line) {
  const auto at = [&](const FlatPoint& p) { return p.x * group.along.x + p.y * group.along.y; };
  return {std::min(at(line.from), at(line.to)), std::max(at(line.from), at(line.to))};
}

void FlatJoiner::take(SeenAs as, const FlatCurve& curve) {
  const auto place = static_cast<std::size_t>(as);
  if (as != SeenAs::axis) box_.take(curve);
  if (const auto* arc = std::get_if<FlatArc>(&curve)) return takeArc(as, *arc);
  if (const auto* path = std::get_if<FlatPath>(&curve)) return takePath(as, *path);
  const auto& line = std::get<FlatLine>(curve);
  if (!(lengthOf({line.to.x - line.from.x, line.to.y - line.from.y}) > 1e-6)) return;  // it leads away from the viewer
  LineGroup group = groupOf(line);
  LineGroup& known = lines_.try_emplace(keyOf(group), std::move(group)).first->second;
  known.pieces[place].push_back(intervalOn(known, line));
}

void FlatJoiner::takeArc(SeenAs as, const FlatArc& arc) {
  FlatArc own = arc;
  const auto turn = [&own](double angle) {  // u and v are turned, the curve stays
    const double c = std::cos(angle), s = std::sin(angle);
    const FlatPoint u = own.u, v = own.v;
    own.u = {c * u.x + s * v.x, c * u.y + s * v.y};
    own.v = {c * v.x - s * u.x, c * v.y - s * u.y};
    own.from -= angle;
    own.to -= angle;
  };
  if (isCircle(arc))
    turn(-std::atan2(own.u.y, own.u.x));
  else if (own.u.y < -kSamePlace / 2 || (own.u.y < kSamePlace / 2 && own.u.x < 0))
    turn(std::numbers::pi);
  const ArcKey key{step(own.centre.x, kSamePlace), step(own.centre.y, kSamePlace), step(own.u.x, kSamePlace),
                   step(own.u.y, kSamePlace), step(lengthOf(own.v), kSamePlace)};
  Intervals& pieces = arcs_.try_emplace(key, ArcGroup{own, {}}).first->second.pieces[static_cast<std::size_t>(as)];
  if (isWhole(own)) return pieces.push_back({0, kTurn});
  const double back = kTurn * std::floor(own.from / kTurn), from = own.from - back, to = own.to - back;
  pieces.push_back({from, std::min(to, kTurn)});
  if (to > kTurn) pieces.push_back({0, to - kTurn});
}

// Chains of lines are the same where their ends and middles are.
void FlatJoiner::takePath(SeenAs as, const FlatPath& path) {
  if (path.points.size() < 2) return;
  const auto at = [](const FlatPoint& p) -> std::array<long long, 2> {
    constexpr double kCoarse = 5 * kSamePlace;
    return {step(p.x, kCoarse), step(p.y, kCoarse)};
  };
  auto first = at(path.points.front()), last = at(path.points.back());
  const auto middle = at(path.points[path.points.size() / 2]);
  if (last < first) std::swap(first, last);
  const PathKey key{first[0], first[1], middle[0], middle[1], last[0], last[1]};
  const auto [known, isNew] = paths_.try_emplace(key, KnownPath{as, path});
  if (!isNew && as < known->second.as) known->second.as = as;
}

FlatJoiner::Intervals FlatJoiner::united(Intervals pieces, double gap) {
  std::ranges::sort(pieces);
  Intervals whole;
  for (const Interval& piece : pieces) {
    if (!whole.empty() && piece.from <= whole.back().to + gap)
      whole.back().to = std::max(whole.back().to, piece.to);
    else
      whole.push_back(piece);
  }
  return whole;
}

// Both are in order, and none overlaps another of its list.
FlatJoiner::Intervals FlatJoiner::without(const Intervals& pieces, const Intervals& covered) {
  Intervals left;
  for (const Interval& piece : pieces) {
    double from = piece.from;
    for (const Interval& cover : covered) {
      if (cover.to <= from || cover.from >= piece.to) continue;
      if (cover.from > from) left.push_back({from, cover.from});
      from = std::max(from, cover.to);
    }
    if (from < piece.to) left.push_back({from, piece.to});
  }
  return left;
}

FlatJoiner::Kinds FlatJoiner::ranked(const Kinds& pieces, double gap, double least) {
  Kinds made;
  Intervals covered;
  for (std::size_t kind = 0; kind < pieces.size(); ++kind) {
    made[kind] = united(pieces[kind], gap);
    if (kind == static_cast<std::size_t>(SeenAs::axis)) continue;
    made[kind] = without(made[kind], covered);
    covered.insert(covered.end(), made[kind].begin(), made[kind].end());
    covered = united(std::move(covered), gap);
    std::erase_if(made[kind], [least](const Interval& piece) { return piece.to - piece.from < least; });
  }
  return made;
}

bool FlatJoiner::hasEdgeUpon(const FlatLine& line) const {
  const LineKey key = keyOf(groupOf(line));
  // The edge of a bore's half that ends a little before its middle lies beside its outline.
  for (const long long beside : {-1, 0, 1}) {
    const auto found = lines_.find({key[0], key[1] + beside});
    if (found == lines_.end()) continue;
    const Interval asked = intervalOn(found->second, line);
    for (const SeenAs as : {SeenAs::edge, SeenAs::hidden})
      for (const Interval& piece : found->second.pieces[static_cast<std::size_t>(as)])
        if (piece.from < asked.to - kLeast && piece.to > asked.from + kLeast) return true;
  }
  return false;
}

bool FlatJoiner::hasEdgeUpon(const FlatPoint& centre, double radius) const {
  constexpr long long kLowest = std::numeric_limits<long long>::min();
  const long long x = step(centre.x, kSamePlace), y = step(centre.y, kSamePlace);
  for (long long column = x - 1; column <= x + 1; ++column) {
    auto at = arcs_.lower_bound({column, y - 1, kLowest, kLowest, kLowest});
    for (; at != arcs_.end() && at->first[0] == column && at->first[1] <= y + 1; ++at) {
      const auto& [whole, pieces] = at->second;
      if (!isCircle(whole) || std::fabs(lengthOf(whole.u) - radius) > kSamePlace) continue;
      for (const SeenAs as : {SeenAs::edge, SeenAs::hidden})
        if (!pieces[static_cast<std::size_t>(as)].empty()) return true;
    }
  }
  return false;
}

RoundEdge FlatJoiner::roundAbout(const FlatPoint& centre) const {
  constexpr double kAtEnd = 1e-3;  // radians: where an arc ends there it still is
  const long long x = step(centre.x, kSamePlace), y = step(centre.y, kSamePlace);
  RoundEdge largest;
  constexpr long long kLowest = std::numeric_limits<long long>::min();
  for (auto at = arcs_.lower_bound({x, y, kLowest, kLowest, kLowest}); at != arcs_.end(); ++at) {
    if (at->first[0] != x || at->first[1] != y) break;
    const double radius = lengthOf(at->second.whole.u);
    if (!isCircle(at->second.whole) || radius <= largest.radius) continue;
    RoundEdge round{radius, {}};
    double angle = 0;
    for (const SeenAs as : {SeenAs::edge, SeenAs::hidden})
      for (const Interval& piece : united(at->second.pieces[static_cast<std::size_t>(as)], kSameAngle)) {
        angle += piece.to - piece.from;
        for (std::size_t quarter = 0; quarter < round.isThere.size(); ++quarter)
          for (const double t : {0.0, kTurn}) {
            const double way = t + static_cast<double>(quarter) * kTurn / 4;
            if (way >= piece.from - kAtEnd && way <= piece.to + kAtEnd) round.isThere.at(quarter) = true;
          }
      }
    if (angle > kHalfTurn) largest = round;
  }
  return largest;
}

// A piece that ends where the counting of angles begins goes on there.
void FlatJoiner::addArcs(const ArcGroup& group, std::array<std::vector<FlatCurve>, kSeenKinds>& into) {
  const double radius = std::max(lengthOf(group.whole.u), kLeast);
  const Kinds pieces = ranked(group.pieces, kGap / radius, kLeast / radius);
  for (std::size_t kind = 0; kind < pieces.size(); ++kind) {
    Intervals own = pieces[kind];
    if (own.size() > 1 && own.front().from <= kGap / radius && own.back().to >= kTurn - kGap / radius) {
      own.back().to = kTurn + own.front().to;
      own.erase(own.begin());
    }
    for (const Interval& piece : own) {
      FlatArc arc = group.whole;
      arc.from = piece.from;
      arc.to = piece.to;
      if (piece.to - piece.from >= kTurn - kGap / radius) arc.to = arc.from + kTurn;
      into[kind].emplace_back(arc);
    }
  }
}

std::vector<SeenCurve> FlatJoiner::result() const {
  std::array<std::vector<FlatCurve>, kSeenKinds> sorted;
  for (const auto& [key, group] : lines_) {
    const Kinds pieces = ranked(group.pieces, kGap, kLeast);
    const FlatPoint foot{-group.across * group.along.y, group.across * group.along.x};
    const auto at = [&foot, along = group.along](double way) -> FlatPoint {
      return {foot.x + way * along.x, foot.y + way * along.y};
    };
    for (std::size_t kind = 0; kind < pieces.size(); ++kind)
      for (const Interval& piece : pieces[kind]) sorted[kind].emplace_back(FlatLine{at(piece.from), at(piece.to)});
  }
  for (const auto& [key, group] : arcs_) addArcs(group, sorted);
  for (const auto& [key, known] : paths_) sorted[static_cast<std::size_t>(known.as)].emplace_back(known.path);
  std::vector<SeenCurve> all;
  for (int kind = kSeenKinds - 1; kind >= 0; --kind)
    for (FlatCurve& curve : sorted[static_cast<std::size_t>(kind)])
      all.push_back({static_cast<SeenAs>(kind), std::move(curve)});
  return all;
}

}  // namespace headless::geometry

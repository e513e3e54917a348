// Inside this folder only: lines that lie upon one another become one.
#pragma once

#include <array>
#include <map>
#include <vector>

#include "headless/geometry/sight.h"

namespace headless::geometry {

// Radians from which on a face or an arc counts as half a turn or more: a bore of two halves with a gasket between them
// is a little less in each.
constexpr double kHalfTurn = 3.0;

// A circle of radius 0: there is none. Is it there to the right of its centre, above, to the left and below?
struct RoundEdge {
  double radius = 0;
  std::array<bool, 4> isThere{};
};

// Pieces of one line or one ellipse that overlap or touch become one, each kind apart; then of each kind what a kind
// before it covers goes. Axes are covered by nothing. Lengths are in mm on paper.
class FlatJoiner {
 public:
  void take(SeenAs as, const FlatCurve& curve);
  // Does an edge, or a hidden one, lie somewhere upon the line?
  [[nodiscard]] bool hasEdgeUpon(const FlatLine& line) const;
  // Or a piece of the circle?
  [[nodiscard]] bool hasEdgeUpon(const FlatPoint& centre, double radius) const;
  // The largest circle about the place of which an edge, or a hidden one, shows half (kHalfTurn) or more.
  [[nodiscard]] RoundEdge roundAbout(const FlatPoint& centre) const;
  [[nodiscard]] FlatBox box() const { return box_; }
  // What is visible comes last.
  [[nodiscard]] std::vector<SeenCurve> result() const;

 private:
  struct Interval {
    double from = 0, to = 0;
    auto operator<=>(const Interval&) const = default;
  };
  using Intervals = std::vector<Interval>;
  using Kinds = std::array<Intervals, kSeenKinds>;
  struct LineGroup {
    FlatPoint along;    // of length 1
    double across = 0;  // how far it passes the origin
    Kinds pieces;       // along it, from the origin's foot
  };
  struct ArcGroup {
    FlatArc whole;
    Kinds pieces;
  };
  struct KnownPath {
    SeenAs as = SeenAs::edge;
    FlatPath path;
  };
  using LineKey = std::array<long long, 2>;
  using ArcKey = std::array<long long, 5>;
  using PathKey = std::array<long long, 6>;

  static LineGroup groupOf(const FlatLine& line);
  static LineKey keyOf(const LineGroup& group);
  static Interval intervalOn(const LineGroup& group, const FlatLine& line);
  static Intervals united(Intervals pieces, double gap);
  static Intervals without(const Intervals& pieces, const Intervals& covered);
  static Kinds ranked(const Kinds& pieces, double gap, double least);
  void takeArc(SeenAs as, const FlatArc& arc);
  void takePath(SeenAs as, const FlatPath& path);
  static void addArcs(const ArcGroup& group, std::array<std::vector<FlatCurve>, kSeenKinds>& into);

  std::map<LineKey, LineGroup> lines_;
  std::map<ArcKey, ArcGroup> arcs_;
  std::map<PathKey, KnownPath> paths_;
  FlatBox box_;
};

}  // namespace headless::geometry

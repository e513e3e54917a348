#include "headless/pictures/projection.h"

#include <map>
#include <set>
#include <unordered_map>

namespace headless {
namespace {

constexpr float kDots = 700;             // of the longer side
constexpr float kDepthRounding = 1e-4F;  // of the size of all there is
constexpr float kSameCorner = 1e-5F;     // of a mesh's size: corners of several faces that are one
constexpr int kShortest = 3;             // dots of a line that is hidden elsewhere

using Corner = std::uint32_t;
using CornerPair = std::pair<Corner, Corner>;  // the lower one first

CornerPair pairOf(Corner a, Corner b) { return {std::min(a, b), std::max(a, b)}; }

// ---- where round faces may turn away

// An edge that two triangles share and that is none between faces: the outline lies on it where only one of the two is
// turned to the viewer. Points are those of the mesh.
struct InnerEdge {
  std::uint32_t from = 0, to = 0;
  std::size_t triangle = 0, other = 0;
};

// Numbers the points of a mesh so that those in one place, as along the seam of a round face, have one number.
class Corners {
 public:
  explicit Corners(const geometry::Mesh& mesh) {
    ScreenBox box;
    for (const auto& [x, y, z] : mesh.points) box.take({x, y, z});
    cell_ = box.isEmpty() ? 1 : std::max(box.size() * kSameCorner, 1e-30F);
    of_.reserve(mesh.points.size());
    for (const geometry::MeshPoint& point : mesh.points) of_.push_back(numberOf(point));
  }
  [[nodiscard]] Corner at(std::uint32_t point) const { return of_[point]; }
  Corner numberOf(const geometry::MeshPoint& point) {
    const auto rounded = [this](float value) { return std::llround(std::isfinite(value) ? value / cell_ : 0); };
    const std::array<long long, 3> key{rounded(point[0]), rounded(point[1]), rounded(point[2])};
    return known_.try_emplace(key, static_cast<Corner>(known_.size())).first->second;
  }

 private:
  float cell_ = 1;
  std::map<std::array<long long, 3>, Corner> known_;
  std::vector<Corner> of_;
};

std::vector<InnerEdge> innerEdges(const geometry::Mesh& mesh) {
  Corners corners(mesh);
  std::set<CornerPair> sharp;
  for (const auto& [from, to] : mesh.edges) sharp.insert(pairOf(corners.numberOf(from), corners.numberOf(to)));
  std::map<CornerPair, InnerEdge> open;
  std::vector<InnerEdge> edges;
  for (std::size_t i = 0; i < mesh.triangles.size(); ++i)
    for (std::size_t k = 0; k < 3; ++k) {
      const std::uint32_t a = mesh.triangles[i][k], b = mesh.triangles[i][(k + 1) % 3];
      const CornerPair pair = pairOf(corners.at(a), corners.at(b));
      if (pair.first == pair.second || sharp.contains(pair)) continue;
      const auto [first, isNew] = open.try_emplace(pair, InnerEdge{a, b, i, 0});
      if (isNew) continue;
      first->second.other = i;
      edges.push_back(first->second);
      open.erase(first);
    }
  return edges;
}

// ---- what lies before what

struct Segment {
  ScreenPoint from, to;
};

// The nearest face at each dot.
class DepthMap {
 public:
  explicit DepthMap(const ScreenBox& box) : box_(box) {
    const float w = box.high.x - box.low.x, h = box.high.y - box.low.y;
    scale_ = kDots / std::max({w, h, 1e-30F});
    width_ = static_cast<int>(w * scale_) + 3;  // with a dot around it
    height_ = static_cast<int>(h * scale_) + 3;
    rounding_ = kDepthRounding * box.size();
    depth_.assign(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_), -HUGE_VALF);
  }
  void add(const std::array<ScreenPoint, 3>& triangle) {
    const std::array<ScreenPoint, 3> p{dots(triangle[0]), dots(triangle[1]), dots(triangle[2])};
    eachDot(p, width_, height_, [&](int x, int y, const std::array<float, 3>& share) {
      float& depth = at(x, y);
      depth = std::max(depth, share[0] * p[0].z + share[1] * p[1].z + share[2] * p[2].z);
    });
  }
  // Cuts a segment where it disappears and comes back. piece: (from, to, hidden), each from 0 to 1.
  template <class Piece>
  void cut(const Segment& segment, Piece piece) const {
    const ScreenPoint a = dots(segment.from), b = dots(segment.to);
    const int steps = std::max(1, static_cast<int>(std::ceil(std::max(std::abs(b.x - a.x), std::abs(b.y - a.y)))));
    std::vector<bool> hidden;
    hidden.reserve(static_cast<std::size_t>(steps) + 1);
    for (int i = 0; i <= steps; ++i)
      hidden.push_back(isHidden(a, b, static_cast<float>(i) / static_cast<float>(steps)));
    dropShort(hidden);
    for (std::size_t first = 0; first < hidden.size();) {
      std::size_t end = first;
      while (end < hidden.size() && hidden[end] == hidden[first]) ++end;
      const auto place = [&](std::size_t i) {  // between two dots
        return std::clamp((static_cast<double>(i) - 0.5) / steps, 0.0, 1.0);
      };
      piece(place(first), end == hidden.size() ? 1.0 : place(end), hidden[first]);
      first = end;
    }
  }

 private:
  [[nodiscard]] ScreenPoint dots(const ScreenPoint& p) const {
    return {(p.x - box_.low.x) * scale_ + 1, (p.y - box_.low.y) * scale_ + 1, p.z};
  }
  float& at(int x, int y) {
    return depth_[static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) + static_cast<std::size_t>(x)];
  }
  [[nodiscard]] float at(int x, int y) const { return const_cast<DepthMap*>(this)->at(x, y); }
  // An edge lies on its faces, and its dot and those around it are theirs or what is seen beside them: it is hidden
  // where all of them are before it. In a hollow between two faces they are by what the faces rise from dot to dot,
  // which the fourth of the nine tells: three lie along the edge.
  [[nodiscard]] bool isHidden(const ScreenPoint& a, const ScreenPoint& b, float t) const {
    const int x = static_cast<int>(a.x + t * (b.x - a.x)), y = static_cast<int>(a.y + t * (b.y - a.y));
    std::array<float, 9> around{};
    for (int i = 0; i < 9; ++i)
      around[static_cast<std::size_t>(i)] =
          at(std::clamp(x + i % 3 - 1, 0, width_ - 1), std::clamp(y + i / 3 - 1, 0, height_ - 1));
    std::partial_sort(around.begin(), around.begin() + 4, around.end());
    const float z = a.z + t * (b.z - a.z) + rounding_;
    return around[0] > z && around[0] - (around[3] - around[0]) > z;
  }
  // A few dots that differ from what is around them are those where it meets another line.
  static void dropShort(std::vector<bool>& hidden) {
    for (std::size_t first = 0; first < hidden.size();) {
      std::size_t end = first;
      while (end < hidden.size() && hidden[end] == hidden[first]) ++end;
      if (end - first < kShortest && end - first < hidden.size())
        for (std::size_t i = first; i < end; ++i) hidden[i] = first > 0 ? hidden[first - 1] : hidden[end];
      first = end;
    }
  }

  ScreenBox box_;
  float scale_ = 1, rounding_ = 0;
  int width_ = 0, height_ = 0;
  std::vector<float> depth_;
};

// ---- lines

// Lines along an axis of the picture, as edges make of flat and round faces that are seen from the side, become one
// where they overlap or touch. least: what is no distance. Those that are hidden come first, so that what is seen is
// drawn over them.
class Joiner {
 public:
  explicit Joiner(double least) : least_(least) {}
  void take(const ProjectedLine& line) {
    const double across = std::abs(line.x2 - line.x1), up = std::abs(line.y2 - line.y1);
    if (across < least_ && up < least_) return;  // it leads away from the viewer
    if (across < least_ / 8)
      stretch(line.isHidden, false, line.x1, line.y1, line.y2);
    else if (up < least_ / 8)
      stretch(line.isHidden, true, line.y1, line.x1, line.x2);
    else if (isNew(line))
      (line.isHidden ? hidden_ : seen_).push_back(line);
  }
  std::vector<ProjectedLine> result() {
    for (auto& [key, all] : stretches_) join(all, key.isLevel, key.isHidden ? hidden_ : seen_);
    hidden_.insert(hidden_.end(), seen_.begin(), seen_.end());
    return std::move(hidden_);
  }

 private:
  struct Stretch {
    double from = 0, to = 0, place = 0;
    auto operator<=>(const Stretch&) const = default;
  };
  struct Key {
    bool isHidden = false, isLevel = false;
    long long place = 0;
    auto operator<=>(const Key&) const = default;
  };
  [[nodiscard]] long long rounded(double value) const { return std::llround(value / least_); }
  void stretch(bool isHidden, bool isLevel, double place, double from, double to) {
    stretches_[{isHidden, isLevel, rounded(place)}].push_back({std::min(from, to), std::max(from, to), place});
  }
  bool isNew(const ProjectedLine& line) {
    std::array<long long, 2> a{rounded(line.x1), rounded(line.y1)}, b{rounded(line.x2), rounded(line.y2)};
    if (b < a) std::swap(a, b);
    return known_.insert({line.isHidden, a[0], a[1], b[0], b[1]}).second;
  }
  void join(std::vector<Stretch>& all, bool isLevel, std::vector<ProjectedLine>& into) const {
    std::sort(all.begin(), all.end());
    for (std::size_t i = 0; i < all.size();) {
      Stretch whole = all[i++];
      for (; i < all.size() && all[i].from <= whole.to + 2 * least_; ++i) whole.to = std::max(whole.to, all[i].to);
      const auto& [from, to, place] = whole;
      into.push_back(isLevel ? ProjectedLine{from, place, to, place} : ProjectedLine{place, from, place, to});
      into.back().isHidden = &into == &hidden_;
    }
  }

  double least_;
  std::map<Key, std::vector<Stretch>> stretches_;
  std::set<std::array<long long, 5>> known_;
  std::vector<ProjectedLine> hidden_, seen_;
};

// ---- parts

// The way of a triangle: above 0 it is turned to the viewer.
float turnOf(const std::array<ScreenPoint, 3>& p) {
  return (p[1].x - p[0].x) * (p[2].y - p[0].y) - (p[2].x - p[0].x) * (p[1].y - p[0].y);
}

class Projector {
 public:
  explicit Projector(const creo::ProTransform& view) : view_(view) {}

  void take(const ShadedPart& part) {
    const geometry::Mesh& mesh = *part.mesh;
    std::vector<ScreenPoint> points;
    points.reserve(mesh.points.size());
    for (const geometry::MeshPoint& point : mesh.points) {
      points.push_back(onScreen(part, point, view_));
      box_.take(points.back());
    }
    std::vector<bool> turned;  // to the viewer
    turned.reserve(mesh.triangles.size());
    for (const auto& [a, b, c] : mesh.triangles) {
      const std::array<ScreenPoint, 3> corners{points[a], points[b], points[c]};
      const bool isWhole = isFinite(corners[0]) && isFinite(corners[1]) && isFinite(corners[2]);
      turned.push_back(isWhole && turnOf(corners) > 0);
      if (turned.back()) triangles_.push_back(corners);  // a body hides by what it turns to the viewer
    }
    for (const auto& [from, to] : mesh.edges) addSegment(onScreen(part, from, view_), onScreen(part, to, view_));
    const auto [inner, isNew] = inner_.try_emplace(&mesh);
    if (isNew) inner->second = innerEdges(mesh);
    for (const InnerEdge& edge : inner->second)
      if (turned[edge.triangle] != turned[edge.other]) addSegment(points[edge.from], points[edge.to]);
  }

  [[nodiscard]] Projection result() const {
    if (box_.isEmpty() || !std::isfinite(box_.size())) return {};
    DepthMap depth(box_);
    for (const auto& triangle : triangles_) depth.add(triangle);
    Joiner lines(static_cast<double>(box_.size()) / (4 * kDots));
    for (const Segment& segment : segments_)
      depth.cut(segment, [&](double from, double to, bool hidden) { lines.take(lineOf(segment, from, to, hidden)); });
    return {static_cast<double>(box_.high.x - box_.low.x), static_cast<double>(box_.high.y - box_.low.y),
            lines.result()};
  }

 private:
  void addSegment(const ScreenPoint& from, const ScreenPoint& to) {
    if (isFinite(from) && isFinite(to)) segments_.push_back({from, to});
  }
  [[nodiscard]] ProjectedLine lineOf(const Segment& segment, double from, double to, bool hidden) const {
    const double middleX = (static_cast<double>(box_.low.x) + box_.high.x) / 2,
                 middleY = (static_cast<double>(box_.low.y) + box_.high.y) / 2;
    const double x = segment.from.x - middleX, y = segment.from.y - middleY,
                 alongX = static_cast<double>(segment.to.x) - segment.from.x,
                 alongY = static_cast<double>(segment.to.y) - segment.from.y;
    return {x + from * alongX, y + from * alongY, x + to * alongX, y + to * alongY, hidden};
  }

  creo::ProTransform view_;
  ScreenBox box_;
  std::vector<std::array<ScreenPoint, 3>> triangles_;
  std::vector<Segment> segments_;
  std::unordered_map<const geometry::Mesh*, std::vector<InnerEdge>> inner_;
};

}  // namespace

Projection projection(const std::vector<ShadedPart>& parts, const creo::ProTransform& view) {
  Projector projector(view);
  for (const ShadedPart& part : parts) projector.take(part);
  return projector.result();
}

}  // namespace headless

#include "headless/pictures/shaded.h"

#include <cmath>

#include "headless/pictures/shaded_cut.h"

namespace headless {

using creo::ProTransform;
using creo::ProVector;

namespace {

constexpr Color kBackground{255, 255, 255};
constexpr Color kEdge{40, 44, 52};
constexpr double kFilled = 0.9;  // of the width or the height
constexpr double kAmbient = 0.38, kDiffuse = 0.62, kGloss = 0.18;
constexpr int kGlossPower = 24;
constexpr double kMostFineDots = 4e6;
constexpr float kEdgeLift = 0.004F;  // towards the viewer, of the depth of all there is: edges lie on their faces
constexpr ProVector kLight{-0.42, 0.54, 0.73};
constexpr ProVector kHalfway{-0.226, 0.290, 0.930};  // between the light and the viewer

double dot(const ProVector& a, const ProVector& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }

using Point = ScreenPoint;
using Box = ScreenBox;

ProVector vectorOf(const std::array<float, 3>& v) { return {v[0], v[1], v[2]}; }
Point onScreen(const ProVector& v, const ProTransform& view) {
  return {static_cast<float>(dot(view.xAxis, v)), static_cast<float>(dot(view.yAxis, v)),
          static_cast<float>(dot(view.zAxis, v))};
}

// A part turned to the screen, still in the model's units.
struct Turned {
  const ShadedPart* part = nullptr;
  std::vector<Point> points;
};

class Canvas {
 public:
  Canvas(int width, int height)
      : image_(width, height, kBackground),
        depth_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), -HUGE_VALF) {}

  // colors: of the three corners. cut, here and below: only what doesn't lie before it; null: all.
  void triangle(const std::array<Point, 3>& p, const std::array<std::array<float, 3>, 3>& colors, float opacity,
                const CutDepth* cut);
  // lift: towards the viewer.
  void line(const Point& from, const Point& to, float lift, const CutDepth* cut);
  void put(int x, int y, float z, const std::array<float, 3>& color, float opacity);
  Image image_;

 private:
  float& depth(int x, int y) {
    return depth_[static_cast<std::size_t>(y) * static_cast<std::size_t>(image_.width) + static_cast<std::size_t>(x)];
  }
  std::vector<float> depth_;
};

void Canvas::put(int x, int y, float z, const std::array<float, 3>& color, float opacity) {
  if (z <= depth(x, y)) return;
  if (opacity >= 1) depth(x, y) = z;
  Color& dot = image_.at(x, y);
  for (std::size_t i = 0; i < 3; ++i)
    dot[i] = static_cast<std::uint8_t>(
        std::clamp(color[i] * 255 * opacity + static_cast<float>(dot[i]) * (1 - opacity), 0.0F, 255.0F));
}

void Canvas::triangle(const std::array<Point, 3>& p, const std::array<std::array<float, 3>, 3>& colors, float opacity,
                      const CutDepth* cut) {
  eachDot(p, image_.width, image_.height, [&](int x, int y, const std::array<float, 3>& share) {
    const float z = share[0] * p[0].z + share[1] * p[1].z + share[2] * p[2].z;
    if (z <= depth(x, y) || (cut && cut->isBefore(x, y, z))) return;
    std::array<float, 3> color{};
    for (std::size_t i = 0; i < 3; ++i)
      color[i] = share[0] * colors[0][i] + share[1] * colors[1][i] + share[2] * colors[2][i];
    put(x, y, z, color, opacity);
  });
}

void Canvas::line(const Point& from, const Point& to, float lift, const CutDepth* cut) {
  const float length = std::max(std::abs(to.x - from.x), std::abs(to.y - from.y));
  const int steps = std::max(1, static_cast<int>(std::ceil(length)));
  const std::array<float, 3> color{kEdge[0] / 255.0F, kEdge[1] / 255.0F, kEdge[2] / 255.0F};
  for (int i = 0; i <= steps; ++i) {
    const float t = static_cast<float>(i) / static_cast<float>(steps);
    const int x = static_cast<int>(from.x + t * (to.x - from.x)), y = static_cast<int>(from.y + t * (to.y - from.y));
    const float z = from.z + t * (to.z - from.z);
    if (cut && cut->isBefore(x, y, z)) continue;
    for (const auto& [dx, dy] : {std::pair(0, 0), {1, 0}, {0, 1}, {1, 1}})
      if (x + dx >= 0 && x + dx < image_.width && y + dy >= 0 && y + dy < image_.height)
        put(x + dx, y + dy, z + lift, color, 1);
  }
}

Turned turnedPart(const ShadedPart& part, const ProTransform& view, Box& box) {
  Turned turned{&part, {}};
  turned.points.reserve(part.mesh->points.size());
  for (const geometry::MeshPoint& point : part.mesh->points) {
    turned.points.push_back(onScreen(part, point, view));
    box.take(turned.points.back());
  }
  return turned;
}

// A colour on a face that looks that way, lit; both sides are lit alike.
std::array<float, 3> lit(const std::array<double, 3>& face, ProVector n, const ProTransform& view) {
  n = {dot(view.xAxis, n), dot(view.yAxis, n), dot(view.zAxis, n)};
  if (n.z < 0) n = {-n.x, -n.y, -n.z};
  const double light = kAmbient + kDiffuse * std::max(0.0, dot(n, kLight));
  const double gloss = kGloss * std::pow(std::max(0.0, dot(n, kHalfway)), kGlossPower);
  std::array<float, 3> color{};
  for (std::size_t i = 0; i < 3; ++i) color[i] = static_cast<float>(std::min(1.0, face[i] * light + gloss));
  return color;
}
std::array<float, 3> lit(const ShadedPart& part, std::size_t point, const ProTransform& view) {
  const auto own = part.faceColors.find(part.mesh->faces[point]);
  return lit(own == part.faceColors.end() ? part.color : own->second,
             creo::transformVector(part.place, vectorOf(part.mesh->normals[point])), view);
}

// From the model's units to dots.
struct Fit {
  float scale = 1, x = 0, y = 0;
  Fit(const Box& box, int width, int height) {
    const float w = std::max(box.high.x - box.low.x, 1e-12F), h = std::max(box.high.y - box.low.y, 1e-12F);
    scale = static_cast<float>(kFilled) * std::min(static_cast<float>(width) / w, static_cast<float>(height) / h);
    x = static_cast<float>(width) / 2 - scale * (box.low.x + box.high.x) / 2;
    y = static_cast<float>(height) / 2 + scale * (box.low.y + box.high.y) / 2;
  }
  [[nodiscard]] Point dots(const Point& p) const { return {x + scale * p.x, y - scale * p.y, scale * p.z}; }
};

float opacityOf(const ShadedPart& part) { return static_cast<float>(1 - std::clamp(part.transparency, 0.0, 1.0)); }

void drawFaces(Canvas& canvas, const Turned& turned, const Fit& fit, const ProTransform& view, const CutDepth* cut) {
  const geometry::Mesh& mesh = *turned.part->mesh;
  std::vector<std::array<float, 3>> colors;
  colors.reserve(mesh.normals.size());
  for (std::size_t i = 0; i < mesh.normals.size(); ++i) colors.push_back(lit(*turned.part, i, view));
  const float opacity = opacityOf(*turned.part);
  for (const auto& [a, b, c] : mesh.triangles) {
    const std::array<Point, 3> corners{fit.dots(turned.points[a]), fit.dots(turned.points[b]),
                                       fit.dots(turned.points[c])};
    if (isFinite(corners[0]) && isFinite(corners[1]) && isFinite(corners[2]))
      canvas.triangle(corners, {colors[a], colors[b], colors[c]}, opacity, cut);
  }
}

void drawEdges(Canvas& canvas, const Turned& turned, const Fit& fit, const ProTransform& view, float lift,
               const CutDepth* cut) {
  const auto at = [&](const geometry::MeshPoint& point) { return fit.dots(onScreen(*turned.part, point, view)); };
  for (const auto& [from, to] : turned.part->mesh->edges) {
    const Point a = at(from), b = at(to);
    if (isFinite(a) && isFinite(b)) canvas.line(a, b, lift, cut);
  }
}

// What is cut of a part's solids, with its outline.
void drawCut(Canvas& canvas, const Turned& turned, const Fit& fit, const std::array<float, 3>& color, float lift,
             const CutDepth& cut) {
  const geometry::Mesh& mesh = *turned.part->mesh;
  Box box;
  for (const Point& point : turned.points) box.take(fit.dots(point));
  if (box.isEmpty()) return;
  CutMaterial material(cut, box, canvas.image_.width, canvas.image_.height);
  for (std::size_t i = 0; i < mesh.closed; ++i) {
    const auto& [a, b, c] = mesh.triangles[i];
    material.take({fit.dots(turned.points[a]), fit.dots(turned.points[b]), fit.dots(turned.points[c])});
  }
  const float opacity = opacityOf(*turned.part);
  material.eachDot([&](int x, int y) { canvas.put(x, y, cut.at(x, y), color, opacity); });
  for (const auto& [from, to] : material.outline()) canvas.line(from, to, lift, nullptr);
}

}  // namespace

ScreenPoint onScreen(const ShadedPart& part, const geometry::MeshPoint& point, const ProTransform& view) {
  const ProVector p = vectorOf(point);
  return onScreen(creo::transformPoint(part.place, {p.x * part.scale, p.y * part.scale, p.z * part.scale}), view);
}

Image shaded(const std::vector<ShadedPart>& parts, const ProTransform& view, int width, int height,
             const std::optional<geometry::SightCut>& cut) {
  // Drawn at twice the size, so that edges are smooth; a very large picture has dots enough, and memory has an end.
  const int fine = static_cast<double>(width) * height <= kMostFineDots ? 2 : 1;
  Canvas canvas(fine * width, fine * height);
  const auto finished = [&] { return fine == 2 ? halved(canvas.image_) : std::move(canvas.image_); };
  Box box;
  std::vector<Turned> turned;
  turned.reserve(parts.size());
  for (const ShadedPart& part : parts) turned.push_back(turnedPart(part, view, box));
  if (box.isEmpty()) return finished();
  const Fit fit(box, fine * width, fine * height);
  const float size = box.size() * fit.scale, lift = kEdgeLift * size;
  std::optional<CutDepth> depth;
  if (cut) depth.emplace(fit.dots(onScreen(cut->point, view)), onScreen(cut->normal, view), size);
  const CutDepth* const bound = depth ? &*depth : nullptr;
  // What can be seen through is drawn over what can't.
  std::stable_sort(turned.begin(), turned.end(),
                   [](const Turned& a, const Turned& b) { return a.part->transparency < b.part->transparency; });
  for (const Turned& entry : turned) {
    if (entry.part->transparency <= 0) drawEdges(canvas, entry, fit, view, lift, bound);
    if (cut) drawCut(canvas, entry, fit, lit(entry.part->color, cut->normal, view), lift, *depth);
    drawFaces(canvas, entry, fit, view, bound);
  }
  return finished();
}

}  // namespace headless

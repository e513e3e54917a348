#include "headless/pictures/shaded_cut.h"

namespace headless {
namespace {

constexpr float kSpare = 1e-4F;  // of the size: by so much depths are unsure

}  // namespace

CutDepth::CutDepth(const ScreenPoint& at, const ScreenPoint& normal, float size)
    : base_(0), across_(-normal.x / normal.z), down_(normal.y / normal.z), spare_(kSpare * size) {
  base_ = before(at);
}

CutMaterial::CutMaterial(const CutDepth& cut, const ScreenBox& box, int width, int height)
    : cut_(cut), width_(width), height_(height) {
  const auto within = [](float dot, int end) {
    return static_cast<int>(std::clamp(std::floor(dot), 0.0F, static_cast<float>(end - 1)));
  };
  left_ = within(box.low.x - 1, width);
  top_ = within(box.low.y - 1, height);
  wide_ = static_cast<std::size_t>(within(box.high.x + 1, width) - left_ + 1);
  dots_.resize(wide_ * static_cast<std::size_t>(within(box.high.y + 1, height) - top_ + 1));
}

void CutMaterial::take(const std::array<ScreenPoint, 3>& triangle) {
  std::array<float, 3> before{};
  for (std::size_t i = 0; i < 3; ++i) {
    if (!isFinite(triangle[i])) return;
    before[i] = cut_.before(triangle[i]);
  }
  if (std::ranges::min(before) > cut_.spare()) return;
  // What lies in the plane doesn't meet it in a line.
  if (std::ranges::max(before) >= 0 && std::ranges::min(before) < -cut_.spare()) {
    std::vector<ScreenPoint> met;
    for (std::size_t i = 0; i < 3; ++i) {
      const std::size_t next = (i + 1) % 3;
      if ((before[i] < 0) == (before[next] < 0)) continue;
      const ScreenPoint &a = triangle[i], &b = triangle[next];
      const float t = before[i] / (before[i] - before[next]);
      met.push_back({a.x + t * (b.x - a.x), a.y + t * (b.y - a.y), a.z + t * (b.z - a.z)});
    }
    outline_.push_back({met.front(), met.back()});
  }
  const ScreenPoint &p = triangle[0], &q = triangle[1], &r = triangle[2];
  const bool looksAway = (q.x - p.x) * (r.y - p.y) - (r.x - p.x) * (q.y - p.y) > 0;
  headless::eachDot(triangle, width_, height_, [&](int x, int y, const std::array<float, 3>& share) {
    const float z = share[0] * p.z + share[1] * q.z + share[2] * r.z;
    Dot& dot = dots_.at(static_cast<std::size_t>(y - top_) * wide_ + static_cast<std::size_t>(x - left_));
    if (z > dot.depth && (looksAway ? cut_.isBehind(x, y, z) : !cut_.isBefore(x, y, z))) dot = {z, looksAway};
  });
}

}  // namespace headless

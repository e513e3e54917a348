// Triangles as dots, for pictures of solids.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace headless {

// x and y in dots, y downwards or upwards as the user of it counts; z towards the viewer.
struct ScreenPoint {
  float x = 0, y = 0, z = 0;
};
inline bool isFinite(const ScreenPoint& p) { return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z); }

// The box around points; those that aren't finite count for nothing.
struct ScreenBox {
  ScreenPoint low{HUGE_VALF, HUGE_VALF, HUGE_VALF}, high{-HUGE_VALF, -HUGE_VALF, -HUGE_VALF};
  void take(const ScreenPoint& p) {
    if (!isFinite(p)) return;
    low = {std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
    high = {std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
  }
  [[nodiscard]] bool isEmpty() const { return !(low.x <= high.x); }
  // The longest of its three edges.
  [[nodiscard]] float size() const { return std::max({high.x - low.x, high.y - low.y, high.z - low.z}); }
};

// The dots of a line of the canvas among which are all whose middle lies in the triangle. Long slivers cross a large
// box, and most of it is none of theirs.
inline std::pair<int, int> dotsAcross(const std::array<ScreenPoint, 3>& p, float area, float py, int left, int right) {
  constexpr float kSpare = 2;  // dots by which the numbers here may be wrong
  auto from = static_cast<float>(left), to = static_cast<float>(right);
  for (std::size_t i = 0; i < 3; ++i) {
    const ScreenPoint &a = p[(i + 1) % 3], &b = p[(i + 2) % 3];
    const float slope = (a.y - b.y) / area, base = ((b.x - a.x) * (py - a.y) - a.x * (a.y - b.y)) / area;
    const float zero = -base / slope;  // where the corner's share changes its sign
    if (!std::isfinite(zero)) continue;
    if (slope > 0)
      from = std::max(from, zero - kSpare);
    else
      to = std::min(to, zero + kSpare);
  }
  if (!(from <= to)) return {left, left - 1};
  return {static_cast<int>(from), static_cast<int>(to)};
}

// Calls put(x, y, share) for each dot of a canvas whose middle lies in the triangle; share: how much each of the three
// corners counts there, in all 1.
template <class Put>
void eachDot(const std::array<ScreenPoint, 3>& p, int width, int height, Put put) {
  const float area = (p[1].x - p[0].x) * (p[2].y - p[0].y) - (p[2].x - p[0].x) * (p[1].y - p[0].y);
  if (area == 0 || !std::isfinite(area)) return;
  const auto bounds = [](float a, float b, float c, int end) {
    const float last = static_cast<float>(end);
    return std::pair(static_cast<int>(std::floor(std::clamp(std::min({a, b, c}), 0.0F, last))),
                     std::min(end - 1, static_cast<int>(std::ceil(std::clamp(std::max({a, b, c}), -1.0F, last)))));
  };
  const auto [left, right] = bounds(p[0].x, p[1].x, p[2].x, width);
  const auto [top, bottom] = bounds(p[0].y, p[1].y, p[2].y, height);
  for (int y = top; y <= bottom; ++y) {
    const float py = static_cast<float>(y) + 0.5F;
    const auto [from, to] = dotsAcross(p, area, py, left, right);
    for (int x = from; x <= to; ++x) {
      const float px = static_cast<float>(x) + 0.5F;
      std::array<float, 3> share{};
      for (std::size_t i = 0; i < 3; ++i) {
        const ScreenPoint &a = p[(i + 1) % 3], &b = p[(i + 2) % 3];
        share[i] = ((b.x - a.x) * (py - a.y) - (px - a.x) * (b.y - a.y)) / area;
      }
      if (share[0] >= 0 && share[1] >= 0 && share[2] >= 0) put(x, y, share);
    }
  }
}

}  // namespace headless

// Where a plane cuts solids in a shaded picture, dot by dot.
#pragma once

#include <vector>

#include "headless/pictures/raster.h"

namespace headless {

// How far a plane lies towards the viewer at each dot.
class CutDepth {
 public:
  // at: a place of the plane in dots, y downwards; normal: in the same directions but y, which leads upwards, and
  // towards the viewer; size: of all that is seen, in dots.
  CutDepth(const ScreenPoint& at, const ScreenPoint& normal, float size);
  [[nodiscard]] float at(int x, int y) const { return base_ + across_ * middle(x) + down_ * middle(y); }
  // What lies in the plane is neither before nor behind it.
  [[nodiscard]] bool isBefore(int x, int y, float z) const { return z > at(x, y) + spare_; }
  [[nodiscard]] bool isBehind(int x, int y, float z) const { return z < at(x, y) - spare_; }
  [[nodiscard]] float spare() const { return spare_; }
  // By how much a point lies towards the viewer, negative behind the plane.
  [[nodiscard]] float before(const ScreenPoint& p) const { return p.z - base_ - across_ * p.x - down_ * p.y; }

 private:
  static float middle(int dot) { return static_cast<float>(dot) + 0.5F; }
  float base_, across_, down_, spare_;
};

// The material of one part that the plane cuts: at a dot where the first face behind the plane looks away from the
// viewer, the plane lies within the part.
class CutMaterial {
 public:
  // box: of the part, in dots; width, height: of the picture.
  CutMaterial(const CutDepth& cut, const ScreenBox& box, int width, int height);
  // The triangles of closed bodies, counter-clockwise from outside before y was turned downwards.
  void take(const std::array<ScreenPoint, 3>& triangle);
  template <class Put>
  void eachDot(Put put) const {
    for (std::size_t i = 0; i < dots_.size(); ++i)
      if (dots_[i].looksAway) put(left_ + static_cast<int>(i % wide_), top_ + static_cast<int>(i / wide_));
  }
  // Pieces of the lines in which the plane meets faces.
  [[nodiscard]] const std::vector<std::array<ScreenPoint, 2>>& outline() const { return outline_; }

 private:
  struct Dot {
    float depth = -HUGE_VALF;
    bool looksAway = false;
  };
  const CutDepth& cut_;
  int width_, height_;
  int left_ = 0, top_ = 0;  // of the dots
  std::size_t wide_ = 0;
  std::vector<Dot> dots_;  // those about the part alone, as pictures of many parts would take too long
  std::vector<std::array<ScreenPoint, 2>> outline_;
};

}  // namespace headless

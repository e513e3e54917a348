// Points, directions and placements in the coordinates of a solid, in its units of length.
#pragma once

namespace creo {

struct ProVector {
  double x = 0, y = 0, z = 0;
};

// A placement, and the transform that goes with it: the axes and the origin of one system in the coordinates of
// another. The axes are perpendicular, of length 1 and right-handed.
struct ProTransform {
  ProVector xAxis{1, 0, 0}, yAxis{0, 1, 0}, zAxis{0, 0, 1}, origin;
};

// A direction of the placed system in the coordinates around it.
constexpr ProVector transformVector(const ProTransform& t, const ProVector& v) {
  return {t.xAxis.x * v.x + t.yAxis.x * v.y + t.zAxis.x * v.z, t.xAxis.y * v.x + t.yAxis.y * v.y + t.zAxis.y * v.z,
          t.xAxis.z * v.x + t.yAxis.z * v.y + t.zAxis.z * v.z};
}
// A point of it.
constexpr ProVector transformPoint(const ProTransform& t, const ProVector& p) {
  const ProVector turned = transformVector(t, p);
  return {turned.x + t.origin.x, turned.y + t.origin.y, turned.z + t.origin.z};
}
// A placement of it.
constexpr ProTransform transformed(const ProTransform& t, const ProTransform& placed) {
  return {transformVector(t, placed.xAxis), transformVector(t, placed.yAxis), transformVector(t, placed.zAxis),
          transformPoint(t, placed.origin)};
}

}  // namespace creo

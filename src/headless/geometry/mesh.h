// Bodies as triangles, for pictures.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "headless/geometry/body.h"

namespace headless::geometry {

using MeshPoint = std::array<float, 3>;

struct Mesh {
  std::vector<MeshPoint> points;                        // a corner of several faces is there for each of them
  std::vector<MeshPoint> normals;                       // of the points, out of the body, of length 1
  std::vector<int> faces;                               // of the points: the number of the face in faces(), from 1
  std::vector<std::array<std::uint32_t, 3>> triangles;  // of points, counter-clockwise from outside
  std::size_t closed = 0;                               // of the triangles, the first: those of solids, not of quilts
  // Straight pieces of the edges between faces, but for those where a face goes on as the next.
  std::vector<std::array<MeshPoint, 2>> edges;
};
// deflection: how far a triangle may be off its face, in the body's units; turn: between neighbouring triangles of a
// round face, in radians. Throws std::runtime_error for what the
// library can't mesh.
Mesh mesh(const Body& body, double deflection, double turn);

}  // namespace headless::geometry

// Solids as shaded pictures: triangles and edges in parallel projection, lit from the viewer's upper left.
#pragma once

#include <map>
#include <optional>
#include <vector>

#include "creo/ProTransform.h"
#include "headless/geometry/mesh.h"
#include "headless/geometry/sight.h"
#include "headless/pictures/image.h"
#include "headless/pictures/raster.h"

namespace headless {

// A mesh where it stands in the picture's model.
struct ShadedPart {
  const geometry::Mesh* mesh = nullptr;
  creo::ProTransform place;
  double scale = 1;                                      // from the mesh's units of length, before the placement
  std::array<double, 3> color{0.7, 0.74, 0.78};          // 0 to 1
  double transparency = 0;                               // 0: opaque, 1: not there
  std::map<int, std::array<double, 3>> faceColors = {};  // of faces that look otherwise, by the mesh's numbers
};

// A point of the part's mesh, turned to the screen: still in the model's units, y upwards.
ScreenPoint onScreen(const ShadedPart& part, const geometry::MeshPoint& point, const creo::ProTransform& view);

// view: the axes of the screen in the model's coordinates, x to the right, y up, z to the viewer; the picture shows
// everything, in the middle, with a margin. No triangle: the background alone. cut: what lies before this plane, whose
// normal leads to the viewer, isn't there; cut material has its part's colour. Nothing moves or grows by a cut.
Image shaded(const std::vector<ShadedPart>& parts, const creo::ProTransform& view, int width, int height,
             const std::optional<geometry::SightCut>& cut = {});

}  // namespace headless

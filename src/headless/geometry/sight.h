// What a view of bodies is asked with and answered by.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "creo/ProTransform.h"
#include "headless/geometry/body.h"
#include "headless/geometry/flat_curve.h"

namespace headless::geometry {

// As what a line is drawn. Where several lie upon one another the first of these is drawn alone, as ISO 128 has it.
enum class SeenAs {
  edge,    // a visible edge, or where a round face turns away
  smooth,  // a visible edge over which faces go on without a bend
  hidden,  // an edge or an outline behind a face
  axis     // of a round face that goes half around or more
};
constexpr int kSeenKinds = 4;

struct SeenCurve {
  SeenAs as = SeenAs::edge;
  FlatCurve curve;
};

// A cylindrical gear's teeth, between the cylinders of its root and its tip about the z axis of the placement, which
// stand on its origin. An inner gear's tip is the smaller one.
struct Gear {
  creo::ProTransform place;
  double tip = 0, pitch = 0, root = 0;  // diameters
  double length = 0;
  bool isToothed = false;  // else the room between root and tip is filled
};
// A body where it stands.
struct PlacedBody {
  BodyPtr body;
  creo::ProTransform place;  // in the picture's coordinates and unit
  double scale = 1;          // from the body's unit of length, before the placement
  int number = 0;            // by which cuts name it
  bool isCut = true;         // else it stays whole where a plane cuts the others
  // In the body's own coordinates and unit: where a plane cuts it their teeth aren't cut material, and where axes are
  // asked for their pitch surfaces are marked.
  std::vector<Gear> gears = {};
};
// A plane in the picture's coordinates; what lies before it, where its normal leads to, isn't there.
struct SightCut {
  creo::ProVector point, normal;
};
struct Sight {
  std::vector<PlacedBody> bodies;
  creo::ProTransform screen;  // its axes in the picture's coordinates: x to the right, y up, z to the viewer
  double scale = 1;           // mm on paper for a unit of the picture
  bool hidden = false;        // are hidden lines asked for?
  bool axes = false;          // are axes?
  std::optional<SightCut> cut = {};
};
// A closed chain of curves in their order, each of which may lead either way.
using FlatLoop = std::vector<FlatCurve>;
// A face of cut material: what lies within an odd number of its loops.
struct SeenCut {
  int number = 0;  // of the body
  std::vector<FlatLoop> loops;
};
// Lengths are in mm on paper, places are counted from the middle of what is seen, y upwards.
struct Seen {
  double width = 0, height = 0;   // of the edges, without axes
  FlatPoint middle;               // where the middle lies, from where the picture's origin is seen
  std::vector<SeenCurve> curves;  // what is visible comes last
  std::vector<SeenCut> cuts;      // of bodies that the plane cuts
  bool isFaceted = false;         // edges of flat facets, as the exact ones couldn't be had
  int corrected = 0;              // lines that the library took for visible, and that a face hides
  std::wstring reason;            // why it is faceted; without curves: why there are none
};

// How the library goes about it.
enum class SeenBy { exactEdges, facets };

}  // namespace headless::geometry

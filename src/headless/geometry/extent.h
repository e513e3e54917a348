// Inside this folder only: how far a shape reaches in any direction, prepared for many questions.
#pragma once

#include <TopoDS_Compound.hxx>
#include <vector>

#include "creo/ProSolid.h"

namespace headless::geometry {

// Planes, cylinders, cones and whatever else is made of straight lines end at their edges, and so does their box:
// corners and arcs are all that counts of them. Only what is left (spheres, tori, splines) is given to the library for
// each question.
class Extent {
 public:
  explicit Extent(const TopoDS_Shape& shape);
  // The exact box in the coordinates that `into` leads to.
  [[nodiscard]] creo::ProOutline box(const creo::ProTransform& into) const;

 private:
  struct Arc {  // centre + cos(t) * x + sin(t) * y, for t from first to last
    creo::ProVector centre, x, y;
    double first = 0, last = 0;
  };
  struct Range {
    double low, high;
    void take(double value);
  };
  [[nodiscard]] Range along(const creo::ProVector& direction) const;
  static void takeArc(Range& range, const Arc& arc, const creo::ProVector& direction);

  std::vector<creo::ProVector> corners_;
  std::vector<Arc> arcs_;
  TopoDS_Compound rest_;
  bool hasRest_ = false;
};

}  // namespace headless::geometry

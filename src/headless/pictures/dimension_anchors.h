// What a dimension of a part measures, looked for in what the part's body is made of.
#pragma once

#include <string_view>
#include <vector>

#include "creo/ProTransform.h"
#include "headless/model/model.h"

namespace headless {

enum class Measuring { length, diameter, radius, angle };

// In the part's coordinates and unit.
struct DimensionAnchor {
  Measuring measuring = Measuring::length;
  creo::ProTransform place =
      {};  // z: the way of a length, the axis of what is round or turned; x: where an angle begins
  // Of a length: corners at its two ends, along z. Of what is round: the middles of its two ends, one of which may be
  // all that is known. Of an angle: its vertex.
  std::vector<creo::ProVector> first = {}, second = {};
  double radius = 0;  // of what is round; of an angle how far its arms reach
  double angle = 0;   // in degrees
  bool isBore = false;
};

// All of the best kind there is: a number of the body that is the dimension's symbol and nothing else; one that is
// worked out with it and has its value, or twice its value where a radius is meant; one of the feature that the
// dimension belongs to with its value; one that is a plain number and has its value. Features that are suppressed have
// none. Empty: nothing of the body has it, or a number of the body can't be worked out.
std::vector<DimensionAnchor> anchorsOf(const Model& part, const DimensionRecord& dimension, double value);
// By the value alone: of a dimension that belongs to a drawing.
std::vector<DimensionAnchor> anchorsOf(const Model& part, double value, bool isAngle);

}  // namespace headless

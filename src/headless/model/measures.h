// The numbers of a solid's geometry as its dimensions and parameters make them.
#pragma once

#include <string>

#include "headless/model/expression.h"
#include "headless/model/model.h"
#include "headless/store/records_geometry.h"

namespace headless {

// Why a number can't be worked out.
struct MeasureFault {
  std::wstring reason;
  int feature = 0;  // the one that the number is of; 0: none is told
};

// Reads the numbers of one model. All but the constructor throw MeasureFault. The model must outlive it.
class Measurer {
 public:
  explicit Measurer(const Model& model) : model_(model) {}
  // 0 for a measure that isn't given. what: how a fault calls it.
  double number(const Measure& measure, std::string_view what);
  creo::ProVector vector(const Measures& measures, std::string_view what);
  // Its axes made perpendicular and of length 1. Null: that of the system around it.
  creo::ProTransform placement(const PlacementRecord* record);

 private:
  const Model& model_;
  RelationLookup names_;  // null until an expression asks for one
};

}  // namespace headless

#include "headless/model/measures.h"

#include <cmath>

#include "text/encoding.h"
#include "text/format.h"

namespace headless {

using creo::ProTransform;
using creo::ProVector;

namespace {

// Beyond it bodies have no precision left.
constexpr double kMostLength = 1e9;
// Shorter directions lead nowhere.
constexpr double kLeastDirection = 1e-9;

double dot(const ProVector& a, const ProVector& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
ProVector cross(const ProVector& a, const ProVector& b) {
  return {a.y * b.z - a.z * b.y + 0.0, a.z * b.x - a.x * b.z + 0.0, a.x * b.y - a.y * b.x + 0.0};  // never -0
}
// The part of a direction that is perpendicular to another, of length 1.
ProVector across(const ProVector& v, const ProVector& axis) {
  const double along = dot(v, axis);
  const ProVector rest{v.x - along * axis.x, v.y - along * axis.y, v.z - along * axis.z};
  const double length = std::sqrt(dot(rest, rest));
  if (!(length > kLeastDirection)) throw MeasureFault{L"the axes of a placement give no directions"};
  return {rest.x / length, rest.y / length, rest.z / length};
}
ProVector unit(const ProVector& v) { return across(v, {}); }
// An axis of the system around that can serve beside the given one.
ProVector beside(const ProVector& axis, const ProVector& wanted, const ProVector& instead) {
  return across(std::abs(dot(axis, wanted)) > 0.9 ? instead : wanted, axis);
}

}  // namespace

double Measurer::number(const Measure& measure, std::string_view what) {
  const auto faulty = [&](const std::wstring& reason) { return MeasureFault{text::fromUtf8(what) + L": " + reason}; };
  if (measure.index() == 0) return 0;
  double value = 0;
  if (const auto* real = std::get_if<double>(&measure)) {
    value = *real;
  } else if (const auto* integer = std::get_if<int>(&measure)) {
    value = *integer;
  } else if (const auto* expression = std::get_if<std::string>(&measure)) {
    if (!names_) names_ = model_.document->workedOut.relationNames(model_);
    const Evaluated evaluated = evaluate(*expression, names_);
    if (!evaluated.fault.empty()) throw faulty(evaluated.fault);
    const auto present = headless::number(evaluated.value);
    if (!present) throw faulty(text::format(L"'%s' gives no number", text::fromUtf8(*expression)));
    value = *present;
  } else {
    throw faulty(L"it must be a number or an expression");
  }
  if (!(std::abs(value) <= kMostLength)) throw faulty(L"it is too large");
  return value;
}

ProVector Measurer::vector(const Measures& measures, std::string_view what) {
  if (measures.size() != 3) return {};
  return {number(measures[0], what), number(measures[1], what), number(measures[2], what)};
}

ProTransform Measurer::placement(const PlacementRecord* record) {
  ProTransform placed;
  if (!record) return placed;
  placed.origin = vector(record->position, "position");
  const ProTransform around;
  if (!record->zAxis.empty()) {
    placed.zAxis = unit(vector(record->zAxis, "zAxis"));
    placed.xAxis = record->xAxis.empty() ? beside(placed.zAxis, around.xAxis, around.yAxis)
                                         : across(vector(record->xAxis, "xAxis"), placed.zAxis);
  } else if (!record->xAxis.empty()) {
    placed.xAxis = unit(vector(record->xAxis, "xAxis"));
    placed.zAxis = beside(placed.xAxis, around.zAxis, around.yAxis);
  }
  placed.yAxis = cross(placed.zAxis, placed.xAxis);
  return placed;
}

}  // namespace headless

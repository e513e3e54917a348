// Predicates on the dimensions of solids and drawings.
#include <algorithm>
#include <cmath>
#include <limits>

#include "creo/ProDrawing.h"
#include "creo/ProSolid.h"
#include "documents/predicate_families.h"
#include "documents/predicate_words.h"

namespace documents {
namespace {

using DimensionVisit = creo::ProError (*)(creo::ProMdl, bool, creo::Visitor<creo::ProDimension>);

// Is there a dimension of a model, reference dimensions among them, for which f gives true?
template <class F>
bool anyDimension(DimensionVisit visit, creo::ProMdl model, F&& f) {
  for (const bool reference : {false, true}) {
    const auto stopAtHit = [&](const creo::ProDimension& dimension) {
      return f(dimension) ? creo::ProStopVisit : creo::ProNoError;
    };
    if (visit(model, reference, stopAtHit) == creo::ProStopVisit) return true;
  }
  return false;
}

bool nearlyEqual(double a, double b) {
  return std::fabs(a - b) <= std::max(std::fabs(a), std::fabs(b)) * std::numeric_limits<double>::epsilon() * 3;
}

}  // namespace

int dimensionTextPredicate(creo::ProMdl model, const core::XmlNode& item) {
  title(L"Extended filter: Drawing dimension text");
  if (!applicableType(model, AppliesTo::drawings)) return kNotApplicable;
  const std::wstring_view pattern = valueOf(item, L"ddt");
  const auto fits = [&](const creo::ProDimension& dimension) {
    const auto shown = creo::ProAnnotationIsShown(dimension, model);
    if (!shown || !shown.value) return false;
    const auto lines = creo::ProDimensionTextGet(dimension);
    return lines && std::any_of(lines.value.begin(), lines.value.end(),
                                [&](const std::wstring& line) { return matches(pattern, line); });
  };
  if (anyDimension(&creo::ProDrawingDimensionVisit, model, fits)) return kTrue;
  const auto stopAtHit = [&](const creo::ProMdl& solid) {
    return anyDimension(&creo::ProSolidDimensionVisit, solid, fits) ? creo::ProStopVisit : creo::ProNoError;
  };
  return creo::ProDrawingSolidsVisit(model, stopAtHit) == creo::ProStopVisit ? kTrue : kFalse;
}

int dimensionTolerancePredicate(creo::ProMdl model, const core::XmlNode& item) {
  title(L"Extended filter: Dimension tolerance");
  const auto type = applicableType(model, AppliesTo::any);
  if (!type) return kNotApplicable;
  if (!isTrue(item, L"asymmetric")) return kFalse;
  const auto isAsymmetric = [](const creo::ProDimension& dimension) {
    const auto tolerance = creo::ProDimensionToleranceGet(dimension);
    return tolerance && !nearlyEqual(tolerance.value.upper, tolerance.value.lower);
  };
  const DimensionVisit visit =
      *type == creo::ProMdlType::drawing ? &creo::ProDrawingDimensionVisit : &creo::ProSolidDimensionVisit;
  return anyDimension(visit, model, isAsymmetric) ? kTrue : kFalse;
}

}  // namespace documents

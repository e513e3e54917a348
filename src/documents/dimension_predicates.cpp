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

Answer dimensionTextPredicate(const Question& question) {
  const std::wstring_view pattern = question.value(L"ddt");
  const auto fits = [&](const creo::ProDimension& dimension) {
    const auto shown = creo::ProAnnotationIsShown(dimension, question.model);
    if (!shown || !shown.value) return false;
    const auto lines = creo::ProDimensionTextGet(dimension);
    return lines && std::any_of(lines.value.begin(), lines.value.end(),
                                [&](const std::wstring& line) { return matches(pattern, line); });
  };
  if (anyDimension(&creo::ProDrawingDimensionVisit, question.model, fits)) return Answer::yes;
  const auto stopAtHit = [&](const creo::ProMdl& solid) {
    return anyDimension(&creo::ProSolidDimensionVisit, solid, fits) ? creo::ProStopVisit : creo::ProNoError;
  };
  return answer(creo::ProDrawingSolidsVisit(question.model, stopAtHit) == creo::ProStopVisit);
}

Answer dimensionTolerancePredicate(const Question& question) {
  if (!question.isTrue(L"asymmetric")) return Answer::no;
  const auto isAsymmetric = [](const creo::ProDimension& dimension) {
    const auto tolerance = creo::ProDimensionToleranceGet(dimension);
    return tolerance && !nearlyEqual(tolerance.value.upper, tolerance.value.lower);
  };
  const DimensionVisit visit =
      question.type == creo::ProMdlType::drawing ? &creo::ProDrawingDimensionVisit : &creo::ProSolidDimensionVisit;
  return answer(anyDimension(visit, question.model, isAsymmetric));
}

constexpr Attribute kTextAttributes[] = {
    {.name = L"ddt", .kind = Kind::pattern, .need = Need::needed, .about = "a line of the dimension"},
};
constexpr Attribute kToleranceAttributes[] = {
    {.name = L"asymmetric",
     .kind = Kind::flag,
     .words = L"true",
     .need = Need::needed,
     .about = "without true the answer is no"},
};

constexpr Predicate kPredicates[] = {
    {.key = L"drawingDimensionText",
     .place = 32,
     .title = L"Extended filter: Drawing dimension text",
     .models = Models::drawings,
     .attributes = kTextAttributes,
     .about = "a line of a dimension that is shown fits",
     .function = &dimensionTextPredicate},
    {.key = L"dimensiontolerance",
     .place = 50,
     .title = L"Extended filter: Dimension tolerance",
     .models = Models::typed,
     .attributes = kToleranceAttributes,
     .about = "a dimension has an upper and a lower tolerance that differ",
     .function = &dimensionTolerancePredicate},
};

}  // namespace

std::span<const Predicate> dimensionPredicates() { return kPredicates; }

}  // namespace documents

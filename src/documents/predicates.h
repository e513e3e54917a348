// The vocabulary of filters: one row a key, in their fixed order.
#pragma once

#include <span>
#include <string_view>

#include "core/xml.h"
#include "creo/ProTypes.h"

namespace documents {

// Predicates' answers. Any other value counts as true; kNotAKey is notHandled. kUndecided: a comparison was given up.
constexpr int kFalse = 0;
constexpr int kTrue = 1;
constexpr int kNotApplicable = 3;
constexpr int kNotAKey = -25;
constexpr int kUndecided = -26;

struct Predicate {
  std::wstring_view key;
  int (*function)(creo::ProMdl model, const core::XmlNode& item);
};
std::span<const Predicate> predicateTable();

// 1 a family instance, 0 not, 3 for a drawing.
int isInstance(creo::ProMdl model);
// 1 when the solid has a family table, 0 not, 3 for a drawing.
int isGeneric(creo::ProMdl model);
// 1 for a skeleton, 0 for any other model.
int isSkeleton(creo::ProMdl model);
// 1 for a drawing of more than one model, 0 not, 3 for a model whose type can't be read.
int isMultiModelDrawing(creo::ProMdl model);

}  // namespace documents

// The families that make up the table of predicates, each in the file of its name.
#pragma once

#include <span>

#include "documents/predicates.h"

namespace documents {

std::span<const Predicate> dimensionPredicates();
std::span<const Predicate> drawingPredicates();
std::span<const Predicate> familyPredicates();
std::span<const Predicate> featurePredicates();
std::span<const Predicate> filePredicates();
std::span<const Predicate> parameterPredicates();
std::span<const Predicate> pdmPredicates();
std::span<const Predicate> sessionPredicates();
std::span<const Predicate> sheetPredicates();
std::span<const Predicate> solidPredicates();
std::span<const Predicate> statePredicates();
std::span<const Predicate> tablePredicates();

}  // namespace documents

#include "documents/predicate_table.h"

#include <algorithm>
#include <unordered_map>
#include <vector>

#include "core/log.h"
#include "documents/predicate_families.h"
#include "documents/predicate_words.h"

namespace documents {
namespace {

// Their order doesn't matter.
constexpr std::span<const Predicate> (*kFamilies[])() = {
    &dimensionPredicates, &drawingPredicates,   &familyPredicates, &featurePredicates,
    &filePredicates,      &parameterPredicates, &pdmPredicates,    &sessionPredicates,
    &sheetPredicates,     &solidPredicates,     &statePredicates,  &tablePredicates,
};

std::vector<Predicate> gathered() {
  std::vector<Predicate> table;
  for (const auto& family : kFamilies) {
    const std::span<const Predicate> rows = family();
    table.insert(table.end(), rows.begin(), rows.end());
  }
  std::sort(table.begin(), table.end(), [](const Predicate& a, const Predicate& b) { return a.place < b.place; });
  return table;
}

}  // namespace

std::span<const Predicate> predicateTable() {
  static const std::vector<Predicate> table = gathered();
  return table;
}

const Predicate* findPredicate(std::wstring_view key) {
  static const std::unordered_map<std::wstring_view, const Predicate*> rows = [] {
    std::unordered_map<std::wstring_view, const Predicate*> map;
    for (const Predicate& row : predicateTable()) map.emplace(row.key, &row);
    return map;
  }();
  const auto found = rows.find(key);
  return found == rows.end() ? nullptr : found->second;
}

Answer ask(const Predicate& predicate, creo::ProMdl model, const core::XmlNode& item) {
  if (predicate.title.isThere()) core::logIndented(core::lineText(predicate.title), core::kDebug, 1);
  if (predicate.models == Models::all || predicate.asksTypeItself)
    return predicate.function({.model = model, .item = item});
  const auto type = applicableType(model, predicate.models);
  if (!type) return Answer::notApplicable;
  return predicate.function({.model = model, .item = item, .type = *type});
}

}  // namespace documents

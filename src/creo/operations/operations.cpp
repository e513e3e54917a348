#include "creo/operations.h"

#include <algorithm>
#include <iterator>

#include "creo/operations/groups.h"

namespace creo {
namespace {

constexpr Operations (*kGroups[])() = {
    &modelOperations,  &familyOperations,  &solidOperations,  &featureOperations,        &drawingOperations,
    &symbolOperations, &textOperations,    &stateOperations,  &representationOperations, &parameterOperations,
    &outputOperations, &sessionOperations, &dialogOperations, &dialogTableOperations,
};

}  // namespace

std::span<const Operation> operations() {
  static const Operations all = [] {
    Operations rows;
    for (const auto group : kGroups) {
      Operations some = group();
      std::sort(some.begin(), some.end(), [](const Operation& a, const Operation& b) { return a.name < b.name; });
      rows.insert(rows.end(), std::make_move_iterator(some.begin()), std::make_move_iterator(some.end()));
    }
    return rows;
  }();
  return all;
}

}  // namespace creo

// What two states of a model differ in, as lines. Dry runs, events and the comparison of folders show the same.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "headless/store/compare.h"
#include "kelvane/base/console.h"
#include "kelvane/log/events.h"

namespace kelvane {

enum class Presence { both, onlyBefore, onlyAfter };
struct ModelChanges {
  std::string model;  // "SHAFT.PRT"
  Presence presence = Presence::both;
  std::vector<headless::Change> changes;
  [[nodiscard]] bool any() const { return presence != Presence::both || !changes.empty(); }
};

// By content, history aside.
ModelChanges compared(std::string model, std::string_view before, std::string_view after);
// "SHAFT.PRT: parameters/MASS/value: 2.5 -> 3", "SHAFT.PRT: + parameters/NORM/value: WN-100", "SHAFT.PRT: - ...".
void show(Console& console, const ModelChanges& changes);
// The same as events: "created", or a "changed" for each value.
void tell(Events& events, const ModelChanges& changes);

// What was told of a document, by hashes of paths and values.
using Told = std::unordered_map<std::size_t, std::size_t>;
// What wasn't yet, which is noted as told: instances are kept with their generic's document, and it is compared anew
// behind each of its rows.
ModelChanges untold(const ModelChanges& changes, Told& reported);

}  // namespace kelvane

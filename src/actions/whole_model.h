// The frame of the actions on a whole model.
#pragma once

#include <initializer_list>
#include <optional>
#include <string_view>

#include "engine/task.h"

namespace actions {

// The models that an action works on.
struct Fits {
  bool parts = false, assemblies = false, drawings = false;
  bool instances = true;
};
constexpr Fits kSolids{.parts = true, .assemblies = true};
constexpr Fits kNativeSolids{.parts = true, .assemblies = true, .instances = false};
constexpr Fits kAllModels{.parts = true, .assemblies = true, .drawings = true};

// Title, version and filter, then the model's kind. Another kind gives `refused`; an instance where none fits has its
// line.
std::optional<engine::Outcome> beginOn(const engine::Task& task, const engine::Frame& frame, const Fits& fits);
// The same with attributes any of which gives the action work: a task that has none of them changes nothing and gets an
// error line with the first. One that ends in "_0" stands for a list of them, which may have gaps.
std::optional<engine::Outcome> beginOn(const engine::Task& task, const engine::Frame& frame, const Fits& fits,
                                       std::initializer_list<std::wstring_view> attributes);

// The error line for a word that an attribute can't have. known: "rel or abs".
void unknownWord(std::wstring_view attribute, std::wstring_view value, std::wstring_view known);

// How many entries a list "name_0", "name_1", ... may have.
constexpr int kListSize = 100;

}  // namespace actions

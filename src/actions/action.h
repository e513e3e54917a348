// What an action is, as data: a row. The dispatch carries it out from the row, and all that tells about actions (the
// checker of packages, the reasons why a model is left alone, the help) reads the same row.
#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string_view>

#include "core/attribute.h"
#include "core/line.h"
#include "core/log.h"

namespace actions {

// What an action gives back; nothing stops a list.
enum Outcome : int {
  done = 0,  // also after a failure that was logged
  wrongVersion = 1,
  refused = 2,  // by the filter, or the action doesn't apply
  failed = 98,  // a visit that Creo ended; nobody asks
  notHandled = -25,
};

class Task;  // actions/task.h; only its name is needed here

using core::Line;
using core::lineText;
using core::Message;

// ---- conditions

// What can be asked before an action works.
enum class Test : std::uint8_t {
  // The filter of the task with its switches forPRT, forASM, forDRW and forEF. Each action that does something has one
  // of these four, and counts as carried out from there on.
  filter,
  filterUnlessForAll,  // not asked where none of the switches of kinds is "false" and forEF isn't "true"
  filterWithModel,     // not asked without a model
  noFilter,
  // The model.
  model,               // there is one
  part,                // by the extension that the task was given
  assembly,            // the same
  drawing,             // the same
  partOrAssembly,      // the same
  solidType,           // by Creo's type: a part or an assembly; the following ones alike
  partType,            //
  assemblyType,        //
  drawingType,         //
  anyType,             // a part, an assembly or a drawing
  solidOrDrawingUser,  // an assembly or a drawing, which use other models
  typeKnown,           // any type that Creo tells
  notInstance,         // it is no instance of a family table
  notSkeleton,         //
  instancesAsTold,     // it is no instance, or the attribute forInstances isn't "false"
  skeletonsAsTold,     // it is no skeleton, or the attribute forSkel is "true"
  // The attributes.
  anyOfTheWork,  // one of those is there that are marked Need::oneOf
};

// A condition, and what becomes of the action where it doesn't hold.
struct Condition {
  Test test = Test::filter;
  Line line = {};  // none: the action ends without a word
  int level = core::kWarning;
  Outcome outcome = refused;
};

// Asked in this order, behind the title and the version.
class Conditions {
 public:
  constexpr Conditions(std::initializer_list<Condition> conditions) {
    for (const Condition& condition : conditions) all_[count_++] = condition;
  }
  [[nodiscard]] constexpr const Condition* begin() const { return all_.data(); }
  [[nodiscard]] constexpr const Condition* end() const { return all_.data() + count_; }

 private:
  static constexpr std::size_t kMost = 6;
  std::array<Condition, kMost> all_ = {};
  std::size_t count_ = 0;
};

constexpr Condition kFilter{.test = Test::filter, .line = Message::filterRefused};
constexpr Condition kFilterUnlessForAll{.test = Test::filterUnlessForAll, .line = Message::filterRefused};
constexpr Condition kFilterWithModel{.test = Test::filterWithModel, .line = Message::filterRefused};
constexpr Condition kNoFilter{.test = Test::noFilter};
constexpr Condition kNotInstance{.test = Test::notInstance, .line = Message::instanceRefused};
constexpr Condition kInstancesAsTold{.test = Test::instancesAsTold, .line = Message::instanceRefused, .outcome = done};
constexpr Condition kAnyOfTheWork{.test = Test::anyOfTheWork, .level = core::kError, .outcome = done};
constexpr Condition kModelThere{
    .test = Test::model, .line = L"This function need a model to get worked on it", .level = core::kError};
// By Creo's type, without a word.
constexpr Condition kSolids{.test = Test::solidType}, kParts{.test = Test::partType},
    kAssemblies{.test = Test::assemblyType}, kDrawings{.test = Test::drawingType}, kAnyType{.test = Test::anyType},
    kUsers{.test = Test::solidOrDrawingUser};

using core::Attribute;
using core::joined;
using core::Kind;
using core::Need;
using core::Numbers;
using core::Range;

// ---- effects

// What an action reads or changes.
enum class Touched : std::uint16_t {
  nothing = 0,
  model = 1U << 0U,          // the model under work
  users = 1U << 1U,          // models that use it, or that it uses
  family = 1U << 2U,         // its generic and its instances
  files = 1U << 3U,          // other files
  reports = 1U << 4U,        // reports of the run
  session = 1U << 5U,        // windows, memory, the working folder
  options = 1U << 6U,        // Creo's options
  server = 1U << 7U,         // the PDM server and its workspace
  programs = 1U << 8U,       // other programs, macros that may do anything
  web = 1U << 9U,            // addresses
  clipboard = 1U << 10U,     //
  surroundings = 1U << 11U,  // environment variables
  variables = 1U << 12U,     // user variables
};
constexpr Touched operator|(Touched a, Touched b) {
  return static_cast<Touched>(static_cast<std::uint16_t>(a) | static_cast<std::uint16_t>(b));
}
constexpr bool holds(Touched all, Touched touched) {
  return (static_cast<std::uint16_t>(all) & static_cast<std::uint16_t>(touched)) != 0;
}

struct Effects {
  Touched reads = Touched::model;
  Touched changes = Touched::nothing;
  bool known = true;      // what it will do can be told before the run
  bool takenBack = true;  // what it changed can be taken back
};

// ---- the row

// What the dispatch asks before an action has its turn.
enum class Group : std::uint8_t { withoutModel, withoutEffect, modelNeeded, ownModelTest };

struct Action {
  std::wstring_view key;
  int place = 0;  // in the order of comparison, from 0
  Group group = Group::modelNeeded;
  Line title = {};                   // none: it isn't told
  std::wstring_view inTitle = {};    // the attribute whose text stands for the title's %s
  std::wstring_view version = L"3";  // empty: any
  Conditions conditions = {kFilter};
  std::span<const Attribute> attributes = {};
  Effects effects = {};
  std::string_view about = {};       // a sentence for people
  bool forAssembliesAlone = false;   // Creo refuses parts: there the attempt is made, and its failure told
  bool isRemoved = false;            // lists of earlier releases hold it; it only says that it was removed
  std::wstring_view successor = {};  // of a removed one: the key that takes its place
  Outcome (*function)(const Task& task) = nullptr;
};

// Is it one of the four that ask the filter, or don't?
bool isFilterTest(Test test);
// The attributes that every action may have, in docs' order: type, version, forPRT, ...
std::span<const Attribute> commonAttributes();
// The attribute that the name in a list means, its own or a common one; null: none. "name_7" is "name_%d".
const Attribute* findAttribute(const Action& action, std::wstring_view name);

}  // namespace actions

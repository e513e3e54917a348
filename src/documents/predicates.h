// What a predicate of a filter is, as data: a row. The evaluation asks it from the row, and all that tells about
// filters (the checker of packages, the help) reads the same row.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "core/attribute.h"
#include "core/line.h"
#include "core/xml.h"
#include "creo/ProTypes.h"

namespace documents {

using core::Attribute;
using core::Kind;
using core::Need;

// notApplicable and undecided fail their item, also under negation. Any other value but `no` counts as true, noKey too.
enum class Answer : int {
  no = 0,
  yes = 1,
  notApplicable = 3,  // mostly a model of another type
  noKey = -25,        // no predicate has this key; the number of an action that nothing handled
  undecided = -26,    // a comparison was given up
};
constexpr Answer answer(bool holds) { return holds ? Answer::yes : Answer::no; }

// The models that a predicate applies to, by Creo's type. Other models, and those whose type can't be read, which is
// an error line, aren't applicable.
enum class Models : std::uint8_t {
  all,  // the type isn't asked
  typed,
  solids,  // all but drawings
  parts,
  assemblies,
  partsAndAssemblies,
  drawings,
};

// What a predicate is asked.
struct Question {
  creo::ProMdl model;
  const core::XmlNode& item;
  creo::ProMdlType type = creo::ProMdlType::unused;  // of the model, where the row asked for it

  // An attribute's value.
  [[nodiscard]] std::wstring_view value(std::wstring_view name, std::wstring_view absent = {}) const;
  // Is it the literal "true"?
  [[nodiscard]] bool isTrue(std::wstring_view name) const;
};

struct Predicate {
  std::wstring_view key;
  int place = 0;  // in the fixed order of the vocabulary, from 0
  core::Line title = {};
  Models models = Models::all;
  bool asksTypeItself = false;  // the function asks for `models`, behind a test of its own
  std::span<const Attribute> attributes = {};
  std::string_view about = {};  // a sentence for people: what is true of the model
  Answer (*function)(const Question& question) = nullptr;
};

// What the predicates of these names answer, for those who have no item.
Answer isInstance(creo::ProMdl model);
Answer isGeneric(creo::ProMdl model);
Answer isSkeleton(creo::ProMdl model);

// An instance's immediate generic; Creo doesn't bring one that isn't in memory, so that it is retrieved by its name.
// ProNotFound: the model is no instance, or there is no such model.
creo::Got<creo::ProMdl> immediateGeneric(creo::ProMdl instance);

}  // namespace documents

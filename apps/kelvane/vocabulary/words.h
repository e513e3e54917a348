// What stands in the rows of actions and filters, in words for people.
#pragma once

#include <string>
#include <vector>

#include "actions/action.h"
#include "documents/predicates.h"

namespace kelvane {

// The keys of the tables, in their order.
std::vector<std::string> actionKeys();
std::vector<std::string> predicateKeys();

// What the value of an attribute is: "whole number, 0 to 20", "true or false; only true counts".
std::string valueWords(const core::Attribute& attribute);
// The name with its numbers: "name_0 to name_99".
std::string nameWords(const core::Attribute& attribute);
// "needed", "one of these"; empty for one that may be absent. all: the attributes of its row.
std::string needWords(const core::Attribute& attribute, std::span<const core::Attribute> all);
// The words of a list; an empty one is none.
std::vector<std::string> wordsOf(const core::Attribute& attribute);
bool isCounted(const core::Attribute& attribute);
// Its name with that number in it.
std::wstring numberedName(const core::Attribute& attribute, int number);

// What the condition asks, and what its refusal leaves: "the model is no instance; else a warning".
std::string conditionWords(const actions::Condition& condition);
// "the model", "other files", ...
std::vector<std::string> touchedWords(actions::Touched touched);
std::string modelsWords(documents::Models models);

// Which kinds of models pass all of the conditions, as far as these ask for kinds.
struct ModelKinds {
  bool parts = true, assemblies = true, drawings = true;
};
ModelKinds kindsOf(const actions::Action& action);

}  // namespace kelvane

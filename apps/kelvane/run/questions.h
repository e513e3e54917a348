// The questions that a list asks its user, as its document shows them without a model.
#pragma once

#include <string>
#include <vector>

#include "actions/environment/question.h"
#include "kelvane/package/source.h"

namespace kelvane {

struct ListQuestion {
  std::string variable;  // as the list has it
  actions::QuestionKind kind{};
  std::string member, place;         // "actionlists/clean.xml", "B3 - G0"
  std::size_t line = 0;              // from 1
  bool hasStart = false;             // pressing OK alone gives a value, or none is asked for
  std::string start;                 // that value as the list has it, with its variables
  std::vector<std::string> choices;  // values and labels of a menu; empty where the models are its entries
};
// Those of a list (a member's name) that are switched on, the ones inside groups too, whatever the filters say.
std::vector<ListQuestion> questionsOf(const PackageSource& package, const std::string& list);
// "a text, at first '%COLOR%'", "one of steel, brass".
std::string described(const ListQuestion& question);

}  // namespace kelvane

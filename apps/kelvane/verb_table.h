// The verbs of the program as rows, from which the command line, its manual and its completions are made.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "kelvane/base/verb.h"

namespace kelvane {

std::span<const VerbRow> verbRows();
// All that 'kelvane help' knows: the keys of actions and filters, rules of the check, verbs.
std::vector<std::string> helpKeys();

// Options that every verb has.
struct Common {
  std::string color = "auto";
  bool quiet = false;
};
// The rows write into it, so it must outlive them.
std::vector<OptionRow> commonOptions(Common& common);

// The words that it takes; none: any value.
std::vector<std::string> choices(const OptionRow& row);
// "-n" and "--dry-run"; the one name of an argument.
std::vector<std::string> names(const OptionRow& row);
bool isArgument(const OptionRow& row);
bool takesValue(const OptionRow& row);
bool mayRepeat(const OptionRow& row);

}  // namespace kelvane

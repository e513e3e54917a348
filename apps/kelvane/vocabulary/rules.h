// The rules by which the check looks at a package.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kelvane {

enum class Severity {
  error,    // it won't run as it was meant: the check fails
  warning,  // probably a slip
  note,     // nothing wrong, but worth knowing
};
struct Rule {
  std::string_view name;  // "attribute-unknown"
  Severity severity = Severity::error;
  std::string_view about;         // what it finds, and why that matters
  std::string_view example = {};  // a line that it finds; empty where one says nothing
};
// In the order of their names.
std::span<const Rule> rules();
std::vector<std::string> ruleNames();
// Null for a name that is none.
const Rule* findRule(std::string_view name);
// "error"
std::string_view word(Severity severity);

}  // namespace kelvane

// What relations compute with.
#pragma once

#include <optional>
#include <string>
#include <variant>

namespace headless {

// None: it is there, but this session doesn't work it out, such as a mass or a value of another model; whatever it goes
// into isn't worked out either.
using RelationValue = std::variant<std::monostate, double, std::string, bool>;

struct Evaluated {
  RelationValue value;
  std::wstring fault;  // why it can't be read or worked out; empty for none
  // It can be read: the fault lies in the values that its names have now, such as a division by 0.
  bool byValues = false;
  std::string unworked = {};  // the first name that gave no value for good; empty: none did
};

// Yes and no, or a number that is 0 or isn't. Nothing for what is neither.
std::optional<bool> truth(const RelationValue& value);
std::optional<double> number(const RelationValue& value);

}  // namespace headless

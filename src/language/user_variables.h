// Variables of the user, outside models.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "text/letters.h"

namespace language {

// Named texts that outlive runs and last as long as the Creo process. Names compare without regard to case; order is
// that of their first setting. Names and values are cut to 259 units.
class UserVariableTable {
 public:
  void set(std::wstring_view name, std::wstring_view value);
  // What stood for another model must not answer for the next one: a name without a value isn't declared any more.
  // Nothing where it was never set.
  void remove(std::wstring_view name);
  // Null when it isn't set.
  [[nodiscard]] const std::wstring* find(std::wstring_view name) const;
  [[nodiscard]] std::size_t count() const { return names_.size(); }
  [[nodiscard]] const std::vector<std::wstring>& names() const { return names_; }
  [[nodiscard]] const std::vector<std::wstring>& values() const { return values_; }
  void clear();

 private:
  std::vector<std::wstring> names_, values_;
  std::unordered_map<std::wstring, std::size_t, text::HashNoCase, text::EqualNoCase> index_;
};
UserVariableTable& userVariables();

}  // namespace language

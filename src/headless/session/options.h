// Creo's configuration options. A name may have several values; names are case-blind.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "text/letters.h"

namespace headless {

class ConfigOptions {
 public:
  // Adds the lines "name value" of a settings file; empty lines and those that begin with "!" say nothing.
  void read(std::wstring_view content);
  // Takes the place of all values that the option has.
  void set(std::wstring_view name, std::wstring_view value);
  // In the order in which they came; empty for an option that isn't set.
  [[nodiscard]] std::vector<std::wstring> values(std::wstring_view name) const;

 private:
  std::unordered_map<std::wstring, std::vector<std::wstring>, text::HashNoCase, text::EqualNoCase> options_;
};

}  // namespace headless

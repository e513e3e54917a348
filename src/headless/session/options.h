// Creo's configuration options; names are case-blind. Most have one value. Search paths, mapkeys and layers of defaults
// may be given several times, and so may whatever a settings file gives several times.
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
  // The option's only value; of one that may have several, one more behind the others unless it is among them.
  // False: no option can be called so, and nothing is set.
  bool set(std::wstring_view name, std::wstring_view value);
  // In the order in which they came; empty for an option that isn't set.
  [[nodiscard]] std::vector<std::wstring> values(std::wstring_view name) const;

 private:
  struct Option {
    std::vector<std::wstring> values;
    bool several = false;
  };
  Option& option(std::wstring_view name);

  std::unordered_map<std::wstring, Option, text::HashNoCase, text::EqualNoCase> options_;
};

}  // namespace headless

// The environment of the program's own helpers: that which it was started with, without what a list has set since. Only
// programs that a list starts see what it sets.
#pragma once

#include <string>
#include <vector>

namespace os {

class OwnEnvironment {
 public:
  OwnEnvironment();
  // As a started program takes it; valid while the object lives.
  [[nodiscard]] char** entries() { return pointers_.data(); }
  // Is the variable there, and not empty?
  [[nodiscard]] bool holds(const std::string& name) const;

 private:
  std::vector<std::string> lines_;  // "NAME=value"
  std::vector<char*> pointers_;
};

}  // namespace os

// What stands inside the tasks of some actions, beside their filter.
#pragma once

#include <string_view>

namespace kelvane {

struct TaskChildren {
  enum class What { tasks, lastFilter, filters, options };
  std::wstring_view key;
  What what;
  std::string_view element;  // its name; options are read from elements of any
  bool isNeeded;
  std::string_view about;
  std::string_view example;
};
// Null for an action whose tasks hold nothing but their filter.
const TaskChildren* childrenOf(std::wstring_view key);

}  // namespace kelvane

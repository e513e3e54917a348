// The lines of tables, trees and long texts that a page shows: a window into them.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "headless/session.h"

namespace kelvane::view {

struct Window {
  std::string dialog, component;
  std::size_t from = 0, count = 0;  // lines; at most kMostLines are given
};
constexpr std::size_t kMostLines = 500;

// {"total": ..., "from": ..., "lines": [...]} of the table, tree, list or text area; null where there is no such
// component. `from` of the answer is less than asked for where the window would begin behind the end.
nlohmann::json linesOf(headless::Session& session, const Window& window);

}  // namespace kelvane::view

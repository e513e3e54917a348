#include "kelvane/ui/lines.h"

#include <unordered_set>

#include "headless/proui/ui.h"
#include "text/encoding.h"

namespace kelvane::view {
namespace {

using headless::Component;
using headless::Kind;
using nlohmann::json;

// Where a window of `count` lines can begin among `total`.
std::size_t beginOf(const Window& window, std::size_t count, std::size_t total) {
  return std::min(window.from, total > count ? total - count : 0);
}

json cellOf(const headless::Cell& cell) {
  json described = {{"text", text::toUtf8(cell.label)}};
  if (!cell.component) return described;
  const Component& component = cell.component->second;
  described["component"] = {{"name", cell.component->first}, {"kind", headless::kindName(component.kind)},
                            {"shown", component.shown},      {"enabled", component.enabled},
                            {"checked", component.checked},  {"text", text::toUtf8(component.text)},
                            {"image", component.image}};
  return described;
}

json tableLines(headless::Table& table, const Window& window, std::size_t count) {
  const std::vector<std::string> rows = table.rows(), marked = table.selected();
  const std::unordered_set<std::string> selected(marked.begin(), marked.end());
  const std::size_t begin = beginOf(window, count, rows.size());
  json lines = json::array();
  for (std::size_t i = begin; i < std::min(begin + count, rows.size()); ++i) {
    json cells = json::array();
    for (const headless::Column& column : table.columns()) cells.push_back(cellOf(*table.cell(rows[i], column.name)));
    lines.push_back({{"name", rows[i]}, {"selected", selected.contains(rows[i])}, {"cells", std::move(cells)}});
  }
  return {{"total", rows.size()}, {"from", begin}, {"lines", std::move(lines)}};
}

json nodeOf(const headless::Tree::Node& node, int level) {
  return {{"name", node.name},
          {"text", node.label},
          {"level", level},
          {"type", node.type->name},
          {"image", node.type->image},
          {"selected", node.selected},
          {"expanded", node.expanded},
          {"children", headless::Tree::hasChildren(node)}};
}

json treeLines(const headless::Tree& tree, const Window& window, std::size_t count) {
  std::size_t total = 0;
  int level = 0;
  for (const auto* node = tree.top(); node; node = headless::Tree::nextLine(*node, level)) ++total;
  const std::size_t begin = beginOf(window, count, total);
  json lines = json::array();
  std::size_t at = 0;
  level = 0;
  for (const auto* node = tree.top(); node && at < begin + count; ++at) {
    if (at >= begin) lines.push_back(nodeOf(*node, level));
    node = headless::Tree::nextLine(*node, level);
  }
  return {{"total", total}, {"from", begin}, {"lines", std::move(lines)}};
}

json textLines(const std::wstring& text, const Window& window, std::size_t count) {
  const auto total = static_cast<std::size_t>(std::count(text.begin(), text.end(), L'\n')) + 1;
  const std::size_t begin = beginOf(window, count, total);
  json lines = json::array();
  std::size_t at = 0, line = 0;
  for (; line < begin; ++line) at = text.find(L'\n', at) + 1;
  for (; line < std::min(begin + count, total); ++line) {
    const std::size_t end = std::min(text.find(L'\n', at), text.size());
    lines.push_back({{"text", text::toUtf8(std::wstring_view(text).substr(at, end - at))}});
    at = end + 1;
  }
  return {{"total", total}, {"from", begin}, {"lines", std::move(lines)}};
}

}  // namespace

json linesOf(headless::Session& session, const Window& window) {
  const headless::Dialog* dialog = session.ui().dialog(window.dialog);
  const Component* component = dialog ? dialog->look(window.component) : nullptr;
  if (!component) return nullptr;
  const std::size_t count = std::min(window.count, kMostLines);
  switch (component->kind) {
    case Kind::table:
      return tableLines(component->table(), window, count);
    case Kind::tree:
      return treeLines(component->tree(), window, count);
    case Kind::textarea:
      return textLines(component->text, window, count);
    default:
      return nullptr;
  }
}

}  // namespace kelvane::view

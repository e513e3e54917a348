#include "headless/proui/tree.h"

#include <algorithm>

#include "text/encoding.h"

namespace headless {

const Tree::Type* Tree::typeOf(std::string_view name) const {
  const auto found = std::find_if(types_.begin(), types_.end(), [&](const Type& known) { return known.name == name; });
  return found == types_.end() ? nullptr : &*found;
}

creo::ProError Tree::add(std::string_view parent, const std::string& name, const std::wstring& label,
                         const std::string& type) {
  Node* above = parent.empty() ? nullptr : find(parent);
  if (!above && !parent.empty()) return creo::ProNotFound;
  const Type* look = typeOf(type);
  if (name.empty() || !look) return creo::ProBadInputs;
  const auto [made, fresh] = nodes_.try_emplace(name);
  if (!fresh) return creo::ProExists;
  Node& node = made->second;
  node.label = text::toUtf8(label);
  node.type = look;
  node.name = made->first;
  node.parent = above;
  node.previous = lastOf(above);
  (node.previous ? node.previous->next : firstOf(above)) = &node;
  lastOf(above) = &node;
  return creo::ProNoError;
}

void Tree::unlink(Node& node) {
  (node.previous ? node.previous->next : firstOf(node.parent)) = node.next;
  (node.next ? node.next->previous : lastOf(node.parent)) = node.previous;
}

creo::ProError Tree::remove(std::string_view name) {
  Node* top = find(name);
  if (!top) return creo::ProNotFound;
  unlink(*top);
  std::vector<const Node*> doomed{top};
  for (std::size_t i = 0; i < doomed.size(); ++i) {
    for (const Node* child = doomed[i]->first; child; child = child->next) doomed.push_back(child);
  }
  for (const Node* node : doomed) nodes_.erase(nodes_.find(node->name));
  return creo::ProNoError;
}

Tree::Node* Tree::find(std::string_view name) {
  const auto found = nodes_.find(name);
  return found == nodes_.end() ? nullptr : &found->second;
}

const Tree::Node* Tree::after(const Node* node, int& depth) {
  if (node->first) {
    ++depth;
    return node->first;
  }
  while (node && !node->next) {
    node = node->parent;
    --depth;
  }
  return node ? node->next : nullptr;
}

void Tree::deselectAll() {
  for (auto& [name, node] : nodes_) node.selected = false;
}

std::vector<std::string> Tree::selected() const {
  std::vector<std::string> names;
  int depth = 0;
  for (const Node* node = first_; node; node = after(node, depth)) {
    if (node->selected) names.emplace_back(node->name);
  }
  return names;
}

std::wstring Tree::dump() const {
  std::wstring lines;
  int depth = 0;
  for (const Node* node = first_; node; node = after(node, depth)) {
    lines.append(static_cast<std::size_t>(2 * depth), L' ').append(text::fromUtf8(node->label));
    lines.append(L" (").append(text::fromUtf8(node->type->name)).append(L")\n");
  }
  return lines;
}

}  // namespace headless

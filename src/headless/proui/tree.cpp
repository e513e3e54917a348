#include "headless/proui/tree.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "text/encoding.h"

namespace headless {
namespace {

constexpr std::size_t kFewNodes = 64;

std::size_t hashOf(std::string_view name) { return std::hash<std::string_view>()(name); }

}  // namespace

const Tree::Type* Tree::typeOf(std::string_view name) const {
  const auto found = std::find_if(types_.begin(), types_.end(), [&](const Type& known) { return known.name == name; });
  return found == types_.end() ? nullptr : &*found;
}

creo::ProError Tree::add(std::string_view parent, std::string_view name, std::wstring_view label,
                         std::string_view type) {
  Node* above = parent.empty() ? nullptr : find(parent);
  if (!above && !parent.empty()) return creo::ProNotFound;
  const Type* look = typeOf(type);
  if (name.empty() || !look) return creo::ProBadInputs;
  makeRoom();
  const std::size_t hash = hashOf(name);
  if (slotOf(name, hash)) return creo::ProExists;
  Node& node = append(above, name, hash);
  node.label = kept(text::toUtf8(label));
  node.type = look;
  return creo::ProNoError;
}

creo::ProError Tree::remove(std::string_view name) {
  Node* const top = find(name);
  if (!top) return creo::ProNotFound;
  unlink(*top);
  for (Node* node = top; node; node = after(node, top)) forget(*node);
  // So that a tree which is emptied and filled again and again stays small, at a cost below that of the removals.
  if (removed_ > size_ + kFewNodes) compact();
  return creo::ProNoError;
}

Tree::Node* Tree::find(std::string_view name) { return slots_.empty() ? nullptr : slotOf(name, hashOf(name)); }

Tree::Node*& Tree::slotOf(std::string_view name, std::size_t hash) {
  const std::size_t mask = slots_.size() - 1;
  std::size_t at = hash & mask;
  while (slots_[at] && (slots_[at]->hash != hash || slots_[at]->name != name)) at = (at + 1) & mask;
  return slots_[at];
}

// Takes the node out of slots_. Those behind it that it kept from their places move up.
void Tree::forget(Node& node) {
  const std::size_t mask = slots_.size() - 1;
  auto hole = static_cast<std::size_t>(&slotOf(node.name, node.hash) - slots_.data());
  for (std::size_t at = (hole + 1) & mask; slots_[at]; at = (at + 1) & mask) {
    const std::size_t steps = (at - slots_[at]->hash) & mask;  // from its own place
    if (steps < ((at - hole) & mask)) continue;
    slots_[hole] = slots_[at];
    hole = at;
  }
  slots_[hole] = nullptr;
  --size_;
  ++removed_;
}

Tree::Node& Tree::append(Node* parent, std::string_view name, std::size_t hash) {
  Node& node = *memory_.make<Node>();
  node.name = kept(name);
  node.hash = hash;
  node.parent = parent;
  node.previous = lastOf(parent);
  (node.previous ? node.previous->next : firstOf(parent)) = &node;
  lastOf(parent) = &node;
  slotOf(node.name, hash) = &node;
  ++size_;
  return node;
}

void Tree::unlink(Node& node) {
  (node.previous ? node.previous->next : firstOf(node.parent)) = node.next;
  (node.next ? node.next->previous : lastOf(node.parent)) = node.previous;
}

// Room in slots_ for one more.
void Tree::makeRoom() {
  if (2 * (size_ + 1) <= slots_.size()) return;
  std::vector<Node*> old(std::max<std::size_t>(kFewNodes, 2 * slots_.size()));
  std::swap(old, slots_);
  for (Node* node : old)
    if (node) slotOf(node->name, node->hash) = node;
}

// Copies what is left into fresh memory.
void Tree::compact() {
  os::Arena old;
  std::swap(old, memory_);
  std::fill(slots_.begin(), slots_.end(), nullptr);
  Node* const first = first_;
  first_ = last_ = nullptr;
  size_ = removed_ = 0;
  for (Node* node = first; node; node = after(node, nullptr)) {
    // A copied node's `previous`, of no more use, leads to its copy.
    Node& copy = append(node->parent ? node->parent->previous : nullptr, node->name, node->hash);
    copy.label = kept(node->label);
    copy.type = node->type;
    copy.expanded = node->expanded;
    copy.selected = node->selected;
    node->previous = &copy;
  }
}

std::string_view Tree::kept(std::string_view text) {
  char* const letters = memory_.letters<char>(text.size());
  text.copy(letters, text.size());
  return {letters, text.size()};
}

Tree::Node* Tree::after(const Node* node, const Node* top) {
  if (node->first) return node->first;
  while (node != top && !node->next) {
    node = node->parent;
    if (!node) return nullptr;
  }
  return node == top ? nullptr : node->next;
}

const Tree::Node* Tree::nextLine(const Node& node, int& level) {
  if (node.expanded && node.first) {
    ++level;
    return node.first;
  }
  const Node* at = &node;
  for (; at && !at->next; at = at->parent) --level;
  return at ? at->next : nullptr;
}

void Tree::deselectAll() {
  for (Node* node = first_; node; node = after(node, nullptr)) node->selected = false;
}

std::vector<std::string> Tree::selected() const {
  std::vector<std::string> names;
  for (const Node* node = first_; node; node = after(node, nullptr)) {
    if (node->selected) names.emplace_back(node->name);
  }
  return names;
}

std::wstring Tree::dump() const {
  std::wstring lines;
  std::size_t depth = 0;
  for (const Node* node = first_; node;) {
    lines.append(2 * depth, L' ').append(text::fromUtf8(node->label));
    lines.append(L" (").append(text::fromUtf8(node->type->name)).append(L")\n");
    const Node* const next = after(node, nullptr);
    if (next && next->parent == node) {
      ++depth;
    } else {
      for (; next && node->parent != next->parent; node = node->parent) --depth;
    }
    node = next;
  }
  return lines;
}

}  // namespace headless

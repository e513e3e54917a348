// A tree of a dialog. Nodes are found by name and know their neighbours, so that adding and deleting cost the same
// whatever the tree's size; nothing recurses, however deep it is.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "creo/ProTypes.h"
#include "os/arena.h"

namespace headless {

class Tree {
 public:
  // A look that nodes may have.
  struct Type {
    std::string name;
    std::string image;
  };
  // The log of a long run has hundreds of thousands of nodes: each keeps its texts in UTF-8 and refers to its type, and
  // all lie together in the tree's own memory. A node is valid until the tree's next change.
  struct Node {
    std::string_view name, label;
    const Type* type = nullptr;
    bool expanded = false;
    bool selected = false;

   private:
    friend class Tree;
    Node *parent = nullptr, *first = nullptr, *last = nullptr, *previous = nullptr, *next = nullptr;
    std::size_t hash = 0;  // of the name
  };

  explicit Tree(std::vector<Type> types) : types_(std::move(types)) {}
  Tree(const Tree&) = delete;  // nodes point at each other
  Tree& operator=(const Tree&) = delete;

  [[nodiscard]] const std::vector<Type>& types() const { return types_; }
  // Null where there is none.
  [[nodiscard]] const Type* typeOf(std::string_view name) const;
  // Behind its brothers; parent "" adds a root. ProNotFound: no such parent; ProExists; ProBadInputs: no such type.
  creo::ProError add(std::string_view parent, std::string_view name, std::wstring_view label, std::string_view type);
  // With all below it.
  creo::ProError remove(std::string_view name);
  // Null where there is none.
  Node* find(std::string_view name);
  [[nodiscard]] std::size_t size() const { return size_; }
  // Empty for a root.
  static std::string_view parentOf(const Node& node) { return node.parent ? node.parent->name : std::string_view(); }

  void deselectAll();
  // From the top.
  [[nodiscard]] std::vector<std::string> selected() const;
  // A line a node, from the top: two blanks a level, the label, a blank and the type in brackets.
  [[nodiscard]] std::wstring dump() const;

  // What a person sees who looks from the top, a line a node: the first root, and the node on the next line, which of
  // an expanded node is its first child. Null behind the last. level: of the node, and then of the next one.
  [[nodiscard]] const Node* top() const { return first_; }
  static const Node* nextLine(const Node& node, int& level);
  [[nodiscard]] static bool hasChildren(const Node& node) { return node.first != nullptr; }

  bool redraws = true;

 private:
  // The node that a walk over `top` and everything below it, or over the whole tree, reaches after this one. Null after
  // the last.
  static Node* after(const Node* node, const Node* top);
  // The place of a name in slots_: its node's, or the one where it would be entered.
  Node*& slotOf(std::string_view name, std::size_t hash);
  void forget(Node& node);
  // The last child of parent; its name isn't in slots_ yet.
  Node& append(Node* parent, std::string_view name, std::size_t hash);
  void unlink(Node& node);
  void makeRoom();
  void compact();
  std::string_view kept(std::string_view text);
  Node*& firstOf(Node* parent) { return parent ? parent->first : first_; }
  Node*& lastOf(Node* parent) { return parent ? parent->last : last_; }

  std::vector<Type> types_;
  os::Arena memory_;          // nodes and texts; what was removed lies there until the next compaction
  std::vector<Node*> slots_;  // by hash, then the next free one; a power of two, at most half of it taken
  std::size_t size_ = 0;      // nodes
  std::size_t removed_ = 0;   // since the last compaction
  Node *first_ = nullptr, *last_ = nullptr;  // of the roots
};

}  // namespace headless

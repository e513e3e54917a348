// A tree of a dialog. Nodes are found by name and know their neighbours, so that adding and deleting cost the same
// whatever the tree's size; nothing recurses, however deep it is.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "creo/ProTypes.h"
#include "headless/proui/names.h"

namespace headless {

class Tree {
 public:
  // A look that nodes may have.
  struct Type {
    std::string name;
    std::string image;
  };
  // The log of a long run has hundreds of thousands of nodes: each keeps its label in UTF-8 and refers to its type.
  struct Node {
    std::string label;
    const Type* type = nullptr;
    bool expanded = false;
    bool selected = false;

   private:
    friend class Tree;
    std::string_view name;
    Node *parent = nullptr, *first = nullptr, *last = nullptr, *previous = nullptr, *next = nullptr;
  };

  explicit Tree(std::vector<Type> types) : types_(std::move(types)) {}
  Tree(const Tree&) = delete;  // nodes point at each other
  Tree& operator=(const Tree&) = delete;

  [[nodiscard]] const std::vector<Type>& types() const { return types_; }
  // Null where there is none.
  [[nodiscard]] const Type* typeOf(std::string_view name) const;
  // Behind its brothers; parent "" adds a root. ProNotFound: no such parent; ProExists; ProBadInputs: no such type.
  creo::ProError add(std::string_view parent, const std::string& name, const std::wstring& label,
                     const std::string& type);
  // With all below it.
  creo::ProError remove(std::string_view name);
  // Null where there is none.
  Node* find(std::string_view name);
  [[nodiscard]] std::size_t size() const { return nodes_.size(); }

  void deselectAll();
  // From the top.
  [[nodiscard]] std::vector<std::string> selected() const;
  // A line a node, from the top: two blanks a level, the label, a blank and the type in brackets.
  [[nodiscard]] std::wstring dump() const;

  bool redraws = true;

 private:
  // The node that a walk over everything reaches after this one; depth follows. Null after the last.
  static const Node* after(const Node* node, int& depth);
  void unlink(Node& node);
  Node*& firstOf(Node* parent) { return parent ? parent->first : first_; }
  Node*& lastOf(Node* parent) { return parent ? parent->last : last_; }

  std::vector<Type> types_;
  NameMap<Node> nodes_;
  Node *first_ = nullptr, *last_ = nullptr;  // of the roots
};

}  // namespace headless

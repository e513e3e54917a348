#include "creo/ProUITree.h"

#include "headless/creo/proui_calls.h"
#include "text/encoding.h"

namespace creo {

using headless::ask;
using headless::change;
using headless::Component;
using headless::Kind;
using headless::Tree;

namespace {

// Applies `apply` to a node; ProNotFound where it isn't there.
template <class Apply>
ProError changeNode(std::string_view operation, const std::string& dialog, const std::string& tree,
                    const std::string& node, Apply&& apply) {
  return change(operation, dialog, tree, Kind::tree, [&](Component& c) {
    Tree::Node* found = c.tree().find(node);
    if (found) apply(*found);
    return found ? ProNoError : ProNotFound;
  });
}

template <class T, class Read>
Got<T> askNode(std::string_view operation, const std::string& dialog, const std::string& tree, const std::string& node,
               Read&& read) {
  return ask<T>(operation, dialog, tree, Kind::tree, [&](const Component& c) -> Got<T> {
    const Tree::Node* found = c.tree().find(node);
    if (!found) return ProNotFound;
    return read(*found);
  });
}

}  // namespace

ProError ProUITreeNodeAdd(const std::string& dialog, const std::string& tree, const std::string& parent,
                          const std::string& node, const std::wstring& label, const std::string& type) {
  return change("ProUITreeNodeAdd", dialog, tree, Kind::tree,
                [&](Component& c) { return c.tree().add(parent, node, label, type); });
}

ProError ProUITreeNodeDelete(const std::string& dialog, const std::string& tree, const std::string& node) {
  return change("ProUITreeNodeDelete", dialog, tree, Kind::tree, [&](Component& c) { return c.tree().remove(node); });
}

Got<std::string> ProUITreeNodeTypeGet(const std::string& dialog, const std::string& tree, const std::string& node) {
  return askNode<std::string>("ProUITreeNodeTypeGet", dialog, tree, node,
                              [](const Tree::Node& n) { return n.type->name; });
}

ProError ProUITreeNodeTypeSet(const std::string& dialog, const std::string& tree, const std::string& node,
                              const std::string& type) {
  return change("ProUITreeNodeTypeSet", dialog, tree, Kind::tree, [&](Component& c) {
    Tree::Node* found = c.tree().find(node);
    if (!found) return ProNotFound;
    const Tree::Type* look = c.tree().typeOf(type);
    if (!look) return ProBadInputs;
    found->type = look;
    return ProNoError;
  });
}

ProError ProUITreeNodeExpand(const std::string& dialog, const std::string& tree, const std::string& node) {
  return changeNode("ProUITreeNodeExpand", dialog, tree, node, [](Tree::Node& n) { n.expanded = true; });
}

ProError ProUITreeNodeCollapse(const std::string& dialog, const std::string& tree, const std::string& node) {
  return changeNode("ProUITreeNodeCollapse", dialog, tree, node, [](Tree::Node& n) { n.expanded = false; });
}

Got<bool> ProUITreeNodeIsExpanded(const std::string& dialog, const std::string& tree, const std::string& node) {
  return askNode<bool>("ProUITreeNodeIsExpanded", dialog, tree, node, [](const Tree::Node& n) { return n.expanded; });
}

Got<std::string> ProUITreeNodeParentGet(const std::string& dialog, const std::string& tree, const std::string& node) {
  return askNode<std::string>("ProUITreeNodeParentGet", dialog, tree, node,
                              [](const Tree::Node& n) { return std::string(Tree::parentOf(n)); });
}

Got<std::wstring> ProUITreeNodeLabelGet(const std::string& dialog, const std::string& tree, const std::string& node) {
  return askNode<std::wstring>("ProUITreeNodeLabelGet", dialog, tree, node,
                               [](const Tree::Node& n) { return text::fromUtf8(n.label); });
}

Got<std::vector<std::string>> ProUITreeSelectednamesGet(const std::string& dialog, const std::string& tree) {
  return ask<std::vector<std::string>>("ProUITreeSelectednamesGet", dialog, tree, Kind::tree,
                                       [](const Component& c) { return c.tree().selected(); });
}

ProError ProUITreeAllnodesDeselect(const std::string& dialog, const std::string& tree) {
  return change("ProUITreeAllnodesDeselect", dialog, tree, Kind::tree, [](Component& c) { c.tree().deselectAll(); });
}

ProError ProUITreeShow(const std::string& dialog, const std::string& tree) {
  return change("ProUITreeShow", dialog, tree, Kind::tree, [](Component& c) { c.shown = true; });
}

ProError ProUITreeHide(const std::string& dialog, const std::string& tree) {
  return change("ProUITreeHide", dialog, tree, Kind::tree, [](Component& c) { c.shown = false; });
}

ProError ProUITreeTreeredrawSet(const std::string& dialog, const std::string& tree, bool redraw) {
  return change("ProUITreeTreeredrawSet", dialog, tree, Kind::tree, [&](Component& c) { c.tree().redraws = redraw; });
}

ProError ProUITreeActionSet(const std::string& dialog, const std::string& tree, ProUITreeEvent event,
                            ProUIAction action) {
  return change("ProUITreeActionSet", dialog, tree, Kind::tree, [&](Component& c) {
    c.treeContent().actions[static_cast<std::size_t>(event)] = headless::shared(std::move(action));
  });
}

Got<std::string> ProUITreeTreeexpcolnodeGet(const std::string& dialog, const std::string& tree) {
  return ask<std::string>("ProUITreeTreeexpcolnodeGet", dialog, tree, Kind::tree,
                          [](const Component& c) -> Got<std::string> {
                            const std::string& touched = c.treeContent().touched;
                            if (!c.tree().find(touched)) return ProNotFound;
                            return touched;
                          });
}

}  // namespace creo

// Tree components.
#pragma once

#include "creo/ProUI.h"

namespace creo {

// parent "" adds the root; a tree has one. type names a look of the resource. ProExists: a node of that name is there.
ProError ProUITreeNodeAdd(const std::string& dialog, const std::string& tree, const std::string& parent,
                          const std::string& node, const std::wstring& label, const std::string& type);
// With all below it.
ProError ProUITreeNodeDelete(const std::string& dialog, const std::string& tree, const std::string& node);
Got<std::string> ProUITreeNodeTypeGet(const std::string& dialog, const std::string& tree, const std::string& node);
ProError ProUITreeNodeTypeSet(const std::string& dialog, const std::string& tree, const std::string& node,
                              const std::string& type);
// Shows what is right below it.
ProError ProUITreeNodeExpand(const std::string& dialog, const std::string& tree, const std::string& node);
ProError ProUITreeNodeCollapse(const std::string& dialog, const std::string& tree, const std::string& node);
Got<bool> ProUITreeNodeIsExpanded(const std::string& dialog, const std::string& tree, const std::string& node);
// Empty for a root.
Got<std::string> ProUITreeNodeParentGet(const std::string& dialog, const std::string& tree, const std::string& node);
Got<std::wstring> ProUITreeNodeLabelGet(const std::string& dialog, const std::string& tree, const std::string& node);
Got<std::vector<std::string>> ProUITreeSelectednamesGet(const std::string& dialog, const std::string& tree);
ProError ProUITreeAllnodesDeselect(const std::string& dialog, const std::string& tree);
ProError ProUITreeShow(const std::string& dialog, const std::string& tree);
ProError ProUITreeHide(const std::string& dialog, const std::string& tree);
// Whether the tree may be drawn anew: redraws at once, or holds redrawing back.
ProError ProUITreeTreeredrawSet(const std::string& dialog, const std::string& tree, bool redraw);

// A person's click on a node's mark opens or closes nothing by itself: the action of expand or collapse does.
enum class ProUITreeEvent { expand, collapse, select, activate };
ProError ProUITreeActionSet(const std::string& dialog, const std::string& tree, ProUITreeEvent event,
                            ProUIAction action);
// In the action of expand or collapse: the node whose mark was touched. ProNotFound: none was yet, or it has gone.
Got<std::string> ProUITreeTreeexpcolnodeGet(const std::string& dialog, const std::string& tree);

}  // namespace creo

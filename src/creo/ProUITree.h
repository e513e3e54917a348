// Tree components.
#pragma once

#include "creo/ProUI.h"

namespace creo {

// parent "" adds a root. type names a look of the resource. ProExists: a node of that name is there.
ProError ProUITreeNodeAdd(const std::string& dialog, const std::string& tree, const std::string& parent,
                          const std::string& node, const std::wstring& label, const std::string& type);
// With all below it.
ProError ProUITreeNodeDelete(const std::string& dialog, const std::string& tree, const std::string& node);
Got<std::string> ProUITreeNodeTypeGet(const std::string& dialog, const std::string& tree, const std::string& node);
ProError ProUITreeNodeTypeSet(const std::string& dialog, const std::string& tree, const std::string& node,
                              const std::string& type);
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
// Redraws at once, or holds redrawing back.
ProError ProUITreeTreeredrawSet(const std::string& dialog, const std::string& tree, bool redraw);

enum class ProUITreeEvent { expand, collapse, select, activate };
ProError ProUITreeActionSet(const std::string& dialog, const std::string& tree, ProUITreeEvent event,
                            ProUIAction action);

}  // namespace creo

#include "ui/log_tree.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

#include "core/log.h"
#include "core/messages.h"
#include "core/state.h"
#include "creo/ProMdl.h"
#include "creo/ProUITree.h"
#include "creo/ProWindow.h"
#include "run/row_name.h"
#include "text/encoding.h"
#include "text/letters.h"
#include "ui/highlight.h"

namespace ui {
namespace {

using namespace core;
using namespace creo;

constexpr const char* kTree = "kvaneLogTT";
constexpr const char* kRoot = "kvaneRootNode";
constexpr std::size_t kNameField = 66;

const std::string& dialog() { return pluginState().dialogName; }

void flip(const std::string& node) {
  const auto expanded = ProUITreeNodeIsExpanded(dialog(), kTree, node);
  if (!expanded) return;
  if (expanded.value)
    ProUITreeNodeCollapse(dialog(), kTree, node);
  else
    ProUITreeNodeExpand(dialog(), kTree, node);
}

// Selecting and activating leave the first node as it is, which is flipped twice; others that are selected with it
// flip.
void flipSelected() {
  const auto selected = ProUITreeSelectednamesGet(dialog(), kTree);
  if (!selected || selected.value.empty()) return;
  for (const std::string& node : selected.value) flip(node);
  flip(selected.value.front());
  ProUITreeTreeredrawSet(dialog(), kTree, true);
}

// A touch of a node's mark opens or closes nothing by itself. What is selected together with the node follows it.
void openOrClose(ProError (*set)(const std::string&, const std::string&, const std::string&)) {
  const auto touched = ProUITreeTreeexpcolnodeGet(dialog(), kTree);
  if (!touched) return creoLog(L"<KVD> main - the node of kvaneLogTT that was touched can't be read");
  set(dialog(), kTree, touched.value);
  const auto selected = ProUITreeSelectednamesGet(dialog(), kTree).value;
  if (std::find(selected.begin(), selected.end(), touched.value) != selected.end())
    for (const std::string& node : selected) set(dialog(), kTree, node);
  ProUITreeTreeredrawSet(dialog(), kTree, true);
}

// "BRACKET.PRT" of the line with which a model's part of the log begins.
std::optional<std::string> rowOfLabel(std::wstring_view label) {
  const std::wstring_view form = msgText(Message::workNowOn);  // "work now on %s"
  const std::wstring_view before = form.substr(0, form.find(L"%s"));
  if (!label.starts_with(before)) return std::nullopt;
  label.remove_prefix(before.size());
  const std::size_t dot = label.rfind(L'.');
  if (dot == label.npos || dot >= kNameField) return std::nullopt;
  const std::wstring_view extension = label.substr(dot + 1);
  for (const std::wstring_view known : {L"PRT", L"ASM", L"DRW"})
    if (text::equalNoCase(extension.substr(0, known.size()), known)) return text::toUtf8(label);
  return std::nullopt;
}

// Walks up from the selected node.
std::optional<std::string> rowOfSelected() {
  const auto selected = ProUITreeSelectednamesGet(dialog(), kTree);
  if (!selected || selected.value.empty()) return std::nullopt;
  std::string node = selected.value.front();
  while (!node.empty() && node != kRoot) {
    if (auto row = rowOfLabel(ProUITreeNodeLabelGet(dialog(), kTree, node).value)) return row;
    node = ProUITreeNodeParentGet(dialog(), kTree, node).value;
  }
  return std::nullopt;
}

}  // namespace

void prepareLogTree() {
  ProUITreeNodeAdd(dialog(), kTree, "", kRoot, L"Log", "kvaneParent");
  ProUITreeNodeExpand(dialog(), kTree, kRoot);
  ProUITreeAllnodesDeselect(dialog(), kTree);
  ProUITreeTreeredrawSet(dialog(), kTree, true);
  const std::pair<ProUITreeEvent, ProUIAction> actions[] = {
      {ProUITreeEvent::expand, [](const std::string&, const std::string&) { openOrClose(&ProUITreeNodeExpand); }},
      {ProUITreeEvent::collapse, [](const std::string&, const std::string&) { openOrClose(&ProUITreeNodeCollapse); }},
      {ProUITreeEvent::select, [](const std::string&, const std::string&) { flipSelected(); }},
      {ProUITreeEvent::activate, [](const std::string&, const std::string&) { flipSelected(); }},
  };
  for (const auto& [event, action] : actions)
    if (ProUITreeActionSet(dialog(), kTree, event, action) != ProNoError)
      creoLog(L"<KVD> main - Error at set kvaneLogTT");
}

void openNodesModel() {
  const auto row = rowOfSelected();
  if (!row) return;
  const auto model = ProMdlRetrieve(run::rowModelName(*row), run::rowType(*row));
  if (!model) return creoLog(L"Can't retrieve model");
  const auto window = ProMdlWindowGet(model.value);
  const auto shown = window ? window : ProObjectwindowCreate(run::rowModelName(*row), run::rowType(*row));
  if (shown) ProWindowActivate(shown.value);
  ProMdlDisplay(model.value);
}

void highlightNodesModel() {
  if (const auto row = rowOfSelected()) highlightModels({*row});
}

}  // namespace ui

#include "core/log_view.h"

#include <array>
#include <string>

#include "core/creo_log.h"
#include "core/log_levels.h"
#include "core/state.h"
#include "creo/ProUI.h"
#include "creo/ProUITree.h"
#include "os/text_files.h"
#include "text/format.h"
#include "text/numbers.h"

namespace core {
namespace {

using namespace creo;

constexpr const char* kTree = "kvaneLogTT";
constexpr const char* kArea = "kvaneLogTA";
constexpr const char* kRootNode = "kvaneRootNode";
constexpr int kDepths = 10;

int& nodeCount() {
  static int count = 0;
  return count;
}

std::string nodeName(int number) { return "kvanen" + std::to_string(number); }
const std::string& dialog() { return pluginState().dialogName; }

bool isTree() { return pluginState().logType == 1; }

// The filter of lines that go to the text area as they come.
bool areaTakes(int level) {
  const int filter = pluginState().loglevel;
  return filter == kDebug || (filter == kError && level == kError) ||
         (filter == kWarning && (level == kWarning || level == kError)) || level == kTitle ||
         (filter == kNormal && level != kDebug);
}

// The filter of a file that is shown, as a tree or as text.
bool viewTakes(int level) {
  const PluginState& state = pluginState();
  const int filter = state.loglevel;
  return filter == kDebug || (filter == kError && level == kError) ||
         (filter == kWarning && (level == kWarning || level == kError)) || level == kTitle ||
         (filter == kNormal && level != kDebug && !(state.showNoWarnings == 1 && level == kWarning));
}

void clearTree() {
  for (int i = 0; i < nodeCount(); ++i) ProUITreeNodeDelete(dialog(), kTree, nodeName(i));
  nodeCount() = 0;
}

void setArea(const std::wstring& text) {
  if (ProUITextareaValueSet(dialog(), kArea, text) != ProNoError)
    creoLog(L"<KVD> stdFunctions - Failure while ProUITextareaValueSet");
}

// Where the log is text nobody sees the tree, whatever is done to it.
void showTree() {
  if (isTree()) ProUITreeShow(dialog(), kTree);
}

// Builds the tree from the lines: indented lines hang below the last one that stands further left, warnings and errors
// below the last line of all.
class TreeBuilder {
 public:
  TreeBuilder() { at(0) = {kRootNode, ProUITreeNodeTypeGet(dialog(), kTree, kRootNode).value}; }

  void add(std::wstring_view label, int level) {
    const std::size_t blanks = std::min(label.find_first_not_of(L' '), label.size());
    label.remove_prefix(blanks);
    const std::string node = nodeName(nodeCount());
    if (level == kNormal || level == kTitle) {
      int depth = std::min((static_cast<int>(std::min<std::size_t>(blanks, 100)) + 1) / 2 - 1, kDepths - 1);
      while (depth > 0 && at(depth).node.empty()) --depth;
      if (depth < 0) depth = 0;
      const char* const type = level == kNormal ? "kvaneChildChk" : "kvaneChild";
      insert(at(depth), node, label, type);
      becomeParent(at(depth));
      for (int i = depth + 1; i < kDepths; ++i) at(i) = {};
      if (depth + 1 < kDepths) at(depth + 1) = {node, type};
      last_ = depth;
    } else {
      const int depth = last_ + 1 < kDepths && !at(last_ + 1).node.empty() ? last_ + 1 : last_;
      insert(at(depth), node, label,
             level == kError   ? "kvaneChildErr"
             : level == kDebug ? "kvaneChild"
                               : "kvaneChildWar");
      markParents(depth, level);
    }
    ++nodeCount();
  }

 private:
  // A node that others may hang below, with its present type, which nobody else changes meanwhile.
  struct Parent {
    std::string node;
    std::string type;
  };

  Parent& at(int depth) { return parents_[static_cast<std::size_t>(depth)]; }

  void insert(const Parent& parent, const std::string& node, std::wstring_view label, const char* type) {
    label_ = label;
    ProUITreeNodeAdd(dialog(), kTree, parent.node, node, label_, type);
  }

  static void setType(Parent& parent, const char* type) {
    if (ProUITreeNodeTypeSet(dialog(), kTree, parent.node, type) == ProNoError) parent.type = type;
  }

  static void becomeParent(Parent& parent) {
    if (parent.type == "kvaneChild")
      setType(parent, "kvaneParent");
    else if (parent.type == "kvaneChildChk")
      setType(parent, "kvaneParentChk");
  }

  void markParents(int depth, int level) {
    if (level == kDebug) {
      becomeParent(at(depth));
    } else if (level == kFilterNote && pluginState().filterWarningOnParent != 1) {
      if (at(depth).type == "kvaneChildChk") setType(at(depth), "kvaneParentChk");
    } else {
      for (int i = 0; i <= depth; ++i) markParent(at(i), level == kError);
    }
  }

  // Errors outrank warnings, warnings outrank the rest.
  static void markParent(Parent& parent, bool error) {
    const std::string& type = parent.type;
    const bool plain =
        type == "kvaneParent" || type == "kvaneChild" || type == "kvaneChildChk" || type == "kvaneParentChk";
    if (error && (plain || type == "kvaneParentWar"))
      setType(parent, "kvaneParentErr");
    else if (!error && plain)
      setType(parent, "kvaneParentWar");
  }

  std::array<Parent, kDepths> parents_;
  std::wstring label_;  // its memory is used again
  int last_ = 0;
};

// Calls take(line, level) for the file's lines that the view takes, one at a time: the log of a long run has hundreds
// of thousands.
void eachShownLine(creo::FunctionRef<void(std::wstring_view, int)> take) {
  os::readLines(pluginState().logFile, [&take](std::wstring_view line) {
    const text::ParsedInt level = text::readInt(line);
    if (level.fault == text::NumberFault::outOfRange) creoLog(L"<KVD> LOG ERANGE FEHLER");
    if (viewTakes(level.value)) take(line, level.value);
  });
}

// Without the digit of the level.
void renderTree() {
  TreeBuilder tree;
  eachShownLine([&tree](std::wstring_view line, int level) {
    tree.add(line.substr(std::min<std::size_t>(1, line.size())), level);
  });
}

// The lines as they stand in the file.
void renderText() {
  std::wstring whole;
  eachShownLine([&whole](std::wstring_view line, int /*level*/) { whole.append(line) += L'\n'; });
  setArea(whole);
}

}  // namespace

void logToTextArea(std::wstring_view text, int level) {
  if (!areaTakes(level)) return;
  std::wstring value = ProUITextareaValueGet(dialog(), kArea).value;
  ProUITextareaValueSet(dialog(), kArea, value.append(text));
}

void logForgetView() { nodeCount() = 0; }

void renderLogView() {
  const PluginState& state = pluginState();
  if (state.logToTextArea != 1 && state.triggerType == 0) {
    ProUITreeHide(dialog(), kTree);
    clearTree();
    if (isTree())
      renderTree();
    else
      renderText();
  }
  showTree();
}

void clearLogArea() { setArea(L""); }

void emptyLogTree() {
  ProUITreeHide(dialog(), kTree);
  clearTree();
  showTree();
}

}  // namespace core

#include "kelvane/package_check.h"

#include "core/xml.h"
#include "documents/action_list.h"
#include "documents/filter.h"
#include "documents/predicates.h"
#include "engine/dispatch.h"
#include "kelvane/nearest.h"
#include "text/encoding.h"

namespace kelvane {
namespace {

using core::XmlNode;

constexpr const char* kOrdinaryVersion = "3";
const std::map<std::string, std::string> kOtherVersions = {
    {"reportUniversal", "4"}, {"editSimpRep", "4"}, {"exportStep", "4"}, {"setAppearanceFromRGB", "5"}};

std::string attribute(const XmlNode& node, std::wstring_view name) {
  const core::XmlAttr* found = core::attrFind(node.attributes, name);
  return found ? text::toUtf8(found->value) : std::string();
}
bool has(const XmlNode& node, std::wstring_view name) { return core::attrFind(node.attributes, name) != nullptr; }

std::vector<std::string> actionKeys() {
  std::vector<std::string> keys;
  for (const engine::ActionRow& row : engine::actionTable()) keys.push_back(text::toUtf8(row.key));
  return keys;
}
std::vector<std::string> predicateKeys() {
  std::vector<std::string> keys;
  for (const documents::Predicate& row : documents::predicateTable()) keys.push_back(text::toUtf8(row.key));
  return keys;
}

// One document of the package.
class Document {
 public:
  Document(std::string member, std::string_view bytes, std::vector<Finding>& findings)
      : member_(std::move(member)), findings_(findings), loaded_(core::xmlParse(text::fromTextFile(bytes))) {
    if (!loaded_) add(0, "it can't be read: " + text::toUtf8(loaded_.fault));
    if (loaded_ && core::xmlChildCount(loaded_.document->root()) == 0) add(0, "it holds no element");
  }

  void checkList() {
    if (!loaded_) return;
    const documents::ActionList list = documents::actionList(*loaded_.document);
    for (const XmlNode* section : {list.head, list.body, list.foot}) {
      if (section) core::xmlEachChild(*section, [this](const XmlNode& task) { checkTask(task); });
    }
    if (list.filter) checkFilter(*list.filter);
  }
  void checkFilterFile() {
    if (!loaded_) return;
    const XmlNode& root = *loaded_.document->root();
    checkFilter(root);
    core::xmlEachChild(root, [this](const XmlNode& element) {
      if (element.name == L"filter" || element.name == L"root") return;
      add(element,
          "element '" + text::toUtf8(element.name) + "' is never read; a filter's element is 'root' or 'filter'");
    });
  }

 private:
  void add(std::size_t line, std::string text) { findings_.push_back({member_, line, std::move(text)}); }
  void add(const XmlNode& at, std::string text) { add(loaded_.document->lineOf(at), std::move(text)); }

  void checkTask(const XmlNode& task) {
    // Switched off by its author: nothing of it is meant to run.
    if (has(task, L"deak") && attribute(task, L"deak") != "false") return;
    const std::string type = attribute(task, L"type");
    if (!has(task, L"type")) return add(task, "an action without 'type'");
    const engine::ActionRow* row = engine::findAction(text::fromUtf8(type));
    if (row) {
      checkAction(task, type, *row);
    } else if (documents::isPredicate(text::fromUtf8(type))) {
      checkPredicate(task, type);
    } else {
      add(task, "unknown action '" + type + "'" + didYouMean(type, actionKeys()));
    }
    if (attribute(task, L"forEF") == "true") checkFilter(task);
    checkSubtasks(task, type);
  }

  void checkAction(const XmlNode& task, const std::string& type, const engine::ActionRow& row) {
    if (type == "openXLSReport")
      return add(task, "action 'openXLSReport' was removed; 'openCSVReport' takes its place");
    if (type == "editModelParameterFromPrueftrail") return add(task, "action '" + type + "' was removed");
    if (row.group == engine::Group::knownEmpty) return add(task, "action '" + type + "' does nothing");
    if (!row.function) return add(task, "action '" + type + "' isn't carried out by this version");
    const auto other = kOtherVersions.find(type);
    const std::string wanted = other == kOtherVersions.end() ? kOrdinaryVersion : other->second;
    const std::string version = attribute(task, L"version");
    if (version != wanted) {
      add(task, "action '" + type + "' has version '" + version + "'; this version carries out '" + wanted + "'");
    }
    if (row.group == engine::Group::modelNeeded && !isForAnyModel(task)) {
      add(task, "action '" + type + "' is for no model: forPRT, forASM and forDRW are all missing or 'false'");
    }
  }

  static bool isForAnyModel(const XmlNode& task) {
    for (const wchar_t* name : {L"forPRT", L"forASM", L"forDRW"}) {
      if (has(task, name) && attribute(task, name) != "false") return true;
    }
    return false;
  }

  void checkSubtasks(const XmlNode& task, const std::string& type) {
    if (type != "groupActions") return;
    bool found = false;  // only the first element of that name runs
    core::xmlEachChild(task, [&](const XmlNode& child) {
      if (found || child.name != L"subtasks") return;
      found = true;
      core::xmlEachChild(child, [&](const XmlNode& inner) {
        if (inner.name == L"task") return checkTask(inner);
        add(inner, "element '" + text::toUtf8(inner.name) + "' among subtasks is never run; it must be 'task'");
      });
    });
    if (!found) add(task, "a group without 'subtasks'");
  }

  // block: holds groups of items.
  void checkFilter(const XmlNode& block) {
    core::xmlEachChild(block, [this](const XmlNode& group) {
      if (group.name != L"filter" && group.name != L"root") return;
      core::xmlEachChild(group, [this](const XmlNode& item) {
        const std::string type = attribute(item, L"type");
        if (!has(item, L"type")) return add(item, "a filter item without 'type'");
        checkPredicate(item, type);
      });
    });
  }

  void checkPredicate(const XmlNode& item, const std::string& type) {
    const std::wstring key = text::fromUtf8(type);
    if (!documents::isPredicate(key)) {
      add(item, "unknown filter '" + type + "'" + didYouMean(type, predicateKeys()));
    } else if (!documents::predicateIsCarriedOut(key)) {
      add(item, "filter '" + type + "' isn't carried out by this version");
    }
  }

  std::string member_;
  std::vector<Finding>& findings_;
  core::XmlLoaded loaded_;
};

void checkMembers(const PackageSource& package, std::vector<Finding>& findings) {
  if (!package.has(kPackageIndex)) findings.push_back({kPackageIndex, 0, "it is missing; it holds the description"});
  for (const auto& [mark, content] : folderMarks()) {
    if (!package.has(mark)) findings.push_back({mark, 0, "it is missing; 'kelvane pack' adds it"});
  }
  if (actionLists(package).empty()) findings.push_back({"actionlists", 0, "there is no action list"});
}

}  // namespace

std::vector<Finding> checkPackage(const PackageSource& package) {
  std::vector<Finding> findings;
  checkMembers(package, findings);
  for (const std::string& list : actionLists(package)) {
    const std::string member = "actionlists/" + list;
    Document(member, package.read(member), findings).checkList();
  }
  for (const std::string& filter : filters(package)) {
    const std::string member = "filters/" + filter;
    Document(member, package.read(member), findings).checkFilterFile();
  }
  std::stable_sort(findings.begin(), findings.end(), [](const Finding& a, const Finding& b) {
    return std::pair(std::string_view(a.file), a.line) < std::pair(std::string_view(b.file), b.line);
  });
  return findings;
}

std::string shown(const Finding& finding) {
  const std::string line = finding.line == 0 ? "" : ":" + std::to_string(finding.line);
  return finding.file + line + ": " + finding.text;
}

}  // namespace kelvane

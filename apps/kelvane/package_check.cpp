#include "kelvane/package_check.h"

#include <algorithm>
#include <optional>
#include <set>

#include "actions/environment/group_modes.h"
#include "actions/environment/number_format.h"
#include "actions/environment/question.h"
#include "core/xml.h"
#include "documents/action_list.h"
#include "documents/filter.h"
#include "documents/predicate_attributes.h"
#include "documents/predicates.h"
#include "engine/dispatch.h"
#include "engine/task.h"
#include "engine/workbook.h"
#include "kelvane/nearest.h"
#include "kelvane/package_uses.h"
#include "kelvane/table_check.h"
#include "kelvane/task_verdict.h"
#include "kelvane/text_check.h"
#include "reports/list_kinds.h"
#include "text/encoding.h"
#include "text/letters.h"
#include "text/numbers.h"
#include "text/pieces.h"

namespace kelvane {
namespace {

using core::XmlNode;

constexpr const char* kNoItems =
    "the filter holds no items, so that every model passes it; items stand in an element 'root' or 'filter'";

constexpr const char* kWrongPlace =
    "' stands in another section's place and isn't read as what it is called: head, body and filter are the first "
    "three "
    "elements of a list, the foot is the fourth, or of five the fifth";

constexpr const char* kSavesEachTime =
    "each model saves the options once more, and 'setConfigOption' puts all of that back; in the head they are saved "
    "once";

std::string attribute(const XmlNode& node, std::wstring_view name) {
  const core::XmlAttr* found = core::attrFind(node.attributes, name);
  return found ? text::toUtf8(found->value) : std::string();
}
bool has(const XmlNode& node, std::wstring_view name) { return core::attrFind(node.attributes, name) != nullptr; }

std::vector<std::string> actionKeys() {
  std::vector<std::string> keys;
  for (const engine::Action& row : engine::actionTable()) keys.push_back(text::toUtf8(row.key));
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
  Document(std::string member, const PackageSource& package, std::vector<Finding>& findings)
      : member_(std::move(member)),
        package_(package),
        findings_(findings),
        loaded_(core::xmlParse(package.read(member_))) {
    if (!loaded_) add(0, "it can't be read: " + text::toUtf8(loaded_.fault));
    if (loaded_ && core::xmlChildCount(loaded_.document->root()) == 0) add(0, "it holds no element");
  }

  void checkList() {
    if (!loaded_) return;
    const documents::ActionList list = documents::actionList(*loaded_.document);
    checkPlaces(list);
    checkSection(list.head, "head", 'H');
    checkSection(list.body, "body", 'B');
    checkSection(list.foot, "foot", 'F');
    section_ = "list filter";
    action_ = -1;
    place_ = "list filter";
    if (list.filter) checkListFilter(*list.filter);
  }
  void checkFilterFile() {
    if (!loaded_) return;
    const XmlNode* block = documents::filterFileBlock(*loaded_.document);
    if (!block) return;
    checkFilter(*block);
    if (!documents::holdsItems(*block)) add(*core::xmlChildAt(loaded_.document->root()->children, 0), kNoItems);
  }

 private:
  void add(std::size_t line, std::string text) {
    findings_.push_back({member_, line, section_, action_, place_, std::move(text), {}});
  }
  void addUses(const XmlNode& at, std::vector<PackageUse> uses) {
    for (PackageUse& use : uses)
      findings_.push_back(
          {member_, loaded_.document->lineOf(at), section_, action_, place_, std::move(use.text), std::move(use.kind)});
  }
  void add(const XmlNode& at, std::string text) { add(loaded_.document->lineOf(at), std::move(text)); }

  // Sections count by their place: a "foot" without a filter before it would be taken for the filter and never run.
  void checkPlaces(const documents::ActionList& list) {
    const XmlNode* top = core::xmlChildAt(loaded_.document->root()->children, 0);
    const std::pair<std::wstring_view, const XmlNode*> sections[] = {
        {L"head", list.head}, {L"body", list.body}, {L"filter", list.filter}, {L"foot", list.foot}};
    if (!top) return;
    core::xmlEachChild(*top, [&](const XmlNode& child) {
      for (const auto& [name, section] : sections)
        if (child.name == name && &child != section) add(child, "'" + text::toUtf8(name) + kWrongPlace);
    });
  }

  void checkSection(const XmlNode* section, const std::string& name, char letter) {
    if (!section) return;
    section_ = name;
    action_ = -1;
    core::xmlEachChild(*section, [&](const XmlNode& task) {
      place_ = letter + std::to_string(++action_);
      checkTask(task);
    });
  }

  void checkTask(const XmlNode& task) {
    if (text::lower(attribute(task, L"deak")) == "false") checkSmallLetters(task, L"deak");
    // Switched off by its author: nothing of it is meant to run.
    if (has(task, L"deak") && attribute(task, L"deak") != "false") return;
    const std::string type = attribute(task, L"type");
    if (!has(task, L"type")) return add(task, "an action without 'type'");
    const engine::Action* row = engine::findAction(text::fromUtf8(type));
    if (row) {
      checkAction(task, type, *row);
    } else if (documents::isPredicate(text::fromUtf8(type))) {
      checkPredicate(task, type);
    } else {
      add(task, "unknown action '" + type + "'" + didYouMean(type, actionKeys()));
    }
    if (row) checkTexts(task);
    if (row) {
      for (const std::string& fault : expressionFaults(task, type)) add(task, fault);
    }
    checkPaths(task, type);
    addUses(task, usesOfAction(task, type));
    // What is saved stays for the run, and a later model sets all of it again.
    if (type == "saveConfigOptions" && section_ == "body") addUses(task, {{"options", kSavesEachTime}});
    checkSwitchedFilter(task);
    checkSmallLetters(task, L"eci");
    checkUnits(task);
    if (type == "groupActions") checkGroup(task);
    if (type == "reportUniversal") checkReportFilter(task);
    if (type == "editSimpRep") checkComponentFilters(task);
    if (type == "writeListReport") checkListReport(task);
    if (type == "setUserVariable") checkQuestion(task);
    if (type == "setUserVariableFromBoundingBox") checkMeasure(task);
  }

  // Of a list of new parameters.
  void checkUnits(const XmlNode& task) {
    for (const core::XmlAttrBlock* block = task.attributes; block; block = block->next) {
      for (std::uint16_t i = 0; i < block->count; ++i) {
        const core::XmlAttr& unit = *block->items[i];
        if (!unit.name.starts_with(kUnit) || unit.value.empty()) continue;
        const std::wstring number(unit.name.substr(kUnit.size()));
        const std::string type = attribute(task, L"type_" + number);
        if (type == "String" || type == "Boolean")
          add(task, "'" + text::toUtf8(unit.name) + "': a " + type + " has no unit, so the parameter isn't created");
      }
    }
  }

  void checkMeasure(const XmlNode& task) {
    const std::string format = attribute(task, L"format");
    if (!actions::NumberFormat::read(text::fromUtf8(format))) {
      add(task, "'format': not one of a single floating number: '" + format + "'");
    }
  }

  void checkQuestion(const XmlNode& task) {
    using actions::QuestionKind;
    const std::string type = attribute(task, L"varType");
    const auto kind = actions::questionKind(text::fromUtf8(type));
    if (!kind) return add(task, "setUserVariable has no 'varType' '" + type + "'");
    if (*kind != QuestionKind::description && attribute(task, L"varName").empty()) {
      add(task, "the question has no 'varName': its answer is lost");
    }
    const engine::Subject none;
    const bool hasEntries =
        !engine::Task(task, none).numbers(L"combo_value_", text::parseInt(attribute(task, L"combo_c"))).empty();
    if (*kind == QuestionKind::choice && attribute(task, L"combo_autosel") != "1" && !hasEntries) {
      add(task, "the question has nothing to choose from");
    }
  }

  // Every attribute of an action may be a text with variables.
  void checkTexts(const XmlNode& task) {
    for (const core::XmlAttrBlock* block = task.attributes; block; block = block->next) {
      for (std::uint16_t i = 0; i < block->count; ++i) checkText(task, *block->items[i]);
    }
  }
  void checkText(const XmlNode& at, const core::XmlAttr& attribute) {
    // These, as whole values, name the folder of one of Creo's options and are no tokens.
    if (attribute.value == L"@pro_symbol_dir@" || attribute.value == L"@pro_table_dir@") return;
    for (const std::string& fault : templateFaults(attribute.value)) {
      add(at, "'" + text::toUtf8(attribute.name) + "': " + fault);
    }
  }

  // Where the whole path is known without a model.
  void checkPaths(const XmlNode& task, const std::string& type) {
    for (const core::XmlAttrBlock* block = task.attributes; block; block = block->next) {
      for (std::uint16_t i = 0; i < block->count; ++i) {
        const PathAttribute* row = pathAttribute(type, block->items[i]->name);
        if (row && row->target != PathTarget::written) checkPath(task, *row, block->items[i]->value);
      }
    }
  }
  void checkPath(const XmlNode& task, const PathAttribute& row, std::wstring_view value) {
    if (!value.starts_with(kProjectDirectory)) return;
    const std::wstring_view rest = value.substr(kProjectDirectory.size());
    if (hasVariables(rest)) return;
    std::string path = std::string(row.folder) + "/" + text::replaceAll(text::toUtf8(rest), "\\", "/");
    path = text::replaceAll(path, "//", "/");
    if (readsTable(row.action) && isFileMember(path)) return checkTable(task, path);
    const bool isFile = row.target != PathTarget::folder;
    if (isFile ? !isFileOf(row, path) : !isFolder(path)) {
      add(task, "'" + text::toUtf8(row.attribute) + "': the package has no " + (isFile ? "file" : "folder") + " '" +
                    path + "'");
    } else if (row.action == "groupActions") {
      checkTemplate(task, path);
    }
  }
  // A workbook shows its cells only where it is converted.
  void checkTable(const XmlNode& task, const std::string& member) {
    if (engine::isWorkbook(text::fromUtf8(member))) return;
    const std::string place = "'" + member + "': ";
    const std::optional<std::string> bytes = readable(member);
    if (!bytes) return;
    for (const std::string& fault : tableFaults(task, *bytes)) add(task, std::string(place).append(fault));
  }
  // Nothing: it can't be unpacked, which is told once for the member.
  [[nodiscard]] std::optional<std::string> readable(const std::string& member) const {
    try {
      return package_.read(member);
    } catch (const MemberFault&) {
      return std::nullopt;
    }
  }
  // A material may be named without its ending, a model without its version.
  bool isFileOf(const PathAttribute& row, const std::string& path) const {
    if (isFileMember(path) || (row.target == PathTarget::model && isModelMember(path))) return true;
    return row.action == "addMaterial" && (isFileMember(path + ".mtl") || isFileMember(path + ".mat"));
  }
  bool isFileMember(const std::string& path) const {
    return anyMember([&](const std::string& member) { return member == text::lower(path); });
  }
  // Whatever its version.
  bool isModelMember(const std::string& path) const {
    const std::string lower = text::lower(path);
    return anyMember([&](const std::string& member) { return member == lower || member.starts_with(lower + "."); });
  }
  bool isFolder(std::string path) const {
    if (!path.ends_with('/')) path += '/';
    return anyMember([&](const std::string& member) { return member.starts_with(text::lower(path)); });
  }
  // The drawing that serves as template, whatever its version.
  void checkTemplate(const XmlNode& task, std::string folder) {
    const core::XmlAttr* name = core::attrFind(task.attributes, L"tmpName");
    if (!name || hasVariables(name->value)) return;
    if (!folder.ends_with('/')) folder += '/';
    const std::string file = folder + text::toUtf8(name->value) + ".drw";
    if (!isModelMember(file)) add(task, "'tmpName': the package has no '" + file + "'");
  }
  template <class Test>
  [[nodiscard]] bool anyMember(Test test) const {
    const auto members = package_.members();
    return std::any_of(members.begin(), members.end(),
                       [&](const std::string& member) { return test(text::lower(member)); });
  }

  void checkAction(const XmlNode& task, const std::string& type, const engine::Action& row) {
    if (type == "openXLSReport")
      return add(task, "action 'openXLSReport' was removed; 'openCSVReport' takes its place");
    if (type == "editModelParameterFromPrueftrail") return add(task, "action '" + type + "' was removed");
    if (row.group == engine::Group::withoutEffect) return add(task, "action '" + type + "' does nothing");
    const std::string wanted = wantedVersion(type);
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

  void checkGroup(const XmlNode& task) {
    const std::string mode = attribute(task, L"reworkMode");
    if (!actions::isGroupMode(text::fromUtf8(mode))) add(task, "groupActions has no rework mode '" + mode + "'");
    if (mode == "5" && attribute(task, L"mdlname").find(text::toUtf8(kProjectDirectory)) != std::string::npos)
      add(task, "'mdlname': '@project_dir@' stays as it is in the name of another model; no file is found there");
    const std::string outer = place_;
    int index = -1;
    bool found = false;  // only the first element of that name runs
    core::xmlEachChild(task, [&](const XmlNode& child) {
      if (found || child.name != L"subtasks") return;
      found = true;
      core::xmlEachChild(child, [&](const XmlNode& inner) {
        place_ = outer + " - G" + std::to_string(++index);
        if (inner.name == L"task") return checkTask(inner);
        add(inner, "element '" + text::toUtf8(inner.name) + "' among subtasks is never run; it must be 'task'");
      });
    });
    place_ = outer;
    if (!found) add(task, "a group without 'subtasks'");
  }

  // Of several the last one decides.
  void checkReportFilter(const XmlNode& task) {
    const XmlNode* filter = nullptr;
    core::xmlEachChild(task, [&filter](const XmlNode& child) {
      if (child.name == L"reportFilter") filter = &child;
    });
    if (!filter) return add(task, "reportUniversal without 'reportFilter': its field stays empty");
    checkSwitchedFilter(*filter);
  }

  void checkComponentFilters(const XmlNode& task) {
    core::xmlEachChild(task, [this](const XmlNode& child) {
      if (child.name == L"insideFilter") checkSwitchedFilter(child);
    });
  }

  void checkListReport(const XmlNode& task) {
    const std::wstring sel = text::fromUtf8(attribute(task, L"sel"));
    if (!hasVariables(sel) && !reports::isListKind(sel))
      add(task, "writeListReport has no list '" + text::toUtf8(sel) + "'");
  }

  // A switch is compared with "true" and "false" as they stand here: "True" switches a filter off, "False" a type on.
  void checkSmallLetters(const XmlNode& at, std::wstring_view name) {
    const std::string value = attribute(at, name), small = text::lower(value);
    if (value != small && (small == "true" || small == "false")) {
      add(at, "'" + text::toUtf8(name) + "': '" + value + "' isn't '" + small + "': only small letters count");
    }
  }

  // What an action, or what is written like one, asks of a model: its type, then the filter where that is switched on.
  void checkSwitchedFilter(const XmlNode& node) {
    for (const wchar_t* name : {L"forPRT", L"forASM", L"forDRW", L"forEF"}) checkSmallLetters(node, name);
    if (attribute(node, L"forEF") != "true") return;
    checkFilter(node);
    if (!documents::holdsItems(node)) add(node, kNoItems);
  }

  // An empty one is what a list without a filter has.
  void checkListFilter(const XmlNode& filter) {
    for (const wchar_t* name : {L"active", L"exists"}) checkSmallLetters(filter, name);
    checkFilter(filter);
    bool isEmpty = true;
    core::xmlEachChild(filter, [&isEmpty](const XmlNode& child) {
      isEmpty = isEmpty && core::xmlChildCount(&child) == 0 && !child.attributes;
    });
    if (!isEmpty && !documents::holdsItems(filter)) add(filter, kNoItems);
  }

  // block: holds groups of items.
  void checkFilter(const XmlNode& block) {
    core::xmlEachChild(block, [this](const XmlNode& group) {
      if (group.name != L"filter" && group.name != L"root") return;
      core::xmlEachChild(group, [this](const XmlNode& item) {
        const std::string type = attribute(item, L"type");
        if (!has(item, L"type")) return add(item, "a filter item without 'type'");
        checkPredicate(item, type);
        if (!has(item, L"filtertype")) {
          add(item, "filter '" + type + "' has no 'filtertype': its item holds where the test fails");
        }
        for (const wchar_t* name : {L"filtertype", L"opand"}) checkSmallLetters(item, name);
      });
    });
  }

  void checkPredicate(const XmlNode& item, const std::string& type) {
    const std::wstring key = text::fromUtf8(type);
    if (!documents::isPredicate(key)) {
      return add(item, "unknown filter '" + type + "'" + didYouMean(type, predicateKeys()));
    }
    addUses(item, usesOfFilterItem(item));
    for (const documents::PredicateAttribute& row : documents::predicateAttributes(key)) {
      checkAttribute(item, type, row);
    }
    if (type == "parameter") checkComparedNumber(item);
  }

  // A comparison with an order or a margin is one of numbers, and reads them up to a comma.
  void checkComparedNumber(const XmlNode& item) {
    const std::string order = attribute(item, L"ncomp");
    const bool isOrdered = order == "1" || order == "2" || order == "4" || order == "5";
    if (!isOrdered && attribute(item, L"epsilon").empty()) return;
    const std::string value = attribute(item, L"value");
    if (value.find(',') != value.npos && isReadAsNumber(text::fromUtf8(value)))
      add(item, "filter 'parameter', 'value': a number ends at its comma: '" + value + "'");
  }

  void checkAttribute(const XmlNode& item, const std::string& type, const documents::PredicateAttribute& row) {
    const core::XmlAttr* found = core::attrFind(item.attributes, row.attribute);
    const std::string name = text::toUtf8(row.attribute);
    if (!found) {
      if (row.required) add(item, "filter '" + type + "' has no '" + name + "'");
      return;
    }
    using enum documents::AttributeKind;
    const bool isTemplate = row.kind == templateText || row.kind == templatePattern;
    if (isTemplate) checkText(item, *found);
    const bool isPattern = row.kind == pattern || (row.kind == templatePattern && !hasVariables(found->value));
    std::string fault = isPattern ? patternFault(found->value) : std::string();
    // An optional value may be empty: it asks nothing then.
    if (!isPattern && (row.required || !found->value.empty())) fault = valueFault(found->value, row);
    if (!fault.empty()) {
      add(item, "filter '" + type + "', '" + name + "': " + fault + ": '" + text::toUtf8(found->value) + "'");
    }
  }
  static std::string valueFault(std::wstring_view value, const documents::PredicateAttribute& row) {
    using enum documents::AttributeKind;
    const documents::AttributeKind kind = row.kind;
    if (kind == integer && !isInteger(value)) return "no whole number";
    if (kind == integerOrStar && value != L"*" && !isInteger(value)) return "neither a whole number nor '*'";
    constexpr int kLastFeatureCode = 246;
    const bool isCode = isInteger(value) && text::parseInt(value) >= 0 && text::parseInt(value) <= kLastFeatureCode;
    if (kind == featureCode && !isCode) return "no code of a feature type";
    if (kind == number && !isNumber(value)) return "no number";
    if (kind == plainNumber && !(isNumber(value) && isReadAsNumber(value)))
      return "no number such as '297' or '-1.5e2'";
    if (kind == truth && value != L"true" && value != L"false") return "neither 'true' nor 'false'";
    if (row.choices.empty()) return {};
    const auto choices = text::split(row.choices, L' ');
    const bool isOne = std::find(choices.begin(), choices.end(), value) != choices.end();
    return isOne ? std::string() : "none of " + text::toUtf8(text::replaceAll(row.choices, L" ", L", "));
  }

  std::string member_;
  const PackageSource& package_;
  std::string section_, place_;
  int action_ = -1;
  std::vector<Finding>& findings_;
  core::XmlLoaded loaded_;
};

// The members that can't be unpacked, each of them a finding.
std::set<std::string> checkMembers(const PackageSource& package, std::vector<Finding>& findings) {
  const auto add = [&findings](std::string file, std::string text) {
    Finding finding;
    finding.file = std::move(file);
    finding.text = std::move(text);
    findings.push_back(std::move(finding));
  };
  if (!package.has(kPackageIndex)) add(kPackageIndex, "it is missing; it holds the description");
  for (const auto& [mark, content] : folderMarks()) {
    if (!package.has(mark)) add(mark, "it is missing; 'kelvane pack' adds it");
  }
  if (actionLists(package).empty()) add("actionlists", "there is no action list");
  std::set<std::string> unreadable;
  for (const std::string& member : package.members()) {
    try {
      (void)package.read(member);
    } catch (const MemberFault& fault) {
      add(member, "it can't be unpacked: " + fault.why());
      unreadable.insert(member);
    }
  }
  return unreadable;
}

}  // namespace

std::vector<Finding> checkPackage(const PackageSource& package) {
  std::vector<Finding> findings;
  const std::set<std::string> unreadable = checkMembers(package, findings);
  for (const std::string& list : actionLists(package)) {
    const std::string member = "actionlists/" + list;
    if (!unreadable.contains(member)) Document(member, package, findings).checkList();
  }
  for (const std::string& filter : filters(package)) {
    const std::string member = "filters/" + filter;
    if (!unreadable.contains(member)) Document(member, package, findings).checkFilterFile();
  }
  std::stable_sort(findings.begin(), findings.end(), [](const Finding& a, const Finding& b) {
    return std::pair(std::string_view(a.file), a.line) < std::pair(std::string_view(b.file), b.line);
  });
  return findings;
}

std::string shown(const Finding& finding) {
  const std::string line = finding.line == 0 ? "" : ":" + std::to_string(finding.line);
  const std::string place = finding.place.empty() ? "" : finding.place + ": ";
  return finding.file + line + ": " + place + finding.text;
}

}  // namespace kelvane

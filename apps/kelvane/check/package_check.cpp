#include "kelvane/check/package_check.h"

#include <algorithm>
#include <optional>
#include <set>

#include "actions/dispatch.h"
#include "actions/environment/question.h"
#include "actions/task.h"
#include "core/xml.h"
#include "documents/action_list.h"
#include "documents/filter.h"
#include "documents/predicate_table.h"
#include "kelvane/base/nearest.h"
#include "kelvane/check/attribute_check.h"
#include "kelvane/check/child_check.h"
#include "kelvane/check/command_check.h"
#include "kelvane/check/filter_check.h"
#include "kelvane/check/list_names.h"
#include "kelvane/check/package_uses.h"
#include "kelvane/check/path_check.h"
#include "kelvane/check/text_check.h"
#include "kelvane/check/windows_names.h"
#include "kelvane/check/xml_faults.h"
#include "kelvane/vocabulary/words.h"
#include "language/workbook.h"
#include "text/encoding.h"
#include "text/letters.h"
#include "text/numbers.h"
#include "text/pieces.h"

namespace kelvane {
namespace {

using core::XmlNode;

constexpr const char* kNoItems =
    "the filter holds no items, so that every model passes it; items stand in an element 'root' or 'filter'";

constexpr std::wstring_view kValue = L"value_";

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

// The rule that tells of what a package uses.
std::string_view useRule(const std::string& kind) {
  const Rule* rule = findRule("uses-" + kind);
  return rule ? rule->name : std::string_view();
}
std::string instead(const actions::Action& action) {
  return action.successor.empty() ? std::string() : "; '" + text::toUtf8(action.successor) + "' takes its place";
}

// One document of the package.
class Document {
 public:
  Document(std::string member, std::string bytes, const PackageSource& package, std::vector<Finding>& findings)
      : member_(std::move(member)),
        bytes_(std::move(bytes)),
        package_(package),
        findings_(findings),
        scan_(scanXml(bytes_)),
        loaded_(core::xmlParse(bytes_)) {
    for (XmlFault& fault : scan_.faults) {
      add(fault.line, fault.rule, std::move(fault.text));
      findings_.back().element = fault.element;
      findings_.back().mend = std::move(fault.mend);
      // Behind one of these the reader's elements are others than those that their author sees.
      if (fault.rule == "comment" || fault.rule == "quote-missing") scan_.elements.clear();
    }
    if (!loaded_) add(0, "document-unreadable", "it can't be read: " + text::toUtf8(loaded_.fault.sentence()));
    if (loaded_ && core::xmlChildCount(loaded_.value->root()) == 0) add(0, "document-empty", "it holds no element");
  }

  void checkList() {
    if (!loaded_) return;
    const documents::ActionList list = documents::actionList(*loaded_.value);
    checkBehind();
    isDisplaced_ = areTagsBroken() || !list.foot;
    checkSections(list);
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
    const XmlNode* block = documents::filterFileBlock(*loaded_.value);
    if (!block) return;
    checkBehind();
    checkFilter(*block);
    if (!documents::holdsItems(*block))
      add(*core::xmlChildAt(loaded_.value->root()->children, 0), "filter-empty", kNoItems);
  }

 private:
  void add(std::size_t line, std::string_view rule, std::string text, std::string attribute = {}) {
    findings_.push_back({member_, line, section_, action_, place_, std::move(text), rule, std::move(attribute), {}});
  }
  void add(const XmlNode& at, std::string_view rule, std::string text, std::string attribute = {}) {
    add(loaded_.value->lineOf(at), rule, std::move(text), std::move(attribute));
    findings_.back().element = elementOf(at);
  }
  void add(const XmlNode& at, AttributeFault fault) {
    // No name has a quote: the fault of the text that brought it there is told.
    const bool hasQuote = fault.attribute.find_first_of("'\"") != std::string::npos;
    if (hasQuote && fault.rule == "attribute-unknown" && !scan_.faults.empty()) return;
    add(at, fault.rule, std::move(fault.text), std::move(fault.attribute));
    Finding& finding = findings_.back();
    finding.mend = editsOf(at, finding.element, finding.attribute, fault.mend);
  }
  void add(const XmlNode& at, std::vector<AttributeFault> faults) {
    for (AttributeFault& fault : faults) add(at, std::move(fault));
  }

  // Its place among the elements; -1: it can't be told.
  [[nodiscard]] int elementOf(const XmlNode& node) const {
    std::ptrdiff_t before = 0;  // in its line
    for (const XmlNode* entry = node.prev; entry && entry->isElement != 0 && entry->line == node.line;
         entry = entry->prev)
      ++before;
    const auto& all = scan_.elements;
    const auto first =
        std::lower_bound(all.begin(), all.end(), node.line,
                         [](const XmlElementPlace& candidate, std::size_t line) { return candidate.line < line; });
    if (all.end() - first <= before) return -1;
    const XmlElementPlace& found = first[before];
    const bool isSame = found.line == node.line && found.name.of(bytes_) == text::toUtf8(node.name);
    return isSame ? static_cast<int>(first - all.begin() + before) : -1;
  }
  [[nodiscard]] Edits editsOf(const XmlNode& node, int element, const std::string& name, const Mend& mend) const {
    if (mend.of == Mend::Of::nothing || element < 0) return {};
    for (const XmlAttributePlace& place : scan_.elements[static_cast<std::size_t>(element)].attributes) {
      if (place.name.of(bytes_) != name) continue;
      if (mend.of == Mend::Of::name) return {{place.name, mend.with}};
      const bool isSame = place.value.of(bytes_) == attribute(node, text::fromUtf8(name));
      return isSame ? Edits{{place.value, mend.with}} : Edits();
    }
    return {};
  }
  void addUses(const XmlNode& at, std::vector<PackageUse> uses) {
    for (PackageUse& use : uses) {
      add(at, useRule(use.kind), std::move(use.text));
      findings_.back().use = std::move(use.kind);
    }
  }

  void checkSection(const XmlNode* section, const std::string& name, char letter) {
    if (!section) return;
    section_ = name;
    action_ = -1;
    names_.readSection(section);
    core::xmlEachChild(*section, [&](const XmlNode& task) {
      place_ = letter + std::to_string(++action_);
      checkTask(task);
    });
  }

  // Sections count by their place: a "foot" without a filter before it would be taken for the filter and never run.
  void checkSections(const documents::ActionList& list) {
    const XmlNode* top = core::xmlChildAt(loaded_.value->root()->children, 0);
    const std::pair<std::wstring_view, const XmlNode*> sections[] = {
        {L"head", list.head}, {L"body", list.body}, {L"filter", list.filter}, {L"foot", list.foot}};
    if (!top) return;
    if (!list.foot && !areTagsBroken())
      add(1, "section-missing",
          "a list has four sections, head, body, filter and foot; this one has fewer" + missingSections(*top));
    if (!list.foot && areTagsBroken()) return;
    bool isOneTold = false;  // where one is missing those behind it follow
    core::xmlEachChild(*top, [&](const XmlNode& child) {
      for (const auto& [name, section] : sections) {
        if (child.name == name && &child != section && (list.foot || !isOneTold)) {
          add(child, "section-order", "'" + text::toUtf8(name) + kWrongPlace);
          isOneTold = true;
        }
        if (child.name != name && &child == section) checkSectionName(child, text::toUtf8(name));
      }
    });
  }
  static std::string missingSections(const XmlNode& top) {
    std::vector<std::string> given;
    core::xmlEachChild(top, [&given](const XmlNode& child) { given.push_back(text::toUtf8(child.name)); });
    std::string missing;
    for (const char* name : {"head", "body", "filter", "foot"})
      if (nearest(name, given).empty()) missing += (missing.empty() ? "" : ", ") + ("'" + std::string(name) + "'");
    return missing.empty() ? missing : "; not there: " + missing;
  }
  void checkSectionName(const XmlNode& section, const std::string& place) {
    const std::string name = text::toUtf8(section.name);
    const std::vector<std::string> meant = {place};
    if (const std::string hint = didYouMean(name, meant); !hint.empty())
      add(section, "section-name", "'" + name + "' is read as the list's " + place + ", whatever it is called" + hint);
  }
  // Then elements stand in others than those that their author put them in.
  [[nodiscard]] bool areTagsBroken() const {
    return std::any_of(scan_.faults.begin(), scan_.faults.end(), [](const XmlFault& one) {
      return one.rule.starts_with("tag-") || one.rule == "comment" || one.rule == "quote-missing";
    });
  }
  // What stands behind the document's element. A tag that closes too much brings it there, and is told itself.
  void checkBehind() {
    if (areTagsBroken()) return;
    bool isBehind = false;
    core::xmlEachChild(*loaded_.value->root(), [&](const XmlNode& one) {
      if (isBehind)
        add(one, "element-unknown",
            "the element '" + text::toUtf8(one.name) + "' stands behind the document's own one and isn't read");
      isBehind = true;
    });
  }

  void checkTask(const XmlNode& task) {
    checkDeak(task);
    // Switched off by its author: nothing of it is meant to run.
    if (isSwitchedOff(task)) return;
    const std::string type = attribute(task, L"type");
    // Another section, or what a tag swallowed, was no action for its author.
    if (!has(task, L"type") && isDisplaced_ && task.name != L"task") return;
    if (!has(task, L"type"))
      return add(task, "action-without-type", "an action without 'type'" + misspelt(task, "type"));
    if (const actions::Action* action = actions::findAction(text::fromUtf8(type)))
      checkAction(task, type, *action);
    else if (documents::isPredicate(text::fromUtf8(type)))
      checkAsAction(task, type);
    else
      add(task, "action-unknown", "unknown action '" + type + "'" + didYouMean(type, actionKeys()));
    checkSwitchedFilter(task);
  }

  // Any word but "false" switches an action off; only "true", in whatever letters, surely means that.
  void checkDeak(const XmlNode& task) {
    const std::string value = text::lower(attribute(task, L"deak"));
    if (value == "false") return checkSmallLetters(task, L"deak");
    constexpr std::string_view kMeant[] = {"", "true", "yes", "1"};
    if (std::find(std::begin(kMeant), std::end(kMeant), value) != std::end(kMeant)) return;
    add(task, "word-unknown",
        "'deak': neither 'true' nor 'false': '" + attribute(task, L"deak") + "'; it switches the action off", "deak");
  }

  void checkAsAction(const XmlNode& item, const std::string& type) {
    add(item, "filter-as-action", "'" + type + "' is a filter: among the actions its answer is dropped", "type");
    add(item, predicateFaults(item));
  }

  // What an action's row doesn't say: rules between several of its attributes, or about its child elements.
  struct FurtherCheck {
    std::wstring_view key;
    void (Document::*check)(const XmlNode& task);
  };
  static const FurtherCheck kFurtherChecks[5];

  void checkAction(const XmlNode& task, const std::string& type, const actions::Action& action) {
    if (!checkRow(task, type, action)) return;
    checkTexts(task);
    add(task, attributeFaults(task, action));
    add(task, names_.faults(task, action));
    add(task, commandFaults(task, action));
    for (ChildFault& one : childFaults(task, action)) add(*one.at, std::move(one.fault));
    checkPaths(task, action);
    addUses(task, usesOfAction(task, action));
    checkUnits(task);
    checkValues(task);
    for (const FurtherCheck& further : kFurtherChecks)
      if (further.key == action.key) (this->*further.check)(task);
  }

  // What is saved stays for the run, and a later model sets all of it again.
  void checkSavedOptions(const XmlNode& task) {
    if (section_ == "body") addUses(task, {{"options", kSavesEachTime}});
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
          add(task, "unit-unread",
              "'" + text::toUtf8(unit.name) + "': a " + type + " has no unit, so the parameter isn't created");
      }
    }
  }

  // Of a list of new parameters: a number is cut off where it ends, and a Boolean is true for "true" alone.
  void checkValues(const XmlNode& task) {
    eachAttribute(task, [&](const core::XmlAttr& value) {
      if (!value.name.starts_with(kValue) || value.value.empty() || hasVariables(value.value)) return;
      const std::string type = attribute(task, L"type_" + std::wstring(value.name.substr(kValue.size())));
      const std::string name = text::toUtf8(value.name), shown = ": '" + text::toUtf8(value.value) + "'";
      if (type == "Integer" && !isInteger(value.value))
        add(task, "number-broken", "'" + name + "': no whole number" + shown, name);
      if (type == "Double" && !isNumber(value.value))
        add(task, "number-broken", "'" + name + "': no number" + shown, name);
      if (type == "Boolean" && value.value != L"true" && value.value != L"false")
        add(task, "word-unknown", "'" + name + "': neither 'true' nor 'false', so that it is false" + shown, name);
    });
  }

  void checkQuestion(const XmlNode& task) {
    using actions::QuestionKind;
    const std::string type = attribute(task, L"varType");
    const auto kind = actions::questionKind(text::fromUtf8(type));
    if (!kind) return;  // its row tells
    if (*kind != QuestionKind::description && attribute(task, L"varName").empty()) {
      add(task, "question", "the question has no 'varName': its answer is lost");
    }
    const actions::Subject none;
    const bool hasEntries =
        !actions::Task(task, none).numbers(L"combo_value_", text::parseInt(attribute(task, L"combo_c"))).empty();
    if (*kind == QuestionKind::choice && attribute(task, L"combo_autosel") != "1" && !hasEntries) {
      add(task, "question", "the question has nothing to choose from");
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
      add(at, "template", "'" + text::toUtf8(attribute.name) + "': " + fault, text::toUtf8(attribute.name));
    }
  }

  void checkPaths(const XmlNode& task, const actions::Action& action) {
    add(task, pathFaults(package_, task, action));
    add(task, pathNameFaults(task, action));
  }

  // False: it isn't carried out whatever stands in it.
  bool checkRow(const XmlNode& task, const std::string& type, const actions::Action& action) {
    if (action.group == actions::Group::withoutEffect) {
      add(task, "action-without-effect", "action '" + type + "' does nothing");
      return false;
    }
    if (action.isRemoved) {
      add(task, "action-removed", "action '" + type + "' was removed" + instead(action));
      return false;
    }
    const std::string wanted = text::toUtf8(action.version), version = attribute(task, L"version");
    if (version != wanted)
      add(task, "action-version",
          "action '" + type + "' has version '" + version + "'; this version carries out '" + wanted + "'", "version");
    if (action.group == actions::Group::modelNeeded && !isForAnyModel(task))
      add(task, "action-for-no-model",
          "action '" + type + "' is for no model: forPRT, forASM and forDRW are all missing or 'false'");
    else
      checkKinds(task, type, action);
    if (action.forAssembliesAlone && isOn(task, L"forPRT") && !isOn(task, L"forASM"))
      add(task, "action-refused",
          "action '" + type + "' is asked for parts alone, which Creo refuses: it is for assemblies", "forPRT");
    return true;
  }
  // Switches that let through nothing but what the action refuses.
  void checkKinds(const XmlNode& task, const std::string& type, const actions::Action& action) {
    const auto& asked = action.conditions;
    const bool asksFilter = std::any_of(asked.begin(), asked.end(), [](const actions::Condition& condition) {
      return condition.test == actions::Test::filter;
    });
    if (!asksFilter || !isForAnyModel(task)) return;
    const ModelKinds kinds = kindsOf(action);
    const std::pair<bool, std::wstring_view> switches[] = {
        {kinds.parts, L"forPRT"}, {kinds.assemblies, L"forASM"}, {kinds.drawings, L"forDRW"}};
    std::string wanted;
    for (const auto& [isWorked, name] : switches) {
      if (isWorked && isOn(task, name)) return;
      if (isWorked) wanted += (wanted.empty() ? "" : " or ") + text::toUtf8(name);
    }
    add(task, "action-for-no-model",
        "action '" + type + "' is for no model: of those that it works on, " + wanted + " lets none through");
  }

  static bool isForAnyModel(const XmlNode& task) {
    return isOn(task, L"forPRT") || isOn(task, L"forASM") || isOn(task, L"forDRW");
  }
  static bool isOn(const XmlNode& task, std::wstring_view name) {
    return has(task, name) && attribute(task, name) != "false";
  }

  void checkGroup(const XmlNode& task) {
    const std::string mode = attribute(task, L"reworkMode");
    if (mode == "5" && attribute(task, L"mdlname").find(text::toUtf8(kProjectDirectory)) != std::string::npos)
      add(task, "group",
          "'mdlname': '@project_dir@' stays as it is in the name of another model; no file is found there");
    const std::string outer = place_;
    int index = -1;
    bool found = false;  // only the first element of that name runs
    core::xmlEachChild(task, [&](const XmlNode& child) {
      if (found || child.name != L"subtasks") return;
      found = true;
      core::xmlEachChild(child, [&](const XmlNode& inner) {
        place_ = outer + " - G" + std::to_string(++index);
        if (inner.name == L"task") return checkTask(inner);
        add(inner, "element-unknown",
            "element '" + text::toUtf8(inner.name) + "' among subtasks is never run; it must be 'task'");
      });
    });
    place_ = outer;
    if (!found) add(task, "group", "a group without 'subtasks'" + misspeltChild(task, {"subtasks"}));
  }

  // The element inside that was meant to be one of these; it would be told nowhere else.
  [[nodiscard]] std::string misspeltChild(const XmlNode& node, const std::vector<std::string>& names) const {
    std::string hint;
    core::xmlEachChild(node, [&](const XmlNode& child) {
      const std::string name = text::toUtf8(child.name);
      if (hint.empty() && std::find(names.begin(), names.end(), name) == names.end() && !nearest(name, names).empty())
        hint = "; '" + name + "' in line " + std::to_string(loaded_.value->lineOf(child)) + " isn't it";
    });
    return hint;
  }

  // Of several the last one decides.
  void checkReportFilter(const XmlNode& task) {
    const XmlNode* filter = nullptr;
    core::xmlEachChild(task, [&filter](const XmlNode& child) {
      if (child.name == L"reportFilter") filter = &child;
    });
    if (!filter)
      return add(task, "report-filter-missing", "reportUniversal without 'reportFilter': its field stays empty");
    add(*filter, switchFaults(*filter));
    checkSwitchedFilter(*filter);
  }

  void checkComponentFilters(const XmlNode& task) {
    core::xmlEachChild(task, [this](const XmlNode& child) {
      if (child.name != L"insideFilter") return;
      add(child, switchFaults(child));
      checkSwitchedFilter(child);
    });
  }

  // A switch is compared with "true" and "false" as they stand here: "True" switches a filter off, "False" a type on.
  void checkSmallLetters(const XmlNode& at, std::wstring_view name) {
    std::optional<AttributeFault> fault = lettersFault(name, text::fromUtf8(attribute(at, name)));
    if (!fault) return;
    // An action's row has told it already.
    const bool isTold = std::any_of(findings_.rbegin(), findings_.rend(), [&](const Finding& one) {
      return one.file == member_ && one.place == place_ && one.line == at.line && one.text == fault->text;
    });
    if (!isTold) add(at, std::move(*fault));
  }

  // What an action, or what is written like one, asks of a model: its type, then the filter where that is switched on.
  void checkSwitchedFilter(const XmlNode& node) {
    for (const wchar_t* name : {L"forPRT", L"forASM", L"forDRW", L"forEF"}) checkSmallLetters(node, name);
    if (!has(node, L"forEF") && documents::holdsItems(node))
      add(node, "filter-unasked", "the filter has items and isn't asked: there is no 'forEF'" + misspelt(node, "forEF"),
          "forEF");
    if (attribute(node, L"forEF") != "true") return;
    checkFilter(node);
    if (!documents::holdsItems(node)) add(node, "filter-empty", kNoItems + misspeltChild(node, {"filter", "root"}));
  }

  // An empty one is what a list without a filter has.
  void checkListFilter(const XmlNode& filter) {
    add(filter, listFilterFaults(filter));
    for (const wchar_t* name : {L"active", L"exists"}) checkSmallLetters(filter, name);
    checkFilter(filter);
    bool isEmpty = true;
    core::xmlEachChild(filter, [&isEmpty](const XmlNode& child) {
      isEmpty = isEmpty && core::xmlChildCount(&child) == 0 && !child.attributes;
    });
    if (!isEmpty && !documents::holdsItems(filter))
      add(filter, "filter-empty", kNoItems + misspeltChild(filter, {"filter", "root"}));
  }

  // What a filter file and a list's filter ask for may come from an earlier list.
  void checkItem(const XmlNode& item) {
    const documents::Predicate* predicate = documents::findPredicate(text::fromUtf8(attribute(item, L"type")));
    if (predicate) addUses(item, usesOfFilterItem(item));
    add(item, itemFaults(item));
    if (!predicate || action_ < 0) return;
    eachAttribute(item, [&](const core::XmlAttr& given) {
      const core::Attribute* row = core::findAttribute(predicate->attributes, given.name);
      if (row && row->variables) add(item, names_.unsetVariables(given));
    });
  }

  // block: holds groups of items.
  void checkFilter(const XmlNode& block) {
    core::xmlEachChild(block, [this](const XmlNode& group) {
      if (group.name != L"filter" && group.name != L"root") return;
      core::xmlEachChild(group, [this](const XmlNode& item) { checkItem(item); });
    });
  }

  std::string member_, bytes_;
  const PackageSource& package_;
  std::string section_, place_;
  int action_ = -1;
  bool isDisplaced_ = false;  // elements of the list stand elsewhere than their author sees them
  std::vector<Finding>& findings_;
  XmlScan scan_;
  text::Result<std::unique_ptr<core::XmlDocument>> loaded_;
  ListNames names_;
};

const Document::FurtherCheck Document::kFurtherChecks[5] = {
    {L"saveConfigOptions", &Document::checkSavedOptions}, {L"groupActions", &Document::checkGroup},
    {L"reportUniversal", &Document::checkReportFilter},   {L"editSimpRep", &Document::checkComponentFilters},
    {L"setUserVariable", &Document::checkQuestion},
};

// The members that can't be unpacked, each of them a finding.
std::set<std::string> checkMembers(const PackageSource& package, std::vector<Finding>& findings) {
  const auto add = [&findings](std::string file, std::string_view rule, std::string text) {
    Finding finding;
    finding.file = std::move(file);
    finding.rule = rule;
    finding.text = std::move(text);
    findings.push_back(std::move(finding));
  };
  if (!package.has(kPackageIndex)) add(kPackageIndex, "member-missing", "it is missing; it holds the description");
  for (const auto& [mark, content] : folderMarks()) {
    if (!package.has(mark)) add(mark, "member-missing", "it is missing; 'kelvane pack' adds it");
  }
  if (actionLists(package).empty()) add("actionlists", "member-missing", "there is no action list");
  for (Finding& finding : memberNameFindings(package)) findings.push_back(std::move(finding));
  std::set<std::string> unreadable;
  for (const std::string& member : package.members()) {
    try {
      (void)package.read(member);
    } catch (const MemberFault& fault) {
      add(member, "member-unreadable", "it can't be unpacked: " + fault.why());
      unreadable.insert(member);
    }
  }
  return unreadable;
}

constexpr std::string_view kLists = "actionlists/", kFilters = "filters/";

}  // namespace

std::vector<std::string> documentsOf(const PackageSource& package) {
  std::vector<std::string> members;
  for (const std::string& list : actionLists(package)) members.push_back(std::string(kLists) + list);
  for (const std::string& filter : filters(package)) members.push_back(std::string(kFilters) + filter);
  return members;
}

std::vector<Finding> checkDocument(const PackageSource& package, const std::string& member, std::string bytes) {
  std::vector<Finding> findings;
  Document document(member, std::move(bytes), package, findings);
  if (member.starts_with(kLists))
    document.checkList();
  else
    document.checkFilterFile();
  std::stable_sort(findings.begin(), findings.end(),
                   [](const Finding& a, const Finding& b) { return a.line < b.line; });
  return findings;
}

std::vector<Finding> checkPackage(const PackageSource& package) {
  std::vector<Finding> findings;
  const std::set<std::string> unreadable = checkMembers(package, findings);
  for (const std::string& member : documentsOf(package)) {
    if (unreadable.contains(member)) continue;
    for (Finding& finding : checkDocument(package, member, package.read(member)))
      findings.push_back(std::move(finding));
  }
  std::stable_sort(findings.begin(), findings.end(), [](const Finding& a, const Finding& b) {
    return std::string_view(a.file) < std::string_view(b.file);
  });
  return findings;
}

}  // namespace kelvane

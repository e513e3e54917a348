#include "kelvane/run/task_verdict.h"

#include <algorithm>

#include "actions/carry_out.h"
#include "actions/dispatch.h"
#include "actions/environment/group_modes.h"
#include "actions/task.h"
#include "creo/ProMdl.h"
#include "documents/filter.h"
#include "kelvane/check/attribute_check.h"
#include "kelvane/run/filter_explanation.h"
#include "kelvane/vocabulary/task_children.h"
#include "text/encoding.h"

namespace kelvane {
namespace {

using core::XmlNode;

std::wstring_view valueOf(const XmlNode& node, std::wstring_view name) {
  const core::XmlAttr* found = core::attrFind(node.attributes, name);
  return found ? found->value : std::wstring_view();
}
bool has(const XmlNode& node, std::wstring_view name) { return core::attrFind(node.attributes, name) != nullptr; }

class Judge {
 public:
  explicit Judge(creo::ProMdl model) : model_(model), modelType_(creo::ProMdlTypeGet(model).value) {}
  std::vector<TaskVerdict> verdicts;

  void task(const XmlNode& node, const std::string& place, const std::string& outer) {
    const std::size_t at = verdicts.size();
    TaskVerdict verdict;
    verdict.place = place;
    verdict.type = text::toUtf8(valueOf(node, L"type"));
    if (outer.empty()) {
      judge(node, verdict);
    } else {
      verdict.reason = outer;
    }
    verdicts.push_back(verdict);
    if (holdsTasks(verdict)) group(node, place, outer.empty() && !verdicts[at].runs ? "its group doesn't run" : outer);
  }

 private:
  static bool holdsTasks(const TaskVerdict& verdict) {
    const TaskChildren* children = childrenOf(text::fromUtf8(verdict.type));
    return children && children->what == TaskChildren::What::tasks;
  }
  void group(const XmlNode& node, const std::string& place, std::string outer) {
    const std::wstring_view mode = valueOf(node, L"reworkMode");
    if (outer.empty() && !actions::groupKeepsModel(mode)) outer = "its group runs it on other models";
    bool found = false;
    core::xmlEachChild(node, [&](const XmlNode& child) {
      if (found || child.name != L"subtasks") return;
      found = true;
      int index = -1;
      core::xmlEachChild(child, [&](const XmlNode& inner) {
        ++index;
        if (inner.name == L"task") task(inner, place + " - G" + std::to_string(index), outer);
      });
    });
  }

  // Reasons in the order in which the dispatch and the frame of an action ask.
  void judge(const XmlNode& node, TaskVerdict& verdict) {
    if (has(node, L"deak") && valueOf(node, L"deak") != L"false") return void(verdict.reason = "it is switched off");
    const std::wstring_view type = valueOf(node, L"type");
    const actions::Action* row = actions::findAction(type);
    if (!row) {
      verdict.reason =
          documents::isPredicate(type) ? "it is a filter: its answer is dropped" : "there is no such action";
      return;
    }
    if (row->group == actions::Group::withoutEffect) {
      return void(verdict.reason = "this version doesn't carry it out");
    }
    const std::string wanted = text::toUtf8(row->version), given = text::toUtf8(valueOf(node, L"version"));
    if (!wanted.empty() && given != wanted)
      return void(verdict.reason = "its version is '" + given + "', this version carries out '" + wanted + "'");
    verdict.runs = conditionsHold(node, *row, verdict);
    // It runs, but what such a pattern should find isn't found.
    if (verdict.runs)
      for (AttributeFault& fault : attributeFaults(node, *row))
        if (fault.rule == "pattern-broken") verdict.details.push_back(std::move(fault.text));
    if (verdict.runs && holdsTasks(verdict) && !actions::isGroupMode(valueOf(node, L"reworkMode"))) {
      verdict.runs = false;
      verdict.reason = "there is no such rework mode";
    }
  }

  // In the order in which the run asks them.
  bool conditionsHold(const XmlNode& node, const actions::Action& action, TaskVerdict& verdict) const {
    const auto name = creo::ProMdlNameGet(model_);
    const actions::Subject subject{model_, name.value, std::wstring(creo::typeExtension(modelType_))};
    const actions::Task task(node, subject);
    for (const actions::Condition& condition : action.conditions) {
      if (actions::isFilterTest(condition.test)) {
        if (isAsked(condition.test, task) && !(typeFits(node, verdict) && filterFits(node, verdict))) return false;
      } else if (!actions::holds(action, condition, task)) {
        verdict.reason = reasonOf(condition.test);
        return false;
      }
    }
    return true;
  }
  // Some actions run on whatever there is, as what opens or writes a report; some ask only where they are told not to
  // run on all kinds of models.
  static bool isAsked(actions::Test test, const actions::Task& task) {
    if (test == actions::Test::filterUnlessForAll) return !actions::isForAll(task);
    return test != actions::Test::noFilter;
  }
  static std::string reasonOf(actions::Test test) {
    using enum actions::Test;
    switch (test) {
      case part:
      case partType:
        return "it works on parts alone";
      case assembly:
      case assemblyType:
        return "it works on assemblies alone";
      case drawing:
      case drawingType:
        return "it works on drawings alone";
      case partOrAssembly:
      case solidType:
        return "it works on parts and assemblies alone";
      case solidOrDrawingUser:
        return "it works on assemblies and drawings alone";
      case notInstance:
        return "it refuses instances";
      case notSkeleton:
        return "it refuses skeletons";
      case instancesAsTold:
        return "forInstances is 'false', and the model is an instance";
      case skeletonsAsTold:
        return "forSkel isn't 'true', and the model is a skeleton";
      case anyOfTheWork:
        return "none of the attributes is there that give it work";
      default:
        return "it doesn't work on such a model";
    }
  }

  bool typeFits(const XmlNode& node, TaskVerdict& verdict) const {
    const std::wstring_view name = documents::typeSwitch(modelType_);
    if (name.empty() || (has(node, name) && valueOf(node, name) != L"false")) return true;
    verdict.reason = text::toUtf8(name) + (has(node, name) ? " is 'false'" : " is missing");
    return false;
  }

  bool filterFits(const XmlNode& node, TaskVerdict& verdict) const {
    if (valueOf(node, L"forEF") != L"true") return true;
    FilterExplanation explanation = explainFilter(node, model_);
    verdict.reason = (explanation.holds ? "its filter holds: " : "its filter refuses: ") + explanation.reason;
    verdict.details = std::move(explanation.lines);
    return explanation.holds;
  }

  creo::ProMdl model_;
  creo::ProMdlType modelType_;
};

}  // namespace

std::vector<TaskVerdict> judgeSection(const core::XmlNode& section, char letter, creo::ProMdl model) {
  Judge judge(model);
  int index = -1;
  core::xmlEachChild(section, [&](const XmlNode& node) { judge.task(node, letter + std::to_string(++index), ""); });
  return std::move(judge.verdicts);
}

}  // namespace kelvane

// Parameters of a drawing that take the values of its model's.
#include <algorithm>

#include "actions/model/frame_search.h"
#include "actions/model/parameter_edit.h"
#include "actions/model/parameter_values.h"
#include "core/log.h"
#include "creo/ProDrawing.h"
#include "creo/ProMdl.h"
#include "language/variables.h"
#include "text/format.h"
#include "text/letters.h"
#include "text/numbers.h"

namespace actions {
namespace {

using namespace language;
using creo::ProMdl;
using creo::ProMdlType;
using creo::ProParamvalueType;

constexpr int kMostNames = 100;
constexpr std::wstring_view kNoChoice = L"-";

void say(std::wstring_view text) { core::logIndented(text, core::kNormal, 1); }
void error(std::wstring_view text) { core::logWrite(text, core::kError); }

struct Identity {
  std::wstring name;
  ProMdlType type{};
};
std::optional<Identity> identityOf(ProMdl model) {
  const auto name = creo::ProMdlNameGet(model);
  const auto type = creo::ProMdlTypeGet(model);
  if (!name || !type) return std::nullopt;
  return Identity{name.value, type.value};
}

// The drawing's parameter says which model was chosen, or "-".
void keepChoice(const Task& task, std::wstring_view choice) {
  if (const auto parameter = parameterNamed(task.model(), task.attribute(L"mdlNameParameter")))
    setParameterTo(task, parameter.value, {.kind = ProParamvalueType::string, .value = std::wstring(choice)});
}

// What the drawing's parameter says; empty for no choice.
std::wstring choiceOf(const Task& task) {
  const std::wstring_view name = task.attribute(L"mdlNameParameter");
  const auto parameter = parameterNamed(task.model(), name);
  if (parameter.error == creo::ProNotFound) {
    core::logWrite(text::format(L"Can't find parameter: %s", name), core::kWarning);
    return {};
  }
  const auto value = parameter ? editedValue(parameter.value) : parameter.error;
  if (!value) {
    error(text::format(L"Failure while read parameter: %s", name));
    return {};
  }
  if (value.value.type != ProParamvalueType::string) {
    error(text::format(L"Parameter %s is no String parameter", name));
    return {};
  }
  say(L"Parameter found");
  say(value.value.string);
  return value.value.string == kNoChoice ? std::wstring() : value.value.string;
}

std::optional<ProMdl> modelByChoice(const std::vector<ProMdl>& models, std::wstring_view choice) {
  say(L"Check with parameter");
  for (const ProMdl model : models) {
    const auto own = identityOf(model);
    const bool isPart = own && own->type == ProMdlType::part;
    const bool isAssembly = own && (own->type == ProMdlType::assembly || own->type == ProMdlType::manufacturing);
    if (!isPart && !isAssembly) continue;
    if (!text::equalNoCase(own->name + (isPart ? L".prt" : L".asm"), choice)) continue;
    say(text::format(L"Found model '%s' with parameter check", own->name));
    return model;
  }
  return std::nullopt;
}

std::optional<ProMdl> currentModel(const Task& task, const std::vector<ProMdl>& models) {
  const auto current = creo::ProDrawingCurrentsolidGet(task.model());
  const auto wanted = current ? identityOf(current.value) : std::nullopt;
  for (const ProMdl model : models) {
    const auto own = identityOf(model);
    if (!wanted || !own || own->name != wanted->name || own->type != wanted->type) continue;
    say(L"Found current model");
    return model;
  }
  return std::nullopt;
}

std::optional<ProMdl> modelBySelectedWay(const Task& task, const std::vector<ProMdl>& models) {
  say(L"Check with selected way");
  const std::wstring_view way = task.attribute(L"multiModelSelection");
  if (way == L"1") {
    say(L"- current model");
    return currentModel(task, models);
  }
  if (way == L"2") {
    say(L"- failure message");
    error(L"Found more than one model");
  } else if (way == L"3") {
    say(L"- search in frames");
    return modelOfFrames(task.model(), models);
  } else if (way == L"4") {
    say(L"- do nothing");
  }
  return std::nullopt;
}

std::optional<ProMdl> chosenModel(const Task& task, const std::vector<ProMdl>& models, std::wstring_view choice) {
  if (models.size() == 1) {
    say(L"One Model found");
    if (!choice.empty()) core::logWrite(L"One Model found in drawing, ignore parameter value", core::kWarning);
    return models.front();
  }
  say(L"More Models found");
  if (!choice.empty())
    if (const auto model = modelByChoice(models, choice)) return model;
  return modelBySelectedWay(task, models);
}

// What isn't there, as a plain line, a warning or an error.
void tellMissing(const Task& task, std::wstring_view text) {
  const int level = text::parseInt(task.attribute(L"errOrWar"));
  if (level == core::kNormal) return core::logIndented(text, level, 2);
  core::logWrite(text, level == core::kWarning ? level : core::kError);
}

void copyParameter(const Task& task, ProMdl model, std::wstring_view name, std::wstring_view newName) {
  const auto target = parameterNamed(task.model(), newName);
  if (!target) return tellMissing(task, L"Parameter can't be found on Drawing");
  const std::wstring form = text::format(L"%%%s%%", name);
  Replaced value = replaceVariables(form, model);
  if (!value) return tellMissing(task, L"Parameter can't be found on Model");
  if (value.text == form) return;  // a note, which has its warning
  setParameterTo(task, target.value, {.value = std::move(value.text), .numbers = std::move(value.numbers)});
}

Outcome editDrawingParameterFromModel(const Task& task) {
  const std::wstring choice = choiceOf(task);
  const auto models = creo::ProDrawingSolidsCollect(task.model());
  if (!creo::isTold(models)) {
    error(L"No model found in drawing to copy parameters 2");
    return wrongVersion;
  }
  if (models.value.empty()) {
    say(L"No Model found");
    error(L"No model found in drawing to copy parameters");
    return wrongVersion;
  }
  const auto model = chosenModel(task, models.value, choice);
  const auto identity = model ? identityOf(*model) : std::nullopt;
  if (!identity) {
    keepChoice(task, kNoChoice);
    return done;
  }
  say(L"Found a model and do the work");
  for (const int i : task.numbers(L"name_", kMostNames)) {
    const std::wstring_view name = *task.numbered(L"name_%d", i);
    const std::wstring_view newName = task.numbered(L"newname_%d", i).value_or(L"");
    if (!name.empty() && !newName.empty()) copyParameter(task, *model, name, newName);
  }
  keepChoice(task, identity->name + (identity->type == ProMdlType::part ? L".prt" : L".asm"));
  return done;
}

constexpr Attribute kAttributes[] = {
    {.name = L"mdlNameParameter",
     .about = "a String parameter of the drawing that names the model, and gets the name of the one that was taken"},
    {.name = L"multiModelSelection",
     .kind = Kind::word,
     .words = L"1|2|3|4",
     .about = "which of several: 1 the current one, 2 none, with an error, 3 the one that the frames name, 4 none"},
    {.name = L"errOrWar",
     .kind = Kind::word,
     .words = L"0|1|2",
     .about = "a parameter that isn't there is told: 0 plainly, 1 as a warning, else as an error"},
    {.name = L"name_%d", .need = Need::needed, .most = kMostNames, .about = "a parameter of the model"},
    {.name = L"newname_%d",
     .need = Need::needed,
     .most = kMostNames,
     .about = "the one of the drawing that takes its value"},
};

constexpr Action kActions[] = {
    {.key = L"editDrawingParameterFromModel",
     .place = 106,
     .title = L"Edit drawing parameter from model",
     .conditions = {kFilter, {.test = Test::drawing}},
     .attributes = kAttributes,
     .effects = {.reads = Touched::model | Touched::users, .changes = Touched::model},
     .about = "copies parameters of one of a drawing's models to the drawing",
     .function = &editDrawingParameterFromModel},
};

}  // namespace

std::span<const Action> drawingParameterActions() { return kActions; }

}  // namespace actions

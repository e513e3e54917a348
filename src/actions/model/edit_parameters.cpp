// Actions that change values, types and names of parameters.
#include <optional>

#include "actions/model/instances.h"
#include "actions/model/materials.h"
#include "actions/model/parameter_edit.h"
#include "core/log.h"
#include "core/messages.h"
#include "creo/ProMdl.h"
#include "language/variables.h"
#include "text/format.h"

namespace actions {
namespace {

using namespace language;
using creo::ProModelitem;

constexpr int kMostNameVisits = 12;
constexpr std::wstring_view kNoOwner = L"Failure while ProMdlToMdlitem";

// The parameter of that name; nothing where there is none, as where it is a pattern, or, with its line, where that
// can't be told.
std::optional<creo::ProParameter> parameterIn(const ProModelitem& owner, const std::wstring& name) {
  const auto parameter = creo::ProParameterInit(owner, name);
  if (parameter) return parameter.value;
  const bool isNone = parameter.error == creo::ProNotFound || parameter.error == creo::ProBadInputs;
  if (!isNone) core::logWrite(L"Failure in ProParameterInit()", core::kError);
  return std::nullopt;
}

// A parameter that a visit doesn't list is reached by its name.
void editUnlisted(ParameterEditContext& context, const ProModelitem& owner) {
  if (context.editHandled) return;
  const Replaced name = replaceVariables(context.currentAction.attribute(L"name"), context.currentModel);
  if (!name) return;
  if (const auto parameter = parameterIn(owner, name.text)) editParameterValue(context, *parameter);
}

// One pass: as many visits as its conversions ask for. False: a visit ended early.
bool runPass(ParameterEditContext& context, const ProModelitem& owner, ParameterEditContext::Pass pass) {
  context.editPass = pass;
  context.visitRepeats = 1;
  if (pass == ParameterEditContext::retype) context.editHits = 0;
  for (int i = 0; i < context.visitRepeats; ++i) {
    context.editHandled = false;
    if (!visitAndEdit(context, owner)) return false;
    editUnlisted(context, owner);
  }
  context.visitRepeats = 1;
  return true;
}

bool runBothPasses(ParameterEditContext& context, const ProModelitem& owner) {
  return runPass(context, owner, ParameterEditContext::retype) &&
         runPass(context, owner, ParameterEditContext::setValue);
}

void logSearch(const Task& task) {
  core::logMsgId(task.attribute(L"searchin") == L"1" ? Message::searchInName : Message::searchInValue, core::kNormal,
                 1);
}

// Each instance's own value, those of nested tables too.
void editInstances(ParameterEditContext& context, creo::ProMdl generic) {
  visitInstances(generic, [&](const creo::ProFaminstance& instance, creo::ProMdl model) {
    core::logIndented(text::format(core::msgText(Message::reworkInstance), instance.name), core::kNormal, 1);
    const creo::ProMdl before = context.currentModel;
    context.currentModel = model;
    context.editHandled = false;
    if (const auto owner = creo::ProMdlToModelitem(model)) {
      visitAndEdit(context, owner.value);
      editUnlisted(context, owner.value);
    } else {
      core::logWrite(kNoOwner, core::kError);
    }
    editInstances(context, model);
    context.currentModel = before;
  });
}

Outcome editModelParameter(const Task& task) {
  announceFamily(task);
  const auto owner = creo::ProMdlToModelitem(task.model());
  if (!owner) {
    core::logWrite(kNoOwner, core::kError);
    return failed;
  }
  logSearch(task);
  ParameterEditContext context{.currentAction = task, .currentModel = task.model()};
  if (!runBothPasses(context, owner.value)) return failed;
  if (task.attribute(L"searchin") == L"1" && context.editHits == 0) {
    core::logIndented(L"Could be alternative one, check that", core::kNormal, 2);
    const Replaced name = task.text(L"name");
    const auto parameter = name ? parameterIn(owner.value, name.text) : std::nullopt;
    if (parameter && findAndEditParameter(context, *parameter) != creo::ProNoError) return failed;
  }
  if (task.isTrue(L"genAllInst")) editInstances(context, task.model());
  return done;
}

Outcome editMaterialParameter(const Task& task) {
  const auto owner = currentMaterial(task.model(), core::kWarning);
  if (!owner) return done;
  logSearch(task);
  ParameterEditContext context{.currentAction = task, .currentModel = task.model()};
  return runBothPasses(context, *owner) ? done : failed;
}

Outcome editModelParameterName(const Task& task) {
  const auto owner = creo::ProMdlToModelitem(task.model());
  if (!owner) {
    core::logWrite(kNoOwner, core::kError);
    return failed;
  }
  ParameterEditContext context{.currentAction = task, .currentModel = task.model()};
  context.rename = true;
  context.familyAware = true;
  for (int i = 0; i < context.visitRepeats && i < kMostNameVisits; ++i)
    if (!visitAndEdit(context, owner.value)) return failed;
  return done;
}

constexpr Attribute kSearch[] = {
    {.name = L"searchin",
     .kind = Kind::word,
     .words = L"1|2",
     .need = Need::needed,
     .about = "1: the name is a pattern for names; 2: it is compared with values"},
};
constexpr Attribute kName[] = {
    {.name = L"name",
     .kind = Kind::pattern,
     .variables = true,
     .need = Need::needed,
     .about = "the parameters, by their names or by their values"},
};
constexpr Attribute kMaterialName[] = {
    {.name = L"name",
     .kind = Kind::pattern,
     .need = Need::needed,
     .about = "the parameters, by their names or by their values"},
};
constexpr Attribute kNewValue[] = {
    {.name = L"totype",
     .kind = Kind::word,
     .words = L"0|1|2|3",
     .need = Need::needed,
     .about = "0 String, 1 Integer, 2 Double, 3 Boolean; a parameter of another type is retyped first"},
    {.name = L"value",
     .variables = true,
     .need = Need::needed,
     .about = "the new value, at most 80 characters; @para@ stands for the present one"},
};
constexpr Attribute kAllInstances[] = {
    {.name = L"genAllInst",
     .kind = Kind::flag,
     .words = L"true",
     .about = "each instance of the family table, too, those of instances among them"},
};
constexpr Attribute kNewName[] = {
    {.name = L"value",
     .variables = true,
     .need = Need::needed,
     .about = "the new name, at most 31 letters, digits and _"},
};
constexpr auto kModelAttributes = joined(kSearch, kName, kNewValue, kAllInstances, kInstancesToo);
constexpr auto kMaterialAttributes = joined(kSearch, kMaterialName, kNewValue);
constexpr auto kNameAttributes = joined(kSearch, kName, kNewName);

constexpr Action kActions[] = {
    {.key = L"editModelParameter",
     .place = 100,
     .title = Message::editModelParameter,
     .conditions = {kFilter, kInstancesAsTold},
     .attributes = kModelAttributes,
     .effects = {.reads = Touched::model | Touched::family,
                 .changes = Touched::model | Touched::family | Touched::session},
     .about = "sets values of parameters, or changes their type",
     .function = &editModelParameter},
    {.key = L"editMaterialParameter",
     .place = 101,
     .title = L"Edit material parameter",
     .conditions = {kFilter, {.test = Test::notInstance, .line = Message::instanceRefused, .outcome = done}},
     .attributes = kMaterialAttributes,
     .effects = {.changes = Touched::model | Touched::family},
     .about = "sets values of parameters of a part's current material, or changes their type",
     .function = &editMaterialParameter},
    {.key = L"editModelParameterName",
     .place = 103,
     .title = Message::editParameterName,
     .attributes = kNameAttributes,
     .effects = {.changes = Touched::model | Touched::family},
     .about = "renames parameters, with their columns and the values of instances",
     .function = &editModelParameterName},
};

}  // namespace

std::span<const Action> editParameterActions() { return kActions; }

}  // namespace actions

// Models that assemblies and drawings use: replaced by others, or taken away where nothing shows them.
#include "actions/task.h"
#include "actions/visits.h"
#include "actions/whole_model.h"
#include "core/log.h"
#include "creo/ProReplace.h"
#include "creo/guards.h"
#include "language/compare.h"
#include "language/variables.h"
#include "text/format.h"
#include "text/letters.h"

namespace actions {
namespace {

using namespace language;

std::wstring label(const creo::ProDependency& model) { return model.name + L'.' + model.typeText; }

bool isSolid(creo::ProMdlType type) {
  return type == creo::ProMdlType::part || type == creo::ProMdlType::assembly ||
         type == creo::ProMdlType::manufacturing;
}

std::vector<creo::ProDependency> solidsOf(creo::ProMdl user) {
  auto used = usedBy(user);
  std::erase_if(used, [](const creo::ProDependency& dependency) { return !isSolid(dependency.type); });
  return used;
}

// "WHEEL" is of the type of what it replaces, "WHEEL.ASM" of its own.
creo::ProDependency replacementFor(const creo::ProDependency& replaced, std::wstring_view wanted) {
  for (const auto type : {creo::ProMdlType::part, creo::ProMdlType::assembly}) {
    const std::wstring ending = std::wstring(L".") + creo::typeExtension(type);
    if (wanted.size() > ending.size() && text::equalNoCase(wanted.substr(wanted.size() - ending.size()), ending))
      return {text::upper(wanted.substr(0, wanted.size() - ending.size())), creo::typeExtension(type), type};
  }
  return {text::upper(wanted), replaced.typeText, replaced.type};
}

void replaceOne(creo::ProMdl user, const creo::ProDependency& from, const creo::ProDependency& to) {
  if (from.name == to.name && from.type == to.type) {
    core::logIndented(text::format(L"%s stays as it is", label(from)), core::kNormal, 1);
    return;
  }
  const auto model = creo::ProMdlRetrieve(to.name, to.type);
  if (!model) {
    core::logWrite(text::format(L"%s can't be retrieved", label(to)), core::kError);
    return;
  }
  const bool isDrawing = creo::ProMdlTypeGet(user).value == creo::ProMdlType::drawing;
  switch (isDrawing ? creo::ProDrawingSolidReplace(user, from, model.value)
                    : creo::ProAsmcompsReplace(user, from, model.value)) {
    case creo::ProNoError:
      core::logIndented(text::format(L"%s is replaced by %s", label(from), label(to)), core::kNormal, 1);
      break;
    case creo::ProInvalidType:
      core::logWrite(text::format(L"%s can't be replaced by %s, which would use itself then", label(from), label(to)),
                     core::kError);
      break;
    case creo::ProExists:
      core::logWrite(text::format(L"%s can't be replaced by %s, which the drawing has already", label(from), label(to)),
                     core::kError);
      break;
    case creo::ProGeneralError:
      if (isDrawing) {
        core::logWrite(
            text::format(L"%s can't be replaced by %s: a drawing takes only a model of the same family table, and that "
                         L"couldn't be shown",
                         label(from), label(to)),
            core::kError);
        break;
      }
      [[fallthrough]];
    default:
      core::logWrite(text::format(L"%s can't be replaced by %s", label(from), label(to)), core::kError);
  }
}

void replacePair(const Task& task, const std::wstring& pattern, const std::wstring& wanted) {
  bool any = false;
  for (const creo::ProDependency& from : solidsOf(task.model())) {
    if (!matches(pattern, from.name)) continue;
    any = true;
    replaceOne(task.model(), from, replacementFor(from, wanted));
  }
  if (!any) core::logIndented(text::format(L"No model is called %s", pattern), core::kNormal, 1);
}

Outcome replaceModel(const Task& task) {
  creo::OptionGuard option(L"remember_replaced_components");
  if (option.change(L"no")) {
    core::logWrite(L"remember_replaced_components can't be set", core::kError);
    return done;
  }
  for (const int number : task.numbers(L"namef_", kListSize)) {
    const Replaced from = task.text(L"namef_" + std::to_wstring(number));
    const Replaced to = task.text(L"namet_" + std::to_wstring(number));
    if (from && to && !from.text.empty() && !to.text.empty())
      replacePair(task, from.text, to.text);
    else
      core::logWrite(text::format(L"namef_%d or namet_%d can't be put together", number, number), core::kError);
  }
  if (!option.back()) core::logWrite(L"remember_replaced_components can't be put back", core::kError);
  return done;
}

Outcome removeUnusedDrawingModels(const Task& task) {
  int count = 0;
  for (const creo::ProDependency& model : solidsOf(task.model())) {
    const auto use = creo::ProDrawingModelUseGet(task.model(), model);
    if (use && use.value == creo::ProDrawingModelUse::view) continue;
    if (use && use.value == creo::ProDrawingModelUse::text) {
      core::logIndented(text::format(L"%s stays: a table or a text refers to it", label(model)), core::kNormal, 1);
      continue;
    }
    if (use && creo::ProDrawingModelDelete(task.model(), model) == creo::ProNoError) {
      core::logIndented(text::format(L"%s is removed", label(model)), core::kNormal, 1);
      ++count;
    } else {
      core::logWrite(text::format(L"%s can't be removed", label(model)), core::kError);
    }
  }
  if (count == 0) core::logIndented(L"No model is removed", core::kNormal, 1);
  return done;
}

constexpr Attribute kReplaceAttributes[] = {
    {.name = L"namef_%d", .kind = Kind::pattern, .variables = true, .need = Need::oneOf, .about = "models that go"},
    {.name = L"namet_%d",
     .variables = true,
     .need = Need::needed,
     .about = "what comes in their place: WHEEL is of their type, WHEEL.ASM of its own"},
};

constexpr Action kActions[] = {
    {.key = L"replaceModel",
     .place = 64,
     .title = L"Replace model",
     .conditions = {kFilter, kUsers, kNotInstance, kAnyOfTheWork},
     .attributes = kReplaceAttributes,
     .effects = {.reads = Touched::model | Touched::users | Touched::options,
                 .changes = Touched::model | Touched::options},
     .about = "replaces components of an assembly, or models of a drawing, by other models",
     .function = &replaceModel},
    {.key = L"removeUnusedDrawingModels",
     .place = 87,
     .title = L"Remove unused drawing models",
     .conditions = {kFilter, kDrawings},
     .effects = {.changes = Touched::model},
     .about = "takes the models from a drawing that nothing in it shows",
     .function = &removeUnusedDrawingModels},
};

}  // namespace

std::span<const Action> replaceModelActions() { return kActions; }

}  // namespace actions

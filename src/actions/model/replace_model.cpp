// Models that assemblies and drawings use: replaced by others, or taken away where nothing shows them.
#include "actions/families.h"
#include "actions/whole_model.h"
#include "core/log.h"
#include "creo/ProReplace.h"
#include "creo/guards.h"
#include "engine/compare.h"
#include "text/format.h"
#include "text/letters.h"

namespace actions {
namespace {

using namespace engine;

constexpr Fits kUsers{.assemblies = true, .drawings = true, .instances = false};
constexpr Fits kDrawings{.drawings = true};

std::wstring label(const creo::ProDependency& model) { return model.name + L'.' + model.typeText; }

bool isSolid(creo::ProMdlType type) {
  return type == creo::ProMdlType::part || type == creo::ProMdlType::assembly ||
         type == creo::ProMdlType::manufacturing;
}

std::vector<creo::ProDependency> solidsOf(creo::ProMdl user) {
  auto used = creo::ProMdlDependenciesList(user).value;
  std::erase_if(used, [](const creo::ProDependency& one) { return !isSolid(one.type); });
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
    default:
      core::logWrite(text::format(L"%s can't be replaced by %s", label(from), label(to)), core::kError);
  }
}

void replacePair(const Task& task, const std::wstring& pattern, const std::wstring& wanted) {
  bool any = false;
  for (const creo::ProDependency& from : solidsOf(task.model())) {
    if (wildcardCompare(pattern, from.name) != 1) continue;
    any = true;
    replaceOne(task.model(), from, replacementFor(from, wanted));
  }
  if (!any) core::logIndented(text::format(L"No model is called %s", pattern), core::kNormal, 1);
}

Outcome replaceModel(const Task& task) {
  if (const auto ended = beginOn(task, {.title = L"Replace model"}, kUsers, {L"namef_0"})) return *ended;
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
  if (const auto ended = beginOn(task, {.title = L"Remove unused drawing models"}, kDrawings)) return *ended;
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

constexpr ActionFunction kActions[] = {{L"replaceModel", &replaceModel},
                                       {L"removeUnusedDrawingModels", &removeUnusedDrawingModels}};

}  // namespace

std::span<const ActionFunction> replaceModelActions() { return kActions; }

}  // namespace actions

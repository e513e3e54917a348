// The check of a model as a whole.
#include <algorithm>

#include "actions/families.h"
#include "actions/whole_model.h"
#include "core/log.h"
#include "core/messages.h"
#include "creo/ProMdl.h"
#include "creo/ProModelCheck.h"
#include "text/format.h"

namespace actions {
namespace {

using namespace engine;

constexpr int kTitle = 395, kStandard = 396, kOtherSettings = 397, kNotSaved = 398, kSaved = 399, kNoSettings = 400,
              kFailed = 402;

bool isSavedAfterwards(const Task& task) {
  if (!task.isTrue(L"save")) return false;
  if (creo::ProMdlSave(task.model()) == creo::ProNoError) return true;
  core::logWrite(L"Failure while save model", core::kError);
  return false;
}

// What a check finds is its result and no fault of the action: the list goes on without an error line.
void tellFindings(const std::vector<creo::ProModelcheckFinding>& findings) {
  for (const creo::ProModelcheckFinding& one : findings)
    core::logIndented(text::format(L"%s: %s", one.isError ? L"error" : L"warning", one.text), core::kNormal, 2);
}

Outcome runModelCheck(const Task& task) {
  if (const auto ended = beginOn(task, {.title = core::msgText(kTitle)}, kAllModels)) return *ended;
  const std::wstring settings = task.attribute(L"config").empty() ? std::wstring() : task.path(L"config", L"models");
  if (settings.empty())
    core::logMsgId(kStandard, core::kNormal, 1);
  else
    core::logIndented(text::format(core::msgText(kOtherSettings), settings), core::kNormal, 1);
  const auto found = creo::ProModelcheckExecute(task.model(), settings);
  if (!found) {
    core::logMsgPlain(found.error == creo::ProNotFound ? kNoSettings : kFailed, core::kError);
    return done;
  }
  tellFindings(found.value);
  const auto errors = std::count_if(found.value.begin(), found.value.end(), [](auto& one) { return one.isError; });
  const auto warnings = static_cast<std::ptrdiff_t>(found.value.size()) - errors;
  const bool saved = isSavedAfterwards(task);
  core::logIndented(
      text::format(core::msgText(saved ? kSaved : kNotSaved), static_cast<int>(errors), static_cast<int>(warnings)),
      core::kNormal, 1);
  return done;
}

constexpr ActionFunction kActions[] = {{L"runModelCheck", &runModelCheck}};

}  // namespace

std::span<const ActionFunction> modelCheckActions() { return kActions; }

}  // namespace actions

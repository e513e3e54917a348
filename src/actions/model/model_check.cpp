// The check of a model as a whole.
#include <algorithm>

#include "actions/task.h"
#include "core/log.h"
#include "core/messages.h"
#include "creo/ProMdl.h"
#include "creo/ProModelCheck.h"
#include "text/format.h"

namespace actions {
namespace {

bool isSavedAfterwards(const Task& task) {
  if (!task.isTrue(L"save")) return false;
  if (creo::ProMdlSave(task.model()) == creo::ProNoError) return true;
  core::logWrite(L"Failure while save model", core::kError);
  return false;
}

// What a check finds is its result and no fault of the action: the list goes on without an error line.
void tellFindings(const std::vector<creo::ProModelcheckFinding>& findings) {
  for (const creo::ProModelcheckFinding& finding : findings)
    core::logIndented(text::format(L"%s: %s", finding.isError ? L"error" : L"warning", finding.text), core::kNormal, 2);
}

Outcome runModelCheck(const Task& task) {
  const std::wstring settings = task.attribute(L"config").empty() ? std::wstring() : task.path(L"config", L"models");
  if (settings.empty())
    core::logMsgId(Message::standardConfiguration, core::kNormal, 1);
  else
    core::logIndented(text::format(core::msgText(Message::otherConfiguration), settings), core::kNormal, 1);
  const auto found = creo::ProModelcheckExecute(task.model(), settings);
  if (!found) {
    core::logMsgPlain(found.error == creo::ProNotFound ? Message::configurationNotFound : Message::generalError,
                      core::kError);
    return done;
  }
  tellFindings(found.value);
  const auto errors = std::count_if(found.value.begin(), found.value.end(), [](auto& entry) { return entry.isError; });
  const auto warnings = static_cast<std::ptrdiff_t>(found.value.size()) - errors;
  const bool saved = isSavedAfterwards(task);
  core::logIndented(text::format(core::msgText(saved ? Message::checkedAndSaved : Message::checkedNotSaved),
                                 static_cast<int>(errors), static_cast<int>(warnings)),
                    core::kNormal, 1);
  return done;
}

constexpr Attribute kAttributes[] = {
    {.name = L"config",
     .kind = Kind::file,
     .variables = true,
     .folder = L"models",
     .about = "a file that gives checks another weight; absent or empty: the usual ones"},
    {.name = L"save",
     .kind = Kind::flag,
     .words = L"true",
     .about = "the model is saved behind the check, whatever it found"},
};

constexpr Action kActions[] = {
    {.key = L"runModelCheck",
     .place = 57,
     .title = Message::runModelCheck,
     .conditions = {kFilter, kAnyType},
     .attributes = kAttributes,
     .effects = {.reads = Touched::model | Touched::users | Touched::files | Touched::options,
                 .changes = Touched::model | Touched::users | Touched::family},
     .about = "checks the model as a whole and tells each finding in the log",
     .function = &runModelCheck},
};

}  // namespace

std::span<const Action> modelCheckActions() { return kActions; }

}  // namespace actions

// Other programs, and the environment that they inherit.
#include "actions/families.h"
#include "core/log.h"
#include "core/messages.h"
#include "creo/ProUtil.h"
#include "engine/read_number.h"
#include "engine/task.h"
#include "os/doors.h"
#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/format.h"

namespace actions {
namespace {

using namespace engine;

constexpr int kTitle = 414, kIsRun = 374;
constexpr std::size_t kCommandSize = 2600;

void tellNotStarted(std::wstring_view command, std::error_code error) {
  if (error == std::errc::operation_not_permitted)
    return core::logWrite(text::format(L"This run starts no programs: %s", command), core::kError);
  core::logWrite(text::format(L"The program can't be started (%s): %s", text::fromUtf8(error.message()), command),
                 core::kError);
}

void runAndWait(const std::wstring& command, const std::wstring& folder) {
  const os::Result<int> ended = os::processes().run(command, folder);
  if (!ended) return tellNotStarted(command, ended.error);
  if (ended.value == os::kNoProgram)
    return core::logWrite(text::format(L"The program can't be found: %s", command), core::kError);
  core::logWrite(text::format(L"The program ended with status %d: %s", ended.value, command),
                 ended.value == 0 ? core::kDebug : core::kWarning);
}

void startDetached(const std::wstring& command, const std::wstring& arguments, const std::wstring& folder) {
  if (const auto error = os::processes().start(command, arguments, folder)) tellNotStarted(command, error);
}

void waitSeconds(int seconds) {
  if (os::doors().programs != os::Door::open) return;  // nothing was started that could be waited for
  for (int i = 0; i < seconds; ++i) os::clock().sleep(1000);
}

Outcome runShellCommand(const Task& task) {
  if (const auto ended = begin(task, {.title = core::msgText(kTitle)})) return *ended;
  const std::wstring command = task.path(L"cmd", L"models", kCommandSize);
  const std::wstring arguments = task.path(L"args", L"models", kCommandSize);
  const std::wstring folder = creo::ProDirectoryCurrentGet().value;
  if (!task.has(L"uncup") || task.attribute(L"uncup") == L"false")
    runAndWait(command + L" " + arguments, folder);
  else
    startDetached(command, arguments, folder);
  waitSeconds(integerOrZero(task.attribute(L"waitafter")));
  core::logMsgId(kIsRun, core::kNormal, 1);
  return done;
}

Outcome setEnvironmentVariable(const Task& task) {
  if (const auto ended = begin(task, {.title = L"Set environment variable"})) return *ended;
  const Replaced name = task.text(L"name");
  const std::wstring value = task.path(L"value", L"models");
  if (name.hasText()) core::logIndented(text::format(L"set %s=%s", name.text, value), core::kNormal, 1);
  if (!name.hasText() || os::setEnvironment(name.text, value))
    core::logWrite(L"Setting of the environment variable failed", core::kError);
  return done;
}

constexpr ActionFunction kActions[] = {{L"runMSDOScommand", &runShellCommand},
                                       {L"setEnvironmentVariable", &setEnvironmentVariable}};

}  // namespace

std::span<const ActionFunction> programActions() { return kActions; }

}  // namespace actions

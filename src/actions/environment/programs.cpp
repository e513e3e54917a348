// Other programs, and the environment that they inherit.
#include "actions/task.h"
#include "core/log.h"
#include "creo/ProUtil.h"
#include "language/read_number.h"
#include "language/variables.h"
#include "os/doors.h"
#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/format.h"

namespace actions {
namespace {

using namespace language;

constexpr std::size_t kCommandSize = 2600;

// What a confined list may not start has been told, with the grant that it lacks.
void tellNotStarted(std::wstring_view command, std::error_code error) {
  if (error == std::errc::operation_not_permitted && os::doors().programs == os::Door::open)
    return core::logWrite(text::format(L"The program isn't started: %s", command), core::kError);
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
  constexpr int kNotRunnable = 126;  // of a command processor: it is there, but nobody may run it
  if (ended.value == kNotRunnable)
    return core::logWrite(text::format(L"The program can't be run, it isn't executable: %s", command), core::kError);
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
  const std::wstring command = task.path(L"cmd", L"models", kCommandSize);
  const std::wstring arguments = task.path(L"args", L"models", kCommandSize);
  const std::wstring folder = creo::ProDirectoryCurrentGet().value;
  if (!task.has(L"uncup") || task.attribute(L"uncup") == L"false")
    runAndWait(command + L" " + arguments, folder);
  else
    startDetached(command, arguments, folder);
  waitSeconds(integerOrZero(task.attribute(L"waitafter")));
  core::logMsgId(Message::runShellCommand, core::kNormal, 1);
  return done;
}

Outcome setEnvironmentVariable(const Task& task) {
  const Replaced name = task.text(L"name");
  const std::wstring value = task.path(L"value", L"models");
  if (name.hasText()) core::logIndented(text::format(L"set %s=%s", name.text, value), core::kNormal, 1);
  if (!name.hasText() || os::setEnvironment(name.text, value))
    core::logWrite(L"Setting of the environment variable failed", core::kError);
  return done;
}

constexpr Attribute kCommandAttributes[] = {
    {.name = L"cmd",
     .kind = Kind::program,
     .variables = true,
     .need = Need::needed,
     .folder = L"models",
     .with = L"args",
     .about = "the program"},
    {.name = L"args", .variables = true, .folder = L"models", .about = "what follows it on the command line"},
    {.name = L"uncup",
     .kind = Kind::flag,
     .words = L"false",
     .about = "false or absent: the list waits for the program's end; else it goes on"},
    {.name = L"waitafter", .kind = Kind::integer, .about = "seconds to wait behind it"},
};
constexpr Attribute kVariableAttributes[] = {
    {.name = L"name", .variables = true, .need = Need::needed, .about = "the variable's name"},
    {.name = L"value", .variables = true, .folder = L"models", .about = "its value"},
};

constexpr Action kActions[] = {
    {.key = L"runMSDOScommand",
     .place = 5,
     .group = Group::withoutModel,
     .title = Message::runMsDosCommand,
     .attributes = kCommandAttributes,
     .effects =
         {.reads = Touched::model | Touched::session, .changes = Touched::programs, .known = false, .takenBack = false},
     .about = "runs another program in Creo's working folder",
     .function = &runShellCommand},
    {.key = L"setEnvironmentVariable",
     .place = 13,
     .group = Group::withoutModel,
     .title = L"Set environment variable",
     .attributes = kVariableAttributes,
     .effects = {.changes = Touched::surroundings},
     .about = "sets a variable of the environment, for Creo and the programs that it starts",
     .function = &setEnvironmentVariable},
};

}  // namespace

std::span<const Action> programActions() { return kActions; }

}  // namespace actions

// Groups: a list of tasks inside a task, run once, again and again, or on other models.
#include <algorithm>
#include <optional>

#include "actions/dispatch.h"
#include "actions/environment/group_modes.h"
#include "actions/run_names.h"
#include "actions/task.h"
#include "actions/under_work.h"
#include "core/log.h"
#include "core/state.h"
#include "creo/ProMdl.h"
#include "language/read_number.h"
#include "language/variables.h"
#include "os/interrupt.h"
#include "text/format.h"
#include "text/numbers.h"

namespace actions {
namespace {

using namespace language;

// Groups nested deeper are refused: each level takes its share of the stack, and a list may come from anywhere.
constexpr int kDeepestGroup = 64;

// Counts the groups that run inside each other.
class GroupGuard {
 public:
  GroupGuard() { ++depth(); }
  ~GroupGuard() { --depth(); }
  GroupGuard(const GroupGuard&) = delete;
  GroupGuard& operator=(const GroupGuard&) = delete;
  [[nodiscard]] static bool isTooDeep() { return depth() > kDeepestGroup; }

 private:
  static int& depth() {
    static int groups = 0;
    return groups;
  }
};

void runPlain(const Task& task) { runSubtasks(task.node(), task.subject()); }

// The bound is read anew each round, so that a variable set in the loop changes it. One that can't be replaced ends
// the loop. last: the bound before; what is cut of a bound is told once.
int roundsOf(const Task& task, std::wstring& last) {
  Replaced count = task.text(L"forcount");
  if (!count.hasText()) return 0;
  const int rounds = count.text == last ? text::parseInt(count.text) : integerOrZero(count.text);
  last = std::move(count.text);
  return rounds;
}

// Says when a loop has to be left before its bound. A loop may have no end: its bound grows with its rounds, or is out
// of reach. Others come to theirs also where a stop is asked for, as a model that is half done helps nobody.
class LoopEnd {
 public:
  // Before each round, with how many were run and the bound by now.
  bool isDue(int round, int bound) {
    if (startedInRun_ && !runGoesOn()) return true;  // a task closed the tool
    if (!os::isInterrupted()) return false;
    bound_ = std::min(bound_.value_or(bound), bound);
    return round >= *bound_ || *bound_ - round > kMostRoundsLeft;
  }

 private:
  // So many are run to their end; more count as out of reach.
  static constexpr int kMostRoundsLeft = 10'000;
  bool startedInRun_ = runGoesOn();
  std::optional<int> bound_;  // when the stop was asked for; from then on it may only shrink
};

void runLoop(const Task& task) {
  std::wstring last;
  const std::wstring title = core::pluginState().currentAction;
  LoopEnd end;
  for (int i = 0;; ++i) {
    const int bound = roundsOf(task, last);
    if (i >= bound) return;
    if (end.isDue(i, bound)) {
      core::pluginState().currentAction = title;  // not that of the last task
      core::logWrite(text::format(L"The loop is left after %d of %d rounds, as the run is to end", i, bound),
                     core::kError);
      return;
    }
    core::logIndented(text::format(L"loop no - %d", i), core::kNormal, 1);
    runSubtasks(task.node(), task.subject());
  }
}

struct Mode {
  std::wstring_view value;  // of `reworkMode`
  void (*run)(const Task& task);
  bool needsModel = false;
};
constexpr Mode kModes[] = {
    {L"", &runPlain},
    {L"0", &runPlain},
    {L"1", &runOnInstances, true},
    {L"2", &runOnNewDrawing, true},
    {L"3", &runOnDependencies, true},
    {L"4", &runLoop},
    {L"5", &runOnOtherModel},
    {L"6", &runEachSheet},
    {L"7", &runOnRepresentation, true},
};

const Mode* findMode(std::wstring_view value) {
  const auto* mode =
      std::find_if(std::begin(kModes), std::end(kModes), [&](const Mode& m) { return m.value == value; });
  return mode == std::end(kModes) ? nullptr : mode;
}

Outcome groupActions(const Task& task) {
  const GroupGuard group;
  if (GroupGuard::isTooDeep()) {
    core::logWrite(text::format(L"Groups nested deeper than %d levels aren't carried out", kDeepestGroup),
                   core::kError);
    return done;
  }
  const Mode* mode = findMode(task.attribute(L"reworkMode"));
  if (!mode) return done;
  if (mode->needsModel && !task.model())
    core::logWrite(L"This function need a model to get worked on it", core::kError);
  else
    mode->run(task);
  return done;
}

// A group that is refused counts as done.
constexpr Condition kGroupFilter{.test = Test::filterUnlessForAll, .line = Message::filterRefused, .outcome = done};
constexpr Attribute kAttributes[] = {
    {.name = L"reworkMode",
     .kind = Kind::word,
     .words = L"|0|1|2|3|4|5|6|7",
     .about = "absent or 0: once; 1: on each instance; 2: a new drawing; 3: each used model; 4: in a loop; 5: another "
              "model; 6: each sheet; 7: a simplified representation"},
    {.name = L"recsel", .kind = Kind::flag, .words = L"true", .about = "mode 1: on the instances of instances too"},
    {.name = L"drwName", .kind = Kind::newModel, .variables = true, .about = "mode 2: the drawing's name"},
    {.name = L"tmpName", .variables = true, .about = "mode 2: the drawing that serves as template"},
    {.name = L"tmpPath",
     .kind = Kind::folder,
     .variables = true,
     .folder = L"models",
     .about = "mode 2: the template's folder"},
    {.name = L"forcount", .kind = Kind::integer, .variables = true, .about = "mode 4: how many rounds"},
    {.name = L"mdlname", .variables = true, .about = "mode 5: a model, or a file of another system, with its ending"},
    {.name = L"otherMdlType",
     .kind = Kind::word,
     .words = L"PRT|ASM|DRW",
     .about = "mode 5: what a file of another system becomes; absent: a part"},
    {.name = L"removeFromSession",
     .kind = Kind::word,
     .words = L"0|1|2",
     .about = "mode 5: 1 takes the model out of memory again, 2 all that it uses as well"},
    {.name = L"framelessSheets",
     .kind = Kind::flag,
     .words = L"true",
     .about = "mode 6: also on sheets that show no one model"},
    {.name = L"simprepname", .variables = true, .about = "mode 7: the representation's name"},
};
// Of the group itself; its tasks have their own.
constexpr Effects kEffects{.reads = Touched::model | Touched::users | Touched::family | Touched::files,
                           .changes = Touched::model | Touched::session};

constexpr Action kActions[] = {
    {.key = L"groupActions",
     .place = 8,
     .group = Group::withoutModel,
     .title = L"GROUP ACTION",
     .conditions = {kGroupFilter},
     .attributes = kAttributes,
     .effects = kEffects,
     .about = "runs tasks of its own, once, in a loop or on other models",
     .function = &groupActions},
};

}  // namespace

void runTasksOn(const Task& task, creo::ProMdl model, std::wstring_view name, std::wstring_view extension) {
  creo::ProMdlDisplay(model);
  runSubtasks(task.node(), {model, std::wstring(name), std::wstring(extension)});
}

std::wstring_view solidExtension(creo::ProMdl model) {
  const auto type = creo::ProMdlTypeGet(model);
  if (!type) return {};
  if (type.value == creo::ProMdlType::part) return L".PRT";
  return type.value == creo::ProMdlType::assembly ? L".ASM" : L"";
}

bool isUnderWork(creo::ProMdl model) {
  const auto& models = modelsUnderWork();
  return std::find(models.begin(), models.end(), model) != models.end();
}

bool isGroupMode(std::wstring_view value) { return findMode(value) != nullptr; }

bool groupKeepsModel(std::wstring_view value) {
  const Mode* mode = findMode(value);
  return mode && (mode->run == &runPlain || mode->run == &runLoop || mode->run == &runEachSheet);
}

std::span<const Action> groupActionsFamily() { return kActions; }

}  // namespace actions

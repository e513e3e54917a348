// The shared start of all triggers: through the same choosers, check buttons and start button as a person.
#include <exception>
#include <optional>
#include <string>

#include "actions/run_names.h"
#include "core/log.h"
#include "core/state.h"
#include "creo/ProMdl.h"
#include "creo/ProUI.h"
#include "creo/ProUtil.h"
#include "run/model_table.h"
#include "run/run.h"
#include "run/screen.h"
#include "run/triggers.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace run {
namespace {

using namespace core;
using namespace creo;

constexpr int kNames = kTriggerCount + 1;
constexpr const wchar_t* kTriggerNames[kNames] = {L"",
                                                  L"after create",
                                                  L"after open",
                                                  L"before save",
                                                  L"after occupy",
                                                  L"after solid regenerate",
                                                  L"before solid regenerate",
                                                  L"before erase"};
constexpr std::size_t kDigits = 5, kHistoryDigits = 2;
constexpr std::size_t kLastDigit = 4;  // its place

// What a trigger's run found and gives back at its end, whenever that comes.
struct FiredTrigger {
  std::optional<int> writeExtData;  // where the trigger overrides it
  int result = 0;
};
FiredTrigger& trigger() {
  static FiredTrigger fired;
  return fired;
}
TriggerObserver*& observer() {
  static TriggerObserver* entry = nullptr;
  return entry;
}

const std::string& dialog() { return pluginState().dialogName; }

// "<KVD> start trigger before save"
void writeStep(const wchar_t* step, int type) {
  const wchar_t* number = type == 1 ? L" 1" : L"";
  creoLog(std::wstring(L"<KVD> ") + step + L" trigger " + triggerName(type) + number);
}

// With the last digit on, the first three say for which types of models the trigger fires.
bool leavesOut(ProMdl model, const std::wstring& conf) {
  if (conf.size() <= kLastDigit || conf[kLastDigit] != L'1') return false;
  switch (ProMdlTypeGet(model).value) {
    case ProMdlType::part:
      return conf[0] == L'0';
    case ProMdlType::assembly:
      return conf[1] == L'0';
    case ProMdlType::drawing:
      return conf[2] == L'0';
    default:
      return false;
  }
}

// The chooser's entry of that name, without regard to case; empty: it has none.
std::string entryOf(const char* chooser, const std::wstring& wanted) {
  for (const std::string& name : ProUIOptionmenuNamesGet(dialog(), chooser).value)
    if (text::equalNoCase(text::fromUtf8(name), wanted)) return name;
  return {};
}

int refused(const wchar_t* line) {
  creoLog(line);
  return ProStopVisit;
}

// 0, or ProStopVisit with a line.
int chooseList(const std::wstring& list) {
  const std::size_t blank = list.find(L' ');
  const std::string package = entryOf("kvaneKVZChooser", list.substr(0, blank) + L".kvz");
  if (package.empty()) return refused(L"<KVD> Can't find the described kvz file");
  // A package that can't be opened has no lists, whatever the chooser still shows of another one.
  const bool opens = screen().takePackage(package);
  const std::string name = opens ? entryOf("kvaneActionlistChooser", list.substr(blank + 1) + L".xml") : std::string();
  if (name.empty()) return refused(L"<KVD> Can't find the described actionlist");
  screen().takeList(name);
  return 0;
}

// While it lives models count as worked before, or not, as the first digit of the history value says.
class ReworkSwitch {
 public:
  explicit ReworkSwitch(const std::wstring& history) : saved_(pluginState().autoUnsetReworkedData) {
    if (history.size() == kHistoryDigits) pluginState().autoUnsetReworkedData = history[0] == L'0' ? 0 : 1;
  }
  ~ReworkSwitch() { pluginState().autoUnsetReworkedData = saved_; }
  ReworkSwitch(const ReworkSwitch&) = delete;
  ReworkSwitch& operator=(const ReworkSwitch&) = delete;

 private:
  int saved_;
};

void setHistorySwitch(const std::wstring& history) {
  if (history.size() == kHistoryDigits) {
    trigger().writeExtData = pluginState().writeExtData;
    screen().setHistoryButton(history[1] != L'0');
  } else if (!history.empty()) {
    creoLog(L"<KVD> glob_start_kvz_before_save_write_check_rework_history needs zero or two inputs [0,1]");
  }
}

void setCheckButtons(const std::wstring& conf) {
  if (conf.size() == kDigits) {
    const auto on = [&conf](std::size_t place) { return conf[place] == L'1'; };
    setTypeFilters(on(0), on(1), on(2), on(3), on(kLastDigit));
  } else if (!conf.empty()) {
    creoLog(L"<KVD> glob_start_kvz_before_save_conf needs zero or five inputs [0,1]");
  }
}

// Opens the tool and chooses the list. 0, or ProStopVisit with a line. The table is filled for none of the lists that
// are chosen on the way: theirs aren't the filters that the trigger asks for.
int openWith(const std::wstring& list, int type) {
  const TableHold hold;
  PluginState& state = pluginState();
  if (list.find(L' ') == list.npos) return refused(L"<KVD> Failure while split list, please correct the configuration");
  if (!state.toolOpen) screen().open();
  if (!state.toolOpen) return ProStopVisit;  // the entry has told why
  state.triggerType = type;                  // a dialog that is shown has cleared it
  return chooseList(list);
}

// From the opening of the tool to the press on start. 0, or ProStopVisit with a line.
int start(ProMdl model, const std::wstring& list, const std::wstring& history, const std::wstring& conf, int type) {
  if (const int fault = openWith(list, type)) return fault;
  const ReworkSwitch rework(history);
  setHistorySwitch(history);
  setCheckButtons(conf);
  clearModelTable();
  rebuildModelTable(model);
  startRun();
  return 0;
}

// As start; nothing leaves it. A trigger that couldn't start leaves no hidden dialog behind, and in one that stays the
// rows that its choosers now stand for.
int startOrTell(ProMdl model, const std::wstring& list, const std::wstring& history, const std::wstring& conf,
                int showUI, int type) {
  const bool wasOpen = pluginState().toolOpen;
  int result = ProStopVisit;
  try {
    result = start(model, list, history, conf, type);
  } catch (const std::exception& fault) {
    creoLog(L"<KVD> " + text::fromUtf8(fault.what()));
    abandonRun();
  }
  if (result == 0 || !pluginState().toolOpen) return result;
  if (!wasOpen && showUI != 1) {
    screen().close();
  } else if (tableIsBehind()) {
    refreshModelTable();
  }
  return result;
}

// For as long as it lives, and behind it for as long as the run that it started goes on, no other trigger fires.
class Firing {
 public:
  Firing(int type, const TriggerObserver::Firing& firing) {
    pluginState().triggerType = type;
    pluginState().savedDirectory = ProDirectoryCurrentGet().value;
    trigger() = {};
    if (observer()) observer()->triggerBegins(firing);
  }
  ~Firing() {
    if (!actions::runGoesOn()) endTrigger();
  }
  Firing(const Firing&) = delete;
  Firing& operator=(const Firing&) = delete;
};

}  // namespace

std::wstring triggerName(int type) { return type > 0 && type < kNames ? kTriggerNames[type] : L""; }

void observeTriggers(TriggerObserver* given) { observer() = given; }

int fireTrigger(ProMdl model, const std::wstring& list, const std::wstring& history, const std::wstring& conf,
                int showUI, int type) {
  PluginState& state = pluginState();
  if (state.triggerType != 0) {
    creoLog(L"<KVD> Already inside a trigger -> break new one");
    return 0;
  }
  if (actions::runGoesOn()) {
    creoLog(L"<KVD> Already inside a run -> break trigger");
    return 0;
  }
  if (tableIsBeingFilled()) {
    creoLog(L"<KVD> The table is being filled -> break trigger");
    return 0;
  }
  const auto name = ProMdlNameGet(model);
  creoLog(name ? name.value : L"can't read name");
  state.triggerKeepsDialog = showUI;
  if (!model) {
    const auto current = ProMdlCurrentGet();
    if (!current) return 0;
    model = current.value;
  }
  if (leavesOut(model, conf)) return 0;
  const Firing firing(type, {type, model, list});
  writeStep(L"start", type);
  trigger().result = startOrTell(model, list, history, conf, showUI, type);
  if (trigger().result == 0) writeStep(L"end", type);
  return trigger().result;
}

void endTrigger() {
  PluginState& state = pluginState();
  if (state.triggerType == 0) return;
  if (!state.savedDirectory.empty()) ProDirectoryChange(state.savedDirectory);
  if (const std::optional<int> before = std::exchange(trigger().writeExtData, std::nullopt)) {
    if (state.toolOpen) screen().setHistoryButton(*before != 0);
    state.writeExtData = *before;
  }
  state.triggerType = 0;
  if (observer()) observer()->triggerEnds(trigger().result);
}

}  // namespace run

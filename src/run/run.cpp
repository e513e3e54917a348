#include "run/run.h"

#include <array>
#include <exception>
#include <memory>
#include <vector>

#include "actions/dispatch.h"
#include "actions/run_names.h"
#include "actions/saved_options.h"
#include "core/log.h"
#include "core/messages.h"
#include "core/state.h"
#include "creo/ProMacro.h"
#include "creo/ProMdl.h"
#include "creo/ProMessage.h"
#include "creo/ProNotify.h"
#include "creo/ProUI.h"
#include "creo/ProUITable.h"
#include "creo/ProWindow.h"
#include "documents/action_list.h"
#include "language/comparison_watch.h"
#include "language/csv_table.h"
#include "language/workbook.h"
#include "reports/csv_report.h"
#include "run/check_out.h"
#include "run/choosers.h"
#include "run/history.h"
#include "run/model_table.h"
#include "run/row_name.h"
#include "run/screen.h"
#include "run/triggers.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/letters.h"
#include "trace/tape.h"

namespace run {
namespace {

using namespace actions;
using namespace language;

using namespace core;
using namespace creo;

// The steps at which `kvd_breakpoint` stops a run.
enum Breakpoint : int {
  afterListOpened = 1,
  afterHead = 2,
  afterBarSet = 3,
  insteadOfOpening = 4,
  afterDisplay = 5,
  insteadOfBody = 6,
  beforeActions = 7,
  afterActions = 20,
};
bool stopsAt(Breakpoint point) { return pluginState().breakpoint == point; }

constexpr std::array kPasses = {ProMdlType::part, ProMdlType::assembly, ProMdlType::drawing};

// A run from the press to the end of Foot. It outlives the press: between models control is with Creo.
struct Run {
  std::unique_ptr<XmlDocument> document;
  documents::ActionList list;
  std::vector<std::string> rows;  // of the table; it stands still during the run
  std::size_t row = 0;            // the next one to look at
  std::size_t pass = 0;           // in kPasses
  int progress = 0;               // finished models
  std::string waitingRow;         // the row whose window was asked for
  int window = 0;                 // that the run waits for
  bool windowCreated = false;     // by the run, which closes it again
};

// Shared, so that a step which ends the run still stands on it.
std::shared_ptr<Run>& run() {
  static std::shared_ptr<Run> current;
  return current;
}

const std::string& dialog() { return pluginState().dialogName; }

constexpr std::array kRefreshTypes = {ProNotifyType::currentModelChanged, ProNotifyType::modelOpened,
                                      ProNotifyType::modelDisplayed, ProNotifyType::windowActivated,
                                      ProNotifyType::windowClosed};

// The run's window before the person that was asked to close, and stands until control is back; 0: none.
int& closing() {
  static int window = 0;
  return window;
}

// The table follows Creo: it is rebuilt when the current model isn't the one for which it was built. Behind a run its
// own window still stands there for a moment: what comes before it goes is no matter of the person's.
ProError followCurrentModel(const ProNotification& event) {
  if (event.type == ProNotifyType::windowClosed && event.window == closing()) closing() = 0;
  if (const auto window = ProWindowCurrentGet(); window && closing() != 0 && window.value == closing())
    return ProNoError;
  const auto current = ProMdlCurrentGet();
  if (!current) return ProNoError;
  const PluginState& state = pluginState();
  const auto type = ProMdlTypeGet(current.value);
  const bool same =
      ProMdlNameGet(current.value).value == state.currentName && typeExtension(type.value) == state.currentExt;
  if (!same) refreshModelTable();
  return ProNoError;
}

void runMacro(const std::wstring& text) {
  ProMacroLoad(text);
  ProMacroExecute();
}

void runRefreshMacros() {
  for (const wchar_t* macro : {L"~ Command `ProCmdDwgUpdateSheets` ;", L"~ Command `ProCmdDwgRegenDraft` ;",
                               L"~ Command `ProCmdDwgTblRegUpd`;"}) {
    runMacro(macro);
  }
}

// Updates the drawing, and goes back to the tab that Creo left for it.
void refreshDrawing() {
  PluginState& state = pluginState();
  ProNotificationSet(ProNotifyType::pageControlShown, [](const ProNotification& event) {
    pluginState().controlName = event.name;
    return ProNoError;
  });
  runRefreshMacros();
  ProNotificationUnset(ProNotifyType::pageControlShown);
  if (!state.controlName.empty()) {
    ProMacroLoad(text::format(L"~ Activate `main_dlg_cur` `%s_control_btn` 1;", state.controlName));
  }
}

void showProgress() {
  if (ProUIProgressbarIntegerSet(dialog(), "kvaneProgressBar", run()->progress) != ProNoError) {
    creoLog(L"<KVD> main - Error at set ProUIProgressbarIntegerSet");
  }
}

Got<bool> readChosen(const std::string& row) { return ProUICheckbuttonGetState(dialog(), row + "_cb"); }

// What belongs to a run goes: its reports, its document, its place in log lines.
void leaveRun() {
  PluginState& state = pluginState();
  state.reports.reset();
  freeCsvTables();
  deleteConvertedFiles();
  freeSavedConfigOptions();
  state.section = L' ';
  if (run()) trace::remark("ended", {});
  run().reset();
  noteRun(false);
}

// The table follows Creo again, and a trigger's dialog goes unless it is to stay.
void leaveTool() {
  if (pluginState().triggerType != 0) {
    const bool keeps = pluginState().triggerKeepsDialog == 1;
    if (!keeps) screen().close();
    endTrigger();
    if (!keeps) return;
    logReopenForRendering();  // while the trigger ran nothing was shown
    logRender();
  }
  setRefreshNotifications();
}

// What the log holds by now is shown: it says why.
void endEarly() {
  leaveRun();
  logRender();
  leaveTool();
}

// The message that the run isn't for the model before the user: only where regeneration triggers have no digits.
bool refusesForeignModel() {
  const auto current = ProMdlCurrentGet();
  if (!current) return false;
  PluginState& state = pluginState();
  const bool same = ProMdlNameGet(current.value).value == state.currentName &&
                    typeExtension(ProMdlTypeGet(current.value).value) == state.currentExt;
  if (same || !state.trigger(Trigger::afterRegenerate).startConf.empty()) return false;
  creoLog(L"<KVD> Model that should worked is not current model");
  ProUIMessageDialogDisplay(L"Warning", L"Model that should worked is not current model", {L"OK"});
  return true;
}

// Reads the selected list. False, with an error line, for one that can't be read or is an empty file: a run of nothing
// would still leave its record in every model.
bool openList() {
  const std::wstring path = selectedListPath();
  creoLog(L"<KVD> Kelvane - open Selected XML", kError);
  auto loaded = xmlLoadFile(path);
  logWrite(path, kDebug);
  if (loaded && xmlChildCount(loaded.value->root()) == 0) loaded.fault = {L"it holds no element", path};
  if (!loaded) {
    logWrite(loaded.fault.sentence(), kError);
    return false;
  }
  run()->document = std::move(loaded.value);
  run()->list = documents::actionList(*run()->document);
  return true;
}

// The current model as the Body's title names it; empty without one.
std::wstring bodyTitle() {
  const auto current = ProMdlCurrentGet();
  if (!current) return {};
  return text::format(msgText(Message::runBody), ProMdlNameGet(current.value).value,
                      typeExtension(ProMdlTypeGet(current.value).value));
}

void runHead() {
  logMsgPlain(Message::runHead, kTitle);
  pluginState().section = L'H';
  runSection(run()->list.head, "");
}

// Lines that follow are about no action: the last one isn't to blame.
void blameNoAction() {
  PluginState& state = pluginState();
  state.currentAction.clear();
  state.currentModelText.clear();
  state.actionIndex = 0;
}

void tellUnrecorded() {
  if (trace::recordingFault().empty()) return;
  blameNoAction();
  logWrite(trace::recordingFault(), kWarning);
}

// Why the run ends before its first Body.
void tellNotCheckedOut(const std::vector<std::string>& rows) {
  const PluginState& state = pluginState();
  blameNoAction();
  logWrite(L"A file isn't checked out", kError);
  logWrite(L"A file isn't checked out", kError);
  if (state.noPdmServerInformations == 1) return logWrite(kNoServerLabels, kError);
  for (const std::string& row : rows) logWrite(L"not checked out: " + text::fromUtf8(row), kError);
}

// The chosen rows are counted, and those of which that can't be told yet; false, with its lines, when some of them
// aren't checked out but must be.
bool countChosen(int& chosen) {
  std::vector<std::string> refused;
  for (const std::string& row : run()->rows) {
    if (const auto state = readChosen(row); state && !state.value) continue;
    ++chosen;
    if (pluginState().cancelIfNotCheckedOut == 1 && !showsCheckedOut(row)) refused.push_back(row);
  }
  if (!refused.empty()) tellNotCheckedOut(refused);
  return refused.empty();
}

void finishModel() {
  ++run()->progress;
  showProgress();
}

// The lines that follow are about this row, and until its first action about none.
void nameRow(const std::string& row) {
  trace::remark("row", {text::fromUtf8(row)});
  pluginState().currentAction.clear();
  pluginState().actionIndex = 0;
  pluginState().currentModelText = text::format(msgText(Message::workNowOn), text::fromUtf8(row));
  logWrite(pluginState().currentModelText, kTitle);
}

// Is it the row's turn? A check button that can't be read has its line, and the model isn't worked.
bool hasItsTurn(const std::string& row) {
  const auto state = readChosen(row);
  if (!state) {
    nameRow(row);
    logWrite(L"Can't read whether the model is chosen, it isn't worked", kError);
    finishModel();
  } else if (!state.value) {
    logWrite(L"<KVD> Kelvane - the file is deaktivatet in List", kDebug);
  }
  return state && state.value;
}

// One chosen row needs no window: Body runs where Creo stands.
void runOnlyRow() {
  const std::shared_ptr<Run> kept = run();
  for (const std::string& row : kept->rows) {
    if (!hasItsTurn(row)) continue;
    reports::reportsNextRowAll(reports::reportRegistry());
    runSection(kept->list.body, row);
    if (!run()) return;  // an action closed the tool
    finishModel();
    if (rowType(row) == ProMdlType::drawing && pluginState().triggerType == 0) refreshDrawing();
    break;
  }
  finishRun();
}

bool isCurrentModel(const std::wstring& name, ProMdlType type) {
  const auto current = ProMdlCurrentGet();
  return current && ProMdlTypeGet(current.value).value == type &&
         text::upper(ProMdlNameGet(current.value).value) == text::upper(name);
}

enum class Opening { here, asked, skipped };

// The row's model gets a window, or has one. False: there is none, as without graphics.
bool takeWindow(ProMdl model, const std::wstring& name, ProMdlType type) {
  Run& state = *run();
  if (const auto window = ProMdlWindowGet(model)) {
    state.window = window.value;
    return true;
  }
  const auto created = ProObjectwindowCreate(name, type);
  state.window = created.value;
  state.windowCreated = static_cast<bool>(created);
  return state.windowCreated;
}

// Asks for the run's window. False: it won't come forward, and nothing may wait for it.
bool windowIsAskedFor() {
  const int window = run()->window;
  const ProError heard = ProNotificationSet(ProNotifyType::windowActivated, [](const ProNotification& event) {
    onWindowActivated(event.window);
    return ProNoError;
  });
  const auto before = ProWindowCurrentGet();
  if (heard == ProNoError && ProWindowActivate(window) == ProNoError) {
    if (before && before.value == window) ProWindowRepaint(window);
    return true;
  }
  ProNotificationUnset(ProNotifyType::windowActivated);
  return false;
}

// Brings a row's model before Creo. `asked`: its window comes forward once control is back with Creo. Without a window
// the row is worked where Creo stands, as an only row is.
Opening openRow(const std::string& row) {
  Run& state = *run();
  state.windowCreated = false;
  const std::wstring name = rowModelName(rowNow(row));
  const ProMdlType type = rowType(row);
  state.waitingRow = row;
  if (isCurrentModel(name, type)) {
    state.window = ProWindowCurrentGet().value;
    return Opening::here;
  }
  const auto model = ProMdlRetrieve(name, type);
  if (!model) {
    nameRow(row);  // else the line would accuse the model before it
    logWrite(L"Can't retrieve model", kError);
    finishModel();
    return Opening::skipped;
  }
  const bool hasWindow = takeWindow(model.value, name, type);
  if (hasWindow) ProMdlDisplay(model.value);
  if (stopsAt(afterDisplay)) return Opening::skipped;
  if (hasWindow && windowIsAskedFor()) return Opening::asked;
  if (!pluginState().workerMode) creoLog(L"<KVD> main - no window comes forward for " + text::fromUtf8(row));
  return Opening::here;
}

// Takes the run's own window away. Closing is for the window that the person has: the one that came forward, or his
// empty one that was taken.
void leaveWindow(Opening opening) {
  const int window = run()->window;
  const bool isMade = opening == Opening::asked && ProWindowCurrentSet(window) == ProNoError;
  const auto current = ProWindowCurrentGet();
  const bool isPersons = current ? current.value == window : isMade;
  if (isPersons) {
    ProError closed = ProWindowCurrentClose();
    if (closed != ProNoError) closed = ProWindowCurrentClose();
    if (closed == ProNoError) closing() = window;  // as long as it stands, it is the one that the person works in
    if (closed == ProNoError || closed == ProNotFound) return;  // ProNotFound: Creo's first one, emptied already
  }
  const ProError left = ProWindowDelete(window);
  // ProBadInputs: an action has taken it away already.
  if (left != ProNoError && left != ProBadInputs) logWrite(L"A window that the run opened stays", kWarning);
}

// Body on the model that stands before Creo now; opening: asked where its window came forward for it.
void runWaitingRow(Opening opening) {
  const std::shared_ptr<Run> kept = run();
  Run& state = *kept;
  reports::reportsNextRowAll(reports::reportRegistry());
  if (const auto current = ProMdlCurrentGet()) creoLog(ProMdlNameGet(current.value).value);
  if (!stopsAt(insteadOfBody)) runSection(state.list.body, state.waitingRow);
  if (!run()) return;  // an action closed the tool
  if (state.windowCreated) leaveWindow(opening);
  finishModel();
}

// Goes on until a window has to be waited for, pass by pass: parts, assemblies, drawings. bodyRan: the row before the
// next one had its Body; the notification for the drawing refresh is set only behind a row that was passed over.
void advance(bool bodyRan) {
  while (Run* state = run().get()) {
    if (state->row == state->rows.size()) {
      state->row = 0;
      if (++state->pass < kPasses.size()) continue;
      if (bodyRan) {
        runRefreshMacros();
      } else {
        refreshDrawing();
      }
      finishRun();
      return;
    }
    const std::string& row = state->rows[state->row++];
    bodyRan = false;
    if (rowType(row) != kPasses[state->pass] || stopsAt(insteadOfOpening)) continue;
    if (!hasItsTurn(row)) continue;
    const Opening opening = openRow(row);
    if (opening == Opening::asked) return;
    if (opening == Opening::here) runWaitingRow(opening);
    bodyRan = opening == Opening::here;
  }
}

void runBodies() {
  Run& state = *run();
  auto rows = ProUITableRownamesGet(dialog(), kModelTable);
  if (!rows) {
    logWrite(L"The rows of the table can't be read, so no model is worked", kError);
    return endEarly();
  }
  state.rows = std::move(rows.value);
  int chosen = 0;
  if (!countChosen(chosen)) return endEarly();
  if (chosen > 0 && ProUIProgressbarMaxintegerSet(dialog(), "kvaneProgressBar", chosen) != ProNoError) {
    creoLog(L"<KVD> main - Error at set ProUIProgressbarMaxintegerSet");
  }
  showProgress();
  if (stopsAt(afterBarSet)) return endEarly();
  if (chosen == 0) return finishRun();
  if (chosen == 1) return runOnlyRow();
  ProWindowClear(kAnyWindow);
  advance(false);
}

// An action that breaks off is a failure like any other: the run goes on, and Creo gets no exception of ours.
void carryOut(const XmlNode& task, Subject& subject) {
  try {
    if (dispatchAction(task, subject) != wrongVersion) return;
    logWrite(
        L"Function isn't used because false version code, please update Kelvane User and Kelvane to the newest version",
        kError);
  } catch (const std::exception& fault) {
    logWrite(text::fromUtf8(fault.what()), kError);
  }
}

}  // namespace

void setRefreshNotifications() {
  if (pluginState().noProNotifications == 1) return;
  for (const ProNotifyType type : kRefreshTypes) ProNotificationSet(type, followCurrentModel);
}

void unsetRefreshNotifications() {
  closing() = 0;  // nobody hears of it any more
  if (pluginState().noProNotifications == 1) return;
  for (const ProNotifyType type : kRefreshTypes) ProNotificationUnset(type);
}

void startRun() {
  if (runGoesOn()) return;
  unsetRefreshNotifications();
  const auto lists = ProUIOptionmenuNamesGet(dialog(), "kvaneActionlistChooser");
  if (!lists || lists.value.empty()) {
    creoLog(L"<KVD> NO ACTIONLISTS");
    return endEarly();
  }
  if (refusesForeignModel()) return endEarly();
  logClearView();
  forgetWhatWasGivenUp();
  run() = std::make_shared<Run>();
  noteRun(true);
  const std::shared_ptr<Run> kept = run();
  trace::remark("run", {pluginState().currentKvz, pluginState().currentList});
  tellUnrecorded();
  if (!openList() || stopsAt(afterListOpened)) return endEarly();
  pluginState().controlName.clear();
  const std::wstring title = bodyTitle();  // Head may leave another model current
  runHead();
  if (!run()) return;
  if (stopsAt(afterHead)) return endEarly();
  if (!title.empty()) logWrite(title, kTitle);
  pluginState().section = L'B';
  runBodies();
}

void onWindowActivated(int window) {
  if (!run()) return;
  const auto current = ProWindowCurrentGet();
  if ((current ? current.value : window) != run()->window) {
    creoLog(L"KVD: Current ID is not Window ID");
    return;
  }
  ProNotificationUnset(ProNotifyType::windowActivated);
  closing() = 0;  // control was back
  runWaitingRow(Opening::asked);
  advance(true);
}

void runSection(const XmlNode* section, const std::string& rowName) {
  PluginState& state = pluginState();
  Subject subject;
  if (!rowName.empty()) {
    nameRow(rowName);
    subject.name = rowModelName(rowNow(rowName));
    subject.extension = typeExtension(rowType(rowName));
    const auto model = ProMdlRetrieve(subject.name, rowType(rowName));
    if (!model) return logWrite(L"Can't retrieve model", kError);
    subject.model = model.value;
    if (state.checkModifiable) {
      const auto modifiable = ProMdlIsModifiable(subject.model, state.pdmChangeDialog == 1);
      if (!modifiable) return logWrite(L"Can't read whether the model can be modified, it isn't worked", kError);
      if (!modifiable.value) return logWrite(L"the model can't be modified: " + text::fromUtf8(rowName), kDebug);
    }
  }
  if (stopsAt(beforeActions)) return;
  int index = 0;
  if (section) {
    xmlEachChild(*section, [&](const XmlNode& task) {
      state.actionIndex = index++;
      carryOut(task, subject);
    });
  }
  if (!stopsAt(afterActions) && !rowName.empty()) writeHistory(subject.model);
}

void finishRun() {
  if (!run()) return;
  PluginState& state = pluginState();
  const std::shared_ptr<Run> kept = run();
  logMsgPlain(Message::runFoot, kTitle);
  state.section = L'F';
  runSection(kept->list.foot, "");
  if (!run()) return;
  reports::reportsCloseAll(reports::reportRegistry());
  leaveRun();
  logMsgPlain(Message::runFinished, kTitle);
  for (int i = 0; i < 3; ++i) logWrite(L"", kTitle);
  if (state.autoclose == 1) {
    screen().close();
    endTrigger();
    return;
  }
  logRender();
  leaveTool();
}

void abandonRun() {
  if (!run()) return;
  ProNotificationUnset(ProNotifyType::windowActivated);
  ProNotificationUnset(ProNotifyType::pageControlShown);
  leaveRun();
  endTrigger();
}

}  // namespace run

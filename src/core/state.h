// The one record of the plug-in: settings from the configuration files and the state of the tool and of a run. It
// lives from first use to the end of the process; reset() puts the defaults back for the next load.
#pragma once

#include <array>
#include <memory>
#include <string>

#include "core/option_source.h"

namespace reports {
class ReportRegistry;
}

namespace core {

// The seven events that can start a list. The numbers are those of the trigger types, less one.
enum class Trigger : int {
  afterCreate,
  afterOpen,
  beforeSave,
  afterOccupy,
  afterRegenerate,
  beforeRegenerate,
  beforeErase
};
constexpr int kTriggerCount = 7;

// Per trigger: the package and the list, five digits for the check buttons, two digits for the history, the dialog
// kept.
struct TriggerSettings {
  std::wstring startKvz;
  std::wstring startConf = L"11101";
  std::wstring startRework;
  int startShowUI = 0;
};

struct PluginState {
  std::wstring checkParameter, checkParameterValue;  // the indicator's parameter and what it should be
  std::wstring version = L"8.0.1.1";
  std::string dialogName = "kvanerunner";
  int logVisible = 0, treeVisible = 0;  // toggled state of the log and the table side

  // Folders, each with its closing backslash.
  std::wstring kvzPath = L"c:\\kvztemp\\";   // packages
  std::wstring binPath = L"c:\\bin\\";       // the plug-in's own
  std::wstring tempPath = L"c:\\tmp2\\";     // logs, reports, unpacked packages
  std::wstring openKvzPath = L"c:\\tmp2\\";  // the selected package's folder, also called project directory
  std::wstring confPath = L"c:\\conf\\";     // kvd_main.cfg
  std::wstring logFile = L"c:\\log.txt";
  std::wstring unpackedSubdir;          // from which the packages' folders are named
  std::wstring creoVersion, creoBuild;  // as Creo passed them
  std::wstring msgFile = L"kvusermsg.txt";

  int loglevel = 0;  // the view's filter: 0, 1, 2 or 8
  int writeWelcomeMessage = 1;
  int logType = 1;  // 1: the view is a tree
  int showNoWarnings = 1;
  int forEveryRunNewLogFile = 1;
  int noDebugInLogFile = 1;  // 0: level-8 lines too, and the start's progress in Creo's area
  int noDebugInCreoLog = 1;  // creoLog writes levels below this
  int noPdmServerInformations = 0;
  int filterWarningOnParent = 0;
  int noUserCfg = 0;
  std::array<OptionSource, 50> optionSource = allDefault();
  int logToTextArea = 0;

  int filterPrt = 1, filterDrw = 1, filterAsm = 1, filterCurmod = 0, filterInst = 0;

  int triggerType = 0;  // 0, or 1 to 7 while a trigger's run goes on
  std::wstring mac = L"00:00:00:00:00:00";
  std::wstring currentDate;  // of the tool's start, "%d.%m.%Y %H:%M"
  std::wstring company = L"OSTELO Works", companyShort = L"OSTELO";
  std::wstring columnParameter;
  int columnParameterWidth = 10;
  std::wstring extFilter;
  int useGlobFilterNow = 0;  // the list filter's mode: 0 off, 1 on, -1 as the block says
  int useGlobFilter = -1;
  int writeExtData = 1;
  int autoUnsetReworkedData = 1;
  int cancelIfNotCheckedOut = 0;
  std::array<TriggerSettings, kTriggerCount> triggers;
  int autoclose = 0;
  int triggerKeepsDialog = 0;
  std::wstring currentKvz, currentList;  // as chosen; the history stores them
  std::wstring controlName;
  int breakpoint = 0;
  int noProNotifications = 0;
  int addInstances = 0, addDrawings = 0, addInherited = 0;
  int startTriggerWithoutKvd = 0;
  bool deleteLogFiles = true;

  wchar_t section = L' ';  // 'H', 'B', 'F' or blank
  int actionIndex = 0;
  std::wstring currentAction, currentModelText;  // what warning and error lines name
  int pdmChangeDialog = 1;
  bool checkModifiable = true;
  std::wstring currentExt, currentName;  // the model for which the table was last built
  std::wstring savedDirectory;

  int numberCounter = 0;                             // @number@
  std::shared_ptr<reports::ReportRegistry> reports;  // the open reports of a run

  bool toolOpen = false;    // the main dialog exists
  bool workerMode = false;  // Creo without graphics
  int visitCount = 0;       // how often the tool was started

  TriggerSettings& trigger(Trigger t) { return triggers[static_cast<std::size_t>(t)]; }
  void reset() { *this = PluginState(); }
};

PluginState& pluginState();

}  // namespace core

// Runs that Creo's notifications start: a list of the configuration is run on the model that an event is about.
#pragma once

#include <string>

#include "creo/ProTypes.h"

namespace run {

// Hangs in a trigger for each event that has a list in the configuration. One whose digits aren't five times 0 or 1 is
// left out, with a line.
void attachTriggers();
void detachTriggers();
// Hangs in again what the tool takes out when it closes.
void reattachTriggers();

// What every trigger comes down to: opens the tool where it isn't open, selects the package and the list ("standards
// clean", without extensions), sets the history switches (empty, or two digits) and the check buttons (five digits),
// fills the table from the model (Creo's current one when it is null) and presses start. showUI: 1 leaves the dialog
// open behind the run. type: 1 to 7. 0: the list was started, or the trigger stays out; ProStopVisit: the list value or
// what it names is at fault, a line says why. A run over several models goes on behind the return.
int fireTrigger(creo::ProMdl model, const std::wstring& list, const std::wstring& history, const std::wstring& conf,
                int showUI, int type);

// Ends a trigger's run: the folder and the history switch that it found come back, and the next trigger may fire.
// Nothing while none runs.
void endTrigger();

// "before save"; empty for a type outside 1 to 7.
std::wstring triggerName(int type);

// Is told of the triggers that fire, for programs that show them.
class TriggerObserver {
 public:
  virtual ~TriggerObserver() = default;
  struct Firing {
    int type = 0;        // 1 to 7
    creo::ProMdl model;  // for which the table will be built
    std::wstring list;   // as the configuration has it: "standards clean"
  };
  virtual void triggerBegins(const Firing& firing) = 0;
  // The run is over. result: 0, or ProStopVisit where it couldn't be started.
  virtual void triggerEnds(int result) = 0;
};
// Not owned; null takes it away.
void observeTriggers(TriggerObserver* observer);

}  // namespace run

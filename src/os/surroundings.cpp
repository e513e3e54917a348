#include "os/surroundings.h"

namespace os {

Surroundings& surroundings() {
  static Surroundings current{{}, diskFiles(), machineClock(), machineProcesses(), machineClipboard()};
  return current;
}

}  // namespace os

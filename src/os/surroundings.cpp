#include "os/surroundings.h"

namespace os {

Surroundings& surroundings() {
  static Surroundings current{{}, diskFiles(), machineClock(), machineProcesses()};
  return current;
}

}  // namespace os

// The confinement of lists, as the plug-in knows it: what the configuration says of it, the tool's own places, and the
// line that tells a refusal.
#pragma once

#include <string>
#include <vector>

#include "os/confine.h"

namespace core {

// kvd_confine, and kvd_allow_... and kvd_deny_...
struct ConfinementSettings {
  bool isOn = false;
  std::wstring odd;                    // the value of kvd_confine where it is neither 0 nor 1; it counts as 1
  std::vector<std::wstring> notWhole;  // names that are no whole paths or no servers; they count for nothing
  std::vector<os::Need> allowed, denied;
};
ConfinementSettings& confinementSettings();

// Opens what the tool itself stands on: the temp folder for writing, without its configuration and without what is
// unpacked there; packages, what is installed and the configuration for reading.
void openToolPlaces(os::Grants& grants, std::wstring_view temp);

// Confines from now on, where kvd_confine says so: until endConfinement(), and beside what confines already. The
// working folder of this moment is open for writing. Reads the state, so that it comes behind the configuration. tell:
// as tellRefused().
void confineAsConfigured(void (*tell)(const os::Asked&));
void endConfinement();

// An error line of the log: "Refused: read /etc/passwd (--allow-read=/etc isn't granted)". Once for each action on each
// model, and through a silence, since a refusal shows nothing of what the silence keeps.
void tellRefused(const os::Asked& asked);
// Those that no log tells, as the plug-in hasn't started or has ended, each once: they count as told from then on.
std::vector<std::wstring> takeUntoldRefusals();

}  // namespace core

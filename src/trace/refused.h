// What a confined list was refused. The refusal is told by lines of the log, so that it stands in the trace as a call
// of the plug-in: played, it is refused and told again, whatever is granted there.
#pragma once

#include <string>

#include "os/confine.h"
#include "trace/tape.h"

namespace trace {

// "read z:\\etc\\passwd": as it is told, but with paths in the system's form, which is the same wherever folders lie.
std::wstring refusalOf(const os::Asked& asked);
// Tells it, and records that where something is recorded.
void tellRefused(const os::Asked& asked, void (*tell)(const os::Asked&));
// As the arguments of such a call say.
os::Asked readRefused(Reading& arguments);
// Is this what the trace has as refused here? Then it is told as it was.
bool isRefused(Player& player, const os::Asked& asked);

}  // namespace trace

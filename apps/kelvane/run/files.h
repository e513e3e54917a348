// The files of a run beside its models: its log, what its list wrote, and copies of both.
#pragma once

#include <string>
#include <vector>

#include "kelvane/base/console.h"
#include "kelvane/log/events.h"
#include "kelvane/run/options.h"

namespace kelvane {

// Where a run's log is wanted: by --log, else beside the models. There a dry run writes none, but no report either.
std::wstring logTarget(const RunOptions& options, const std::wstring& models);

// False for a dry run that isn't told where to: it leaves the models' folder alone.
bool keepsLog(const RunOptions& options);
// Copies the log to where it is wanted and gives that place in the machine's form; empty where there is nothing to
// copy. A log that can't be put there is trouble on the console and for the caller, and no more.
std::string keepLog(const std::wstring& log, const RunOptions& options, const std::wstring& models, Console& console,
                    bool& troubled);

// Shows a line for each folder that the run wrote into, and tells an event for each file.
void showPlaces(const std::vector<std::wstring>& written, Console& console, Events& events);

// Copies the files to the folder, each under the place it had below the models' folder or the package's, written under
// another name first. A Fault when one can't be written.
void collect(const std::vector<std::wstring>& files, const std::string& folder);

}  // namespace kelvane

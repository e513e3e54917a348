// What can be told of a confined run's grants before its letters stand.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "kelvane/run/options.h"
#include "os/grants.h"

namespace kelvane {

// creoOptions: the session's, by name. granted, denied: by the options and by what is kept. models: the folder of
// models, in the system's form; it needn't be there yet.
os::Grants grantsBeforehand(const RunOptions& options,
                            const std::vector<std::pair<std::wstring, std::wstring>>& creoOptions,
                            const std::vector<os::Need>& granted, const std::vector<os::Need>& denied,
                            std::wstring_view models);

}  // namespace kelvane

// Values of Creo's options that a list saved under a name, to set them again later in its run.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace actions {

struct SavedConfigOption {
  std::wstring option;
  std::vector<std::wstring> values;  // in the option's order; none: it wasn't set
};
// What was saved under exactly that name, in the order of saving; the same option may be there several times. Valid
// until the next save.
const std::vector<SavedConfigOption>& savedConfigOptions(std::wstring_view saveName);
void saveConfigOption(std::wstring_view saveName, SavedConfigOption saved);
// The run is over: a name holds within one run.
void freeSavedConfigOptions();

}  // namespace actions

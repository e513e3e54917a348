// Values of Creo's options that a list saved under a name, to set them again later in its run.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace engine {

struct SavedConfigOption {
  std::wstring saveName, option;
  std::vector<std::wstring> values;  // in the option's order; none: it wasn't set
};
// In the order of saving; the same name and option may be there several times.
const std::vector<SavedConfigOption>& savedConfigOptions();
void saveConfigOption(SavedConfigOption saved);
// The run is over: a name holds within one run.
void freeSavedConfigOptions();

}  // namespace engine

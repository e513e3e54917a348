// List components.
#pragma once

#include "creo/ProUI.h"

namespace creo {

// The names of a list's entries, with labels alike; nothing is selected.
ProError ProUIListNamesSet(const std::string& dialog, const std::string& list, std::vector<std::string> names);
// In the order of the names, which are set before. ProBadInputs: another number of them.
ProError ProUIListLabelsSet(const std::string& dialog, const std::string& list, std::vector<std::wstring> labels);
Got<std::vector<std::wstring>> ProUIListLabelsGet(const std::string& dialog, const std::string& list);

}  // namespace creo

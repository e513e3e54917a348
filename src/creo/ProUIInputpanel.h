// Input panels of dialogs: a line of text that a person types. ProNotFound: no such dialog or component; ProBadInputs:
// one of another kind.
#pragma once

#include "creo/ProUI.h"

namespace creo {

Got<std::wstring> ProUIInputpanelValueGet(const std::string& dialog, const std::string& panel);
ProError ProUIInputpanelValueSet(const std::string& dialog, const std::string& panel, const std::wstring& value);
// Runs when a person presses Enter in it.
ProError ProUIInputpanelActivateActionSet(const std::string& dialog, const std::string& panel, ProUIAction action);
ProError ProUIInputpanelShow(const std::string& dialog, const std::string& panel);
ProError ProUIInputpanelHide(const std::string& dialog, const std::string& panel);
Got<bool> ProUIInputpanelIsVisible(const std::string& dialog, const std::string& panel);

}  // namespace creo

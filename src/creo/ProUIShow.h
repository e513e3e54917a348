// Showing and hiding single components, and whether they are shown themselves; trees and layouts have theirs in
// ProUITree.h and ProUI.h. ProNotFound: no such dialog or component; ProBadInputs: one of another kind.
#pragma once

#include <string>

#include "creo/ProTypes.h"

namespace creo {

ProError ProUILabelShow(const std::string& dialog, const std::string& label);
ProError ProUILabelHide(const std::string& dialog, const std::string& label);
ProError ProUIPushbuttonShow(const std::string& dialog, const std::string& pushbutton);
ProError ProUIPushbuttonHide(const std::string& dialog, const std::string& pushbutton);
ProError ProUICheckbuttonShow(const std::string& dialog, const std::string& checkbutton);
ProError ProUICheckbuttonHide(const std::string& dialog, const std::string& checkbutton);
Got<bool> ProUICheckbuttonIsVisible(const std::string& dialog, const std::string& checkbutton);
ProError ProUIOptionmenuShow(const std::string& dialog, const std::string& optionmenu);
ProError ProUIOptionmenuHide(const std::string& dialog, const std::string& optionmenu);
Got<bool> ProUIOptionmenuIsVisible(const std::string& dialog, const std::string& optionmenu);
ProError ProUITextareaShow(const std::string& dialog, const std::string& textarea);
ProError ProUITextareaHide(const std::string& dialog, const std::string& textarea);
ProError ProUITableShow(const std::string& dialog, const std::string& table);
ProError ProUITableHide(const std::string& dialog, const std::string& table);

}  // namespace creo

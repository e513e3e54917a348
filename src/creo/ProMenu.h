// Creo's menu bar and the commands behind it.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

// What an access function answers: 3 is available.
constexpr int kCommandAvailable = 3;
struct ProCommand {
  int id = 0;
};

// ProExists: the menu is there already. Texts are keys of the message file.
ProError ProMenubarMenuAdd(const std::string& menu, const std::string& labelKey, const std::string& before,
                           const std::wstring& messageFile);
Got<ProCommand> ProCmdActionAdd(const std::string& name, std::function<void()> action, std::function<int()> access);
ProError ProMenubarmenuPushbuttonAdd(const std::string& menu, const std::string& button, const std::string& labelKey,
                                     const std::string& helpKey, const std::wstring& messageFile, ProCommand command);
ProError ProCmdDesignate(ProCommand command, const std::string& labelKey, const std::string& helpKey,
                         const std::string& descriptionKey, const std::wstring& messageFile);
// ProNotFound: no such image in the application's resources.
ProError ProCmdIconSet(ProCommand command, const std::string& icon);

}  // namespace creo

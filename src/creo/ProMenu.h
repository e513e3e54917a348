// Creo's menu bar and the commands behind it.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

// What an access function answers: 3 is available.
constexpr int kCommandAvailable = 3;
struct ProCommand {
  int id = 0;
};

// Once a session: ProExists, the menu is there already. Texts are keys of the message file; ProNotFound: one isn't in
// it.
ProError ProMenubarMenuAdd(const std::string& menu, const std::string& labelKey, const std::string& before,
                           const std::wstring& messageFile);
// Once a session: ProExists, there is a command of that name.
Got<ProCommand> ProCmdActionAdd(const std::string& name, std::function<void()> action, std::function<int()> access);
// Once a session: a button that is there stays as it is. ProNotFound: no such menu or command, or a text that isn't in
// the message file.
ProError ProMenubarmenuPushbuttonAdd(const std::string& menu, const std::string& button, const std::string& labelKey,
                                     const std::string& helpKey, const std::wstring& messageFile, ProCommand command);
// Lets a person place the command in the ribbon. ProNotFound: no such message file, or a text that isn't in it.
ProError ProCmdDesignate(ProCommand command, const std::string& labelKey, const std::string& helpKey,
                         const std::string& descriptionKey, const std::wstring& messageFile);
// The image's file with its extension. ProNotFound: no such image in the application's resources; one that Creo can't
// show fails, too.
ProError ProCmdIconSet(ProCommand command, const std::string& icon);

}  // namespace creo

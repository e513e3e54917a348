#pragma once

#include <string>

namespace os {

// What the machine's list of users has for the one of this process; nothing where it doesn't know that.
struct User {
  std::string name, home;
};
User ownUser();

}  // namespace os

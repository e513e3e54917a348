// A vault, a workspace and a user as they stand on the command line.
#pragma once

#include <string>

#include "headless/vault/servers.h"

namespace kelvane {

// workspace: empty takes the name of the models' folder; user: empty takes who is logged in.
headless::VaultConnection connection(const std::string& vault, const std::string& workspace, const std::string& user,
                                     const std::string& models);
// An answer that isn't good ends the verb.
void require(const headless::VaultAnswer& answer, const std::string& whenNotFound);

}  // namespace kelvane

// What a person may do in the page, as rows: each goes the way that a press in Creo goes.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "headless/session.h"

namespace kelvane::view {

// Empty for what can be done; else what is wrong with it: no object, an unknown "do", a member that is missing or of
// another type.
std::string faultOf(const nlohmann::json& action);
// Does it. Empty, or why nothing was done. The session isn't settled.
std::string carryOut(headless::Session& session, const nlohmann::json& action);

// A member that faultOf has found to be a text.
inline std::string textOf(const nlohmann::json& action, const char* member) {
  return action.value(member, std::string());
}

}  // namespace kelvane::view

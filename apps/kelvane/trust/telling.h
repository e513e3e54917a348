// Needs of a package as people and programs read them.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "kelvane/trust/needs.h"

namespace kelvane {

// By permission, a line each: "run  python3  actionlists/release.xml:7: B1: it starts 'python3 stamp.py'". What only
// the run tells has a "?" for its resource, an act on the server the word "server".
std::vector<std::string> needLines(std::vector<PackageNeed> needs);
// `permission`, `resource` where it is known, `file`, `line`, `action` where it is one's, `text`.
nlohmann::ordered_json needsJson(const std::vector<PackageNeed>& needs);

}  // namespace kelvane

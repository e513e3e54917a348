// What of the surroundings an action of a list uses: programs, addresses on the web, paths outside its package. And
// what else is no fault but worth knowing: numbers that lose their units, parameters that are made elsewhere, codes
// whose letters readers guess.
#pragma once

#include <string>
#include <vector>

#include "actions/action.h"
#include "core/xml.h"

namespace kelvane {

struct PackageUse {
  std::string kind;  // "program", "address", "path", "units", "letters", "options"
  std::string text;  // "it starts the program 'd:\tools\mail.cmd -q'"
};
// As the attributes stand, in their order; variables aren't replaced.
std::vector<PackageUse> usesOfAction(const core::XmlNode& task, const actions::Action& action);
// Of an item of a filter: whole paths alone, since any attribute may be a pattern.
std::vector<PackageUse> usesOfFilterItem(const core::XmlNode& item);

// Does the attribute name a file or a folder?
bool isPath(core::Kind kind);
constexpr std::wstring_view kProjectDirectory = L"@project_dir@";
constexpr std::wstring_view kUnit = L"unit_";  // the attributes of a new parameter's unit

}  // namespace kelvane

// RELAX NG schemas of action lists and filter files, made from the rows of actions and filters: what an attribute can
// be depends on the type of its element.
#pragma once

#include <string>

namespace kelvane {

// In the XML syntax, without its last line's end. Lists hold all actions that do something; removed ones and those
// without an effect are no part of it.
std::string listSchema();
std::string filterSchema();

}  // namespace kelvane

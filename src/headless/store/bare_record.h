// Files that hold one record of a document, such as a symbol definition or a table.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include "headless/store/json.h"

namespace headless {

// Gives an object the members that a document must have of a record and its file needn't: an id of 0 and the name of
// the file. What the file says of these two and of `dropped` is passed over.
void nameRecord(Json& object, std::string name, std::initializer_list<std::string_view> dropped);

}  // namespace headless

// The files that exports write.
#pragma once

#include <string>
#include <string_view>

#include "creo/ProTypes.h"

namespace headless {

class Models;  // model/models.h

// Does it begin with a drive, a server or the root?
bool isWholePath(std::wstring_view path);
// With backslashes; a path that isn't whole is taken from the working folder.
std::wstring exportPath(const Models& models, std::wstring_view path);
// Writes the whole file; an old one stays until the new one is whole. ProCantWrite, with a line of the message area.
creo::ProError writeExport(const Models& models, std::wstring_view path, std::string_view bytes);

}  // namespace headless

// Bringing models into memory: the document itself, then, without recursion, whatever it uses.
#pragma once

#include <string_view>

#include "creo/ProMdl.h"

namespace headless {

class Models;  // models.h

// The model in memory of that name, else the one that the folders have, or the PDM server. name: plain, or
// "NAME<GENERIC>". ProBadInputs: no name or no type; ProNotFound: there is none; ProGeneralError, with a line of the
// message area: it can't be read, or be built from its row. What it uses and can't be retrieved has a line each.
creo::Got<creo::ProMdl> retrieveModel(Models& models, std::wstring_view name, creo::ProMdlType type);

}  // namespace headless

// Files of other systems as models.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

// Creo's numbers of the kinds of files.
enum class ProIntfType : int { iges = 1, step = 6 };

// Makes a new model of what a file holds: a part with all its bodies as one, or an assembly with its structure, a part
// for each product. path: whole. name: of the new model, at most 31 characters; those of an assembly's parts come from
// the file, with a number where such a model is there already. The models have the file's unit of length; they are on
// disk once they are saved. ProNotFound: no such file; ProExists: there is a model of that name; ProBadInputs: the path
// isn't whole, or no model can be called so; ProInvalidType: neither a part nor an assembly; ProNoLicense: nothing of
// that kind can be read; ProGeneralError: the file can't be read, the message area says why. Then nothing was made.
Got<ProMdl> ProIntfimportModelWithOptionsCreate(const std::wstring& path, ProIntfType fileType, ProMdlType type,
                                                const std::wstring& name);

}  // namespace creo

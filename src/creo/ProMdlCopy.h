// Other names for models, and models of their own made from others.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

// Changes the name in memory; the next save writes a document of the new name, the old one stays on disk. Models in
// memory that use the model follow. Renaming an instance renames its row; the models that use it keep the name that
// they know, which another model may take. ProExists: another model in memory, a row of the same document or, for no
// instance, a document in a folder that is searched has the name; ProBadInputs: it can't be a file's name (of an
// instance: it is empty); ProGeneralError: the instance is locked.
ProError ProMdlRename(ProMdl model, const std::wstring& name);
// A model of its own in memory with the same content and without a folder; a save writes it to the working folder, as
// the next version where there is such a document. Of an instance: with its values, features and components, those of
// the generic that it leaves out not among them. A copy has no family table and is open to changes. ProExists: a model
// in memory, or a row of the same document, has the name; ProBadInputs: it can't be a file's name.
Got<ProMdl> ProMdlCopy(ProMdl model, const std::wstring& name);
// An empty name takes it away. ProBadInputs: an instance, which has none.
ProError ProMdlCommonnameSet(ProMdl model, const std::wstring& name);

}  // namespace creo

// Other names for models, and models of their own made from others.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

// Changes the name in memory, at most 31 characters; the next save writes a document of the new name, the old one stays
// on disk. Models in memory that use the model follow. Renaming an instance renames its row; the models that use it
// keep the name that they know, which another model may take. ProExists: another model in memory, a row of the same
// document or, for no instance, a document in a folder that is searched has the name; ProBadInputs: it can't be a
// file's name (of an instance: it is empty); ProGeneralError: the instance is locked.
ProError ProMdlRename(ProMdl model, const std::wstring& name);

// What became of a model's documents and of those that use it, as paths.
struct ProRenamed {
  std::wstring reason;                 // why nothing was renamed
  std::vector<std::wstring> followed;  // new versions of the documents that use it
  std::vector<std::wstring> unsaved;   // "TOP.ASM": in memory, from another folder, and not written
  std::vector<std::wstring> left;  // what couldn't be put back after a failure: these files are as they shouldn't be
};
// Renames a model with all versions of its document. The documents of its folder that use it follow, each as its next
// version; what is in memory follows without being saved. Nothing is renamed where it can't be done as a whole:
// ProExists: the name is taken, be it by an instance of a document in the folder; ProBadInputs: Creo takes no such
// name, or the model is an instance; ProGeneralError: with the reason, such as a document that can't be read or that
// another program has written meanwhile.
ProError ProMdlnameRename(ProMdl model, const std::wstring& name, ProRenamed& renamed);
// Has another model of that type the name: in memory, in the model's folder or one that is searched, or in a family
// table of a document there?
Got<bool> ProMdlnameIsTaken(ProMdl model, const std::wstring& name);
// Has any model of that type the name: in memory, or as a document in a folder that is searched? Nothing is retrieved.
Got<bool> ProMdlnameIsTaken(const std::wstring& name, ProMdlType type);
// A model of its own with the same content, saved at once in the working folder, as the next version where there is
// such a document. name: at most 31 characters. Of an instance: with its values, features and components, those of
// the generic that it leaves out not among them. A copy has no family table and is open to changes. ProExists: a model
// in memory, or a row of the same document, has the name; ProBadInputs: Creo takes no such name.
Got<ProMdl> ProMdlCopy(ProMdl model, const std::wstring& name);
// An empty name takes it away. ProBadInputs: an instance, which has none; ProGeneralError: the PDM system owns the
// model, and the option let_proe_rename_pdm_objects doesn't let its name be changed.
ProError ProMdlCommonnameSet(ProMdl model, const std::wstring& name);

}  // namespace creo

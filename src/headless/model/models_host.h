// What the models in memory tell the session that has them, and ask of it.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "creo/ProSolid.h"
#include "headless/model/document.h"
#include "headless/model/saved_document.h"

namespace headless {

struct Model;  // model.h

struct ModelsHost {
  std::function<void(const std::wstring&)> message;
  std::function<void(const SavedDocument&)> saved;
  std::function<void(const RenamedDocument&)> renamed;
  std::function<void(const std::wstring&)> unreadable;  // the path; its message was told
  std::function<void(creo::ProMdl)> erased;
  bool withholdSaves = false;
  // A document was read, before its model is there. Null, as the next one, without a PDM server.
  std::function<void(ModelDocument&)> read;
  // No folder has such a document; true when it has been put into the session's folder of models.
  std::function<bool(const std::wstring&, creo::ProMdlType)> fetch;
  // The folders that options name for models of that type, in their order; a relative path is one of the working
  // folder. Null: none.
  std::function<std::vector<std::wstring>(creo::ProMdlType)> optionFolders;
  // What relations ask for. Null: no body is measured, the document's material is the current one, and units count.
  std::function<creo::Got<creo::ProMassProperty>(const Model&)> mass;
  std::function<std::wstring(const Model&)> currentMaterial;
  std::function<bool()> relationsHeedUnits;
};

}  // namespace headless

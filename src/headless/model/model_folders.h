// The folders that a session has its models in: its own, where it starts, and the working folder.
#pragma once

#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "headless/model/document.h"
#include "headless/store/folder.h"

namespace headless {

class ModelFolders {
 public:
  // withhold: nothing is written; folder: the session's own.
  ModelFolders(bool withhold, const std::wstring& folder);

  // The session's folder of models.
  [[nodiscard]] Folder& home() { return store_.folder(home_); }
  [[nodiscard]] const std::wstring& working() const { return working_; }
  // A relative path goes on from the working folder. False: no such folder.
  bool change(std::wstring_view path);
  // Where a model is looked for, in this order.
  [[nodiscard]] std::vector<Folder*> searched();
  // Is there a document of that name in one of those?
  [[nodiscard]] bool has(std::wstring_view name, creo::ProMdlType type);

  // The bytes of a document that lies at that path, or would lie there if saves weren't withheld.
  [[nodiscard]] os::Result<std::string> read(const std::wstring& path) const { return store_.read(path); }
  // In the session's folder: a document that comes from elsewhere becomes that version. file_exists: it is taken.
  std::error_code add(const std::wstring& name, creo::ProMdlType type, int version, std::string_view bytes);
  // All versions of a document go from the session's folder; models in memory stay.
  std::error_code removeAll(const std::wstring& name, creo::ProMdlType type);

  // For what writes documents.
  [[nodiscard]] Store& store() { return store_; }
  // The document's own.
  [[nodiscard]] Folder& of(const ModelDocument& document) { return store_.folder(document.folder); }

 private:
  Store store_;
  std::wstring working_, home_;
};

}  // namespace headless

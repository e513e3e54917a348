// The folders that a session has its models in: its own, where it starts, the working folder, and those of options.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "headless/model/document.h"
#include "headless/store/folder.h"

namespace headless {

class ModelFolders {
 public:
  // The folders that options name for models of a type.
  using Named = std::function<std::vector<std::wstring>(creo::ProMdlType)>;
  // withhold: nothing is written; folder: the session's own; named: null for none.
  ModelFolders(bool withhold, const std::wstring& folder, Named named);

  // The session's folder of models.
  [[nodiscard]] Folder& home() { return store_.folder(home_); }
  [[nodiscard]] const std::wstring& working() const { return working_; }
  // A relative path goes on from the working folder. False: no such folder.
  bool change(std::wstring_view path);
  // Where a model of that type is looked for, in this order: the working folder, the session's own, those of options.
  [[nodiscard]] std::vector<Folder*> searched(creo::ProMdlType type);
  // Is there a document of that name in one of those?
  [[nodiscard]] bool has(std::wstring_view name, creo::ProMdlType type);

  // The bytes of a document that lies at that path, or would lie there if saves weren't withheld.
  [[nodiscard]] os::Result<std::string> read(const std::wstring& path) const { return store_.read(path); }
  [[nodiscard]] bool has(const std::wstring& path) const { return store_.has(path); }
  // The same as a record, with the size of its bytes.
  struct DocumentRead {
    ModelRecord record;
    std::size_t size = 0;
    std::error_code error;  // of its file
    JsonFault fault;        // of what it holds
    explicit operator bool() const { return !error && !fault; }
  };
  [[nodiscard]] DocumentRead readRecord(const std::wstring& path) const;
  // The line of why it couldn't be read.
  static std::wstring faultOf(const std::wstring& path, const DocumentRead& read);
  // In the session's folder: a document that comes from elsewhere becomes that version. file_exists: it is taken.
  std::error_code add(const std::wstring& name, creo::ProMdlType type, int version, std::string_view bytes);
  // All versions of a document go from the session's folder; models in memory stay.
  std::error_code removeAll(const std::wstring& name, creo::ProMdlType type);

  // For what writes documents.
  [[nodiscard]] Store& store() { return store_; }
  // The document's own.
  [[nodiscard]] Folder& of(const ModelDocument& document) { return store_.folder(document.folder); }
  // The one that its saves go to.
  [[nodiscard]] Folder& target(const ModelDocument& document) { return store_.folder(document.saveFolder()); }

 private:
  Store store_;
  Named named_;
  std::wstring working_, home_;
};

}  // namespace headless

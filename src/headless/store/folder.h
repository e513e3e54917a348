// Folders of model documents. A folder's list is kept as long as the folder's time stands; what the session itself
// writes is entered by hand. What others write at the very moment of such a write may stay unseen until the folder
// changes again: who writes a new version creates its file, which shows a number that is taken.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "creo/ProMdl.h"
#include "os/files.h"

namespace headless {

struct DocumentFile {
  std::wstring name;  // upper case
  creo::ProMdlType type = creo::ProMdlType::unused;
  int version = 0;        // 0: a file without a number
  std::wstring fileName;  // "bracket.prt.3"
};

// "bracket.prt.3" or "bracket.prt" taken apart; nothing for a file that is no model document.
std::optional<DocumentFile> documentFile(std::wstring_view fileName);
// One text for a name and a type, for tables of models. The name is compared case-blind.
std::wstring modelKey(std::wstring_view name, creo::ProMdlType type);
// "prt", case-blind, to its type; unused for any other text.
creo::ProMdlType modelType(std::wstring_view extension);
// "NAME<GENERIC>" taken apart, in upper case; generic is empty for a plain name.
struct ModelName {
  std::wstring name, generic;
};
ModelName modelName(std::wstring_view text);

class Folder {
 public:
  // path: with its closing backslash.
  explicit Folder(std::wstring path) : path_(std::move(path)) {}
  [[nodiscard]] const std::wstring& path() const { return path_; }
  // The current document of that name: the one with the highest number. Null: none.
  const DocumentFile* find(std::wstring_view name, creo::ProMdlType type);
  // All current documents by name and type, in byte order.
  std::vector<DocumentFile> documents();
  // Enters a document that the session wrote, or, in a dry run, would have written.
  void enter(const DocumentFile& file, bool onDisk);
  // The list is made anew at the next question.
  void forget() { listed_ = false; }

  // The name of the topmost generic whose table has that instance; empty for none. The tables of all documents are read
  // at the first question.
  std::wstring genericOf(std::wstring_view instance, creo::ProMdlType type);
  void enterInstances(const DocumentFile& generic, const std::vector<std::wstring>& instances);

 private:
  void list();
  void refresh();
  void add(const DocumentFile& file);
  std::wstring path_;
  bool listed_ = false, unsettled_ = false, instancesKnown_ = false;
  std::wstring stamp_;
  std::unordered_map<std::wstring, DocumentFile> files_;      // by modelKey
  std::unordered_map<std::wstring, std::wstring> instances_;  // modelKey to generic's name
  std::vector<DocumentFile> withheld_;
};

// A document of a folder as it is on disk, without a session.
struct FolderDocument {
  DocumentFile file;
  std::wstring path;
  std::wstring fault;  // "d:\m\a.prt.3:12: reason"; the rest is empty then
  struct Instance {
    std::wstring name, generic;  // the immediate generic
  };
  std::vector<Instance> instances;  // those of nested tables too
  std::vector<creo::ProDependency> uses;
};
// Current documents alone, by name and type.
std::vector<FolderDocument> readFolder(std::wstring_view folder);

// The documents that a session reads and writes. In a dry run what would be written is kept and read back, so that the
// run goes on as if it had been.
class Store {
 public:
  explicit Store(bool withhold) : withhold_(withhold) {}
  Folder& folder(std::wstring_view path);
  os::Result<std::string> read(const std::wstring& path) const;
  // Would that be read?
  [[nodiscard]] bool has(const std::wstring& path) const;
  // It was to be written, in a session that writes nothing.
  [[nodiscard]] bool isWithheld(const std::wstring& path) const { return withheld_.contains(path); }
  // A new document: file_exists where a file of that name is there.
  std::error_code create(Folder& folder, const DocumentFile& file, std::string_view bytes);
  // A new document that was written past the store, or would have been.
  void wrote(Folder& folder, const DocumentFile& file, std::string_view bytes);
  // One that this session wrote.
  std::error_code replace(Folder& folder, const DocumentFile& file, std::string_view bytes);
  // All versions of a document; nothing is removed where writing is withheld.
  std::error_code removeAll(Folder& folder, std::wstring_view name, creo::ProMdlType type);

 private:
  using Writing = std::error_code (os::Files::*)(std::wstring_view path, std::string_view bytes);
  std::error_code put(Folder& folder, const DocumentFile& file, std::string_view bytes, Writing writing);
  bool withhold_;
  std::unordered_map<std::wstring, std::unique_ptr<Folder>> folders_;
  std::unordered_map<std::wstring, std::string> withheld_;  // bytes by path
};

}  // namespace headless

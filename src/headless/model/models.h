// The models in memory. A model is a document, or a row of a family table over its generic's document. Programs and
// tests list, look at and save them here; the operations of creo/ stand on the same functions.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "creo/ProMdlCopy.h"
#include "headless/model/document.h"
#include "headless/session.h"
#include "headless/store/folder.h"

namespace headless {

// A model as its handle stands for it.
struct Model {
  creo::ProMdl handle;
  std::shared_ptr<ModelDocument> document;
  RowRecord* row = nullptr;  // of an instance
  std::wstring name;         // upper case
  [[nodiscard]] creo::ProMdlType type() const { return document->type; }
};

struct ModelInMemory {
  creo::ProMdl handle;
  std::wstring name;
  creo::ProMdlType type = creo::ProMdlType::unused;
  int version = 0;
  std::wstring path;        // of the document; empty for a model that was never saved
  std::wstring instanceOf;  // the immediate generic; empty for none
  bool modified = false;
};

// What the models tell the session.
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
};

// Which documents a save writes, as the option save_objects says.
enum class SaveObjects {
  changedAndSpecified,  // the model's, and what is changed of those that it uses
  changed,              // what is changed of both
  all                   // all of them
};

class Models {
 public:
  Models(ModelsHost host, const std::wstring& folder);

  // ---- for programs and tests
  [[nodiscard]] std::vector<ModelInMemory> list() const;
  // Writes the model's document once more in place of the version that this session wrote last; no notification.
  // ProNotFound: this session hasn't saved it; ProGeneralError as ProMdlSave.
  creo::ProError saveReplacing(creo::ProMdl model);
  // The document as a save would write it now; an instance's is its generic's.
  // ProGeneralError, with a line of the message area: it holds a number that isn't finite.
  [[nodiscard]] creo::Got<std::string> documentText(creo::ProMdl model) const;
  // The bytes of a document that lies at that path, or would lie there if saves weren't withheld.
  [[nodiscard]] os::Result<std::string> written(const std::wstring& path) const { return store_.read(path); }

  // ---- for the operations
  // Null for a handle that has gone.
  [[nodiscard]] Model* find(creo::ProMdl model) const;
  [[nodiscard]] creo::Got<creo::ProMdl> inMemory(std::wstring_view name, creo::ProMdlType type) const;
  creo::Got<creo::ProMdl> retrieve(std::wstring_view name, creo::ProMdlType type);
  // The row as a model. ProGeneralError, with a line: a value doesn't fit its column.
  creo::Got<creo::ProMdl> instance(const std::shared_ptr<ModelDocument>& document, RowRecord& row);
  // Saves the model with what it uses in memory, directly or not; an instance's document is its generic's. What is used
  // and can't be changed (read-only, not checked out) is left out, with a line. ProGeneralError: not all was written.
  creo::ProError save(creo::ProMdl model, SaveObjects which = SaveObjects::changedAndSpecified);
  creo::ProError erase(creo::ProMdl model);
  // As erase, with all that it uses; what another model in memory uses and what `stays` names is left, with what that
  // uses.
  creo::ProError eraseAll(creo::ProMdl model, creo::FunctionRef<bool(creo::ProMdl)> stays);
  // Erases all models but those that `stays` names and what they use. A line of the message area names each whose
  // changes go with it.
  void eraseUnless(creo::FunctionRef<bool(creo::ProMdl)> stays);
  // A new drawing of a solid, with what a drawing on disk holds as template: sheets, tables, symbols, parameters. It
  // has no folder until it is saved; then it lies in the working folder. ProBadInputs: no solid, or no name of a file.
  creo::Got<creo::ProMdl> createDrawing(std::wstring_view name, std::wstring_view templateName, creo::ProMdl solid);
  // A new, empty model as createDrawing makes one. ProExists: in memory, or in a folder that is searched.
  creo::Got<creo::ProMdl> createModel(std::wstring_view name, creo::ProMdlType type);
  // The same for a document that was filled already, as newDocument makes it.
  creo::Got<creo::ProMdl> createModel(std::shared_ptr<ModelDocument> document);
  // As ProMdlRename and ProMdlCopy; creo/ProMdlCopy.h has the results.
  creo::ProError rename(creo::ProMdl model, std::wstring_view name);
  creo::Got<creo::ProMdl> copy(creo::ProMdl model, std::wstring_view name);
  // As ProMdlnameRename, with its results.
  creo::ProError renameOnDisk(creo::ProMdl model, std::wstring_view name, creo::ProRenamed& told);
  // Has another model the name (upper case): in memory, in the model's folder or one that is searched, in the model's
  // own family table, or, byInstances, in those of the folders' documents?
  bool isTaken(const Model& model, const std::wstring& name, bool byInstances);
  // What models use was changed otherwise than by these functions.
  void countUsesAnew();
  // Is a model of that name in memory, or in a folder that is searched?
  [[nodiscard]] bool isKnown(std::wstring_view name, creo::ProMdlType type);
  // The row's model. ProNotFound: it isn't in memory.
  [[nodiscard]] creo::Got<creo::ProMdl> instanceInMemory(const ModelDocument& document, const RowRecord& row) const;
  // Takes a row out of its table; what is in memory of it and of the rows below it becomes a model of its own.
  void removeRow(const std::shared_ptr<ModelDocument>& document, RowRecord& row);
  // Each once, in the document's order; an instance leaves out or replaces components by its row.
  [[nodiscard]] static std::vector<creo::ProDependency> dependencies(const Model& model);

  // The session's folder of models.
  [[nodiscard]] Folder& home() { return store_.folder(home_); }
  // A document that comes from elsewhere becomes that version in that folder. file_exists: it is taken.
  std::error_code addDocument(const std::wstring& name, creo::ProMdlType type, int version, std::string_view bytes);
  // All versions of a document go from that folder; models in memory stay.
  std::error_code removeDocuments(const std::wstring& name, creo::ProMdlType type);

  [[nodiscard]] const std::wstring& workingFolder() const { return working_; }
  // A relative path goes on from the working folder. False: no such folder.
  bool changeFolder(std::wstring_view path);
  void message(const std::wstring& text) const { host_.message(text); }

 private:
  struct Place {
    std::uint32_t generation = 1;
    std::unique_ptr<Model> model;
  };
  // One retrieval: what it brought in and still has to look through, and what it complained about.
  struct Retrieval {
    std::vector<std::shared_ptr<ModelDocument>> loaded;
    std::unordered_set<std::wstring> missing;
  };
  creo::Got<creo::ProMdl> bring(std::wstring_view name, creo::ProMdlType type, Retrieval& retrieval);
  // From the folders alone.
  creo::Got<creo::ProMdl> bringLocal(const ModelName& name, creo::ProMdlType type, Retrieval& retrieval);
  creo::Got<creo::ProMdl> bringInstance(const ModelName& name, creo::ProMdlType type, Retrieval& retrieval);
  creo::Got<creo::ProMdl> load(Folder& folder, const DocumentFile& file, Retrieval& retrieval);
  void bringUsed(Retrieval& retrieval);
  Model& add(std::shared_ptr<ModelDocument> document, RowRecord* row, std::wstring name);
  void countUses(const Model& model, int by);
  // Models in memory that use a renamed one know it by its new name; counts all uses anew.
  void followRename(const std::wstring& name, creo::ProMdlType type, const std::wstring& now);
  // The name is free.
  void setName(Model& model, const std::wstring& now);
  void remove(const Model& model);
  // The models in memory that a model uses, its generic among them.
  [[nodiscard]] std::vector<const Model*> usedBy(const Model& model) const;
  creo::ProError saveBelow(const Model& model, SaveObjects which);
  // The document as its next version. ProGeneralError: not written, with a line.
  [[nodiscard]] creo::Got<std::string> textOf(const ModelDocument& document) const;
  creo::ProError write(ModelDocument& document);
  creo::ProError readTemplate(std::wstring_view name, ModelRecord& into);
  // The highest number of the document's files and the one that it was read from.
  int newestVersion(const ModelDocument& document);
  void noteSaved(ModelDocument& document, int version);
  std::vector<Folder*> searched();

  ModelsHost host_;
  Store store_;
  std::wstring working_, home_;
  std::vector<Place> places_;
  std::vector<std::uint32_t> free_;
  std::unordered_map<std::wstring, std::uint32_t> byKey_;  // modelKey to place
  std::unordered_map<std::wstring, int> uses_;             // modelKey to how many models in memory use it
};

}  // namespace headless

// The models in memory: found, listed, counted by what uses them. What brings them in, saves, renames, makes and erases
// them is in headers of its own, over this one: retrieve.h, instances.h, save.h, rename.h, create.h, erase.h.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "headless/model/model.h"
#include "headless/model/model_folders.h"
#include "headless/model/models_host.h"

namespace headless {

struct ModelInMemory {
  creo::ProMdl handle;
  std::wstring name;
  creo::ProMdlType type = creo::ProMdlType::unused;
  int version = 0;
  std::wstring path;        // of the document; empty for a model that was never saved
  std::wstring instanceOf;  // the immediate generic; empty for none
  bool modified = false;
};

class Models {
 public:
  // workedOut: what the documents in memory get.
  Models(ModelsHost host, const WorkedOut& workedOut, const std::wstring& folder);

  [[nodiscard]] std::vector<ModelInMemory> list() const;
  // Null for a handle that has gone. A document that is away (away.h) comes back; std::runtime_error, with a line of
  // the message area, where it can't be read any more.
  [[nodiscard]] Model* find(creo::ProMdl model) const;
  // The same without what the document says: it may be away.
  [[nodiscard]] Model* look(creo::ProMdl model) const;
  // name: plain, or "NAME<GENERIC>".
  [[nodiscard]] creo::Got<creo::ProMdl> inMemory(std::wstring_view name, creo::ProMdlType type) const;
  // The model of a plain name; null for none. Its document, as those of the next three, may be away.
  [[nodiscard]] Model* named(std::wstring_view name, creo::ProMdlType type) const;
  // In the order of list().
  [[nodiscard]] std::vector<Model*> all() const;
  // The document as a save would write it now; an instance's is its generic's.
  // ProGeneralError, with a line of the message area: it holds a number that isn't finite.
  [[nodiscard]] creo::Got<std::string> documentText(creo::ProMdl model) const;
  [[nodiscard]] creo::Got<std::string> documentText(const ModelDocument& document) const;

  // The models in memory that a model uses, its generic among them.
  [[nodiscard]] std::vector<const Model*> usedBy(const Model& model) const;
  // By how many models in memory a model is used.
  [[nodiscard]] int usesOf(const Model& model) const;
  // What models use was changed otherwise than by the functions below.
  void countUsesAnew();

  [[nodiscard]] ModelFolders& folders() { return folders_; }
  [[nodiscard]] const ModelFolders& folders() const { return folders_; }
  [[nodiscard]] const ModelsHost& host() const { return host_; }
  void message(const std::wstring& text) const { host_.message(text); }

  // ---- for what brings models in and out, and gives them other names; no other model in memory has the name
  Model& add(std::shared_ptr<ModelDocument> document, RowRecord* row, std::wstring name);
  // A line of the message area says that changes go with it.
  void remove(const Model& model);
  void setName(Model& model, const std::wstring& now);
  // Runs a change of what a model is or uses; it may get another document.
  void change(const Model& model, creo::FunctionRef<void()> body);

  // The document is in memory behind it. The line of why it can't be read any more; empty: it is.
  [[nodiscard]] std::wstring bringBack(const Model& model) const;

 private:
  struct Place {
    std::uint32_t generation = 1;
    std::unique_ptr<Model> model;
  };
  void countUses(const Model& model, int by);

  ModelsHost host_;
  WorkedOut workedOut_;
  ModelFolders folders_;
  std::vector<Place> places_;
  std::vector<std::uint32_t> free_;
  std::unordered_map<std::wstring, std::uint32_t> byKey_;  // modelKey to place
  std::unordered_map<std::wstring, int> uses_;             // modelKey to how many models in memory use it
};

// The row's model. ProNotFound: it isn't in memory.
creo::Got<creo::ProMdl> instanceInMemory(const Models& models, const ModelDocument& document, const RowRecord& row);
// What a locked row answers to every change: ProGeneralError, with a line of the message area.
creo::ProError refuseLocked(const Models& models, const ModelDocument& document, const RowRecord& row);

}  // namespace headless

// Which models of a folder use which, and where a run begins.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "headless/store/folder.h"
#include "kelvane/show/model_folder.h"

namespace kelvane {

class ModelGraph {
 public:
  explicit ModelGraph(std::vector<headless::FolderDocument> documents);

  // Models that no other one uses; of models that use each other in a ring, the first. Together they lead to every
  // model that can be read.
  [[nodiscard]] std::vector<ModelFileName> starts() const;
  // A Fault for a name that no model has.
  [[nodiscard]] ModelFileName start(const std::string& written) const;

  // What is wrong with the models that these lead to, or, without any, with all: documents that can't be read or
  // worked, models that aren't there.
  struct Trouble {
    struct Damaged {
      std::string model;  // "BAD.PRT"
      std::string fault;  // "bad.prt.1:12: 'name' must be a text"
    };
    std::vector<Damaged> damaged;
    std::vector<std::string> missing;  // "GEARBOX.ASM uses NUT.PRT, which isn't there"
  };
  [[nodiscard]] Trouble trouble(const std::vector<ModelFileName>& from) const;

 private:
  using Reached = std::vector<bool>;
  // Is that instance's name a document's too? A session has one model of a name.
  [[nodiscard]] bool isTwice(const headless::ModelName& instance, creo::ProMdlType type) const;
  [[nodiscard]] std::size_t at(std::wstring_view name, creo::ProMdlType type) const;
  void reach(std::size_t from, Reached& reached) const;

  std::vector<headless::FolderDocument> documents_;
  std::unordered_map<std::wstring, std::size_t> byKey_;  // of models and of instances
  std::vector<std::vector<std::size_t>> uses_;
};

}  // namespace kelvane

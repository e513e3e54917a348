// Which models of a folder use which, of it and of a library, and where a run begins.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "headless/store/folder.h"
#include "kelvane/show/model_folder.h"

namespace kelvane {

class ModelGraph {
 public:
  // The models' folder, then those where what it lacks is looked for, in their order.
  explicit ModelGraph(std::vector<std::vector<headless::FolderDocument>> folders);

  // Models of the first folder that no other one uses; of models that use each other in a ring, the first. Together
  // they lead to every model that can be read.
  [[nodiscard]] std::vector<ModelFileName> starts() const;
  // A Fault for a name that no model of the first folder has.
  [[nodiscard]] ModelFileName start(const std::string& written) const;

  // What is wrong with the models that these, or without any all of the first folder, lead to: documents that can't be
  // read or worked, models that aren't there.
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
  std::size_t own_ = 0;                                  // of the first folder; they stand first
  std::unordered_map<std::wstring, std::size_t> byKey_;  // of models and of instances
  std::vector<std::vector<std::size_t>> uses_;
};

}  // namespace kelvane

#include "kelvane/show/model_graph.h"

#include <algorithm>

#include "kelvane/base/fault.h"
#include "kelvane/base/nearest.h"
#include "text/encoding.h"

namespace kelvane {
namespace {

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

bool isWorkable(const headless::FolderDocument& document) {
  const creo::ProMdlType type = document.file.type;
  return document.fault.empty() && type != creo::ProMdlType::manufacturing && type != creo::ProMdlType::format;
}

}  // namespace

ModelGraph::ModelGraph(std::vector<std::vector<headless::FolderDocument>> folders) {
  for (auto& folder : folders) {
    const std::size_t before = documents_.size();
    for (headless::FolderDocument& document : folder) {
      const std::wstring key = headless::modelKey(document.file.name, document.file.type);
      const auto found = byKey_.find(key);
      if (found != byKey_.end() && found->second < before) continue;  // a folder before has one of that name
      byKey_[key] = documents_.size();
      documents_.push_back(std::move(document));
    }
    if (&folder == &folders.front()) own_ = documents_.size();
  }
  for (std::size_t i = 0; i < documents_.size(); ++i) {
    for (const auto& instance : documents_[i].instances) {
      byKey_.try_emplace(headless::modelKey(instance.name, documents_[i].file.type), i);
    }
  }
  uses_.resize(documents_.size());
  for (std::size_t i = 0; i < documents_.size(); ++i) {
    for (const creo::ProDependency& used : documents_[i].uses) {
      const std::size_t target = at(used.name, used.type);
      if (target != kNone && target != i) uses_[i].push_back(target);
    }
  }
}

std::size_t ModelGraph::at(std::wstring_view name, creo::ProMdlType type) const {
  const auto found = byKey_.find(headless::modelKey(headless::modelName(name).name, type));
  return found == byKey_.end() ? kNone : found->second;
}

bool ModelGraph::isTwice(const headless::ModelName& name, creo::ProMdlType type) const {
  const std::size_t own = at(name.name, type), generic = name.generic.empty() ? kNone : at(name.generic, type);
  if (generic == kNone || own == kNone || own == generic || documents_[own].file.name != name.name) return false;
  const auto& rows = documents_[generic].instances;
  return std::any_of(rows.begin(), rows.end(), [&](const auto& row) { return row.name == name.name; });
}

void ModelGraph::reach(std::size_t from, Reached& reached) const {
  std::vector<std::size_t> open{from};
  while (!open.empty()) {
    const std::size_t next = open.back();
    open.pop_back();
    if (reached[next]) continue;
    reached[next] = true;
    open.insert(open.end(), uses_[next].begin(), uses_[next].end());
  }
}

std::vector<ModelFileName> ModelGraph::starts() const {
  std::vector<bool> used(documents_.size());
  for (const auto& targets : uses_) {
    for (const std::size_t target : targets) used[target] = true;
  }
  std::vector<ModelFileName> starts;
  Reached reached(documents_.size());
  const auto take = [&](std::size_t i) {
    if (reached[i] || !isWorkable(documents_[i])) return;
    starts.push_back({documents_[i].file.name, documents_[i].file.type});
    reach(i, reached);
  };
  for (std::size_t i = 0; i < own_; ++i) {
    if (!used[i]) take(i);
  }
  for (std::size_t i = 0; i < own_; ++i) take(i);
  return starts;
}

ModelFileName ModelGraph::start(const std::string& written) const {
  ModelFileName model = modelFileName(written);
  if (at(model.name, model.type) < own_) return model;
  std::vector<std::string> known;
  for (std::size_t i = 0; i < own_; ++i) known.push_back(label(documents_[i].file.name, documents_[i].file.type));
  const std::string wanted = label(model.name, model.type);
  throw Fault("--start: there is no model " + wanted + didYouMean(wanted, known));
}

ModelGraph::Trouble ModelGraph::trouble(const std::vector<ModelFileName>& from) const {
  Reached reached(documents_.size());
  for (std::size_t i = 0; i < own_ && from.empty(); ++i) reach(i, reached);
  for (const ModelFileName& model : from) reach(at(model.name, model.type), reached);
  Trouble trouble;
  for (std::size_t i = 0; i < documents_.size(); ++i) {
    if (!reached[i]) continue;
    const headless::FolderDocument& document = documents_[i];
    if (!document.fault.empty())
      trouble.damaged.push_back({label(document.file.name, document.file.type), readable(document.fault)});
    const std::string user = label(document.file.name, document.file.type);
    for (const creo::ProDependency& used : document.uses) {
      const headless::ModelName name = headless::modelName(used.name);
      const std::string model = label(name.name, used.type);
      std::string line = user;
      line.append(" uses ").append(model);
      if (at(used.name, used.type) == kNone) trouble.missing.push_back(line + ", which isn't there");
      if (!isTwice(name, used.type)) continue;
      line.append(" as an instance of ").append(label(name.generic, used.type));
      trouble.damaged.push_back({model, line + ", and a document has that name: only one of them can be worked"});
    }
  }
  return trouble;
}

}  // namespace kelvane

#include "headless/model/models.h"

#include "headless/model/family.h"
#include "os/paths.h"
#include "os/surroundings.h"
#include "text/letters.h"

namespace headless {

using creo::Got;
using creo::ProError;
using creo::ProMdl;
using creo::ProMdlType;

Models::Models(ModelsHost host, const std::wstring& folder)
    : host_(std::move(host)),
      store_(host_.withholdSaves),
      working_(os::asFolder(os::withBackslashes(folder))),
      home_(working_) {}

Model* Models::find(ProMdl model) const {
  const auto number = static_cast<std::uint32_t>(model.value & 0xFFFFFFFFu);
  if (number == 0 || number > places_.size()) return nullptr;
  const Place& place = places_[number - 1];
  return place.generation == model.value >> 32 ? place.model.get() : nullptr;
}

Got<ProMdl> Models::inMemory(std::wstring_view name, ProMdlType type) const {
  const auto found = byKey_.find(modelKey(modelName(name).name, type));
  if (found == byKey_.end()) return creo::ProNotFound;
  return places_[found->second].model->handle;
}

std::vector<ModelInMemory> Models::list() const {
  std::vector<ModelInMemory> out;
  for (const Place& place : places_) {
    if (!place.model) continue;
    const Model& model = *place.model;
    const ModelDocument& document = *model.document;
    ModelInMemory& one = out.emplace_back();
    one.handle = model.handle;
    one.name = model.name;
    one.type = document.type;
    one.version = document.version;
    if (document.version > 0) one.path = document.folder + documentFileName(document, document.version);
    if (model.row) one.instanceOf = genericName(model);
    one.modified = document.isModified(model.row);
  }
  return out;
}

Got<std::string> Models::documentText(ProMdl handle) const {
  const Model* model = find(handle);
  if (!model) return creo::ProBadInputs;
  return textOf(*model->document);
}

Model& Models::add(std::shared_ptr<ModelDocument> document, RowRecord* row, std::wstring name) {
  if (free_.empty()) {
    free_.push_back(static_cast<std::uint32_t>(places_.size()));
    places_.emplace_back();
  }
  const std::uint32_t at = free_.back();
  free_.pop_back();
  Place& place = places_[at];
  place.model = std::make_unique<Model>();
  place.model->handle.value = static_cast<std::uint64_t>(place.generation) << 32 | (at + 1);
  place.model->document = std::move(document);
  place.model->row = row;
  place.model->name = std::move(name);
  byKey_[modelKey(place.model->name, place.model->type())] = at;
  countUses(*place.model, 1);
  return *place.model;
}

// An instance uses its generic, so that the generic stays in memory as long as it.
void Models::countUses(const Model& model, int by) {
  if (model.row) uses_[modelKey(model.document->name, model.type())] += by;
  for (const creo::ProDependency& used : dependencies(model))
    if (used.name != model.name || used.type != model.type()) uses_[modelKey(used.name, used.type)] += by;
}

std::vector<creo::ProDependency> Models::dependencies(const Model& model) {
  const ModelRecord& record = model.document->record;
  std::vector<creo::ProDependency> out;
  std::unordered_set<std::wstring> seen;
  for (const UsedModelRecord& used : model.type() == ProMdlType::drawing ? record.models : record.components) {
    const std::wstring name = componentOf(model, used);
    if (!name.empty() && seen.insert(modelKey(name, used.type)).second)
      out.push_back({name, creo::typeExtension(used.type), used.type});
  }
  return out;
}

std::error_code Models::addDocument(const std::wstring& name, ProMdlType type, int version, std::string_view bytes) {
  const std::wstring file = text::lower(modelKey(name, type)) + L'.' + std::to_wstring(version);
  return store_.create(home(), {text::upper(name), type, version, file}, bytes);
}

std::error_code Models::removeDocuments(const std::wstring& name, ProMdlType type) {
  return store_.removeAll(home(), name, type);
}

bool Models::changeFolder(std::wstring_view path) {
  std::wstring wanted = os::withBackslashes(path);
  const bool absolute = wanted.find(L':') != std::wstring::npos || wanted.starts_with(L'\\');
  if (!absolute) wanted = os::joined(working_, wanted);
  if (!os::files().isFolder(wanted)) return false;
  working_ = os::asFolder(wanted);
  return true;
}

}  // namespace headless

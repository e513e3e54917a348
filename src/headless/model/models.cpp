#include "headless/model/models.h"

#include <algorithm>

#include "headless/model/family.h"
#include "headless/store/faults.h"
#include "os/paths.h"
#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/letters.h"

namespace headless {

using creo::Got;
using creo::ProError;
using creo::ProMdl;
using creo::ProMdlType;

namespace {

// Numbers in a row that are taken although no document shows it: folders, say. Then saving gives up.
constexpr int kMostTaken = 100;

DocumentFile fileOf(const ModelDocument& document, int version) {
  return {document.name, document.type, version, documentFileName(document, version)};
}

}  // namespace

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
  std::string bytes = writeDocument(model->document->record);
  if (!bytes.empty()) return bytes;
  message(model->name + L" can't be written: it holds a number that isn't finite");
  return creo::ProGeneralError;
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

// An assembly on disk needs them.
void Models::saveNewParts(const Model& assembly) {
  for (const creo::ProDependency& used : dependencies(assembly)) {
    const auto handle = inMemory(used.name, used.type);
    const Model* part = handle ? find(handle.value) : nullptr;
    if (part && part->document->folder.empty()) save(part->handle);
  }
}

ProError Models::save(ProMdl handle) {
  const Model* model = find(handle);
  if (!model) return creo::ProBadInputs;
  ModelDocument& document = *model->document;
  if (document.record.readOnly || document.closed) {
    const std::wstring path = document.folder + documentFileName(document, newestVersion(document) + 1);
    message(document.record.readOnly ? cantWriteReadOnly(path) : cantWriteCheckedIn(path));
    return creo::ProGeneralError;
  }
  const auto bytes = documentText(handle);
  if (!bytes) return bytes.error;
  const bool isNew = document.folder.empty();
  if (isNew) document.folder = working_;
  if (document.type == ProMdlType::assembly) saveNewParts(*model);
  Folder& folder = store_.folder(document.folder);
  int newest = newestVersion(document), version = newest + 1;
  std::error_code error = store_.create(folder, fileOf(document, version), bytes.value);
  // Another program took the number meanwhile; the folder's list doesn't show it yet.
  for (int tries = 0; error == std::errc::file_exists && tries < kMostTaken; ++tries) {
    folder.forget();
    newest = newestVersion(document);
    version = std::max(newest, version) + 1;
    error = store_.create(folder, fileOf(document, version), bytes.value);
  }
  const std::wstring path = document.folder + documentFileName(document, version);
  if (error) {
    if (isNew) document.folder.clear();
    message(cantWrite(path, error));
    return creo::ProGeneralError;
  }
  if (!isNew && newest > document.version)
    message(
        text::format(L"%s: another program wrote version %d meanwhile; its changes aren't in this one", path, newest));
  document.version = document.writtenVersion = version;
  noteSaved(document, version);
  host_.saved({document.name, document.type, version, path});
  return creo::ProNoError;
}

ProError Models::saveReplacing(ProMdl handle) {
  const Model* model = find(handle);
  if (!model) return creo::ProBadInputs;
  ModelDocument& document = *model->document;
  if (document.writtenVersion == 0) return creo::ProNotFound;
  Folder& folder = store_.folder(document.folder);
  // A version that another program wrote in the very moment of the session's own leaves no trace in the folder's time.
  if (os::files().exists(document.folder + documentFileName(document, document.writtenVersion + 1))) folder.forget();
  if (newestVersion(document) > document.writtenVersion) return save(handle);
  const DocumentFile file = fileOf(document, document.writtenVersion);
  const auto bytes = documentText(handle);
  if (!bytes) return bytes.error;
  if (const auto error = store_.replace(folder, file, bytes.value)) {
    message(cantWrite(document.folder + file.fileName, error));
    return creo::ProGeneralError;
  }
  noteSaved(document, document.writtenVersion);
  return creo::ProNoError;
}

int Models::newestVersion(const ModelDocument& document) {
  const DocumentFile* newest = store_.folder(document.folder).find(document.name, document.type);
  return std::max(document.version, newest ? newest->version : 0);
}

void Models::noteSaved(ModelDocument& document, int version) {
  document.markSaved();
  if (document.record.familyTable)
    store_.folder(document.folder).enterInstances(fileOf(document, version), document.rowNames());
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

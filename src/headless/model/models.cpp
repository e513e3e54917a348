#include "headless/model/models.h"

#include <stdexcept>
#include <utility>

#include "headless/model/family.h"
#include "headless/model/flat_memory.h"
#include "headless/model/one_version.h"
#include "headless/store/faults.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/letters.h"

namespace headless {

using creo::Got;
using creo::ProMdl;
using creo::ProMdlType;

namespace {

std::wstring keyOf(const Model& model) { return modelKey(model.name, model.type()); }

}  // namespace

Models::Models(ModelsHost host, const WorkedOut& workedOut, const std::wstring& folder)
    : host_(std::move(host)), workedOut_(workedOut), folders_(host_.withholdSaves, folder, host_.optionFolders) {}

Model* Models::find(ProMdl handle) const {
  Model* const model = look(handle);
  if (!model || !model->document->isAway()) return model;
  const std::wstring fault = bringBack(*model);
  if (fault.empty()) return model;
  if (!std::exchange(model->document->away().isLost, true)) {
    message(fault);
    host_.unreadable(savedPath(*model->document));
  }
  throw std::runtime_error(text::toUtf8(fault));
}

std::wstring Models::bringBack(const Model& model) const {
  ModelDocument& document = *model.document;
  if (!document.isAway()) return {};
  const std::wstring path = savedPath(document);
  auto read = folders_.readRecord(path);
  if (!read) return ModelFolders::faultOf(path, read);
  document.comeBack(std::move(read.record));
  document.textSize = read.size;
  FlatMemory::noteArrived(model);
  return {};
}

Model* Models::look(ProMdl model) const {
  const auto number = static_cast<std::uint32_t>(model.value & 0xFFFFFFFFu);
  if (number == 0 || number > places_.size()) return nullptr;
  const Place& place = places_[number - 1];
  return place.generation == model.value >> 32 ? place.model.get() : nullptr;
}

Model* Models::named(std::wstring_view name, ProMdlType type) const {
  const auto found = byKey_.find(modelKey(name, type));
  return found == byKey_.end() ? nullptr : places_[found->second].model.get();
}

Got<ProMdl> Models::inMemory(std::wstring_view name, ProMdlType type) const {
  const Model* model = named(modelName(name).name, type);
  return model ? Got<ProMdl>(model->handle) : creo::ProNotFound;
}

std::vector<Model*> Models::all() const {
  std::vector<Model*> models;
  for (const Place& place : places_)
    if (place.model) models.push_back(place.model.get());
  return models;
}

std::vector<ModelInMemory> Models::list() const {
  std::vector<ModelInMemory> out;
  for (const Model* model : all()) {
    const ModelDocument& document = *model->document;
    ModelInMemory& listed = out.emplace_back();
    listed.handle = model->handle;
    listed.name = model->name;
    listed.type = document.type;
    listed.version = document.version;
    if (document.version > 0) listed.path = document.folder + documentFileName(document, document.version);
    if (model->row) listed.instanceOf = genericName(*model);
    listed.modified = document.isModified(model->row);
  }
  return out;
}

Got<std::string> Models::documentText(ProMdl handle) const {
  const Model* model = find(handle);
  if (!model) return creo::ProBadInputs;
  return documentText(*model->document);
}

Got<std::string> Models::documentText(const ModelDocument& document) const {
  std::string bytes = writeDocument(document.record);
  if (!bytes.empty()) return bytes;
  message(document.name + L" can't be written: it holds a number that isn't finite");
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
  place.model->document->host = &host_;
  place.model->document->workedOut = workedOut_;
  place.model->row = row;
  place.model->name = std::move(name);
  byKey_[keyOf(*place.model)] = at;
  countUses(*place.model, 1);
  FlatMemory::noteArrived(*place.model);
  return *place.model;
}

// What an instance changed stays with its generic, and a model that lies nowhere is made to be thrown away.
void Models::remove(const Model& model) {
  const ProMdl handle = model.handle;
  if (!model.row && model.document->isContentModified() && !model.document->saveFolder().empty())
    message(erasedWithChanges(model.name + L'.' + std::wstring(creo::typeExtension(model.type()))));
  countUses(model, -1);
  byKey_.erase(keyOf(model));
  if (model.document.use_count() == 1) OneVersion::remember(*model.document);
  const auto at = static_cast<std::uint32_t>((handle.value & 0xFFFFFFFFu) - 1);
  places_[at].model.reset();
  ++places_[at].generation;
  free_.push_back(at);
  host_.erased(handle);
}

void Models::setName(Model& model, const std::wstring& now) {
  const auto place = byKey_.extract(keyOf(model));
  byKey_[modelKey(now, model.type())] = place.mapped();
  model.name = now;
  if (model.row) return;
  model.document->name = now;
  model.document->fileStem = text::lower(modelKey(now, model.type()));
}

void Models::change(const Model& model, creo::FunctionRef<void()> body) {
  countUses(model, -1);
  body();
  model.document->workedOut = workedOut_;
  model.document->host = &host_;
  countUses(model, 1);
}

// An instance uses its generic, so that the generic stays in memory as long as it.
void Models::countUses(const Model& model, int by) {
  if (model.row) uses_[modelKey(model.document->name, model.type())] += by;
  for (const creo::ProDependency& used : dependencies(model))
    if (used.name != model.name || used.type != model.type()) uses_[modelKey(used.name, used.type)] += by;
}

void Models::countUsesAnew() {
  uses_.clear();
  for (const Place& place : places_)
    if (place.model) countUses(*place.model, 1);
}

int Models::usesOf(const Model& model) const {
  const auto uses = uses_.find(keyOf(model));
  return uses == uses_.end() ? 0 : uses->second;
}

std::vector<const Model*> Models::usedBy(const Model& model) const {
  std::vector<const Model*> used;
  const auto add = [&](const std::wstring& name, ProMdlType type) {
    const Model* found = named(name, type);
    if (found && found != &model) used.push_back(found);
  };
  if (model.row) add(model.document->name, model.type());
  for (const creo::ProDependency& dependency : dependencies(model)) add(dependency.name, dependency.type);
  return used;
}

Got<ProMdl> instanceInMemory(const Models& models, const ModelDocument& document, const RowRecord& row) {
  const Model* model = models.named(text::fromUtf8(row.name), document.type);
  return model && model->row == &row ? Got<ProMdl>(model->handle) : creo::ProNotFound;
}

creo::ProError refuseLocked(const Models& models, const ModelDocument& document, const RowRecord& row) {
  models.message(text::format(L"%s: the instance %s is locked", document.name, text::fromUtf8(row.name)));
  return creo::ProGeneralError;
}

}  // namespace headless

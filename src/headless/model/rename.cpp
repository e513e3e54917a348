// Models under other names: renamed, copied, taken out of a family table.
#include <algorithm>
#include <unordered_map>

#include "headless/model/family.h"
#include "headless/model/follow_rename.h"
#include "headless/model/models.h"
#include "headless/model/new_document.h"
#include "headless/model/one_version.h"
#include "headless/model/stand_alone.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace headless {

using creo::Got;
using creo::ProError;
using creo::ProMdl;
using creo::ProMdlType;

void Models::followRename(const std::wstring& name, ProMdlType type, const std::wstring& now) {
  for (const Place& place : places_) {
    if (!place.model || place.model->row) continue;
    ModelDocument& user = *place.model->document;
    if (!headless::followRename(user.record, user.type, {name, now, type})) continue;
    user.tree.changed();
    user.touch(nullptr);
  }
  countUsesAnew();
}

void Models::countUsesAnew() {
  uses_.clear();
  for (const Place& place : places_)
    if (place.model) countUses(*place.model, 1);
}

bool Models::isTaken(const Model& model, const std::wstring& name, bool byInstances) {
  if (byKey_.contains(modelKey(name, model.type())) || model.document->row(name)) return true;
  std::vector<Folder*> folders = searched();
  if (!model.document->folder.empty()) folders.push_back(&store_.folder(model.document->folder));
  return std::any_of(folders.begin(), folders.end(), [&](Folder* folder) {
    return folder->find(name, model.type()) || (byInstances && !folder->genericOf(name, model.type()).empty());
  });
}

void Models::setName(Model& model, const std::wstring& now) {
  const auto place = byKey_.extract(modelKey(model.name, model.type()));
  byKey_[modelKey(now, model.type())] = place.mapped();
  model.name = now;
  if (model.row) return;
  model.document->name = now;
  model.document->fileStem = text::lower(modelKey(now, model.type()));
}

ProError Models::rename(ProMdl handle, std::wstring_view wanted) {
  Model* model = find(handle);
  if (!model) return creo::ProBadInputs;
  if (model->row ? wanted.empty() : !isFileName(wanted)) return creo::ProBadInputs;
  const std::wstring now = text::upper(wanted), before = model->name;
  if (now == before) return creo::ProNoError;
  ModelDocument& document = *model->document;
  if (model->row) {
    if (byKey_.contains(modelKey(now, model->type())) || document.row(now)) return creo::ProExists;
    if (model->row->locked) return refuseLocked(*this, document, *model->row);
    countUses(*model, -1);
    setName(*model, now);
    document.renameRow(*model->row, text::toUtf8(now));
    countUses(*model, 1);
    return creo::ProNoError;
  }
  if (isTaken(*model, now, false)) return creo::ProExists;
  setName(*model, now);
  document.version = document.writtenVersion = 0;
  document.touch(nullptr);
  if (host_.read) host_.read(document);  // the workspace may know the new name, and no longer the old one
  followRename(before, model->type(), now);
  return creo::ProNoError;
}

Got<ProMdl> Models::copy(ProMdl handle, std::wstring_view wanted) {
  const Model* model = find(handle);
  if (!model || !isModelName(wanted)) return creo::ProBadInputs;
  const std::wstring name = text::upper(wanted);
  if (byKey_.contains(modelKey(name, model->type())) || model->document->row(name)) return creo::ProExists;
  if (!model->row) handOut(*model->document);
  return add(standAlone(*model, wanted, false), nullptr, name).handle;
}

Got<ProMdl> Models::instanceInMemory(const ModelDocument& document, const RowRecord& row) const {
  const auto found = byKey_.find(modelKey(text::fromUtf8(row.name), document.type));
  if (found == byKey_.end()) return creo::ProNotFound;
  const Model& model = *places_[found->second].model;
  return model.row == &row ? Got<ProMdl>(model.handle) : creo::ProNotFound;
}

void Models::removeRow(const std::shared_ptr<ModelDocument>& document, RowRecord& row) {
  std::unordered_map<const RowRecord*, std::shared_ptr<ModelDocument>> own;  // of those that have become models
  const auto ownAbove = [&](const RowRecord& one) -> std::shared_ptr<ModelDocument> {
    for (const RowRecord* above = one.parent; above; above = above->parent)
      if (const auto found = own.find(above); found != own.end()) return found->second;
    return nullptr;
  };
  const auto leave = [&](RowRecord& one) {
    const auto there = instanceInMemory(*document, one);
    if (!there) return;
    Model& model = *find(there.value);
    countUses(model, -1);
    if (const auto above = ownAbove(one)) {
      model.document = above;
      model.row = above->row(model.name);
    } else {
      model.document = own[&one] = standAlone(model, model.name, true);
      model.row = nullptr;
    }
    countUses(model, 1);
  };
  leave(row);
  if (row.familyTable) eachRow(*row.familyTable, leave);
  document->takeRow(row);
}

}  // namespace headless

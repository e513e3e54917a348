// Models under other names: renamed, copied, taken out of a family table.
#include <unordered_map>
#include <unordered_set>

#include "headless/model/family.h"
#include "headless/model/models.h"
#include "headless/model/new_document.h"
#include "headless/model/stand_alone.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/letters.h"

namespace headless {

using creo::Got;
using creo::ProError;
using creo::ProFamitemType;
using creo::ProMdl;
using creo::ProMdlType;

namespace {

// "NAME" or "NAME<GENERIC>" with a new name in place of the old one.
std::string renamed(const std::string& text, const std::wstring& name, const std::wstring& now) {
  ModelName parts = modelName(text::fromUtf8(text));
  if (parts.name != name && parts.generic != name) return text;
  if (parts.name == name) parts.name = now;
  if (parts.generic == name) parts.generic = now;
  return text::toUtf8(parts.generic.empty() ? parts.name : parts.name + L'<' + parts.generic + L'>');
}

// Columns of components are called by the component.
void renameColumns(FamilyTableRecord& table, const std::string& name, const std::string& now) {
  for (ColumnRecord& column : table.items.list) {
    if (column.type != ProFamitemType::component || !sameName(column.name, name)) continue;
    column.name = now;
    table.items.index.drop();
    for (const auto& row : table.instances)
      for (auto& value : row->values)
        if (sameName(value.name, name)) value.name = now;
  }
  for (const auto& row : table.instances)
    if (row->familyTable) renameColumns(*row->familyTable, name, now);
}

// The models that instances have in place of components.
void renameReplacements(FamilyTableRecord& table, const std::wstring& name, const std::wstring& now) {
  std::unordered_set<std::string> columns;
  for (const ColumnRecord& column : table.items.list)
    if (column.type == ProFamitemType::component) columns.insert(folded(column.name));
  for (const auto& row : table.instances) {
    for (auto& value : row->values)
      if (auto* text = std::get_if<std::string>(&value.value); text && columns.contains(folded(value.name)))
        *text = renamed(*text, name, now);
    if (row->familyTable) renameReplacements(*row->familyTable, name, now);
  }
}

bool isUsedBy(const ModelRecord& record, const std::vector<UsedModelRecord>& used, const std::wstring& name) {
  for (const UsedModelRecord& one : used) {
    const ModelName parts = modelName(text::fromUtf8(one.name));
    if (parts.name == name || parts.generic == name) return true;
  }
  return record.familyTable != nullptr;  // a row may have it in a component's place
}

void follow(ModelDocument& user, const std::wstring& name, ProMdlType type, const std::wstring& now) {
  ModelRecord& record = user.record;
  auto& used = user.type == ProMdlType::drawing ? record.models : record.components;
  if (used.empty() || !isUsedBy(record, used, name)) return;
  bool follows = false;
  for (UsedModelRecord& one : used) {
    std::string wanted = one.type == type ? renamed(one.name, name, now) : one.name;
    if (wanted == one.name) continue;
    if (record.familyTable) renameColumns(*record.familyTable, one.name, wanted);
    one.name = std::move(wanted);
    follows = true;
  }
  if (record.familyTable) renameReplacements(*record.familyTable, name, now);
  const std::string extension = '.' + text::toUtf8(text::lower(creo::typeExtension(type)));
  if (sameName(record.currentModel, text::toUtf8(name) + extension))
    record.currentModel = text::toUtf8(now) + extension;
  if (!follows) return;
  user.tree.changed();
  user.touch(nullptr);
}

}  // namespace

void Models::followRename(const std::wstring& name, ProMdlType type, const std::wstring& now) {
  for (const Place& place : places_)
    if (place.model && !place.model->row) follow(*place.model->document, name, type, now);
  uses_.clear();
  for (const Place& place : places_)
    if (place.model) countUses(*place.model, 1);
}

ProError Models::rename(ProMdl handle, std::wstring_view wanted) {
  Model* model = find(handle);
  if (!model) return creo::ProBadInputs;
  if (model->row ? wanted.empty() : !isFileName(wanted)) return creo::ProBadInputs;
  const std::wstring now = text::upper(wanted), before = model->name;
  if (now == before) return creo::ProNoError;
  ModelDocument& document = *model->document;
  if (byKey_.contains(modelKey(now, model->type())) || document.row(now)) return creo::ProExists;
  if (model->row && model->row->locked) return refuseLocked(*this, document, *model->row);
  if (!model->row)
    for (Folder* folder : searched())
      if (folder->find(now, model->type())) return creo::ProExists;

  const auto place = byKey_.extract(modelKey(before, model->type()));
  byKey_[modelKey(now, model->type())] = place.mapped();
  if (model->row) {
    countUses(*model, -1);
    model->name = now;
    document.renameRow(*model->row, text::toUtf8(now));
    countUses(*model, 1);
    return creo::ProNoError;
  }
  model->name = document.name = now;
  document.fileStem = text::lower(now) + L"." + text::lower(creo::typeExtension(model->type()));
  document.version = document.writtenVersion = 0;
  document.touch(nullptr);
  if (host_.read) host_.read(document);  // the workspace may know the new name, and no longer the old one
  followRename(before, model->type(), now);
  return creo::ProNoError;
}

Got<ProMdl> Models::copy(ProMdl handle, std::wstring_view wanted) {
  const Model* model = find(handle);
  if (!model || !isFileName(wanted)) return creo::ProBadInputs;
  const std::wstring name = text::upper(wanted);
  if (byKey_.contains(modelKey(name, model->type())) || model->document->row(name)) return creo::ProExists;
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

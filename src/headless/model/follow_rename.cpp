#include "headless/model/follow_rename.h"

#include <unordered_map>
#include <unordered_set>

#include "headless/model/away.h"
#include "headless/model/drawing.h"
#include "headless/model/models.h"
#include "headless/store/folder.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace headless {

using creo::ProFamitemType;
using creo::ProMdlType;

namespace {

using Names = std::unordered_set<std::string>;

std::string text8(const std::wstring& name) { return text::toUtf8(name); }

// "NAME" or "NAME<GENERIC>" gets the new name in place of the old one. False: it has neither.
bool renameText(std::string& text, const RenamedModel& renamed) {
  ModelName parts = modelName(text::fromUtf8(text));
  if (parts.name != renamed.before && parts.generic != renamed.before) return false;
  if (parts.name == renamed.before) parts.name = renamed.now;
  if (parts.generic == renamed.before) parts.generic = renamed.now;
  text = text8(parts.generic.empty() ? parts.name : parts.name + L'<' + parts.generic + L'>');
  return true;
}

// The same in "NAME.prt".
bool renameLabel(std::string& label, const RenamedModel& renamed) {
  const std::string ending = '.' + text8(text::lower(creo::typeExtension(renamed.type)));
  if (label.size() <= ending.size() || !sameName(label.substr(label.size() - ending.size()), ending)) return false;
  std::string name = label.substr(0, label.size() - ending.size());
  if (!renameText(name, renamed)) return false;
  label = name + ending;
  return true;
}

// columns: what components of the model's type are called.
bool renameReplacements(FamilyTableRecord& table, const Names& columns, const RenamedModel& renamed) {
  bool follows = false;
  for (const auto& row : table.instances) {
    for (auto& value : row->values)
      if (auto* text = std::get_if<std::string>(&value.value); text && columns.contains(folded(value.name)))
        follows = renameText(*text, renamed) || follows;
    if (row->familyTable) follows = renameReplacements(*row->familyTable, columns, renamed) || follows;
  }
  return follows;
}

// Columns of components are called by the component. names: former name, folded, to the new one.
void renameColumns(FamilyTableRecord& table, const std::unordered_map<std::string, std::string>& names) {
  const auto follow = [&](std::string& name) {
    if (const auto found = names.find(folded(name)); found != names.end()) name = found->second;
  };
  Names columns;
  for (ColumnRecord& column : table.items.list) {
    if (column.type != ProFamitemType::component) continue;
    columns.insert(folded(column.name));
    follow(column.name);
  }
  table.items.index.drop();
  for (const auto& row : table.instances) {
    for (auto& value : row->values)
      if (columns.contains(folded(value.name))) follow(value.name);
    if (row->familyTable) renameColumns(*row->familyTable, names);
  }
}

bool followInSolid(ModelRecord& record, const RenamedModel& renamed) {
  Names columns;
  std::unordered_map<std::string, std::string> names;
  for (UsedModelRecord& component : record.components) {
    if (component.type != renamed.type) continue;
    const std::string former = folded(component.name);
    columns.insert(former);
    if (renameText(component.name, renamed)) names.try_emplace(former, component.name);
  }
  bool follows = !names.empty();
  if (!record.familyTable || columns.empty()) return follows;
  follows = renameReplacements(*record.familyTable, columns, renamed) || follows;
  if (!names.empty()) renameColumns(*record.familyTable, names);
  return follows;
}

bool followInDrawing(ModelRecord& record, const RenamedModel& renamed) {
  bool follows = false;
  for (UsedModelRecord& entry : record.models)
    if (entry.type == renamed.type) follows = renameText(entry.name, renamed) || follows;
  for (ViewRecord& view : record.views) {
    follows = renameLabel(view.model, renamed) || follows;
    for (std::string& whole : view.uncut) follows = renameLabel(whole, renamed) || follows;
  }
  for (ShownDimensionRecord& dimension : record.shownDimensions)
    follows = renameLabel(dimension.model, renamed) || follows;
  if (renamed.type == ProMdlType::drawing)
    for (SheetRecord& sheet : record.sheets) follows = renameLabel(sheet.format, renamed) || follows;
  return renameLabel(record.currentModel, renamed) || follows;
}

}  // namespace

bool replaceComponents(ModelRecord& record, ProMdlType beforeType, const std::string& before, ProMdlType nowType,
                       const std::string& now) {
  const std::wstring name = modelName(text::fromUtf8(before)).name;
  std::unordered_map<std::string, std::string> names;
  for (UsedModelRecord& component : record.components) {
    if (component.type != beforeType || modelName(text::fromUtf8(component.name)).name != name) continue;
    names.try_emplace(folded(component.name), now);
    component.name = now;
    component.type = nowType;
  }
  if (record.familyTable && !names.empty()) renameColumns(*record.familyTable, names);
  return !names.empty();
}

bool followRename(ModelRecord& record, ProMdlType user, const RenamedModel& renamed) {
  const bool sheets = user == ProMdlType::drawing || user == ProMdlType::format;
  return sheets ? followInDrawing(record, renamed) : followInSolid(record, renamed);
}

void followRename(Models& models, const RenamedModel& renamed) {
  for (const Model* model : models.all()) {
    if (model->row || !maySpeakOf(*model, renamed.before, renamed.type)) continue;
    if (!models.bringBack(*model).empty()) continue;  // it is lost; what is left of it knows the former name
    ModelDocument& user = *model->document;
    if (!followRename(user.record, user.type, renamed)) continue;
    if (auto& ofTexts = user.modelOfTexts; ofTexts && ofTexts->name == renamed.before && ofTexts->type == renamed.type)
      ofTexts->name = renamed.now;
    user.tree.changed();
    user.touch(nullptr);
  }
  models.countUsesAnew();
}

void followSectionRename(Models& models, const Model& solid, const std::string& before, const std::string& now) {
  for (const Model* model : models.all()) {
    if (!hasSheets(model->type()) || !maySpeakOf(*model, solid.name, solid.type())) continue;
    if (!models.bringBack(*model).empty()) continue;
    bool follows = false;
    for (ViewRecord& view : model->document->record.views) {
      if (!sameName(view.section, before) || !isLabelOf(view.model, solid.name, solid.type())) continue;
      view.section = now;
      follows = true;
    }
    if (follows) model->document->touch(nullptr);
  }
}

}  // namespace headless

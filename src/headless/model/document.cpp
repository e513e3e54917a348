#include "headless/model/document.h"

#include <algorithm>

#include "text/encoding.h"
#include "text/letters.h"

namespace headless {
namespace {

bool isNameStart(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}
bool isNamePart(char c) { return isNameStart(c) || (c >= '0' && c <= '9'); }

// The names in a line of relations, texts in quotes aside; a name that "=" follows at the line's start is assigned.
void collectNames(std::string_view line, ModelDocument::RelationNames& into) {
  bool first = true;
  for (std::size_t i = 0; i < line.size();) {
    if (line[i] == '"' || line[i] == '\'') {
      const auto close = line.find(line[i], i + 1);
      if (close == std::string_view::npos) return;
      i = close + 1;
      continue;
    }
    if (!isNamePart(line[i])) {
      if (line.substr(i, 2) == "/*") return;
      first = first && (line[i] == ' ' || line[i] == '\t');
      ++i;
      continue;
    }
    std::size_t end = i;
    while (end < line.size() && isNamePart(line[end])) ++end;
    const auto next = line.find_first_not_of(" \t", end);
    const bool assigns = first && next != std::string_view::npos && line[next] == '=' && line.substr(next, 2) != "==";
    if (isNameStart(line[i])) (assigns ? into.assigned : into.read).insert(folded(line.substr(i, end - i)));
    first = false;
    i = end;
  }
}

}  // namespace

RowRecord* ModelDocument::row(std::wstring_view rowName) {
  if (!record.familyTable) return nullptr;
  if (rowsByName_.empty())
    eachRow(*record.familyTable,
            [&](RowRecord& entry) { rowsByName_.try_emplace(text::upper(text::fromUtf8(entry.name)), &entry); });
  const auto found = rowsByName_.find(text::upper(rowName));
  return found == rowsByName_.end() ? nullptr : found->second;
}

FamilyTableRecord* ModelDocument::tableAbove(const RowRecord* row) const {
  return row && row->parent ? row->parent->familyTable.get() : record.familyTable.get();
}

FamilyTableRecord* ModelDocument::tableOf(const RowRecord* row) const {
  return row ? row->familyTable.get() : record.familyTable.get();
}

std::vector<std::wstring> ModelDocument::rowNames() const {
  std::vector<std::wstring> names;
  if (record.familyTable)
    eachRow(*record.familyTable, [&](RowRecord& entry) { names.push_back(text::upper(text::fromUtf8(entry.name))); });
  return names;
}

void ModelDocument::renameRow(RowRecord& row, std::string to) {
  if (!rowsByName_.empty()) {
    rowsByName_.erase(text::upper(text::fromUtf8(row.name)));
    rowsByName_.try_emplace(text::upper(text::fromUtf8(to)), &row);
  }
  row.name = std::move(to);
  touch(&row);
}

void ModelDocument::takeRow(RowRecord& row) {
  auto& rows = tableAbove(&row)->instances;
  const auto at = std::find_if(rows.begin(), rows.end(), [&](const auto& entry) { return entry.get() == &row; });
  takenRows_.push_back(std::move(*at));
  rows.erase(at);
  const auto leave = [&](RowRecord& gone) {
    const auto known = rowsByName_.find(text::upper(text::fromUtf8(gone.name)));
    if (known != rowsByName_.end() && known->second == &gone) rowsByName_.erase(known);
    if (!gone.changed) return;
    // Rows are taken in the order in which they were changed, as a rule.
    changedRows_.erase(std::find(changedRows_.begin(), changedRows_.end(), &gone));
  };
  leave(row);
  if (row.familyTable) eachRow(*row.familyTable, leave);
  touch(row.parent);
}

bool ModelDocument::returnRow(std::wstring_view rowName, RowRecord* parent) {
  FamilyTableRecord* table = tableOf(parent);
  const auto kept = std::find_if(takenRows_.rbegin(), takenRows_.rend(), [&](const auto& entry) {
    return entry->parent == parent && text::equalNoCase(text::fromUtf8(entry->name), rowName);
  });
  if (!table || kept == takenRows_.rend()) return false;
  table->instances.push_back(std::move(*kept));
  takenRows_.erase(std::next(kept).base());
  RowRecord& row = *table->instances.back();
  row.changed = false;  // it was taken from those that are
  touch(&row);
  rowsChanged();
  return true;
}

void ModelDocument::addRow(std::string rowName, RowRecord* parent) {
  RowRecord& row = *tableOf(parent)->instances.emplace_back(std::make_unique<RowRecord>());
  row.name = std::move(rowName);
  row.parent = parent;
  touch(&row);
  rowsChanged();
}

DimensionRecord* ModelDocument::dimension(int id, bool reference) {
  auto& dimensions = record.dimensions;
  // Where some have gone others stand in their places, and new ones have none: then all are looked up anew.
  for (int tries = 0; tries < 2; ++tries) {
    if (dimensions_.size() + referenceDimensions_.size() == 0)
      for (std::size_t i = 0; i < dimensions.size(); ++i)
        (dimensions[i].reference ? referenceDimensions_ : dimensions_).try_emplace(dimensions[i].id, i);
    const auto& places = reference ? referenceDimensions_ : dimensions_;
    const auto found = places.find(id);
    const bool isNoted = found != places.end();
    if (!isNoted && dimensions_.size() + referenceDimensions_.size() == dimensions.size()) return nullptr;
    if (isNoted && found->second < dimensions.size()) {
      DimensionRecord& entry = dimensions[found->second];
      if (entry.id == id && entry.reference == reference) return &entry;
    }
    dimensions_.clear();
    referenceDimensions_.clear();
  }
  return nullptr;
}

NoteRecord* ModelDocument::note(int id) {
  auto& notes = record.notes;
  // Ids ascend as long as nobody wrote them by hand: then the list is its own index, whatever comes and goes.
  const auto guess = std::lower_bound(notes.begin(), notes.end(), id,
                                      [](const NoteRecord& entry, int wanted) { return entry.id < wanted; });
  if (guess != notes.end() && guess->id == id) return &*guess;
  for (const bool isAnew : {false, true}) {
    if (isAnew || notesIndexed_ != notes.size()) {
      notes_.clear();
      for (std::size_t i = 0; i < notes.size(); ++i) notes_.try_emplace(notes[i].id, i);
      notesIndexed_ = notes.size();
    }
    // One that has gone and a new one make the number the old one: what was noted is only a hint.
    const auto found = notes_.find(id);
    if (found != notes_.end() && found->second < notes.size() && notes[found->second].id == id)
      return &notes[found->second];
  }
  return nullptr;
}

const SolidRecord& ModelDocument::solid() {
  if (!solid_) solid_ = std::make_unique<SolidRecord>(solidRecord(record.solid));
  return *solid_;
}

void ModelDocument::touch(RowRecord* row) {
  contentModified_ = true;
  instanceValues_.clear();
  touchData(row);
}

void ModelDocument::touchData(RowRecord* row) {
  modified_ = true;
  ++changes_;
  if (!row || row->changed) return;
  row->changed = true;
  changedRows_.push_back(row);
}

void ModelDocument::markSaved() {
  modified_ = contentModified_ = false;
  ++changes_;
  for (RowRecord* row : changedRows_) row->changed = false;
  changedRows_.clear();
}

void ModelDocument::setMarks(const Marks& before) {
  const bool content = contentModified_ && before.modified;
  markSaved();
  contentModified_ = content;
  modified_ = before.modified;
  changedRows_ = before.rows;
  for (RowRecord* row : changedRows_) row->changed = true;
}

void ModelDocument::putAway(Away kept) {
  kept.data = std::move(record.externalData);
  away_ = std::make_unique<Away>(std::move(kept));
  // A text that is replaced by a short one keeps its room: what goes has to be taken out first.
  { const ModelRecord gone = std::move(record); }
  record = {};
  forgetIndexes();
}

void ModelDocument::comeBack(ModelRecord again) {
  record = std::move(again);
  record.externalData = std::move(away_->data);
  away_.reset();
  if (record.familyTable) linkRows(*record.familyTable, nullptr);
}

void ModelDocument::forgetIndexes() {
  tree.changed();
  rowsByName_ = {};
  relationNames_.reset();
  solid_.reset();
  instanceValues_.clear();
  dimensions_ = referenceDimensions_ = {};
  notes_ = {};
  notesIndexed_ = 0;
}

const ModelDocument::RelationNames& ModelDocument::relationNames() {
  if (!relationNames_) {
    relationNames_ = std::make_unique<RelationNames>();
    const auto collect = [this](const std::vector<std::string>& lines) {
      for (const std::string& line : lines) collectNames(line, *relationNames_);
    };
    collect(record.relations);
    for (const FeatureRecord& feature : record.features) {
      collect(feature.relations);
      for (const SectionRecord& section : feature.sections) collect(section.relations);
    }
    RelationNames after;
    for (const std::string& line : record.postRelations) collectNames(line, after);
    relationNames_->assignedAfter = std::move(after.assigned);
  }
  return *relationNames_;
}

std::string symbolOf(const DimensionRecord& dimension) {
  if (!dimension.symbol.empty()) return dimension.symbol;
  return (dimension.reference ? "rd" : "d") + std::to_string(dimension.id);
}

std::wstring documentFileName(const ModelDocument& document, int version) {
  return version > 0 ? document.fileStem + L'.' + std::to_wstring(version) : document.fileStem;
}

std::wstring savedPath(const ModelDocument& document) {
  return document.saveFolder() + documentFileName(document, document.savedVersion());
}

void linkRows(FamilyTableRecord& table, RowRecord* parent) {
  for (const auto& row : table.instances) {
    row->parent = parent;
    if (row->familyTable) linkRows(*row->familyTable, row.get());
  }
}

}  // namespace headless

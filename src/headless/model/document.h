// A document in memory, shared by the model it is and the instances of its family table.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "creo/ProMdl.h"
#include "headless/model/feature_tree.h"
#include "headless/model/instance_values.h"
#include "headless/store/document.h"
#include "headless/store/records_geometry.h"

namespace headless {

struct ModelsHost;  // models_host.h

class ModelDocument {
 public:
  std::wstring name;  // upper case
  creo::ProMdlType type = creo::ProMdlType::unused;
  int version = 0;         // of the file; 0 for one that was never saved, or only by a backup
  std::wstring folder;     // with its closing backslash; empty for such a one
  std::wstring fileStem;   // "bracket.prt", as the file is written on disk
  int writtenVersion = 0;  // the version that this session wrote last, in the folder that saves go to; 0: none
  // Where a backup has moved the document's saves, with the version that lies there; an empty folder: they stay where
  // the document lies. `folder` and `version` go on telling the file that was read.
  struct Moved {
    std::wstring folder;  // with its closing backslash
    int version = 0;
  } moved;
  ModelRecord record;
  // What a PDM workspace says of it: it holds the document, and the document may not be saved, as it isn't checked out.
  bool inWorkspace = false, closed = false;
  // A drawing's texts are still about that model, as no regeneration has followed the change to another. Never written.
  std::optional<creo::ProDependency> modelOfTexts;
  // Asked for what relations want of the body; null while nobody has brought the document in. It outlives the document.
  const ModelsHost* host = nullptr;
  bool unworkedTold = false;  // the message area has said which relations aren't worked out
  std::string activeRep;      // the simplified representation in memory; empty: the master's. Never written

  // Where the next save goes; empty for one that lies nowhere.
  [[nodiscard]] const std::wstring& saveFolder() const { return moved.folder.empty() ? folder : moved.folder; }
  // The version that the session knows there.
  [[nodiscard]] int savedVersion() const { return moved.folder.empty() ? version : moved.version; }

  // The row of that name, in this table or one below it; null for none.
  RowRecord* row(std::wstring_view rowName);
  // The table that a row hangs in, or, for none, the document's own; null without one.
  [[nodiscard]] FamilyTableRecord* tableAbove(const RowRecord* row) const;
  // The table of a row's own instances, or, for none, the document's.
  [[nodiscard]] FamilyTableRecord* tableOf(const RowRecord* row) const;
  // Names of all rows, in upper case.
  [[nodiscard]] std::vector<std::wstring> rowNames() const;
  // Rows were added or taken away.
  void rowsChanged() { rowsByName_.clear(); }
  // No other row of the document has the name.
  void renameRow(RowRecord& row, std::string to);
  // Takes a row out of its table. Its names, and those below it, are free. It is kept for returnRow.
  void takeRow(RowRecord& row);
  // Puts the row that was taken out of that row's table, or for none the document's, back at its end. False: none of
  // that name was taken, or there is no table.
  bool returnRow(std::wstring_view rowName, RowRecord* parent);
  // A new row at the end of the same table, which is there, with its generic's values. No other row has the name.
  void addRow(std::string rowName, RowRecord* parent);

  FeatureTree tree;
  // Null for none.
  DimensionRecord* dimension(int id, bool reference);
  // Of a solid, or of a drawing. Null for none.
  NoteRecord* note(int id);

  // Null members until Models has the document; what they answer is told in regenerate.h.
  WorkedOut workedOut;

  // Read from the record's `solid` when first asked for.
  const SolidRecord& solid();
  // Where instanceValues keeps what it has worked out for a row: null until it has, and again behind each change.
  std::unique_ptr<InstanceValues>& valuesOf(const RowRecord& row) { return instanceValues_[&row]; }
  // The record was changed where nothing is to be saved of it: what was worked out for rows isn't so any more.
  void forgetValues() { instanceValues_.clear(); }
  // The record's `solid` was written anew.
  void solidChanged() { solid_.reset(); }

  // Marks a change of the document itself, or of a row.
  void touch(RowRecord* row);
  // The same of what programs keep with the model, such as a history, and that says nothing of the model itself.
  void touchData(RowRecord* row);
  // Of the document: whether anything in it changed; of a row: whether the row did.
  [[nodiscard]] bool isModified(const RowRecord* row) const { return row ? row->changed : modified_; }
  // Whether anything but such data did.
  [[nodiscard]] bool isContentModified() const { return contentModified_; }
  void markSaved();
  // What is marked, and how often marks were set or cleared, for who puts back what was changed.
  struct Marks {
    bool modified = false;
    std::vector<RowRecord*> rows;
    std::size_t changes = 0;
  };
  [[nodiscard]] Marks marks() const { return {modified_, changedRows_, changes_}; }
  // As it was marked then. Nothing was changed since but what has been put back.
  void setMarks(const Marks& before);

  // Names that relations assign to or read, folded; those that post relations assign to.
  struct RelationNames {
    std::unordered_set<std::string> assigned, read, assignedAfter;
  };
  const RelationNames& relationNames();
  void relationsChanged() {
    relationNames_.reset();
    unworkedTold = false;
  }

  // ---- out of memory, while its model stays (away.h)
  // What is asked of a document whose record isn't there.
  struct Away {
    std::vector<creo::ProDependency> uses;  // what dependencies() gives
    std::vector<std::size_t> mentions;      // hashes of modelKey: whoever is called so in the record
    ExternalData data;                      // a class that was registered, or a history that is to be saved later
    bool isLost = false;                    // it was asked for and couldn't be read; its message was told
  };
  [[nodiscard]] bool isAway() const { return away_ != nullptr; }
  // Only of one that is away.
  [[nodiscard]] Away& away() { return *away_; }
  [[nodiscard]] const Away& away() const { return *away_; }
  // Rows were changed or taken out, which no file says.
  [[nodiscard]] bool hasRowsOfItsOwn() const { return !changedRows_.empty() || !takenRows_.empty(); }
  // Empties the record, and forgets what was made of it.
  void putAway(Away kept);
  void comeBack(ModelRecord again);

 private:
  void forgetIndexes();

  bool modified_ = false, contentModified_ = false;
  std::size_t changes_ = 0;
  std::vector<RowRecord*> changedRows_;
  std::vector<std::unique_ptr<RowRecord>> takenRows_;
  std::unordered_map<std::wstring, RowRecord*> rowsByName_;
  std::unique_ptr<RelationNames> relationNames_;
  std::unique_ptr<SolidRecord> solid_;
  std::unordered_map<const RowRecord*, std::unique_ptr<InstanceValues>> instanceValues_;
  std::unordered_map<int, std::size_t> dimensions_, referenceDimensions_;  // places by id
  std::unordered_map<int, std::size_t> notes_;                             // the same
  std::size_t notesIndexed_ = 0;                                           // how many there were
  std::unique_ptr<Away> away_;

 public:
  std::size_t textSize = 0;  // bytes of the file that it was read from; 0 for a new one
};

// What a dimension is called in relations: its symbol, else "d12" or "rd12".
std::string symbolOf(const DimensionRecord& dimension);
// "bracket.prt.3"
std::wstring documentFileName(const ModelDocument& document, int version);
// The newest file of the document that the session knows, where its saves go: "d:\models\bracket.prt.3".
std::wstring savedPath(const ModelDocument& document);
// Sets the rows' parents after reading.
void linkRows(FamilyTableRecord& table, RowRecord* parent);

}  // namespace headless

// Renaming on disk.
#include <algorithm>

#include "headless/model/family.h"
#include "headless/model/follow_rename.h"
#include "headless/model/models.h"
#include "headless/model/one_version.h"
#include "headless/model/rename.h"
#include "headless/store/faults.h"
#include "headless/store/given_numbers.h"
#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace headless {

using creo::ProError;
using creo::ProMdlType;
using creo::ProRenamed;

namespace {

// A document that uses the model, as its next version.
struct Follower {
  DocumentFile file;
  std::string bytes;
};

// Looks for a name without regard to case in the bytes of documents, so that few of them need be taken apart.
class NameInBytes {
 public:
  explicit NameInBytes(const std::wstring& name) : name_(text::toUtf8(text::lower(name))) {
    for (const char c : name_) isPlain_ = isPlain_ && static_cast<unsigned char>(c) < 0x80;
  }
  // True also where only taking the document apart can tell: letters may be written as "\u00C4".
  [[nodiscard]] bool mayBeIn(std::string_view bytes) const {
    if (!isPlain_ || bytes.find("\\u") != bytes.npos) return true;
    const char first = name_[0],
               capital = lower(first) == first && isLetter(first) ? static_cast<char>(first - 32) : first;
    for (std::size_t at = 0; at + name_.size() <= bytes.size(); ++at) {
      if (bytes[at] != first && bytes[at] != capital) continue;
      if (std::equal(name_.begin(), name_.end(), bytes.begin() + static_cast<std::ptrdiff_t>(at),
                     [](char a, char b) { return a == lower(b); }))
        return true;
    }
    return false;
  }

 private:
  static bool isLetter(char c) { return c >= 'a' && c <= 'z'; }
  static char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }
  std::string name_;
  bool isPlain_ = true;
};

bool hasInstance(const FamilyTableRecord& table, const std::string& name) {
  return std::any_of(table.instances.begin(), table.instances.end(), [&](const auto& row) {
    return sameName(row->name, name) || (row->familyTable && hasInstance(*row->familyTable, name));
  });
}

std::wstring stemOf(const DocumentFile& file) {
  return file.version > 0 ? file.fileName.substr(0, file.fileName.rfind(L'.')) : file.fileName;
}

// All files of a document, the newest last, so that what a failure leaves behind is still the document of that name.
std::vector<DocumentFile> versions(const std::wstring& folder, const std::wstring& name, ProMdlType type) {
  std::vector<DocumentFile> out;
  for (const os::Entry& entry : os::files().list(folder).value) {
    auto file = entry.isFolder ? std::nullopt : documentFile(entry.name);
    if (file && file->name == name && file->type == type) out.push_back(std::move(*file));
  }
  std::sort(out.begin(), out.end(), [](const auto& a, const auto& b) { return a.version < b.version; });
  return out;
}

// What was done on disk, to be taken back.
class Undo {
 public:
  void created(std::wstring path) { created_.push_back(std::move(path)); }
  void renamed(std::wstring from, std::wstring to) { renamed_.emplace_back(std::move(from), std::move(to)); }
  // Gives the files that couldn't be put back.
  std::vector<std::wstring> back() {
    std::vector<std::wstring> left;
    for (; !renamed_.empty(); renamed_.pop_back())
      if (os::files().rename(renamed_.back().second, renamed_.back().first)) left.push_back(renamed_.back().second);
    for (; !created_.empty(); created_.pop_back())
      if (os::files().remove(created_.back())) left.push_back(created_.back());
    return left;
  }

 private:
  std::vector<std::wstring> created_;
  std::vector<std::pair<std::wstring, std::wstring>> renamed_;
};

// Reads each document of a folder once.
struct FolderRename {
  Models& models;
  const ModelsHost& host;
  Store& store;
  Folder& folder;
  RenamedModel renamed;
  ProRenamed& told;
  std::vector<Follower> followers;

  ProError refuse(std::wstring reason) const {
    told.reason = std::move(reason);
    return creo::ProGeneralError;
  }

  // The document in memory that the file belongs to; null for none.
  [[nodiscard]] ModelDocument* inMemory(const DocumentFile& file) const {
    const auto there = models.inMemory(file.name, file.type);
    const Model* model = there ? models.find(there.value) : nullptr;
    return model && !model->row && model->document->folder == folder.path() ? model->document.get() : nullptr;
  }

  // Why the document may not be written; empty: it may.
  [[nodiscard]] std::wstring lockOf(const ModelDocument& document, const DocumentFile& file) const {
    const std::wstring path = folder.path() + file.fileName;
    if (document.record.readOnly) return cantWriteReadOnly(path);
    if (document.closed) return cantWriteCheckedIn(path);
    const ModelDocument* present = inMemory(file);
    return present && present->version != file.version ? writtenMeanwhile(path, file.version) : std::wstring();
  }

  ProError collect() {
    const NameInBytes before(renamed.before), now(renamed.now);
    const std::string taken = text::toUtf8(renamed.now);
    for (const DocumentFile& file : folder.documents()) {
      if (file.name == renamed.before && file.type == renamed.type) continue;
      const std::wstring path = folder.path() + file.fileName;
      const auto bytes = store.read(path);
      if (!bytes) return refuse(cantRead(path, bytes.error));
      const bool mayUse = before.mayBeIn(bytes.value);
      if (!mayUse && (file.type != renamed.type || !now.mayBeIn(bytes.value))) continue;
      ModelDocument document;
      if (const JsonFault fault = readDocument(bytes.value, document.record)) {
        if (mayUse) return refuse(cantRead(path, fault));
        continue;
      }
      if (file.type == renamed.type && document.record.familyTable && hasInstance(*document.record.familyTable, taken))
        return creo::ProExists;
      if (const ProError result = takeFollower(document, file)) return result;
    }
    return creo::ProNoError;
  }

  ProError takeFollower(ModelDocument& document, const DocumentFile& file) {
    if (!followRename(document.record, file.type, renamed)) return creo::ProNoError;
    document.name = file.name;
    document.type = file.type;
    document.folder = folder.path();
    document.version = file.version;
    document.fileStem = stemOf(file);
    if (host.read) host.read(document);
    if (std::wstring lock = lockOf(document, file); !lock.empty()) return refuse(std::move(lock));
    const int next = GivenNumbers::next(folder.path(), file.name, file.type, file.version);
    followers.push_back(
        {{file.name, file.type, next, documentFileName(document, next)}, writeDocument(document.record)});
    return creo::ProNoError;
  }

  // Writes the users and renames the model's own files, or leaves all as it was.
  ProError carryOut(const ModelDocument& document) {
    Undo undo;
    std::wstring failed;
    const std::wstring stem = text::lower(modelKey(renamed.now, renamed.type));
    for (const Follower& follower : followers) {
      const std::wstring path = folder.path() + follower.file.fileName;
      if (const auto error = store.create(folder, follower.file, follower.bytes)) failed = cantWrite(path, error);
      if (!failed.empty()) break;
      if (!host.withholdSaves) undo.created(path);
      told.followed.push_back(path);
    }
    if (failed.empty()) failed = host.withholdSaves ? pretend(document, stem) : renameFiles(stem, undo);
    if (failed.empty()) return creo::ProNoError;
    told.followed.clear();
    told.left = undo.back();
    folder.forget();
    return refuse(std::move(failed));
  }

  // Empty, or what failed.
  [[nodiscard]] std::wstring renameFiles(const std::wstring& stem, Undo& undo) const {
    for (const DocumentFile& file : versions(folder.path(), renamed.before, renamed.type)) {
      const std::wstring from = folder.path() + file.fileName;
      const std::wstring to = folder.path() + stem + (file.version > 0 ? L"." + std::to_wstring(file.version) : L"");
      if (os::files().exists(to)) return cantWrite(to, std::make_error_code(std::errc::file_exists));
      if (const auto error = os::files().rename(from, to)) return cantWrite(to, error);
      undo.renamed(from, to);
    }
    folder.forget();
    return {};
  }

  // The new name's document is there in a session that writes nothing.
  [[nodiscard]] std::wstring pretend(const ModelDocument& document, const std::wstring& stem) const {
    const auto bytes = store.read(folder.path() + documentFileName(document, document.version));
    const DocumentFile file{renamed.now, renamed.type, document.version,
                            stem + (document.version > 0 ? L"." + std::to_wstring(document.version) : L"")};
    if (const auto error = store.create(folder, file, bytes.value)) return cantWrite(file.fileName, error);
    return {};
  }

  // What is in memory of the users is now that of their next version; unsaved changes stay unsaved.
  void takeUpInMemory() const {
    for (const Follower& entry : followers) {
      host.saved({entry.file.name, entry.file.type, entry.file.version, folder.path() + entry.file.fileName});
      ModelDocument* stored = inMemory(entry.file);
      if (!stored) continue;
      followRename(stored->record, stored->type, renamed);
      stored->tree.changed();
      stored->version = entry.file.version;
      // Behind a backup the number of the last save is one of the backup's folder.
      if (stored->moved.folder.empty()) stored->writtenVersion = stored->version;
    }
  }
};

}  // namespace

ProError renameOnDisk(Models& models, creo::ProMdl handle, std::wstring_view wanted, ProRenamed& reported) {
  Model* model = models.find(handle);
  if (!model || model->row || !text::isModelName(wanted)) return creo::ProBadInputs;
  const std::wstring now = text::upper(wanted), before = model->name;
  ModelDocument& document = *model->document;
  const ModelsHost& host = models.host();
  if (now == before) return creo::ProNoError;
  if (isNameTaken(models, *model, now, false)) return creo::ProExists;
  const auto noteUnsaved = [&] {
    for (const Model* user : models.all()) {
      if (user->row) continue;
      for (const creo::ProDependency& used : dependencies(*user))
        if (used.name == before && used.type == model->type())
          reported.unsaved.push_back(user->name + L'.' + creo::typeExtension(user->type()));
    }
  };
  if (document.folder.empty()) {
    noteUnsaved();
    const ProError result = renameModel(models, handle, wanted);
    if (result == creo::ProNoError) host.renamed({before, now, model->type(), {}, {}});
    return result;
  }
  FolderRename work{
      models,   host, models.folders().store(), models.folders().of(document), {before, now, model->type()},
      reported, {}};
  const DocumentFile* newest = work.folder.find(before, model->type());
  const DocumentFile file = newest ? *newest : DocumentFile{before, model->type(), 0, document.fileStem};
  if (std::wstring lock = work.lockOf(document, file); !lock.empty()) return work.refuse(std::move(lock));
  if (const ProError result = work.collect()) return result;
  if (const ProError result = work.carryOut(document)) return result;
  work.takeUpInMemory();
  noteUnsaved();
  const std::wstring pathBefore = document.folder + documentFileName(document, document.version);
  models.setName(*model, now);
  // What a backup has put aside keeps the old name; under the new one nothing lies there.
  if (!document.moved.folder.empty()) {
    document.moved.version = 0;
    handOut(document);
  }
  if (host.read) host.read(document);
  host.renamed(
      {before, now, model->type(), pathBefore, document.folder + documentFileName(document, document.version)});
  followRename(models, {before, now, model->type()});
  return creo::ProNoError;
}

}  // namespace headless

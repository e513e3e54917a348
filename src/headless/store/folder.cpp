#include "headless/store/folder.h"

#include <algorithm>
#include <chrono>

#include "headless/store/document.h"
#include "headless/store/faults.h"
#include "os/paths.h"
#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/letters.h"
#include "text/numbers.h"

namespace headless {

using creo::ProMdlType;

namespace {

constexpr ProMdlType kTypes[] = {ProMdlType::part, ProMdlType::assembly, ProMdlType::drawing, ProMdlType::format,
                                 ProMdlType::manufacturing};

bool isNumber(std::wstring_view text) {
  return !text.empty() && text.size() < 10 && text.find_first_not_of(L"0123456789") == std::wstring_view::npos;
}

// A folder's time as a text that changes with it, and whether it is so young that a further change could have the same.
struct FolderStamp {
  std::wstring text;
  bool unsettled = false;
};
FolderStamp stampOf(const std::wstring& path) {
  using namespace std::chrono;
  const auto time = os::files().modified(path);
  if (!time) return {};
  const os::FileTime& t = time.value;
  const auto at = sys_days{year{t.year} / t.month / t.day} + hours{t.hour} + minutes{t.minute} + seconds{t.second} +
                  milliseconds{t.millisecond};
  return {std::to_wstring(at.time_since_epoch().count()), system_clock::now() - at < milliseconds{30}};
}

// Calls f(name, generic) for each row of a table and of those below.
template <class F>
void eachInstance(const Json& table, const std::string& generic, F f) {
  const Json* rows = table.member("instances");
  if (!rows) return;
  for (const Json& row : rows->items) {
    const Json* name = row.member("name");
    if (!name || !name->is(JsonKind::text)) continue;
    f(name->text, generic);
    if (const Json* nested = row.member("familyTable")) eachInstance(*nested, name->text, f);
  }
}

void collectUses(const std::vector<UsedModelRecord>& used, std::vector<creo::ProDependency>& into) {
  for (const UsedModelRecord& record : used)
    into.push_back({text::upper(text::fromUtf8(record.name)), creo::typeExtension(record.type), record.type});
}

void collectRows(const FamilyTableRecord& table, const std::wstring& generic, FolderDocument& into) {
  for (const auto& row : table.instances) {
    const std::wstring name = text::upper(text::fromUtf8(row->name));
    into.instances.push_back({name, generic});
    if (row->familyTable) collectRows(*row->familyTable, name, into);
  }
}

}  // namespace

ProMdlType modelType(std::wstring_view extension) {
  for (const ProMdlType type : kTypes)
    if (text::equalNoCase(extension, creo::typeExtension(type))) return type;
  return ProMdlType::unused;
}

std::wstring modelKey(std::wstring_view name, ProMdlType type) {
  return text::upper(name) + L'.' + creo::typeExtension(type);
}

ModelName modelName(std::wstring_view text) {
  const auto open = text.find(L'<');
  if (open == std::wstring_view::npos || text.back() != L'>') return {text::upper(text), {}};
  return {text::upper(text.substr(0, open)), text::upper(text.substr(open + 1, text.size() - open - 2))};
}

std::optional<DocumentFile> documentFile(std::wstring_view fileName) {
  std::wstring_view rest = fileName;
  DocumentFile file;
  if (const auto dot = rest.rfind(L'.'); dot != std::wstring_view::npos && isNumber(rest.substr(dot + 1))) {
    file.version = text::parseInt(rest.substr(dot + 1));
    rest = rest.substr(0, dot);
  }
  const auto dot = rest.rfind(L'.');
  if (dot == std::wstring_view::npos || dot == 0) return std::nullopt;
  file.type = modelType(rest.substr(dot + 1));
  if (file.type == ProMdlType::unused) return std::nullopt;
  file.name = text::upper(rest.substr(0, dot));
  file.fileName = fileName;
  return file;
}

const DocumentFile* Folder::find(std::wstring_view name, ProMdlType type) {
  refresh();
  const auto found = files_.find(modelKey(name, type));
  return found == files_.end() ? nullptr : &found->second;
}

std::vector<DocumentFile> Folder::documents() {
  if (!listed_) list();
  std::vector<std::pair<const std::wstring*, const DocumentFile*>> order;
  order.reserve(files_.size());
  for (const auto& [key, file] : files_) order.emplace_back(&key, &file);
  std::sort(order.begin(), order.end(), [](const auto& a, const auto& b) { return *a.first < *b.first; });
  std::vector<DocumentFile> out;
  out.reserve(order.size());
  for (const auto& [key, file] : order) out.push_back(*file);
  return out;
}

void Folder::list() {
  const FolderStamp stamp = stampOf(path_);
  stamp_ = stamp.text;
  unsettled_ = stamp.unsettled;
  listed_ = true;
  instancesKnown_ = false;
  files_.clear();
  const auto entries = os::files().list(path_);
  for (const os::Entry& entry : entries.value) {
    if (entry.isFolder) continue;
    if (const auto file = documentFile(entry.name)) add(*file);
  }
  for (const DocumentFile& file : withheld_) add(file);
}

void Folder::refresh() {
  if (!listed_ || unsettled_ || stampOf(path_).text != stamp_) list();
}

void Folder::add(const DocumentFile& file) {
  const auto [at, fresh] = files_.try_emplace(modelKey(file.name, file.type), file);
  if (!fresh && at->second.version <= file.version) at->second = file;
}

void Folder::enter(const DocumentFile& file, bool onDisk) {
  if (!onDisk) withheld_.push_back(file);
  if (!listed_) return;
  add(file);
  // The session's own write isn't a reason to list the folder again.
  if (onDisk) stamp_ = stampOf(path_).text;
}

std::wstring Folder::genericOf(std::wstring_view instance, ProMdlType type) {
  if (!listed_) list();
  if (!instancesKnown_) {
    instancesKnown_ = true;
    instances_.clear();
    for (const DocumentFile& file : documents()) {
      if (file.type == ProMdlType::drawing || file.type == ProMdlType::format) continue;
      const auto bytes = os::files().read(path_ + file.fileName);
      // Most documents have no table; those needn't be read as JSON.
      if (!bytes || bytes.value.find("\"familyTable\"") == std::string::npos) continue;
      Json tree;
      if (parseJson(bytes.value, tree)) continue;
      const Json* table = tree.member("familyTable");
      if (!table) continue;
      eachInstance(*table, {}, [&](const std::string& name, const std::string&) {
        instances_.try_emplace(modelKey(text::fromUtf8(name), file.type), file.name);
      });
    }
  }
  const auto found = instances_.find(modelKey(instance, type));
  return found == instances_.end() ? std::wstring() : found->second;
}

void Folder::enterInstances(const DocumentFile& generic, const std::vector<std::wstring>& instances) {
  if (!instancesKnown_) return;
  for (const std::wstring& name : instances) instances_.try_emplace(modelKey(name, generic.type), generic.name);
}

namespace {

FolderDocument cantWork(const std::wstring& folder, const DocumentFile& file, const std::wstring& reason) {
  FolderDocument document;
  document.file = file;
  document.path = folder + file.fileName;
  document.fault = document.path + L": can't be worked: " + reason;
  return document;
}

FolderDocument readWhole(const std::wstring& folder, const DocumentFile& file) {
  if (modelName(file.name).name != file.name)
    return cantWork(folder, file, L"a name of the form A<B> is that of an instance A of B");
  FolderDocument document;
  document.file = file;
  document.path = folder + file.fileName;
  const auto bytes = os::files().read(document.path);
  ModelRecord record;
  if (!bytes) {
    document.fault = cantRead(document.path, bytes.error);
  } else if (const JsonFault fault = readDocument(bytes.value, record)) {
    document.fault = cantRead(document.path, fault);
  } else {
    collectUses(file.type == ProMdlType::drawing ? record.models : record.components, document.uses);
    if (record.familyTable) collectRows(*record.familyTable, file.name, document);
  }
  return document;
}

}  // namespace

std::vector<FolderDocument> readFolder(std::wstring_view folderPath) {
  Folder folder(os::asFolder(folderPath));
  const std::vector<DocumentFile> current = folder.documents();
  // Names are compared case-blind: of two files with one name and version only one is the model's document.
  std::unordered_map<std::wstring, std::vector<DocumentFile>> byKey;
  for (const os::Entry& entry : os::files().list(folder.path()).value) {
    const auto file = entry.isFolder ? std::nullopt : documentFile(entry.name);
    if (file) byKey[modelKey(file->name, file->type)].push_back(*file);
  }
  std::vector<FolderDocument> out;
  for (const DocumentFile& file : current) {
    for (const DocumentFile& other : byKey[modelKey(file.name, file.type)]) {
      if (other.version != file.version || other.fileName == file.fileName) continue;
      out.push_back(cantWork(folder.path(), other, file.fileName + L" has its name and version"));
    }
    out.push_back(readWhole(folder.path(), file));
  }
  return out;
}

Folder& Store::folder(std::wstring_view path) {
  std::wstring whole = os::asFolder(os::withBackslashes(path));
  auto& present = folders_[text::lower(whole)];
  if (!present) present = std::make_unique<Folder>(std::move(whole));
  return *present;
}

os::Result<std::string> Store::read(const std::wstring& path) const {
  if (const auto present = withheld_.find(path); present != withheld_.end()) return {present->second, {}};
  return os::files().read(path);
}

bool Store::has(const std::wstring& path) const { return isWithheld(path) || os::files().exists(path); }

std::error_code Store::create(Folder& folder, const DocumentFile& file, std::string_view bytes) {
  return put(folder, file, bytes, &os::Files::create);
}

// Where nothing is written the folder's next listing doesn't show it, and who writes finds its name taken.
void Store::wrote(Folder& folder, const DocumentFile& file, std::string_view bytes) {
  if (withhold_) withheld_[folder.path() + file.fileName] = bytes;
  folder.enter(file, true);
}

std::error_code Store::replace(Folder& folder, const DocumentFile& file, std::string_view bytes) {
  return put(folder, file, bytes, &os::Files::write);
}

std::error_code Store::removeAll(Folder& folder, std::wstring_view name, ProMdlType type) {
  if (withhold_) return {};
  std::error_code failed;
  for (const os::Entry& entry : os::files().list(folder.path()).value) {
    const auto file = entry.isFolder ? std::nullopt : documentFile(entry.name);
    if (!file || modelKey(file->name, file->type) != modelKey(name, type)) continue;
    if (const auto error = os::files().remove(folder.path() + entry.name)) failed = error;
  }
  folder.forget();
  return failed;
}

std::error_code Store::put(Folder& folder, const DocumentFile& file, std::string_view bytes, Writing writing) {
  const std::wstring path = folder.path() + file.fileName;
  if (withhold_) {
    withheld_[path] = bytes;
  } else if (const std::error_code error = (os::files().*writing)(path, bytes)) {
    return error;
  }
  folder.enter(file, !withhold_);
  return {};
}

}  // namespace headless

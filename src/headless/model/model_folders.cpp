#include "headless/model/model_folders.h"

#include <algorithm>

#include "headless/model/flat_memory.h"
#include "headless/store/faults.h"
#include "os/paths.h"
#include "os/surroundings.h"
#include "text/letters.h"

namespace headless {

using creo::ProMdlType;

ModelFolders::ModelFolders(bool withhold, const std::wstring& folder, Named named)
    : store_(withhold),
      named_(std::move(named)),
      working_(os::asFolder(os::withBackslashes(folder))),
      home_(working_) {}

bool ModelFolders::change(std::wstring_view path) {
  const std::wstring wanted = os::wholeFrom(working_, path);
  if (!os::files().isFolder(wanted)) return false;
  working_ = os::asFolder(wanted);
  return true;
}

std::vector<Folder*> ModelFolders::searched(ProMdlType type) {
  std::vector<Folder*> folders{&store_.folder(working_)};
  const auto add = [&folders](Folder& folder) {
    if (std::find(folders.begin(), folders.end(), &folder) == folders.end()) folders.push_back(&folder);
  };
  add(store_.folder(home_));
  if (!named_) return folders;
  for (const std::wstring& text : named_(type))
    if (!text.empty()) add(store_.folder(os::wholeFrom(working_, text)));
  return folders;
}

bool ModelFolders::has(std::wstring_view name, ProMdlType type) {
  const std::vector<Folder*> folders = searched(type);
  return std::any_of(folders.begin(), folders.end(), [&](Folder* folder) { return folder->find(name, type); });
}

ModelFolders::DocumentRead ModelFolders::readRecord(const std::wstring& path) const {
  DocumentRead read;
  if (auto ahead = store_.isWithheld(path) ? std::nullopt : FlatMemory::takeAhead(path)) {
    read.record = std::move(ahead->record);
    read.size = ahead->size;
    return read;
  }
  const auto bytes = store_.read(path);
  read.error = bytes.error;
  if (!bytes) return read;
  read.size = bytes.value.size();
  read.fault = readDocument(bytes.value, read.record);
  return read;
}

std::wstring ModelFolders::faultOf(const std::wstring& path, const DocumentRead& read) {
  return read.error ? cantRead(path, read.error) : cantRead(path, read.fault);
}

std::error_code ModelFolders::add(const std::wstring& name, ProMdlType type, int version, std::string_view bytes) {
  const std::wstring file = text::lower(modelKey(name, type)) + L'.' + std::to_wstring(version);
  return store_.create(home(), {text::upper(name), type, version, file}, bytes);
}

std::error_code ModelFolders::removeAll(const std::wstring& name, ProMdlType type) {
  return store_.removeAll(home(), name, type);
}

}  // namespace headless

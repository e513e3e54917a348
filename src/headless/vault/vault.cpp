#include "headless/vault/vault.h"

#include <algorithm>
#include <chrono>
#include <thread>

#include "headless/store/faults.h"
#include "headless/store/folder.h"
#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/letters.h"

namespace headless {

namespace {

constexpr const wchar_t *kVaultFile = L"vault.json", *kObjects = L"objects\\", *kContents = L"contents\\",
                        *kAttachments = L"attachments\\", *kWorkspaces = L"workspaces\\", *kFiles = L"files\\",
                        *kLockFile = L"vault.lock";
constexpr auto kLockPause = std::chrono::milliseconds(20);

// As people know it.
std::wstring shown(const std::wstring& path) { return text::fromUtf8(os::mounts().machine(path)); }

VaultAnswer failed(std::wstring reason) { return {creo::ProGeneralError, std::move(reason)}; }
VaultAnswer conflict(std::wstring reason) { return {creo::ProConflicts, std::move(reason)}; }

std::string now() { return text::toUtf8(os::localTime(os::clock().seconds(), "%Y-%m-%d %H:%M:%S")); }

template <class R>
VaultAnswer readFrom(const VaultFiles& files, const std::wstring& path, R& into) {
  const auto bytes = files.read(path);
  if (bytes.error == std::errc::no_such_file_or_directory) return {creo::ProNotFound, {}};
  if (!bytes) return failed(cantRead(shown(path), bytes.error));
  into = R{};  // lists of a record are added to
  if (const JsonFault fault = readRecord(bytes.value, into)) return failed(cantRead(shown(path), fault));
  return {};
}

bool sameWorkspace(std::string_view user, std::string_view workspace, const WorkspaceName& who) {
  return sameName(user, who.user) && sameName(workspace, who.workspace);
}

MemberRecord* memberIn(ObjectRecord& object, const WorkspaceName& who) {
  const auto found = std::find_if(object.workspaces.begin(), object.workspaces.end(), [&](const MemberRecord& member) {
    return sameWorkspace(member.user, member.workspace, who);
  });
  return found == object.workspaces.end() ? nullptr : &*found;
}

bool isHere(const ObjectRecord& object, const WorkspaceName& who) {
  return object.checkOut && sameWorkspace(object.checkOut->user, object.checkOut->workspace, who);
}

VaultAnswer othersCheckOut(const ObjectName& name, const CheckOutRecord& other) {
  return conflict(text::format(L"%s is checked out by %s in the workspace %s", name.label(), text::fromUtf8(other.user),
                               text::fromUtf8(other.workspace)));
}

void setMember(ObjectRecord& object, const WorkspaceName& who, int version) {
  MemberRecord* member = memberIn(object, who);
  if (!member) {
    member = &object.workspaces.emplace_back();
    member->user = who.user;
    member->workspace = who.workspace;
  }
  member->base = static_cast<int>(object.iterations.size());
  member->version = version;
}

// "A" to "B", "Z" to "AA".
std::string nextRevision(std::string revision) {
  for (std::size_t i = revision.size(); i-- > 0;) {
    if (revision[i] != 'Z') {
      ++revision[i];
      return revision;
    }
    revision[i] = 'A';
  }
  return "A" + revision;
}

// "/Designs" of "Designs/", "/Default" of nothing.
std::string locationOf(std::string location) {
  while (location.ends_with('/')) location.pop_back();
  if (location.empty()) return "/Default";
  return location.starts_with('/') ? location : "/" + location;
}

}  // namespace

bool isPlainName(std::wstring_view name) {
  if (name.empty() || name.front() == L'.' || name.find_first_of(L"\\/:*?\"<>|") != name.npos) return false;
  return std::none_of(name.begin(), name.end(), [](wchar_t c) { return c < L' '; });
}

std::wstring ObjectName::label() const { return text::upper(name) + L'.' + creo::typeExtension(type); }
std::wstring ObjectName::file() const { return text::lower(label()); }

const MemberRecord* memberOf(const ObjectRecord& object, const WorkspaceName& who) {
  return memberIn(const_cast<ObjectRecord&>(object), who);
}

bool isCheckedOut(const ObjectRecord& object, const WorkspaceName& who, const std::wstring& name) {
  if (!isHere(object, who)) return false;
  const std::string wanted = text::toUtf8(name);
  const auto& names = object.checkOut->names;
  return std::any_of(names.begin(), names.end(), [&](const std::string& entry) { return sameName(entry, wanted); });
}

std::wstring iterationText(const ObjectRecord& object, int iteration) {
  const IterationRecord& entry = object.iterations.at(static_cast<std::size_t>(iteration) - 1);
  return text::fromUtf8(entry.revision) + L'.' + std::to_wstring(entry.iteration);
}

VaultAnswer Vault::create(const std::wstring& folder, const std::string& name) {
  const std::wstring path = os::asFolder(folder) + kVaultFile;
  if (!isPlainName(text::fromUtf8(name))) return {creo::ProBadInputs, L"'" + text::fromUtf8(name) + L"' is no alias"};
  if (os::files().exists(path)) return {creo::ProExists, shown(folder) + L" is a vault already"};
  std::error_code error;
  for (const wchar_t* below : {kObjects, kContents, kWorkspaces})
    if (!error) error = os::files().createFolders(os::asFolder(folder) + below);
  VaultRecord record;
  record.name = name;
  if (!error) error = os::files().create(path, writeRecord(record));
  return error ? failed(cantWrite(shown(path), error)) : VaultAnswer();
}

std::unique_ptr<Vault> Vault::open(const std::wstring& folder, bool withhold, VaultAnswer& answer) {
  std::unique_ptr<Vault> vault(new Vault(os::asFolder(os::withBackslashes(folder)), withhold));
  answer = readFrom(vault->files_, vault->folder_ + kVaultFile, vault->record_);
  if (answer.error == creo::ProNotFound) answer.reason = shown(folder) + L" is no vault";
  if (!answer) return nullptr;
  return vault;
}

std::wstring Vault::objectPath(const ObjectName& name) const { return folder_ + kObjects + name.file() + L".json"; }
std::wstring Vault::contentPath(const ObjectName& name, std::size_t iteration) const {
  return folder_ + kContents + name.file() + L'.' + std::to_wstring(iteration);
}
std::wstring Vault::workspaceFolder(const WorkspaceName& who) const {
  return folder_ + kWorkspaces + text::lower(text::fromUtf8(who.user)) + L'\\' +
         text::lower(text::fromUtf8(who.workspace)) + L'\\';
}
std::wstring Vault::waitingFolder(const WorkspaceName& who, const ObjectName& primary) const {
  return workspaceFolder(who) + kAttachments + primary.file() + L'\\';
}

VaultAnswer Vault::write(const std::wstring& path, std::string_view bytes) {
  const std::error_code error = files_.write(path, bytes);
  return error ? failed(cantWrite(shown(path), error)) : VaultAnswer();
}

VaultAnswer Vault::writeObject(const ObjectRecord& record) {
  return write(objectPath({text::fromUtf8(record.name), record.type}), writeRecord(record));
}

VaultAnswer Vault::object(const ObjectName& name, ObjectRecord& into) const {
  return readFrom(files_, objectPath(name), into);
}

std::vector<ListedObject> Vault::objects() const {
  std::vector<ListedObject> all;
  for (const std::wstring& file : files_.names(folder_ + kObjects)) {
    if (!file.ends_with(L".json")) continue;
    ListedObject& object = all.emplace_back();
    object.fault = readFrom(files_, folder_ + kObjects + file, object.record).reason;
  }
  return all;
}

VaultAnswer Vault::content(const ObjectName& name, int iteration, std::string& into) const {
  const std::wstring path = contentPath(name, static_cast<std::size_t>(iteration));
  auto bytes = files_.read(path);
  if (!bytes) return failed(cantRead(shown(path), bytes.error));
  into = std::move(bytes.value);
  return {};
}

VaultAnswer Vault::openWorkspace(const WorkspaceName& who, const std::string& folder) {
  for (const std::string& part : {who.user, who.workspace})
    if (!isPlainName(text::fromUtf8(part)))
      return {creo::ProBadInputs, L"'" + text::fromUtf8(part) + L"' is no name of a user or workspace"};
  const std::wstring path = workspaceFolder(who) + L"workspace.json";
  WorkspaceRecord record;
  VaultAnswer answer = readFrom(files_, path, record);
  if (answer && record.folder != folder)
    return failed(text::format(L"the workspace %s of %s belongs to %s", text::fromUtf8(who.workspace),
                               text::fromUtf8(who.user), text::fromUtf8(record.folder)));
  if (answer.error != creo::ProNotFound) return answer;
  record.folder = folder;
  return write(path, writeRecord(record));
}

VaultAnswer Vault::lock(int wait, std::unique_ptr<os::FileLock>& into) const {
  if (withholds()) return {};
  const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(wait);
  for (;;) {
    auto lock = os::lockFile(folder_ + kLockFile);
    if (lock) {
      into = std::move(lock.value);
      return {};
    }
    if (lock.error != std::errc::device_or_resource_busy) return failed(cantWrite(shown(folder_), lock.error));
    if (std::chrono::steady_clock::now() >= end)
      return failed(text::format(L"the vault %s is locked by another process", shown(folder_)));
    std::this_thread::sleep_for(kLockPause);
  }
}

// ---- changes

VaultAnswer Vault::checkOut(const ObjectName& name, const WorkspaceName& who, const std::vector<std::string>& names) {
  ObjectRecord record;
  VaultAnswer answer = object(name, record);
  if (!answer) return answer;
  if (record.checkOut && !isHere(record, who)) return othersCheckOut(name, *record.checkOut);
  const MemberRecord* member = memberOf(record, who);
  if (!member)
    return conflict(text::format(L"%s isn't in the workspace %s", name.label(), text::fromUtf8(who.workspace)));
  const int newest = static_cast<int>(record.iterations.size());
  if (!record.checkOut && member->base != newest)
    return conflict(text::format(L"%s: the workspace has %s, the vault %s", name.label(),
                                 iterationText(record, member->base), iterationText(record, newest)));
  if (!record.checkOut) {
    record.checkOut = std::make_unique<CheckOutRecord>();
    record.checkOut->user = who.user;
    record.checkOut->workspace = who.workspace;
    record.checkOut->at = now();
  }
  auto& present = record.checkOut->names;
  for (const std::string& entry : names)
    if (!isCheckedOut(record, who, text::fromUtf8(entry))) present.push_back(entry);
  return writeObject(record);
}

VaultAnswer Vault::next(const ObjectName& name, const WorkspaceName& who, const std::string& location,
                        NextIteration& into) {
  ObjectRecord record;
  VaultAnswer answer = object(name, record);
  if (answer.error == creo::ProNotFound) {
    into = {"A", locationOf(location), 1};
    return {};
  }
  if (!answer) return answer;
  if (!record.checkOut) return conflict(name.label() + L" isn't checked out");
  if (!isHere(record, who)) return othersCheckOut(name, *record.checkOut);
  const IterationRecord& newest = record.iterations.back();
  into = {newest.revision, record.location, newest.iteration + 1};
  return {};
}

VaultAnswer Vault::checkIn(const ObjectName& name, const WorkspaceName& who, const NextIteration& next,
                           std::string_view bytes, int version) {
  ObjectRecord record;
  VaultAnswer answer = object(name, record);
  if (answer.error == creo::ProNotFound) {
    record.name = text::toUtf8(text::upper(name.name));
    record.type = name.type;
    record.location = next.location;
    answer = newNumber(record.number);
  }
  if (!answer) return answer;
  IterationRecord iteration;
  iteration.revision = next.revision;
  iteration.iteration = next.iteration;
  iteration.by = who.user;
  iteration.at = now();
  const std::size_t place = record.iterations.size() + 1;
  answer = write(contentPath(name, place), bytes);
  if (answer) answer = attach(name, who, place, iteration.attachments);
  if (!answer) return answer;
  record.iterations.push_back(std::move(iteration));
  record.checkOut.reset();
  setMember(record, who, version);
  answer = writeObject(record);
  if (!answer) return answer;
  const std::wstring waiting = waitingFolder(who, name);
  for (const std::wstring& file : files_.names(waiting)) (void)files_.remove(waiting + file);
  return {};
}

// Puts the files that wait for the object beside its new content.
VaultAnswer Vault::attach(const ObjectName& name, const WorkspaceName& who, std::size_t iteration,
                          std::vector<AttachmentRecord>& into) {
  const std::wstring waiting = waitingFolder(who, name);
  const std::wstring place = folder_ + kAttachments + name.file() + L'.' + std::to_wstring(iteration) + L'\\';
  for (const std::wstring& file : files_.names(waiting)) {
    const auto bytes = files_.read(waiting + file);
    if (!bytes) return failed(cantRead(shown(waiting + file), bytes.error));
    if (VaultAnswer answer = write(place + file, bytes.value); !answer) return answer;
    into.emplace_back().name = text::toUtf8(file);
  }
  return {};
}

// A number is taken for good before its object is there: one that breaks off leaves a gap, never two of one number.
VaultAnswer Vault::newNumber(int& into) {
  VaultRecord record;
  VaultAnswer answer = readFrom(files_, folder_ + kVaultFile, record);
  if (!answer) return answer;
  into = ++record.objects;
  return write(folder_ + kVaultFile, writeRecord(record));
}

VaultAnswer Vault::enter(const ObjectName& name, const WorkspaceName& who, int version) {
  ObjectRecord record;
  if (VaultAnswer answer = object(name, record); !answer) return answer;
  setMember(record, who, version);
  return writeObject(record);
}

VaultAnswer Vault::leave(const ObjectName& name, const WorkspaceName& who) {
  ObjectRecord record;
  if (VaultAnswer answer = object(name, record); !answer) return answer;
  std::erase_if(record.workspaces,
                [&](const MemberRecord& member) { return sameWorkspace(member.user, member.workspace, who); });
  return writeObject(record);
}

VaultAnswer Vault::release(const ObjectName& name) {
  ObjectRecord record;
  if (VaultAnswer answer = object(name, record); !answer) return answer;
  if (!record.checkOut) return {creo::ProNotFound, name.label() + L" isn't checked out"};
  record.checkOut.reset();
  return writeObject(record);
}

VaultAnswer Vault::revise(const ObjectName& name, const std::string& by) {
  ObjectRecord record;
  if (VaultAnswer answer = object(name, record); !answer) return answer;
  if (record.checkOut) return othersCheckOut(name, *record.checkOut);
  std::string bytes;
  VaultAnswer answer = content(name, static_cast<int>(record.iterations.size()), bytes);
  if (answer) answer = write(contentPath(name, record.iterations.size() + 1), bytes);
  if (!answer) return answer;
  IterationRecord iteration;
  iteration.revision = nextRevision(record.iterations.back().revision);
  iteration.iteration = 1;
  iteration.by = by;
  iteration.at = now();
  record.iterations.push_back(std::move(iteration));
  return writeObject(record);
}

// ---- files of a workspace that wait

VaultAnswer Vault::addFile(const WorkspaceName& who, const std::wstring& fileName, std::string_view bytes,
                           const ObjectName* primary) {
  if (!isPlainName(fileName)) return {creo::ProBadInputs, L"'" + fileName + L"' is no file's name"};
  if (!primary) return write(workspaceFolder(who) + kFiles + fileName, bytes);
  ObjectRecord record;
  VaultAnswer answer = object(*primary, record);
  if (!answer) return answer;
  if (!record.checkOut) return conflict(primary->label() + L" isn't checked out");
  if (!isHere(record, who)) return othersCheckOut(*primary, *record.checkOut);
  return write(waitingFolder(who, *primary) + fileName, bytes);
}

std::vector<std::wstring> Vault::filesOf(const WorkspaceName& who) const {
  return files_.names(workspaceFolder(who) + kFiles);
}

VaultAnswer Vault::dropFiles(const WorkspaceName& who) {
  const std::wstring folder = workspaceFolder(who) + kFiles;
  for (const std::wstring& file : files_.names(folder))
    if (const auto error = files_.remove(folder + file)) return failed(cantWrite(shown(folder + file), error));
  return {};
}

}  // namespace headless

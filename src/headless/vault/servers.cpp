#include "headless/vault/servers.h"

#include "headless/model/models.h"
#include "headless/model/one_version.h"
#include "headless/model/save.h"
#include "headless/store/compare.h"
#include "headless/store/faults.h"
#include "headless/store/given_numbers.h"
#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/letters.h"

namespace headless {

using creo::Got;
using creo::ProError;

namespace {

constexpr std::wstring_view kWorkspaceDevice = L"wtws", kPublicDevice = L"wtpub";

ObjectName nameOf(const ModelDocument& document) { return {document.name, document.type}; }

// "bracket.prt" taken apart; nothing for what is no model's name.
std::optional<ObjectName> modelNameOf(const std::wstring& file) {
  const std::size_t dot = file.rfind(L'.');
  if (dot == file.npos) return std::nullopt;
  const creo::ProMdlType type = modelType(file.substr(dot + 1));
  if (type == creo::ProMdlType::unused) return std::nullopt;
  return ObjectName{text::upper(file.substr(0, dot)), type};
}

// What the server says of a model stands in the model as text parameters, in place of what had their names.
void setServerParameter(ModelRecord& record, const char* name, const std::string& value) {
  ParameterRecord* parameter = nullptr;
  for (ParameterRecord& entry : record.parameters.list)
    if (sameName(entry.name, name)) parameter = &entry;
  if (!parameter) {
    parameter = &record.parameters.list.emplace_back();
    parameter->name = name;
  }
  parameter->type = creo::ProParamvalueType::string;
  parameter->value = value;
  parameter->units.clear();
}

std::wstring slashed(std::wstring_view path) {
  std::wstring out(path);
  for (wchar_t& c : out) c = c == L'\\' ? L'/' : c;
  while (out.ends_with(L'/')) out.pop_back();
  return out;
}

// Has the model in memory, or the folder's newest document, what the vault lacks? A history alone isn't meant.
bool isChangedInMemory(const Models& models, const ObjectName& name) {
  const auto memory = models.inMemory(name.name, name.type);
  return memory && models.find(memory.value)->document->isContentModified();
}
bool isChangedHere(Models& models, const Vault& vault, const ObjectName& name, const MemberRecord& member) {
  const DocumentFile* newest = models.folders().home().find(name.name, name.type);
  if (!newest || newest->version == member.version) return false;
  std::string taken;
  const auto here = models.folders().read(models.folders().home().path() + newest->fileName);
  if (!here || !vault.content(name, member.base, taken)) return true;
  return !compareTexts(taken, here.value, {.history = false}).empty();
}

void addLine(std::wstring& lines, const std::wstring& line) { lines += (lines.empty() ? L"" : L"; ") + line; }

}  // namespace

std::wstring Servers::Server::alias() const { return text::fromUtf8(vault->name()); }

std::wstring Servers::connect(const VaultConnection& connection) {
  VaultAnswer answer;
  Server server;
  server.vault = Vault::open(connection.folder, withhold_, answer);
  if (!answer) return answer.reason;
  if (of(server.alias())) return text::format(L"two vaults have the name %s", server.alias());
  server.who = {text::toUtf8(connection.user), text::toUtf8(connection.workspace)};
  server.lockWait = connection.lockWait;
  answer = server.vault->openWorkspace(server.who, os::mounts().machine(modelFolder_));
  if (!answer) return answer.reason;
  servers_.push_back(std::move(server));
  if (servers_.size() == 1) placeAll();
  return {};
}

const Servers::Server* Servers::of(const std::wstring& alias) const {
  for (const Server& server : servers_)
    if (text::equalNoCase(server.alias(), alias)) return &server;
  return nullptr;
}

Got<std::wstring> Servers::active() const {
  if (servers_.empty()) return creo::ProNotFound;
  return servers_[active_].alias();
}

ProError Servers::activate(const std::wstring& alias) {
  const Server* server = of(alias);
  if (!server) return creo::ProNotFound;
  active_ = static_cast<std::size_t>(server - servers_.data());
  placeAll();
  return creo::ProNoError;
}

Got<std::wstring> Servers::workspace(const std::wstring& alias) const {
  const Server* server = of(alias);
  if (!server) return creo::ProNotFound;
  return text::fromUtf8(server->who.workspace);
}

std::optional<ObjectName> Servers::objectOf(const std::wstring& file) const {
  const auto name = modelNameOf(file);
  if (!name) return std::nullopt;
  const auto there = models_.inMemory(name->name, name->type);
  return there ? nameOf(*models_.find(there.value)->document) : name;
}

int Servers::newestHere(const ObjectName& name) const {
  const DocumentFile* file = models_.folders().home().find(name.name, name.type);
  return file ? file->version : 0;
}

Got<creo::ProServerStatus> Servers::status(const std::wstring& alias, const std::wstring& workspace,
                                           const std::wstring& file) const {
  const Server* server = of(alias);
  const auto name = objectOf(file);
  if (!server || !name || !text::equalNoCase(text::fromUtf8(server->who.workspace), workspace))
    return creo::ProNotFound;
  ObjectRecord object;
  if (const VaultAnswer answer = server->vault->object(*name, object); !answer) return ended(answer, nullptr);
  const MemberRecord* member = memberOf(object, server->who);
  if (!member) return creo::ProNotFound;
  creo::ProServerStatus status;
  status.checkedOut = isCheckedOut(object, server->who, modelNameOf(file)->name);
  status.modified = newestHere(*name) != member->version;
  return status;
}

Got<std::wstring> Servers::aliasedUrl(const std::wstring& file) const {
  const auto name = objectOf(file);
  if (servers_.empty() || !name) return creo::ProNotFound;
  const Server& server = servers_[active_];
  ObjectRecord object;
  if (const VaultAnswer answer = server.vault->object(*name, object); !answer) return ended(answer, nullptr);
  if (memberOf(object, server.who)) return std::wstring(kWorkspaceDevice) + L':' + path() + name->file();
  return std::wstring(kPublicDevice) + L"://" + server.alias() + text::fromUtf8(object.location) + L'/' + name->file();
}

Got<std::wstring> Servers::url(const std::wstring& aliased) const {
  const std::size_t colon = aliased.find(L"://");
  const std::wstring place = aliased.substr(0, colon);
  if (colon == aliased.npos || (place != kWorkspaceDevice && place != kPublicDevice)) return creo::ProBadInputs;
  const std::size_t start = colon + 3;
  const Server* server = of(aliased.substr(start, aliased.find(L'/', start) - start));
  const auto name = modelNameOf(aliased.substr(aliased.rfind(L'/') + 1));
  if (!server || !name) return creo::ProNotFound;
  ObjectRecord object;
  if (const VaultAnswer answer = server->vault->object(*name, object); !answer) return ended(answer, nullptr);
  return text::format(L"http://%s/vault/properties?u8=1&oid=VR:document:%d&file=%s", server->alias(), object.number,
                      name->file());
}

ProError Servers::checkOut(const Model& model, bool instances, std::wstring& conflicts) {
  if (servers_.empty()) return creo::ProNotFound;
  const Server& server = servers_[active_];
  ModelDocument& document = *model.document;
  std::vector<std::string> names = {text::toUtf8(document.name)};
  if (model.row) names.push_back(text::toUtf8(model.name));
  if (FamilyTableRecord* table = instances ? document.tableOf(model.row) : nullptr)
    eachRow(*table, [&](const RowRecord& row) { names.push_back(row.name); });
  std::unique_ptr<os::FileLock> lock;
  VaultAnswer answer = server.vault->lock(server.lockWait, lock);
  if (answer) answer = server.vault->checkOut(nameOf(document), server.who, names);
  if (!answer) return ended(answer, &conflicts);
  document.closed = false;
  note(L"check out " + nameOf(document).label());
  return creo::ProNoError;
}

ProError Servers::checkIn(const Model& model, const std::wstring& location, std::wstring& conflicts) {
  if (servers_.empty()) return creo::ProNotFound;
  const Server& server = servers_[active_];
  ModelDocument& document = *model.document;
  const ObjectName name = nameOf(document);
  if (!document.saveFolder().empty() && !text::equalNoCase(document.saveFolder(), models_.folders().home().path()))
    return ended({creo::ProGeneralError, text::format(L"%s lies outside of the workspace", name.label())}, nullptr);
  std::unique_ptr<os::FileLock> lock;
  NextIteration next;
  VaultAnswer answer = server.vault->lock(server.lockWait, lock);
  if (answer) answer = server.vault->next(name, server.who, text::toUtf8(location), next);
  if (!answer) return ended(answer, &conflicts);

  // What was saved is checked in, not what is in memory.
  const auto stored = changeStored(models_, document, [&next](ModelRecord& record) {
    setServerParameter(record, "PTC_WM_LOCATION", next.location);
    setServerParameter(record, "PTC_WM_REVISION", next.revision);
    setServerParameter(record, "PTC_WM_ITERATION", std::to_string(next.iteration));
  });
  if (stored.error == creo::ProNotFound)
    return ended({creo::ProConflicts, name.label() + L" was never saved in the workspace"}, &conflicts);
  if (!stored) return stored.error;
  answer = server.vault->checkIn(name, server.who, next, stored.value, document.savedVersion());
  if (!answer) return ended(answer, &conflicts);
  document.inWorkspace = document.closed = true;
  handOut(document);
  note(text::format(L"check in %s as %s.%d", name.label(), text::fromUtf8(next.revision), next.iteration));
  return creo::ProNoError;
}

ProError Servers::removeAll(std::wstring& conflicts) {
  if (servers_.empty()) return creo::ProNotFound;
  const Server& server = servers_[active_];
  std::unique_ptr<os::FileLock> lock;
  if (const VaultAnswer answer = server.vault->lock(server.lockWait, lock); !answer) return ended(answer, &conflicts);
  std::vector<ObjectName> members;
  std::wstring reasons;
  for (const ListedObject& object : server.vault->objects()) {
    if (!object.fault.empty()) return ended({creo::ProGeneralError, object.fault}, nullptr);
    const MemberRecord* member = memberOf(object.record, server.who);
    if (!member) continue;
    const ObjectName& name = members.emplace_back(ObjectName{text::fromUtf8(object.record.name), object.record.type});
    if (isCheckedOut(object.record, server.who, name.name))
      addLine(reasons, name.label() + L" is checked out");
    else if (isChangedInMemory(models_, name) || isChangedHere(models_, *server.vault, name, *member))
      addLine(reasons, name.label() + L" has changes that aren't checked in");
  }
  if (!reasons.empty()) return ended({creo::ProConflicts, reasons}, &conflicts);
  for (const ObjectName& name : members) {
    VaultAnswer answer = server.vault->leave(name, server.who);
    if (answer)
      if (const auto error = models_.folders().removeAll(name.name, name.type))
        answer = {creo::ProGeneralError, cantWrite(modelFolder_ + name.file(), error)};
    if (!answer) return ended(answer, nullptr);
    note(L"remove " + name.label() + L" from the workspace");
  }
  placeAll();
  return ended(server.vault->dropFiles(server.who), nullptr);
}

ProError Servers::addFile(const std::wstring& source, const std::wstring& target, const std::wstring& primary) {
  if (servers_.empty()) return creo::ProNotFound;
  const Server& server = servers_[active_];
  if (!isPlace(target)) return creo::ProBadInputs;
  const auto bytes = os::files().read(source);
  if (!bytes)
    return bytes.error == std::errc::no_such_file_or_directory
               ? creo::ProNotFound
               : ended({creo::ProGeneralError, cantRead(source, bytes.error)}, nullptr);
  const auto object = primary.empty() ? std::nullopt : objectOf(primary);
  if (!primary.empty() && !object) return creo::ProBadInputs;
  std::unique_ptr<os::FileLock> lock;
  VaultAnswer answer = server.vault->lock(server.lockWait, lock);
  const std::wstring file = os::nameOf(source);
  if (answer) answer = server.vault->addFile(server.who, file, bytes.value, object ? &*object : nullptr);
  if (!answer) {
    const bool isConflict = answer.error == creo::ProConflicts;
    if (!answer.reason.empty())
      models_.message((isConflict ? L"warning: " + file + L" isn't added: " : std::wstring()) + answer.reason);
    return answer.error;
  }
  note(L"add " + file + L" to the workspace");
  return creo::ProNoError;
}

// ---- for the models

void Servers::place(ModelDocument& document) const {
  document.inWorkspace = document.closed = false;
  if (servers_.empty() || !text::equalNoCase(document.folder, models_.folders().home().path())) return;
  const Server& server = servers_[active_];
  ObjectRecord object;
  const VaultAnswer answer = server.vault->object(nameOf(document), object);
  if (!answer) {
    // What the vault can't tell may be checked in: better closed than changed behind its back.
    document.closed = answer.error != creo::ProNotFound;
    ended(answer, nullptr);
    return;
  }
  document.inWorkspace = memberOf(object, server.who) != nullptr;
  document.closed = document.inWorkspace && !isCheckedOut(object, server.who, document.name);
}

void Servers::placeAll() const {
  for (const ModelInMemory& listed : models_.list()) place(*models_.look(listed.handle)->document);
}

VaultAnswer Servers::bring(const Server& server, const ObjectName& name, const ObjectRecord& object) {
  std::string bytes;
  VaultAnswer answer = server.vault->content(name, static_cast<int>(object.iterations.size()), bytes);
  const int version = GivenNumbers::next(models_.folders().home().path(), name.name, name.type, newestHere(name));
  if (answer)
    if (const auto error = models_.folders().add(name.name, name.type, version, bytes))
      answer = {creo::ProGeneralError, cantWrite(modelFolder_ + name.file(), error)};
  if (answer) answer = server.vault->enter(name, server.who, version);
  if (answer) note(L"bring " + name.label() + L" into the workspace");
  return answer;
}

bool Servers::fetch(const std::wstring& name, creo::ProMdlType type) {
  if (servers_.empty()) return false;
  const Server& server = servers_[active_];
  const ObjectName wanted{name, type};
  ObjectRecord object;
  VaultAnswer answer = server.vault->object(wanted, object);
  std::unique_ptr<os::FileLock> lock;
  if (answer) answer = server.vault->lock(server.lockWait, lock);
  if (answer) answer = server.vault->object(wanted, object);
  if (answer) answer = bring(server, wanted, object);
  return ended(answer, nullptr) == creo::ProNoError;
}

ProError Servers::refresh(const ObjectName& name, std::wstring& conflicts) {
  if (servers_.empty()) return creo::ProNotFound;
  const Server& server = servers_[active_];
  std::unique_ptr<os::FileLock> lock;
  ObjectRecord object;
  VaultAnswer answer = server.vault->lock(server.lockWait, lock);
  if (answer) answer = server.vault->object(name, object);
  if (!answer) return ended(answer, &conflicts);
  const MemberRecord* member = memberOf(object, server.who);
  if (!member) {
    conflicts = name.label() + L": the folder has a document that isn't from the vault";
    return creo::ProConflicts;
  }
  if (member->base == static_cast<int>(object.iterations.size())) return creo::ProNoError;
  if (isChangedHere(models_, *server.vault, name, *member)) {
    conflicts = name.label() + L" has changes that aren't checked in";
    return creo::ProConflicts;
  }
  return ended(bring(server, name, object), &conflicts);
}

std::wstring Servers::path() const {
  const Server& server = servers_[active_];
  return L"//" + server.alias() + L'/' + text::fromUtf8(server.who.workspace) + L'/';
}

bool Servers::isPlace(std::wstring_view place) const {
  if (servers_.empty() || !place.starts_with(kWorkspaceDevice)) return false;
  return text::equalNoCase(slashed(place), slashed(std::wstring(kWorkspaceDevice) + L":" + path()));
}

ProError Servers::ended(const VaultAnswer& answer, std::wstring* conflicts) const {
  if (answer.error == creo::ProConflicts && conflicts)
    *conflicts = answer.reason;
  else if (!answer.reason.empty())
    models_.message(answer.reason);
  return answer.error;
}

void Servers::note(const std::wstring& did) {
  if (withhold_) withheld_.push_back(did);
}

}  // namespace headless

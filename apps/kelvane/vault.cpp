// kelvane vault: a PDM folder.
#include "headless/vault/vault.h"
#include "kelvane/base/native_path.h"

#include <filesystem>
#include <nlohmann/json.hpp>

#include "headless/model/models.h"
#include "kelvane/base/columns.h"
#include "kelvane/base/fault.h"
#include "kelvane/base/places.h"
#include "kelvane/base/verb.h"
#include "kelvane/run/vault_place.h"
#include "kelvane/show/model_folder.h"
#include "os/processes.h"
#include "os/surroundings.h"
#include "text/encoding.h"

namespace kelvane {
namespace {

using Entry = nlohmann::ordered_json;
using headless::ObjectName;
using headless::ObjectRecord;

constexpr int kLockWait = 3000;  // milliseconds

ObjectName objectName(const std::string& text) {
  const ModelFileName model = modelFileName(text);
  return {model.name, model.type};
}
std::string labelOf(const ObjectRecord& object) { return label(text::fromUtf8(object.name), object.type); }
std::string newestOf(const ObjectRecord& object) {
  return text::toUtf8(headless::iterationText(object, static_cast<int>(object.iterations.size())));
}

class VaultVerb : public Verb {
 public:
  std::vector<OptionRow> options() override {
    return {
        {"vault", "DIR", "folder of the vault", &folder_},
        {"--create", "", "makes an empty vault there", &create_},
        {"--name", "ALIAS", "with --create: the server's name; without it that of the folder", &alias_},
        {"--get", "NAME.EXT", "brings a model, with what it uses, into the workspace of the folder --models", &get_},
        {"--models", "DIR", "with --get: folder of models; made when it isn't there", &models_},
        {"--workspace", "NAME", "with --get: the workspace's name; without it that of the folder", &workspace_},
        {"--user", "NAME", "who works; without it who is logged in", &user_},
        {"--release", "NAME.EXT", "takes a model's check-out away, whoever has it", &release_},
        {"--revise", "NAME.EXT", "makes the next revision of a model", &revise_},
        {"--json", "", "as JSON", &json_}};
  }

  // kErrors when a record can't be read, or a model to be released isn't checked out.
  int run(Console& console) override {
    if (create_) return create(console);
    if (!get_.empty()) return get(console);
    headless::VaultAnswer answer;
    const auto vault = headless::Vault::open(systemFolder(folder_), false, answer);
    require(answer, folder_ + " is no vault");
    if (!release_.empty() || !revise_.empty()) return change(*vault, console);
    return list(*vault, console);
  }

 private:
  int create(Console& console) const {
    const std::wstring folder = os::asFolder(systemPath(folder_));
    const std::string name = machinePath(nativePath(shown(folder)).filename());
    require(headless::Vault::create(folder, alias_.empty() ? name : alias_), "");
    console.note(shown(folder));
    return kFine;
  }

  int get(Console& console) const {
    if (models_.empty()) throw Fault("--get needs --models DIR");
    std::filesystem::create_directories(models_);
    headless::SessionOptions options;
    options.modelFolder = mountModels(models_);
    headless::Session session(options);
    const std::wstring reason = session.servers().connect(connection(folder_, workspace_, user_, models_));
    if (!reason.empty()) throw Fault(text::toUtf8(reason));
    for (const std::string& wanted : get_) {
      const ObjectName name = objectName(wanted);
      const auto model = creo::ProMdlRetrieve(name.name, name.type);
      if (!model && session.messages().empty()) throw Fault("the vault has no " + text::toUtf8(name.label()));
      if (!model) throw Fault(readable(session.messages().back()));
    }
    for (const auto& model : session.models().list()) {
      if (!model.instanceOf.empty()) continue;
      std::wstring hindered;
      session.servers().refresh({model.name, model.type}, hindered);
      if (!hindered.empty()) session.showMessage(hindered);
      if (hindered.empty()) console.result(label(model.name, model.type));
    }
    for (const std::wstring& line : session.messages()) console.trouble("warning: " + readable(line));
    return session.messages().empty() ? kFine : kErrors;
  }

  int change(headless::Vault& vault, Console& console) const {
    std::unique_ptr<os::FileLock> lock;
    require(vault.lock(kLockWait, lock), "");
    int code = kFine;
    for (const std::string& wanted : release_) {
      const ObjectName name = objectName(wanted);
      const auto answer = vault.release(name);
      const bool wasFree = answer.error == creo::ProNotFound && !answer.reason.empty();
      if (wasFree) console.trouble(text::toUtf8(answer.reason));
      if (wasFree) code = kErrors;
      if (!wasFree) require(answer, "the vault has no " + text::toUtf8(name.label()));
    }
    const std::string who = user_.empty() ? text::toUtf8(os::environment(L"username").value_or(L"")) : user_;
    for (const std::string& wanted : revise_) {
      const ObjectName name = objectName(wanted);
      require(vault.revise(name, who), "the vault has no " + text::toUtf8(name.label()));
    }
    return code;
  }

  int list(const headless::Vault& vault, Console& console) const {
    bool damaged = false;
    Entry all = Entry::array();
    std::vector<std::vector<std::string>> rows;
    for (const headless::ListedObject& item : vault.objects()) {
      if (!item.fault.empty()) {
        damaged = true;
        console.trouble(text::toUtf8(item.fault));
        all.push_back({{"fault", text::toUtf8(item.fault)}});
        continue;
      }
      all.push_back(entryOf(item.record));
      rows.push_back(rowOf(item.record));
    }
    if (json_) {
      console.resultJson(Entry{{"name", vault.name()}, {"objects", all}}.dump(2));
    } else {
      for (const std::string& line : aligned(rows)) console.result(line);
    }
    return damaged ? kErrors : kFine;
  }

  static std::vector<std::string> rowOf(const ObjectRecord& object) {
    std::string places;
    for (const headless::MemberRecord& member : object.workspaces)
      places += (places.empty() ? "in " : ", ") + member.user + "/" + member.workspace + " (" +
                text::toUtf8(headless::iterationText(object, member.base)) + ")";
    std::string checkedOut;
    if (const auto& out = object.checkOut) checkedOut = "checked out by " + out->user + "/" + out->workspace;
    return {labelOf(object), newestOf(object), object.location, checkedOut.empty() ? "-" : checkedOut, places};
  }

  static Entry entryOf(const ObjectRecord& object) {
    Entry entry = {{"model", labelOf(object)},
                   {"number", object.number},
                   {"location", object.location},
                   {"newest", newestOf(object)}};
    for (const headless::IterationRecord& record : object.iterations) {
      Entry iteration = {
          {"revision", record.revision}, {"iteration", record.iteration}, {"by", record.by}, {"at", record.at}};
      for (const auto& file : record.attachments) iteration["attachments"].push_back(file.name);
      entry["iterations"].push_back(std::move(iteration));
    }
    if (const auto& out = object.checkOut)
      entry["checkedOut"] = {
          {"user", out->user}, {"workspace", out->workspace}, {"at", out->at}, {"names", out->names}};
    for (const headless::MemberRecord& member : object.workspaces)
      entry["workspaces"].push_back({{"user", member.user},
                                     {"workspace", member.workspace},
                                     {"iteration", text::toUtf8(headless::iterationText(object, member.base))},
                                     {"version", member.version}});
    return entry;
  }

  std::string folder_, alias_, models_, workspace_, user_;
  std::vector<std::string> get_, release_, revise_;
  bool create_ = false, json_ = false;
};

}  // namespace

std::unique_ptr<Verb> makeVault() { return std::make_unique<VaultVerb>(); }

}  // namespace kelvane

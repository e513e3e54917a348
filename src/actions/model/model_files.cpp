// Models under other names and in other places: renamed, copied, backed up, and the name that a PDM system shows.
#include <set>

#include "actions/output_file.h"
#include "actions/run_names.h"
#include "actions/task.h"
#include "core/log.h"
#include "core/messages.h"
#include "creo/ProDrawing.h"
#include "creo/ProFamtable.h"
#include "creo/ProMdl.h"
#include "creo/ProMdlBackup.h"
#include "creo/ProMdlCopy.h"
#include "creo/guards.h"
#include "language/variables.h"
#include "os/paths.h"
#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/letters.h"

namespace actions {
namespace {

using namespace language;

// "GEAR.PRT"
std::wstring label(creo::ProMdl model) {
  return creo::ProMdlNameGet(model).value + L'.' + creo::ProMdlExtensionGet(model).value;
}

// The name of a new model; nothing, with its line, where it can't be put together.
std::optional<std::wstring> newName(const Task& task) {
  Replaced name = task.text(L"name");
  if (name && !name.text.empty()) return text::upper(name.text);
  core::logWrite(L"The new name can't be put together", core::kError);
  return std::nullopt;
}

void tellRefusal(creo::ProError result, const std::wstring& name, const std::wstring& reason) {
  if (result == creo::ProExists)
    core::logWrite(text::format(L"Another model has the name %s", name), core::kError);
  else if (result == creo::ProBadInputs)
    core::logWrite(text::format(L"%s can't be a model's name", name), core::kError);
  else
    core::logWrite(reason, core::kError);
}

// ---- rename and copy

Outcome renameModel(const Task& task) {
  const auto name = newName(task);
  if (!name) return done;
  const std::wstring before = label(task.model());
  if (creo::ProMdlNameGet(task.model()).value == *name) {
    core::logIndented(text::format(L"%s has the name already", before), core::kNormal, 1);
    return done;
  }
  creo::ProRenamed renamed;
  if (const auto result = creo::ProMdlnameRename(task.model(), *name, renamed)) {
    tellRefusal(result, *name, renamed.reason.empty() ? L"The model can't be renamed" : renamed.reason);
    for (const std::wstring& file : renamed.left)
      core::logWrite(text::format(L"%s couldn't be put back as it was", file), core::kError);
    return done;
  }
  const std::wstring now = label(task.model());
  followRename(text::toUtf8(before), text::toUtf8(now));
  core::logIndented(text::format(L"%s is now %s", before, now), core::kNormal, 1);
  for (const std::wstring& file : renamed.followed)
    core::logIndented(text::format(L"%s follows", file), core::kNormal, 2);
  for (const std::wstring& model : renamed.unsaved)
    core::logWrite(text::format(L"%s follows in memory alone, and isn't saved", model), core::kWarning);
  return done;
}

// A copy has its file at once, in the working folder: for as long as it is made that is the one that the model is saved
// to. It goes out of memory again.
creo::ProError copyBeside(creo::ProMdl model, const std::wstring& name) {
  creo::DirectoryGuard folder;
  if (const auto beside = creo::ProMdlDirectoryPathGet(model))
    if (const creo::ProError elsewhere = folder.change(beside.value)) return elsewhere;
  const auto copy = creo::ProMdlCopy(model, name);
  return copy ? creo::ProMdlErase(copy.value) : copy.error;
}

Outcome copyModel(const Task& task) {
  const auto name = newName(task);
  if (!name) return done;
  const auto taken = creo::ProMdlnameIsTaken(task.model(), *name);
  const std::wstring made = *name + L'.' + creo::ProMdlExtensionGet(task.model()).value;
  if (const auto result = !taken ? taken.error : taken.value ? creo::ProExists : copyBeside(task.model(), *name))
    tellRefusal(result, *name, text::format(L"%s can't be written", made));
  else
    core::logIndented(text::format(L"%s is written", made), core::kNormal, 1);
  return done;
}

// ---- backup

// A model with all that it needs, each once. An instance lies in its generic's document.
class Needed {
 public:
  explicit Needed(creo::ProMdl model) {
    add(model);
    std::size_t next = 0;
    while (next < waiting_.size()) {  // which grows meanwhile
      const creo::ProMdl current = waiting_[next++];
      if (const auto generic = creo::ProFaminstanceGenericGet(current, false))
        add(generic.value);
      else
        models_.push_back(current);
      const auto uses = creo::ProMdlDependenciesList(current);
      if (!creo::isTold(uses)) missing_.push_back(text::format(L"What %s uses", label(current)));
      for (const creo::ProDependency& used : uses.value)
        if (*creo::typeExtension(used.type)) bring(used, current);
      addFormats(current);
    }
  }
  [[nodiscard]] const std::vector<creo::ProMdl>& models() const { return models_; }
  // "GEAR.PRT, which TOP.ASM uses", or "What TOP.ASM uses", "What GEAR.DRW has for formats" where Creo can't tell that
  [[nodiscard]] const std::vector<std::wstring>& missing() const { return missing_; }

 private:
  void add(creo::ProMdl model) {
    if (seen_.insert(model).second) waiting_.push_back(model);
  }
  void bring(const creo::ProDependency& used, creo::ProMdl user) {
    if (const auto model = creo::ProMdlRetrieve(used.name, used.type))
      add(model.value);
    else
      missing_.push_back(text::format(L"%s.%s, which %s uses", used.name, used.typeText, label(user)));
  }
  // Those that lie with the models; others belong to the site.
  void addFormats(creo::ProMdl model) {
    const auto type = creo::ProMdlTypeGet(model);
    if (type && type.value != creo::ProMdlType::drawing) return;
    const auto sheets = creo::ProDrawingSheetsCount(model);
    bool told = type && sheets;
    for (int sheet = 1; told && sheet <= sheets.value; ++sheet) {
      const auto format = creo::ProDrawingFormatGet(model, sheet);
      told = creo::isTold(format);
      if (!format) continue;
      if (const auto found = creo::ProMdlRetrieve(format.value, creo::ProMdlType::format)) add(found.value);
    }
    if (!told) missing_.push_back(text::format(L"What %s has for formats", label(model)));
  }
  std::vector<creo::ProMdl> waiting_, models_;
  std::set<creo::ProMdl> seen_;
  std::vector<std::wstring> missing_;
};

// Does the model come from that folder? One whose saves an earlier backup moved there doesn't.
bool comesFrom(creo::ProMdl model, const std::wstring& folder) {
  const auto file = creo::ProMdlOriginGet(model);
  return file && !file.value.empty() && text::equalNoCase(os::asFolder(os::folderOf(file.value)), folder);
}

struct BackedUp {
  creo::ProMdl model;
  std::wstring file;
};

// Nothing stays in the folder unless all of it does. Where the models are saved from then on can't be taken back: a
// backup to where they were would write further versions there.
void takeBack(const std::vector<BackedUp>& written, const std::wstring& folder) {
  for (const BackedUp& entry : written) {
    if (os::files().remove(entry.file)) core::logWrite(text::format(L"%s can't be removed", entry.file), core::kError);
    core::logWrite(text::format(L"%s is saved in %s from now on", label(entry.model), folder), core::kWarning);
  }
}

creo::ProError backUp(const std::vector<creo::ProMdl>& models, const std::wstring& folder) {
  std::vector<BackedUp> written;
  for (const creo::ProMdl model : models) {
    auto file = creo::ProMdlnameBackup(model, folder);
    if (!file) {
      takeBack(written, folder);
      return file.error;
    }
    written.push_back({model, std::move(file.value)});
  }
  for (const BackedUp& entry : written) core::logIndented(entry.file, core::kNormal, 2);
  return creo::ProNoError;
}

Outcome backupAction(const Task& task) {
  const std::wstring path = wholePath(task.path(L"path", L"models"));
  const std::wstring folder = os::asFolder(path);
  const Needed needed(task.model());
  core::logIndented(text::format(core::msgText(Message::exportModelTo), path), core::kNormal, 1);
  for (const std::wstring& entry : needed.missing())
    core::logWrite(text::format(L"%s can't be retrieved", entry), core::kError);
  for (const creo::ProMdl model : needed.models()) {
    if (path.empty() || !os::files().isFolder(folder) || comesFrom(model, folder)) {
      core::logMsgPlain(Message::invalidFolder, core::kError);
      return done;
    }
  }
  switch (needed.missing().empty() ? backUp(needed.models(), folder) : creo::ProBadInputs) {
    case creo::ProNoError:
      core::logMsgId(Message::exported, core::kNormal, 1);
      break;
    case creo::ProNotFound:
      core::logMsgPlain(Message::invalidFolder, core::kError);
      break;
    case creo::ProCantWrite:
    case creo::ProGeneralError:
      core::logMsgPlain(Message::folderNotWritable, core::kError);
      break;
    default:
      core::logMsgPlain(Message::errorOccurred, core::kError);
  }
  return done;
}

// ---- the common name

Outcome editCommonName(const Task& task) {
  const Replaced value = task.text(L"value");
  if (!value) {
    core::logMsgPlain(Message::commonNameUnread, core::kError);
    return done;
  }
  creo::OptionGuard option(L"let_proe_rename_pdm_objects");
  if (option.change(L"yes") || creo::ProMdlCommonnameSet(task.model(), value.text))
    core::logMsgPlain(Message::commonNameNotSet, core::kError);
  else
    core::logIndented(text::format(L"The common name is now '%s'", value.text), core::kNormal, 1);
  return done;
}

constexpr Conditions kOnModels = {kFilter, kAnyType, kAnyOfTheWork};
constexpr Conditions kOnNativeModels = {kFilter, kAnyType, kNotInstance, kAnyOfTheWork};

constexpr Attribute kNameAttributes[] = {
    {.name = L"name",
     .kind = Kind::newModel,
     .variables = true,
     .need = Need::oneOf,
     .about = "the new model's name, without an ending"},
};
constexpr Attribute kBackupAttributes[] = {
    {.name = L"path",
     .kind = Kind::written,
     .variables = true,
     .need = Need::oneOf,
     .folder = L"models",
     .about = "a folder that is there and that none of the models comes from"},
};
constexpr Attribute kCommonNameAttributes[] = {
    {.name = L"value", .variables = true, .need = Need::oneOf, .about = "the name; empty: it has none any more"},
};

constexpr Action kActions[] = {
    {.key = L"backupAction",
     .place = 51,
     .title = Message::backUp,
     .conditions = kOnModels,
     .attributes = kBackupAttributes,
     .effects = {.reads = Touched::model | Touched::users | Touched::family, .changes = Touched::files},
     .about = "copies the model and all that it needs into a folder",
     .function = &backupAction},
    {.key = L"editCommonName",
     .place = 52,
     .title = Message::editCommonName,
     .conditions = kOnNativeModels,
     .attributes = kCommonNameAttributes,
     .effects = {.reads = Touched::model | Touched::options, .changes = Touched::model | Touched::options},
     .about = "sets the name that the PDM system shows",
     .function = &editCommonName},
    {.key = L"renameModel",
     .place = 63,
     .title = L"Rename model",
     .conditions = kOnNativeModels,
     .attributes = kNameAttributes,
     .effects = {.reads = Touched::model | Touched::users | Touched::family | Touched::files,
                 .changes = Touched::model | Touched::users | Touched::family},
     .about = "renames the model with all versions of its document; what uses it follows",
     .function = &renameModel},
    {.key = L"copyModel",
     .place = 65,
     .title = L"Copy model",
     .conditions = kOnModels,
     .attributes = kNameAttributes,
     .effects = {.reads = Touched::model | Touched::files, .changes = Touched::files | Touched::session},
     .about = "writes a copy of the model into the folder that it is saved in",
     .function = &copyModel},
};

}  // namespace

std::span<const Action> modelFileActions() { return kActions; }

}  // namespace actions

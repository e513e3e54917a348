// Layers with rules. Creo gives a new layer the rules of the layer of its name in the model that the option
// "default_layer_model" names, and keeps that model in memory. So a copy of the list's own template takes its place.
#include <algorithm>

#include "actions/environment/config_options.h"
#include "actions/environment/macro.h"
#include "actions/model/free_name.h"
#include "actions/model/layers.h"
#include "core/messages.h"
#include "core/state.h"
#include "creo/ProFileChoose.h"
#include "creo/ProMdl.h"
#include "creo/ProMdlBackup.h"
#include "creo/ProMdlCopy.h"
#include "creo/guards.h"
#include "language/compare.h"
#include "os/paths.h"
#include "os/surroundings.h"
#include "text/format.h"
#include "text/letters.h"
#include "text/numbers.h"

namespace actions {
namespace {

using namespace language;
using creo::ProMdl;
using creo::ProMdlType;

constexpr std::wstring_view kOption = L"default_layer_model";
constexpr std::size_t kMacroSize = 900;  // room of a macro

// A model by the name of a file.
struct ModelFile {
  std::wstring folder, name, extension;
  ProMdlType type = ProMdlType::unused;  // unused: the file is no model's
};
ModelFile modelFile(const std::wstring& path) {
  const auto file = creo::ProFilenameParse(path);
  ModelFile model{file.directory, file.name, file.extension};
  for (const auto type : {ProMdlType::part, ProMdlType::assembly, ProMdlType::drawing})
    if (text::equalNoCase(file.extension, creo::typeExtension(type))) model.type = type;
  return model;
}

void tell(std::wstring_view text) { core::logIndented(text, core::kNormal, 2); }

// The template while layers are made of it. Whatever it changes in the session is put back when it goes.
class LayerTemplate {
 public:
  explicit LayerTemplate(const Task& task) : task_(task), option_(std::wstring(kOption)) {}
  ~LayerTemplate() { cleanUp(); }
  LayerTemplate(const LayerTemplate&) = delete;
  LayerTemplate& operator=(const LayerTemplate&) = delete;

  // False, with its line: there is no template to make layers of.
  bool prepare() {
    std::wstring ofOption = option_.saved().empty() ? std::wstring() : option_.saved().front();
    if (ofOption.empty()) ofOption = os::asFolder(os::environment(L"TEMP").value_or(L""));
    old_ = modelFile(ofOption);
    if (!eraseOld()) return false;
    const bool isOptions = task_.attribute(L"view") == L"@default_layer_model@";
    const std::wstring path = isOptions ? os::withBackslashes(ofOption) : task_.path(L"view", L"models");
    file_ = modelFile(path);
    core::logIndented(text::format(core::msgText(Message::fromPath), path), core::kNormal, 1);
    creo::DirectoryGuard directory;
    if (!retrieve(directory)) return false;
    std::wstring used = os::joined(file_.folder, os::nameOf(path));
    if (!wasThere_) copy(directory, used);
    if (option_.change(used) == creo::ProNoError) return true;
    tellUnset(kOption);
    return false;
  }

 private:
  // A template that stands in memory for the option would be asked instead of the copy. One that somebody works on, or
  // whose changes aren't saved, isn't thrown away for that.
  bool eraseOld() {
    const auto old = old_.type == ProMdlType::unused ? creo::ProNotFound : creo::ProMdlInit(old_.name, old_.type);
    if (!old) {
      tell(L"Can't get old template model init, but that's ok");
      return true;
    }
    const auto changed = creo::ProMdlModificationVerify(old.value);
    const bool isWorked = old.value == task_.model() || creo::ProMdlWindowGet(old.value) || !changed || changed.value;
    if (!isWorked && creo::ProMdlErase(old.value) == creo::ProNoError) return true;
    core::logWrite(L"Can't erase old template model", core::kError);
    return false;
  }

  bool retrieve(creo::DirectoryGuard& directory) {
    if (file_.type == ProMdlType::unused || (!file_.folder.empty() && directory.change(file_.folder))) {
      core::logMsgPlain(Message::templateNotFound, core::kError);
      return false;
    }
    core::logWrite(L"Directory changed to new one", core::kDebug);
    wasThere_ = static_cast<bool>(creo::ProMdlInit(file_.name, file_.type));
    const auto model = creo::ProMdlRetrieve(file_.name, file_.type);
    if (!model) {
      core::logMsgPlain(model.error == creo::ProNotFound       ? Message::templateNotFound
                        : model.error == creo::ProGeneralError ? Message::templateNotPermitted
                                                               : Message::templateNotOpened,
                        core::kError);
      return false;
    }
    if (!wasThere_) template_ = model.value;
    tell(L"Layermodel found and retrieved");
    return true;
  }

  // The template becomes its copy in the folder of logs, under the name that the option knows. used: set to the copy's
  // path. Where it can't be copied the template itself serves.
  void copy(creo::DirectoryGuard& directory, std::wstring& used) {
    const std::wstring& logs = core::pluginState().tempPath;
    const auto backup = creo::ProMdlnameBackup(template_, logs);
    if (!backup) return core::logWrite(L"Failure while backup to temppath", core::kWarning);
    copyFile_ = backup.value;
    if (creo::ProMdlErase(template_) != creo::ProNoError) {
      core::logWrite(L"Failure while erase copy model", core::kWarning);
      core::logWrite(text::format(L"%s.%s is saved in %s from now on", file_.name, file_.extension, logs),
                     core::kWarning);
    }
    const auto changed = directory.change(logs);
    const auto copied = changed == creo::ProNoError ? creo::ProMdlRetrieve(file_.name, file_.type) : changed;
    if (!copied) return core::logWrite(L"Something is wrong while the second receive", core::kWarning);
    template_ = copied.value;
    const std::wstring name = renamed() ? old_.name : file_.name;
    used = os::joined(logs, name + L'.' + file_.extension);
  }

  // An option without a model's name has none to give.
  bool renamed() {
    if (old_.type == ProMdlType::unused) return false;
    if (old_.type != file_.type || text::equalNoCase(old_.name, file_.name)) {
      core::logWrite(L"File has already the name", core::kWarning);
      return false;
    }
    const bool done = creo::ProMdlRename(template_, old_.name) == creo::ProNoError;
    if (done)
      tell(L"renamed file alright");
    else
      core::logWrite(L"Can't rename the file", core::kWarning);
    return done;
  }

  void cleanUp() {
    if (!option_.back()) tellUnset(kOption);
    if (!template_) return;
    tell(L"Try to delete template model");
    // The next action wants the names of template and option anew, and may come before the erasure is complete.
    int number = 0;
    const auto name = creo::ProMdlNameGet(template_);
    if (!name)
      core::logWrite(L"Can't get model init", core::kWarning);
    else if (eraseAside(template_, number) != creo::ProNoError)
      core::logWrite(L"Can't erase Model", core::kError);
    if (copyFile_.empty()) return;
    tell(L"Try to delete: " + copyFile_);
    if (os::files().remove(copyFile_))
      core::logWrite(L"Can't delete Model", core::kError);
    else
      tell(L"Delete the file from temp directory");
  }

  const Task& task_;
  creo::OptionGuard option_;
  ModelFile old_, file_;
  bool wasThere_ = false;  // in memory before: then it isn't ours to copy and erase
  ProMdl template_;        // what this action brought into memory
  std::wstring copyFile_;
};

// ---- rules

struct RuleCheck {
  std::wstring_view component;
  bool on;
};

std::wstring checkSteps(const RuleCheck& check) {
  return text::format(
      L"~ Select `newlayerprops` `RuleOptionsCasc`;~ Close `newlayerprops` `RuleOptionsCasc`;"
      L"~ Activate `newlayerprops` `%s`%d ;~ Close `newlayerprops` `RuleOptionsCasc`;",
      check.component, check.on ? 1 : 0);
}

std::wstring rulesMacro(bool isDrawing, std::wstring_view name, const std::vector<RuleCheck>& checks) {
  const auto floating = creo::ProConfigoptGet(L"floating_layer_tree");
  const std::wstring_view selection = floating && text::equalNoCase(floating.value, L"YES")
                                          ? L"~ Select `layer_dlg_cur` `PHLayerUI.AssyTree` 1"
                                          : L"~ Select `main_dlg_cur` `rad_list_layers_for` 1 `act_obj_and_lays`;"
                                            L"~ Select `main_dlg_cur` `PHTLeft.PHLayerUI.AssyTree`1";
  std::wstring macro = text::format(isDrawing ? L"~ Command `ProCmdDrwTreeShowLyrs` 1 ;%s `node0:%s`;"
                                              : L"~ Command `ProCmdViewLyrs` 1 ;%s  `node0:%s`;",
                                    selection, name);
  macro += L"~ Command `ProCmdLayer_LayProps` ;~ Select `newlayerprops` `PropTab`1  `RulesDefsettingsLay`;";
  for (const RuleCheck& check : checks) macro += checkSteps(check);
  return macro + L"~ Activate `newlayerprops` `OkBtn`;";
}

void runRules(const Task& task, std::wstring_view name, const std::vector<RuleCheck>& checks) {
  const std::wstring macro = rulesMacro(task.extensionIs(L"DRW"), name, checks);
  // Cut it would be another macro.
  if (!text::fits(macro, kMacroSize))
    return core::logWrite(text::format(L"The rules of '%s' can't be set: the macro is too long", name), core::kError);
  runMacro(macro, L"The rules can't be set");
}

// Macros work in the current window alone: in another model they would find another layer of that name.
void setRules(const Task& task, std::wstring_view name) {
  const auto current = creo::ProMdlCurrentGet();
  if (!current || current.value != task.model())
    return core::logWrite(text::format(L"The rules of '%s' aren't set: its model isn't the current one", name),
                          core::kWarning);
  std::vector<RuleCheck> checks;
  if (task.isTrue(L"indep")) checks.push_back({L"IndepRulesChk", true});
  if (task.isTrue(L"assoc")) checks.push_back({L"AssocRulesChk", true});
  runRules(task, name, checks);
  if (task.isTrue(L"indeprev")) runRules(task, name, {{L"IndepRulesChk", false}});
}

// ---- the action

bool createLayer(const Task& task, std::wstring_view name) {
  core::logIndented(text::format(core::msgText(Message::tryToAddLayer), name), core::kNormal, 1);
  const auto layer = creo::ProLayerCreate(task.model(), std::wstring(name));
  if (layer) return true;
  if (layer.error == creo::ProExists)
    core::logWrite(text::format(core::msgText(Message::layerExists), name), core::kWarning);
  else
    core::logWrite(text::format(core::msgText(Message::badLayerName), name), core::kError);
  return false;
}

Outcome addLayerFromTemplate(const Task& task) {
  if (!matches(kIntegerPattern, task.attribute(L"rowc"))) {
    core::logMsgPlain(Message::lineCountUnread, core::kError);
    return done;
  }
  const bool hasTemplate = !task.attribute(L"view").empty();
  LayerTemplate source(task);
  if (hasTemplate && !source.prepare()) return done;
  const int rows = std::min(text::parseInt(task.attribute(L"rowc")), kMostLayerNames);
  for (const Task::Numbered& name : task.numberedAll(L"name_", rows)) {
    if (!createLayer(task, name.value)) continue;
    if (hasTemplate) setRules(task, name.value);
    core::logIndented(text::format(core::msgText(Message::layerCreated), name.value), core::kNormal, 1);
  }
  return done;
}

constexpr Attribute kAttributes[] = {
    {.name = L"rowc", .kind = Kind::integer, .need = Need::needed, .about = "how many rows of names there are"},
    {.name = L"name_%d",
     .need = Need::needed,
     .numbers = Numbers::counted,
     .counter = L"rowc",
     .about = "a layer's name, up to 31 characters"},
    {.name = L"view",
     .kind = Kind::model,
     .variables = true,
     .folder = L"models",
     .about = "the template's file; @default_layer_model@: the model of that option; empty: layers without rules"},
    {.name = L"indep", .kind = Kind::flag, .words = L"true", .about = "the rules become independent"},
    {.name = L"assoc", .kind = Kind::flag, .words = L"true", .about = "they become associative"},
    {.name = L"indeprev", .kind = Kind::flag, .words = L"true", .about = "then the independence is taken back"},
};

constexpr Action kActions[] = {
    {.key = L"addLayerFromTemplate",
     .place = 114,
     .group = Group::ownModelTest,
     .title = Message::addLayer,
     .conditions = kOnLayers,
     .attributes = kAttributes,
     .effects = {.reads = Touched::model | Touched::files | Touched::options,
                 .changes = Touched::model | Touched::session | Touched::options | Touched::files},
     .about = "makes layers with the rules of a template",
     .function = &addLayerFromTemplate},
};

}  // namespace

std::span<const Action> layerTemplateActions() { return kActions; }

}  // namespace actions

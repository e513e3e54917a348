// The tokens of the model: @mdln@, @mdlpath@, @oid@, @workerdir:...@, those of the selection.
#include <optional>

#include "core/log.h"
#include "creo/ProFamtable.h"
#include "creo/ProMdl.h"
#include "creo/ProSelection.h"
#include "creo/ProServer.h"
#include "creo/ProSolid.h"
#include "creo/pfcSession.h"
#include "language/substitution.h"
#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/letters.h"
#include "text/pieces.h"

namespace language {
namespace {

using Value = std::optional<std::wstring>;  // none: the token stays

template <class T>
Value valueOf(creo::Got<T> got) {
  return got ? Value(std::move(got.value)) : Value();
}

// What the model tokens ask. Creo's record of name and place and the selection are read once for all that need them.
class ModelFacts {
 public:
  explicit ModelFacts(creo::ProMdl mdl) : model(mdl) {}
  const creo::ProMdl model;
  creo::ProMdlType type{};

  const creo::Got<creo::ProMdlData>& data() {
    if (!data_) data_ = creo::ProMdlDataGet(model);
    return *data_;
  }
  // The model at the end of the first selection's component path; none where no part or assembly is selected so.
  const creo::Got<creo::ProMdl>& selected() {
    if (!selected_) selected_ = findSelected();
    return *selected_;
  }
  const creo::Got<creo::ProMdlData>& selectedData() {
    if (!selectedData_) {
      selectedData_ = creo::Got<creo::ProMdlData>(creo::ProNotFound);
      if (const auto& chosen = selected()) selectedData_ = creo::ProMdlDataGet(chosen.value);
    }
    return *selectedData_;
  }

 private:
  static creo::Got<creo::ProMdl> findSelected();

  std::optional<creo::Got<creo::ProMdlData>> data_, selectedData_;
  std::optional<creo::Got<creo::ProMdl>> selected_;
};

bool isPartOrAssembly(creo::ProMdlType type) {
  return type == creo::ProMdlType::part || type == creo::ProMdlType::assembly;
}

creo::Got<creo::ProMdl> ModelFacts::findSelected() {
  const auto selections = creo::ProSelbufferSelectionsGet();
  if (!selections || selections.value.empty()) return creo::ProNotFound;
  const creo::ProSelection& first = selections.value.front();
  const auto item = creo::ProSelectionModelitemGet(first);
  if (!item || item.value.type != creo::ProItemType::model) return creo::ProNotFound;
  const auto type = creo::ProMdlTypeGet(item.value.owner);
  if (!type || !isPartOrAssembly(type.value)) return creo::ProNotFound;
  const auto path = creo::ProSelectionAsmcomppathGet(first);
  if (!path || path.value.components.empty()) return creo::ProNotFound;
  return creo::ProAsmcomppathMdlGet(path.value);
}

// ---- values

std::wstring pathText(const creo::ProMdlData& data) { return data.device + L":" + data.path; }

// What every model has: where it can't be read its tokens stay, which may become the name of a file.
template <class T>
bool isRead(const creo::Got<T>& got, std::wstring_view what) {
  if (!got)
    core::logWrite(
        text::format(L"The model's %s can't be read, its tokens stay (error %d)", what, static_cast<int>(got.error)),
        core::kWarning);
  return static_cast<bool>(got);
}

Value modelType(ModelFacts& facts) {
  if (facts.type == creo::ProMdlType::drawing) return L"drw";
  const auto extension = creo::ProMdlExtensionGet(facts.model);
  return isRead(extension, L"extension") ? Value(text::lower(extension.value)) : Value();
}
Value regenerationStatus(ModelFacts& facts) {
  if (!isPartOrAssembly(facts.type) && facts.type != creo::ProMdlType::manufacturing) return {};
  const auto status = creo::ProSolidRegenerationstatusGet(facts.model);
  if (!status) return {};
  switch (status.value) {
    case creo::ProRegenerationStatus::connectFailed:
      return L"PRO_SOLID_CONNECT_FAILED";
    case creo::ProRegenerationStatus::failed:
      return L"PRO_SOLID_FAILED_REGENERATION";
    case creo::ProRegenerationStatus::needed:
      return L"PRO_SOLID_NEEDS_REGENERATION";
    case creo::ProRegenerationStatus::regenerated:
      break;
  }
  return L"PRO_SOLID_REGENERATED";
}
// The object's id out of its address on the server.
Value objectId(ModelFacts& facts) {
  constexpr std::wstring_view kNone = L"no_oid", kMark = L"&oid=";
  if (!creo::ProServerActiveGet()) return Value(kNone);
  const auto name = creo::ProMdlMdlnameGet(facts.model);
  const auto extension = creo::ProMdlExtensionGet(facts.model);
  if (!name || !extension) return Value(kNone);
  const auto aliased = creo::ProServerModelNameToAliasedURL(name.value + L"." + extension.value);
  if (!aliased) return Value(kNone);
  const auto url = creo::ProServerAliasedURLToURL(aliased.value);
  const std::size_t mark = url ? url.value.find(kMark) : std::wstring::npos;
  if (mark == std::wstring::npos) return Value(kNone);
  const std::wstring rest = url.value.substr(mark + kMark.size());
  // The pass of the parameters would take "%3adocument%" for a name.
  return text::replaceAll(rest.substr(0, rest.find_first_of(L"\\&")), L":", std::wstring(1, kClosedPercent) + L"3a");
}
Value genericName(ModelFacts& facts) {
  if (!isPartOrAssembly(facts.type)) return L"-";
  const auto generic = creo::ProFaminstanceImmediategenericinfoGet(facts.model);
  return generic ? generic.value.name : L"-";
}
Value commonName(ModelFacts& facts) { return valueOf(creo::ProMdlCommonnameGet(facts.model)); }
Value modelPath(ModelFacts& facts) {
  return isRead(facts.data(), L"path") ? Value(pathText(facts.data().value)) : Value();
}
Value modelPathWithSlashes(ModelFacts& facts) {
  const Value path = modelPath(facts);
  return path ? Value(text::replaceAll(*path, L"\\", L"/")) : Value();
}
Value selectedPath(ModelFacts& facts) {
  return facts.selectedData() ? Value(pathText(facts.selectedData().value)) : Value();
}
Value selectedName(ModelFacts& facts) {
  return facts.selected() ? valueOf(creo::ProMdlNameGet(facts.selected().value)) : Value();
}
// With a selection its model's version stands in place of the model's own.
Value modelVersion(ModelFacts& facts) {
  const auto& data = facts.selectedData() ? facts.selectedData() : facts.data();
  return data ? Value(text::format(L"%d", data.value.version)) : Value();
}
Value fileVersion(ModelFacts& facts) {
  const Value version = modelVersion(facts);
  return version ? Value(L"." + *version) : Value();
}

struct ModelToken {
  std::wstring_view token;
  Value (*value)(ModelFacts& facts);
};
// In their order; the token of the worker's folder comes between both.
constexpr ModelToken kModelTokens[] = {
    {L"@mdltype@", &modelType},  {L"@regen_status@", &regenerationStatus},
    {L"@oid@", &objectId},       {L"@genname@", &genericName},
    {L"@common@", &commonName},  {L"@mdlpath@", &modelPath},
    {L"@filepath@", &modelPath}, {L"@mdlpathr@", &modelPathWithSlashes},
};
constexpr ModelToken kSelectionTokens[] = {
    {L"@selmdlpath@", &selectedPath}, {L"@selmdln@", &selectedName}, {L"@selfilename@", &selectedName},
    {L"@fileversion@", &fileVersion}, {L"@mdlno@", &modelVersion},
};

template <std::size_t N>
bool replaceTokens(Substitution& call, const ModelToken (&tokens)[N], ModelFacts& facts) {
  for (const ModelToken& row : tokens) {
    if (!call.holds(row.token)) continue;
    const Value value = row.value(facts);
    if (value && !call.replace(row.token, *value)) return false;
  }
  return true;
}

// Both tokens stand for one question.
bool replaceName(Substitution& call) {
  if (!call.holds(L"@mdln@") && !call.holds(L"@filename@")) return true;
  const auto name = creo::ProMdlNameGet(call.model);
  return !isRead(name, L"name") || (call.replace(L"@mdln@", name.value) && call.replace(L"@filename@", name.value));
}

// The first folder below one whose ".paj" files mention the file of the current model.
Value workerFolder(const std::wstring& below) {
  const auto current = creo::pfcGetCurrentModelFileName();
  if (!current) return {};
  const std::string name = text::toUtf8(text::lower(current.value));
  for (const std::wstring& folder : creo::pfcListSubdirectories(below).value) {
    for (const std::wstring& file : creo::pfcListFiles(folder, L"*.paj").value) {
      const auto content = os::files().read(file);
      if (content && content.value.find(name) != std::string::npos) return folder;
    }
  }
  return {};
}

bool replaceWorkerFolder(Substitution& call) {
  constexpr std::wstring_view kOpening = L"@workerdir:";
  const std::size_t open = call.text.find(kOpening);
  if (open == call.text.npos) return true;
  const std::size_t close = call.text.find(L'@', open + kOpening.size());
  if (close == call.text.npos) return true;
  const std::wstring token = call.text.substr(open, close + 1 - open);
  const Value folder = workerFolder(token.substr(kOpening.size(), token.size() - kOpening.size() - 1));
  return !folder || call.replace(token, *folder);
}

}  // namespace

bool modelPass(Substitution& call) {
  const bool hasTokens = call.text.find(L'@') != call.text.npos;
  if (hasTokens && !replaceName(call)) return false;
  const auto type = creo::ProMdlTypeGet(call.model);
  if (!type || type.value == creo::ProMdlType::unused) {
    core::logWrite(type ? L"Model is unused" : L"Failure while get Modeltype", core::kWarning);
    return false;
  }
  if (!hasTokens) return true;
  ModelFacts facts(call.model);
  facts.type = type.value;
  return replaceTokens(call, kModelTokens, facts) && replaceWorkerFolder(call) &&
         replaceTokens(call, kSelectionTokens, facts) &&
         (facts.type != creo::ProMdlType::drawing || drawingTokens(call));
}

}  // namespace language

// Parts and assemblies as STEP and IGES.
#include "actions/exports/brep_export.h"
#include "actions/output_file.h"
#include "language/variables.h"
#include "text/letters.h"

namespace actions {
namespace {

using namespace language;

// Without the extension that Creo appends.
std::wstring withoutStepExtension(std::wstring path) {
  for (const std::wstring_view extension : {L".step", L".stp", L".STEP", L".STP"})
    if (path.ends_with(extension)) path.resize(path.size() - extension.size());
  return path;
}

Outcome exportStep(const Task& task) {
  const auto target = namedTarget(task, {});
  if (!target) return done;
  const std::wstring path = withoutStepExtension(*target);
  const std::wstring file = path + std::wstring(creo::kStepExtension);
  if (!mayBeWritten(file, creo::kStepExtension) || !mayWrite(task, file)) return done;
  creo::OptionGuard profile(L"export_profiles_step");
  creo::ProError result = creo::ProNoError;
  if (!task.attribute(L"config").empty()) result = profile.change(task.path(L"config", L"models"));
  if (result == creo::ProNoError)
    result = creo::ProIntf3DFileWriteWithDefaultProfile(task.model(), creo::ProIntfFormat::step, path);
  return endExport(result, Message::stepFailed);
}

// Does a name end in ".ig" or ".ige" and a letter, as in ".igs" and ".iges"?
bool carriesIges(std::wstring_view name) {
  const auto isLetter = [](wchar_t c) { return (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z'); };
  const std::wstring lower = text::lower(name);
  if (lower.empty() || !isLetter(lower.back())) return false;
  const std::wstring_view stem = std::wstring_view(lower).substr(0, lower.size() - 1);
  return stem.ends_with(L".ig") || stem.ends_with(L".ige");
}

Outcome exportiges(const Task& task) {
  return exportBrep(task, {.file = {.extension = creo::kIgesExtension, .carriesExtension = &carriesIges},
                           .format = creo::ProIntfFormat::iges,
                           .choosesFaces = true,
                           .failure = Message::igesFailed});
}

Outcome exportsat(const Task& task) {
  return exportBrep(
      task,
      {.file = {.extension = creo::kSatExtension}, .format = creo::ProIntfFormat::sat, .failure = Message::satFailed});
}

// ---- rows

constexpr Attribute kConfiguration{
    .name = L"assemblyConfig",
    .kind = Kind::word,
    .words = L"single file|flat file|multi files",
    .about = "one file, the same without names of assemblies, or also a file for each part; absent: one file"};
// What of the model is written: one of these at least.
constexpr Attribute contents(std::wstring_view name, std::string_view about) {
  return {.name = name, .kind = Kind::flag, .words = L"true", .need = Need::oneOf, .about = about};
}
constexpr Attribute kSolidBodies = contents(L"solids", "bodies are written as solids"),
                    kQuilts = contents(L"quilts", "quilts are written");

constexpr Attribute kStepAttributes[] = {
    kFolderFromModel,
    kTargetFolder,
    targetFile("the file's name; it always ends in .stp"),
    {.name = L"config",
     .kind = Kind::file,
     .variables = true,
     .folder = L"models",
     .about = "a file with an export profile; the option export_profiles_step for the time of the export"},
    kOverwriteExisting,
};
constexpr Attribute kIgesAttributes[] = {
    kFolderFromModel,
    kTargetFolder,
    targetFile("the file's name; it always ends in .igs"),
    kConfiguration,
    kSolidBodies,
    contents(L"surfaces", "bodies are written as surfaces"),
    contents(L"wireframe", "edges are written, beside the others"),
    kQuilts,
    kOverwriteExisting,
};
constexpr Attribute kSatAttributes[] = {
    kFolderFromModel,   kTargetFolder, targetFile("the file's name; it always ends in .sat"),
    kConfiguration,     kSolidBodies,  kQuilts,
    kOverwriteExisting,
};

constexpr Action kActions[] = {
    {.key = L"exportStep",
     .place = 134,
     .group = Group::ownModelTest,
     .title = Message::exportStep,
     .version = L"4",
     .attributes = kStepAttributes,
     .effects = {.reads = Touched::model | Touched::users | Touched::files | Touched::options,
                 .changes = Touched::files | Touched::options,
                 .takenBack = false},
     .about = "writes a part or an assembly as a STEP file",
     .function = &exportStep},
    {.key = L"exportiges",
     .place = 135,
     .group = Group::ownModelTest,
     .title = Message::exportIges,
     .attributes = kIgesAttributes,
     .effects = {.reads = Touched::model | Touched::users, .changes = Touched::files, .takenBack = false},
     .about = "writes a part or an assembly as an IGES file",
     .function = &exportiges},
    {.key = L"exportsat",
     .place = 137,
     .group = Group::ownModelTest,
     .title = Message::exportSat,
     .attributes = kSatAttributes,
     .effects = {.reads = Touched::model | Touched::users, .changes = Touched::files, .takenBack = false},
     .about = "writes a part or an assembly as a SAT file",
     .function = &exportsat},
};

}  // namespace

std::span<const Action> exchangeExportActions() { return kActions; }

}  // namespace actions

// Parts and assemblies as STEP and IGES.
#include "actions/exports/brep_export.h"
#include "actions/families.h"
#include "core/messages.h"
#include "engine/output_file.h"
#include "engine/variables.h"
#include "text/letters.h"

namespace actions {
namespace {

using namespace engine;

// Without the extension that Creo appends.
std::wstring withoutStepExtension(std::wstring path) {
  for (const std::wstring_view extension : {L".step", L".stp", L".STEP", L".STP"})
    if (path.ends_with(extension)) path.resize(path.size() - extension.size());
  return path;
}

Outcome exportStep(const Task& task) {
  const ExportTarget target = beginNamed(task, {.title = core::msgText(234), .version = L"4"});
  if (target.ended) return *target.ended;
  const std::wstring path = withoutStepExtension(target.path);
  const std::wstring file = path + std::wstring(creo::kStepExtension);
  if (!mayBeWritten(file, creo::kStepExtension) || !mayWrite(task, file)) return done;
  creo::OptionGuard profile(L"export_profiles_step");
  creo::ProError result = creo::ProNoError;
  if (!task.attribute(L"config").empty()) result = profile.change(task.path(L"config", L"models"));
  if (result == creo::ProNoError)
    result = creo::ProIntf3DFileWriteWithDefaultProfile(task.model(), creo::ProIntfFormat::step, path);
  return endExport(result, 237);
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
  return exportBrep(task,
                    {.file = {.title = core::msgText(240), .extension = L".igs", .carriesExtension = &carriesIges},
                     .format = creo::ProIntfFormat::iges,
                     .choosesFaces = true,
                     .failure = 243});
}

Outcome exportsat(const Task& task) {
  return exportBrep(task, {.file = {.title = core::msgText(239), .extension = L".sat"},
                           .format = creo::ProIntfFormat::sat,
                           .failure = 242});
}

constexpr ActionFunction kActions[] = {
    {L"exportStep", &exportStep},
    {L"exportiges", &exportiges},
    {L"exportsat", &exportsat},
};

}  // namespace

std::span<const ActionFunction> exchangeExportActions() { return kActions; }

}  // namespace actions

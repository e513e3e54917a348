// Drawings as files of other systems' drawings.
#include "actions/exports/export_frame.h"
#include "core/log.h"
#include "core/messages.h"
#include "creo/ProIntf.h"
#include "os/paths.h"
#include "text/format.h"
#include "text/letters.h"

namespace actions {
namespace {

using creo::Pro2dSheets;
using creo::ProError;

struct DrawingForm {
  ExportForm file;
  creo::Pro2dFormat format{};
  std::wstring_view wholeFailure;  // a file of the drawing; one of a single sheet has kFailure
};
constexpr std::wstring_view kFailure = L"Export failure";

Pro2dSheets sheetsOf(std::wstring_view option) {
  if (option == L"-1") return Pro2dSheets::all;
  return option == L"0" ? Pro2dSheets::currentAsSheet : Pro2dSheets::currentAsModel;
}

ProError write(const Task& task, const DrawingForm& form, const std::wstring& name) {
  auto data = creo::Pro2dExportdataAlloc();
  if (!data) return data.error;
  ProError result = creo::Pro2dExportdataSheetoptionSet(data.value, sheetsOf(task.attribute(L"sheetoption")));
  if (result == creo::ProNoError) result = creo::Pro2dExport(form.format, name, task.model(), data.value);
  creo::Pro2dExportdataFree(data.value);
  return result;
}

void tell(ProError result, std::wstring_view failure) {
  if (result == creo::ProNoError)
    core::logMsgId(Message::exported, core::kNormal, 1);
  else
    core::logWrite(failure, core::kError);
}

// Each sheet becomes the current one for its file.
void writeSheets(const Task& task, const DrawingForm& form, const std::wstring& folder, const std::wstring& base) {
  const auto count = creo::ProDrawingSheetsCount(task.model());
  if (!count) return tell(count.error, kFailure);
  creo::SheetGuard current(task.model());
  for (int sheet = 1; sheet <= count.value; ++sheet) {
    const std::wstring name = text::format(L"%s_%d", base, sheet);
    ProError result = current.change(sheet);
    if (result == creo::ProNoError) {
      if (!mayWrite(task, text::format(L"%s%s%s", folder, name, form.file.extension))) continue;
      result = write(task, form, folder + name);
    }
    tell(result, kFailure);
  }
}

Outcome exportDrawing(const Task& task, const DrawingForm& form) {
  const auto target = namedTarget(task, form.file);
  if (!target) return done;
  const std::wstring folder = os::folderOf(*target);
  std::wstring base = os::nameOf(*target);
  if (text::endsWithNoCase(base, form.file.extension)) base.resize(base.size() - form.file.extension.size());
  const bool bySheet = task.attribute(L"sheetoption") == L"2";
  if (!bySheet && !mayWrite(task, folder + base + std::wstring(form.file.extension))) return done;
  const SmallSurfacesGuard surfaces;
  creo::DirectoryGuard directory;
  if (const ProError result = directory.change(folder)) {
    tell(result, bySheet ? kFailure : form.wholeFailure);
    return done;
  }
  if (bySheet)
    writeSheets(task, form, folder, base);
  else
    tell(write(task, form, folder + base), form.wholeFailure);
  return done;
}

Outcome exportdxf(const Task& task) {
  return exportDrawing(task,
                       {.file = {.extension = L".dxf"}, .format = creo::Pro2dFormat::dxf, .wholeFailure = kFailure});
}

Outcome exportdwg(const Task& task) {
  return exportDrawing(
      task, {.file = {.extension = L".dwg"}, .format = creo::Pro2dFormat::dwg, .wholeFailure = L"Exportfailure"});
}

constexpr Attribute kSheets[] = {
    {.name = L"sheetoption",
     .kind = Kind::word,
     .words = L"-1|0|1|2",
     .about = "-1: all sheets in one file; 0, 1 or absent: the current sheet; 2: a file for each sheet"},
};
constexpr auto kAttributes = joined(kTarget, kSheets);
// A sheet becomes the current one for its file.
constexpr Effects kEffects{.reads = Touched::model | Touched::users,
                           .changes = Touched::model | Touched::files | Touched::session | Touched::options,
                           .takenBack = false};

constexpr Action kActions[] = {
    {.key = L"exportdxf",
     .place = 139,
     .group = Group::ownModelTest,
     .title = L"Export DXF file",
     .attributes = kAttributes,
     .effects = kEffects,
     .about = "writes the drawing as DXF",
     .function = &exportdxf},
    {.key = L"exportdwg",
     .place = 140,
     .group = Group::ownModelTest,
     .title = L"Export DWG file",
     .attributes = kAttributes,
     .effects = kEffects,
     .about = "writes the drawing as DWG",
     .function = &exportdwg},
};

}  // namespace

std::span<const Action> drawingExportActions() { return kActions; }

}  // namespace actions

// Pictures of what a model's window shows.
#include "actions/exports/export_frame.h"
#include "actions/exports/model_window.h"
#include "core/log.h"
#include "core/messages.h"
#include "creo/ProMdl.h"
#include "creo/ProPrint.h"
#include "creo/ProRaster.h"
#include "language/read_number.h"
#include "os/surroundings.h"
#include "text/format.h"

namespace actions {
namespace {

using namespace language;

constexpr int kDotsPerInch = 600;
constexpr std::wstring_view kTiff = L".tiff", kNameAttribute = L"exportname";

// The list has dots, Creo takes inches. What is no number is none of both, which Creo refuses.
double inches(const Task& task, std::wstring_view attribute) {
  return numberOrZero(task.attribute(attribute)).value_or(0) / kDotsPerInch;
}

Outcome exportjpg(const Task& task) {
  const auto target = exportTarget(task, {.extension = L".jpg", .nameAttribute = kNameAttribute});
  if (!target) return done;
  const SmallSurfacesGuard smallSurfaces;
  const ModelWindow shown(task.model());
  if (!shown.window()) return endExport(shown.window().error, Message::jpgFailed);
  return endExport(creo::ProRasterFileWrite(shown.window().value,
                                            {.depth = creo::ProRasterDepth::bits24Color,
                                             .width = inches(task, L"width"),
                                             .height = inches(task, L"height"),
                                             .dotsPerInch = kDotsPerInch,
                                             .type = creo::ProRasterType::jpeg},
                                            *target),
                   Message::jpgFailed);
}

// ---- exporttiff

// A step of the setup that fails leaves what Creo begins with, and its marker.
template <class T>
void takeOr(const creo::Got<T>& got, T& into, std::wstring_view marker) {
  if (got)
    into = got.value;
  else
    core::logIndented(marker, core::kNormal, 1);
}

void takeMode(const Task& task, creo::ProPrintMdlOptions& model) {
  const std::wstring_view mode = task.attribute(L"printmode");
  if (mode == L"1" || mode == L"3") {
    model.use = creo::ProPrintUse::wholeSheet;
    model.scaling = 0;
  } else {
    model.use = creo::ProPrintUse::asShown;
  }
  if (mode == L"2") model.scaling = 1;
  if (mode == L"3") model.sheets = 3;
}

// A drawing is printed on paper of its sheet's size.
void takeSheet(const Task& task, creo::ProPrintOptions& options) {
  if (creo::ProMdlTypeGet(task.model()).value != creo::ProMdlType::drawing) return;
  int sheet = 1;
  takeOr(creo::ProDrawingCurrentSheetGet(task.model()), sheet, L"m6");
  creo::ProSheetDimensions size{.size = options.paper};
  takeOr(creo::ProDrawingSheetSizeGet(task.model(), sheet), size, L"m7");
  options.paper = size.size;
  options.width = size.width;
  options.height = size.height;
  if (task.isTrue(L"varsize")) options.paper = creo::ProSheetSize::variableMm;
}

creo::ProPrintOptions printOptions(const Task& task, int window) {
  if (creo::ProWindowRefit(window) != creo::ProNoError) core::logIndented(L"m2", core::kNormal, 1);
  creo::ProPrintOptions options;
  takeOr(creo::ProPrintPrinterOptionsGet(L"TIFF"), options.printer, L"m3");
  takeOr(creo::ProPrintMdlOptionsGet(task.model()), options.model, L"m4");
  takeOr(creo::ProPrintPlacementOptionsGet(task.model()), options.placement, L"m5");
  takeMode(task, options.model);
  takeSheet(task, options);
  return options;
}

// Creo numbers the sheets that it prints; the picture gets its own name once it is whole.
creo::ProError printed(int window, const creo::ProPrintOptions& options, const std::wstring& path) {
  const std::wstring numbered = path.substr(0, path.size() - kTiff.size()) + L"_1.tiff";
  if (os::files().exists(numbered)) {
    core::logWrite(text::format(L"%s is in the way", numbered), core::kError);
    return creo::ProExists;
  }
  if (const creo::ProError result = creo::ProPrintExecute(window, options, numbered)) return result;
  if (!os::files().rename(numbered, path)) return creo::ProNoError;
  os::files().remove(numbered);
  return creo::ProCantWrite;
}

Outcome exporttiff(const Task& task) {
  const auto target = exportTarget(task, {.extension = kTiff, .nameAttribute = kNameAttribute});
  if (!target) return done;
  const SmallSurfacesGuard smallSurfaces;
  const ModelWindow shown(task.model());
  if (!shown.window()) {
    core::logIndented(L"m1", core::kNormal, 1);
    return endExport(shown.window().error, Message::tiffFailed);
  }
  const int window = shown.window().value;
  const creo::ProError result = printed(window, printOptions(task, window), *target);
  const Outcome outcome = endExport(result, Message::tiffFailed);
  if (result != creo::ProNoError) core::logWrite(text::format(L"Error %d", static_cast<int>(result)), core::kError);
  return outcome;
}

// ---- rows

constexpr Attribute dots(std::wstring_view name) {
  return {.name = name,
          .kind = Kind::number,
          .need = Need::needed,
          .range = {.least = 1, .most = 10'000},
          .about = "in dots, 1 to 10,000"};
}
constexpr Attribute kJpgAttributes[] = {
    kFolderFromModel,
    kTargetFolder,
    targetFile("the file's name; .jpg is appended where it is missing", kNameAttribute),
    dots(L"width"),
    dots(L"height"),
    kOverwriteExisting,
};
constexpr Attribute kTiffAttributes[] = {
    kFolderFromModel,
    kTargetFolder,
    kOverwriteExisting,
    targetFile("the file's name; .tiff is appended where it is missing", kNameAttribute),
    {.name = L"printmode",
     .kind = Kind::word,
     .words = L"1|2|3",
     .about = "1: the whole sheet in true size; 3: the same, the current sheet alone; 2 or absent: as shown"},
    {.name = L"varsize", .kind = Kind::flag, .words = L"true", .about = "the paper has the sheet's own size"},
};
constexpr Effects kEffects{.reads = Touched::model | Touched::users | Touched::session | Touched::options,
                           .changes = Touched::files | Touched::session | Touched::options,
                           .takenBack = false};

constexpr Action kActions[] = {
    {.key = L"exportjpg",
     .place = 132,
     .group = Group::ownModelTest,
     .title = Message::exportJpg,
     .attributes = kJpgAttributes,
     .effects = kEffects,
     .about = "writes a picture of the model as a JPEG file",
     .function = &exportjpg},
    {.key = L"exporttiff",
     .place = 133,
     .group = Group::ownModelTest,
     .title = Message::exportTiff,
     .attributes = kTiffAttributes,
     .effects = kEffects,
     .about = "prints the model into a TIFF file",
     .function = &exporttiff},
};

}  // namespace

std::span<const Action> pictureExportActions() { return kActions; }

}  // namespace actions

#include "creo/ProPrint.h"

#include <cmath>

#include "creo/ProWindow.h"
#include "headless/creo/operation.h"
#include "headless/exports/export_file.h"
#include "headless/model/drawing.h"
#include "headless/model/sheet_units.h"
#include "headless/pictures/model_picture.h"
#include "os/paths.h"

namespace creo {

using headless::Model;
using headless::onModel;
using headless::operation;
using State = headless::Session::State;

namespace {

constexpr double kMmPerInch = 25.4;

struct Paper {
  double width = 0, height = 0;  // inches
};

// Paper of a standard size lies across; a drawing's has the sheet's own size.
Paper paperOf(const ProPrintOptions& options, const Model& model) {
  headless::SheetRecord standard;
  standard.size = options.paper;
  const bool isDrawing = headless::hasSheets(model.type());
  if (!isDrawing && options.paper == ProSheetSize::variableMm && options.width > 0 && options.height > 0)
    return {options.width / kMmPerInch, options.height / kMmPerInch};
  const headless::ModelDocument& document = *model.document;
  const headless::SheetRecord* sheet =
      isDrawing ? headless::sheetOf(document, headless::currentSheetOf(document)) : nullptr;
  const ProSheetDimensions size = headless::sheetDimensions(sheet ? *sheet : standard);
  const double unit = headless::isInMm(size.size) ? kMmPerInch : 1;
  return {size.width / unit, size.height / unit};
}

// A name alone is that of a file in the folder that the option tells, if it does.
std::wstring plotPath(const State& state, const std::wstring& path) {
  if (headless::isWholePath(path)) return path;
  const auto folders = state.configuration.values(L"plot_dir");
  return folders.empty() || folders.front().empty() ? path : os::joined(folders.front(), path);
}

}  // namespace

Got<ProPrintPrinterOptions> ProPrintPrinterOptionsGet(const std::wstring& type) {
  return operation("ProPrintPrinterOptionsGet", [&](State&) -> Got<ProPrintPrinterOptions> {
    if (type != L"TIFF") return ProNotFound;
    return ProPrintPrinterOptions{.type = type};
  });
}

Got<ProPrintMdlOptions> ProPrintMdlOptionsGet(ProMdl model) {
  return onModel("ProPrintMdlOptionsGet", model,
                 [](State&, Model&) -> Got<ProPrintMdlOptions> { return ProPrintMdlOptions(); });
}

Got<ProPrintPlacementOptions> ProPrintPlacementOptionsGet(ProMdl model) {
  return onModel("ProPrintPlacementOptionsGet", model,
                 [](State&, Model&) -> Got<ProPrintPlacementOptions> { return ProPrintPlacementOptions(); });
}

ProError ProPrintExecute(int window, const ProPrintOptions& options, const std::wstring& path) {
  return operation("ProPrintExecute", [&](State& state) -> ProError {
    Model* model = state.models.find(state.windows.model(window == kAnyWindow ? state.windows.current() : window));
    if (!model) return ProNotFound;
    const Paper paper = paperOf(options, *model);
    const int most = static_cast<int>(headless::kMostDots / std::max({paper.width, paper.height, 1.0}));
    const int dotsPerInch = std::min(options.printer.dotsPerInch, most);
    const int width = static_cast<int>(std::round(paper.width * dotsPerInch));
    const int height = static_cast<int>(std::round(paper.height * dotsPerInch));
    if (width < 1 || height < 1) return ProBadInputs;
    const auto picture =
        headless::printedPicture(state.pictureSources(), *model, state.options.textFolder, width, height);
    if (!picture) return picture.error;
    return headless::writeExport(state.models, plotPath(state, path), headless::tiffOf(picture.value, dotsPerInch));
  });
}

}  // namespace creo

#include "creo/ProRaster.h"

#include <cmath>

#include "creo/ProWindow.h"
#include "headless/creo/operation.h"
#include "headless/exports/export_file.h"
#include "headless/model/drawing.h"
#include "headless/pictures/model_picture.h"
#include "text/format.h"

namespace creo {

using headless::operation;
using State = headless::Session::State;

namespace {

// Dots of an edge; 0: no edge of a picture.
int dotsOf(double inches, int dotsPerInch) {
  const double dots = std::round(inches * dotsPerInch);
  return dots >= 1 && dots <= headless::kMostDots ? static_cast<int>(dots) : 0;
}

}  // namespace

ProError ProRasterFileWrite(int window, const ProRasterForm& form, const std::wstring& path) {
  return operation("ProRasterFileWrite", [&](State& state) -> ProError {
    if (!state.options.graphics) return ProNoGraphics;
    const int width = dotsOf(form.width, form.dotsPerInch), height = dotsOf(form.height, form.dotsPerInch);
    if (width == 0 || height == 0) {
      state.showMessage(text::format(L"%s: a picture has 1 to %d dots along each edge", path, headless::kMostDots));
      return ProBadInputs;
    }
    if (path.empty()) return ProBadInputs;
    const ProMdl shown = state.windows.model(window == kAnyWindow ? state.windows.current() : window);
    headless::Model* model = state.models.find(shown);
    if (!model) return ProNotFound;
    if (headless::hasSheets(model->type())) {
      state.showMessage(model->name + L"." + typeExtension(model->type()) + L" has no picture but its print");
      return ProInvalidType;
    }
    const auto picture = headless::solidPicture(state.pictureSources(), *model, width, height);
    if (!picture) return picture.error;
    const std::string bytes = form.type == ProRasterType::tiff ? headless::tiffOf(picture.value, form.dotsPerInch)
                                                               : headless::jpegOf(picture.value, form.dotsPerInch);
    return headless::writeExport(state.models, path, bytes);
  });
}

}  // namespace creo

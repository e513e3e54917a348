#include "kelvane/show/pictures.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "headless/model/drawing.h"
#include "headless/model/models.h"
#include "headless/pictures/drawn_views.h"
#include "headless/pictures/model_picture.h"
#include "headless/pictures/view_cut.h"
#include "kelvane/base/fault.h"
#include "kelvane/base/places.h"
#include "kelvane/show/model_folder.h"
#include "os/surroundings.h"

namespace kelvane {
namespace {

using headless::Image;
using headless::SheetPicture;

constexpr double kGap = 10;        // mm between sheets and around them, where there are several
constexpr double kLongSide = 297;  // mm of the paper that a solid's edges stand on: that of A4
constexpr headless::Color kBehind{0xDD, 0xDD, 0xDD};

std::string nameOf(const headless::Model& model) { return label(model.name, model.type()); }

[[noreturn]] void refuseEmpty(const headless::Model& model) { throw Fault(nameOf(model) + " has nothing to show"); }

std::vector<SheetPicture> sheetsOf(headless::Session& session, const headless::Model& drawing, int sheet) {
  const int count = headless::sheetCount(*drawing.document);
  if (sheet < 0 || sheet > count) throw Fault(nameOf(drawing) + " has no sheet " + std::to_string(sheet));
  headless::ShownModels shown(session.pictureSources());
  std::vector<SheetPicture> sheets;
  for (int number = sheet == 0 ? 1 : sheet; number <= (sheet == 0 ? count : sheet); ++number)
    sheets.push_back(headless::sheetPicture(session.pictureSources(), shown, drawing, number));
  if (sheets.empty()) refuseEmpty(drawing);
  return sheets;
}

const headless::Model& modelOf(headless::Session& session, creo::ProMdl handle) {
  const headless::Model* model = session.models().find(handle);
  if (!model) throw Fault("the model is gone");
  return *model;
}

// The picture of one sheet put into that of all.
void paste(Image& into, const Image& from, int left, int top) {
  for (int y = 0; y < from.height && y + top < into.height; ++y)
    for (int x = 0; x < from.width && x + left < into.width; ++x) into.at(x + left, y + top) = from.at(x, y);
}

Image sheetsImage(std::span<const SheetPicture> sheets, PictureSize size) {
  const double gap = sheets.size() > 1 ? kGap : 0;
  double width = 0, height = gap;
  for (const SheetPicture& sheet : sheets) {
    width = std::max(width, sheet.width + 2 * gap);
    height += sheet.height + gap;
  }
  if (!(width > 0) || !(height > 0)) throw Fault("a sheet has no size");
  const double dots = std::min(size.width / width, size.height / height);
  const auto counted = [dots](double mm) { return std::max(1, static_cast<int>(std::lround(mm * dots))); };
  const std::wstring texts = systemPath(installationFolder() + "/text");
  Image all(std::min(counted(width), size.width), std::min(counted(height), size.height), kBehind);
  double top = gap;
  for (const SheetPicture& sheet : sheets) {
    paste(all, headless::sheetImage(sheet, texts, counted(sheet.width), counted(sheet.height)),
          static_cast<int>(std::lround(gap * dots)), static_cast<int>(std::lround(top * dots)));
    top += sheet.height + gap;
  }
  return all;
}

}  // namespace

PictureSize pictureSize(const std::string& text) {
  PictureSize size;
  const char* const end = text.data() + text.size();
  const auto [across, fault] = std::from_chars(text.data(), end, size.width);
  const bool hasBoth = fault == std::errc() && across != end && *across == 'x';
  const auto down = hasBoth ? std::from_chars(across + 1, end, size.height) : std::from_chars_result{};
  const auto fits = [](int side) { return side >= 1 && side <= headless::kMostDots; };
  if (!hasBoth || down.ec != std::errc() || down.ptr != end || !fits(size.width) || !fits(size.height))
    throw Fault("'" + text + "' is no size of a picture; one is 1600x1200, and sides have at most " +
                std::to_string(headless::kMostDots) + " dots");
  return size;
}

Shown shownModel(headless::Session& session, creo::ProMdl handle, int sheet) {
  const headless::Model& model = modelOf(session, handle);
  Shown shown;
  if (headless::hasSheets(model.type())) {
    shown.sheets = sheetsOf(session, model, sheet);
    return shown;
  }
  if (sheet != 0) throw Fault(nameOf(model) + " has no sheets");
  const headless::PictureSources sources = session.pictureSources();
  auto parts = headless::shownParts(sources.bodies, sources.models, model);
  if (!parts || parts.value.parts.empty()) refuseEmpty(model);
  shown.parts = std::move(parts.value);
  shown.cut = headless::activeCut(sources.models, model, headless::kTrimetric);
  return shown;
}

Shown shownLines(headless::Session& session, creo::ProMdl solid, PictureSize size) {
  const headless::Model& model = modelOf(session, solid);
  const headless::PictureSources sources = session.pictureSources();
  const auto placed = headless::placedParts(sources.bodies, sources.models, model, headless::PlacedFor::solid);
  if (placed && placed.value.bodies.empty()) refuseEmpty(model);
  const double unit = kLongSide / std::max(size.width, size.height);
  auto lines = headless::solidLines(sources, model, headless::kTrimetric, size.width * unit, size.height * unit, false);
  if (!lines) refuseEmpty(model);
  Shown shown;
  shown.sheets.push_back(std::move(lines.value));
  return shown;
}

Image imageOf(const Shown& shown, PictureSize size) {
  if (!shown.sheets.empty()) return sheetsImage(shown.sheets, size);
  return headless::shaded(shown.parts.parts, headless::kTrimetric, size.width, size.height, shown.cut);
}

void writePicture(const std::string& bytes, const std::string& file, Console& console) {
  if (file == "-") return console.resultBytes(bytes);
  if (const auto error = os::files().write(systemPath(file), bytes))
    throw Fault(file + " can't be written: " + error.message());
  console.result(file);
}

}  // namespace kelvane

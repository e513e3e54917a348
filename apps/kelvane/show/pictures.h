// Models as pictures: the sheets of a drawing, a solid looked at from the front, the right and above, cut by its active
// cross section.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "headless/pictures/image.h"
#include "headless/pictures/sheet_picture.h"
#include "headless/pictures/shown_parts.h"
#include "headless/session.h"
#include "kelvane/base/console.h"

namespace kelvane {

// How many dots a picture may have at most; what is shown fills it.
struct PictureSize {
  int width = 1600, height = 1200;
};
// "1600x1200"; a Fault for what is no such text, or has a side of no or of more than 10,000 dots.
PictureSize pictureSize(const std::string& text);

// Something to be looked at: one of both.
struct Shown {
  std::vector<headless::SheetPicture> sheets;
  headless::ShownParts parts;
  std::optional<headless::geometry::SightCut> cut = {};  // of the parts
};
// sheet: of a drawing that one, from 1; 0: all. A Fault: there is no such sheet, or nothing to show. Why a part can't
// be shown is in the session's message area.
Shown shownModel(headless::Session& session, creo::ProMdl model, int sheet);
// A solid by its edges, on a sheet of that shape; a Fault likewise.
Shown shownLines(headless::Session& session, creo::ProMdl solid, PictureSize size);

// Sheets stand one below another, and the picture has their shape.
headless::Image imageOf(const Shown& shown, PictureSize size);

// Writes a file; "-" is standard output. A Fault: it can't be written.
void writePicture(const std::string& bytes, const std::string& file, Console& console);

}  // namespace kelvane

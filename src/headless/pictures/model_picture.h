// What the window of a model shows, as a picture.
#pragma once

#include "creo/ProTransform.h"
#include "creo/ProTypes.h"
#include "headless/model/bodies.h"
#include "headless/pictures/image.h"
#include "headless/pictures/picture_sources.h"
#include "headless/pictures/sheet_picture.h"

namespace headless {

// The most dots an edge of a picture may have.
constexpr int kMostDots = 10'000;

// A solid shaded, as its active view turns it; without one from the front, the right and above. It is cut by its active
// cross section. ProGeneralError with a line of the message area: there is no geometry to show, or a body can't be
// built.
creo::Got<Image> solidPicture(const PictureSources& sources, const Model& solid, int width, int height);

// The edges of a solid, cut likewise, on paper of that size in mm, which they fill but for a margin. hidden: those that
// lie behind faces are there too. Failures as above; edges that had to be facets' have a line of the message area.
creo::Got<SheetPicture> solidLines(const PictureSources& sources, const Model& solid, const creo::ProTransform& screen,
                                   double width, double height, bool hidden);

// A sheet as large as it fits, in the middle, on white. textFolder: the application's, which has the face of texts
// (FreeSans.ttf); without it there are none. Throws std::runtime_error for what the library refuses.
Image sheetImage(const SheetPicture& sheet, const std::wstring& textFolder, int width, int height);
// What is printed: of a drawing its current sheet, of a solid all its edges as its active view turns it, those that lie
// behind faces dashed. ProGeneralError as for a solid's picture.
creo::Got<Image> printedPicture(const PictureSources& sources, const Model& model, const std::wstring& textFolder,
                                int width, int height);

}  // namespace headless

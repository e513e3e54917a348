// The dimensions of a sheet.
#pragma once

#include <optional>
#include <vector>

#include "headless/pictures/sheet_content.h"

namespace headless {

class ShownModels;  // drawn_views.h

// A view, and how its model lies on the sheet.
struct DimensionedView {
  const ViewRecord* view = nullptr;
  const Model* model = nullptr;
  creo::ProTransform screen = {};  // its axes in the model's coordinates
  double scale = 1;                // mm on the sheet for a unit of the model
  int sheet = 1;
  bool isDrawn = true;              // else it is a frame; of other sheets' views nobody knows
  geometry::FlatPoint middle = {};  // of the model's box as the view sees it, in mm on paper
  geometry::FlatPoint place = {};   // of that middle on the sheet; of views on this sheet alone
  double width = 0, height = 0;     // of the box, in mm on paper
};

// Adds to the picture, which shows all else already, what the drawing shows of models' dimensions and its own. Each
// stands in one view: in the one that its document names, else the first that sees it in full: diameters of what is
// round in a side view, those of bores where they are circles. It stands where its document says (members `view` and
// `position`, the middle of its text), else outside of the model's outline, 10 mm away and 8 mm from each other, the
// short ones inside, where neither a line nor a text lies upon another one, on the side that is nearer, below and on
// the right where both are. In place of a view that isn't drawn comes another one of its sheet. What finds no place is
// written at the sheet's upper edge, with a warning each in the message area. views: of all sheets. otherViews: of this
// sheet, on which nothing may stand either: details, broken views, frames. toSheet: from the drawing's coordinates.
// textHeight: in mm.
void addDimensions(const ShownModels& models, const Model& drawing, int sheet,
                   const std::vector<DimensionedView>& views, const std::vector<geometry::FlatBox>& otherViews,
                   double textHeight, const creo::FunctionRef<geometry::FlatPoint(geometry::FlatPoint)>& toSheet,
                   SheetPicture& picture);

}  // namespace headless

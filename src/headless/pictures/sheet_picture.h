// What a sheet of a drawing shows, as lines and texts that every writer of pictures can draw: SVG, DXF, PDF, images.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "headless/pictures/picture_sources.h"
#include "headless/pictures/sheet_hatch.h"
#include "headless/pictures/sheet_stroke.h"

namespace headless {

struct Model;       // model/models.h
class ShownModels;  // drawn_views.h

// Lengths are in mm, places from the sheet's lower left corner, y upwards.
struct SheetText {
  double x = 0, y = 0;  // where the base line begins
  double height = 0;    // of the face
  double angle = 0;     // degrees, counter-clockwise
  double room = 0;      // how wide it may be; 0: as it comes. For a usual face the height says so already
  std::wstring text;
  SheetColor color = 0;
  SheetPart part = SheetPart::notes;
  bool isBold = false, isOblique = false;
  std::string font = {};  // the name of a face; empty: the usual one
};
struct SheetPicture {
  double width = 0, height = 0;  // of the sheet
  bool isInMm = true;            // else the drawing measures the sheet in inches
  std::vector<SheetStroke> strokes;
  std::vector<SheetText> texts;
  std::vector<SheetHatch> hatches = {};  // whole areas; their lines stand among the strokes as those of other areas do
};

// The format's lines and tables, tables with what their cells show, notes, symbols, drawn lines, each in its place on
// the sheet and in its width. A view shows the edges of its model, one that is drawn by facets says so below; where
// there is nothing to show it is a frame with the model's name and its own. A cell's text that is wider than the cell
// is smaller. drawing: a drawing or a format; sheet: from 1 to the sheet count, one that isn't there gives an empty
// picture. models: of the drawing's other sheets, so that what several of them show is gathered once.
SheetPicture sheetPicture(const PictureSources& sources, ShownModels& models, const Model& drawing, int sheet);
SheetPicture sheetPicture(const PictureSources& sources, const Model& drawing, int sheet);

// About how wide a usual sans-serif face writes it.
double textWidth(std::wstring_view text, double height);

}  // namespace headless

// What a sheet of a drawing shows, as lines and texts that every writer of pictures can draw: SVG, DXF, PDF, images.
#pragma once

#include <string>
#include <vector>

#include "headless/pictures/dimension_anchors.h"
#include "headless/pictures/sheet_hatch.h"
#include "headless/pictures/sheet_stroke.h"

namespace headless {

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
// A dimension that is drawn: what it measures on the sheet, and which strokes and texts of the picture are its own.
struct SheetDimension {
  Measuring measuring = Measuring::length;
  // Of a length where its extension lines begin; of a diameter two places of the circle across from each other; of a
  // radius the middle and a place of the circle; of an angle a place on each arm.
  geometry::FlatPoint from = {}, to = {};
  geometry::FlatPoint line = {};   // a place on the dimension's line
  geometry::FlatPoint third = {};  // of an angle its vertex, else the middle of the text
  bool isCircle = false;           // a diameter or radius that is seen as a circle, else as a length
  double angle = 0;                // of a length the way in which it is measured, in degrees
  double scale = 1;                // mm on the sheet for a unit of the model
  double value = 0;
  std::wstring text = {};
  std::size_t firstStroke = 0, strokes = 0, firstText = 0, texts = 0;
};
struct SheetPicture {
  double width = 0, height = 0;  // of the sheet
  bool isInMm = true;            // else the drawing measures the sheet in inches
  std::vector<SheetStroke> strokes;
  std::vector<SheetText> texts;
  std::vector<SheetHatch> hatches = {};  // whole areas; their lines stand among the strokes as those of other areas do
  std::vector<SheetDimension> dimensions;
};

}  // namespace headless

// What a sheet of a drawing shows, worked out from its document.
#pragma once

#include <string_view>

#include "headless/pictures/picture_sources.h"
#include "headless/pictures/sheet_content.h"

namespace headless {

struct Model;       // model/models.h
class ShownModels;  // drawn_views.h

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

// The formats of sheets: documents of their own, "FRAME.frm", or sheets of other drawings.
#pragma once

#include "headless/model/model.h"

namespace headless {

class Models;  // models.h

// The document that the sheet's format comes from, brought into memory. Null: the sheet has no format, or there is none
// of that name.
const Model* formatOf(Models& models, const SheetRecord& sheet);
// From 1.
int formatSheetOf(const SheetRecord& sheet);

// The sheet takes over a sheet of a format or a drawing: its size, and copies of its tables as tables of the format,
// placed as there. In their texts forms that could be about any model get modelNumber (0: they stay as they are).
// Tables of the former format become the drawing's own. ProNotFound: one of the two sheets isn't there.
creo::ProError takeFormat(Model& drawing, int sheet, const Model& source, int sourceSheet, int modelNumber);

}  // namespace headless

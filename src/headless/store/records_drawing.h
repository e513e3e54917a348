// What the document of a drawing holds beside parameters and dimensions.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "creo/ProDrawing.h"
#include "creo/ProDwgtable.h"
#include "headless/store/fields.h"

namespace headless {

// A place on a sheet, in the drawing's own coordinates.
struct PointRecord : Open {
  double x = 0, y = 0;
};

inline bool isDefault(const PointRecord& point) { return point.x == 0 && point.y == 0 && !point.extra; }

// From a sheet's own coordinates to the drawing's: scale, then offset.
struct SheetMatrixRecord : Open {
  double scaleX = 1, scaleY = 1, offsetX = 0, offsetY = 0;
};

struct SheetRecord : Open {
  std::string name;
  creo::ProSheetSize size = creo::ProSheetSize::a4;
  bool portrait = false;
  double width = 0, height = 0;  // 0: what the size says
  double scale = 1;
  std::string format;  // the format's name; empty for a sheet without one
  bool formatBlanked = false;
  std::unique_ptr<SheetMatrixRecord> matrix;
};

// A view: of a solid an orientation, of a drawing what a sheet shows of a model.
struct ViewRecord : Open {
  int id = 0;
  std::string name, alternateName;
  int sheet = 0;      // drawings only
  std::string model;  // "GEAR.prt"; drawings only
  double scale = 0;   // 0: the sheet's; drawings only
  PointRecord position;
};

struct CellRecord : Open {
  int row = 1, column = 1;         // from 1
  std::vector<std::string> lines;  // symbolic text: "&PART_NO"
};
struct SegmentRecord : Open {
  int sheet = 1;
  PointRecord position;
};
// A region that repeats itself over the models of an assembly.
struct RepeatRegionRecord : Open {
  int model = 0;  // number of the model, as in "&model_name:2"
};
struct TableRecord : Open {
  int id = 0;
  std::string name;
  bool fromFormat = false;
  std::vector<SegmentRecord> segments;
  std::vector<double> columns, rows;  // widths and heights
  std::vector<CellRecord> cells;      // those with a text
  std::vector<RepeatRegionRecord> repeatRegions;
};

// A note: of a solid, or on a sheet of a drawing.
struct NoteRecord : Open {
  int id = 0;
  std::string name;
  std::vector<std::string> lines;  // symbolic text: "&PART_NO"
  int sheet = 1;                   // drawings only, as the position
  PointRecord position;
};

struct SymbolDefinitionRecord : Open {
  int id = 0;
  std::string name;
};
struct SymbolRecord : Open {
  int id = 0;
  std::string definition;  // by name
  int sheet = 1;
  PointRecord position;
  std::vector<std::string> texts;  // what its variable texts say
};

// A dimension of a model that the drawing shows.
struct ShownDimensionRecord : Open {
  std::string model;  // "GEAR.prt"
  int id = 0;
  bool reference = false;
};

// A setting of the drawing's own, such as the height of its texts.
struct DetailOptionRecord : Open {
  std::string name, value;
};

}  // namespace headless

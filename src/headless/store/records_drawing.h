// What the document of a drawing holds beside parameters and dimensions.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
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

// From the drawing's coordinates to the sheet's own: scale, then offset.
struct SheetMatrixRecord : Open {
  double scaleX = 1, scaleY = 1, offsetX = 0, offsetY = 0;
};

struct SheetRecord : Open {
  std::string name;
  creo::ProSheetSize size = creo::ProSheetSize::a4;
  bool portrait = false;
  double width = 0, height = 0;  // 0: what the size says
  double scale = 1;
  std::string format;   // the format's name; empty for a sheet without one
  int formatSheet = 0;  // of a format that comes from a drawing or has several sheets: which; 0: the first
  bool formatBlanked = false;
  std::unique_ptr<SheetMatrixRecord> matrix;
};

// What a view leaves out of its model, in the drawing's coordinates from the view's place, as if it weren't shortened.
struct BreakRecord : Open {
  double from = 0, to = 0;
  bool upright = false;  // between two heights; else between two widths
};
// A view: of a solid an orientation, of a drawing what a sheet shows of a model.
struct ViewRecord : Open {
  int id = 0;
  std::string name, alternateName;
  int sheet = 0;      // drawings only
  std::string model;  // "GEAR.prt"; drawings only
  double scale = 0;   // 0: the sheet's; drawings only
  PointRecord position;
  int displayStyle = 0;        // Creo's number of how the model is drawn; 0: as the session does; drawings only
  std::vector<double> matrix;  // of an orientation: 9 numbers, row by row; none: as the model stands
  // Drawings only: the cross section that cuts its model, and models that stay whole ("BOLT.prt").
  std::string section;
  std::vector<std::string> uncut;
  bool teeth = false;  // drawings only: the teeth of gears are shown as they are
  std::vector<BreakRecord> breaks;
  // Drawings only: the id of the view of which it is a detail (0: none), the circle that it shows, from that one's
  // place.
  int detailOf = 0;
  PointRecord centre;
  double radius = 0;
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
  // Not written: where the first `cellsIndexed` cells lie in the list, by row and column.
  std::unordered_map<std::uint64_t, std::size_t> cellPlaces;
  std::size_t cellsIndexed = 0;
};

// A piece of a note's line. 0 and empty: what the drawing's detail options say. Slant in degrees.
struct NoteTextRecord : Open {
  std::string text;  // symbolic: "&PART_NO"
  double height = 0, width = 0, slant = 0, thickness = 0;
  std::string font;
};
// A line of a note. In a document a text alone, where it has one piece without a form of its own.
struct NoteLineRecord {
  std::vector<NoteTextRecord> texts;
  [[nodiscard]] std::string text() const {  // all pieces, joined
    std::string joined;
    for (const NoteTextRecord& record : texts) joined += record.text;
    return joined;
  }
};
void readValue(NoteLineRecord& into, const Json& json, Reader& in);
void writeValue(const NoteLineRecord& line, std::string& out, int level);
void copyValue(const NoteLineRecord& from, NoteLineRecord& into);
void describeValue(Schema& schema, Of<NoteLineRecord>);
// A note: of a solid, or on a sheet of a drawing.
struct NoteRecord : Open {
  int id = 0;
  std::string name;
  std::vector<NoteLineRecord> lines;
  int sheet = 1;        // drawings only, as the position
  int view = 0;         // id of the view that it hangs on; 0: the sheet
  bool erased = false;  // the sheet doesn't show it
  std::string csys;     // solids only: the coordinate system that it stands at
  PointRecord position;
};

// A straight line of a drawing, a symbol or a format. In a document an array of numbers:
// [x1, y1, x2, y2, width, colour method, colour]; trailing zeros are left out.
struct LineRecord {
  double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
  double width = 0;  // of the stroke; 0: the thinnest
  int colorMethod = 0, color = 0;
};
void readValue(LineRecord& into, const Json& json, Reader& in);
void writeValue(const LineRecord& line, std::string& out, int level);
void describeValue(Schema& schema, Of<LineRecord>);
// The lines on a sheet of a drawing or a format.
struct DraftRecord : Open {
  int sheet = 1;
  std::vector<LineRecord> lines;
};

// A group of a symbol definition, with the groups inside it and what it shows.
struct SymbolGroupRecord : Open {
  int id = 0;
  std::string name;
  std::vector<LineRecord> lines;
  std::vector<SymbolGroupRecord> groups;
};
struct SymbolTextRecord : Open {
  std::string text;
  double height = 0;
  PointRecord position;
};
// In the symbol's own coordinates.
struct SymbolDefinitionRecord : Open {
  int id = 0;
  std::string name;
  std::string path;  // where it was retrieved from
  std::vector<LineRecord> lines;
  std::vector<SymbolTextRecord> texts;
  std::vector<SymbolGroupRecord> groups;
};
struct SymbolRecord : Open {
  int id = 0;
  std::string definition;  // by name
  int sheet = 1;
  int view = 0, attachment = 0;  // id of the view that it hangs on, Creo's number of how it hangs
  bool erased = false;           // the sheet doesn't show it
  PointRecord position;
  double height = 0, angle = 0;  // 0: as defined; degrees
  creo::ProSymbolGroups groupOption = creo::ProSymbolGroups::interactive;
  std::vector<int> groups;         // ids of those that show, for the custom option
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

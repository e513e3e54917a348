// What views of a drawing show of one another: cutting lines, circles of details, labels; and views of which pieces are
// left out.
#pragma once

#include <string>
#include <vector>

#include "headless/geometry/sight.h"
#include "headless/pictures/sheet_hatch.h"
#include "headless/pictures/sheet_stroke.h"

namespace headless {

// A text of a view, on both sides of its place, larger than other texts.
struct ViewText {
  geometry::FlatPoint at;  // the middle
  std::wstring text;
};
// Places are counted from the view's, in mm.
struct ViewLines {
  std::vector<SheetStroke> strokes;
  std::vector<SheetHatch> hatches;
  std::vector<ViewText> texts;
};

// Where a plane that is seen on its edge cuts: a long-dashed dotted line, wide at its ends, on which arrows point the
// way that the section is looked at, and the section's letter beside both. An axis of the view that it lies upon isn't
// drawn under it: dashes upon dashes are no line of any kind. at: a point of the line; along, looking: of
// length 1; width, height: of the view, beyond which the line ends.
void addCuttingLine(ViewLines& lines, const geometry::FlatPoint& at, const geometry::FlatPoint& along,
                    const geometry::FlatPoint& looking, double width, double height, const std::wstring& letter);
void addDetailCircle(ViewLines& lines, const geometry::FlatPoint& centre, double radius, const std::wstring& letter);

// Only what lies within the circle, enlarged no further: its centre becomes the view's place.
void keepCircle(ViewLines& lines, const geometry::FlatPoint& centre, double radius);

struct ViewBreak {
  double from = 0, to = 0;  // mm
};
// Leaves out what lies between the places of each break, with lines of breaks at a distance of 3 mm in its place, and
// keeps the view in the middle. Breaks that overlap one before them or are narrower than that don't count. upright: the
// places are heights. By how much the view is smaller now.
double leaveOut(ViewLines& lines, std::vector<ViewBreak> breaks, bool upright);

// "A-A", "B (5:1)" where the scale isn't that of the sheet.
std::wstring sectionLabel(const std::wstring& name, double scale, double sheetScale);
std::wstring detailLabel(const std::wstring& name, double scale);

}  // namespace headless

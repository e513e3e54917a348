// Dimensions on the sheets of drawings, as other programs read them.
#include <gmock/gmock.h>

#include <filesystem>

#include "actions/action_fixture.h"
#include "headless/geometry/foreign_place.h"
#include "support/foreign_program.h"
#include "text/encoding.h"

namespace test {
namespace {

using testing::HasSubstr;
using testing::Not;

// A flange with a hub, a bore and two holes, and a sector of a ring at 2:1.
constexpr const char* kFlange = R"({"format": 1, "dimensions": [
  {"id": 1, "symbol": "WIDTH", "value": 100, "tolerance": {"upper": 0.1, "lower": 0.1}},
  {"id": 2, "symbol": "BORE", "value": 30, "tolerance": {"upper": 0.021, "lower": 0}},
  {"id": 3, "symbol": "T", "value": 12, "tolerance": {"upper": 0.2, "lower": 0.05, "type": "limits"}},
  {"id": 4, "symbol": "HUB", "value": 50, "text": ["@D h6"]}, {"id": 5, "symbol": "X", "value": 50},
  {"id": 6, "symbol": "R", "value": 3, "text": ["2x @D", "both sides"]}, {"id": 7, "symbol": "LOST", "value": 7.25},
  {"id": 8, "symbol": "H", "value": 25, "tolerance": {"upper": 0.3, "lower": 0.3, "type": "symmetricSuperscript"}}],
  "solid": {"primitives": [{"type": "box", "size": ["WIDTH", 60, "T"]},
  {"type": "cylinder", "diameter": "HUB", "length": "H", "placement": {"position": ["X", 30, "T"]}},
  {"type": "hole", "diameter": "BORE", "placement": {"position": ["X", 30, 0]}},
  {"type": "hole", "diameter": "2 * R", "placement": {"position": [10, 10, 0]}},
  {"type": "hole", "diameter": "2 * R", "placement": {"position": [90, 10, 0]}}]}})";
constexpr const char* kSector = R"({"format": 1,
  "dimensions": [{"id": 1, "symbol": "SWEEP", "value": 120, "angular": true}], "solid": {"primitives": [
  {"type": "revolution", "profile": [[5, 0], [20, 0], [20, 5], [5, 5]], "angle": "SWEEP"}]}})";
constexpr const char* kPlan =
    R"json({"format": 1, "models": [{"name": "FLANGE", "type": "prt"}, {"name": "SECTOR", "type": "prt"}],
  "dimensions": [{"id": 2, "value": 60, "reference": true, "text": ["(@D)"]
}], "sheets": [{"size": "A3"}], "views": [
  {"id": 1, "name": "FRONT", "model": "FLANGE.prt", "position": {"x": 110, "y": 200}},
  {"id": 2, "name": "BOTTOM", "model": "FLANGE.prt", "position": {"x": 110, "y": 90}},
  {"id": 3, "name": "FRONT", "model": "SECTOR.prt", "scale": 2, "position": {"x": 320, "y": 200}}],
  "shownDimensions": [{"model": "FLANGE.prt", "id": 1}, {"model": "FLANGE.prt", "id": 2},
  {"model": "FLANGE.prt", "id": 3}, {"model": "FLANGE.prt", "id": 4}, {"model": "FLANGE.prt", "id": 5},
  {"model": "FLANGE.prt", "id": 6, "position": {"x": 200, "y": 180}}, {"model": "FLANGE.prt", "id": 7},
  {"model": "FLANGE.prt", "id": 8, "position": {"x": -9, "y": 180}}, {"model": "SECTOR.prt", "id": 1}],
  "tables": [{"id": 1, "segments": [{"sheet": 1, "position": {"x": 300, "y": 20}}], "columns": [12], "rows": [8],
  "cells": [{"row": 1, "column": 1, "lines": ["a text that no cell of this width holds"]}]}],
  "notes": [{"id": 1, "position": {"x": 300, "y": 60},
  "lines": [[{"text": "Bore "}, {"text": "&BORE", "height": 7, "slant": 15}, {"text": " &d99 &SWEEP:2"}]]}]
})json";

class SheetDimensions : public ActionTest {
 protected:
  SheetDimensions() {
    writeBytes(world.models() + "/flange.prt.1", kFlange);
    writeBytes(world.models() + "/sector.prt.1", kSector);
    writeBytes(world.models() + "/plan.drw.1", kPlan);
    std::filesystem::create_directories(out());
    world.config("kvd_write_history_in_models=0");
  }
  [[nodiscard]] std::string out() const { return world.models() + "/out"; }
  void onPlan(const std::string& task) { run(task, L"PLAN", creo::ProMdlType::drawing); }
  [[nodiscard]] std::string answerTo(const std::string& command) const {
    return said("cd '" + out() + "' && " + command);
  }
  const headless::geometry::ForeignPlaceGuard place_;
};

TEST_F(SheetDimensions, AStrangerMeasuresWhatTheyTell) {
  onPlan(task("exportdxf", "folder='d:/out' file='a'"));
  writeBytes(out() + "/read.py", R"(import ezdxf
drawing = ezdxf.readfile("a.dxf")
print(len(drawing.audit().errors), len(drawing.audit().fixes))
boxes = []
for e in drawing.modelspace().query("DIMENSION"):
    measured = abs(e.get_measurement()) * drawing.dimstyles.get(e.dxf.dimstyle).dxf.dimlfac
    block = e.get_geometry_block()
    print(e.dxf.layer, e.dimtype, round(measured, 3), e.dxf.text, len(block.query("SOLID")))
    flat = lambda p: (round(p.x, 3), round(p.y, 3))
    lines = [(flat(l.dxf.start), flat(l.dxf.end)) for l in block.query("LINE")]
    boxes.append((e.dimtype, lines))
# Dimension lines, the last of each turned one, cross no extension line of another.
def crosses(a, b):
    def side(p, q, r):
        return (q[0] - p[0]) * (r[1] - p[1]) - (q[1] - p[1]) * (r[0] - p[0])
    return side(*a, b[0]) * side(*a, b[1]) < -1e-3 and side(*b, a[0]) * side(*b, a[1]) < -1e-3
turned = [lines for kind, lines in boxes if kind == 0]
print(sum(crosses(one[-1], line) for one in turned for other in turned if other is not one for line in other))
named = {line.strip() for line in open("a.dxf") if line.startswith("KELVANE")}
print(sorted(named - {style.dxf.name for style in drawing.dimstyles}))
)");
  EXPECT_EQ(
      "0 0\nDIM 4 3.0 2x R3 1\nDIM 0 12.0 12.2/11.95 2\nDIM 0 25.0 25 ±0.3 2\nDIM 0 50.0 Ø50 h6 2\nDIM 0 50.0 50 2\n"
      "DIM 0 60.0 (60) 2\nDIM 0 100.0 100 ±0.1 2\nDIM 3 30.0 Ø30 +0.021/0 1\nDIM 5 120.0 120° 2\n0\n[]\n",
      answerTo("/usr/bin/python3 read.py"));
}

TEST_F(SheetDimensions, APdfHasTheirTextsAndWhatFindsNoPlace) {
  onPlan(task("exportpdf2d", "folder='d:/out' file='a' font='1'"));
  const std::string page = answerTo("pdftotext -raw a.pdf -");
  for (const char* text : {"100 ±0.1", "Ø30", "+0.021", "12.2", "11.95", "Ø50 h6", "2x R3", "both sides", "±0.3",
                           "120°", "(60)", "Dimensions without a place: LOST of FLANGE.PRT = 7.25", "&d99 120°"})
    EXPECT_THAT(page, HasSubstr(text));
  const std::string told = text::toUtf8(world.messages());
  EXPECT_THAT(told,
              HasSubstr("warning: the dimension LOST of FLANGE.PRT finds no place on sheet 1 of PLAN.DRW: no view "
                        "shows what it measures"));
  EXPECT_THAT(told, HasSubstr("warning: the dimension H of FLANGE.PRT isn't put where it should be on sheet 1 of "
                              "PLAN.DRW: that is off the sheet"));
  EXPECT_THAT(told,
              HasSubstr("'a text that no cell of this width holds' is too long for its cell on sheet 1 of PLAN.DRW"));
  EXPECT_THAT(told, Not(HasSubstr("BORE")));
}

// Each sheet knows of its own views alone which are drawn: none must count on another one's.
TEST_F(SheetDimensions, WhoseViewsAreNotDrawnAreToldOnce) {
  writeBytes(world.models() + "/plan.drw.1", R"({"format": 1, "models": [{"name": "SECTOR", "type": "prt"}],
    "sheets": [{"size": "A3"}, {"size": "A3"}], "shownDimensions": [{"model": "SECTOR.prt", "id": 1, "view": 2}],
    "views": [{"id": 1, "name": "FRONT", "model": "SECTOR.prt", "position": {"x": 100, "y": 200}},
      {"id": 2, "name": "FRONT", "sheet": 2, "scale": 3, "model": "SECTOR.prt", "position": {"x": 200, "y": 200}}]})");
  headless::geometry::foreignPlace().program = "/bin/no-such-program";
  onPlan(task("exportpdf2d", "folder='d:/out' file='a' font='1'"));
  const std::string told = text::toUtf8(world.messages()), line = "finds no place on sheet ";
  const std::size_t first = told.find(line);
  EXPECT_THAT(told, HasSubstr(line + "2 of PLAN.DRW: the view that shows it isn't drawn"));
  EXPECT_EQ(first, told.rfind(line)) << told;
  EXPECT_THAT(answerTo("pdftotext -raw a.pdf -"), HasSubstr("Dimensions without a place: SWEEP of SECTOR.PRT = 120"));
}

}  // namespace
}  // namespace test

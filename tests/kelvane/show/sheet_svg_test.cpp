// kelvane show --svg: what stands on a sheet, in its place and width.
#include <algorithm>
#include <cmath>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>

#include "headless/geometry/foreign_place.h"
#include "headless/geometry/seen.h"
#include "kelvane/program_fixture.h"

namespace test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

class SheetSvg : public ProgramTest {
 protected:
  [[nodiscard]] std::string drawn(const std::string& document, const std::vector<std::string>& more = {}) const {
    file("models/plan.drw.1", document);
    std::vector<std::string> words = {"show", models(), "PLAN.DRW", "--svg", path("plan.svg")};
    words.insert(words.end(), more.begin(), more.end());
    const Ended ended = kelvane(words);
    if (ended.code != 0) return ended.err;
    std::ifstream in(path("plan.svg"), std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }
};

// The first sheet is 210 high and stands 10 from the picture's edge: a point (x, y) of the drawing lies at
// (10 + 2x + 10, 220 - (2y + 20)).
constexpr const char* kPlan = R"({"format": 1,
"sheets": [{"size": "A4", "matrix": {"scaleX": 2.0, "scaleY": 2.0, "offsetX": 10.0, "offsetY": 20.0}},
           {"size": "A4", "portrait": true, "format": "no_such"}],
"drafts": [{"sheet": 1, "lines": [[0, 0, 10, 5, 0.5]]}, {"sheet": 2, "lines": [[1, 1, 2, 2]]}],
"tables": [{"id": 1, "segments": [{"position": {"x": 20, "y": 10}}], "columns": [30, 20], "rows": [5, 5],
  "cells": [{"row": 1, "column": 1, "lines": ["<top & left>"]}, {"row": 2, "column": 2, "lines": ["a cell with far too long a text"]},
            {"row": 9, "column": 1, "lines": ["outside"]}]}],
"notes": [{"id": 1, "position": {"x": 40, "y": 50}, "lines": ["first", [{"text": "sec", "height": 7.0}, {"text": "ond"}]]},
          {"id": 2, "erased": true, "lines": ["erased"]}],
"symbolDefinitions": [{"id": 1, "name": "MARK", "lines": [[0, 0, 1, 0]], "texts": [{"text": "Ra"}],
  "groups": [{"id": 1, "name": "OUTER", "lines": [[0, 1, 1, 1]], "groups": [{"id": 2, "name": "INNER", "lines": [[0, 2, 1, 2]]},
                                                                          {"id": 3, "name": "OTHER", "lines": [[0, 3, 1, 3]]}]}]}],
"symbols": [{"id": 1, "definition": "mark", "position": {"x": 5, "y": 5}, "groupOption": "custom", "groups": [1, 2], "texts": ["3.2"]},
            {"id": 2, "definition": "GONE", "position": {"x": 90, "y": 5}},
            {"id": 3, "definition": "erased", "erased": true, "position": {"x": 90, "y": 15}}]})";

TEST_F(SheetSvg, EverythingStandsWhereTheMatrixPutsIt) {
  const std::string svg = drawn(kPlan);
  EXPECT_THAT(svg, AllOf(HasSubstr(R"(width="317mm" height="537mm" viewBox="0 0 317 537")"),
                         HasSubstr(R"(<rect x="10" y="10" width="297" height="210")"),
                         HasSubstr(R"(<rect x="10" y="230" width="210" height="297")"),
                         HasSubstr(R"(<line x1="20" y1="200" x2="40" y2="190" stroke-width="1" stroke="#000"/>)"),
                         HasSubstr(R"(<line x1="11" y1="526" x2="12" y2="525" stroke-width="0.25")")));
  EXPECT_THAT(svg, AllOf(HasSubstr(R"(<line x1="60" y1="180" x2="60" y2="160")"),
                         HasSubstr(R"(<line x1="120" y1="180" x2="120" y2="160")"), HasSubstr("&lt;top &amp; left&gt;"),
                         testing::ContainsRegex("font-size=\"2\\.0[0-9]*\">a cell with far too long a text"),
                         Not(HasSubstr("outside")), Not(HasSubstr("erased"))));
  EXPECT_THAT(svg, AllOf(HasSubstr(R"(<text x="100" y="100" font-size="3.5">first</text>)"),
                         HasSubstr(R"(<text x="100" y="105.25" font-size="7">sec</text>)")));
}

TEST_F(SheetSvg, ASymbolShowsTheGroupsThatItNames) {
  const std::string svg = drawn(kPlan, {"--sheet", "1"});
  const auto stroke = [](int y) { return "<line x1=\"30\" y1=\"" + std::to_string(y) + "\" x2=\"32\""; };
  EXPECT_THAT(svg,
              AllOf(HasSubstr(stroke(190)), HasSubstr(stroke(188)), HasSubstr(stroke(186)), Not(HasSubstr(stroke(184))),
                    HasSubstr(">3.2</text>"), HasSubstr(">GONE</text>"), HasSubstr("height=\"230mm\"")));
}

// ---- views

std::string lineText(std::string from, std::string to) {
  if (to < from) std::swap(from, to);
  return from + " to " + to;
}
std::string placeText(double x, double y) {
  return std::to_string(std::lround(x)) + "," + std::to_string(std::lround(y));
}

using Lines = std::set<std::string>;
// A picture's lines from the sheet's lower left corner; "~" before those that aren't black or have dashes.
Lines viewLines(const std::string& svg) {
  Lines all;
  const std::regex line(
      "<line x1=\"([^\"]*)\" y1=\"([^\"]*)\" x2=\"([^\"]*)\" y2=\"([^\"]*)\"[^>]*stroke=\"([^\"]*)\"([^/]*)");
  for (std::sregex_iterator at(svg.begin(), svg.end(), line), end; at != end; ++at) {
    const auto number = [&](std::size_t i) { return std::stod((*at)[i]); };
    all.insert(((*at)[5] == "#000" && (*at)[6].length() == 0 ? "" : "~") +
               lineText(placeText(number(1) - 10, 220 - number(2)), placeText(number(3) - 10, 220 - number(4))));
  }
  return all;
}
// A rectangle around (100, 100), with one line more.
Lines rectangle(double halfWidth, double halfHeight, const std::string& mark = "", const std::string& more = "") {
  const auto corner = [&](int x, int y) { return placeText(100 + x * halfWidth, 100 + y * halfHeight); };
  Lines all = {mark + lineText(corner(-1, -1), corner(1, -1)), mark + lineText(corner(1, -1), corner(1, 1)),
               mark + lineText(corner(1, 1), corner(-1, 1)), mark + lineText(corner(-1, 1), corner(-1, -1))};
  if (!more.empty()) all.insert(more);
  return all;
}

// Two of ARM and a pin, of which a third one is suppressed.
TEST_F(SheetSvg, ARepeatRegionListsTheComponents) {
  file("models/arm.prt.1",
       R"({"format": 1, "parameters": [{"name": "TITLE", "type": "string", "value": "Left & right"}]})");
  file("models/pin.prt.1", R"({"format": 1})");
  file("models/top.asm.1", R"({"format": 1, "features": [{"id": 9, "type": 1000, "status": "suppressed"}],
    "components": [{"name": "ARM", "type": "prt"}, {"name": "PIN", "type": "prt"}, {"name": "ARM", "type": "prt"},
                   {"name": "PIN", "type": "prt", "feature": 9}]})");
  const std::string svg = drawn(R"({"format": 1, "models": [{"name": "TOP", "type": "asm"}],
    "tables": [{"id": 1, "segments": [{"position": {"x": 20, "y": 100}}], "columns": [20, 60, 60], "rows": [8, 8, 10],
      "repeatRegions": [{"model": 1}], "cells": [{"row": 1, "column": 1, "lines": ["Pos"]},
        {"row": 2, "column": 1, "lines": ["&rpt.index, &RPT.QTY x"]}, {"row": 2, "column": 2, "lines": ["&asm.mbr.name &asm.mbr.type"]},
        {"row": 2, "column": 3, "lines": ["&asm.mbr.TITLE&rpt.other"]}, {"row": 3, "column": 1, "lines": ["end"]}]}]})");
  for (const char* text : {">Pos<", ">1, 2 x<", ">ARM PART<", ">Left &amp; right&amp;rpt.other<", ">2, 1 x<",
                           ">PIN PART<", ">&amp;rpt.other<", ">end<"})
    EXPECT_THAT(svg, HasSubstr(text)) << text;
  // Its upper edge stays: 126 mm from the sheet's lower edge, 34 mm high now.
  EXPECT_THAT(svg, AllOf(HasSubstr(R"(<line x1="30" y1="128" x2="30" y2="94")"), Not(HasSubstr(">3,"))));
}

// A block of 40 by 20 by 10 with a smaller one behind it, and a pin of inches.
class SheetViews : public SheetSvg {
 protected:
  SheetViews() {
    file("models/step.prt.1", R"({"format": 1, "solid": {"primitives": [{"type": "box", "size": [40, 20, 10]},
        {"type": "box", "size": [20, 20, 30], "placement": {"position": [0, 0, -30]}}]},
        "views": [{"id": 1, "name": "TURNED", "matrix": [0, 1, 0, -1, 0, 0, 0, 0, 1]}]})");
    file("models/pin.prt.1", R"({"format": 1, "units": "inlbs",
        "solid": {"primitives": [{"type": "cylinder", "diameter": 1, "length": 2}]}})");
    file("models/thin.prt.1", R"({"format": 1, "solid": {"primitives": [{"type": "box", "size": [100, 50, 0.05]},
        {"type": "box", "size": [20, 20, 5], "placement": {"position": [40, 15, -5]}}]}})");
    file("models/empty.prt.1", R"({"format": 1})");
    file("models/broken.prt.1", R"({"format": 1, "solid": {"primitives": [{"type": "box", "size": [0, 1, 1]}]}})");
  }
  [[nodiscard]] std::string shown(const std::string& view) const {
    return drawn(R"({"format": 1, "sheets": [{"size": "A4", "scale": 2}], "models": [{"name": "STEP", "type": "prt"},
        {"name": "PIN", "type": "prt"}, {"name": "THIN", "type": "prt"}, {"name": "EMPTY", "type": "prt"}, {"name": "BROKEN", "type": "prt"}, {"name": "STEP", "type": "asm"}],
        "views": [{"id": 1, "position": {"x": 100, "y": 100}, )" +
                 view + "}]}");
  }
};

TEST_F(SheetViews, ShowTheEdgesOfTheirModel) {
  const std::pair<const char*, Lines> cases[] = {
      // The block behind is hidden.
      {R"("name": "FRONT", "model": "STEP.prt")", rectangle(40, 20)},
      {R"("name": "FRONT", "model": "STEP.prt", "displayStyle": 2, "scale": 1)",
       rectangle(20, 10, "", "~100,110 to 100,90")},
      {R"("name": "front", "model": "STEP.prt", "displayStyle": 1, "scale": 1, "sheet": 1)",
       rectangle(20, 10, "", "100,110 to 100,90")},
      // By the model's own view, where x points up; by the sheet's.
      {R"("name": "TURNED", "model": "STEP.prt", "scale": 1)", rectangle(10, 20)},
      {R"("name": "TURNED", "model": "STEP.prt", "scale": 1, "matrix": [1, 0, 0, 0, 1, 0, 0, 0, 1])",
       rectangle(20, 10)},
      // Behind a thin sheet of metal.
      {R"("name": "FRONT", "model": "THIN.prt", "scale": 1)", rectangle(50, 25)},
      // Inches; the outline of the round face is no edge, and its axis reaches 3 mm beyond.
      {R"("name": "RIGHT", "model": "PIN.prt", "scale": 1)", rectangle(25.4, 12.7, "", "~128,100 to 72,100")},
  };
  for (const auto& [view, expected] : cases) EXPECT_EQ(expected, viewLines(shown(view))) << view;
}

TEST_F(SheetViews, HaveCirclesAndArcsInTheirPens) {
  file("models/pin.prt.1", R"({"format": 1, "solid": {"primitives": [{"type": "box", "size": [40, 40, 10]},
      {"type": "hole", "diameter": 10, "placement": {"position": [30, 28, 0]}},
      {"type": "cylinder", "diameter": 40, "length": 10, "placement": {"position": [0, 20, 0]}}]}})");
  const std::string front = shown(R"("name": "FRONT", "model": "PIN.prt", "scale": 1)");
  // The picture's y grows downwards from 220; the plate reaches from -20 to 40, and its middle stands at 100.
  EXPECT_THAT(front,
              AllOf(HasSubstr(R"(<circle cx="130" cy="112" r="5" fill="none" stroke-width="0.5" stroke="#000"/>)"),
                    HasSubstr(R"(<path d="M100 100A20 20 0 0 0 100 140" fill="none" stroke-width="0.5")"),
                    HasSubstr(R"(<line x1="122.5" y1="112" x2="137.5" y2="112" stroke-width="0.25" stroke="#000" )"
                              R"(stroke-dasharray="6 0.75 0.125 0.75"/>)"),
                    Not(HasSubstr("stroke-dasharray=\"3 0.75\""))));
  // The bore behind the plate's side.
  EXPECT_THAT(shown(R"("name": "TOP", "model": "PIN.prt", "scale": 1, "displayStyle": 2)"),
              HasSubstr(R"(stroke-width="0.25" stroke="#000" stroke-dasharray="3 0.75"/>)"));
}

// Three equal holes about a bore have a circle and lines to its middle; of two, and of a bore that ends a little before
// its half, only their own axes are drawn.
TEST_F(SheetViews, HaveCirclesThroughHolesAndAxesOfHalfBores) {
  const auto hole = [](const char* diameter, const std::string& place) {
    return R"(, {"type": "hole", "diameter": )" + std::string(diameter) + R"(, "placement": {"position": [)" + place +
           ", 0]}}";
  };
  const auto front = [&](const std::string& holes) {
    file("models/pin.prt.1",
         R"({"format": 1, "solid": {"primitives": [{"type": "box", "size": [60, 60, 10]})" + holes + "]}}");
    return shown(R"("name": "FRONT", "model": "PIN.prt", "scale": 1)");
  };
  const std::string two = hole("12", "30, 30") + hole("6", "50, 30") + hole("6", "20, 47.3205081"),
                    three = two + hole("6", "20, 12.6794919");
  const std::string circle = R"(<circle cx="110" cy="120" r="20" fill="none" stroke-width="0.25")";
  EXPECT_THAT(front(three), AllOf(HasSubstr(circle), HasSubstr(R"(<line x1="125.5" y1="120" x2="134.5" y2="120")"),
                                  Not(HasSubstr(R"(<line x1="130" y1="124.5")"))));
  EXPECT_THAT(front(two), AllOf(Not(HasSubstr(circle)), HasSubstr(R"(<line x1="130" y1="124.5" x2="130" y2="115.5")")));
  std::string rows;
  for (const char* place : {"30, 30", "50, 30", "10, 30", "30, 50", "30, 10"}) rows += hole("6", place);
  EXPECT_THAT(front(rows), Not(HasSubstr(circle)));
  const std::string half = front(hole("40", "30, 60.25"));
  EXPECT_THAT(
      half, AllOf(HasSubstr(R"(<line x1="110" y1="112.75" x2="110" y2="86.75")"), Not(HasSubstr(R"(y1="89.75" x2)"))));
}

TEST_F(SheetViews, AreDrawnByFacetsWhereExactEdgesTakeTooLong) {
  const headless::geometry::ForeignPlaceGuard guard;
  headless::geometry::forgetSeen();
  headless::geometry::foreignPlace().viewTime = std::chrono::milliseconds(0);
  const std::string view = R"("name": "FRONT", "model": "PIN.prt", "scale": 1)";
  const std::string svg = shown(view);
  EXPECT_THAT(svg, AllOf(HasSubstr(">drawn by facets</text>"), Not(HasSubstr("<circle"))));
  EXPECT_GE(viewLines(svg).size(), 16U) << "the rim";
  const std::vector<std::string> words = {"show", models(), "PLAN.DRW", "--svg", path("plan.svg")};
  EXPECT_THAT(kelvane(words).err,
              HasSubstr("the view FRONT of PIN.PRT in PLAN.DRW is drawn by facets: it wasn't done within 0 seconds\n"));
  EXPECT_EQ(rectangle(40, 20), viewLines(shown(R"("name": "FRONT", "model": "STEP.prt")"))) << "the block behind";
  headless::geometry::forgetSeen();
  headless::geometry::foreignPlace().viewTime = std::chrono::seconds(10);
  headless::geometry::foreignPlace().program = "/bin/no-such-program";
  EXPECT_EQ(rectangle(20, 12.5, "~"), viewLines(shown(view))) << "a frame";
  EXPECT_THAT(kelvane(words).err,
              HasSubstr("the view FRONT of PIN.PRT in PLAN.DRW can't be drawn: the program that works it "
                        "out doesn't start: /bin/no-such-program"));
}

// A block behind a plate: it is covered as a whole, seen through a bore, or beside it.
TEST_F(SheetViews, LeaveOutWhatACoveringFaceHides) {
  file("models/pin.prt.1", R"({"format": 1, "solid": {"primitives": [{"type": "box", "size": [12, 12, 5]}]}})");
  const std::pair<const char*, Lines> cases[] = {
      {"", rectangle(20, 20)},
      {R"(, {"type": "hole", "diameter": 20, "placement": {"position": [20, 20, 0]}})", rectangle(6, 6)},
  };
  for (const auto& [hole, expected] : cases) {
    file("models/thin.prt.1",
         R"({"format": 1, "solid": {"primitives": [{"type": "box", "size": [40, 40, 2]})" + std::string(hole) + "]}}");
    file("models/step.asm.1", R"({"format": 1, "components": [{"name": "THIN", "type": "prt", "feature": 5},
        {"name": "PIN", "type": "prt", "feature": 6, "placement": {"position": [14, 14, -10]}}]})");
    const Lines lines = viewLines(shown(R"("name": "FRONT", "model": "STEP.asm", "scale": 1)"));
    EXPECT_TRUE(std::ranges::includes(lines, expected)) << hole;
    EXPECT_EQ(*hole != 0, std::ranges::includes(lines, rectangle(6, 6))) << hole;
  }
  // It ends in one line with the plate, or reaches 2 mm beyond.
  for (const int beyond : {0, 2}) {
    file("models/thin.prt.1", R"({"format": 1, "solid": {"primitives": [{"type": "box", "size": [40, 40, 2]}]}})");
    file("models/step.asm.1", R"({"format": 1, "components": [{"name": "THIN", "type": "prt", "feature": 5},
        {"name": "PIN", "type": "prt", "feature": 6, "placement": {"position": [)" +
                                  std::to_string(-beyond) + ", 14, -10]}}]}");
    const Lines lines = viewLines(shown(R"("name": "FRONT", "model": "STEP.asm", "scale": 1)"));
    EXPECT_EQ(beyond == 0 ? 4U : 7U, lines.size());
    EXPECT_EQ(beyond == 2, lines.contains("79,106 to 79,94"));
  }
}

// Of the block behind the rim of a wide bore 4 mm are seen, less than the circle stands out beyond a chain of lines.
TEST_F(SheetViews, ShowWhatStandsOutBehindTheRimOfAWideBore) {
  file("models/thin.prt.1", R"({"format": 1, "solid": {"primitives": [{"type": "box", "size": [12000, 12000, 20]},
      {"type": "hole", "diameter": 10000, "placement": {"position": [6000, 6000, 0]}}]}})");
  file("models/pin.prt.1", R"({"format": 1, "solid": {"primitives": [{"type": "box", "size": [20, 10, 5]}]}})");
  const auto linesWithBlockAt = [&](int x) {
    file("models/step.asm.1", R"({"format": 1, "components": [{"name": "THIN", "type": "prt", "feature": 5},
        {"name": "PIN", "type": "prt", "feature": 6, "placement": {"position": [)" +
                                  std::to_string(x) + ", 6240, -10]}}]}");
    return viewLines(shown(R"("name": "FRONT", "model": "STEP.asm", "scale": 0.01)")).size();
  };
  const std::size_t covered = linesWithBlockAt(11010);
  EXPECT_GT(linesWithBlockAt(10990), covered);
}

TEST_F(SheetViews, AreFramesWhereThereIsNothingToShow) {
  for (const char* model : {"EMPTY.prt", "BROKEN.prt", "GONE.prt", "", "STEP"}) {
    const std::string svg = shown(R"("name": "A <1>", "model": ")" + std::string(model) + "\"");
    EXPECT_EQ(rectangle(20, 12.5, "~"), viewLines(svg)) << model;
    EXPECT_THAT(svg, AllOf(HasSubstr(">A &lt;1&gt;</text>"), HasSubstr(model))) << model;
  }
  // Five times as large as the sheet: a detail.
  EXPECT_THAT(shown(R"("name": "TOP", "model": "STEP.prt", "scale": 50)"), HasSubstr(">STEP.prt</text>"));
}

TEST_F(SheetSvg, InchesAndRefusals) {
  const char* kInches = R"({"format": 1, "sheets": [{"size": "A"}], "notes": [{"id": 1, "lines": ["ä"]}]})";
  EXPECT_THAT(drawn(kInches), AllOf(HasSubstr("width=\"11.7874in\""), HasSubstr("font-size=\"0.1378\">ä</text>")));
  EXPECT_EQ("kelvane: PLAN.DRW has no sheet 3\n", drawn(kPlan, {"--sheet", "3"}));
  part(L"SOLID");
  EXPECT_EQ("kelvane: SOLID.PRT has nothing to show\n",
            kelvane({"show", models(), "SOLID.PRT", "--svg", path("no.svg")}).err);
  EXPECT_THAT(kelvane({"show", models(), "PLAN.DRW", "--svg", path("no/such/folder.svg")}).err,
              HasSubstr("can't be written"));
}

}  // namespace
}  // namespace test

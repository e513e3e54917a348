// kelvane show --svg: what stands on a sheet, in its place and width.
#include <fstream>
#include <iterator>

#include "program/program_fixture.h"

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
            {"row": 9, "column": 1, "lines": ["outside"]}]},
  {"id": 2, "erased": true, "segments": [{"position": {"x": 20, "y": 10}}], "columns": [7], "rows": [7],
   "cells": [{"row": 1, "column": 1, "lines": ["erased"]}]}],
"notes": [{"id": 1, "position": {"x": 40, "y": 50}, "lines": ["first", [{"text": "sec", "height": 7.0}, {"text": "ond"}]]}],
"symbolDefinitions": [{"id": 1, "name": "MARK", "lines": [[0, 0, 1, 0]], "texts": [{"text": "Ra"}],
  "groups": [{"id": 1, "name": "OUTER", "lines": [[0, 1, 1, 1]], "groups": [{"id": 2, "name": "INNER", "lines": [[0, 2, 1, 2]]},
                                                                          {"id": 3, "name": "OTHER", "lines": [[0, 3, 1, 3]]}]}]}],
"symbols": [{"id": 1, "definition": "mark", "position": {"x": 5, "y": 5}, "groupOption": "custom", "groups": [1, 2], "texts": ["3.2"]},
            {"id": 2, "definition": "GONE", "position": {"x": 90, "y": 5}}]})";

TEST_F(SheetSvg, EverythingStandsWhereTheMatrixPutsIt) {
  const std::string svg = drawn(kPlan);
  EXPECT_THAT(svg, AllOf(HasSubstr(R"(width="317mm" height="537mm" viewBox="0 0 317 537")"),
                         HasSubstr(R"(<rect x="10" y="10" width="297" height="210")"),
                         HasSubstr(R"(<rect x="10" y="230" width="210" height="297")"),
                         HasSubstr(R"(<line x1="20" y1="200" x2="40" y2="190" stroke-width="1" stroke="#000"/>)"),
                         HasSubstr(R"(<line x1="11" y1="526" x2="12" y2="525" stroke-width="0.18")")));
  EXPECT_THAT(svg, AllOf(HasSubstr(R"(<line x1="60" y1="180" x2="60" y2="160")"),
                         HasSubstr(R"(<line x1="120" y1="180" x2="120" y2="160")"), HasSubstr("&lt;top &amp; left&gt;"),
                         testing::ContainsRegex("font-size=\"2\\.0[0-9]*\">a cell with far too long a text"),
                         Not(HasSubstr("outside")), Not(HasSubstr("erased"))));
  EXPECT_THAT(svg, AllOf(HasSubstr(R"(<text x="100" y="100" font-size="3.5">first</text>)"),
                         HasSubstr(R"(<text x="100" y="105.25" font-size="7">second</text>)")));
}

TEST_F(SheetSvg, ASymbolShowsTheGroupsThatItNames) {
  const std::string svg = drawn(kPlan, {"--sheet", "1"});
  const auto stroke = [](int y) { return "<line x1=\"30\" y1=\"" + std::to_string(y) + "\" x2=\"32\""; };
  EXPECT_THAT(svg,
              AllOf(HasSubstr(stroke(190)), HasSubstr(stroke(188)), HasSubstr(stroke(186)), Not(HasSubstr(stroke(184))),
                    HasSubstr(">3.2</text>"), HasSubstr(">GONE</text>"), HasSubstr("height=\"230mm\"")));
}

TEST_F(SheetSvg, InchesAndRefusals) {
  const char* kInches = R"({"format": 1, "sheets": [{"size": "A"}], "notes": [{"id": 1, "lines": ["ä"]}]})";
  EXPECT_THAT(drawn(kInches), AllOf(HasSubstr("width=\"11.7874in\""), HasSubstr("font-size=\"0.1378\">ä</text>")));
  EXPECT_EQ("kelvane: PLAN.DRW has no sheet 3\n", drawn(kPlan, {"--sheet", "3"}));
  part(L"SOLID");
  EXPECT_EQ("kelvane: SOLID.PRT is no drawing\n",
            kelvane({"show", models(), "SOLID.PRT", "--svg", path("no.svg")}).err);
  EXPECT_THAT(kelvane({"show", models(), "PLAN.DRW", "--svg", path("no/such/folder.svg")}).err,
              HasSubstr("can't be written"));
}

}  // namespace
}  // namespace test

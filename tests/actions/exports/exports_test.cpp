// Drawings and models as files of other programs.
#include <gmock/gmock.h>

#include <filesystem>
#include <regex>

#include "actions/action_fixture.h"
#include "creo/ProDrawing.h"
#include "creo/ProIntf.h"
#include "creo/ProMdl.h"
#include "creo/ProPDF.h"
#include "creo/ProUtil.h"
#include "headless/geometry/foreign_place.h"
#include "headless/geometry/seen.h"
#include "support/foreign_program.h"
#include "text/encoding.h"

namespace test {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

// Three sheets of different sizes; the second one is current.
constexpr const char* kPlan = R"({"format": 1, "currentSheet": 2,
"parameters": [{"name": "NUMBER", "type": "string", "value": "P-4711"}],
"sheets": [{"name": "FRONT", "size": "A3"}, {"name": "Rückseite", "size": "A4", "portrait": true}, {"size": "A"}],
"drafts": [{"sheet": 1, "lines": [[10, 10, 60, 10], [10, 20, 10.5, 20, 0.5, 1, 2]]},
           {"sheet": 2, "lines": [[20, 30, 120, 30, 0.7, 1, 2]]}, {"sheet": 3, "lines": [[1, 1, 2, 2]]}],
"tables": [{"id": 1, "segments": [{"sheet": 2, "position": {"x": 100, "y": 200}}], "columns": [30], "rows": [8],
            "cells": [{"row": 1, "column": 1, "lines": ["&NUMBER"]}]}],
"notes": [{"id": 1, "position": {"x": 40, "y": 50}, "lines": ["first sheet"]},
          {"id": 2, "sheet": 2, "position": {"x": 30, "y": 100}, "lines": ["Größe 50%%d Ω^"]},
          {"id": 3, "sheet": 3, "position": {"x": 1, "y": 5}, "lines": ["third sheet"]}],
"symbolDefinitions": [{"id": 1, "name": "MARK", "texts": [{"text": "Ra"}]}],
"symbols": [{"id": 1, "definition": "MARK", "sheet": 2, "position": {"x": 60, "y": 60}, "angle": 90, "texts": ["turned"]}]})";

class Exports : public ActionTest {
 protected:
  Exports() {
    writeBytes(world.models() + "/plan.drw.1", kPlan);
    world.part(L"BRACKET");
    fs::create_directories(out());
    world.config("kvd_write_history_in_models=0");
  }
  [[nodiscard]] std::string out() const { return world.models() + "/out"; }
  [[nodiscard]] std::string file(const std::string& name) const {
    return fs::exists(out() + "/" + name) ? readBytes(out() + "/" + name) : "no file";
  }
  // Names in the folder, joined by blanks.
  [[nodiscard]] std::string files() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(out())) names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    std::string all;
    for (const std::string& name : names) all += (all.empty() ? "" : " ") + name;
    return all;
  }
  std::wstring onPlan(const std::string& tasks) { return plain(run(tasks, L"PLAN", creo::ProMdlType::drawing)); }
  // What a log told, without the actions' numbers.
  static std::wstring plain(const std::wstring& log) {
    return std::regex_replace(log, std::wregex(L"(^|\\|)B\\d+ "), L"$1");
  }
  static std::string to(const std::string& attributes) { return "folder='d:/out' " + attributes; }
  // What a program says that runs in the files' folder.
  [[nodiscard]] std::string answerTo(const std::string& command) const {
    return said("cd '" + out() + "' && " + command);
  }
};

// ---- the frame

struct NameCase {
  std::string attributes, file;
};

TEST_F(Exports, NamesComeFromFolderAndFile) {
  const NameCase cases[] = {
      {"folder='d:/out' file='a'", "a.dxf"},
      {"folder='d:/out/' file='b.dxf'", "b.dxf"},
      {"folder='d:\\out\\' file='c.DXF'", "c.dxf"},
      {"folder='d:\\out' file='@mdln@ %NUMBER%'", "PLAN P-4711.dxf"},
      {"folderFromModel='true' folder='d:/no such' file='out/e'", "e.dxf"},
      {"folder='d:' file='out\\f.pdf'", "f.pdf.dxf"},
  };
  std::string tasks, expected;
  for (const NameCase& item : cases) tasks += task("exportdxf", item.attributes);
  const std::wstring log = onPlan(tasks);
  for (const NameCase& candidate : cases)
    EXPECT_THAT(file(candidate.file), HasSubstr("AC1021")) << candidate.attributes << "\n" << text::toUtf8(log);
  EXPECT_EQ(std::wstring::npos, log.find(L"E:")) << text::toUtf8(log);
}

TEST_F(Exports, NothingIsWrittenWithoutAName) {
  EXPECT_EQ(
      L"Export DXF file|E:The attribute 'file' is missing|Export 2D PDF file|E:The replaced output is to large for "
      L"this task",
      onPlan(task("exportdxf", to("")) + task("exportpdf2d", to("file='" + std::string(300, 'x') + "'"))));
  EXPECT_EQ("", files());
}

TEST_F(Exports, AnExistingFileStaysUnlessItMayBeReplaced) {
  for (const char* name : {"a.dxf", "b_2.dxf", "c.pdf", "d.sat.ed"}) writeBytes(out() + "/" + name, "old");
  const std::wstring kept = L"|W:File already exists, no new image taken";
  EXPECT_EQ(L"Export DXF file" + kept + L"|Export DXF file|Exported" + kept + L"|Exported|Export 2D PDF file" + kept +
                L"|Export Creo View" + kept,
            onPlan(task("exportdxf", to("file='a'")) + task("exportdxf", to("file='b' sheetoption='2'")) +
                   task("exportpdf2d", to("file='c' overwriteExisting='TRUE'")) +
                   task("exportProductView", to("file='d.sat.ed' exportas='.ed'"))));
  EXPECT_EQ("a.dxf b_1.dxf b_2.dxf b_3.dxf c.pdf d.sat.ed", files());
  EXPECT_EQ("old old old", file("a.dxf") + " " + file("b_2.dxf") + " " + file("c.pdf"));
}

TEST_F(Exports, ReplacingTakesTheOldFileAwayOnlyForAWholeNewOne) {
  for (const char* name : {"a.dxf", "b.pdf"}) writeBytes(out() + "/" + name, "old");
  world.list("list.xml", task("exportdxf", to("file='a' overwriteExisting='true'")) +
                             task("exportpdf2d", to("file='b' overwriteExisting='true'")));
  world.start();
  world.open(L"PLAN", creo::ProMdlType::drawing);
  world.openTool();
  world.choose("list.xml");
  world.disk().denyWrites(L"d:\\out");
  world.pressStart();
  EXPECT_EQ(L"Export DXF file|E:Export failure|Export 2D PDF file|E:Failure -17", plain(test::told(world.log())));
  EXPECT_EQ("old old a.dxf b.pdf", file("a.dxf") + " " + file("b.pdf") + " " + files());
  EXPECT_NE(std::wstring::npos, world.messages().find(L"a.dxf: can't be written:")) << text::toUtf8(world.messages());
}

TEST_F(Exports, AMissingFolderFails) {
  EXPECT_EQ(L"Export DXF file|E:Export failure|Export DWG file|E:Exportfailure|Export 2D PDF file|E:Failure -17",
            onPlan(task("exportdxf", "folder='d:/gone' file='a'") + task("exportdwg", "folder='d:/gone' file='a'") +
                   task("exportpdf2d", "folder='d:/gone' file='a'")));
  EXPECT_FALSE(fs::exists(world.models() + "/gone"));
}

// ---- what can't be written

TEST_F(Exports, FormatsWithoutAWriterFailByTheirOwnLines) {
  EXPECT_EQ(
      L"Export DWG file|E:Exportfailure|Export DWG file|E:Export failure|E:Export failure|E:Export failure|"
      L"Export 3dPDF|E:failure -40|Export Creo View|E:Failure occured while exporting Creo View file|"
      L"Export set|E:'Export Set' support ended with KV 4.1. Please remove this action or downgrade to 4.1.",
      onPlan(task("exportdwg", to("file='a'")) + task("exportdwg", to("file='a' sheetoption='2'")) +
             task("exportpdf", to("file='a'")) + task("exportProductView", to("file='a.edz' exportas='.edz'")) +
             task("exportset", to("file='a'"))));
  EXPECT_EQ("", files());
}

TEST_F(Exports, SolidsHaveNoSheets) {
  EXPECT_EQ(L"Export DXF file|E:Export failure|Export DXF file|E:Export failure|Export 2D PDF file|E:Failure -18",
            plain(run(task("exportdxf", to("file='a'")) + task("exportdxf", to("file='a' sheetoption='2'")) +
                      task("exportpdf2d", to("file='a'")))));
}

// ---- what is put back

TEST_F(Exports, SheetFolderAndOptionAreAsBefore) {
  const std::string tasks = task("exportdxf", to("file='a' sheetoption='2' overwriteExisting='true'"));
  for (const std::string failing : {"", "Pro2dExport", "Pro2dExportdataAlloc", "Pro2dExportdataSheetoptionSet",
                                    "ProDrawingSheetsCount", "ProDrawingCurrentSheetSet", "ProDirectoryChange"}) {
    World own;
    own.config("kvd_write_history_in_models=0");
    writeBytes(own.models() + "/plan.drw.1", kPlan);
    fs::create_directories(own.models() + "/out");
    own.list("list.xml", tasks);
    own.start();
    creo::ProConfigoptSet(L"skip_small_surfaces", L"YES");
    const creo::ProMdl drawing = own.open(L"PLAN", creo::ProMdlType::drawing);
    own.openTool();
    own.choose("list.xml");
    const std::wstring folder = creo::ProDirectoryCurrentGet().value;
    if (!failing.empty()) own.session().failNext(failing, creo::ProGeneralError);
    own.pressStart();
    EXPECT_EQ(failing.empty(), test::told(own.log()).find(L"E:Export failure") == std::wstring::npos) << failing;
    EXPECT_EQ(2, creo::ProDrawingCurrentSheetGet(drawing).value) << failing;
    EXPECT_EQ(folder, creo::ProDirectoryCurrentGet().value) << failing;
    EXPECT_EQ(L"YES", creo::ProConfigoptGet(L"skip_small_surfaces").value) << failing;
  }
}

TEST_F(Exports, EachPropertyOfThePdfThatIsRefusedFails) {
  for (const char* failing : {"ProPDFoptionsAlloc", "ProPDFoptionsIntpropertySet", "ProPDFoptionsBoolpropertySet",
                              "ProPDFoptionsStringpropertySet", "ProPDFExport"}) {
    World own;
    writeBytes(own.models() + "/plan.drw.1", kPlan);
    own.list("list.xml", task("exportpdf2d", "folder='d:' file='a'"));
    own.start();
    own.open(L"PLAN", creo::ProMdlType::drawing);
    own.openTool();
    own.choose("list.xml");
    own.session().failNext(failing, creo::ProGeneralError);
    own.pressStart();
    EXPECT_EQ(L"Export 2D PDF file|E:Failure -1", plain(test::told(own.log()))) << failing;
    EXPECT_FALSE(fs::exists(own.models() + "/a.pdf")) << failing;
  }
}

// ---- what the files hold

TEST_F(Exports, TheSheetOptionChoosesSheets) {
  onPlan(task("exportdxf", to("file='all' sheetoption='-1'")) + task("exportdxf", to("file='one' sheetoption='1'")) +
         task("exportdxf", to("file='each' sheetoption='2'")));
  EXPECT_EQ("all.dxf each_1.dxf each_2.dxf each_3.dxf one.dxf", files());
  EXPECT_THAT(file("all.dxf"), AllOf(HasSubstr("first sheet"), HasSubstr("P-4711"), HasSubstr("third sheet")));
  EXPECT_THAT(file("one.dxf"), AllOf(Not(HasSubstr("first sheet")), HasSubstr("P-4711"), Not(HasSubstr("third"))));
  EXPECT_EQ(file("one.dxf"), file("each_2.dxf"));
  // An inch sheet is measured in inches when it comes first.
  EXPECT_THAT(file("each_3.dxf"), HasSubstr("AcDbLine\n10\n1.0\n20\n1.0\n11\n2.0\n21\n2.0\n"));
}

TEST_F(Exports, ADxfHoldsLinesWidthsTextsAndColours) {
  onPlan(task("exportdxf", to("file='a' sheetoption='2'")));
  const std::string front = file("a_1.dxf"), back = file("a_2.dxf");
  EXPECT_THAT(front, AllOf(HasSubstr("$EXTMAX\n10\n420.0\n20\n297.0\n"),
                           HasSubstr("8\nLINES\n62\n7\n100\nAcDbLine\n10\n10.0\n20\n10.0\n11\n60.0\n21\n10.0\n"),
                           HasSubstr("8\nTEXT\n62\n7\n100\nAcDbText\n10\n40.0\n20\n50.0\n40\n3.5\n1\nfirst sheet\n")));
  EXPECT_THAT(back, AllOf(HasSubstr("8\nLINES\n62\n12\n100\nAcDbPolyline\n90\n2\n70\n128\n43\n0.7\n"),
                          HasSubstr("\n1\nGröße 50%%037%%037d Ω^ \n"), HasSubstr("\n1\nturned\n50\n90.0\n"),
                          HasSubstr("8\nTABLES\n62\n7\n100\nAcDbText\n")));
  EXPECT_TRUE(back.ends_with("ENDSEC\n0\nEOF\n"));
}

TEST_F(Exports, ADxfIsReadByAStranger) {
  onPlan(task("exportdxf", to("file='a' sheetoption='-1'")));
  writeBytes(out() + "/read.py", R"(import ezdxf
drawing = ezdxf.readfile("a.dxf")
print(drawing.dxfversion, len(drawing.audit().errors), "errors")
for kind in ("LINE", "LWPOLYLINE", "TEXT"):
    print(kind, len(drawing.modelspace().query(kind)))
thick = drawing.modelspace().query("LWPOLYLINE")[1]
print([tuple(round(c, 3) for c in v[:2]) for v in thick], thick.dxf.const_width)
print([e.dxf.text for e in drawing.modelspace().query("TEXT") if "50" in e.dxf.text])
)");
  EXPECT_EQ(
      "AC1021 0 errors\nLINE 6\nLWPOLYLINE 2\nTEXT 5\n[(450.0, 30.0), (550.0, 30.0)] 0.7\n['Größe 50%%037%%037d Ω^ "
      "']\n",
      answerTo("/usr/bin/python3 read.py"));
}

// ---- views

// A plate with a bore, seen along the bore and from its side, at 1:1 and 1:10.
class ExportedViews : public Exports {
 protected:
  ExportedViews() {
    headless::geometry::forgetSeen();
    writeBytes(world.models() + "/bored.prt.1", R"({"format": 1, "solid": {"primitives": [
      {"type": "box", "size": [40, 40, 10]}, {"type": "hole", "diameter": 20, "placement": {"position": [20, 20, 0]}}]}})");
    writeBytes(world.models() + "/plan.drw.1", R"({"format": 1, "models": [{"name": "BORED", "type": "prt"}],
      "sheets": [{"size": "A3"}], "views": [
      {"id": 1, "name": "FRONT", "model": "BORED.prt", "scale": 1, "displayStyle": 2, "position": {"x": 100, "y": 200}},
      {"id": 2, "name": "TOP", "model": "BORED.prt", "scale": 1, "displayStyle": 2, "position": {"x": 100, "y": 100}},
      {"id": 3, "name": "TOP", "model": "BORED.prt", "scale": 0.1, "displayStyle": 2, "position": {"x": 200, "y": 100}}]})");
  }
  // Bodies are those of the tests before and after it, and views that failed are kept for them.
  ~ExportedViews() override { headless::geometry::forgetSeen(); }
  const headless::geometry::ForeignPlaceGuard place_;
};

TEST_F(ExportedViews, ADxfHasCirclesLayersAndDashesOfTheSheet) {
  onPlan(task("exportdxf", to("file='a'")));
  writeBytes(out() + "/read.py", R"(import ezdxf
drawing = ezdxf.readfile("a.dxf")
print(len(drawing.audit().errors), len(drawing.audit().fixes))
for e in drawing.modelspace().query("CIRCLE"):
    print(e.dxf.layer, tuple(round(c, 3) for c in e.dxf.center), round(e.dxf.radius, 3))
for layer in ("VISIBLE", "HIDDEN", "CENTER"):
    row = drawing.layers.get(layer)
    print(layer, row.dxf.linetype, row.dxf.lineweight, len(drawing.modelspace().query(f'LINE[layer=="{layer}"]')))
hidden = drawing.modelspace().query('LINE[layer=="HIDDEN"]')
print(sorted(round(e.dxf.start.distance(e.dxf.end), 3) for e in hidden), drawing.header["$LTSCALE"], drawing.units)
for name in ("HIDDEN", "CENTER"):
    print([t.value for t in drawing.linetypes.get(name).pattern_tags.tags if t.code == 49])
)");
  EXPECT_EQ(
      "0 0\nVISIBLE (100.0, 200.0, 0.0) 10.0\nVISIBLE Continuous 50 12\nHIDDEN HIDDEN 25 4\nCENTER CENTER 25 4\n"
      "[1.0, 1.0, 10.0, 10.0] 1.0 4\n[3.0, -0.75]\n[6.0, -0.75, 0.125, -0.75]\n",
      answerTo("/usr/bin/python3 read.py"));
}

TEST_F(ExportedViews, APdfHasPensAndDashesAlsoInBlack) {
  for (const char* color : {"", " color='2'"}) {
    onPlan(task("exportpdf2d", to("file='a' overwriteExisting='true'") + color));
    const std::string page = answerTo("qpdf --qdf a.pdf -");
    // 0.5 and 0.25 mm, dashes of 3 and 6 mm, in points; four curves are the circle.
    for (const char* code : {"\n1.417", "\n0.708", "\n[8.504 2.126] 0 d\n", "\n[17.008 2.126 0.354 2.126] 0 d\n"})
      EXPECT_THAT(page, HasSubstr(code)) << color;
    const std::regex curve(" c\n");
    EXPECT_EQ(4, std::distance(std::sregex_iterator(page.begin(), page.end(), curve), {})) << color;
  }
}

// A bushing in a plate, cut through the axis of both; a bolt-like pin stays whole. The plate is 40 by 40 by 10, the
// bushing's ring 4 by 10 on both sides of its bore, at 2:1.
TEST_F(ExportedViews, SectionsAreHatchedByPart) {
  writeBytes(world.models() + "/bush.prt.1", R"({"format": 1, "solid": {"primitives": [
      {"type": "cylinder", "diameter": 20, "length": 10}, {"type": "hole", "diameter": 12}]}})");
  writeBytes(world.models() + "/pin.prt.1", R"({"format": 1, "solid": {"primitives": [
      {"type": "cylinder", "diameter": 12, "length": 10}]}})");
  writeBytes(world.models() + "/set.asm.1", R"({"format": 1,
      "crossSections": [{"id": 1, "name": "A", "plane": "ASM_TOP", "distance": 20}],
      "components": [{"name": "BORED", "type": "prt", "feature": 5},
        {"name": "BUSH", "type": "prt", "feature": 6, "placement": {"position": [20, 20, 0]}},
        {"name": "PIN", "type": "prt", "feature": 7, "placement": {"position": [20, 20, 0]}}]})");
  const std::string view = R"("model": "SET.asm", "scale": 2, "position": {"x": 100, )";
  writeBytes(world.models() + "/plan.drw.1", R"({"format": 1, "models": [{"name": "SET", "type": "asm"}],
      "sheets": [{"size": "A3"}], "views": [
      {"id": 1, "name": "FRONT", )" + view + R"("y": 200}},
      {"id": 2, "name": "BOTTOM", "section": "A", "uncut": ["PIN.prt"], )" +
                                                 view + R"("y": 80}},
      {"id": 3, "name": "X", "model": "SET.asm", "scale": 4, "detailOf": 1, "centre": {"x": 20, "y": 0}, "radius": 5,
       "position": {"x": 300, "y": 200}},
      {"id": 4, "name": "BACK", "model": "SET.asm", "scale": 2, "breaks": [{"from": -15, "to": 15}],
       "position": {"x": 300, "y": 80}}]})");
  onPlan(task("exportdxf", to("file='a'")));
  writeBytes(out() + "/read.py", R"(import ezdxf
from ezdxf.path import from_hatch
from ezdxf.math import area
drawing = ezdxf.readfile("a.dxf")
space = drawing.modelspace()
print(len(drawing.audit().errors), len(drawing.audit().fixes))
for h in sorted(space.query("HATCH"), key=lambda h: min(v[0] for p in h.paths.paths for v in p.vertices)):
    print(h.dxf.layer, round(sum(area(p.flattening(0.01)) for p in from_hatch(h)), 1),
          [(l.angle, round(l.offset.magnitude, 3)) for l in h.pattern.lines])
print(sorted(e.dxf.text for e in space.query("TEXT")))
arcs = [e for e in space.query("ARC") if e.dxf.center.x > 250 and e.dxf.center.y > 150]
print(sorted(round(e.dxf.radius, 3) for e in arcs))
broken = [p for e in space.query("LINE") for p in (e.dxf.start, e.dxf.end)
          if e.dxf.layer == "VISIBLE" and p.x > 250 and p.y < 150]
print(round(max(p.x for p in broken) - min(p.x for p in broken), 3))
)");
  EXPECT_EQ(
      "0 0\nHATCH 400.0 [(45.0, 3.0)]\nHATCH 160.0 [(135.0, 1.5)]\nHATCH 160.0 [(135.0, 1.5)]\n"
      "HATCH 400.0 [(45.0, 3.0)]\n['A', 'A', 'A-A (2:1)', 'X', 'X (4:1)']\n[40.0]\n53.0\n",
      answerTo("/usr/bin/python3 read.py"));
}

// A wheel with four notches in its rim is a gear: what makes the notches is left out, or they are filled where no
// feature makes them alone. It is seen along its axis, cut, and with its teeth.
TEST_F(ExportedViews, GearsHavePitchSurfacesInPlaceOfTeeth) {
  const auto wheel = [](const std::string& feature) {
    std::string notches;
    for (const char* place : {"18, -2", "-22, -2", "-2, 18", "-2, -22"})
      notches += R"(, {"type": "box", "use": "cut", )" + feature +
                 R"("size": [4, 4, 12], "placement": {"position": [)" + place + ", -1]}}";
    return R"({"format": 1, "features": [{"id": 6, "name": "TEETH"}], "crossSections": [{"id": 1, "name": "A", "plane": "TOP"}],
      "solid": {"primitives": [{"type": "cylinder", "diameter": 40, "length": 10}, {"type": "hole", "diameter": 10})" +
           notches + R"(], "gears": [{)" + feature +
           R"("tipDiameter": 40, "pitchDiameter": "40 - 4", "rootDiameter": 32, "length": 10}]}})";
  };
  writeBytes(world.models() + "/gear.prt.1", wheel(R"("feature": 6, )"));
  writeBytes(world.models() + "/wheel.prt.1", wheel(""));
  writeBytes(world.models() + "/plan.drw.1", R"({"format": 1, "models": [{"name": "GEAR", "type": "prt"},
      {"name": "WHEEL", "type": "prt"}], "sheets": [{"size": "A3", "scale": 1}], "views": [
      {"id": 1, "name": "FRONT", "model": "GEAR.prt", "position": {"x": 100, "y": 200}},
      {"id": 2, "name": "FRONT", "model": "WHEEL.prt", "position": {"x": 200, "y": 200}},
      {"id": 3, "name": "FRONT", "model": "GEAR.prt", "teeth": true, "position": {"x": 300, "y": 200}},
      {"id": 4, "name": "BOTTOM", "model": "GEAR.prt", "section": "A", "position": {"x": 100, "y": 80}},
      {"id": 5, "name": "BOTTOM", "model": "WHEEL.prt", "section": "A", "position": {"x": 200, "y": 80}}]})");
  onPlan(task("exportdxf", to("file='a'")));
  writeBytes(out() + "/read.py", R"(import ezdxf
from ezdxf.path import from_hatch
from ezdxf.math import area
space = ezdxf.readfile("a.dxf").modelspace()
for e in sorted(space.query("CIRCLE"), key=lambda e: (e.dxf.center.x, e.dxf.radius)):
    print(e.dxf.layer, round(e.dxf.center.x), round(e.dxf.radius, 3))
lines = [e for e in space.query("LINE") if e.dxf.layer in ("VISIBLE", "CENTER")]
edges = [e for e in lines if e.dxf.layer == "VISIBLE" and e.dxf.start.y > 150]
print([sum(1 for e in edges if abs(e.dxf.start.x - x) < 30) for x in (100, 200, 300)])
for x in (100, 200):
    for layer in ("VISIBLE", "CENTER"):
        upright = [e for e in lines if e.dxf.layer == layer and e.dxf.start.y < 150
                   and abs(e.dxf.start.x - e.dxf.end.x) < 1e-6 and abs(e.dxf.start.x - x) < 30]
        print(layer, sorted((round(e.dxf.start.x - x, 3), round(abs(e.dxf.start.y - e.dxf.end.y), 3)) for e in upright))
print(sorted(round(sum(area(p.flattening(0.01)) for p in from_hatch(h)), 1) for h in space.query("HATCH")))
)");
  const std::string cut =
      "VISIBLE [(-20.0, 10.0), (-16.0, 10.0), (-5.0, 10.0), (5.0, 10.0), (16.0, 10.0), (20.0, 10.0)]\n"
      "CENTER [(-18.0, 16.0), (0.0, 16.0), (18.0, 16.0)]\n";
  EXPECT_EQ(
      "VISIBLE 100 5.0\nCENTER 100 18.0\nVISIBLE 100 20.0\nVISIBLE 200 5.0\nCENTER 200 18.0\nVISIBLE 200 20.0\n"
      "VISIBLE 300 5.0\nCENTER 300 18.0\n[4, 4, 12]\n" +
          cut + cut + "[110.0, 110.0, 110.0, 110.0]\n",
      answerTo("/usr/bin/python3 read.py"));
}

// What was worked out once is there for the next export, whatever else of the sheet has changed.
TEST_F(ExportedViews, AViewIsWorkedOutOnce) {
  world.start();
  const creo::ProMdl plan = world.open(L"PLAN", creo::ProMdlType::drawing);
  const auto circles = [&](const std::wstring& name) {
    EXPECT_EQ(creo::ProNoError, creo::Pro2dExport(creo::Pro2dFormat::dxf, L"d:\\out\\" + name, plan, {}));
    const std::string text = file(text::toUtf8(name) + ".dxf");
    return text.find("AcDbCircle") != std::string::npos;
  };
  EXPECT_TRUE(circles(L"first"));
  headless::geometry::foreignPlace().program = "/bin/no-such-program";
  EXPECT_TRUE(circles(L"second"));
  EXPECT_EQ(std::wstring::npos, world.messages().find(L"can't be drawn")) << text::toUtf8(world.messages());
}

// Each try may take more than a minute. Only a program that isn't there may be there the next time.
TEST_F(ExportedViews, AViewThatEndsTheProgramIsTriedOnce) {
  world.start();
  const creo::ProMdl plan = world.open(L"PLAN", creo::ProMdlType::drawing);
  for (const char* program : {"/bin/no-such-program", "/bin/true", "/bin/no-such-program"}) {
    headless::geometry::foreignPlace().program = program;
    EXPECT_EQ(creo::ProNoError, creo::Pro2dExport(creo::Pro2dFormat::dxf, L"d:\\out\\a", plan, {}));
  }
  const std::wstring messages = world.messages();
  const std::size_t absent = messages.find(L"doesn't start"), ended = messages.find(L"it ended the program");
  EXPECT_LT(absent, ended);
  ASSERT_NE(std::wstring::npos, ended) << text::toUtf8(messages);
  EXPECT_EQ(std::wstring::npos, messages.find(L"doesn't start", ended)) << text::toUtf8(messages);
}

TEST_F(Exports, APdfHasAllSheetsInTheirSize) {
  EXPECT_EQ(L"Export 2D PDF file|Exported", onPlan(task("exportpdf2d", to("file='a'"))));
  EXPECT_THAT(answerTo("qpdf --check a.pdf"), Not(testing::StartsWith("failed")));
  EXPECT_THAT(answerTo("pdfinfo -l 3 a.pdf"),
              AllOf(testing::ContainsRegex("Title: +PLAN\n"), testing::ContainsRegex("Subject: +PLAN\n"),
                    testing::ContainsRegex("Author: +[^ \n]"), testing::ContainsRegex("Pages: +3\n"),
                    testing::ContainsRegex("Page +1 size: +1190.55 x 841.89 pts"),
                    testing::ContainsRegex("Page +2 size: +595.27[0-9]* x 841.89 pts")));
  const std::string words = answerTo("pdftotext -f 2 -l 2 a.pdf -");
  EXPECT_THAT(words, AllOf(HasSubstr("P-4711"), HasSubstr("Größe 50%%d Ω^"), HasSubstr("turned"),
                           Not(HasSubstr("first sheet"))));
  EXPECT_THAT(answerTo("pdffonts a.pdf"), testing::ContainsRegex("FreeSans.*yes yes yes"));
  // The base line of the first sheet's note, 50 mm above its lower edge: 297 mm less 50 from the upper one.
  EXPECT_THAT(answerTo("pdftotext -f 1 -l 1 -bbox a.pdf -"),
              testing::ContainsRegex("xMin=\"113\\.[0-9]+\" yMin=\"69[0-9]\\.[0-9]+\".*>first<"));
}

struct PdfCase {
  std::string attributes;
  std::string command, expected, unexpected;
};

TEST_F(Exports, OptionsOfAPdfShow) {
  const PdfCase cases[] = {
      {"font='1'", "pdffonts a.pdf", "Helvetica +Type 1 .*no", "FreeSans"},
      {"font='1' archive='true'", "pdffonts a.pdf", "FreeSans", "Helvetica"},
      {"font='2'", "qpdf --qdf a.pdf -", "\n1 Tr\n", "\n0 Tr\n"},
      {"", "qpdf --qdf a.pdf -", "\n0 Tr\n", "\n1 Tr\n"},
      {"", "qpdf --qdf a.pdf -", "0\\.690[0-9]* 0 0 RG", "0\\.206"},
      {"color='1'", "qpdf --qdf a.pdf -", "0\\.206[0-9]* 0\\.206[0-9]* 0\\.206[0-9]* RG", "0\\.690"},
      {"color='2'", "qpdf --qdf a.pdf -", "Page", "0\\.690|0\\.206"},
      {"", "qpdf --qdf a.pdf -", "/Name \\(TABLES\\)", "/Name \\(FORMAT\\)"},
      {"layer='1'", "qpdf --qdf a.pdf -", "/Name \\(FORMAT\\)", "no such text"},
      {"layer='2'", "qpdf --qdf a.pdf -", "Page", "OCProperties"},
      {"linecap='1'", "qpdf --qdf a.pdf -", "\n0 J\n", "\n1 J\n"},
      {"linejoin='2'", "qpdf --qdf a.pdf -", "\n2 j\n", "\n1 j\n"},
      {"", "qpdf --qdf a.pdf -", "/Outlines", "no such text"},
  };
  for (const PdfCase& entry : cases) {
    SCOPED_TRACE(entry.attributes + " " + entry.command);
    World own;
    writeBytes(own.models() + "/plan.drw.1", kPlan);
    own.list("list.xml", task("exportpdf2d", "folder='d:' file='a' " + entry.attributes));
    own.runOn(L"PLAN", creo::ProMdlType::drawing, "list.xml");
    EXPECT_EQ(L"Export 2D PDF file|Exported", plain(test::told(own.log())));
    const std::string answer = said("cd '" + own.models() + "' && qpdf --check a.pdf > check && " + entry.command);
    EXPECT_TRUE(std::regex_search(answer, std::regex(entry.expected)));
    EXPECT_FALSE(std::regex_search(answer, std::regex(entry.unexpected)));
  }
}

TEST_F(Exports, ASheetLargerThanAPageCanBeFails) {
  writeBytes(world.models() + "/plan.drw.1",
             R"({"format": 1, "sheets": [{"size": "variableMm", "width": 9000, "height": 250}, {"size": "A4"}]})");
  EXPECT_EQ(L"Export 2D PDF file|E:Failure -1|Export DXF file|Exported",
            onPlan(task("exportpdf2d", to("file='a'")) + task("exportdxf", to("file='a'"))));
  EXPECT_EQ("a.dxf", files());
  EXPECT_NE(std::wstring::npos,
            world.messages().find(L"a.pdf: can't be written: SHEET1 measures 9000.0 by 250.0 mm, and "
                                  L"a page has edges of 2 to 5080 mm"))
      << text::toUtf8(world.messages());
}

TEST_F(Exports, AProfileMustBeThere) {
  writeBytes(world.models() + "/fine.xml", "<profile/>");
  EXPECT_EQ(L"Export 3dPDF|E:failure -18|Export 2D PDF file|E:Failure -18",
            plain(run(task("exportpdf", to("file='d' profile='d:/fine.xml'")) +
                      task("exportpdf2d", to("file='e' profile='d:/gone.xml'")))))
      << "profiles are for drawings";
  world.endSession();
  fs::remove(world.packages() + "/standards.kvz");
  writeBytes(world.models() + "/fine.xml", "<profile/>");
  EXPECT_EQ(L"Export 2D PDF file|Exported|Export 2D PDF file|E:Failure -4|Export 3dPDF|E:failure -4",
            onPlan(task("exportpdf2d", to("file='a' profile='d:/fine.xml'")) +
                   task("exportpdf2d", to("file='b' profile='@project_dir@gone.xml'")) +
                   task("exportpdf", to("file='c' profile='d:/gone.xml'"))));
  EXPECT_EQ("a.pdf", files());
}

TEST_F(Exports, APdfIsWrittenOfWhatAWindowShows) {
  world.list("list.xml", task("exportpdf2d", to("file='a'")) + task("exportpdf2d", to("file='b'")));
  world.start();
  const creo::ProMdl plan = creo::ProMdlRetrieve(L"PLAN", creo::ProMdlType::drawing).value;
  EXPECT_EQ(creo::ProNotFound, creo::ProPDFExport(plan, L"d:\\out\\hidden.pdf", {}));
  EXPECT_EQ(creo::ProNoError, creo::ProMdlDisplay(plan));
  EXPECT_EQ(creo::ProBadInputs, creo::ProPDFExport(plan, L"plan.pdf", {})) << "the path isn't whole";
  world.openTool();
  world.choose("list.xml");
  world.session().failNext("ProMdlDisplay", creo::ProGeneralError);
  world.pressStart();
  EXPECT_EQ(L"Export 2D PDF file|Exported|Export 2D PDF file|Exported", plain(test::told(world.log())));
  EXPECT_EQ("a.pdf b.pdf", files());
}

TEST_F(Exports, APropertyOfAPdfHasItsKind) {
  world.start();
  using enum creo::ProPDFproperty;
  creo::ProPDFoptions options;
  EXPECT_EQ(creo::ProInvalidType, creo::ProPDFoptionsIntpropertySet(options, launchViewer, 0));
  EXPECT_EQ(creo::ProInvalidType, creo::ProPDFoptionsBoolpropertySet(options, title, true));
  EXPECT_EQ(creo::ProInvalidType, creo::ProPDFoptionsStringpropertySet(options, mode, L"0"));
  EXPECT_EQ(creo::ProBadInputs, creo::ProPDFoptionsIntpropertySet(options, static_cast<creo::ProPDFproperty>(99), 0));
  EXPECT_TRUE(options.integers.empty() && options.booleans.empty() && options.texts.empty());
}

}  // namespace
}  // namespace test

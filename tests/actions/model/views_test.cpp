// Views, notes in space, looks, scales of sheets, and the check of a model.
#include <gmock/gmock.h>

#include "actions/action_fixture.h"
#include "creo/ProUtil.h"
#include "headless/model/models.h"
#include "text/encoding.h"
#include "text/numbers.h"

namespace test {
namespace {

using creo::ProMdlType;
using testing::HasSubstr;

// A block with views, two of them in a combined state's words, coordinate systems, notes and features.
constexpr const char* kBlock = R"({"format": 1, "commonName": "block",
  "parameters": [{"name": "SIZE", "type": "double", "value": 4.0}, {"name": "WAY", "type": "string", "value": "FRONT"}],
  "views": [{"id": 1, "name": "FRONT", "alternateName": "Vorne"}, {"id": 2, "name": "SIDE"}],
  "combinedStates": [{"id": 1, "name": "SALES", "view": "SIDE"}],
  "features": [{"id": 7, "name": "EDGE", "type": 913}, {"id": 9, "name": "HOLE_A", "type": 911},
               {"id": 11, "type": 911}],
  "notes": [{"id": 4, "name": "EDGES", "lines": ["old"]}, {"id": 6, "lines": ["nameless"]}],
  "familyTable": {"items": [], "instances": [{"name": "SMALL"}]},
  "solid": {"primitives": [{"type": "box", "size": [1, 2, 3]}],
            "coordinateSystems": [{"placement": {"position": [1, 1, 1]}}, {"name": "CS_TOP"}, {"name": "CS_LOW"}]}})";
constexpr const char* kSheets = R"({"format": 1, "sheets": [{"size": "A3", "scale": 0.5}, {"size": "A4"}],
  "views": [{"id": 1, "name": "MAIN", "sheet": 1, "displayStyle": 1}, {"id": 2, "name": "", "sheet": 2, "displayStyle": 4},
            {"id": 3, "name": "ISO", "sheet": 2}],
  "notes": [{"id": 1, "lines": ["a"]}, {"id": 2, "lines": ["b"], "sheet": 2}],
  "symbolDefinitions": [{"id": 1, "name": "weld"}],
  "symbols": [{"id": 5, "definition": "weld", "sheet": 2}]})";

class ViewActions : public ActionTest {
 protected:
  void SetUp() override {
    writeBytes(world.models() + "/bracket.prt.1", kBlock);
    writeBytes(world.models() + "/sheets.drw.1", kSheets);
    world.config("kvd_write_history_in_models=0");
  }
  std::wstring runOnSheets(const std::string& tasks) { return run(tasks, L"SHEETS", ProMdlType::drawing); }
  const headless::ModelRecord& record(const wchar_t* name = L"BRACKET", ProMdlType type = ProMdlType::part) {
    const auto model = creo::ProMdlRetrieve(name, type);
    return world.session().models().find(model.value)->document->record;
  }
  // "FRONT: 1 0 0 0 1 0 0 0 1|SIDE:"
  std::string views() {
    std::string all;
    for (const auto& view : record().views) {
      all += (all.empty() ? "" : "|") + view.name + ":";
      for (const double number : view.matrix) all += " " + text::toUtf8(text::shortest(number));
    }
    return all;
  }
  // It has a version of its own.
  static std::string color(const std::string& attributes) {
    return text::replaceAll(task("setAppearanceFromRGB", attributes), "version='3'", "version='5'");
  }
  static std::string colorOf(const std::unique_ptr<headless::AppearanceRecord>& look) {
    if (!look) return "none";
    std::string all = look->label + ":";
    for (const double number : look->color) all += " " + text::toUtf8(text::shortest(number));
    return all + ", " + text::toUtf8(text::shortest(look->transparency));
  }
};

TEST_F(ViewActions, AViewIsShownByEitherName) {
  world.list("more.xml", task("setView", "view='Default'"));
  EXPECT_EQ(
      L"B0 Set view|view is set|B1 Set view|E:Found no view with this name|B2 Set view|E:Found no view with this name|"
      L"B3 Set view|E:The attribute 'view' is missing",
      run(task("setView", "view='vor*'") + task("setView", "view='BACK'") + task("setView", "view=''") +
          task("setView")));
  EXPECT_EQ("FRONT", record().activeView);
  world.run("more.xml");
  EXPECT_EQ("", record().activeView);
}

TEST_F(ViewActions, TheOptionsOfTheAnimationComeBackOnEveryPath) {
  const struct {
    const char* operation;
    const char* view;
    const wchar_t* expected;
  } cases[] = {
      {nullptr, "SIDE", L"B0 Set view|view is set"},
      {nullptr, "NONE", L"B0 Set view|E:Found no view with this name"},
      {"ProViewNamesGet", "SIDE", L"B0 Set view|E:failure while read the view table"},
      {"ProViewRetrieve", "SIDE", L"B0 Set view|E:The view 'SIDE' can't be shown"},
      {"ProViewReset", "default", L"B0 Set view|E:can't retrieve default view"},
  };
  for (const auto& c : cases)
    world.list(std::string(c.view) + (c.operation ? c.operation : "") + ".xml",
               task("setView", std::string("view='") + c.view + "'"));
  world.start();
  world.open(L"BRACKET", ProMdlType::part);
  creo::ProConfigoptSet(L"max_animation_time", L"3");
  for (const auto& c : cases) {
    if (c.operation) world.session().failNext(c.operation, creo::ProGeneralError);
    world.run(std::string(c.view) + (c.operation ? c.operation : "") + ".xml");
    EXPECT_EQ(c.expected, told(world.log()));
    EXPECT_EQ(L"3", creo::ProConfigoptGet(L"max_animation_time").value) << c.view;
    EXPECT_EQ(creo::ProNotFound, creo::ProConfigoptGet(L"min_animation_steps").error) << c.view;
  }
}

TEST_F(ViewActions, ViewsAreMadeAndChanged) {
  const std::string turned = "0.70711 -0.70711 0 0.70711 0.70711 0 0 0 1";
  EXPECT_EQ(
      L"B0 Add views|Set 3D view 'front'|Set right|Set 3D view 'TOP_FRONT'|Set top|"
      L"E:'orient_4' can't be 'above', but front, right, back, left, top, bottom, iso or custom|"
      L"Set 3D view 'OWN'|Set custom|E:'matrix_6' isn't a rotation of 9 or 16 numbers|"
      L"E:'matrix_7' isn't a rotation of 9 or 16 numbers|E:'matrix_8' isn't a rotation of 9 or 16 numbers|"
      L"Set 3D view 'WIDE'|Set custom|E:'matrix_10' isn't a rotation of 9 or 16 numbers|"
      L"E:'name_11' gives no name",
      run(task("addEditViews",
               "name_0='front' orient_0='right' name_2='TOP_%WAY%' orient_2='top' name_4='A' orient_4='above' "
               "name_5='OWN' orient_5='custom' matrix_5='" +
                   turned +
                   "' name_6='B' orient_6='custom' matrix_6='1 0 0 0 1 0 0 0 -1' "
                   "name_7='C' orient_7='custom' matrix_7='1 0 0 0 1 0 0 0 2' name_8='D' orient_8='custom' "
                   "name_9='WIDE' orient_9='custom' matrix_9='0,1,0,0; -1,0,0,0; 0,0,1,0; 12,5,3,1' "
                   "name_10='E' orient_10='custom' matrix_10='1 0 0 0 0 1 0 0 0 0 1 0.5 0 0 0 1' name_11=''")));
  EXPECT_EQ(
      "FRONT: 0 0 1 0 1 0 -1 0 0|SIDE:|TOP_FRONT: 1 0 0 0 0 1 0 -1 0|OWN: " + turned + "|WIDE: 0 1 0 -1 0 0 0 0 1",
      views());
  EXPECT_EQ("Vorne", record().views[0].alternateName);
  EXPECT_EQ(5, record().views.back().id);
}

// Each looks along another axis: what points at the viewer, and what points up.
TEST_F(ViewActions, TheUsualOrientationsAreRightHanded) {
  const struct {
    const char* word;
    int towards, sign, up, upSign;
  } cases[] = {{"front", 2, 1, 1, 1}, {"right", 0, 1, 1, 1}, {"back", 2, -1, 1, 1},
               {"left", 0, -1, 1, 1}, {"top", 1, 1, 2, -1},  {"bottom", 1, -1, 2, 1}};
  std::string attributes;
  for (std::size_t i = 0; i < std::size(cases); ++i) {
    const std::string number = std::to_string(i);
    attributes += "name_" + number + "='V" + number + "' orient_" + number + "='" + cases[i].word + "' ";
  }
  run(task("addEditViews", attributes));
  ASSERT_EQ(8U, record().views.size());
  for (std::size_t i = 2; const auto& c : cases) {
    const auto& matrix = record().views[i++].matrix;
    ASSERT_EQ(9U, matrix.size());
    EXPECT_EQ(c.sign, matrix[static_cast<std::size_t>(3 * c.towards + 2)]) << c.word;
    EXPECT_EQ(c.upSign, matrix[static_cast<std::size_t>(3 * c.up + 1)]) << c.word;
  }
}

TEST_F(ViewActions, RenamedViewsAreFollowed) {
  EXPECT_EQ(
      L"B0 Rename view|rename SIDE to LEFT|E:rename FRONT to left: there is a view of that name|"
      L"E:No view is called 'NONE'|E:'namef_4' and 'namet_4' must give names|"
      L"B1 Set view|view is set|B2 Rename view|rename LEFT to Left",
      run(task(
              "renameView",
              "namef_0='S*E' namet_0='LEFT' namef_1='%WAY%' namet_1='left' namef_3='NONE' namet_3='X' namef_4='LEFT'") +
          task("setView", "view='LEFT'") + task("renameView", "namef_0='LEFT' namet_0='Left'")));
  EXPECT_EQ("FRONT:|Left:", views());
  EXPECT_EQ("Left", record().combinedStates[0].view);
  EXPECT_EQ("Left", record().activeView);
}

TEST_F(ViewActions, ViewsOfDrawingsAreDrawnOtherwise) {
  EXPECT_EQ(
      L"B0 Replace view model display|work on MAIN from style wireframe|replaced through nohidden|"
      L"B1 Replace view model display|work on MAIN from style nohidden|replaced through hidden|work on 2 from style "
      L"shading|replaced through hidden|work on ISO from style default|replaced through hidden|"
      L"B2 Replace view model display|E:'stylef' can't be 'thin', but *, default, wireframe, hidden, nohidden, "
      L"shading, "
      L"environment, shadingedges or their number|"
      L"B3 Replace view model display|E:'stylet' can't be '', but default, wireframe, hidden, nohidden, shading, "
      L"environment, shadingedges or their number|"
      L"B4 Replace view model display|work on MAIN from style hidden|E:Failure while set Display Style|work on 2 from "
      L"style hidden|E:Failure while set Display Style|work on ISO from style hidden|E:Failure while set Display Style",
      runOnSheets(task("replaceViewModelDisplay", "stylef='wireframe' stylet='3'") +
                  task("replaceViewModelDisplay", "stylef='*' stylet='hidden'") +
                  task("replaceViewModelDisplay", "stylef='thin' stylet='hidden'") +
                  task("replaceViewModelDisplay", "stylef='hidden'") +
                  task("replaceViewModelDisplay", "stylef='hidden' stylet='shading'")));
  for (const auto& view : record(L"SHEETS", ProMdlType::drawing).views) EXPECT_EQ(2, view.displayStyle) << view.id;
}

TEST_F(ViewActions, SheetsGetTheirScale) {
  EXPECT_EQ(
      L"B0 Set sheet scale|Scale of sheet 1 is set to 1:4|Scale of sheet 2 is set to 1:4|"
      L"B1 Set sheet scale|Scale of sheet 2 is set to 2.5|B2 Set sheet scale|E:The drawing has no sheet '3'|"
      L"B3 Set sheet scale|E:'scale' can't be '1:0', but 1:2 or a number above 0|"
      L"B4 Set sheet scale|E:'scale' can't be '1:2:3', but 1:2 or a number above 0|"
      L"B5 Set sheet scale|E:The attribute 'scale' is missing",
      runOnSheets(task("setSheetScale", "scale='1:4'") + task("setSheetScale", "sheet='2' scale=' 2.5'") +
                  task("setSheetScale", "sheet='3' scale='1'") + task("setSheetScale", "scale='1:0'") +
                  task("setSheetScale", "scale='1:2:3'") + task("setSheetScale", "sheet='1'")));
  const auto& sheets = record(L"SHEETS", ProMdlType::drawing).sheets;
  EXPECT_EQ(0.25, sheets[0].scale);
  EXPECT_EQ(2.5, sheets[1].scale);
}

TEST_F(ViewActions, NotesStandAtCoordinateSystems) {
  EXPECT_EQ(
      L"B0 Add 3D note|The coordinate system 'CS_LOW' was found|The 3D note 'SIZES' was created|The text of the note "
      L"'SIZES' was set|"
      L"B1 Add 3D note|Place the 3D note to first coordinate system|The 3D note 'SECOND' was created|The text of the "
      L"note 'SECOND' was set|"
      L"B2 Add 3D note|E:There is no coordinate system|"
      L"B3 Add 3D note|Place the 3D note to first coordinate system|E:Failure occured while creating the 3D note: "
      L"there is a note 'edges'|"
      L"B4 Add 3D note|E:'text_0' must give the note a text|B5 Add 3D note|E:The attribute 'name' is missing",
      run(task("add3dannotation", "name='SIZES' text_0='size %SIZE%' text_3='end' csys='cs_low'") +
          task("add3dannotation", "name='SECOND' text_0='x'") +
          task("add3dannotation", "name='THIRD' text_0='x' csys='NONE'") +
          task("add3dannotation", "name='edges' text_0='x'") + task("add3dannotation", "name='FOURTH'") +
          task("add3dannotation")));
  const auto& notes = record().notes;
  ASSERT_EQ(4U, notes.size());
  EXPECT_EQ("CS_LOW", notes[2].csys);
  ASSERT_EQ(2U, notes[2].lines.size());
  EXPECT_EQ("end", notes[2].lines[1].text());
  EXPECT_EQ("CS_TOP", notes[3].csys);
}

TEST_F(ViewActions, ANoteThatCannotBeWrittenGoesAgain) {
  const struct {
    const char* operation;
    const wchar_t* fault;
  } cases[] = {{"ProSolidNoteCreate", L"Failure occured while creating the 3D note"},
               {"ProNotePlacementSet", L"Failure occured while creating the 3D note"},
               {"ProNoteTextSet", L"An Error occured while writing the text of the note"}};
  world.list("list.xml", task("add3dannotation", "name='NEW' text_0='x'"));
  world.start();
  world.open(L"BRACKET", ProMdlType::part);
  for (const auto& c : cases) {
    world.session().failNext(c.operation, creo::ProGeneralError);
    world.run("list.xml");
    EXPECT_EQ(L"B0 Add 3D note|Place the 3D note to first coordinate system|E:" + std::wstring(c.fault),
              told(world.log()));
    EXPECT_EQ(2U, record().notes.size()) << c.operation;
  }
}

TEST_F(ViewActions, AllAnnotationsGo) {
  EXPECT_EQ(L"B0 Remove all annotations|2 notes removed|B1 Remove all annotations|0 notes removed",
            run(task("removeAllAnnotations") + task("removeAllAnnotations")));
  EXPECT_TRUE(record().notes.empty());
}

TEST_F(ViewActions, AllAnnotationsOfADrawingGo) {
  world.list("list.xml", task("removeAllAnnotations"));
  world.start();
  world.open(L"SHEETS", ProMdlType::drawing);
  world.session().failNext("ProDtlnoteDelete", creo::ProGeneralError);
  world.run("list.xml");
  EXPECT_EQ(L"B0 Remove all annotations|E:The note 2 can't be deleted|1 notes and 1 symbols removed",
            told(world.log()));
  world.run("list.xml");
  EXPECT_EQ(L"B0 Remove all annotations|1 notes and 0 symbols removed", told(world.log()));
  const auto& drawing = record(L"SHEETS", ProMdlType::drawing);
  EXPECT_TRUE(drawing.notes.empty() && drawing.symbols.empty());
}

TEST_F(ViewActions, LooksComeFromAFile) {
  writeBytes(world.models() + "/looks.txt",
             "! of the site\n[steel]\ncolor 0.5 0.5 0.75\nhighlight 0.6\n\n[Red]\nCOLOR 1, 0, 0\ntransparency 0.25\n");
  writeBytes(world.models() + "/bad.txt", "[steel]\ncolor 0.5 0.5 1.5\n");
  EXPECT_EQ(
      L"B0 Set appearance|Color for the complete model is set|"
      L"B1 Set appearance|KE: 9 HOLE_A|KE: 11|Color for the selected features is set|"
      L"B2 Set appearance|E:The file has no appearance 'blue'|B3 Set appearance|E:No feature is chosen|"
      L"B4 Set appearance|E:d:\\bad.txt:2: a line is [name], color with three numbers, or a property with one|"
      L"B5 Set appearance|E:d:\\none.txt: the file can't be read|"
      L"B6 Set appearance|E:'feat' can't be '7', but 0 to 4|B7 Set appearance|E:The attribute 'path' is missing",
      run(task("setAppearance", "path='d:/looks.txt'") +
          task("setAppearance", "path='d:/looks.txt' name='red' feat='1' feattype='92'") +
          task("setAppearance", "path='d:/looks.txt' name='blue'") +
          task("setAppearance", "path='d:/looks.txt' feat='2' featid='99'") +
          task("setAppearance", "path='d:/bad.txt'") + task("setAppearance", "path='d:/none.txt'") +
          task("setAppearance", "path='d:/looks.txt' feat='7'") + task("setAppearance", "name='red'")));
  EXPECT_EQ("steel: 0.5 0.5 0.75, 0", colorOf(record().appearance));
  EXPECT_EQ("none", colorOf(record().features[0].appearance));
  EXPECT_EQ("Red: 1 0 0, 0.25", colorOf(record().features[1].appearance));
}

TEST_F(ViewActions, LooksComeFromNumbers) {
  EXPECT_EQ(
      L"B0 Set appearance from RGB|Color for the complete model is set|"
      L"B1 Set appearance from RGB|KE: 7 EDGE|Color for the selected features is set|"
      L"B2 Set appearance from RGB|E:'g' can't be '256', but a number from 0 to 255|"
      L"B3 Set appearance from RGB|E:'transparency' can't be 'half', but a number from 0 to 100|"
      L"B4 Set appearance from RGB|E:The attribute 'r' is missing",
      run(color("r='255' g='0' b='51' transparency='50'") + color("r='0' g='0' b='255' feat='4' featname='ED*'") +
          color("r='0' g='256' b='0'") + color("r='0' g='0' b='0' transparency='half'") + color("")));
  EXPECT_EQ(": 1 0 0.2, 0.5", colorOf(record().appearance));
  EXPECT_EQ(": 0 0 1, 0", colorOf(record().features[0].appearance));
  EXPECT_EQ("none", colorOf(record().features[1].appearance));
}

TEST_F(ViewActions, KindsThatDoNotFitAreLeftAlone) {
  const std::string before = world.document("sheets.drw");
  EXPECT_EQ(L"B0 Set view|B1 Add views|B2 Rename view|B3 Add 3D note|B4 Set appearance from RGB",
            runOnSheets(task("setView", "view='MAIN'") + task("addEditViews", "name_0='MAIN' orient_0='top'") +
                        task("renameView", "namef_0='MAIN' namet_0='X'") +
                        task("add3dannotation", "name='N' text_0='x'") + color("r='0' g='0' b='0'")));
  EXPECT_EQ(before, world.document("sheets.drw"));
}

class ModelCheck : public ViewActions {
 protected:
  void SetUp() override {
    ViewActions::SetUp();
    writeBytes(world.models() + "/bracket.prt.1", R"({"format": 1, "regeneration": "needed",
      "parameters": [{"name": "A", "type": "double", "value": 1.0}], "relations": ["A = NONE"],
      "postRelations": ["A = 2"],
      "features": [{"id": 1, "name": "EDGE", "geometryChecks": true}, {"id": 2, "status": "unregenerated"},
                   {"id": 3, "name": "GONE", "status": "suppressed", "geometryChecks": true},
                   {"id": 4, "name": "RIB", "relations": ["A = ("]}]})");
  }
};

TEST_F(ModelCheck, CountsErrorsAndWarnings) {
  writeBytes(world.models() + "/site.txt", "! of the site\nno_material off\nGEOMETRY_CHECKS warning\n");
  writeBytes(world.models() + "/bad.txt", "no_material never\n");
  const std::wstring log =
      run(task("runModelCheck") + task("runModelCheck", "config='d:/site.txt' save='false'") +
          task("runModelCheck", "config='d:/bad.txt'") + task("runModelCheck", "config='d:/none.txt' save='true'"));
  EXPECT_THAT(log, HasSubstr(L"|error: the feature 2 isn't regenerated|error: relation line 1: 'NONE' is "
                             L"neither a parameter nor a dimension|error: feature RIB, relation line 1: "));
  EXPECT_THAT(log, HasSubstr(L"error: the feature EDGE has geometry checks|warning: the feature GONE is "
                             L"suppressed|warning: the model isn't regenerated|warning: the part has no "
                             L"material|Executed with 4 errors and 3 warnings, the model is not saved|"
                             L"B1 Run model check|Run with another configuration from: d:\\site.txt|"));
  EXPECT_TRUE(log.ends_with(
      L"|warning: the feature EDGE has geometry checks|warning: the feature GONE is suppressed|warning: the model "
      L"isn't regenerated|Executed with 3 errors and 3 warnings, the model is not saved|"
      L"B2 Run model check|Run with another configuration from: d:\\bad.txt|E:A general error while executing this "
      L"function is occured|"
      L"B3 Run model check|Run with another configuration from: d:\\none.txt|E:The configuration path can't be found"))
      << log;
  EXPECT_THAT(world.messages(), HasSubstr(L"bad.txt:1: a line is the name of a check"));
  EXPECT_EQ(1, world.version("bracket.prt"));
}

TEST_F(ModelCheck, MissesModelsAndSavesWhenAsked) {
  world.assembly(L"FRAME").uses(L"SHEET", ProMdlType::part).uses(L"LOST", ProMdlType::part);
  world.part(L"SHEET").with(L"A", 1.0);
  const std::wstring log = run(task("addEditViews", "name_0='A' orient_0='top'") + task("runModelCheck", "save='true'"),
                               L"FRAME", ProMdlType::assembly);
  EXPECT_THAT(log, HasSubstr(L"|error: the model LOST.PRT is missing|Executed with 1 errors and 0 warnings, "
                             L"the model is saved"));
  EXPECT_EQ(2, world.version("frame.asm"));
}

TEST_F(ModelCheck, ASaveThatFailsIsTold) {
  world.list("list.xml", task("runModelCheck", "save='true'"));
  world.start();
  world.open(L"SHEETS", ProMdlType::drawing);
  world.session().failNext("ProMdlSave", creo::ProGeneralError);
  world.run("list.xml");
  EXPECT_EQ(
      L"B0 Run model check|runs with standard configuration|E:Failure while save model|"
      L"Executed with 0 errors and 0 warnings, the model is not saved",
      told(world.log()));
}

}  // namespace
}  // namespace test

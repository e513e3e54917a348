// The verbs that make, list, show and compare models.
#include "headless/store/document.h"
#include "kelvane/program_fixture.h"
#include "support/step_file.h"

namespace test {
namespace {

using creo::ProMdlType;

class ModelVerbs : public ProgramTest {};

TEST_F(ModelVerbs, ShownFeaturesTellTheirParentsAndChildren) {
  writeBytes(models() + "/arm.prt.1", R"({"format": 1, "insertAfter": 2, "features": [{"id": 4, "name": "BASE"},
      {"id": 7, "name": "RIB", "parents": [4]}, {"id": 9, "name": "BORE", "parents": [4, 7]}]})");
  EXPECT_THAT(kelvane({"show", models(), "ARM.PRT"}).out,
              testing::AllOf(testing::HasSubstr("children 7 9\n"), testing::HasSubstr("parents 4, children 9\n"),
                             testing::HasSubstr("inactive, parents 4 7\n")));
}

TEST_F(ModelVerbs, NewModelIsListedAndShown) {
  const Ended ended = kelvane({"new", models(), "Plate.prt", "--param", "mass:Double=2.5", "--param", "NOTE=a=b",
                               "--param", "COUNT:Integer=-3", "--param", "DONE:Boolean=yes", "--box", "80,40,5"});
  EXPECT_EQ(models() + "/plate.prt.1\n", ended.err);
  EXPECT_EQ(0, ended.code);
  EXPECT_EQ("PLATE.PRT  .1  Double  2.5\n", kelvane({"models", models(), "--param", "MASS"}).out);
  EXPECT_EQ(
      "PLATE.PRT  version 1\n\nparameters\n  MASS   Double   2.5\n  NOTE   String   a=b\n  COUNT  Integer  -3\n"
      "  DONE   Boolean  true\n\nsettings\n  accuracy  absolute 0.01\n\nbody\n"
      "  mass               16000 kg              it has no density: 1\n  volume             16000 mm^3\n"
      "  surface area       7600 mm^2\n  centre of gravity  40, 20, 2.5\n  size               80 x 40 x 5 mm\n"
      "  outline            0, 0, 0 to 80, 40, 5\n",
      kelvane({"show", models(), "plate.prt"}).out);
  EXPECT_EQ("kelvane: PLATE.PRT is there already\n", kelvane({"new", models(), "PLATE.PRT"}).err);
  EXPECT_EQ("kelvane: there is no model PLATTE.PRT; did you mean 'PLATE.PRT'?\n",
            kelvane({"show", models(), "PLATTE.PRT"}).err);
}

TEST_F(ModelVerbs, AStepFileBecomesTheBodyAndGoesWithTheFolder) {
  file("parts/t.step", stepTetrahedron());
  EXPECT_EQ(0, kelvane({"new", models(), "WEDGE.PRT", "--step", path("parts/t.step")}).code);
  std::filesystem::rename(models(), path("moved"));
  std::filesystem::remove_all(path("parts"));
  EXPECT_THAT(kelvane({"show", path("moved"), "WEDGE.PRT"}).out,
              testing::AllOf(testing::ContainsRegex("volume +10000 mm"), testing::ContainsRegex("30 x 40 x 50 mm")));

  file("parts/text.step", "no body\n");
  EXPECT_EQ("kelvane: --step " + path("parts/text.step") + ": primitive 1: the file is no STEP file\n",
            kelvane({"new", models(), "OTHER.PRT", "--step", path("parts/text.step")}).err);
  EXPECT_TRUE(filesIn("models").empty());
}

TEST_F(ModelVerbs, ShowTellsFamilyTableUsesAndInstances) {
  const Ended bolt = kelvane({"show", example("workspace"), "BOLT_DIN933.PRT"});
  EXPECT_THAT(bolt.out,
              testing::HasSubstr("family table\n"
                                 "  instance     dimension DIAMETER  dimension LENGTH  SUPPLIER_NO     MASS\n"
                                 "  BOLT_M6X20   6.0                 20.0              DIN 933 M6x20   0.0072\n"
                                 "  BOLT_M8X25   *                   *                 *               *\n"));
  const Ended instance = kelvane({"show", example("workspace"), "BOLT_M8X30.PRT"});
  EXPECT_THAT(instance.out, testing::StartsWith("BOLT_M8X30.PRT  version 2  instance of BOLT_DIN933"));
  EXPECT_THAT(instance.out, testing::ContainsRegex("SUPPLIER_NO +String +DIN 933 M8x30\n"));
  EXPECT_THAT(kelvane({"show", example("workspace"), "BOLT_M6X20.PRT"}).out,
              testing::ContainsRegex("\n  LENGTH +20.0\n"));
  EXPECT_THAT(kelvane({"show", example("workspace"), "OUTPUT_SHAFT.ASM"}).out,
              testing::HasSubstr("uses\n  SHAFT_OUT.PRT\n  GEAR.PRT\n  KEY_14X9X28.PRT\n  BEARING_6207.PRT\n"));
}

TEST_F(ModelVerbs, ShowTellsTheSheetsTablesAndSymbolsOfADrawing) {
  EXPECT_THAT(kelvane({"show", example("workspace"), "GEAR.DRW"}).out,
              testing::HasSubstr("sheets\n"
                                 "  1  GEAR    A3  420 x 297  scale 1  frame_a3  current\n"
                                 "  2  PINION  A4  210 x 297  scale 2  frame_a4\n"
                                 "\ntable TITLE_BLOCK, sheet 1 at 230, 10, from the format\n"
                                 "  Name                       Gear z=100 m=2  Drawing  GB-120-22\n"
                                 "  Material                   16MnCr5         Mass     6.97 kg\n"
                                 "  Model                      GEAR            Scale    1\n"
                                 "  OSTELO Works / Gear units  GEAR            Sheet    1 of 2\n"));
  EXPECT_THAT(kelvane({"show", example("workspace"), "HOUSING_LOWER.DRW"}).out,
              testing::HasSubstr("symbols\n"
                                 "  projection_first  sheet 1 at 400, 15\n"
                                 "  surface_machined  sheet 1 at 310, 370\n"
                                 "  surface_machined  sheet 1 at 480, 370\n"
                                 "  edges_iso13715    not used\n"));
}

TEST_F(ModelVerbs, ShowTellsMaterialsLayersAndStatesOfASolid) {
  EXPECT_THAT(
      kelvane({"show", example("workspace"), "HOUSING_LOWER.PRT"}).out,
      testing::AllOf(testing::HasSubstr("settings\n"
                                        "  accuracy         absolute 0.01\n"
                                        "  tolerance class  medium\n"),
                     testing::HasSubstr("materials\n"
                                        "  EN-GJL-250                  current\n"
                                        "    PTC_MASS_DENSITY          7.2e-06 kg/mm^3\n"),
                     testing::HasSubstr("states\n"
                                        "  view  FRONT, TOP, RIGHT, ISO\n"
                                        "\nsimplified representations\n"
                                        "  ENVELOPE   default include\n"
                                        "  NO_ROUNDS  default include\n"
                                        "\ncombined states\n"
                                        "  MACHINING\n"
                                        "\ncross sections\n"
                                        "  A  planar  cuts model  plane FRONT, at -75\n"
                                        "  B  planar  cuts model  plane RIGHT, at 174\n"),
                     testing::HasSubstr("layers\n"
                                        "  01_DATUMS    blank   0 items\n"
                                        "  02_MACHINED  normal  2 items  feature 20 BORE_IN, feature 24 BORE_OUT\n"
                                        "  03_ROUNDS    normal  1 item   feature 40 EDGES\n"
                                        "\nlayer states\n"
                                        "  CASTING    02_MACHINED blank, 03_ROUNDS display\n")));
  EXPECT_EQ(std::string::npos, kelvane({"show", example("workspace"), "GEAR.DRW"}).out.find("settings"));
}

TEST_F(ModelVerbs, ShowTellsWhatASolidHoldsLineByLine) {
  file("models/plate.prt.1", R"({"format": 1, "material": "TIN", "density": 2.5, "densityEstimated": true,
    "parameters": [{"name": "PTC_MATERIAL_NAME", "type": "string", "value": "TIN"}],
    "materials": [{"name": "TIN", "parameters": []}, {"name": "LEAD", "parameters": []}],
    "relations": ["A = 1", "B = 2"], "postRelations": ["C = 3"], "program": ["INPUT", "END INPUT"],
    "features": [{"id": 7, "name": "CUT", "relations": ["D = 4"], "sections": [{}, {"relations": ["E = 5"]}],
                  "appearance": {"color": [1, 0, 0], "transparency": 0.5}}],
    "layers": [{"id": 1, "name": "L", "ruleBased": true, "associativeRules": true, "rules": ["name == V*", "type = view", "odd"],
                "items": [{"type": "feature", "id": 7}, {"type": "dimension", "id": 9}]}],
    "layerStates": [{"name": "S", "layers": [{"name": "L", "status": "hidden"}]}], "activeLayerState": "s",
    "views": [{"id": 1, "name": "V"}], "activeView": "V",
    "simplifiedReps": [{"id": 1, "name": "R", "defaultAction": "exclude", "items": [
      {"feature": 7, "action": "substitute", "substitution": "partRep", "substitute": "LIGHT"}]}],
    "combinedStates": [{"id": 1, "name": "ALL", "view": "V", "layerState": "S", "crossSection": "X", "exploded": true}],
    "activeCombinedState": "ALL",
    "crossSections": [{"id": 1, "name": "X", "plane": "TOP", "distance": 5, "visible": true, "oldForm": true}],
    "familyTable": {"items": [{"type": "parameter", "name": "PTC_MATERIAL_NAME"}, {"type": "feature", "name": "CUT"}],
      "instances": [{"name": "P1", "values": {"CUT": "N"}, "locked": true, "verification": "failed"},
                    {"name": "P2", "values": {"PTC_MATERIAL_NAME": "LEAD"}}]}})");
  const std::string out = kelvane({"show", models(), "PLATE.PRT"}).out;
  for (const char* piece :
       {"\nrelations\n  1  A = 1\n  2  B = 2\n", "\npost relations\n  1  C = 3\n",
        "\nrelations of feature 7 CUT\n  1  D = 4\n", "\nrelations of section 2 of feature 7 CUT\n  1  E = 5\n",
        "\nprogram\n  1  INPUT\n  2  END INPUT\n",
        "\nfamily table\n  instance  PTC_MATERIAL_NAME  feature CUT\n  P1        *                  N            "
        "locked, "
        "failed\n  P2        LEAD               *\n",
        "  density                  2.5                              estimated\n",
        "  appearance of feature 7  color 1, 0, 0, transparency 0.5\n",
        "\nlayers\n  L  normal  2 items              feature 7 CUT, dimension 9\n"
        "             by                   rules, associative\n             rule                 name == V*\n"
        "             rule                 type = view\n             rule, finds nothing  odd\n"
        "             found now            view 1 V\n",
        "\nlayer states\n  S  L hidden  active\n", "\nstates\n  view  V (active)\n",
        "\nsimplified representations\n  R  default exclude  feature 7 CUT substitute by LIGHT\n",
        "\ncombined states\n  ALL  active  view V, layers S, section X, shown exploded\n",
        "\ncross sections\n  X  planar  cuts model  plane TOP, at 5  visible, old form\n"})
    EXPECT_THAT(out, testing::HasSubstr(piece));
  EXPECT_THAT(kelvane({"show", models(), "P2.PRT"}).out,
              testing::StartsWith("P2.PRT  version 1  instance of PLATE  material LEAD\n"));
}

TEST_F(ModelVerbs, ShowTellsDatumsAndMembersOfPatterns) {
  file("models/plate.prt.1", R"({"format": 1,
    "features": [{"id": 7, "name": "CS", "type": 979}, {"id": 9, "type": 1232, "status": "suppressed",
                  "pattern": {"dimensions": [1], "members": [{"number": 1, "values": [2.5]}]}}],
    "solid": {"coordinateSystems": [{"feature": 7}], "points": [{"feature": 9}, {"csys": "CS"}],
              "planes": [{"name": "TOP"}, {"name": "CODE", "csys": "CS"}]}})");
  const std::string out = kelvane({"show", models(), "PLATE.PRT"}).out;
  EXPECT_THAT(out, testing::HasSubstr("features\n  7  CS  type 979\n  9      type 1232  suppressed, 1 member\n"));
  EXPECT_THAT(out, testing::HasSubstr("datums\n  coordinate system  CS\n  plane              TOP\n"
                                      "  plane              CODE  in CS\n  points             2\n"));
  file("models/other.prt.1", "{\"format\": 1,\n\"solid\": {\"coordinateSystems\": [{\"csys\": \"CS\"}]}}");
  EXPECT_EQ("kelvane: other.prt.1:2: a coordinate system counts in the model's own, without 'csys'\n",
            kelvane({"show", models(), "OTHER.PRT"}).err);
}

TEST_F(ModelVerbs, FormatsAreDocumentsOfTheirOwn) {
  const Ended ended = kelvane({"new", models(), "Frame_A3.frm", "--param", "TITLE=Frame"});
  EXPECT_EQ(models() + "/frame_a3.frm.1\n", ended.err);
  EXPECT_EQ("kelvane: FRAME_A3.FRM is there already\n", kelvane({"new", models(), "FRAME_A3.FRM"}).err);
  EXPECT_EQ("kelvane: --box: only a part has a body of its own\n",
            kelvane({"new", models(), "BOX.FRM", "--box", "1,2,3"}).err);
  file("models/frame_a4.frm.2", R"({"format": 1, "sheets": [{"size": "A4", "portrait": true}],
    "tables": [{"id": 1, "name": "TITLE", "segments": [{"position": {"x": 10, "y": 20}}], "columns": [15, 45],
                "rows": [7], "cells": [{"row": 1, "column": 1, "lines": ["Name"]},
                                       {"row": 1, "column": 2, "lines": ["&model_name"]}]}]})");
  file("models/bad.frm.1", "{\"format\": 1,\n\"sheets\": 7}");
  part(L"PLATE");
  const Ended listed = kelvane({"models", models()});
  EXPECT_EQ("BAD.FRM       .1\nFRAME_A3.FRM  .1\nFRAME_A4.FRM  .2\nPLATE.PRT     .1\n", listed.out);
  EXPECT_EQ("bad.frm.1:2: 'sheets' must be an array\n", listed.err);
  EXPECT_THAT(kelvane({"models", models(), "--param", "TITLE"}).out,
              testing::HasSubstr("FRAME_A3.FRM  .1  String  Frame\n"));
  EXPECT_EQ("kelvane: bad.frm.1:2: 'sheets' must be an array\n", kelvane({"show", models(), "BAD.FRM"}).err);
  EXPECT_THAT(kelvane({"show", models(), "FRAME_A4.FRM"}).out,
              testing::AllOf(testing::StartsWith("FRAME_A4.FRM  version 2\n"),
                             testing::HasSubstr("\n  1  SHEET1  A4  210 x 297  scale 1"),
                             testing::HasSubstr("table TITLE, sheet 1 at 10, 20\n  Name  &model_name\n")));
  EXPECT_EQ(path("sheet.svg") + "\n", kelvane({"show", models(), "FRAME_A4.FRM", "--svg", path("sheet.svg")}).out);
  EXPECT_THAT(readBytes(path("sheet.svg")), testing::HasSubstr(">Name<"));
}

TEST_F(ModelVerbs, DamagedDocumentIsNamedWithItsLine) {
  part(L"GOOD");
  file("models/bad.prt.3", "{\n  \"format\": 1,\n  \"parameters\": 7\n}\n");
  const Ended ended = kelvane({"models", models()});
  EXPECT_EQ(1, ended.code);
  EXPECT_EQ("BAD.PRT   .3\nGOOD.PRT  .1\n", ended.out);
  EXPECT_EQ("bad.prt.3:3: 'parameters' must be an array\n", ended.err);
  EXPECT_EQ("kelvane: bad.prt.3:3: 'parameters' must be an array\n", kelvane({"show", models(), "BAD.PRT"}).err);
}

TEST_F(ModelVerbs, DiffComparesContentAlone) {
  part(L"SAME").with(L"A", 1);
  part(L"CHANGED").with(L"MASS", 2.5).with(L"OLD", L"x");
  part(L"GONE");
  const std::string other = path("other");
  file("other/same.prt.7", readBytes(models() + "/SAME.prt.1"));
  ModelBuilder(other, L"changed", ProMdlType::part).with(L"MASS", 3.0).with(L"NEU", L"y");
  ModelBuilder(other, L"NEW", ProMdlType::part);
  const Ended ended = kelvane({"diff", models(), other});
  EXPECT_EQ(1, ended.code);
  EXPECT_EQ(
      "CHANGED.PRT: parameters/MASS/value: 2.5 -> 3.0\n"
      "CHANGED.PRT: + parameters/NEU/name: NEU\nCHANGED.PRT: + parameters/NEU/type: string\n"
      "CHANGED.PRT: + parameters/NEU/value: y\nCHANGED.PRT: - parameters/OLD/name: OLD\n"
      "CHANGED.PRT: - parameters/OLD/type: string\nCHANGED.PRT: - parameters/OLD/value: x\n"
      "GONE.PRT: is gone\nNEW.PRT: is new\n",
      ended.out);
  EXPECT_EQ("CHANGED.PRT  7\nGONE.PRT     gone\nNEW.PRT      new\n3 models differ\n",
            kelvane({"diff", models(), other, "--stat"}).out);
  EXPECT_THAT(kelvane({"diff", models(), other, "--json"}).out,
              testing::HasSubstr("\"path\": \"parameters/MASS/value\""));
  EXPECT_EQ(0, kelvane({"diff", models(), models()}).code);
}

TEST_F(ModelVerbs, ExampleDocumentsAreWrittenAsTheyStand) {
  int count = 0;
  for (const auto& entry : std::filesystem::directory_iterator(example("workspace"))) {
    const std::string bytes = readBytes(entry.path().string());
    headless::ModelRecord record;
    EXPECT_FALSE(headless::readDocument(bytes, record)) << entry.path();
    EXPECT_EQ(bytes, headless::writeDocument(record)) << entry.path();
    ++count;
  }
  EXPECT_EQ(27, count);
}

}  // namespace
}  // namespace test

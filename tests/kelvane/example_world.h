// A part, an assembly, a drawing and a package's files with much of what the examples of the documents name.
#pragma once

#include <filesystem>
#include <string>

#include "support/folders.h"
#include "support/world.h"

namespace test {

inline std::string exampleParameters() {
  const std::pair<const char*, const char*> texts[] = {
      {"RELEASE", "R1"},
      {"NUMBER", "4711"},
      {"PART_NO", "P4711"},
      {"DESCRIPTION", "Bolt"},
      {"DRAWING_NO", "GB_120"},
      {"RAW_PART", "BLANK"},
      {"MATERIAL", "steel"},
      {"COLOR", "red"},
      {"OLD_SIZE", "x"},
      {"MAIN_MODEL", "-"},
      {"TITLE", "-"},
      {"COAT_1", "zinc"},
      {"REV", "A"},
      {"MATERIAL_TEXT", "-"},
  };
  std::string all = R"("parameters": [{"name": "MASS", "type": "double", "value": 2.5})";
  for (const auto& [name, value] : texts)
    all += std::string(R"(, {"name": ")") + name + R"(", "type": "string", "value": ")" + value + R"("})";
  return all + "]";
}

// What parts and assemblies have alike.
inline const char* const kExampleSolid = R"(
  "relations": ["WIDE = 7.85 * 2", "OLD_WIDTH = 3"],
  "layers": [{"id": 1, "name": "01_DATUMS"}, {"id": 2, "name": "02_AXES"},
    {"id": 3, "name": "OLD_LAYER", "items": [{"type": "feature", "id": 1}]}, {"id": 4, "name": "COMMON"},
    {"id": 5, "name": "REFERENCES"}, {"id": 6, "name": "DATUM_X"}],
  "layerStates": [{"name": "CLEAN", "layers": [{"name": "01_DATUMS", "status": "blank"}]},
    {"name": "TMP_1", "layers": [{"name": "02_AXES", "status": "blank"}]}],
  "views": [{"id": 1, "name": "FRONT"}, {"id": 2, "name": "VORNE"}],
  "simplifiedReps": [{"id": 1, "name": "LIGHT"}, {"id": 2, "name": "TEMP_1"}, {"id": 3, "name": "REP0001"}],
  "crossSections": [{"id": 1, "name": "A"}, {"id": 2, "name": "X12", "oldForm": true}],
  "combinedStates": [{"id": 1, "name": "SALES", "view": "FRONT"}, {"id": 2, "name": "OLD_1", "view": "FRONT"}])";

inline const char* const kExamplePart = R"(
  "material": "St37-2", "materials": [{"name": "St37-2", "parameters": [
    {"name": "PTC_MASS_DENSITY", "type": "double", "value": 7.85e-06, "units": "kg/mm^3"},
    {"name": "RHO", "type": "double", "value": 1.0}]}],
  "dimensions": [{"id": 1, "symbol": "d12", "value": 20.0, "tolerance": {"upper": 0.1, "lower": 0.1}}],
  "features": [
    {"id": 1, "name": "HOLE_1", "type": 911, "parameters": [{"name": "OLD_1", "type": "string", "value": "x"},
      {"name": "THREAD", "type": "string", "value": "M8"}]},
    {"id": 2, "name": "MID_PLANE", "type": 923}, {"id": 3, "name": "CUT_1", "type": 916},
    {"id": 4, "name": "CORE", "type": 917}, {"id": 5, "type": 1116}],
  "solid": {"primitives": [{"type": "box", "size": ["d12", 40, 5]}],
    "coordinateSystems": [{"name": "CS_CODE"}, {"name": "CS_MOUNT", "placement": {"position": [0, 0, 5]}}]},
  "familyTable": {"items": [{"type": "dimension", "name": "d12"}], "instances": [
    {"name": "BOLT_20", "values": {"d12": 21.0}}, {"name": "BOLT_30", "values": {"d12": 30.0}, "locked": true}]})";

inline const char* const kExampleAssembly = R"(
  "features": [{"id": 1, "name": "MID_PLANE", "type": 923},
    {"id": 13, "type": 1000, "variantItems": [{"type": "dimension", "id": 1}]}],
  "components": [{"name": "BOLT", "type": "prt", "feature": 11},
    {"name": "SCREW_OLD_1", "type": "prt", "feature": 12, "packaged": true},
    {"name": "SPRING", "type": "prt", "feature": 13, "flexible": true}],
  "solid": {"coordinateSystems": [{"name": "CS_MOUNT"}]},
  "explodedStates": [{"id": 1, "name": "OPEN"}], "styleStates": [{"id": 1, "name": "GLASS"}])";

inline const char* const kExampleDrawing = R"(
  "models": [{"name": "BOLT", "type": "prt"}, {"name": "UNIT", "type": "asm"}, {"name": "SPRING", "type": "prt"}],
  "sheets": [{"size": "A3", "format": "frame_a3"}, {"size": "A3", "format": "old_a3"}],
  "tables": [
    {"id": 1, "fromFormat": true, "segments": [{"sheet": 2, "position": {"x": 300, "y": 20}}], "columns": [40, 60],
     "rows": [8], "cells": [{"row": 1, "column": 1, "lines": ["Changes"]}], "repeatRegions": [{"model": 1}]},
    {"id": 2, "segments": [{"sheet": 1, "position": {"x": 20, "y": 20}}], "columns": [40, 60], "rows": [8, 8],
     "cells": [{"row": 1, "column": 1, "lines": ["Material"]}, {"row": 1, "column": 2, "lines": ["steel"]}]},
    {"id": 3, "segments": [{"sheet": 1, "position": {"x": 90, "y": 90}}], "columns": [40], "rows": [8],
     "cells": [{"row": 1, "column": 1, "lines": ["preliminary"]}]}],
  "symbolDefinitions": [{"id": 1, "name": "weld", "groups": [{"id": 1, "name": "all around"}]},
    {"id": 2, "name": "draft"}, {"id": 3, "name": "released"}],
  "symbols": [{"id": 7, "definition": "weld", "position": {"x": 100, "y": 50}},
    {"id": 8, "definition": "draft", "position": {"x": 20, "y": 20}},
    {"id": 9, "definition": "released", "position": {"x": 200, "y": 100}}],
  "notes": [{"id": 3, "lines": ["All edges"], "position": {"x": 100, "y": 50}},
    {"id": 4, "lines": ["preliminary"], "position": {"x": 200, "y": 100}}],
  "views": [{"id": 1, "name": "FRONT", "sheet": 1, "model": "BOLT.prt", "position": {"x": 50, "y": 90},
             "displayStyle": 4}])";

// BOLT.PRT, a generic; UNIT.ASM, which uses it; PLAN.DRW of both.
inline void writeExampleModels(const World& world) {
  const auto put = [&](const char* file, const std::string& members) {
    writeBytes(world.models() + "/" + file, "{\"format\": 1, " + members + "}");
  };
  const std::string parameters = exampleParameters();
  put("bolt.prt.1", parameters + "," + kExampleSolid + "," + kExamplePart);
  put("unit.asm.1", parameters + "," + kExampleSolid + "," + kExampleAssembly);
  put("plan.drw.1", parameters + "," + kExampleDrawing);
  put("screw_old_1.prt.1", parameters);
  put("screw_m6.prt.1", parameters);
  put("blank.prt.1", parameters);
  put("spring.prt.1", R"("dimensions": [{"id": 1, "symbol": "d12", "value": 20.0}], )" + parameters);
  for (const char* format : {"frame_a3.frm.1", "old_a3.frm.1"}) put(format, R"("sheets": [{"size": "A3"}])");
  for (const char* folder : {"out", "exchange", "pdf", "viewer", "scans"})
    std::filesystem::create_directories(world.models() + "/" + folder);
  std::filesystem::create_directories(world.temp() + "/other/release");
  os::mounts().set(L'b', world.temp() + "/other");
}

inline void writeExamplePackage(World& world) {
  const std::string shipped = sourceFolder() + "/examples/packages/standards/";
  for (const char* file : {"models/edges.txt", "models/released.sym", "models/revisions.tbl", "materials/S235JR.mtl"})
    world.member(file, readBytes(shipped + file));
  world.member("models/layers.prt.1", R"({"format": 1, "layers": [{"id": 1, "name": "03_POINTS", "rules": ["r"]}]})");
  world.member("models/templates/a3_part.drw.1", R"({"format": 1, "sheets": [{"size": "A3"}]})");
  world.member("models/frame_a3.frm.1", R"({"format": 1, "sheets": [{"size": "A3"}]})");
  world.member("models/iso2768.txt", "! medium\nlinear 0.2\n");
  world.member("models/looks.txt", "[steel]\ncolor 0.62 0.64 0.67\n");
  world.member("models/checks.txt", "no_material off\n");
  world.member("models/settings/iso.dtl", "text_height 3.5\n");
  world.member("models/ap242.dep_step", "ap242");
  world.member("models/stamp.py", "");
  world.member("models/trails/refresh.txt", "! refresh\n~ Command `ProCmdDwgUpdateSheets`\n");
  world.member("reports/materials.xlsx", "");
  world.member("reports/materials.csv", "file name;RHO\nBOLT;2\n");
  world.member("reports/dimensions.csv", "model name;dimension name;value\nBOLT;d12;25\nUNIT;d12;25\n");
  world.member("reports/colours.csv", "model name;parameter name;present value;value\n*;COLOR;red;blue\n");
  world.member("reports/notes.csv", "ID;Item value\n3;Edges broken\n");
}

}  // namespace test

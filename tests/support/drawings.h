// A drawing of three models on three sheets, for tests of several layers.
#pragma once

#include <string>

#include "support/world.h"

namespace test {

// Its current sheet is the second, its current model PINION.
inline const char* const kPairDrawing = R"({
  "format": 1,
  "parameters": [{"name": "NUMBER", "type": "string", "value": "D-22"},
                 {"name": "COLOR", "type": "string", "value": "white"}],
  "dimensions": [{"id": 1, "value": 3.0, "text": ["@D H7"], "tolerance": {"upper": 0.2, "lower": 0.2}}],
  "models": [{"name": "GEAR", "type": "prt"}, {"name": "PINION", "type": "prt"}, {"name": "PAIR", "type": "asm"}],
  "currentModel": "PINION.prt",
  "currentSheet": 2,
  "sheets": [
    {"name": "FRONT", "size": "A3", "scale": 0.5, "format": "frame_a3"},
    {"size": "A4", "portrait": true, "scale": 2, "format": "frame_a4",
     "matrix": {"scaleX": 2, "scaleY": 0.5, "offsetX": 10, "offsetY": -1}},
    {"size": "variableMm", "width": 500, "height": 250}],
  "tables": [
    {"id": 1, "fromFormat": true, "segments": [{"sheet": 1, "position": {"x": 100, "y": 20}}],
     "columns": [40, 60], "rows": [8, 8, 8],
     "cells": [{"row": 1, "column": 1, "lines": ["&COLOR", "&NUMBER"]}, {"row": 2, "column": 2, "lines": ["free"]}],
     "repeatRegions": [{"model": 1}]},
    {"id": 4, "segments": [{"sheet": 3, "position": {"x": 5, "y": 6}}, {"sheet": 2, "position": {"x": 7, "y": 8}}],
     "columns": [10], "rows": [10], "repeatRegions": [{"model": 3}, {"model": 3}]}],
  "symbolDefinitions": [{"id": 1, "name": "weld"}, {"id": 2, "name": "unused"}],
  "symbols": [{"id": 7, "definition": "weld", "sheet": 2, "position": {"x": 1, "y": 2}, "texts": ["a5"]},
              {"id": 8, "definition": "lost", "sheet": 1, "position": {"x": 1, "y": 2}}],
  "notes": [{"id": 3, "name": "EDGES", "lines": ["All edges", "&COLOR"], "sheet": 2, "position": {"x": 9, "y": 9}},
            {"id": 5, "lines": ["free of burrs"], "position": {"x": 9, "y": 9}}],
  "shownDimensions": [{"model": "GEAR.prt", "id": 2}, {"model": "PINION.prt", "id": 3, "reference": true}],
  "views": [{"id": 1, "name": "LEFT", "sheet": 1, "model": "GEAR.prt", "position": {"x": 50, "y": 90}},
            {"id": 2, "name": "DETAIL", "sheet": 1, "model": "PINION.prt", "scale": 5, "position": {"x": 9, "y": 90}}]
})";
inline const char* const kGear = R"({
  "format": 1,
  "parameters": [{"name": "COLOR", "type": "string", "value": "red"}],
  "dimensions": [{"id": 1, "value": 1.0, "text": ["hidden"]},
                 {"id": 2, "value": 2.0, "text": ["TIP @D", "both sides"], "tolerance": {"upper": 0.1, "lower": 0.1}}]
})";
inline const char* const kPinion = R"({
  "format": 1,
  "parameters": [{"name": "COLOR", "type": "string", "value": "blue"},
                 {"name": "TEETH", "type": "integer", "value": 20},
                 {"name": "MODULE", "type": "double", "value": 2.5},
                 {"name": "HARD", "type": "boolean", "value": true}],
  "dimensions": [{"id": 3, "value": 1.0, "reference": true, "tolerance": {"upper": 0.2, "lower": 0.1}},
                 {"id": 4, "value": 1.0}]
})";

// PAIR.DRW with its models, in a folder.
inline void writePair(const std::string& folder) {
  writeBytes(folder + "/pair.drw.1", kPairDrawing);
  writeBytes(folder + "/gear.prt.1", kGear);
  writeBytes(folder + "/pinion.prt.1", kPinion);
  writeBytes(folder + "/pair.asm.1", R"({"format": 1})");
}

}  // namespace test

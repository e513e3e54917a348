// A drawing with placed symbols and notes on two sheets, and what of them a saved document holds as one short text.
#pragma once

#include <string>

#include "actions/action_fixture.h"
#include "creo/ProUtil.h"
#include "headless/store/document.h"
#include "text/encoding.h"
#include "text/numbers.h"

namespace test {

// Sheet 1 is A3 (420 by 297), its own coordinates are the drawing's; on sheet 2, an upright A4 (210 by 297), they are
// x * 2 + 10 and y / 2 - 1. Symbol 9 and note 5 stand there at (100, 10).
inline const char* const kDetailDrawing = R"({"format": 1,
  "parameters": [{"name": "NUMBER", "type": "string", "value": "D-22"}],
  "models": [{"name": "GEAR", "type": "prt"}, {"name": "PAIR", "type": "asm"}],
  "sheets": [{"size": "A3", "format": "frame_a3"},
             {"size": "A4", "portrait": true,
              "matrix": {"scaleX": 2, "scaleY": 0.5, "offsetX": 10, "offsetY": -1}}],
  "symbolDefinitions": [
    {"id": 1, "name": "weld", "groups": [
      {"id": 1, "name": "side", "groups": [{"id": 2, "name": "near", "groups": [{"id": 3, "name": "all around"}]}]},
      {"id": 4, "name": "all over"}]},
    {"id": 2, "name": "rough"}],
  "symbols": [{"id": 7, "definition": "weld", "position": {"x": 100, "y": 50}, "height": 2, "texts": ["a5"]},
              {"id": 8, "definition": "rough", "attachment": 3, "position": {"x": 200, "y": 100}},
              {"id": 9, "definition": "lost", "sheet": 2, "position": {"x": 45, "y": 22}}],
  "notes": [{"id": 3, "name": "EDGES", "lines": ["All edges", [{"text": "free ", "height": 5, "font": "iso"}, {"text": "of burrs"}]],
             "position": {"x": 100, "y": 50}},
            {"id": 4, "lines": ["Scale 1:2"], "position": {"x": 200, "y": 100}, "view": -2},
            {"id": 5, "lines": ["Scale 1:5"], "sheet": 2, "position": {"x": 45, "y": 22}}]})";

class DetailTest : public ActionTest {
 protected:
  static void fill(const World& world) {
    writeBytes(world.models() + "/sheets.drw.1", kDetailDrawing);
    writeBytes(world.models() + "/gear.prt.1", R"({"format": 1})");
    writeBytes(world.models() + "/pair.asm.1", R"({"format": 1})");
  }
  // Runs the tasks and a save on the drawing, where one operation, or two, fail once if they have names; what the log
  // told of the drawing, which comes behind its models.
  static std::wstring work(World& own, const std::string& tasks, const std::string& failing = "",
                           creo::ProError code = creo::ProGeneralError, const std::string& failingToo = "") {
    fill(own);
    own.list("list.xml", tasks + task("saveModel"));
    own.start();
    creo::ProConfigoptSet(L"pro_symbol_dir", L"d:\\");
    own.open(L"SHEETS", creo::ProMdlType::drawing);
    own.openTool();
    own.choose("list.xml");
    if (!failing.empty()) own.session().failNext(failing, code);
    if (!failingToo.empty()) own.session().failNext(failingToo, code);
    own.pressStart();
    EXPECT_TRUE(failing.empty() || own.session().calls(failing) > 0) << failing;
    const std::wstring log = told(own.log());
    const std::size_t begin = log.rfind(L"B0 ");
    return begin == log.npos ? log : log.substr(begin);
  }
  static headless::ModelRecord saved(const World& own) {
    headless::ModelRecord record;
    const headless::JsonFault fault = headless::readDocument(own.document("SHEETS.drw"), record);
    EXPECT_FALSE(fault) << text::toUtf8(fault.reason);
    return record;
  }
  static std::string place(int sheet, const headless::PointRecord& at) {
    return "@" + std::to_string(sheet) + "(" + text::toUtf8(text::shortest(at.x)) + "," +
           text::toUtf8(text::shortest(at.y)) + ")";
  }
  // "7:weld@1(100,50) ...", with the ids of shown groups as "[1,2]".
  static std::string symbols(const World& own) {
    std::string all;
    for (const headless::SymbolRecord& symbol : saved(own).symbols) {
      std::string groups;
      for (const int id : symbol.groups) groups += (groups.empty() ? "[" : ",") + std::to_string(id);
      all += (all.empty() ? "" : " ") + std::to_string(symbol.id) + ":" + symbol.definition +
             place(symbol.sheet, symbol.position) + groups + (groups.empty() ? "" : "]") +
             (symbol.erased ? " (erased)" : "");
    }
    return all;
  }
  // "3@1(100,50)All edges/free <5>|of burrs": lines behind "/", pieces behind "|", heights in angles.
  static std::string notes(const World& own) {
    std::string all;
    for (const headless::NoteRecord& note : saved(own).notes) {
      all += (all.empty() ? "" : " ") + std::to_string(note.id) + place(note.sheet, note.position);
      for (std::size_t i = 0; i < note.lines.size(); ++i) {
        all += i > 0 ? "/" : "";
        for (std::size_t j = 0; j < note.lines[i].texts.size(); ++j) {
          const headless::NoteTextRecord& piece = note.lines[i].texts[j];
          all += (j > 0 ? "|" : "") + piece.text;
          if (piece.height > 0) all += "<" + text::toUtf8(text::shortest(piece.height)) + ">";
        }
      }
      if (note.erased) all += " (erased)";
    }
    return all;
  }
  static bool has(const std::wstring& log, std::wstring_view piece) { return log.find(piece) != log.npos; }
};

}  // namespace test

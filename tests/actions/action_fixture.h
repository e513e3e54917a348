// Actions, run through lists as a user runs them.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "support/world.h"
#include "text/pieces.h"

namespace test {

// What a log tells of the actions, joined by "|": normal lines without indent, warnings behind "W:", errors behind
// "E:". Titles of the run, debug lines and the word "Filter" are left out.
inline std::wstring told(const std::wstring& log) {
  std::wstring all;
  for (const std::wstring& line : text::lines(log)) {
    if (line.empty() || line[0] > L'3') continue;
    std::wstring piece(text::trimmed(std::wstring_view(line).substr(1)));
    if (line[0] != L'0') {
      // Behind action and model: "(ERR) B0 Save model - work now on BRACKET.PRT - text".
      std::size_t model = piece.find(L" - work now on ");
      model = model == piece.npos ? piece.find(L" -  - ") : model;
      const std::size_t end = piece.find(L" - ", model + 3);
      const std::wstring_view said = std::wstring_view(piece).substr(end + (piece[end + 3] == L'-' ? 5 : 3));
      piece = (line[0] == L'2' ? L"E:" : L"W:") + std::wstring(text::trimmed(said));
    }
    if (piece.ends_with(L"Filter")) continue;
    all += (all.empty() ? L"" : L"|") + piece;
  }
  return all;
}

class ActionTest : public testing::Test {
 protected:
  // Runs tasks as the Body of a list on a model.
  std::wstring run(const std::string& tasks, const std::wstring& name = L"BRACKET",
                   creo::ProMdlType type = creo::ProMdlType::part) {
    world.list("list.xml", tasks);
    world.runOn(name, type, "list.xml");
    return told(world.log());
  }
  // Attributes that let a task run on every kind of model.
  static std::string task(const std::string& type, const std::string& attributes = "",
                          const std::string& children = "") {
    return "<task type='" + type + "' version='3' forPRT='true' forASM='true' forDRW='true' forEF='false' " +
           attributes + ">" + children + "</task>";
  }

  World world;
};

}  // namespace test

// Runs of a small package, or of the example one, on a folder of models.
#pragma once

#include "kelvane/program_fixture.h"

namespace test {

inline const std::string kAddNorm =
    "<task type='addModelParameter' version='3' forPRT='true' forASM='true' forDRW='true' forEF='false'"
    " forInstances='false' count='1' name_0='NORM' type_0='String' value_0='WN-100'/>";
inline const std::string kSave =
    "<task type='saveModel' version='3' forPRT='true' forASM='true' forDRW='true' forEF='false'/>";

class RunFixture : public ProgramTest {
 protected:
  void SetUp() override {
    list("norm.xml", kAddNorm + kSave);
    list("unsaved.xml", kAddNorm);
  }

  Ended runPackage(const std::string& package, const std::string& list, const std::vector<std::string>& more) {
    std::vector<std::string> words = {"run", package, list, models()};
    words.insert(words.end(), more.begin(), more.end());
    return kelvane(words);
  }
  Ended run(const std::string& list, const std::vector<std::string>& more = {}) {
    return runPackage(path("standards"), list, more);
  }
  Ended runExample(const std::string& list, const std::vector<std::string>& more = {}) {
    return runPackage(example("packages/standards"), list, more);
  }
  // PLAN.DRW with the view FRONT of PIN.PRT, and the list "pdf", which exports it.
  void viewOfAPin() const {
    file("models/pin.prt.1", R"({"format": 1, "solid": {"primitives": [{"type": "box", "size": [8, 4, 2]}]}})");
    file("models/plan.drw.1", R"({"format": 1, "sheets": [{"size": "A4"}], "models": [{"name": "PIN", "type": "prt"}],
        "views": [{"id": 1, "name": "FRONT", "model": "PIN.prt", "position": {"x": 100, "y": 100}}]})");
    list("pdf.xml",
         "<task type='exportpdf2d' version='3' forDRW='true' forEF='false' folderFromModel='true' file='@mdln@' "
         "overwriteExisting='true'/>");
  }
  void workspace() const { std::filesystem::copy(example("workspace"), models()); }

  // The models that were worked, in their order: "A1.PRT A2.PRT".
  static std::string workedOf(const Ended& ended) {
    std::string worked;
    std::istringstream lines(ended.err);
    for (std::string line; std::getline(lines, line);) {
      const std::size_t close = line.find("] ");
      if (!line.starts_with('[') || close == line.npos) continue;
      worked += (worked.empty() ? "" : " ") + line.substr(close + 2, line.find("  ", close) - close - 2);
    }
    return worked;
  }
};

}  // namespace test

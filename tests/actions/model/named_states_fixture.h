// An assembly, a part and a drawing that keep things under names.
#pragma once

#include <map>
#include <optional>

#include "actions/action_fixture.h"
#include "creo/ProMdl.h"
#include "headless/model/models.h"

namespace test {

class NamedStates : public ActionTest {
 protected:
  // A document beside the others, or in place of one of them.
  void document(const std::string& file, const std::string& members) {
    documents_[file] = "{\"format\": 1, " + members + "}";
  }
  void SetUp() override {
    document("gear.prt.1",
             R"("features": [{"id": 3, "name": "MID", "type": 923}, {"id": 4, "name": "BODY", "type": 917}],
        "views": [{"id": 1, "name": "FRONT"}], "simplifiedReps": [{"id": 1, "name": "LIGHT"}],
        "crossSections": [{"id": 1, "name": "OLD", "oldForm": true}, {"id": 2, "name": "A`B"}],
        "combinedStates": [{"id": 1, "name": "HALF", "view": "FRONT", "crossSection": "OLD"}])");
    document("sub.asm.1", R"("simplifiedReps": [{"id": 2, "name": "LIGHT"}])");
    document("lone.prt.1", R"("simplifiedReps": [{"id": 1, "name": "LIGHT"}])");
    document("skel.prt.1", R"("skeleton": true)");
    document("sheet.drw.1", R"("models": [{"name": "GEAR", "type": "prt"}], "views": [{"id": 1, "name": "FRONT"}])");
    document("drive.asm.1",
             R"("features": [{"id": 3, "name": "MID", "type": 923}, {"id": 5, "name": "BORE", "type": 911}],
        "components": [{"name": "GEAR", "type": "prt", "feature": 11}, {"name": "SUB", "type": "asm", "feature": 12},
          {"name": "SKEL", "type": "prt", "feature": 13}, {"name": "DRIVE", "type": "asm", "feature": 15}],
        "layers": [{"id": 1, "name": "DATUMS"}],
        "layerStates": [{"name": "QUIET", "layers": [{"name": "datums", "status": "blank"}, {"name": "GONE"}]}],
        "views": [{"id": 1, "name": "FRONT", "alternateName": "Vorne"}, {"id": 2, "name": "BACK"}],
        "simplifiedReps": [{"id": 1, "name": "LIGHT", "defaultAction": "exclude",
            "items": [{"feature": 5, "action": "include"}]}, {"id": 2, "name": "ROUGH"}],
        "explodedStates": [{"id": 1, "name": "OPEN"}, {"id": 2, "name": "WIDE"}],
        "styleStates": [{"id": 1, "name": "GLASS"}],
        "crossSections": [{"id": 1, "name": "MIDDLE"}],
        "combinedStates": [{"id": 4, "name": "LOST", "view": "GONE", "styleState": "GLASS"}])");
  }

  // Each run has a world of its own.
  std::wstring onModel(const std::string& tasks, const std::wstring& name, creo::ProMdlType type) {
    return onFailing("", creo::ProNoError, tasks, name, type);
  }
  std::wstring onAssembly(const std::string& tasks) { return onModel(tasks, L"DRIVE", creo::ProMdlType::assembly); }
  std::wstring onPart(const std::string& tasks) { return onModel(tasks, L"GEAR", creo::ProMdlType::part); }
  // The same, where the operation fails in its next call.
  std::wstring onFailing(const std::string& operation, creo::ProError code, const std::string& tasks,
                         const std::wstring& name = L"DRIVE", creo::ProMdlType type = creo::ProMdlType::assembly) {
    here_.reset();
    here_.emplace();
    here().config("kvd_filter_curmod=1\nkvd_filter_inst=1");
    for (const auto& [file, content] : documents_) writeBytes(here().models() + "/" + file, content);
    here().list("list.xml", tasks);
    here().start();
    here().open(name, type);
    if (!operation.empty()) here().session().failNext(operation, code);
    here().run("list.xml");
    return told(here().log());
  }
  World& here() { return *here_; }

  headless::ModelDocument& loaded(const std::wstring& name, creo::ProMdlType type) {
    auto& models = here().session().models();
    return *models.find(models.inMemory(name, type).value)->document;
  }
  headless::ModelDocument& drive() { return loaded(L"DRIVE", creo::ProMdlType::assembly); }
  static creo::ProMdl drivesHandle() { return creo::ProMdlInit(L"DRIVE", creo::ProMdlType::assembly).value; }
  headless::ModelDocument& gear() { return loaded(L"GEAR", creo::ProMdlType::part); }

 private:
  std::map<std::string, std::string> documents_;
  std::optional<World> here_;
};

}  // namespace test

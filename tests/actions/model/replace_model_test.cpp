// Components and models of drawings, replaced and taken away.
#include <gmock/gmock.h>

#include "actions/action_fixture.h"
#include "actions/last_row.h"
#include "creo/ProReplace.h"
#include "creo/ProUtil.h"
#include "headless/model/models.h"

namespace test {
namespace {

using creo::ProMdlType;

constexpr const char* kTop = R"({"format": 1, "components": [{"name": "GEAR", "type": "prt", "feature": 5},
  {"name": "GEAR_2", "type": "prt", "feature": 6}, {"name": "GEAR", "type": "prt", "feature": 7}],
  "familyTable": {"items": [{"type": "component", "name": "GEAR"}],
    "instances": [{"name": "BARE", "values": {"GEAR": "N"}}]}})";
constexpr const char* kSheet = R"({"format": 1, "models": [{"name": "GEAR", "type": "prt"},
    {"name": "GONE", "type": "prt"}, {"name": "NUT", "type": "prt"}, {"name": "GEAR_2", "type": "prt"}],
  "currentModel": "GEAR.prt", "views": [{"id": 1, "name": "FRONT", "sheet": 1, "model": "GEAR.prt"}],
  "shownDimensions": [{"model": "GEAR.prt", "id": 1}, {"model": "GEAR.prt", "id": 2}, {"model": "GONE.prt", "id": 1}],
  "notes": [{"id": 1, "lines": ["&model_name:4 and &model_name:1 &:2 &X:d"]}],
  "tables": [{"id": 1, "segments": [{}], "columns": [1], "rows": [1],
              "repeatRegions": [{"model": 3}], "cells": [{"row": 1, "column": 1, "lines": ["&type:3"]}]}]})";

class ReplaceModel : public ActionTest {
 protected:
  void SetUp() override {
    const std::string folder = world.models();
    writeBytes(folder + "/top.asm.1", kTop);
    writeBytes(folder + "/sheet.drw.1", kSheet);
    writeBytes(folder + "/outer.asm.1", R"({"format": 1, "components": [{"name": "TOP", "type": "asm"}]})");
    writeBytes(folder + "/wheel.asm.1", R"({"format": 1, "dimensions": [{"id": 2, "value": 1.0}]})");
    for (const char* part : {"gear", "gear_2", "nut"})
      writeBytes(folder + "/" + part + ".prt.1", R"({"format": 1, "familyTable": {"items": [],
          "instances": [{"name": ")" + std::string(part) +
                                                     R"(_ROW"}]}})");
  }
  headless::ModelRecord& record(const wchar_t* name, ProMdlType type) {
    return world.session().models().find(creo::ProMdlInit(name, type).value)->document->record;
  }
  // "GEAR.PRT NUT.PRT"
  static std::wstring uses(const wchar_t* name, ProMdlType type) {
    std::wstring all;
    for (const auto& entry : creo::ProMdlDependenciesList(creo::ProMdlInit(name, type).value).value)
      all += (all.empty() ? L"" : L" ") + entry.name + L"." + entry.typeText;
    return all;
  }
};

TEST_F(ReplaceModel, ComponentsAreReplacedUnlessItMakesACircle) {
  EXPECT_EQ(
      L"B0 Replace model|GEAR.PRT is replaced by WHEEL.ASM|E:LOST.PRT can't be retrieved|No model is called X*|"
      L"E:namef_7 or namet_7 can't be put together|"
      L"B1 Replace model|E:GEAR_2.PRT can't be replaced by OUTER.ASM, which would use itself then|"
      L"B2 Replace model|E:GEAR_2.PRT can't be replaced by TOP.ASM, which would use itself then|"
      L"B3 Replace model|GEAR_2.PRT is replaced by NUT_ROW.PRT|B4 Replace model|NUT_ROW.PRT stays as it is|"
      L"B5 Replace model|E:The attribute 'namef_0' is missing",
      lastRow(run(task("replaceModel",
                       "namef_0='gear' namet_0='wheel.asm' namef_1='GEAR_2' namet_1='lost' namef_2='X*' "
                       "namet_2='nut' namef_7='GEAR_2'") +
                      task("replaceModel", "namef_0='GEAR_2' namet_0='outer.asm'") +
                      task("replaceModel", "namef_0='GEAR_2' namet_0='top.ASM'") +
                      task("replaceModel", "namef_0='GEAR_*' namet_0='nut_row'") +
                      task("replaceModel", "namef_0='NUT_ROW' namet_0='nut_row'") + task("replaceModel"),
                  L"TOP", ProMdlType::assembly)));
  EXPECT_EQ(L"WHEEL.ASM NUT_ROW.PRT", uses(L"TOP", ProMdlType::assembly));
  const headless::ModelRecord& top = record(L"TOP", ProMdlType::assembly);
  EXPECT_EQ("NUT_ROW<NUT>", top.components[1].name);
  EXPECT_EQ(7, top.components[2].feature);
  EXPECT_EQ("WHEEL", top.familyTable->items.list[0].name);
  EXPECT_EQ("WHEEL", top.familyTable->instances[0]->values[0].name);
  EXPECT_EQ(creo::ProNotFound, creo::ProConfigoptArrayGet(L"remember_replaced_components").error);
  // Who is used stays in memory, who isn't any more may go.
  EXPECT_EQ(creo::ProNoError, creo::ProMdlErase(creo::ProMdlInit(L"GEAR", ProMdlType::part).value));
  EXPECT_EQ(creo::ProGeneralError, creo::ProMdlErase(creo::ProMdlInit(L"WHEEL", ProMdlType::assembly).value));
}

TEST_F(ReplaceModel, TheOptionIsPutBackAfterAFailureToo) {
  world.list("list.xml", task("replaceModel", "namef_0='GEAR' namet_0='nut'"));
  world.start();
  world.open(L"TOP", ProMdlType::assembly);
  world.session().setOption(L"remember_replaced_components", L"yes");
  world.session().failNext("ProAsmcompsReplace", creo::ProGeneralError);
  world.run("list.xml");
  EXPECT_EQ(L"B0 Replace model|E:GEAR.PRT can't be replaced by NUT.PRT", lastRow(told(world.log())));
  EXPECT_EQ(std::vector<std::wstring>{L"yes"}, creo::ProConfigoptArrayGet(L"remember_replaced_components").value);
  EXPECT_EQ(L"GEAR.PRT GEAR_2.PRT", uses(L"TOP", ProMdlType::assembly));
}

TEST_F(ReplaceModel, ADrawingShowsAnotherModelOfTheSameFamilyTable) {
  writeBytes(world.models() + "/gear.prt.1", R"({"format": 1, "dimensions": [{"id": 2, "value": 1.0}],
      "familyTable": {"items": [], "instances": [{"name": "GEAR_ROW"}]}})");
  const std::wstring family = L": a drawing takes only a model of the same family table, and that couldn't be shown|";
  EXPECT_EQ(L"B0 Replace model|E:GEAR.PRT can't be replaced by WHEEL.ASM" + family +
                L"B1 Replace model|GEAR.PRT is replaced by GEAR_ROW.PRT|"
                L"B2 Replace model|E:GEAR_ROW.PRT can't be replaced by NUT.PRT, which the drawing has already|"
                L"B3 Replace model|E:GONE.PRT can't be replaced by GEAR_2_ROW.PRT" +
                family.substr(0, family.size() - 1),
            lastRow(run(task("replaceModel", "namef_0='GEAR' namet_0='wheel.asm'") +
                            task("replaceModel", "namef_0='GEAR' namet_0='gear_row'") +
                            task("replaceModel", "namef_0='GEAR_ROW' namet_0='nut.prt'") +
                            task("replaceModel", "namef_0='GONE' namet_0='gear_2_row'"),
                        L"SHEET", ProMdlType::drawing)));
  const headless::ModelRecord& sheet = record(L"SHEET", ProMdlType::drawing);
  EXPECT_EQ(L"GEAR_ROW.PRT GONE.PRT NUT.PRT GEAR_2.PRT", uses(L"SHEET", ProMdlType::drawing));
  EXPECT_EQ("GEAR_ROW.prt", sheet.views[0].model);
  EXPECT_EQ("GEAR_ROW.prt", sheet.currentModel);
  // The part has a dimension 2 alone.
  ASSERT_EQ(2U, sheet.shownDimensions.size());
  EXPECT_EQ(2, sheet.shownDimensions[0].id);
  EXPECT_EQ("GEAR_ROW.prt", sheet.shownDimensions[0].model);
}

TEST_F(ReplaceModel, ModelsThatNothingShowsAreRemoved) {
  EXPECT_EQ(
      L"B0 Remove unused drawing models|GONE.PRT is removed|NUT.PRT stays: a table or a text refers to it|"
      L"GEAR_2.PRT stays: a table or a text refers to it|"
      L"B1 Remove unused drawing models|NUT.PRT stays: a table or a text refers to it|"
      L"GEAR_2.PRT stays: a table or a text refers to it|No model is removed",
      lastRow(
          run(task("removeUnusedDrawingModels") + task("removeUnusedDrawingModels"), L"SHEET", ProMdlType::drawing)));
  const headless::ModelRecord& sheet = record(L"SHEET", ProMdlType::drawing);
  EXPECT_EQ(L"GEAR.PRT NUT.PRT GEAR_2.PRT", uses(L"SHEET", ProMdlType::drawing));
  EXPECT_EQ("&model_name:3 and &model_name:1 &:2 &X:d", sheet.notes[0].lines[0].text());
  EXPECT_EQ("&type:2", sheet.tables[0].cells[0].lines[0]);
  EXPECT_EQ(2, sheet.tables[0].repeatRegions[0].model);
  EXPECT_EQ(2U, sheet.shownDimensions.size());
}

}  // namespace
}  // namespace test

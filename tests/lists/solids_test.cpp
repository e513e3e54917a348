// Runs whose filters ask what solids hold.
#include <gtest/gtest.h>

#include "support/world.h"
#include "text/pieces.h"

namespace {

using namespace creo;
using test::World;

// The models that an action with the filter items worked on, a blank behind each.
std::wstring worked(const std::string& items) {
  World world;
  test::writeBytes(world.models() + "/cover.prt.1", R"({"format": 1, "material": "STEEL",
      "features": [{"id": 3, "name": "SLOT", "status": "suppressed"}], "layers": [{"id": 1, "name": "01_DATUMS"}]})");
  test::writeBytes(world.models() + "/wheel.prt.1", R"({"format": 1, "relations": ["TEETH = 20 +"],
      "layers": [{"id": 1, "name": "01_DATUMS", "items": [{"type": "feature", "id": 1}]}]})");
  test::writeBytes(world.models() + "/drive.asm.1", R"({"format": 1, "explodedStates": [{"id": 1, "name": "OPEN"}],
      "components": [{"name": "COVER", "type": "prt"}, {"name": "WHEEL", "type": "prt"},
        {"name": "DRIVE", "type": "asm"}]})");
  world.list("filtered.xml",
             "<task type='writeToCreoLog' version='3' forPRT='true' forASM='true' forDRW='true' forEF='true' "
             "message='met'><filter>" +
                 items + "</filter></task>");
  world.runOn(L"DRIVE", ProMdlType::assembly, "filtered.xml");
  std::wstring model, met;
  for (const std::wstring& line : text::lines(world.log())) {
    if (const auto at = line.find(L"work now on "); at != std::wstring::npos) model = line.substr(at + 12);
    if (line.ends_with(L" met")) met += model + L" ";
  }
  return met;
}

TEST(SolidFilters, ChooseTheModelsOfARun) {
  const std::pair<const char*, const wchar_t*> cases[] = {
      {"<i type='layer' currmat='01*' aomi='false' filtertype='true'/>", L"COVER.PRT WHEEL.PRT "},
      {"<i type='layer' currmat='01*' aomi='false' filtertype='false'/>", L"DRIVE.ASM "},
      {"<i type='currentMaterialName' currmat='steel' filtertype='false'/>", L"WHEEL.PRT "},
      {"<i type='keSuppressed' ke='SLOT' filtertype='true' opand='false'/>"
       "<i type='explodestateexists' expldname='OPEN' filtertype='true'/>",
       L"COVER.PRT DRIVE.ASM "},
      {"<i type='isregenerateable' filtertype='true'/>", L"COVER.PRT "},
      {"<i type='isregenerateable' filtertype='false' opand='true'/>"
       "<i type='layer' currmat='*' aomi='true' aomisign='=' aomitf='1' filtertype='true'/>",
       L"WHEEL.PRT "},
  };
  for (const auto& [items, models] : cases) EXPECT_EQ(models, worked(items)) << items;
}

}  // namespace

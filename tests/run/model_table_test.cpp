// The model table: which models enter it, in which order, with which cells, and at what cost.
#include "run/model_table.h"

#include <gtest/gtest.h>

#include "core/state.h"
#include "creo/ProMdl.h"
#include "headless/proui/ui.h"
#include "support/world.h"
#include "text/encoding.h"
#include "text/pieces.h"

namespace {

using namespace creo;
using core::pluginState;
using test::World;

constexpr const char* kMain = "kvanerunner";

std::string joined(const std::vector<std::string>& names) {
  std::string all;
  for (const std::string& name : names) all += (all.empty() ? "" : " ") + name;
  return all;
}

// A gearbox of a shaft, a housing and a family of bolts, with two drawings; the tool is open on one of the models.
class ModelTable : public testing::Test {
 protected:
  void fill() {
    world.part(L"SHAFT").with(L"MASS", 2.5).with(L"PURCHASED", true);
    world.part(L"HOUSING").with(L"MASS", 7);
    world.part(L"BOLT").column(L"MASS").instance(L"BOLT_M6", {"0.1"}).instance(L"BOLT_M8", {"0.2"}).with(L"MASS", 0.3);
    world.assembly(L"UNIT").uses(L"SHAFT", ProMdlType::part).uses(L"BOLT_M6", ProMdlType::part);
    world.assembly(L"GEARBOX")
        .uses(L"UNIT", ProMdlType::assembly)
        .uses(L"HOUSING", ProMdlType::part)
        .uses(L"SHAFT", ProMdlType::part);
    world.drawing(L"SHEET").uses(L"GEARBOX", ProMdlType::assembly);
    world.drawing(L"SHAFT").uses(L"SHAFT", ProMdlType::part);
    world.list("a.xml", "");
  }
  void show(const std::wstring& name, ProMdlType type) {
    fill();
    ASSERT_EQ(0, world.start());
    world.open(name, type);
    world.openTool();
  }
  std::string rows() const { return joined(world.rows()); }
  headless::Ui& ui() { return world.session().ui(); }
  const headless::Dialog& main() { return *ui().dialog(kMain); }
  std::string imageOf(const std::string& row) { return main().image(row + "_type"); }
  std::wstring cell(const std::string& row, const char* column) {
    return main().cellText(run::kModelTable, row, column);
  }

  World world;
};

TEST_F(ModelTable, HoldsWhatTheCurrentModelLeadsToSortedByBytes) {
  show(L"SHEET", ProMdlType::drawing);
  EXPECT_EQ("BOLT.PRT GEARBOX.ASM HOUSING.PRT SHAFT.PRT SHEET.DRW UNIT.ASM", rows())
      << "the generic of an instance, and no instance unless its button is set";
  EXPECT_EQ(L"SHAFT.prt", cell("SHAFT.PRT", "3"));
  EXPECT_EQ("SHAFT.PRT_cb", main().cellComponent(run::kModelTable, "SHAFT.PRT", "1"));
  EXPECT_EQ("SHAFT.PRT_wc", main().cellComponent(run::kModelTable, "SHAFT.PRT", "6"));
  EXPECT_TRUE(main().checked("SHAFT.PRT_cb"));
  EXPECT_FALSE(main().checked("SHAFT.PRT_lock"));
  EXPECT_EQ("fromHDD.gif", main().image("SHAFT.PRT_wc"));
  EXPECT_EQ("part.png", imageOf("SHAFT.PRT"));
  EXPECT_EQ("part_generic.png", imageOf("BOLT.PRT"));
  EXPECT_EQ("drawing.png", imageOf("SHEET.DRW"));
  EXPECT_EQ(L"SHEET", pluginState().currentName);
  EXPECT_EQ(L"DRW", pluginState().currentExt);
  EXPECT_FALSE(main().enabled("HighlightFileBtn_MenuRMBChooser")) << "only assemblies show where a model is";
}

TEST_F(ModelTable, TypeButtonsChooseRowsAndTheWalkGoesOn) {
  show(L"SHEET", ProMdlType::drawing);
  const struct {
    bool part, assembly, drawing, instance, current;
    const char* rows;
  } cases[] = {
      {true, false, false, false, false, "BOLT.PRT HOUSING.PRT SHAFT.PRT"},
      {false, true, false, false, false, "GEARBOX.ASM UNIT.ASM"},
      {false, false, true, false, false, "SHEET.DRW"},
      {true, false, false, true, false, "BOLT.PRT BOLT_M6.PRT HOUSING.PRT SHAFT.PRT"},
      {true, true, true, false, true, "SHEET.DRW"},
      {false, false, false, false, false, ""},
  };
  for (const auto& c : cases) {
    run::setTypeFilters(c.part, c.assembly, c.drawing, c.instance, c.current);
    run::refreshModelTable();
    EXPECT_EQ(c.rows, rows());
  }
  ui().setCheck(kMain, "kvaneAsmFilter", true);
  EXPECT_EQ("GEARBOX.ASM UNIT.ASM", rows()) << "the button rebuilds";
}

TEST_F(ModelTable, AnInstanceAloneWithBothFlagsAndItsGenericElse) {
  show(L"BOLT_M6", ProMdlType::part);
  EXPECT_EQ("BOLT.PRT", rows());
  run::setTypeFilters(true, true, true, true, false);
  run::refreshModelTable();
  EXPECT_EQ("BOLT.PRT BOLT_M6.PRT", rows());
  EXPECT_EQ("part_instance.png", imageOf("BOLT_M6.PRT"));
  run::setTypeFilters(true, true, true, true, true);
  run::refreshModelTable();
  EXPECT_EQ("BOLT_M6.PRT", rows());
}

TEST_F(ModelTable, TheMenuAddsInstancesAndDrawings) {
  show(L"UNIT", ProMdlType::assembly);
  EXPECT_TRUE(main().enabled("HighlightFileBtn_MenuRMBChooser"));
  EXPECT_EQ("BOLT.PRT SHAFT.PRT UNIT.ASM", rows());
  ui().press(kMain, "AddAllDrawingsBtn_MenuRMBChooser");
  EXPECT_EQ("BOLT.PRT SHAFT.DRW SHAFT.PRT UNIT.ASM", rows());
  run::setTypeFilters(true, true, true, true, false);
  ui().press(kMain, "AddAllInstancesBtn_MenuRMBChooser");
  EXPECT_EQ("BOLT.PRT BOLT_M6.PRT BOLT_M8.PRT SHAFT.DRW SHAFT.PRT UNIT.ASM", rows());
}

TEST_F(ModelTable, TheMenuChoosesTheRowsOfADrawingsModels) {
  show(L"SHAFT", ProMdlType::drawing);
  ui().press(kMain, "SelectNoneBtn_MenuRMBChooser");
  ui().press(kMain, "AddAllDrawingMdlsBtn_MenuRMBChooser");
  EXPECT_TRUE(main().checked("SHAFT.PRT_cb"));
  EXPECT_FALSE(main().checked("SHAFT.DRW_cb"));
}

TEST_F(ModelTable, AGenericHasItsLooksAsStartAndAsDependency) {
  world.assembly(L"BOX").uses(L"BOLT", ProMdlType::part);
  show(L"BOX", ProMdlType::assembly);
  EXPECT_EQ("part_generic_dependency.png", imageOf("BOLT.PRT"));
  world.open(L"BOLT", ProMdlType::part);
  EXPECT_EQ("BOLT.PRT", rows()) << "the table follows Creo's current model";
  EXPECT_EQ("part_generic.png", imageOf("BOLT.PRT"));
}

TEST_F(ModelTable, AParameterFillsItsColumnByItsType) {
  world.config("kvd_column_parameter=MASS");
  world.part(L"PIN").with(L"MASS", L"light");
  world.part(L"CAP").with(L"MASS", false);
  world.part(L"ROD");
  test::writeBytes(world.models() + "/lid.prt.1",
                   R"({"format": 1, "parameters": [{"name": "MASS", "type": "double", "value": 3.0, "units": "g"}]})");
  fill();
  world.assembly(L"ALL")
      .uses(L"LID", ProMdlType::part)
      .uses(L"PIN", ProMdlType::part)
      .uses(L"CAP", ProMdlType::part)
      .uses(L"ROD", ProMdlType::part)
      .uses(L"SHAFT", ProMdlType::part)
      .uses(L"HOUSING", ProMdlType::part);
  ASSERT_EQ(0, world.start());
  world.open(L"ALL", ProMdlType::assembly);
  world.openTool();
  EXPECT_EQ(L"3.000000", cell("LID.PRT", "4")) << "in its own unit";
  EXPECT_EQ(L"light|false||2.500000|7", cell("PIN.PRT", "4") + L"|" + cell("CAP.PRT", "4") + L"|" +
                                            cell("ROD.PRT", "4") + L"|" + cell("SHAFT.PRT", "4") + L"|" +
                                            cell("HOUSING.PRT", "4"));
}

const char* kOnlyShaft = "<root><i type=\"filename\" filename=\"shaft*\" filtertype=\"true\"/></root>";

TEST_F(ModelTable, AFilterFileJudgesEveryCandidateUntilItIsDropped) {
  world.member("filters/shaft.xml", kOnlyShaft);
  world.config("kvd_use_global_filter=0");  // a list's empty filter counts as one in force
  world.member("filters/broken.xml", "<root><i type=\"" + std::string(30'000, 'x') + "\"/></root>");
  world.member("filters/cut.xml", "");
  world.member("filters/idle.xml", "<items><i type=\"isSkeleton\" filtertype=\"true\"/></items>");
  show(L"SHEET", ProMdlType::drawing);
  pluginState().useGlobFilterNow = 0;
  run::refreshModelTable();
  EXPECT_EQ("act_filterdeac24.png", main().image("kvaneExtFilter"));
  ui().choose("kvanefilter", "kvaneFilterChooser", "shaft.xml");
  EXPECT_EQ("SHAFT.PRT", rows()) << "what a refused model uses is still reached";
  EXPECT_EQ("act_filter24.png", main().image("kvaneExtFilter"));
  ui().choose("kvanefilter", "kvaneFilterChooser", "no Filter");
  EXPECT_EQ("BOLT.PRT GEARBOX.ASM HOUSING.PRT SHAFT.PRT SHEET.DRW UNIT.ASM", rows());
  ui().choose("kvanefilter", "kvaneFilterChooser", "broken.xml");
  EXPECT_EQ("", rows()) << "a filter that can't be read lets nothing pass";
  EXPECT_TRUE(world.logHas(L"The filter t:\\open_kvz_standards\\filters\\broken.xml can't be read"));
  ui().choose("kvanefilter", "kvaneFilterChooser", "idle.xml");
  EXPECT_EQ("BOLT.PRT GEARBOX.ASM HOUSING.PRT SHAFT.PRT SHEET.DRW UNIT.ASM", rows());
  EXPECT_TRUE(world.logHas(L"\\filters\\idle.xml holds no items, every model passes it"));
  ui().choose("kvanefilter", "kvaneFilterChooser", "cut.xml");
  EXPECT_EQ("", rows()) << "nor does one without an element";
  EXPECT_TRUE(world.logHas(L"\\filters\\cut.xml can't be read"));
  ui().choose(kMain, "kvaneKVZChooser", "standards.kvz");
  EXPECT_EQ("BOLT.PRT GEARBOX.ASM HOUSING.PRT SHAFT.PRT SHEET.DRW UNIT.ASM", rows())
      << "a package chosen anew starts without one";
}

TEST_F(ModelTable, TheConfiguredFilterFileIsChosenFromTheStart) {
  world.member("filters/shaft.xml", kOnlyShaft);
  world.config("kvd_ext_filter_file=Shaft.xml");
  show(L"SHEET", ProMdlType::drawing);
  EXPECT_EQ("shaft.xml", joined(ui().dialog("kvanefilter")->selected("kvaneFilterChooser")));
  EXPECT_EQ("SHAFT.PRT", rows());
}

// Items outside a group let every model pass; it is told once, and of a filter that judges.
TEST_F(ModelTable, AListsFilterWithoutAGroupIsTold) {
  for (const char* on : {"true", "false"})
    world.member("actionlists/" + std::string(on) + ".xml",
                 "<list><head/><body/><block active=\"" + std::string(on) +
                     "\"><i type=\"filename\" filename=\"h*\" filtertype=\"true\"/></block><foot/></list>");
  show(L"UNIT", ProMdlType::assembly);
  const std::wstring line = L"true.xml holds no items, every model passes it\n";
  world.choose("false.xml");
  EXPECT_FALSE(world.logHas(L"holds no items"));
  world.choose("true.xml");
  EXPECT_EQ("BOLT.PRT SHAFT.PRT UNIT.ASM", rows());
  const std::wstring log = world.log();
  EXPECT_TRUE(log.find(line) != log.npos && log.find(line) == log.rfind(line)) << text::toUtf8(log);
}

TEST_F(ModelTable, TheListsFilterJudgesByItsModeAndItsOwnWords) {
  const std::string items = "<root><i type='filename' filename='h*' filtertype='true'/></root>";
  const auto list = [&](const std::string& name, const std::string& attributes) {
    std::string text = "<list><head/><body/><block" + attributes + ">" + items + "</block><foot/></list>";
    std::replace(text.begin(), text.end(), '\'', '"');
    world.member("actionlists/" + name, text);
  };
  list("plain.xml", "");
  list("off.xml", " active='false'");
  list("none.xml", " active='true' exists='false'");
  world.part(L"HOUSING");
  world.assembly(L"UNIT").uses(L"HOUSING", ProMdlType::part);
  ASSERT_EQ(0, world.start());
  world.open(L"UNIT", ProMdlType::assembly);
  world.openTool();
  const struct {
    const char* list;
    int mode;
    bool filters;
  } cases[] = {
      {"plain.xml", -1, true}, {"plain.xml", 0, false}, {"plain.xml", 1, true},
      {"off.xml", -1, false},  {"off.xml", 1, true},    {"none.xml", -1, false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.list) + " " + std::to_string(c.mode));
    pluginState().useGlobFilter = c.mode;
    world.choose(c.list);
    EXPECT_EQ(c.filters ? "HOUSING.PRT" : "HOUSING.PRT UNIT.ASM", rows());
    EXPECT_EQ(c.filters ? "act_filter24.png" : "act_filterdeac24.png", main().image("kvaneExtFilter"));
    if (c.mode != 0) EXPECT_EQ(c.filters, ui().dialog("kvanefilter")->checked("kvaneFilterGlobal"));
  }
  world.choose("off.xml");
  ui().setCheck("kvanefilter", "kvaneFilterGlobal", true);
  EXPECT_EQ("HOUSING.PRT", rows());
  ui().setCheck("kvanefilter", "kvaneFilterGlobal", false);
  EXPECT_EQ("HOUSING.PRT UNIT.ASM", rows());
}

TEST_F(ModelTable, AReworkedModelStartsUnselectedAndLocked) {
  world.list("a.xml", "<task type='saveModel' version='3' forPRT='true' forEF='false'/>");
  world.list("b.xml", "");
  world.part(L"PIN");
  ASSERT_EQ(0, world.start());
  world.open(L"PIN", ProMdlType::part);
  world.run("a.xml");
  const auto state = [&](const char* list) {
    world.choose(list);
    return std::string(main().checked("PIN.PRT_cb") ? "chosen" : "left out") +
           (main().checked("PIN.PRT_lock") ? " locked" : "");
  };
  EXPECT_EQ("left out locked", state("a.xml"));
  EXPECT_EQ("chosen", state("b.xml"));
  pluginState().autoUnsetReworkedData = 0;
  EXPECT_EQ("chosen", state("a.xml"));
}

TEST_F(ModelTable, FailingCallsOfTheDialogAreLinesAndTheWalkGoesOn) {
  show(L"SHEET", ProMdlType::drawing);
  const struct {
    const char* operation;
    const wchar_t* line;
    bool complete;
  } cases[] = {
      {"ProUITableRowsInsert", L"<KVD> sourceData - Failure while use ProUITableRowsInsert", false},
      {"ProUITableCellComponentCopy", L"<KVD> sourceData - Failure while use ProUITableCellComponentCopy", true},
      {"ProUITableCellLabelSet", L"<KVD> sourceData - Failure while use ProUITableCellLabelSet", true},
      {"ProUICheckbuttonGetState", L"<KVD> sourceData - Failure while use ProUICheckbuttonGetState", true},
  };
  for (const auto& c : cases) {
    run::clearModelTable();
    const std::size_t before = world.messages().size();
    world.session().failNext(c.operation, ProGeneralError);
    EXPECT_NE(ProNoError, run::rebuildModelTable({})) << c.operation;
    EXPECT_EQ(c.complete ? 6u : 5u, world.rows().size()) << c.operation;
    EXPECT_NE(std::wstring::npos, world.messages().find(c.line, before)) << c.operation;
  }
  run::clearModelTable();
  EXPECT_EQ(ProNoError, run::rebuildModelTable({}));
  EXPECT_EQ("BOLT.PRT GEARBOX.ASM HOUSING.PRT SHAFT.PRT SHEET.DRW UNIT.ASM", rows());
}

// A model without a drawing of its name is no failure; one that is used and can't be had is one, told once.
TEST_F(ModelTable, FailingCallsOfTheWalkAreLinesAndMissesAreNot) {
  fill();
  world.assembly(L"TOP").uses(L"UNIT", ProMdlType::assembly).uses(L"GONE", ProMdlType::part);
  ASSERT_EQ(0, world.start());
  world.open(L"TOP", ProMdlType::assembly);
  world.openTool();
  auto& state = pluginState();
  state.addDrawings = state.addInstances = state.addInherited = 1;
  state.columnParameter = L"MASS";
  const auto failuresOf = [&](const char* operation) {
    run::clearModelTable();
    const std::size_t before = world.messages().size();
    if (*operation) world.session().failNext(operation, ProGeneralError);
    run::rebuildModelTable({});
    std::wstring all;
    for (const std::wstring& line : text::lines(world.messages().substr(before)))
      if (const auto at = line.find(L"Failure while "); at != line.npos) all += line.substr(at + 14) + L"|";
    return all;
  };
  EXPECT_EQ(L"use ProMdlRetrieve|", failuresOf(""));
  for (const char* operation :
       {"ProFamtableInstanceVisit", "ProMdlToModelitem", "ProParameterInit", "ProExtdataInit"}) {
    const std::wstring said = failuresOf(operation);
    const bool isHistory = std::string(operation) == "ProExtdataInit";
    EXPECT_NE(said.npos, said.find(isHistory ? L"read the history" : text::fromUtf8(operation))) << operation;
  }
}

TEST_F(ModelTable, ClearingLeavesNoComponentBehind) {
  show(L"UNIT", ProMdlType::assembly);
  const std::size_t filled = main().size();
  run::clearModelTable();
  EXPECT_EQ(filled - 3 * 4, main().size()) << "four components a row";
  EXPECT_EQ("", rows());
  run::refreshModelTable();
  EXPECT_EQ(filled, main().size());
}

TEST_F(ModelTable, ALongNameKeepsItsRowApartFromOthers) {
  const std::wstring same(60, L'N');
  world.part(same + L"1");
  world.part(same + L"2");
  world.assembly(L"TOP").uses(same + L"1", ProMdlType::part).uses(same + L"2", ProMdlType::part);
  show(L"TOP", ProMdlType::assembly);
  EXPECT_EQ(std::string(60, 'N') + "1.PRT " + std::string(60, 'N') + "2.PRT TOP.ASM", rows());
}

TEST_F(ModelTable, WithoutAServerNothingIsCheckedOut) {
  show(L"UNIT", ProMdlType::assembly);
  run::checkOutSelected();
  EXPECT_EQ(0, world.session().calls("ProServerObjectsCheckout"));
  EXPECT_EQ("fromHDD.gif", main().image("UNIT.ASM_wc"));
}

TEST_F(ModelTable, ModelsThatUseEachOtherEndTheWalk) {
  world.assembly(L"ONE").uses(L"TWO", ProMdlType::assembly);
  world.assembly(L"TWO").uses(L"ONE", ProMdlType::assembly).uses(L"TWO", ProMdlType::assembly);
  show(L"ONE", ProMdlType::assembly);
  EXPECT_EQ("ONE.ASM TWO.ASM", rows());
}

TEST_F(ModelTable, AFillFromManyStartsWalksEachModelOnce) {
  constexpr int kStarts = 40;
  std::vector<ProMdl> starts;
  fill();
  for (int i = 0; i < kStarts; ++i) world.assembly(L"TOP" + std::to_wstring(i)).uses(L"GEARBOX", ProMdlType::assembly);
  ASSERT_EQ(0, world.start());
  world.openTool();
  for (int i = 0; i < kStarts; ++i)
    starts.push_back(ProMdlRetrieve(L"TOP" + std::to_wstring(i), ProMdlType::assembly).value);
  run::clearModelTable();
  const int before = world.session().calls("ProMdlDependenciesList");
  const int named = world.session().calls("ProUITableRownamesGet");
  for (const ProMdl start : starts) run::rebuildModelTable(start);
  EXPECT_EQ(kStarts + 2, world.session().calls("ProMdlDependenciesList") - before);
  EXPECT_EQ(named, world.session().calls("ProUITableRownamesGet"));
  EXPECT_EQ(kStarts + 5u, world.rows().size());

  run::rebuildModelTable(starts.front());
  EXPECT_EQ(kStarts + 2 + 3, world.session().calls("ProMdlDependenciesList") - before) << "a start given again";
}

TEST_F(ModelTable, MoreThanFiveThousandNamesCostTheirNumberAndNoMore) {
  constexpr int kParts = 5200;
  auto top = world.assembly(L"TOP");
  for (int i = kParts; i-- > 0;) {
    world.part(L"P" + std::to_wstring(i));
    top.uses(L"P" + std::to_wstring(i), ProMdlType::part);
  }
  { const auto written = std::move(top); }
  ASSERT_EQ(0, world.start());
  world.openTool();
  const ProMdl start = ProMdlRetrieve(L"TOP", ProMdlType::assembly).value;
  auto& session = world.session();
  const int retrieved = session.calls("ProMdlRetrieve"), named = session.calls("ProUITableRownamesGet");
  run::rebuildModelTable(start);
  EXPECT_EQ(static_cast<std::size_t>(kParts) + 1, world.rows().size());
  EXPECT_LE(session.calls("ProMdlRetrieve") - retrieved, 2 * kParts + 1);
  EXPECT_EQ(1, session.calls("ProUITableRownamesGet") - named) << "the test's own";
  const auto rows = world.rows();
  EXPECT_TRUE(std::is_sorted(rows.begin(), rows.end()));
}

}  // namespace

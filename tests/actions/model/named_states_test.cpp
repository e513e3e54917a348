// Combined states, exploded states, styles and cross sections.
#include "actions/model/named_states_fixture.h"
#include "actions/on_top.h"
#include "creo/ProCombstate.h"
#include "creo/ProExpldstate.h"
#include "creo/ProMdl.h"
#include "creo/ProWindow.h"
#include "text/encoding.h"
#include "text/numbers.h"

namespace test {
namespace {

// "SALES: FRONT,QUIET,,OPEN!,GLASS,MIDDLE/1" for each; "!" where the exploded state shows.
std::string combined(const headless::ModelDocument& document) {
  std::string all;
  for (const headless::CombinedStateRecord& state : document.record.combinedStates)
    all += (all.empty() ? "" : "|") + state.name + ": " + state.view + "," + state.layerState + "," +
           state.simplifiedRep + "," + state.explodedState + (state.exploded ? "!" : "") + "," + state.styleState +
           "," + state.crossSection + "/" + std::to_string(state.sectionVisibility);
  return all;
}

// "MIDDLE OLD@MID+2.5" and what is active behind "; "; "*" behind a visible one, "?" behind one of the old form.
std::string sections(const headless::ModelDocument& document) {
  std::string all;
  for (const headless::CrossSectionRecord& section : document.record.crossSections)
    all += (all.empty() ? "" : " ") + section.name + (section.plane.empty() ? "" : "@" + section.plane) +
           (section.distance == 0 ? "" : "+" + text::toUtf8(text::shortest(section.distance))) +
           (section.visible ? "*" : "") + (section.oldForm ? "?" : "");
  return all + "; " + document.record.activeCrossSection;
}

template <class Records>
std::string names(const Records& records) {
  std::string all;
  for (const auto& record : records) all += (all.empty() ? "" : " ") + record.name;
  return all;
}

constexpr const char* kEverything =
    "orientationname='v*' layerstatename='quiet' simprepname='/^LI/' expldname='O*' stylename='glass' "
    "xsecname='middle' xsecvisi='2' explshow='true' ";

TEST_F(NamedStates, ACombinedStateIsMadeFromWhatIsFoundAndPutsTheModelIntoIt) {
  const auto add = [](const std::string& attributes) { return task("addCombState", attributes); };
  EXPECT_EQ(
      L"B0 add combined state|combined state created|"
      L"B1 add combined state|E:Failure while create new state (Name could be existing, or no elements on combined "
      L"state)|"
      L"B2 add combined state|Set Master Simp Rep|combined state created|"
      L"B3 add combined state|Set current Simp Rep|combined state created|"
      L"B4 add combined state|E:Orientation state couldn't be found|E:Layer state couldn't be found|"
      L"E:Simplified representation couldn't be found|E:Exploded state couldn't be found|"
      L"E:Style state couldn't be found|E:Cross section couldn't be found|"
      L"E:Failure while create new state (Name could be existing, or no elements on combined state)|"
      L"B5 set combined state|Set combined state: SALES",
      onAssembly(add(kEverything + std::string("statename='SALES'")) + add("statename='sales' orientationname='BACK'") +
                 add("statename='ALL' simprepname='MASTER'") + add("statename='NOW' simprepname='CURRENT'") +
                 add("statename='X' orientationname='no' layerstatename='no' simprepname='master' expldname='no' "
                     "stylename='no' xsecname='no'") +
                 task("setCombState", "statename='S*'")));
  EXPECT_EQ(
      "LOST: GONE,,,,GLASS,/0|SALES: FRONT,QUIET,LIGHT,OPEN!,GLASS,MIDDLE/2|ALL: ,,Master Rep,,,/0|"
      "NOW: ,,Master Rep,,,/0",
      combined(drive()));
  const headless::ModelRecord& record = drive().record;
  EXPECT_EQ("SALES FRONT QUIET OPEN GLASS LIGHT", record.activeCombinedState + " " + record.activeView + " " +
                                                      record.activeLayerState + " " + record.activeExplodedState + " " +
                                                      record.activeStyleState + " " + drive().activeRep);
  EXPECT_EQ("MIDDLE*; MIDDLE", sections(drive()));
  EXPECT_EQ(creo::ProLayerDisplay::blank, record.layers.at(0).status);
}

TEST_F(NamedStates, APartHasNoExplodedStatesOrStylesAndADrawingNoCombinedStates) {
  EXPECT_EQ(L"B0 add combined state|combined state created",
            onPart(task("addCombState", "statename='S' orientationname='front' expldname='x' stylename='x'")));
  EXPECT_EQ("HALF: FRONT,,,,,OLD/0|S: FRONT,,,,,/0", combined(gear()));
  EXPECT_EQ(
      L"B0 add combined state|E:Orientation state couldn't be found|"
      L"E:Failure while create new state (Name could be already existing) - Invalid type",
      onModel(task("addCombState", "statename='S' orientationname='front'"), L"SHEET", creo::ProMdlType::drawing));
}

TEST_F(NamedStates, ACombinedStateWhoseViewHasGoneChangesNothing) {
  EXPECT_EQ(
      L"B0 set combined state|E:Can't set the combined state: LOST|"
      L"B1 set combined state|E:Combined state couldn't be found: none",
      onAssembly(task("setCombState", "statename='lost'") + task("setCombState", "statename='none'")));
  EXPECT_EQ("", drive().record.activeCombinedState + drive().record.activeStyleState);
  EXPECT_NE(std::wstring::npos,
            here().messages().find(L"DRIVE: the combined state LOST refers to the view GONE, which isn't there"));
}

// Behind another model a state can't be activated; in the window of that model it can, for as long as that takes.
TEST_F(NamedStates, AModelComesOnTopForItsState) {
  onPart("");
  const creo::ProMdl front = creo::ProMdlCurrentGet().value;
  const creo::ProMdl back = creo::ProMdlRetrieve(L"DRIVE", creo::ProMdlType::assembly).value;
  const creo::ProModelitem open{creo::ProItemType::explodedState, 1, back, {}};
  const creo::ProModelitem state = creo::ProMdlCombStateCreate(back, L"S", {open}, 0, true).value;
  const creo::ProLayerstate quiet{back, L"QUIET"};
  EXPECT_EQ(creo::ProGeneralError, creo::ProCombstateActivate(state));
  EXPECT_EQ(creo::ProGeneralError, creo::ProLayerstateActivate(quiet));
  EXPECT_EQ("", drive().record.activeCombinedState + drive().record.activeLayerState);

  EXPECT_EQ(creo::ProNoError, actions::onTop(back, [&] { return creo::ProCombstateActivate(state); }));
  EXPECT_EQ(creo::ProNoError, actions::onTop(back, [&] { return creo::ProLayerstateActivate(quiet); }));
  EXPECT_EQ("SQUIET", drive().record.activeCombinedState + drive().record.activeLayerState);
  EXPECT_EQ(front, creo::ProMdlCurrentGet().value);

  // Another failure isn't tried again; a model with a window of its own stays where it is.
  int calls = 0;
  const auto refused = [&calls](creo::ProError code) {
    return [&calls, code] {
      ++calls;
      return code;
    };
  };
  EXPECT_EQ(creo::ProNotFound, actions::onTop(back, refused(creo::ProNotFound)));
  EXPECT_EQ(creo::ProGeneralError, actions::onTop(front, refused(creo::ProGeneralError)));
  EXPECT_TRUE(creo::ProObjectwindowCreate(L"DRIVE", creo::ProMdlType::assembly));
  EXPECT_EQ(creo::ProGeneralError, actions::onTop(back, refused(creo::ProGeneralError)));
  EXPECT_EQ(3, calls);
}

TEST_F(NamedStates, WhatACombinedStateCantReferToIsRefused) {
  onAssembly("");
  using creo::ProItemType;
  const creo::ProMdl top = creo::ProMdlCurrentGet().value;
  const creo::ProModelitem front{ProItemType::view, 1, top, {}}, back{ProItemType::view, 2, top, {}};
  const std::pair<std::vector<creo::ProCombstateReference>, creo::ProError> cases[] = {
      {{}, creo::ProBadInputs},
      {{front, back}, creo::ProInvalidType},
      {{creo::ProModelitem{ProItemType::view, 9, top, {}}}, creo::ProInvalidType},
      {{creo::ProModelitem{ProItemType::layer, 1, top, {}}}, creo::ProInvalidType},
      {{front, creo::ProLayerstate{top, L"NONE"}}, creo::ProInvalidType},
      {{front}, creo::ProNoError},
      {{back}, creo::ProBadInputs}};  // the name is taken
  for (const auto& [references, code] : cases)
    EXPECT_EQ(code, creo::ProMdlCombStateCreate(top, L"S", references, 0, false).error);
  EXPECT_EQ(creo::ProBadInputs, creo::ProCompdisplayInit(top, 9).error);
  EXPECT_EQ(creo::ProBadInputs, creo::ProCompdisplayActivate({ProItemType::styleState, 9, top, {}}));
}

TEST_F(NamedStates, AStarDeletesAllCombinedStatesButTheActiveOne) {
  EXPECT_EQ(
      L"B0 add combined state|combined state created|B1 add combined state|combined state created|"
      L"B2 set combined state|Set combined state: B|B3 delete combined state|Delete combined state: LOST|"
      L"Delete combined state: A|E:Can't delete the combined state (could be active): B",
      onAssembly(task("addCombState", "statename='A' orientationname='BACK'") +
                 task("addCombState", "statename='B' xsecname='MIDDLE'") + task("setCombState", "statename='B'") +
                 task("deleteCombState", "name_0='nothing' name_7='*' name_9='A'")));
  EXPECT_EQ("B: ,,,,,MIDDLE/0", combined(drive()));
}

TEST_F(NamedStates, ExplodedStatesAndStyles) {
  EXPECT_EQ(
      L"B0 Add explode state|Explode state created|B1 Add explode state|"
      L"E:Failure while create explode state. (Could be that there is already one with the same name)|"
      L"B2 Set explode state|OPEN|WIDE|B3 Set explode state|OPEN|WIDE|ASIDE|E:Can't found the explosion state|"
      L"B4 Set style|The style is set|B5 Set style|E:Style state couldn't be found|"
      L"B6 Delete explode state|WIDE|ASIDE",
      onAssembly(task("addExplodeState", "statename='ASIDE'") + task("addExplodeState", "statename='wide'") +
                 task("setExplodeState", "statename='/E$/'") + task("setExplodeState", "statename='none'") +
                 task("setCompDisplay", "statename='G*'") + task("setCompDisplay", "statename=''") +
                 task("deleteExplodeState", "name_0='WIDE' name_5='*SIDE'")));
  EXPECT_EQ("OPEN", names(drive().record.explodedStates));
  EXPECT_EQ("", drive().record.activeExplodedState);  // it went
  EXPECT_EQ("GLASS", drive().record.activeStyleState);
}

TEST_F(NamedStates, DeletingAllThatAVisitMeetsLeavesNothing) {
  onAssembly(task("deleteExplodeState", "name_0='*'") + task("deleteXsec", "name_0='*'") +
             task("deleteSimpRep", "name_0='*'") + task("deleteCombState", "name_0='*'") + task("saveModel"));
  const std::string saved = here().document("DRIVE.asm");
  for (const char* member : {"explodedStates", "crossSections", "simplifiedReps", "combinedStates"})
    EXPECT_EQ(std::string::npos, saved.find("\"" + std::string(member) + "\": [\n")) << member;
  EXPECT_NE(std::string::npos, saved.find("styleStates"));
}

TEST_F(NamedStates, CrossSectionsAreMadeAtDatumPlanes) {
  const struct {
    const char* attributes;
    const wchar_t* line;
  } cases[] = {
      {"planename='M*' name='A' distance='7'", L"Created cross section"},
      {"planename='mid' name='B' xsectype='parallel' distance='2.5'", L"Created cross section"},
      {"planename='mid' name='b'", L"E:Can't create cross section (Name be already in use)"},
      {"planename='BODY' name='C'", L"E:Can't create cross section (Plane failure)"},
      {"planename='none' name='C'", L"E:Plane couldn't be found"},
      {"planename='mid' name=''", L"E:Can't create cross section"},
      {"planename='mid' name='C' xsectype='parallel' distance='far'",
       L"E:Can't create cross section (The distance 'far' is no number)"},
      {"planename='mid' name='C' xsectype='parallel' distance='infinite'",
       L"E:Can't create cross section (The distance 'infinite' is no number)"},
      {"planename='mid' name='D' xsectype='parallel' distance='2,5'",
       L"W:'2,5' is read as 2: the decimal sign is a point|Created cross section"},
  };
  std::string tasks;
  std::wstring expected;
  int number = 0;
  for (const auto& entry : cases) {
    tasks += task("addXsec", entry.attributes);
    expected += L"B" + std::to_wstring(number++) + L" Add Xsec|" + entry.line + L"|";
  }
  EXPECT_EQ(expected + L"B9 Update Xsec's|Updated cross sections", onPart(tasks + task("updateXsec")));
  EXPECT_EQ("OLD A`B A@MID B@MID+2.5 D@MID+2; ", sections(gear()));
}

TEST_F(NamedStates, CrossSectionsAreActivatedShownAndDeletedWithWhatRefersToThem) {
  const std::string add =
      task("addXsec", "planename='MID' name='Side'") + task("addXsec", "planename='MID' name='TOP'");
  EXPECT_EQ(
      L"B2 Activate Xsec|Try Activate OLD|B3 Show Xsec|Try Activate OLD|B4 Show Xsec|Try Activate Side|"
      L"Try Activate TOP|B5 Activate Xsec|E:The cross section can't be found|B6 Show Xsec|"
      L"E:The cross section can't be found|B7 Activate Xsec|Try Activate A`B|"
      L"E:A`B can't be selected: there is a backquote in its name",
      onPart(add + task("setXsec", "statename='/O/'") + task("showXsec", "statename='OLD' show='false'") +
             task("showXsec", "statename='/^(Side|TOP)$/' show='true'") + task("setXsec", "statename='none'") +
             task("showXsec", "statename='none' show='true'") + task("setXsec", "statename='A`B'"))
          .substr(std::size(L"B0 Add Xsec|Created cross section|B1 Add Xsec|Created cross section|") - 1));
  EXPECT_EQ("OLD? A`B Side@MID* TOP@MID*; OLD", sections(gear()));
  EXPECT_TRUE(here().session().unknownSteps().empty());
}

TEST_F(NamedStates, NoCrossSectionIsActiveAfterUnsettingAndADeletedOneIsNowhere) {
  EXPECT_EQ(L"B0 Activate Xsec|Try Activate OLD|B1 Activate Xsec|B2 Delete Xsec|OLD|Delete OLD|A`B|A`B|Delete A`B",
            onPart(task("setXsec", "statename='OLD'") + task("setXsec", "unsetall='true' statename='OLD'") +
                   task("deleteXsec", "name_2='o*' name_99='A`B'")));
  EXPECT_EQ("; ", sections(gear()));
  EXPECT_EQ("HALF: FRONT,,,,,/0", combined(gear()));
  EXPECT_TRUE(here().session().unknownSteps().empty());
}

TEST_F(NamedStates, ADialogStepThatMeansNothingIsReported) {
  onPart(task("runMapkey",
              "kvpmode='true' rfe='0' mapkeyc='3' mapkey0='~Activate `visual_dlg0` `Activate`;' "
              "mapkey1='~Command `ProCmdViewVisTool`;~Select `visual_dlg0` `Table` 2 `gone` `name_column`;' "
              "mapkey2='~Activate `visual_dlg0` `K03_VisibilityRMB` 1;'"));
  EXPECT_EQ((std::vector<std::wstring>{L"~Activate `visual_dlg0` `Activate`",
                                       L"~Select `visual_dlg0` `Table` 2 `gone` `name_column`",
                                       L"~Activate `visual_dlg0` `K03_VisibilityRMB` 1"}),
            here().session().unknownSteps());
}

struct Fault {
  const char* operation;
  const char* action;
  std::string attributes;
  const wchar_t* line;
};
class NamedStateFaults : public NamedStates, public testing::WithParamInterface<Fault> {};
TEST_P(NamedStateFaults, AreTold) {
  const Fault& fault = GetParam();
  const std::wstring all = onFailing(fault.operation, creo::ProGeneralError, task(fault.action, fault.attributes));
  EXPECT_NE(std::wstring::npos, (all + L"|").find(std::wstring(fault.line) + L"|")) << text::toUtf8(all);
}
INSTANTIATE_TEST_SUITE_P(
    EachOperation, NamedStateFaults,
    testing::Values(
        Fault{"ProViewIdFromNameGet", "addCombState", "orientationname='FRONT'", L"E:Can't get view id"},
        Fault{"ProModelitemInit", "addCombState", "orientationname='FRONT'", L"E:Can't init model item"},
        Fault{"ProViewNamesGet", "addCombState", "orientationname='FRONT'", L"E:Orientation state couldn't be found"},
        Fault{"ProModelitemInit", "addCombState", "expldname='OPEN'", L"E:Exploded state couldn't be found - i"},
        Fault{"ProCompdisplayInit", "addCombState", "stylename='GLASS'", L"E:Style state couldn't be found - i"},
        Fault{"ProModelitemInit", "addCombState", "xsecname='MIDDLE'", L"E:Can't init the cross section"},
        Fault{"ProCompdisplayInit", "setCompDisplay", "statename='GLASS'", L"E:Style state couldn't be found - i"},
        Fault{"ProCompdisplayActivate", "setCompDisplay", "statename='GLASS'", L"E:Can't set the style"},
        Fault{"ProExpldstateActivate", "setExplodeState", "statename='OPEN'", L"E:Can't set OPEN"},
        Fault{"ProExpldstateDelete", "deleteExplodeState", "name_0='*'", L"E:Can't delete OPEN|WIDE"},
        Fault{"ProXsecDelete", "deleteXsec", "name_0='*'", L"E:MIDDLE can't be deleted"},
        Fault{"ProXsecOldToNewConvert", "updateXsec", "", L"E:Failure while updating cross sections"},
        Fault{"ProMacroExecute", "setXsec", "statename='MIDDLE'",
              L"E:Failure while execute the macro of the cross section"}),
    [](const auto& entry) { return std::to_string(entry.index) + entry.param.action; });

}  // namespace
}  // namespace test

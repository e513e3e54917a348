// Simplified representations.
#include "actions/model/named_states_fixture.h"
#include "creo/ProMdl.h"
#include "creo/ProSimprep.h"
#include "creo/ProSolid.h"
#include "text/encoding.h"

namespace test {
namespace {

std::string names(const headless::ModelDocument& document) {
  std::string all;
  for (const auto& rep : document.record.simplifiedReps) all += (all.empty() ? "" : " ") + rep.name;
  return all;
}

// "11=3 12=4(LIGHT/3)": what the representation does with which feature, by Creo's numbers.
std::string items(const headless::ModelDocument& document, const std::string& rep) {
  std::string all;
  for (const auto& entry : document.record.simplifiedReps) {
    if (entry.name != rep) continue;
    for (const headless::SimplifiedRepItemRecord& item : entry.items)
      all += (all.empty() ? "" : " ") + std::to_string(item.feature) + "=" +
             std::to_string(static_cast<int>(item.action)) +
             (item.substitute.empty()
                  ? ""
                  : "(" + item.substitute + "/" + std::to_string(static_cast<int>(item.substitution)) + ")");
  }
  return all;
}

TEST_F(NamedStates, RepresentationsAreCreatedWithTheirDefaultAction) {
  const std::pair<const char*, int> cases[] = {{"1", 2}, {"2", 3}, {"3", 4}, {"4", 5}, {"5", 6},
                                               {"6", 7}, {"7", 0}, {"8", 9}, {"9", 1}, {"", 1}};
  std::string tasks;
  for (const auto& [type2, action] : cases)
    tasks += task("createSimpRep", std::string("view='R") + type2 + "' type2='" + type2 + "'");
  const std::wstring all = onAssembly(tasks + task("createSimpRep", "view='light'") + task("createSimpRep", "view=''") +
                                      task("createSimpRep", "view='" + std::string(32, 'x') + "'") +
                                      task("createSimpRep", "view='Master Rep'"));
  const auto& reps = drive().record.simplifiedReps;
  ASSERT_EQ(2 + std::size(cases), reps.size());
  for (std::size_t i = 0; i < std::size(cases); ++i)
    EXPECT_EQ(cases[i].second, static_cast<int>(reps[i + 2].defaultAction)) << cases[i].first;
  EXPECT_EQ(
      L"B10 Create simplified representation|W:'light' exists already|"
      L"B11 Create simplified representation|E:Can't allocate simprepdata|"
      L"B12 Create simplified representation|E:The replaced output is to large for this task|"
      L"E:Can't allocate simprepdata|B13 Create simplified representation|W:'Master Rep' exists already",
      all.substr(all.find(L"B10 ")));
}

TEST_F(NamedStates, ADrawingHasNoRepresentations) {
  EXPECT_EQ(L"B0 Create simplified representation|W:Only parts and assemblies have simplified representations",
            onModel(task("createSimpRep", "view='NEW'"), L"SHEET", creo::ProMdlType::drawing));
}

TEST_F(NamedStates, APartsRepresentationsAreNeitherMadeNorDescribedNorActivated) {
  EXPECT_EQ(
      L"B0 Create simplified representation|E:Creo makes simplified representations of assemblies alone|"
      L"B1 Set simpliefied representation|Simp rep found (by init)|E:Can't set the specified simp rep|"
      L"B2 Set simpliefied representation|"
      L"E:This action is not allowed for parts, you can only set usernamed simpreps|"
      L"E:Function isn't used because false version code, please update Kelvane User and Kelvane to the newest version|"
      L"B3 Rename simplified representations|rename LIGHT to HEAVY|B4 Edit simplified representations|"
      L"E:Failure occured while recreationg the simplified representation",
      onPart(task("createSimpRep", "view='NEW'") + task("setSimpRep", "simprepc='0' simprep='LIGHT'") +
             task("setSimpRep", "simprepc='2' simprepr='true'") +
             task("renameSimpRep", "name_0='*' newname_0='HEAVY'") +
             "<task type='editSimpRep' version='4' forPRT='true' forEF='false' nameOne='HEAVY' jc='4'/>"));
  EXPECT_EQ("HEAVY", names(gear()));
  EXPECT_EQ("", gear().activeRep);
}

TEST_F(NamedStates, RenamedRepresentationsAreFollowedByWhatRefersToThem) {
  EXPECT_EQ(
      L"B0 add combined state|combined state created|B1 Rename simplified representations|rename LIGHT to HEAVY|"
      L"rename ROUGH to heavy|E:Can't rename the simp rep|"
      L"B2 Rename simplified representations|rename ROUGH to " +
          std::wstring(31, L'n') + L"|B3 set combined state|Set combined state: S",
      onAssembly(task("addCombState", "statename='S' simprepname='LIGHT'") +
                 task("renameSimpRep", "name_0='L*' newname_0='HEAVY' name_3='x' name_5='ROUGH' newname_5='heavy'") +
                 task("renameSimpRep", "name_1='/^R/' newname_1='" + std::string(40, 'n') + "'") +
                 task("setCombState", "statename='S'")));
  EXPECT_EQ("HEAVY " + std::string(31, 'n'), names(drive()));
  EXPECT_EQ("HEAVY", drive().activeRep);
  document("gear.prt.2", R"("readOnly": false)");
  EXPECT_EQ(L"B0 Rename simplified representations|No simplified representations found",
            onPart(task("renameSimpRep", "name_0='*' newname_0='X'")));
}

TEST_F(NamedStates, ADeletedRepresentationLeavesTheMaster) {
  EXPECT_EQ(
      L"B0 Set simpliefied representation|Simp rep found (by init)|Simp rep set|"
      L"B1 add combined state|combined state created|B2 Delete simplified representation",
      onAssembly(task("setSimpRep", "simprepc='0' simprep='LIGHT'") +
                 task("addCombState", "statename='S' simprepname='LIGHT' orientationname='BACK'") +
                 task("deleteSimpRep", "name_0='none' name_5='LI*'")));
  EXPECT_EQ(2, here().session().calls("ProSimprepDelete")) << "the first one while it was in use";
  EXPECT_EQ("ROUGH", names(drive()));
  EXPECT_EQ("", drive().activeRep);
  EXPECT_EQ("", drive().record.combinedStates.at(1).simplifiedRep);
}

TEST_F(NamedStates, ARepresentationIsPutIntoTheSession) {
  const struct {
    const char* attributes;
    const wchar_t* lines;
    const char* active;
  } cases[] = {
      {"simprepc='0' simprep='rough'", L"|Simp rep found (by init)|Simp rep set", "ROUGH"},
      {"simprepc='0' simprep='*'", L"|Simp rep found", "LIGHT"},
      {"simprepc='0' simprep='*' simprepr='true'", L"|Simp rep found|reset simp rep", ""},
      {"simprepc='0' simprep='none'", L"|E:Can't find the specified simp rep", ""},
      {"simprepc='0'", L"|E:Can't find the specified simp rep", ""},
      {"simprepc='1'", L"", "Graphics Rep"},
      {"simprepc='2'", L"", "Geometry Rep"},
      {"simprepc='3'", L"", "Symbolic Rep"},
      {"simprepc='3' simprepr='true'", L"|reset simp rep", ""},
  };
  for (const auto& entry : cases) {
    EXPECT_EQ(std::wstring(L"B0 Set simpliefied representation") + entry.lines,
              onAssembly(task("setSimpRep", entry.attributes)))
        << entry.attributes;
    EXPECT_EQ(entry.active, drive().activeRep) << entry.attributes;
  }
}

// Which representation is in memory behind a retrieval, one after the other.
TEST_F(NamedStates, AHigherRepresentationInMemoryWins) {
  onAssembly("");
  using creo::ProMdlType;
  const std::wstring name = L"DRIVE", light = L"LIGHT";
  const auto active = [this] { return drive().activeRep; };
  EXPECT_TRUE(creo::ProGeomSimprepRetrieve(name, ProMdlType::assembly));
  EXPECT_EQ("", active()) << "the master stays";
  EXPECT_TRUE(creo::ProAssemblySimprepMdlnameRetrieve(name, light));
  EXPECT_EQ("LIGHT", active());
  EXPECT_TRUE(creo::ProGraphicsSimprepRetrieve(name, ProMdlType::assembly));
  EXPECT_EQ("LIGHT", active());
  EXPECT_EQ(creo::ProNoError, creo::ProSimprepActivate(creo::ProSimprepInit(L"Symbolic Rep", 0, drivesHandle()).value));
  EXPECT_TRUE(creo::ProGraphicsSimprepRetrieve(name, ProMdlType::assembly));
  EXPECT_EQ("Graphics Rep", active()) << "the higher one";
  EXPECT_TRUE(creo::ProMdlnameRetrieve(name, ProMdlType::assembly));
  EXPECT_EQ("", active());
  for (const std::wstring& rep : {light, std::wstring(L"Master Rep")})
    EXPECT_EQ(creo::ProBadInputs, creo::ProSimprepMdlnameRetrieve(name, ProMdlType::assembly, rep).error)
        << "of a part";
  // A part that wasn't in memory comes as it was asked for.
  EXPECT_TRUE(creo::ProSimprepMdlnameRetrieve(L"LONE", ProMdlType::part, light));
  EXPECT_EQ("LIGHT", loaded(L"LONE", ProMdlType::part).activeRep);
  EXPECT_TRUE(creo::ProSimprepMdlnameRetrieve(L"LONE", ProMdlType::part, L"Master Rep"));
  EXPECT_EQ("", loaded(L"LONE", ProMdlType::part).activeRep);
  EXPECT_TRUE(creo::ProPartSimprepRetrieve(L"LONE", light));
  EXPECT_EQ("", loaded(L"LONE", ProMdlType::part).activeRep);
}

// The assembly's volume and length are those of what the representation in memory shows.
TEST_F(NamedStates, WhatARepresentationLeavesOutIsNoPartOfTheSolid) {
  document("pin.prt.1", R"("features": [{"id": 3, "number": 1, "type": 917}, {"id": 4, "number": 2, "type": 917}],
      "solid": {"primitives": [{"type": "box", "size": [1, 1, 1]}, {"type": "box", "size": [2, 1, 1], "feature": 3,
        "placement": {"position": [1, 0, 0]}}, {"type": "box", "size": [4, 1, 1], "feature": 4,
        "placement": {"position": [3, 0, 0]}}]},
      "simplifiedReps": [{"id": 1, "name": "SHORT", "items": [{"feature": 4, "action": "exclude"}]}])");
  document("drive.asm.1", R"("components": [{"name": "PIN", "type": "prt", "feature": 11},
      {"name": "PIN", "type": "prt", "feature": 12, "placement": {"position": [10, 0, 0]}},
      {"name": "SUB", "type": "asm", "feature": 13}],
      "simplifiedReps": [
        {"id": 1, "name": "ONE", "items": [{"feature": 12, "action": "exclude"}]},
        {"id": 2, "name": "NONE", "defaultAction": "exclude", "items": [{"feature": 11, "action": "reverse"}]},
        {"id": 3, "name": "SIGN", "items": [{"feature": 11, "action": "symbolic"}, {"feature": 12, "action": "graphics"}]},
        {"id": 4, "name": "CUT", "items": [
          {"feature": 11, "action": "substitute", "substitution": "partRep", "substitute": "SHORT"}]}])");
  const struct {
    const char* attributes;
    double volume, length;
  } cases[] = {
      {"simprepc='0' simprep='ONE'", 7, 7},
      {"simprepc='0' simprep='ONE' simprepr='true'", 14, 17},
      {"simprepc='0' simprep='NONE'", 7, 7},
      {"simprepc='0' simprep='SIGN'", 7, 7},
      {"simprepc='0' simprep='CUT'", 6, 13},
      {"simprepc='0' simprep='CUT' simprepr='true'", 14, 17},
      {"simprepc='1'", 14, 17},
  };
  for (const auto& entry : cases) {
    onAssembly(task("setSimpRep", entry.attributes));
    const creo::ProMdl top = creo::ProMdlCurrentGet().value;
    EXPECT_NEAR(entry.volume, creo::ProSolidMassPropertyGet(top).value.volume, 1e-6) << entry.attributes;
    const creo::ProOutline box = creo::ProSolidOutlineGet(top).value;
    EXPECT_NEAR(entry.length, box.max.x - box.min.x, 1e-6) << entry.attributes;
  }
}

class EditedRep : public NamedStates {
 protected:
  static std::string edit(const std::string& attributes, const std::string& children = "") {
    return "<task type='editSimpRep' version='4' forPRT='true' forASM='true' forEF='false' nameOne='LIGHT' " +
           attributes + ">" + children + "</task>";
  }
  // The log behind the title.
  std::wstring edited(const std::string& attributes, const std::string& children = "") {
    const std::wstring title = L"B0 Edit simplified representations|";
    const std::wstring all = onAssembly(edit(attributes, children));
    return all.starts_with(title) ? all.substr(title.size()) : all;
  }
};

TEST_F(EditedRep, DescribesTheChosenFeaturesAnew) {
  const std::string components = "filter_type='true' filter_type_sel='28' ";
  const std::string parts = "<insideFilter forPRT='true' forASM='false' forEF='false'/>";
  const struct {
    std::string attributes, children;
    const char* items;
  } cases[] = {
      {components + "jc='0'", "", "11=2 12=2 15=2"},  // its default; the skeleton is left out
      {components + "jc='1'", "", "11=3 12=3 15=3"},
      {components + "jc='1'", parts, "11=3"},
      {components + "jc='1'", parts + "<insideFilter forPRT='false'/>", ""},
      {"jc='2' filter_name='true' filter_name_text='/^(GEAR|SKEL)$/'", parts, "11=5"},
      {"jc='3' filter_type='true' filter_type_sel='92' filter_name='true' filter_name_text='none'", parts, ""},
      {"jc='4' filter_name='true' filter_name_text='sub'", "", "12=2"},
      {"jc='5' filter_name='true' filter_name_text='sub'", "", "12=0"},
      {"jc='6' filter_name='true' filter_name_text='sub'", "", "12=7"},
      {"jc='8' filter_name='true' filter_name_text='sub'", "", "12=9"},
      {"jc='7' nameTwo='light' filter_name='true' filter_name_text='/GEAR|SUB/'", "", "11=4(LIGHT/2) 12=4(LIGHT/3)"},
  };
  for (const auto& entry : cases) {
    EXPECT_EQ(L"LIGHT|Simplified representation redefinition completed", edited(entry.attributes, entry.children))
        << entry.attributes;
    EXPECT_EQ(entry.items, items(drive(), "LIGHT")) << entry.attributes << entry.children;
  }
}

TEST_F(EditedRep, WhatCantBeDoneIsLeftOutAndTold) {
  document("lost.asm.1", R"("components": [{"name": "NOWHERE", "type": "prt", "feature": 7}],
      "simplifiedReps": [{"id": 1, "name": "LIGHT", "items": [{"feature": 9, "action": "exclude"}]}])");
  const std::wstring skipped = L"W:Failure occured while create Simprep action|";
  const std::wstring end = L"LIGHT|Simplified representation redefinition completed";
  EXPECT_EQ(skipped + end, edited("jc='99' filter_name='true' filter_name_text='GEAR'"));
  EXPECT_EQ(skipped + end, edited("jc='7' nameTwo='LIGHT' filter_name='true' filter_name_text='BORE'"));
  // Creo takes components alone, and what it did with another feature goes.
  EXPECT_EQ(L"E:Failure occured while ProSimprepdataitemInit|" + end,
            edited("jc='4' filter_name='true' filter_name_text='BORE'"));
  EXPECT_EQ("", items(drive(), "LIGHT"));
  EXPECT_EQ(L"W:Failure while set SimpRep for prt|" + skipped + L"W:Failure while set SimpRep for asm|" + skipped + end,
            edited("jc='7' nameTwo='none' filter_name='true' filter_name_text='/GEAR|SUB/'"));
  EXPECT_EQ(L"B0 Edit simplified representations|E:The model of the component 7 can't be retrieved|" + end,
            onModel(edit("jc='1'"), L"LOST", creo::ProMdlType::assembly));
  EXPECT_EQ(L"B0 Edit simplified representations",
            onPart(edit("jc='1' nameOne='x'").replace(edit("jc='1' nameOne='x'").find("nameOne='LIGHT' "), 16, "")));
}

TEST_F(EditedRep, ARepresentationDoesntTakeItsOwnPlace) {
  EXPECT_EQ(L"LIGHT|E:Failure occured while recreationg the simplified representation",
            edited("jc='7' nameTwo='LIGHT' filter_name='true' filter_name_text='DRIVE'"));
  EXPECT_EQ("5=1", items(drive(), "LIGHT"));  // as it was
  edited("jc='7' nameTwo='ROUGH' filter_name='true' filter_name_text='DRIVE'");
  EXPECT_EQ("15=4(ROUGH/3)", items(drive(), "LIGHT"));
}

TEST_F(EditedRep, EachOperationMayFail) {
  const std::string component = " filter_name='true' filter_name_text='SUB'";
  const struct {
    const char* operation;
    std::string task;
    const wchar_t* line;
  } cases[] = {
      {"ProSimprepdataitemInit", edit("jc='1'" + component), L"E:Failure occured while ProSimprepdataitemInit"},
      {"ProAsmcomppathInit", edit("jc='1'" + component), L"E:Failure occured while ProSimprepdataitemInit"},
      {"ProSimprepdataitemAdd", edit("jc='1'" + component), L"E:Failure occured while ProSimprepdataitemAdd"},
      {"ProSimprepdataitemAdd", edit("jc='1' filter_name='true' filter_name_text='none'"),
       L"E:Failure occured while ProSimprepdataitemAdd"},
      {"ProSimprepActionInit", edit("jc='1'"), L"W:Failure occured while create Simprep action"},
      {"ProSimprepdataSet", edit("jc='1'"), L"E:Failure occured while recreationg the simplified representation"},
      {"ProPartSimprepRetrieve", edit("jc='7' nameTwo='LIGHT'"), L"W:Failure while set SimpRep for prt"},
      {"ProSimprepActivate", edit("jc='7' nameTwo='LIGHT'"), L"W:Failure while set SimpRep for asm"},
      {"ProSimprepdataAlloc", task("createSimpRep", "view='N'"), L"E:Can't allocate simprepdata"},
      {"ProSimprepDelete", task("deleteSimpRep", "name_0='*'"), L"E:Can't delete simplified representation'LIGHT'"},
      {"ProSimprepActivate", task("setSimpRep", "simprepc='0' simprep='LIGHT'"), L"E:Can't set the specified simp rep"},
      {"ProMdlRepresentationLoad", task("setSimpRep", "simprepc='0' simprep='L*'"),
       L"E:Can't set the specified simp rep"},
      {"ProSymbSimprepRetrieve", task("setSimpRep", "simprepc='3'"), L"E:Can't set the specified simp rep"},
      {"ProSimprepActiveGet", task("setSimpRep", "simprepc='9' simprepr='true'"), L"W:can't reset simp rep"},
  };
  for (const auto& entry : cases) {
    const std::wstring all = onFailing(entry.operation, creo::ProGeneralError, entry.task);
    EXPECT_NE(std::wstring::npos, (all + L"|").find(std::wstring(entry.line) + L"|"))
        << entry.operation << ": " << text::toUtf8(all);
  }
}

}  // namespace
}  // namespace test

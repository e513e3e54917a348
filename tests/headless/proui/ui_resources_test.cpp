#include <filesystem>
#include <map>
#include <set>
#include <sstream>

#include "creo/ProMessage.h"
#include "headless/proui/resource.h"
#include "headless/proui/ui_fixture.h"
#include "os/text_files.h"
#include "text/pieces.h"

namespace {

using namespace creo;
using headless::Kind;
using test::UiTest;

class UiResources : public UiTest {};
class GermanUi : public UiTest {
 protected:
  GermanUi() : UiTest("german") {}
};

const char* const kDialogs[] = {"kvanerunner", "kvanefilter", "kvanehistory", "kvaneinfo", "kvaneUserVariable"};

TEST_F(UiResources, DialogsHaveTheComponentsThatTheirActionsName) {
  const struct {
    const char* dialog;
    Kind kind;
    const char* names;
  } rows[] = {
      {"kvanerunner", Kind::optionmenu, "kvaneKVZChooser kvaneActionlistChooser kvaneLayerLogFilterChooser"},
      {"kvanerunner", Kind::pushbutton,
       "kvaneStart kvaneCancel kvaneCheckout kvaneExtFilter kvaneShowLog kvaneShowLog_show kvaneShowLog_hide "
       "kvaneShowTree kvaneShowTree_show kvaneShowTree_hide kvaneActivateAutoclose kvaneOpenLogFolder "
       "kvaneActionlistPrint LoadFileBtn_MenuRMBLog HighlightFileBtn_MenuRMBLog HighlightFileBtn_MenuRMBChooser "
       "HighlightSelectedBtn_MenuRMBChooser SelectAllBtn_MenuRMBChooser SelectOnlyPDMBtn_MenuRMBChooser "
       "SelectNoneBtn_MenuRMBChooser HistoryBtn_MenuRMBChooser AddCurrentBtn_MenuRMBChooser "
       "AddAllDrawingMdlsBtn_MenuRMBChooser AddAllInstancesBtn_MenuRMBChooser AddAllDrawingsBtn_MenuRMBChooser "
       "AddAllInheritedBtn_MenuRMBChooser"},
      {"kvanerunner", Kind::checkbutton,
       "kvanePrtFilter kvaneAsmFilter kvaneDrwFilter kvaneInstFilter kvaneCurModFilter kvaneWriteExtData kvaneInfo "
       "kvaneHelp kvaneCheckButton"},
      {"kvanerunner", Kind::label,
       "kvaneFilterLbl kvanePrtFilterLbl kvaneAsmFilterLbl kvaneDrwFilterLbl kvaneInstFilterLbl kvaneCurModFilterLbl "
       "kvaneLogLbl kvanePrtLbl kvanePrtLblInst kvanePrtLblGen kvanePrtInLblGen kvaneAsmLbl kvaneAsmLblInst "
       "kvaneAsmLblGen kvaneAsmInLblGen kvaneDrwLbl kvaneWCmodLbl kvaneWCLbl kvaneModLbl kvaneNotCheckedOut "
       "kvaneFromHdd kvaneWCerrLbl"},
      {"kvanerunner", Kind::progressbar, "kvaneProgressBar"},
      {"kvanerunner", Kind::table, "LargeTable"},
      {"kvanerunner", Kind::tree, "kvaneLogTT"},
      {"kvanerunner", Kind::textarea, "kvaneLogTA kvaneKVZInfoTa kvaneALInfoTa"},
      {"kvanerunner", Kind::layout, "kvaneLayerLeft kvaneLayerLog kvaneLayerLogTitle"},
      {"kvanefilter", Kind::optionmenu, "kvaneFilterChooser"},
      {"kvanefilter", Kind::checkbutton, "kvaneFilterGlobal"},
      {"kvanefilter", Kind::pushbutton, "kvaneFilterOkBtn"},
      {"kvanehistory", Kind::textarea, "kvaneHistoryTA"},
      {"kvanehistory", Kind::pushbutton, "kvaneHistoryOkBtn"},
      {"kvaneinfo", Kind::label, "kvaneInfoVersionFillLbl kvaneInfoConfDirFillLbl"},
      {"kvaneinfo", Kind::list, "kvaneInfoConfigList"},
      {"kvaneinfo", Kind::pushbutton, "kvaneInfoOkBtn kvaneInfoSaveBtn"},
      {"kvaneUserVariable", Kind::inputpanel, "kvaneUVInputPanel"},
      {"kvaneUserVariable", Kind::optionmenu, "kvaneUVChooser"},
      {"kvaneUserVariable", Kind::checkbutton, "kvaneUVCheck"},
      {"kvaneUserVariable", Kind::label, "kvaneUVModel kvaneUVValueLabel kvaneUVDescription_0 kvaneUVDescription_19"},
      {"kvaneUserVariable", Kind::pushbutton, "kvaneUVOkBtn"},
  };
  for (const char* name : kDialogs) created(name);
  for (const auto& row : rows) {
    std::istringstream names(row.names);
    for (std::string name; names >> name;)
      EXPECT_EQ(ProNoError, dialog(row.dialog).find(name, row.kind).error) << row.dialog << " " << name;
  }
  std::string columns;
  for (const auto& column : dialog("kvanerunner").columns("LargeTable")) columns += column.name;
  EXPECT_EQ("123456", columns);
  EXPECT_EQ((std::vector<std::string>{"0", "1", "2", "8"}),
            dialog("kvanerunner").choices("kvaneLayerLogFilterChooser"));
  EXPECT_EQ("kvanetool.png", dialog("kvanerunner").icon);
  EXPECT_EQ("checkedout.gif", dialog("kvanerunner").image("kvaneWCLbl"));
  EXPECT_EQ("checkedoutmod.gif", dialog("kvanerunner").image("kvaneWCmodLbl"));
  EXPECT_EQ("fromHDD.gif", dialog("kvanerunner").image("kvaneFromHdd"));
}

TEST_F(UiResources, EveryImageThatIsNamedIsShipped) {
  std::set<std::string> images{"act_filter24.png", "act_filterdeac24.png", "help.png", "installui.png",
                               "invisible.png"};
  for (const char* name : kDialogs) {
    headless::Dialog& made = created(name);
    images.insert(made.icon);
    for (const std::string& component : made.names()) {
      images.insert(made.image(component));
      if (made.kind(component) != Kind::tree) continue;
      for (const auto& type : made.find(component, Kind::tree).value->tree().types()) images.insert(type.image);
    }
  }
  images.erase("");
  EXPECT_LT(20U, images.size());
  for (const std::string& image : images)
    EXPECT_NE(L"", headless::findResource(session_.options().textFolder, "usascii", image)) << image;
}

TEST_F(GermanUi, TextsAreThoseOfTheLanguage) {
  EXPECT_EQ(L"Schließen", created("kvanerunner").text("kvaneCancel"));
  EXPECT_EQ(L"Fehler", dialog("kvanerunner").labels("kvaneLayerLogFilterChooser")[2]);
  EXPECT_EQ(L"de", ProMessageToBuffer(L"kvusermsg.txt", "KVD LANG").value);
}

TEST_F(UiResources, MessageFilesHaveTheSameKeys) {
  const std::set<std::wstring> expected{L"KVD LANG",
                                        L"KVD USER %0s",
                                        L"KVD KVANEMenubarMenu",
                                        L"KVD StartKelvaneBtn",
                                        L"KVD StartKelvaneHlp",
                                        L"KVD StartHelpBtn",
                                        L"KVD StartHelpHlp",
                                        L"KVD StartHelpDesc",
                                        L"KVD InstallUIBtn",
                                        L"KVD InstallUIHlp",
                                        L"KVD ATBtn",
                                        L"KVD ATHlp",
                                        L"KVD ATDesc",
                                        L"KVD InstallUIDesc",
                                        L"KVD StartKelvaneDesc"};
  for (const wchar_t* language : {L"usascii", L"german"}) {
    const auto lines = text::lines(
        os::readText(os::joined(os::joined(session_.options().textFolder, language), L"kvusermsg.txt")).value);
    std::set<std::wstring> keys;
    for (std::size_t i = 0; i + 3 < lines.size(); i += 4) {
      keys.insert(lines[i]);
      EXPECT_FALSE(lines[i + 1].empty() || lines[i + 1][0] == L'#') << i;
      EXPECT_EQ(L"##", lines[i + 2] + lines[i + 3]) << i;
    }
    EXPECT_EQ(0U, lines.size() % 4);
    EXPECT_EQ(expected, keys);
  }
  EXPECT_EQ(L"en", ProMessageToBuffer(L"kvusermsg.txt", "KVD LANG").value);
}

TEST(UiResource, FaultsNameFileAndLine) {
  const std::string head = "{\"format\": 1, \"title\": \"T\",\n \"components\": [\n";
  const auto entry = [&](const std::string& component) { return head + component + "]}"; };
  const std::pair<std::string, std::wstring> cases[] = {
      {"{\"format\": 1,\n\n}", L"d.json:3: "},
      {"[]", L"d.json:1: it isn't an object"},
      {"{\"format\": 2}", L"d.json:1: 'format' isn't 1"},
      {"{\"format\": 1}", L"d.json:1: 'title' is missing"},
      {"{\"format\": 1, \"title\": {\"german\": \"T\"}}", L"d.json:1: a text without 'usascii'"},
      {"{\"format\": 1,\n \"titel\": 2}", L"d.json:2: unknown member 'titel'"},
      {entry("7"), L"d.json:3: 'components' holds what is no object"},
      {entry("{\"kind\": \"label\"}"), L"d.json:3: 'name' is missing"},
      {entry("{\"name\": \"\", \"kind\": \"label\"}"), L"d.json:3: a component without a name"},
      {entry("{\"name\": \"a\",\n \"kind\": \"lable\"}"), L"d.json:4: unknown kind 'lable'"},
      {entry("{\"name\": \"a\", \"kind\": \"label\", \"txt\": \"\"}"), L"d.json:3: unknown member 'txt'"},
      {entry("{\"name\": \"a\", \"kind\": \"label\", \"checked\": true}"), L"d.json:3: a label has no 'checked'"},
      {entry("{\"name\": \"a\", \"kind\": \"label\", \"shown\": 1}"), L"d.json:3: 'shown' isn't true or false"},
      {entry("{\"name\": \"a\", \"kind\": \"label\", \"text\": 1}"), L"d.json:3: a text that is shown isn't a string"},
      {entry("{\"name\": \"a\", \"kind\": \"table\"}"), L"d.json:3: 'columns' is missing"},
      {entry("{\"name\": \"a\", \"kind\": \"table\", \"columns\": [{\"name\": \"1\", \"width\": -1}]}"),
       L"d.json:3: 'width' isn't a whole number from 0 to 10000"},
      {entry("{\"name\": \"a\", \"kind\": \"layout\", \"components\": [\n {\"name\": \"a\", \"kind\": \"label\"}]}"),
       L"d.json:4: a second component 'a'"},
  };
  for (const auto& [content, fault] : cases) {
    const auto read = headless::readDialog("d", content, L"d.json", "usascii");
    EXPECT_FALSE(read.dialog) << content;
    EXPECT_EQ(fault, read.fault.substr(0, fault.back() == L' ' ? fault.size() : std::wstring::npos));
  }
  EXPECT_TRUE(headless::readDialog("d", entry("{\"name\": \"a\", \"kind\": \"label\"}"), L"d.json", "german").dialog);
}

TEST(UiCreation, LanguageFolderWinsAndDamageIsAMessage) {
  test::TempFolder folder;
  std::filesystem::create_directories(folder.path() + "/resource");
  std::filesystem::create_directories(folder.path() + "/german/resource");
  test::writeBytes(folder.path() + "/resource/both.json", R"({"format": 1, "title": "all", "components": []})");
  test::writeBytes(folder.path() + "/german/resource/both.json", R"({"format": 1, "title": "own", "components": []})");
  test::writeBytes(folder.path() + "/resource/damaged.json", "{\"format\": 1,\n\"title\": 5}");
  const std::wstring text = os::mounts().system(folder.path());
  headless::Session session({.modelFolder = text, .textFolder = text, .language = "german"});
  EXPECT_EQ(ProNoError, ProUIDialogCreate("mine", "both"));
  EXPECT_EQ(L"own", session.ui().dialog("mine")->title);
  EXPECT_EQ(ProGeneralError, ProUIDialogCreate("mine", "both"));
  EXPECT_TRUE(session.messages().empty());
  for (const char* resource : {"missing", "../resource/both", "damaged"})
    EXPECT_EQ(ProGeneralError, ProUIDialogCreate("other", resource)) << resource;
  EXPECT_EQ(nullptr, session.ui().dialog("other"));
  EXPECT_EQ(
      (std::vector<std::wstring>{
          L"dialog 'other': there is no resource 'missing'", L"dialog 'other': there is no resource '../resource/both'",
          os::joined(os::joined(text, L"resource"), L"damaged.json") + L":2: a text that is shown isn't a string"}),
      session.messages());
}

}  // namespace

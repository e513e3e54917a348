#include "core/messages.h"

#include <gtest/gtest.h>

namespace {

struct Messages : testing::Test {
  ~Messages() override { core::setLanguage(L"en"); }
};

std::wstring placeholders(std::wstring_view text) {
  std::wstring found;
  for (std::size_t i = 0; i < text.size(); ++i)
    if (text[i] == L'%') found += i + 1 < text.size() ? text.substr(i, 2) : text.substr(i);
  return found;
}

TEST_F(Messages, TablesAgreeInTheirPlaceholders) {
  for (std::size_t id = 0; id < core::kMessageCount; ++id) {
    const std::wstring_view en = core::lang_en[id], de = core::lang_de[id];
    EXPECT_EQ(placeholders(en), placeholders(de)) << id;
    EXPECT_EQ(id == 401, en.empty()) << id;
    EXPECT_EQ(id == 401, de.empty()) << id;
  }
}

TEST_F(Messages, TextsStandUnderTheirNumbers) {
  const struct {
    int id;
    const wchar_t *en, *de;
  } cases[] = {
      {0, L"Can't parse accuracy, haven't set it", nullptr},
      {4, L"Action canceled, because filter returns false",
       L"Aktion abgebrochen, da die Filterauswertung false zurückgegeben hat"},
      {57, L"Run finished", L"Bearbeitung beended"},
      {89, L"Successfully connected to database. Data source name:  '%s'", nullptr},
      {141, L" - failure while creation", L" - Fehler beim Anlegen"},
      {205, L"The material parameter was set to % in the instance %s.", nullptr},
      {340, L"work now on %s", L"arbeite nun an %s"},
      {400, L"The configuration path can't be found", nullptr},
      {402, L"A general error while executing this function is occured", nullptr},
      {416,
       L"One or more of the actions are\n - run mapkey\n - set Appearance\nactions. This could cause problems in Batch "
       L"mode but should work like a charme on single files.\nPlease read the help files for further "
       L"informations.\n\nAre you sure you want to start the rework process?",
       nullptr},
      {421, L"DONE", L"FERTIG"},
  };
  for (const auto& [id, en, de] : cases) {
    core::setLanguage(L"en");
    EXPECT_EQ(std::wstring_view(en), core::msgText(id)) << id;
    core::setLanguage(L"de");
    if (de) EXPECT_EQ(std::wstring_view(de), core::msgText(id)) << id;
  }
}

TEST_F(Messages, OnlyDeSelectsGerman) {
  for (const auto& [language, german] :
       {std::pair{L"de", true}, {L"DE", true}, {L"fr", false}, {L"", false}, {L"de ", false}, {L"deutsch", false}}) {
    core::setLanguage(german ? L"en" : L"de");
    core::setLanguage(language);
    EXPECT_EQ(german, core::useGerman()) << language;
  }
}

TEST_F(Messages, AShortTableIsFound) {
  EXPECT_EQ(0, core::checkMessageTables());
  core::MessageTable shortened = core::lang_de;
  shortened.back() = nullptr;
  EXPECT_EQ(1, core::checkMessageTables(core::lang_en, shortened, core::langkey));
  EXPECT_EQ(1, core::checkMessageTables(shortened, core::lang_de, core::langkey));
  EXPECT_EQ(1, core::checkMessageTables(core::lang_en, core::lang_de, core::kMessageCount - 1));
}

TEST_F(Messages, FeatureTypesByCode) {
  const std::pair<const wchar_t*, int> cases[] = {
      {L"0", 1085},   {L"9", 1046}, {L"10", 1241},      {L"42", 176},   {L"71", 0},
      {L"100", 1221}, {L"138", 0},  {L"169", 967},      {L"230", 2000}, {L"245", 1254},
      {L"246", 3},    {L"", 3},     {L"-1", 3},         {L"042", 3},    {L" 42", 3},
      {L"42x", 3},    {L"1000", 3}, {L"4294967338", 3}, {L"x", 3},      {L"99999999999999999999", 3}};
  for (const auto& [code, type] : cases) EXPECT_EQ(type, core::featureTypeFromCode(code)) << code;
}

}  // namespace

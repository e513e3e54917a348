#include "core/messages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <map>
#include <set>

#include "support/folders.h"
#include "support/world.h"
#include "text/encoding.h"

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
    EXPECT_EQ(std::wstring_view(en), core::msgText(core::Message(id))) << id;
    core::setLanguage(L"de");
    if (de) EXPECT_EQ(std::wstring_view(de), core::msgText(core::Message(id))) << id;
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

// ---- the tables and the sources

// A text as it would stand in a table: each placeholder is a bare "%".
std::wstring form(std::wstring_view text) {
  std::wstring form;
  for (std::size_t i = 0; i < text.size(); ++i) {
    form += text[i];
    if (text[i] != L'%') continue;
    const std::size_t kind = text.find_first_not_of(L"-+ 0#123456789.l", i + 1);
    if (kind != text.npos && std::wstring_view(L"sdiucfegxX").find(text[kind]) != std::wstring_view::npos) i = kind;
  }
  return form;
}

// The wide literals of a source; those that stand side by side are one. Raw ones are no texts for people.
class Literals {
 public:
  explicit Literals(std::string_view source) : rest_(source) {}
  std::vector<std::wstring> all() {
    for (char last = 0; !rest_.empty();) {
      const char c = rest_[0];
      if (rest_.starts_with("//")) {
        skipBehind("\n");
      } else if (rest_.starts_with("/*")) {
        skipBehind("*/");
      } else if (c == '"' || (c == '\'' && !std::isxdigit(static_cast<unsigned char>(last)))) {
        take(c, last == 'L');
      } else {
        if (!std::isspace(static_cast<unsigned char>(c)) && !rest_.starts_with("L\"")) joins_ = false;
        rest_.remove_prefix(1);
      }
      last = c;
    }
    return std::move(found_);
  }

 private:
  void skipBehind(std::string_view end) {
    const std::size_t at = rest_.find(end);
    rest_.remove_prefix(at == rest_.npos ? rest_.size() : at + end.size());
  }
  void take(char quote, bool isWide) {
    std::string text;
    std::size_t i = 1;
    for (; i < rest_.size() && rest_[i] != quote; ++i) {
      if (rest_[i] == '\\') ++i;
      if (i < rest_.size()) text += rest_[i - 1] == '\\' && rest_[i] == 'n' ? '\n' : rest_[i];
    }
    rest_.remove_prefix(std::min(i + 1, rest_.size()));
    const bool isText = isWide && quote == '"';
    if (isText && joins_)
      found_.back() += text::fromUtf8(text);
    else if (isText)
      found_.push_back(text::fromUtf8(text));
    joins_ = isText;
  }

  std::string_view rest_;
  std::vector<std::wstring> found_;
  bool joins_ = false;
};

TEST(MessageLiterals, AreReadAsTheCompilerReadsThem) {
  const std::string source = R"x(f(L"a\n"  // L"no"
      L"\"b", 10'000, L'"', L""); /* L"no" */ g("no", L"c"))x";
  EXPECT_EQ((std::vector<std::wstring>{L"a\n\"b", L"", L"c"}), Literals(source).all());
}

// A literal that equals a row would stay English in a German log. Titles and keys of reports, the fixed lines of the
// list report and the attributes of lists are the same in every language.
TEST(MessageLiterals, AreAskedByTheirNames) {
  const std::set<std::string> excepted = {
      "actions/exports/pictures.cpp: height",
      "actions/exports/pictures.cpp: width",
      "reports/drawing_data.cpp: Views",
      "reports/list_dimensions.cpp: Value",
      "reports/list_layers.cpp: Layer",
      "reports/list_layers.cpp: Status",
      "reports/list_parameters.cpp: Parameter",
      "reports/list_parameters.cpp: Type",
      "reports/list_parameters.cpp: Value",
      "reports/list_report.cpp: Layers",
      "reports/list_report.cpp: Parameters",
      "reports/report_layer.cpp: Layer",
      "reports/report_parameters.cpp: Parameter",
      "reports/report_relations.cpp: Relations",
      "reports/report_model_data.cpp: Simplified representations",
  };
  std::map<std::wstring, std::size_t> rows;
  for (const core::MessageTable* table : {&core::lang_de, &core::lang_en})
    for (std::size_t id = 0; id < table->size(); ++id)
      if (std::wstring_view((*table)[id]) != L"") rows.emplace(form((*table)[id]), id);
  std::set<std::string> equal;
  const std::string sources = test::sourceFolder() + "/src/";
  for (const char* layer : {"core", "language", "documents", "actions", "reports", "run", "ui", "plugin"}) {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(sources + layer)) {
      const std::string file = entry.path().string().substr(sources.size());
      if (!entry.is_regular_file() || file == "core/message_rows.inc") continue;
      for (const std::wstring& literal : Literals(test::readBytes(entry.path().string())).all()) {
        const auto row = rows.find(form(literal));
        if (row == rows.end()) continue;
        equal.insert(file + ": " + text::toUtf8(literal));
        EXPECT_TRUE(excepted.contains(file + ": " + text::toUtf8(literal)))
            << file << ": \"" << text::toUtf8(literal) << "\" is message " << row->second
            << "; ask core::msgText for it";
      }
    }
  }
  EXPECT_THAT(equal, testing::IsSupersetOf(excepted)) << "an exception that nothing needs";
}

}  // namespace

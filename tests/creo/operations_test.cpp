// The table of operations against the declarations, the tests that it names, and the page that is written from it.
#include "creo/operations.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <sstream>

#include "support/folders.h"

namespace {

namespace fs = std::filesystem;
using creo::Operation;
using creo::Source;
using creo::Verdict;

std::string fileText(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

// The operations that a header declares: names of free functions at the level of its namespace.
std::set<std::string> declaredIn(const std::string& header) {
  const std::string code = std::regex_replace(header, std::regex("//[^\n]*|\"[^\"\n]*\""), "");
  std::string outside;  // of all braces but the namespace's
  int depth = 0;
  for (const char c : code) {
    if (c == '{') ++depth;
    if (depth <= 1) outside += c == '{' || c == '}' ? ';' : c;
    if (c == '}' && --depth == 1) outside += ';';
  }
  std::set<std::string> names;
  const std::regex declaration(R"((?:^|;)[^;()=]*?[\s>*&]((?:Pro|pfc)\w+)\()");
  for (auto at = std::sregex_iterator(outside.begin(), outside.end(), declaration); at != std::sregex_iterator(); ++at)
    names.insert((*at)[1]);
  return names;
}

std::map<std::string, std::set<std::string>> declared() {
  std::map<std::string, std::set<std::string>> all;
  for (const auto& entry : fs::directory_iterator(fs::path(test::sourceFolder()) / "src/creo")) {
    if (entry.path().extension() != ".h" || entry.path().filename() == "operations.h") continue;
    all[entry.path().filename().string()] = declaredIn(fileText(entry.path()));
  }
  return all;
}

// Names of all tests, as "Suite.Case".
std::set<std::string> testNames() {
  std::set<std::string> names;
  const std::regex pattern(R"(TEST(?:_F|_P)?\(\s*(\w+),\s*(\w+)\s*\))");
  for (const auto& entry : fs::recursive_directory_iterator(fs::path(test::sourceFolder()) / "tests")) {
    if (entry.path().extension() != ".cpp") continue;
    const std::string text = fileText(entry.path());
    for (auto at = std::sregex_iterator(text.begin(), text.end(), pattern); at != std::sregex_iterator(); ++at)
      names.insert((*at)[1].str() + "." + (*at)[2].str());
  }
  return names;
}

TEST(OperationTable, HasOneRowForEachDeclaration) {
  std::map<std::string, std::set<std::string>> rows;
  for (const Operation& row : creo::operations())
    EXPECT_TRUE(rows[std::string(row.header)].emplace(row.name).second) << row.name << " has two rows";
  for (const auto& [header, names] : declared()) {
    for (const std::string& name : names) EXPECT_TRUE(rows[header].contains(name)) << header << ": " << name;
    for (const std::string& name : rows[header]) EXPECT_TRUE(names.contains(name)) << header << " lacks " << name;
  }
}

TEST(OperationTable, SaysWhatARowOfItsVerdictOwes) {
  const std::set<std::string> tests = testNames();
  for (const Operation& row : creo::operations()) {
    EXPECT_TRUE(row.test.empty() || tests.contains(std::string(row.test))) << row.name << ": no test " << row.test;
    EXPECT_FALSE(row.shape.empty()) << row.name;
    EXPECT_TRUE(row.source == Source::notFound || !row.documented.empty()) << row.name;
    EXPECT_TRUE(row.verdict != Verdict::differs || !row.ours.empty()) << row.name << ": how does it differ?";
    EXPECT_TRUE(row.reason.empty() || row.verdict == Verdict::differs) << row.name << ": a reason for what is the same";
    EXPECT_EQ(0, std::count(row.codes.begin(), row.codes.end(), creo::ProNoError)) << row.name;
  }
}

// ---- docs/host-contract.md

std::string cell(std::string_view text) {
  std::string escaped;
  for (const char c : text) escaped += c == '|' ? std::string("\\|") : std::string(1, c);
  return escaped;
}

std::string verdictOf(const Operation& row) {
  switch (row.verdict) {
    case Verdict::same:
      return "same";
    case Verdict::differs:
      return row.reason.empty() ? "differs" : "differs: " + cell(row.reason);
    case Verdict::cantBeTold:
      return "can't be told";
  }
  return {};
}

std::string page() {
  std::map<std::string, std::string> sections;
  int same = 0, differs = 0, open = 0;
  for (const Operation& row : creo::operations()) {
    std::string& section = sections[std::string(row.header)];
    if (section.empty())
      section = "\n## " + std::string(row.header) +
                "\n\n| operation | documentation | the session | verdict |\n|---|---|---|---|\n";
    const char* source = row.source == Source::page ? "" : row.source == Source::guide ? " (guide)" : " (no page)";
    section += "| `" + std::string(row.name) + "` " + cell(row.shape) + " | " + cell(row.documented) + source + " | " +
               cell(row.ours) + " | " + verdictOf(row) + " |\n";
    same += row.verdict == Verdict::same ? 1 : 0;
    differs += row.verdict == Verdict::differs ? 1 : 0;
    open += row.verdict == Verdict::differs && row.reason.empty() ? 1 : 0;
  }
  std::string text =
      "# What Creo's documentation says of the operations\n\n"
      "Written from the rows of `src/creo/operations`; `KVD_WRITE_PAGES=1 ./check OperationTable` writes it anew.\n"
      "Nothing here was measured on a Creo: the public pages of its programming interface were read, and what the\n"
      "headless session answers stands beside them. \"(guide)\": the operation has no page of its own, and a guide, "
      "an\n"
      "object's page or a sister operation's speaks of it.\n\n";
  text += std::to_string(creo::operations().size()) + " operations: " + std::to_string(same) + " the same, " +
          std::to_string(differs) + " differ, of which " + std::to_string(open) +
          " are open; the rest can't be told.\n";
  for (const auto& [header, section] : sections) text += section;
  return text;
}

TEST(OperationTable, IsWhatThePageSays) {
  const fs::path path = fs::path(test::sourceFolder()) / "docs/host-contract.md";
  if (std::getenv("KVD_WRITE_PAGES")) std::ofstream(path, std::ios::binary) << page();
  EXPECT_EQ(page(), fileText(path)) << "KVD_WRITE_PAGES=1 ./check OperationTable writes it anew";
}

}  // namespace

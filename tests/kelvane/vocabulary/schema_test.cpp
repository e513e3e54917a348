// The schemas of lists, filters and models, held against what is shipped, and packages that begin with them.
#include <cstdlib>
#include <nlohmann/json.hpp>

#include "kelvane/program_fixture.h"
#include "text/pieces.h"

namespace test {
namespace {

namespace fs = std::filesystem;

class Schemas : public ProgramTest {
 protected:
  // Writes the schema; what: "lists".
  [[nodiscard]] std::string schema(const std::string& what) const {
    const std::string name = what + (what == "models" ? ".json" : ".rng");
    const Ended ended = kelvane({"schema", what});
    EXPECT_EQ(0, ended.code) << ended.err;
    file(name, ended.out);
    return path(name);
  }
  // A line for each of the files that isn't valid.
  [[nodiscard]] std::string invalid(const std::string& schema, const std::vector<std::string>& files) const {
    std::string command =
        "/usr/bin/python3 '" + sourceFolder() + "/tests/kelvane/vocabulary/validate.py' '" + schema + "'";
    for (const std::string& item : files) command += " '" + item + "'";
    const std::string said = path("said");
    const int ended = std::system((command + " > '" + said + "' 2> '" + said + ".err'").c_str());
    EXPECT_EQ(0, ended) << readBytes(said + ".err") << "install python3-lxml and python3-jsonschema";
    return readBytes(said);
  }
  // Each of the texts, in a file of its own, is refused.
  void expectRefused(const std::string& schema, const std::vector<std::string>& texts) const {
    std::vector<std::string> files;
    for (const std::string& text : texts) {
      const std::string name = "bad" + std::to_string(files.size());
      file(name, text);
      files.push_back(path(name));
    }
    const std::string said = invalid(schema, files);
    for (std::size_t i = 0; i < texts.size(); ++i) EXPECT_THAT(said, testing::HasSubstr(files[i] + ": ")) << texts[i];
  }
};

std::vector<std::string> filesOf(const std::string& folder, const std::string& ending) {
  std::vector<std::string> files;
  for (const auto& entry : fs::directory_iterator(folder))
    if (entry.path().string().find(ending) != std::string::npos) files.push_back(entry.path().string());
  std::erase_if(files, [](const std::string& name) { return name.ends_with("info"); });
  return files;
}

std::string listOf(const std::string& tasks) {
  return text::replaceAll("<actionlist><head/><body>" + tasks + "</body><filter/><foot/></actionlist>", "'", "\"");
}
std::string filterOf(const std::string& items) { return text::replaceAll("<root>" + items + "</root>", "'", "\""); }

TEST_F(Schemas, ShippedListsAndFiltersAreValid) {
  const std::string package = example("packages/standards");
  EXPECT_EQ("", invalid(schema("lists"), filesOf(package + "/actionlists", ".xml")));
  EXPECT_EQ("", invalid(schema("filters"), filesOf(package + "/filters", ".xml")));
}

TEST_F(Schemas, WhatListsMayNotHoldIsRefused) {
  const std::string lists = schema("lists");
  const std::string task = "<task type='renameLayer' version='3' forPRT='true' ";
  file("good",
       listOf(task + "namef_7='A' namet_7='B'><filter><item type='isInstance' filtertype='true'/></filter></task>"));
  EXPECT_EQ("", invalid(lists, {path("good")}));
  expectRefused(lists, {listOf("<task type='renameLayr' version='3'/>"), listOf("<task type='saveModel' version='2'/>"),
                        listOf("<task type='saveModel' version='3' forPRT='True'/>"),
                        listOf("<task type='saveModel' version='3' namef_0='A'/>"),
                        listOf("<task type='setAccuracy' version='3' valtype='relative' value='0.01'/>"),
                        listOf("<task type='setAccuracy' version='3' valtype='rel' value='wide'/>"),
                        listOf(task + "nmaef_0='A' namet_0='B'/>"),
                        listOf("<task type='groupActions' version='3' reworkMode='1'/>"),
                        listOf("<task type='saveModel' version='3'><filter><item type='isInstance'/></filter></task>"),
                        "<actionlist><head/><body/><foot/></actionlist>"});
}

TEST_F(Schemas, WhatFiltersMayNotHoldIsRefused) {
  const std::string parameter = "<item type='parameter' filtertype='true' param='A' ";
  expectRefused(schema("filters"),
                {filterOf("<item type='isInstanze' filtertype='true'/>"), filterOf("<item type='isInstance'/>"),
                 filterOf(parameter + "/>"), filterOf(parameter + "value='1' ncomp='9'/>"),
                 filterOf(parameter + "value='1' valeu='2'/>"), filterOf(parameter + "value='1' opand='AND'/>")});
}

// The examples that the program tells are such as it takes itself.
TEST_F(Schemas, ExamplesOfAllKeysAreValidAndPassTheCheck) {
  std::string tasks, items;
  for (const auto& row : nlohmann::json::parse(kelvane({"actions", "--json"}).out))
    tasks += row.value("example", "") + "\n";
  for (const auto& row : nlohmann::json::parse(kelvane({"predicates", "--json"}).out))
    items += row.value("example", "") + "\n";
  list("all.xml", tasks);
  file("standards/filters/all.xml", "<root>\n" + items + "</root>\n");
  file("all.xml", "<list><head/><body>" + tasks + "</body><filter/><foot/></list>");
  EXPECT_EQ("", invalid(schema("lists"), {path("all.xml")}));
  EXPECT_EQ("", invalid(schema("filters"), {path("standards/filters/all.xml")}));
  const std::string found = kelvane({"check", path("standards")}).out;
  for (const char* fault : {"unknown action", "has no attribute", "action '[A-Za-z0-9]*' has no", ": none of",
                            ": no number", ": no whole number", "has version", "is for no model", "unknown filter",
                            "filter '[A-Za-z0-9]*' has no", "filter '[A-Za-z0-9]*', "})
    EXPECT_THAT(found, testing::Not(testing::ContainsRegex(fault)));
}

TEST_F(Schemas, ShippedDocumentsAreValidAndBrokenOnesAreRefused) {
  const std::string models = schema("models");
  EXPECT_EQ("", invalid(models, filesOf(example("workspace"), ".")));
  file("unknown", R"({"format": 1, "note": "kept", "features": [{"id": 1, "mine": {}}], "relations": ["A = 1"]})");
  EXPECT_EQ("", invalid(models, {path("unknown")}));
  expectRefused(
      models,
      {R"({"parameters": []})", R"({"format": 2})", R"({"format": 1, "parameters": [{"name": "A"}]})",
       R"({"format": 1, "parameters": [{"name": "A", "type": "double", "value": "2"}]})",
       R"({"format": 1, "parameters": [{"name": "A", "type": "text", "value": "2"}]})",
       R"({"format": 1, "materials": [{"name": "S", "parameters": [{"name": "A", "type": "boolean", "value": 1}]}]})",
       R"({"format": 1, "solid": {"primitives": [{"type": "box"}]}})",
       R"({"format": 1, "solid": {"primitives": [{"type": "import", "file": "../a.stp"}]}})",
       R"({"format": 1, "drafts": [{"sheet": 1, "lines": [[0, 0, 1]]}]})",
       R"({"format": 1, "shownDimensions": [{"model": "A.prt", "id": 1, "view": "FRONT"}]})",
       R"({"format": 1, "dimensions": [{"id": 1, "position": {"x": 1}}]})",
       R"({"format": 1, "familyTable": {"instances": [{"name": "A", "familyTable": {"items": [{}]}}]}})",
       R"({"format": 1, "externalData": {"c": {"s": {"value": 1}}}})"});
}

class Init : public Schemas {};

TEST_F(Init, PackageChecksRunsAndNamesTheSchemaBesideIt) {
  part(L"PLATE");
  const std::string package = path("works");
  Ended ended = kelvane({"init", package});
  ASSERT_EQ(0, ended.code) << ended.err;
  ended = kelvane({"check", package});
  EXPECT_EQ("", ended.out);
  EXPECT_EQ(0, ended.code);
  ended = kelvane({"run", package, "first", models()});
  EXPECT_EQ(0, ended.code) << ended.err;
  EXPECT_THAT(recapOf(ended), testing::HasSubstr("models=1"));

  const std::string list = package + "/actionlists/first.xml", filter = package + "/filters/no_instances.xml";
  EXPECT_THAT(readBytes(list), testing::HasSubstr("\n<?xml-model href=\"../.schema/lists.rng\" "));
  EXPECT_EQ("", invalid(package + "/.schema/lists.rng", {list}));
  EXPECT_EQ("", invalid(package + "/.schema/filters.rng", {filter}));
  EXPECT_EQ(0, kelvane({"pack", package, path("works.kvz")}).code);
  EXPECT_EQ("first.xml  Writes the name of each model to the log.\n", kelvane({"lists", path("works.kvz")}).out);
}

TEST_F(Init, PlaceThatExistsIsLeftAlone) {
  file("works/mine.txt", "mine");
  for (const std::string& place : {path("works"), path("works/mine.txt")}) {
    const Ended ended = kelvane({"init", place});
    EXPECT_EQ(2, ended.code);
    EXPECT_EQ("kelvane: " + place + " is there already; a new package needs a folder of its own\n", ended.err);
  }
  EXPECT_EQ(std::vector<std::string>{"mine.txt"}, filesIn("works"));
  const Ended nameless = kelvane({"init", ""});
  EXPECT_EQ(2, nameless.code);
  EXPECT_EQ("kelvane: init: the new folder needs a name\n", nameless.err);
}

}  // namespace
}  // namespace test

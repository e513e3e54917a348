// Parameters and dimensions that take their values from a table.
#include <filesystem>

#include "actions/action_fixture.h"
#include "text/encoding.h"

namespace test {
namespace {

class EditFromFile : public ActionTest {
 protected:
  static void fill(const World& world) {
    writeBytes(world.models() + "/bracket.prt.1", R"({"format": 1, "relations": ["DRIVEN = COUNT", "d3 = 4"],
      "parameters": [{"name": "COLOR", "type": "string", "value": "red"}, {"name": "COUNT", "type": "integer", "value": 7},
                     {"name": "DRIVEN", "type": "integer", "value": 7}],
      "dimensions": [{"id": 1, "symbol": "LENGTH", "value": 10}, {"id": 2, "value": 2.5}, {"id": 3, "value": 4.0},
                     {"id": 1, "reference": true, "value": 5.0}]})");
  }
  // The document's dimensions: "LENGTH=10 d2=2.5".
  static std::string dimensions(const World& world) {
    std::string all = world.document("BRACKET.prt");
    std::erase_if(all, [](char c) { return c == ' ' || c == '\n'; });
    const std::size_t at = all.find("\"dimensions\":[") + 14;
    return all.substr(at, all.find(']', at) - at);
  }
  struct Case {
    std::string table, attributes;
    std::wstring saved, said;
  };
  static void expectEach(const std::string& key, const std::vector<Case>& cases) {
    for (const Case& entry : cases) {
      World own;
      fill(own);
      writeBytes(own.models() + "/values.csv", entry.table);
      const std::string path = entry.attributes.find("path=") == std::string::npos ? "path='d:\\values.csv' " : "";
      own.list("list.xml", task(key, path + entry.attributes) + task("saveModel"));
      own.runOn(L"BRACKET", creo::ProMdlType::part, "list.xml");
      EXPECT_EQ(entry.saved, own.savedParameters("BRACKET.prt")) << entry.table;
      EXPECT_NE(std::wstring::npos, told(own.log()).find(entry.said)) << entry.table << text::toUtf8(own.log());
    }
  }
};

TEST_F(EditFromFile, ParametersTakeTheRowsOfTheirModel) {
  const std::wstring same = L"COLOR=red COUNT=7 DRIVEN=7";
  const std::string titles = "Model Name;parameter name;value\n";
  expectEach(
      "editModelParameterFromFile",
      {
          {titles + "OTHER;COLOR;no\nbracket;color;dark @para@\n*.PRT;COUNT;8\nBRACKET.PRT;COUNT;9\n;COLOR;no\n", "",
           L"COLOR=dark red COUNT=9 DRIVEN=7",
           L"Edit model parameter from file d:\\values.csv|Create new Memory Tables|Set parameter 'COLOR' to value "
           L"'dark "
           L"@para@'|set 'COLOR' value to 'dark red'|Set parameter 'COUNT' to value '8'"},
          {"value,x,parameter name,model name\ngr\xC3\xBCn,,COLOR,BRACKET\n", "sep='com' filetype='1'",
           L"COLOR=gr\u00FCn COUNT=7 DRIVEN=7", L""},
          {titles + "BRACKET;COLOR;blue\n", "path='values.csv'", L"COLOR=blue COUNT=7 DRIVEN=7", L""},
          {titles + "BRACKET;DRIVEN;1\nBRACKET;NONE;1\nBRACKET;COUNT;many\n", "", same,
           L"E:Parameter 'DRIVEN' can't be edit, because it is relation driven|E:Parameter can't be found on Model: "
           L"NONE|"
           L"Set parameter 'COUNT' to value 'many'|E:Failure at parameter 'COUNT' while cast value 'many' to integer"},
          {titles + "BRACKET;COUNT;8.9\n", "", L"COLOR=red COUNT=8 DRIVEN=7", L"W:'8.9' is read as 8"},
          // A row that ends early empties nothing; one that says so does.
          {titles + "BRACKET;COLOR\nBRACKET;COUNT;8\n", "", L"COLOR=red COUNT=8 DRIVEN=7",
           L"W:d:\\values.csv: a row for 'COLOR' ends before its value, nothing is set by it|Set parameter 'COUNT'"},
          {titles + "BRACKET;COLOR;\n", "", L"COLOR= COUNT=7 DRIVEN=7", L"set 'COLOR' value to ''"},
          {titles + "BRACKET;COUNT;8\n\"BRACKET;COLOR;blue\n*;COUNT;9\n", "", L"COLOR=red COUNT=8 DRIVEN=7",
           L"E:values.csv: A quote is never closed: the record of line 3 takes in the rest of the file and isn't used"},
          {"model name;parameter\nBRACKET;COLOR\n", "", same,
           L"E:d:\\values.csv: there is no column 'parameter name'|E:d:\\values.csv: there is no column 'value'"},
          {"", "", same, L"E:d:\\values.csv: there is no column 'model name'"},
          {titles + "BRACKET;COLOR;x\n", "path='d:\\none.csv'", same, L"E:The file 'd:\\none.csv' was not found"},
      });
}

TEST_F(EditFromFile, ADictionaryReplacesPresentValues) {
  const std::string titles = "model name;parameter name;present value;value\n";
  expectEach(
      "editParameterFromDictionary",
      {{titles + "*;COLOR;red;blue\n*;COLOR;blue;green\n*;COUNT;6;60\n*;COUNT;7;70\n", "",
        L"COLOR=blue COUNT=70 DRIVEN=7",
        L"Edit parameter from dictionary|Create new Memory Tables|Set parameter 'COLOR' from 'red' to 'blue'"},
       {titles + "*;COLOR;gr*;blue\n*;NONE;*;x\n*;NONE;*;y\n", "", L"COLOR=red COUNT=7 DRIVEN=7",
        L"E:Parameter can't be found on Model: NONE|B1"},
       {"model name;parameter name;value\n*;COLOR;blue\n*;COLOR;green\n", "", L"COLOR=blue COUNT=7 DRIVEN=7", L""}});
}

TEST_F(EditFromFile, DimensionsTakeTheRowsOfTheirModel) {
  fill(world);
  writeBytes(world.models() + "/values.csv",
             "model name;dimension name;value\nBRACKET;length;@line@1\nBRACKET;d2;3\nBRACKET;d3;1\nBRACKET;rd1;1\n"
             "BRACKET;d9;1\nBRACKET;d2;wide\nBRACKET;d2;inf\nBRACKET;d2;2,5\n");
  const std::wstring log = run(task("editModelDimensionFromFile", "path='d:\\values.csv'") + task("saveModel"));
  EXPECT_EQ(
      L"B0 Edit model dimension from file|Create new Memory Tables|set 'length' value to '10.000000'|"
      L"set 'd2' value to '3.000000'|set 'd3' value to '1.000000'|E:The dimension 'd3' can't be set|"
      L"set 'rd1' value to '1.000000'|E:The dimension 'rd1' can't be set|E:Dimension can't be found on Model: d9|"
      L"E:Failure at dimension 'd2' while cast value 'wide' to double|"
      L"E:Failure at dimension 'd2' while cast value 'inf' to double|"
      L"W:'2,5' is read as 2: the decimal sign is a point|set 'd2' value to '2.000000'|B1 Save model",
      log);
  EXPECT_EQ(R"({"id":1,"symbol":"LENGTH","value":10.0000001},{"id":2,"value":2.0},{"id":3,"value":4.0},)"
            R"({"id":1,"reference":true,"value":5.0})",
            dimensions(world));
}

TEST_F(EditFromFile, AnInstanceHasDimensionsOfItsOwn) {
  writeBytes(world.models() + "/bolt.prt.1", R"({"format": 1, "dimensions": [{"id": 1, "symbol": "L", "value": 10.0}],
    "familyTable": {"items": [], "instances": [{"name": "M4"}, {"name": "M5"}]}})");
  writeBytes(world.models() + "/values.csv", "model name;dimension name;value\nM4;L;40\nM5;L;10\n");
  world.config("kvd_filter_inst=1\nkvd_filter_curmod=1");
  run(task("editModelDimensionFromFile", "path='d:\\values.csv'") + task("saveModel"), L"M4");
  std::string all = world.document("BOLT.prt");
  std::erase_if(all, [](char c) { return c == ' ' || c == '\n'; });
  EXPECT_NE(std::string::npos, all.find(R"("symbol":"L","value":10.0)")) << all;
  EXPECT_NE(std::string::npos, all.find(R"({"type":"dimension","name":"L"})")) << all;
  EXPECT_NE(std::string::npos, all.find(R"("name":"M4","values":{"L":40.0})")) << all;
}

TEST_F(EditFromFile, AFailingOperationKeepsTheOldValue) {
  const char* operations[] = {"ProParameterInit",     "ProParameterValueSet",   "ProParameterScaledvalueGet",
                              "ProMdlToModelitem",    "ProSolidDimensionVisit", "ProDimensionSymbolGet",
                              "ProDimensionValueGet", "ProDimensionValueSet"};
  for (const char* operation : operations) {
    World own;
    fill(own);
    writeBytes(own.models() + "/values.csv",
               "model name;parameter name;dimension name;value\nBRACKET;COUNT;LENGTH;8\n");
    own.list("list.xml", task("editModelParameterFromFile", "path='d:\\values.csv'") +
                             task("editModelDimensionFromFile", "path='d:\\values.csv'") + task("saveModel"));
    own.start();
    own.open(L"BRACKET", creo::ProMdlType::part);
    own.openTool();
    own.choose("list.xml");
    own.session().failNext(operation, creo::ProGeneralError);
    own.pressStart();
    const std::wstring count = own.savedParameters("BRACKET.prt");
    EXPECT_TRUE(count == L"COLOR=red COUNT=7 DRIVEN=7" || count == L"COLOR=red COUNT=8 DRIVEN=7") << operation;
    EXPECT_TRUE(count.find(L"COUNT=7") != count.npos || dimensions(own).find("\"value\":10}") != std::string::npos)
        << operation << dimensions(own);
    EXPECT_NE(std::wstring::npos, told(own.log()).find(L"E:")) << operation;
  }
}

// Many models and one table: it is read once, and a row is looked at for its own model alone.
TEST_F(EditFromFile, AWorkbookIsConvertedOnceAndGoesWithTheRun) {
  os::surroundings().processes = os::machineProcesses();
  for (const wchar_t* name : {L"A", L"B", L"C"}) world.part(name).with(L"COLOR", L"red");
  world.assembly(L"TOP")
      .uses(L"A", creo::ProMdlType::part)
      .uses(L"B", creo::ProMdlType::part)
      .uses(L"C", creo::ProMdlType::part);
  writeBytes(world.models() + "/values.xls", "model name;parameter name;value\nA;COLOR;1\nB;COLOR;2\n");
  const std::string file = World::machine(L"c:\\conf\\xls2csv.vbs");
  writeBytes(file, "#!/bin/sh\necho ran >>'" + world.temp() + "/runs'\ncp \"$1\" \"$2\"\n");
  std::filesystem::permissions(file, std::filesystem::perms::owner_all);
  run(task("editModelParameterFromFile", "path='d:\\values.xls'") + task("saveModel"), L"TOP",
      creo::ProMdlType::assembly);
  EXPECT_EQ(L"COLOR=1", world.savedParameters("A.prt"));
  EXPECT_EQ(L"COLOR=2", world.savedParameters("B.prt"));
  EXPECT_EQ(L"COLOR=red", world.savedParameters("C.prt"));
  EXPECT_EQ("ran\n", readBytes(world.temp() + "/runs"));
  EXPECT_FALSE(os::files().exists(L"t:\\values_xls.csv"));
}

class FeatureReport : public ActionTest {};

TEST_F(FeatureReport, ListsFeaturesWithTheirParameters) {
  writeBytes(world.models() + "/bracket.prt.1", R"({"format": 1, "features": [
    {"id": 5, "name": "HOLE_1", "type": 911, "parameters": [{"name": "DEPTH", "type": "double", "value": 2.5},
       {"name": "KIND", "type": "string", "value": "say \"M8\""}, {"name": "OK", "type": "boolean", "value": true}]},
    {"id": 9, "type": 913, "typeName": "ROUND", "parameters": [{"name": "COUNT", "type": "integer", "value": 3},
       {"name": "KIND", "type": "string", "value": "x\ny"}]},
    {"id": 12, "type": 1}]})");
  const std::string begin = "\xEF\xBB\xBF\"feature name\"";
  struct Case {
    std::string attributes, expected;
  };
  const Case cases[] = {
      {"sep=';'",
       begin + ";\"feature id\";\"DEPTH\";\"KIND\";\"OK\";\"COUNT\"\r\n"
               "\"HOLE_1\";\"5\";\"2.500000\";\"say \"\"M8\"\"\";\"true\";\"\"\r\n"
               "\"ROUND_id_9\";\"9\";\"\";\"x\ny\";\"\";\"3\"\r\n\"FEATURE_id_12\";\"12\";\"\";\"\";\"\";\"\"\r\n"},
      {"filterFeatureName='kind' filterFeatureValue='*' filterReportParameter='K*'",
       begin + ",\"feature id\",\"KIND\"\r\n\"HOLE_1\",\"5\",\"say \"\"M8\"\"\"\r\n\"ROUND_id_9\",\"9\",\"x\ny\"\r\n"},
      {"filterFeatureName='DEPTH' filterFeatureValue='2.50' filterReportParameter='NONE'",
       begin + ",\"feature id\"\r\n\"HOLE_1\",\"5\"\r\n"},
      {"filterFeatureName='OK' filterFeatureValue='yes' filterReportParameter='*'", begin + ",\"feature id\"\r\n"},
      {"filterFeatureName='COUNT' filterFeatureValue='3' filterReportParameter='OK'",
       begin + ",\"feature id\"\r\n\"ROUND_id_9\",\"9\"\r\n"},
      {"filterFeatureName='COUNT' filterFeatureValue='x'", begin + ",\"feature id\"\r\n"},
  };
  world.config("kvd_write_history_in_models=0");
  std::string tasks;
  int number = 0;
  for (const Case& entry : cases)
    tasks +=
        task("reportFeatureParameter", "csvFileName='t:\\f" + std::to_string(number++) + ".csv' " + entry.attributes);
  const std::wstring log = run(tasks);
  number = 0;
  for (const Case& item : cases)
    EXPECT_EQ(item.expected, readBytes(world.temp() + "/f" + std::to_string(number++) + ".csv")) << item.attributes;
  EXPECT_EQ(0U, log.find(L"B0 Edit model parameter from table cell|Collect parameters|Build Header Row|Build Feature "
                         L"Rows|Convert to csv file|t:\\f0.csv|Charset: UTF-8|B1"))
      << text::toUtf8(log);
}

TEST_F(FeatureReport, SaysWhatCantBeWritten) {
  world.part(L"BRACKET");
  world.disk().denyWrites(L"d:\\sub");
  const std::wstring log =
      run(task("reportFeatureParameter", "csvFileName='d:\\sub\\f.csv'") + task("reportFeatureParameter"));
  EXPECT_NE(std::wstring::npos, log.find(L"E:The file d:\\sub\\f.csv can't be written"));
  EXPECT_NE(std::wstring::npos, log.find(L"E:The attribute csvFileName names no file"));
}

}  // namespace
}  // namespace test

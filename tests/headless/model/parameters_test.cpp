#include <limits>

#include "creo/ProExtdata.h"
#include "creo/ProFaminstance.h"
#include "creo/ProFamtable.h"
#include "creo/ProFeature.h"
#include "creo/ProMdl.h"
#include "creo/ProXsec.h"
#include "headless/model/units.h"
#include "headless/session_fixture.h"

namespace headless {
namespace {

using namespace creo;

class ParametersAndInstances : public test::HeadlessSession {
 protected:
  static ProParameter parameter(ProMdl model, const std::wstring& name) {
    return ProParameterInit(item(model), name).value;
  }
};

TEST_F(ParametersAndInstances, NamesOfNewParameters) {
  model("a.prt.1", R"("parameters": [{"name": "MASS", "type": "double"}])");
  const ProMdl part = retrieve(L"A");
  const std::pair<std::wstring, ProError> rows[] = {{L"Länge_2", ProNoError},
                                                    {L"_x", ProNoError},
                                                    {L"mass", ProExists},
                                                    {L"LÄNGE_2", ProExists},
                                                    {L"", ProBadInputs},
                                                    {L"2x", ProBadInputs},
                                                    {L"a b", ProBadInputs},
                                                    {L"a-b", ProBadInputs},
                                                    {std::wstring(31, L'A'), ProNoError},
                                                    {std::wstring(32, L'B'), ProBadInputs}};
  for (const auto& [name, expected] : rows)
    EXPECT_EQ(expected, ProParameterCreate(item(part), name, real(1)).error) << text::toUtf8(name);
  EXPECT_EQ("MASS=0 LÄNGE_2=1 _X=1 " + std::string(31, 'A') + "=1", parameters(part));
}

TEST_F(ParametersAndInstances, TwoOfOneNameAreToldApart) {
  model("a.prt.1",
        R"("parameters": [{"name": "X", "type": "integer", "value": 1}, {"name": "Y", "type": "integer", "value": 2},
      {"name": "x", "type": "integer", "value": 3}])");
  const ProMdl part = retrieve(L"A");
  std::vector<ProParameter> found;
  EXPECT_EQ(ProStopVisit, ProParameterVisit(item(part), [&](const ProParameter& parameter) {
              found.push_back(parameter);
              return found.size() == 3 ? ProStopVisit : ProNoError;
            }));
  EXPECT_EQ(3, ProParameterValueGet(found[2]).value.integer);
  EXPECT_EQ(ProNoError, ProParameterDelete(found[2]));
  EXPECT_EQ(ProNotFound, ProParameterValueGet(found[2]).error);
  EXPECT_EQ("X=1 Y=2", parameters(part));
}

TEST_F(ParametersAndInstances, WhatDrivesOrHoldsAParameter) {
  model("a.prt.1", R"("relations": ["/* FREE", "if OUT == 3", " OUT = HELD + \"QUOTED\"", "endif"], "parameters": [
      {"name": "OUT", "type": "double"}, {"name": "HELD", "type": "double"}, {"name": "QUOTED", "type": "double"},
      {"name": "FREE", "type": "double"}, {"name": "FUN", "type": "double", "driver": "function"}])");
  const ProMdl part = retrieve(L"A");
  struct Row {
    const wchar_t* name;
    ProParameterDriver driver;
    ProError set, remove;
  };
  const Row rows[] = {{L"OUT", ProParameterDriver::relation, ProGeneralError, ProGeneralError},
                      {L"HELD", ProParameterDriver::none, ProNoError, ProGeneralError},
                      {L"QUOTED", ProParameterDriver::none, ProNoError, ProNoError},
                      {L"FREE", ProParameterDriver::none, ProNoError, ProNoError},
                      {L"FUN", ProParameterDriver::function, ProGeneralError, ProGeneralError}};
  for (const Row& row : rows) {
    const ProParameter entry = parameter(part, row.name);
    EXPECT_EQ(row.driver, ProParameterDriverGet(entry).value) << text::toUtf8(row.name);
    EXPECT_EQ(row.set, ProParameterValueSet(entry, real(1))) << text::toUtf8(row.name);
    EXPECT_EQ(ProBadInputs, ProParameterValueSet(entry, string(L"1"))) << text::toUtf8(row.name);
    EXPECT_EQ(row.remove, ProParameterDelete(entry)) << text::toUtf8(row.name);
  }
}

TEST_F(ParametersAndInstances, FeaturesAndMaterialsOwnParameters) {
  model("a.prt.1", R"("features": [{"id": 7}], "materials": [{"name": "STEEL"}])");
  const ProMdl part = retrieve(L"A");
  const ProModelitem owners[] = {{ProItemType::feature, 7, part, {}}, {ProItemType::material, 0, part, L"steel"}};
  for (const ProModelitem& owner : owners) {
    EXPECT_EQ(ProNotFound, ProParameterVisit(owner, [](const ProParameter&) { return ProNoError; }));
    const auto made = ProParameterWithUnitsCreate(owner, L"T", real(2), L"mm");
    EXPECT_EQ(ProNoError, made.error);
    EXPECT_EQ(L"mm", ProParameterUnitsGet(made.value).value);
    EXPECT_EQ(ProGeneralError, ProParameterWithUnitsCreate(owner, L"U", real(2), L"parsec").error);
  }
  EXPECT_EQ(ProBadInputs, ProParameterInit({ProItemType::feature, 8, part, {}}, L"T").error);
  EXPECT_EQ(ProBadInputs, ProParameterInit({ProItemType::material, 0, part, L"WOOD"}, L"T").error);
}

TEST_F(ParametersAndInstances, DescriptionAndDesignation) {
  model("a.prt.1", R"("parameters": [{"name": "X", "type": "string"}])");
  const ProParameter entry = parameter(retrieve(L"A"), L"X");
  EXPECT_EQ(ProNotFound, ProParameterDescriptionGet(entry).error);
  EXPECT_EQ(ProNoError, ProParameterDescriptionSet(entry, std::wstring(80, L'ä')));
  EXPECT_EQ(ProBadInputs, ProParameterDescriptionSet(entry, std::wstring(81, L'b')));
  EXPECT_EQ(std::wstring(80, L'ä'), ProParameterDescriptionGet(entry).value);
  EXPECT_EQ(ProNoError, ProParameterDesignationAdd(entry));
  EXPECT_EQ(ProExists, ProParameterDesignationAdd(entry));
  EXPECT_TRUE(ProParameterDesignationVerify(entry).value);
  EXPECT_EQ(ProNoError, ProParameterDesignationRemove(entry));
  EXPECT_FALSE(ProParameterDesignationVerify(entry).value);
  EXPECT_EQ(ProNotFound, ProParameterUnitsGet(entry).error);
}

TEST_F(ParametersAndInstances, NumbersGoFromUnitsToSystemsAndBack) {
  struct Row {
    double value;
    const char* unit;
    const char* system;
    double expected;
  };
  const Row rows[] = {{2, "in", "", 50.8},        {2, "mm", "mmKs", 2},     {1, "t", "mmKs", 1000},
                      {1, "t", "mmNs", 1},        {1, "N", "mks", 1},       {1, "N", "mmNs", 1},
                      {1, "N", "mmKs", 1000},     {100, "C", "inlbs", 212}, {32, "F", "mmKs", 0},
                      {1, "kg/m^3", "cgs", 1e-3}, {1, "N*mm", "mks", 1e-3}, {1, "h", "mks", 3600},
                      {1, "MPa", "mmNs", 1},      {180, "deg", "", 180},    {5, "furlong", "", 5},
                      {5, "mm^", "", 5},          {300, "K", "", 26.85},    {20, "C", "mks", 293.15}};
  for (const Row& row : rows) {
    ModelRecord record;
    record.units = row.system;
    EXPECT_NEAR(row.expected, inSystem(row.value, row.unit, record), 1e-9) << row.unit << " in " << row.system;
    EXPECT_NEAR(row.value, fromSystem(row.expected, row.unit, record), 1e-9) << row.unit << " of " << row.system;
  }
}

// Read and written plainly a value is in the units of the model, scaled in the parameter's own.
TEST_F(ParametersAndInstances, ValuesCountInTheModelsUnitsOrInTheirOwn) {
  struct Row {
    double stored;
    const char* units;
    double inModel;         // as it is read
    double written, after;  // a value in the model's units, and what is stored then
  };
  const Row rows[] = {{5, "in", 127, 25.4, 1},       {3, "in", 76.2, 76.2, 3}, {2.5, "cm", 25, 10, 1},
                      {1.005, "m", 1005, 1500, 1.5}, {7, "mm", 7, 0.1, 0.1},   {0.1, "kg/m^3", 1e-10, 7.85e-6, 7850}};
  for (const Row& row : rows) {
    model("u.prt.1", R"("parameters": [{"name": "X", "type": "double", "value": )" + std::to_string(row.stored) +
                         R"(, "units": ")" + row.units + "\"}]");
    const ProMdl part = retrieve(L"U");
    const ProParameter entry = parameter(part, L"X");
    const auto scaled = [&] { return ProParameterScaledvalueGet(entry).value.real; };
    EXPECT_EQ(row.inModel, ProParameterValueGet(entry).value.real) << row.units;
    EXPECT_EQ(ProNoError, ProParameterValueSet(entry, real(row.inModel)));
    EXPECT_EQ(row.stored, scaled()) << row.units << ": what was read is written";
    EXPECT_FALSE(ProMdlModificationVerify(part).value) << row.units;
    EXPECT_EQ(ProNoError, ProParameterValueSet(entry, real(row.written)));
    EXPECT_EQ(row.after, scaled()) << row.units;
    EXPECT_EQ(row.written, ProParameterValueGet(entry).value.real) << row.units;
    EXPECT_EQ(ProNoError, ProParameterScaledvalueSet(entry, real(row.stored)));
    EXPECT_EQ(row.inModel, ProParameterValueGet(entry).value.real) << row.units;
    endSession();
  }
}

TEST_F(ParametersAndInstances, UnitsOfRowsAndOfWhatIsTooLarge) {
  model("bolt.prt.1", R"("parameters": [{"name": "LEN", "type": "double", "value": 1, "units": "in"},
      {"name": "FAR", "type": "double", "value": 1e308, "units": "km"}],
      "familyTable": {"items": [{"type": "parameter", "name": "LEN"}], "instances": [
      {"name": "B2", "values": {"LEN": 2}}]})");
  const ProMdl b2 = retrieve(L"B2");
  EXPECT_EQ(50.8, ProParameterValueGet(parameter(b2, L"LEN")).value.real);
  EXPECT_EQ(ProNoError, set(b2, L"LEN", real(76.2)));
  const ProFaminstance row{L"B2", ProMdlInit(L"BOLT", ProMdlType::part).value};
  EXPECT_EQ(3, ProFaminstanceValueGet(row, {ProFamitemType::parameter, L"LEN"}).value.real) << "as the table shows it";
  EXPECT_EQ(1, ProParameterScaledvalueGet(parameter(row.owner, L"LEN")).value.real);
  EXPECT_EQ(ProGeneralError, ProParameterValueGet(parameter(b2, L"FAR")).error);
  model("yard.prt.1", R"("units": "mks", "parameters": [{"name": "X", "type": "double", "units": "micron"}])");
  EXPECT_EQ(ProBadInputs, set(retrieve(L"YARD"), L"X", real(1e304)));
}

TEST_F(ParametersAndInstances, ValuesFromTexts) {
  session();
  ProParamvalue value;
  ProParamvalueSet(value, L"2,5", ProParamvalueType::real);
  EXPECT_EQ(2, value.real);
  ProParamvalueSet(value, L" -7x", ProParamvalueType::integer);
  EXPECT_EQ(-7, value.integer);
  for (const wchar_t* none : {L"nan", L"Information", L"-1e999"})
    EXPECT_EQ(ProBadInputs, ProParamvalueSet(value, none, ProParamvalueType::real)) << text::toUtf8(none);
  ProParamvalueSet(value, L"True", ProParamvalueType::boolean);
  EXPECT_FALSE(value.boolean);
  EXPECT_EQ(ProBadInputs, ProParamvalueSet(value, L"x", ProParamvalueType::none));
  EXPECT_EQ(ProParamvalueType::boolean, value.type);
}

TEST_F(ParametersAndInstances, NoNumberThatIsNoneIsEverTaken) {
  model("bolt.prt.1", R"("parameters": [{"name": "LEN", "type": "double", "value": 10.0}], "features": [{"id": 1,
    "name": "MID", "type": 923}], "familyTable": {"items": [{"type": "parameter", "name": "LEN"}],
    "instances": [{"name": "B20", "values": {"LEN": 20.0}}]})");
  session();
  const ProMdl part = retrieve(L"BOLT");
  for (const double none : {std::numeric_limits<double>::quiet_NaN(), -std::numeric_limits<double>::infinity()}) {
    ProParamvalue value;
    value.type = ProParamvalueType::real;
    value.real = none;
    EXPECT_EQ(ProBadInputs, ProParameterValueSet(parameter(part, L"LEN"), value));
    EXPECT_EQ(ProBadInputs, ProParameterCreate(ProMdlToModelitem(part).value, L"NEW", value).error);
    EXPECT_EQ(ProBadInputs, ProFaminstanceValueSet({L"B20", part}, {ProFamitemType::parameter, L"LEN"}, value));
    const ProFeature plane{part, 1};
    EXPECT_EQ(ProGeneralError, ProXsecParallelCreate(part, L"A", plane, none).error);
  }
  EXPECT_EQ(10, ProParameterValueGet(parameter(part, L"LEN")).value.real);
  // What got in all the same never reaches the disk.
  session().models().find(part)->document->record.density = std::numeric_limits<double>::infinity();
  EXPECT_EQ(ProGeneralError, ProMdlSave(part));
  EXPECT_EQ("bolt.prt.1", files());
}

constexpr const char* kBolts =
    R"("parameters": [{"name": "LEN", "type": "double", "value": 10}, {"name": "MAT", "type": "string",
    "value": "steel"}], "familyTable": {"items": [{"type": "parameter", "name": "LEN"}], "instances": [
    {"name": "b20", "values": {"LEN": 20}, "familyTable": {"items": [{"type": "parameter", "name": "MAT"}],
      "instances": [{"name": "b20_zinc", "values": {"MAT": "zinc"}}]}},
    {"name": "B30"}, {"name": "WRONG", "values": {"LEN": "long"}}]})";

TEST_F(ParametersAndInstances, InstancesTakeTheirRowsValues) {
  model("bolts.prt.3", kBolts);
  const ProMdl zinc = retrieve(L"B20_ZINC");  // a bare name, two tables down
  EXPECT_EQ("LEN=20 MAT=zinc", parameters(zinc));
  EXPECT_EQ("LEN=10 MAT=steel", parameters(retrieve(L"B30<BOLTS>")));
  EXPECT_EQ(L"B20_ZINC", ProMdlNameGet(zinc).value);
  EXPECT_EQ(ProGeneralError, ProFaminstanceGenericGet(zinc, true).error) << "it isn't in memory, and isn't brought";
  const ProGenericInfo info = ProFaminstanceImmediategenericinfoGet(zinc).value;
  EXPECT_EQ(L"B20", info.name);
  const ProMdl generic = ProMdlInit(L"BOLTS", ProMdlType::part).value;
  const ProMdl b20 = retrieve(info.name, info.type);
  EXPECT_EQ(b20, ProFaminstanceGenericGet(zinc, true).value);
  EXPECT_EQ(generic, ProFaminstanceGenericGet(zinc, false).value);
  EXPECT_EQ(generic, ProFaminstanceGenericGet(b20, true).value);
  EXPECT_EQ(ProNotFound, ProFaminstanceGenericGet(generic, true).error);
  EXPECT_EQ(ProNotFound, ProFaminstanceImmediategenericinfoGet(generic).error);
  EXPECT_EQ(ProNoError, ProSolidFamtableCheck(b20));
  EXPECT_EQ(ProNotFound, ProSolidFamtableCheck(zinc));
  EXPECT_EQ(ProNotFound, ProFamtableInit(zinc).error);
  std::wstring rows;
  ProFamtableInstanceVisit(ProFamtableInit(generic).value, [&](const ProFaminstance& row) {
    rows += L" " + row.name + (ProFaminstanceRetrieve(row) ? L"" : L"!");
    return ProNoError;
  });
  EXPECT_EQ(L" B20 B30 WRONG!", rows);
  EXPECT_EQ("WRONG<BOLTS> can't be built: the value of 'LEN' is of another type\n", messages());
  EXPECT_EQ(ProNotFound, ProMdlRetrieve(L"B40<BOLTS>", ProMdlType::part).error);
  EXPECT_EQ(ProGeneralError, ProMdlErase(generic)) << "its instances are in memory";
}

TEST_F(ParametersAndInstances, EmptyTablesAndNoneAreTwoAnswers) {
  model("none.prt.1");
  model("empty.prt.1", R"("parameters": [{"name": "LEN", "type": "double", "value": 3}],
      "familyTable": {"items": [{"type": "parameter", "name": "LEN"}], "instances": []})");
  const ProMdl none = retrieve(L"NONE"), empty = retrieve(L"EMPTY");
  EXPECT_EQ(ProNotFound, ProSolidFamtableCheck(none));
  EXPECT_EQ(ProNotFound, ProFamtableCheck({none}));
  EXPECT_EQ(ProNotFound, ProFaminstanceAdd({L"LONG", none}));
  EXPECT_EQ(ProNoFamtable, ProSolidFamtableCheck(empty));
  EXPECT_EQ(ProNoFamtable, ProFamtableCheck(ProFamtableInit(empty).value));
  EXPECT_EQ(ProExists, ProFaminstanceAdd({L"NONE", empty})) << "a model in memory has the name";
  EXPECT_EQ(ProBadInputs, ProFaminstanceAdd({std::wstring(32, L'N'), empty}));
  EXPECT_EQ(ProNoError, ProFaminstanceAdd({L"LONG", empty}));
  EXPECT_EQ(ProExists, ProFaminstanceAdd({L"long", empty}));
  EXPECT_EQ(ProNoError, ProFamtableCheck({empty}));
  EXPECT_EQ("LEN=3", parameters(ProFaminstanceRetrieve({L"LONG", empty}).value));
  EXPECT_EQ(ProNoError, ProMdlSave(empty));
  endSession();
  EXPECT_EQ("LEN=3", parameters(retrieve(L"LONG")));
}

TEST_F(ParametersAndInstances, WhatIsChangedOnAnInstanceLiesInItsRow) {
  model("bolts.prt.1", kBolts);
  ProMdl b30 = retrieve(L"B30");
  const ProMdl generic = ProMdlInit(L"BOLTS", ProMdlType::part).value;
  const ProMdl b20 = retrieve(L"B20");
  EXPECT_EQ(ProNoError, set(b30, L"MAT", string(L"brass")));  // there is no such column yet
  EXPECT_EQ(ProNoError, set(b20, L"LEN", real(22)));
  EXPECT_EQ(ProNoError, ProParameterCreate(item(b30), L"OWN", real(1)).error);
  EXPECT_EQ(ProGeneralError, ProParameterDelete(parameter(b30, L"LEN")));
  const ProExtdataClass cls = ProExtdataClassRegister(b30, L"c").value;
  ProExtdataSlotCreate(cls, L"s");
  ProExtdataSlotWrite(cls, L"s", {ProExtdataType::integer, 5, {}}, 1);
  erase(b30);
  EXPECT_TRUE(ProMdlModificationVerify(generic).value);
  b30 = retrieve(L"B30");
  EXPECT_TRUE(ProMdlModificationVerify(b30).value);
  EXPECT_EQ("LEN=10 MAT=brass OWN=1", parameters(b30));
  EXPECT_EQ("LEN=10 MAT=steel", parameters(generic));
  EXPECT_EQ(ProNoError, ProMdlSave(b30));
  EXPECT_EQ("bolts.prt.1 bolts.prt.2", files());
  EXPECT_EQ(L"BOLTS", session().savedDocuments()[0].name);
  for (const ProMdl current : {generic, b20, b30}) EXPECT_FALSE(ProMdlModificationVerify(current).value);
  endSession();
  EXPECT_EQ("LEN=22 MAT=steel", parameters(retrieve(L"B20")));
  b30 = retrieve(L"B30");
  EXPECT_EQ("LEN=10 MAT=brass OWN=1", parameters(b30));
  EXPECT_EQ(5, ProExtdataSlotRead({L"c", b30}, L"s").value.integer);
  EXPECT_EQ(ProNotFound, ProExtdataSlotRead({L"c", retrieve(L"B20")}, L"s").error);
}

TEST_F(ParametersAndInstances, ColumnsComeAndGoWithTheirParameters) {
  model("bolts.prt.1", kBolts);
  model("plain.prt.1", R"("parameters": [{"name": "LEN", "type": "double"}])");
  const ProMdl generic = retrieve(L"BOLTS");
  const ProMdl b20 = retrieve(L"B20");
  const ProFamtable table = ProFamtableInit(generic).value;
  EXPECT_EQ(ProExists, ProFamtableItemAdd(table, ProParameterToFamtableItem(parameter(generic, L"len")).value));
  EXPECT_EQ(ProNoError, ProFamtableItemAdd(table, ProParameterToFamtableItem(parameter(generic, L"MAT")).value));
  EXPECT_EQ(ProGeneralError, ProFamtableItemAdd({retrieve(L"PLAIN")}, {ProFamitemType::parameter, L"LEN"}));
  EXPECT_EQ(ProNotFound, ProFamtableItemRemove(table, {ProFamitemType::parameter, L"NONE"}));
  EXPECT_EQ(ProNoError, ProParameterDelete(parameter(generic, L"LEN")));
  EXPECT_EQ("MAT=steel", parameters(b20));
  EXPECT_EQ(ProNoError, ProParameterCreate(item(generic), L"LEN", real(1)).error);
  EXPECT_EQ("MAT=steel LEN=1", parameters(b20)) << "the row's value went with the column";
}

TEST_F(ParametersAndInstances, ARestrictionAllowsItsValuesAlone) {
  model("bolts.prt.1", R"("parameters": [
      {"name": "LEN", "type": "double", "value": 2, "units": "in", "restriction": {"minimum": 1, "maximum": 3.5}},
      {"name": "N", "type": "integer", "value": 9, "restriction": {"values": [2, 4]}},
      {"name": "MAT", "type": "string", "value": "steel", "restriction": {"values": ["steel", "brass"]}}],
      "familyTable": {"items": [{"type": "parameter", "name": "LEN"}], "instances": [{"name": "B2"}]})");
  const ProMdl part = retrieve(L"BOLTS");
  ProParamvalue whole;
  whole.type = ProParamvalueType::integer;
  const auto count = [&](int number) {
    whole.integer = number;
    return set(part, L"N", whole);
  };
  EXPECT_EQ(ProNoError, set(part, L"LEN", real(25.4))) << "an end belongs to its range";
  for (const double outside : {25.3, 89.0}) EXPECT_EQ(ProBadInputs, set(part, L"LEN", real(outside))) << outside;
  EXPECT_EQ(ProNoError, count(9)) << "what is there already";
  EXPECT_EQ(ProBadInputs, count(3));
  EXPECT_EQ(ProNoError, count(4));
  EXPECT_EQ(ProBadInputs, set(part, L"MAT", string(L"wood")));
  EXPECT_EQ(ProNoError, set(part, L"MAT", string(L"brass")));
  const ProFaminstance b2{L"B2", part};
  EXPECT_EQ(ProBadInputs, ProFaminstanceValueSet(b2, {ProFamitemType::parameter, L"LEN"}, real(4)));
  EXPECT_EQ(ProNoError, ProFaminstanceValueSet(b2, {ProFamitemType::parameter, L"LEN"}, real(3)));
  EXPECT_EQ(ProBadInputs, set(retrieve(L"B2"), L"LEN", real(100)));
  EXPECT_EQ("LEN=25.4 N=4 MAT=brass", parameters(part));
  EXPECT_EQ("LEN=76.2 N=4 MAT=brass", parameters(retrieve(L"B2")));
}

TEST_F(ParametersAndInstances, ALockedInstanceKeepsItsOwnParameters) {
  model("bolts.prt.1", R"("parameters": [{"name": "LEN", "type": "double", "value": 10}],
      "familyTable": {"items": [], "instances": [{"name": "B1", "locked": true, "parameters": [
      {"name": "OWN", "type": "double", "value": 1}]}]})");
  const ProMdl b1 = retrieve(L"B1");
  const ProParameter own = parameter(b1, L"OWN");
  const ProError results[] = {ProParameterCreate(item(b1), L"NEW", real(1)).error,
                              ProParameterDelete(own),
                              ProParameterValueSet(own, real(2)),
                              ProParameterDescriptionSet(own, L"x"),
                              ProParameterDesignationAdd(own),
                              set(b1, L"LEN", real(11))};
  for (const ProError result : results) EXPECT_EQ(ProGeneralError, result);
  EXPECT_EQ("LEN=10 OWN=1", parameters(b1));
  EXPECT_FALSE(ProMdlModificationVerify(b1).value);
}

TEST_F(ParametersAndInstances, ADeletedParameterComesBackWhole) {
  model("bolts.prt.1", R"("parameters": [{"name": "A", "type": "double", "value": 1},
      {"name": "LEN", "type": "double", "value": 10, "hint": [1, 2], "restriction": {"maximum": 30}},
      {"name": "Z", "type": "double", "value": 9}],
      "familyTable": {"items": [{"type": "parameter", "name": "LEN", "note": "x"}, {"type": "parameter", "name": "Z"}],
      "instances": [{"name": "B20", "values": {"LEN": 20, "Z": 8}, "familyTable": {
        "items": [{"type": "parameter", "name": "LEN"}], "instances": [{"name": "B20_L", "values": {"LEN": 21}}]}}]})");
  const ProMdl part = retrieve(L"BOLTS");
  const std::string before = session().models().documentText(part).value;
  const auto text = [&] { return session().models().documentText(part).value; };
  EXPECT_EQ(ProNotFound, ProParameterDeleteUndo(item(part), nullptr));
  EXPECT_EQ(ProNoError, ProParameterDelete(parameter(part, L"LEN")));
  EXPECT_NE(before, text());
  EXPECT_EQ(ProNoError, ProParameterDeleteUndo(item(part), nullptr));
  EXPECT_EQ(before, text());
  EXPECT_FALSE(ProMdlModificationVerify(part).value);
  EXPECT_EQ(ProNotFound, ProParameterDeleteUndo(item(part), nullptr)) << "it is back already";

  // One of its name in its place goes again, with what it was given.
  EXPECT_EQ(ProNoError, ProParameterDelete(parameter(part, L"LEN")));
  const auto successor = ProParameterCreate(item(part), L"LEN", real(40));
  EXPECT_EQ(ProBadInputs, ProParameterRemainsTake(successor.value)) << "over the maximum";
  EXPECT_EQ(ProExists, ProParameterDeleteUndo(item(part), nullptr));
  EXPECT_EQ(ProNoError, ProParameterValueSet(successor.value, real(25)));
  EXPECT_EQ(ProNoError, ProParameterRemainsTake(successor.value));
  EXPECT_EQ(ProBadInputs, ProParameterValueSet(successor.value, real(31)));
  EXPECT_EQ(ProNoError, ProParameterDeleteUndo(item(part), &successor.value));
  EXPECT_EQ(before, text());

  // What was changed and saved behind the deletion stays so.
  EXPECT_EQ(ProNoError, ProParameterDelete(parameter(part, L"LEN")));
  EXPECT_EQ(ProNoError, ProMdlSave(part));
  EXPECT_EQ(ProNoError, ProParameterDeleteUndo(item(part), nullptr));
  EXPECT_TRUE(ProMdlModificationVerify(part).value);

  // What was changed before the deletion stays told.
  EXPECT_EQ(ProNoError, ProMdlSave(part));
  EXPECT_EQ(ProNoError, set(part, L"A", real(2)));
  EXPECT_EQ(ProNoError, ProParameterDelete(parameter(part, L"LEN")));
  EXPECT_EQ(ProNoError, ProParameterDeleteUndo(item(part), nullptr));
  EXPECT_TRUE(session().models().find(part)->document->isContentModified());
}

TEST_F(ParametersAndInstances, AColumnStaysWhileAnotherOneHasItsName) {
  model("bolts.prt.1", R"("parameters": [{"name": "X", "type": "integer", "value": 1},
      {"name": "X", "type": "integer", "value": 3}],
      "familyTable": {"items": [{"type": "parameter", "name": "X"}], "instances": [{"name": "B", "values": {"X": 7}}]})");
  const ProMdl part = retrieve(L"BOLTS");
  EXPECT_EQ(ProNoError, ProParameterDelete({L"X", item(part), 1}));
  EXPECT_EQ("X=7", parameters(retrieve(L"B")));
}

TEST_F(ParametersAndInstances, ComponentColumnsLeaveOutOrReplace) {
  model("p.prt.1");
  model("q.prt.1");
  model("top.asm.1", R"("components": [{"name": "P", "type": "prt"}, {"name": "Q", "type": "prt"}], "familyTable":
      {"items": [{"type": "component", "name": "P"}, {"type": "component", "name": "Q"}], "instances": [
      {"name": "I1", "values": {"P": false, "Q": "Y"}}, {"name": "I2", "values": {"P": "q"}}]})");
  const std::pair<const wchar_t*, const wchar_t*> rows[] = {{L"TOP", L"PQ"}, {L"I1", L"Q"}, {L"I2", L"Q"}};
  for (const auto& [name, expected] : rows) {
    std::wstring used;
    for (const ProDependency& dependency : ProMdlDependenciesList(retrieve(name, ProMdlType::assembly)).value)
      used += dependency.name;
    EXPECT_EQ(expected, used) << text::toUtf8(name);
  }
}

}  // namespace
}  // namespace headless

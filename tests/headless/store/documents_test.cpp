#include <limits>

#include "headless/session_fixture.h"
#include "headless/store/compare.h"
#include "headless/store/document.h"
#include "headless/store/folder.h"
#include "headless/store/records_geometry.h"

namespace headless {
namespace {

using creo::ProMdlType;

// Every member that documents have, and unknown ones at each level and place, written as a save writes them but for
// the unknown ones' own form.
constexpr const char* kWhole = R"({
  "made": "by hand",
  "format": 1,
  "units": "mmKs",
  "parameters": [
    {
      "name": "MASS",
      "note": [1,2,   3.50],
      "type": "double",
      "value": 5,
      "units": "kg",
      "designated": false
    },
    {
      "name": "MASS",
      "type": "double",
      "value": 2.5,
      "driver": "relation",
      "restriction": {
        "minimum": 0.5,
        "maximum": 5,
        "values": [
          1.0,
          2.5
        ],
        "unit": "kg"
      }
    },
    {
      "name": "Größe",
      "type": "string",
      "value": "a\n\"b\" Ä\u0001",
      "description": "text"
    }
  ],
  "material": "STEEL",
  "materials": [
    {
      "name": "STEEL",
      "parameters": [
        {
          "name": "DENSITY",
          "type": "double",
          "value": 7.8e-06
        }
      ]
    }
  ],
  "features": [
    {
      "id": 7,
      "number": 1,
      "name": "HOLE",
      "type": 911,
      "status": "active",
      "hidden": true,
      "pattern": {
        "group": true,
        "regeneration": 8
      },
      "variantItems": [
        {
          "type": "parameter",
          "name": "BORE"
        }
      ],
      "dimensions": [
        3
      ],
      "parameters": [
        {
          "name": "BORE",
          "type": "boolean",
          "value": true
        }
      ],
      "colour": {"r": 1E+40}
    }
  ],
  "dimensions": [
    {
      "id": 3,
      "symbol": "d3",
      "value": 12.5,
      "reference": true
    }
  ],
  "relations": [
    "D3 = 5"
  ],
  "components": [
    {
      "name": "BOLT<BOLTS>",
      "type": "prt",
      "feature": 40,
      "placement": {"position": [1, 0, "A / 2"], "later": 1}
    }
  ],
  "crossSections": [
    {
      "id": 1,
      "name": "A",
      "type": "offset",
      "objects": "modelAndQuilts"
    }
  ],
  "layouts": [
    {
      "name": "PLAN"
    }
  ],
  "solid": {
    "box": [1, 2, 3]
  },
  "familyTable": {
    "items": [
      {
        "type": "parameter",
        "name": "MASS",
        "width": 3
      }
    ],
    "instances": [
      {
        "name": "A",
        "values": {
          "MASS": 1.0
        },
        "seen": null,
        "locked": true,
        "familyTable": {
          "items": [],
          "instances": []
        }
      }
    ]
  },
  "externalData": {
    "kvpslot": {
      "NrOfLists": {
        "type": "integer",
        "value": 1
      },
      "Empty": {}
    }
  },
  "later": {
    "nested": {"deep": []}
  }
}
)";

TEST(Documents, RoundTripKeepsEveryByte) {
  ModelRecord record;
  const JsonFault fault = readDocument(kWhole, record);
  ASSERT_FALSE(fault) << text::toUtf8(fault.reason) << " in line " << fault.line;
  EXPECT_EQ(kWhole, writeDocument(record));
}

// As "null" it would make a document that nobody can open.
TEST(Documents, ANumberThatIsNoneIsNeverWritten) {
  for (const double none : {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
    ModelRecord record;
    ASSERT_FALSE(
        readDocument(R"({"format": 1, "parameters": [{"name": "X", "type": "double", "value": 1.0}]})", record));
    record.density = none;
    EXPECT_EQ("", writeDocument(record));
    record.density = 1;
    EXPECT_NE("", writeDocument(record));
    record.parameters.list[0].value = none;
    EXPECT_EQ("", writeDocument(record));
    record.parameters.list[0].value = 1.0;
    SolidRecord solid;
    solid.primitives.emplace_back().length = none;
    record.solid = rawSolid(solid);
    EXPECT_EQ("", writeDocument(record));
  }
}

TEST(Documents, FaultsNameLineAndReason) {
  struct Row {
    const char* content;
    std::size_t line;
    const wchar_t* reason;
  };
  const Row rows[] = {
      {"", 1, L"syntax error while parsing value - unexpected end of input"},
      {"{\n\"format\": 1,\n\"parameters\": [\n", 4, L"syntax error while parsing value - unexpected end of input"},
      {"{\"format\": 1,\n\"x\": 1e400}", 2, L"number overflow parsing '1e400'"},
      {"[]", 1, L"a model document is an object"},
      {"{}", 1, L"'format' is missing"},
      {"{\n\n\"format\": 2}", 3, L"format 2 is newer than 1, the newest that this version reads"},
      {"{\"format\":\n0}", 2, L"format 0 isn't known"},
      {"{\"format\": \"1\"}", 1, L"'format' must be a whole number of 32 bits"},
      {"{\"format\": 1,\n\"skeleton\": 1\n}", 2, L"'skeleton' must be true or false"},
      {"{\"format\": 1,\n\"parameters\": {\n}}", 2, L"'parameters' must be an array"},
      {"{\"format\": 1,\n\"parameters\": [\n5]}", 3, L"an element must be an object"},
      {"{\"format\": 1,\n\"parameters\": [\n{\"type\": \"double\"}]}", 3, L"'name' is missing"},
      {"{\"format\": 1, \"parameters\": [{\"name\": \"A\",\n\"type\": \"real\"}]}", 2,
       L"unknown type 'real'; known are string, integer, double, boolean, note"},
      {"{\"format\": 1, \"parameters\": [{\"name\": \"A\",\n\"value\":\n 5\n, \"type\": \"string\"}]}", 3,
       L"'value' must be a value of the type 'string'"},
      {"{\"format\": 1, \"parameters\": [{\"name\": \"A\", \"type\": \"integer\",\n\"value\": 3000000000}]}", 2,
       L"'value' must be a value of the type 'integer'"},
      {"{\"format\": 1, \"components\": [{\"name\": \"A\",\n\"type\": \"step\"}]}", 2,
       L"unknown type 'step'; known are prt, asm, drw, frm, mfg"},
      {"{\"format\": 1,\n\"units\": \"a\",\n\"units\": \"b\"}", 3, L"'units' stands twice"},
      {"{\"format\": 1, \"externalData\": {\"c\": {\"s\": {\"type\": \"text\",\n\"value\": 1}}}}", 2,
       L"'value' must be a value of the type 'text'"},
  };
  for (const Row& row : rows) {
    ModelRecord record;
    const JsonFault fault = readDocument(row.content, record);
    EXPECT_EQ(row.line, fault.line) << row.content;
    EXPECT_TRUE(fault.reason.starts_with(row.reason)) << row.content << text::toUtf8(fault.reason);
  }
}

TEST(Documents, DeepNestingIsRefused) {
  ModelRecord record;
  const std::string deep = "{\"format\": 1, \"x\": " + std::string(100000, '[');
  EXPECT_EQ(L"nested deeper than 200 levels", readDocument(deep, record).reason);
}

TEST(Documents, OlderFormatsAreMigrated) {
  const Migration migrations[] = {{0, [](Json& document) {
                                     for (Json& member : document.items)
                                       if (member.name == "unitSystem") member.name = "units";
                                   }}};
  ModelRecord record;
  ASSERT_FALSE(readDocument(R"({"format": 0, "unitSystem": "mks", "x": [ 1 ]})", record, migrations));
  EXPECT_EQ("{\n  \"format\": 1,\n  \"units\": \"mks\",\n  \"x\": [ 1 ]\n}\n", writeDocument(record));
}

TEST(Documents, FileNames) {
  struct Row {
    const wchar_t* file;
    const wchar_t* name;
    ProMdlType type;
    int version;
  };
  const Row rows[] = {{L"bracket.prt.3", L"BRACKET", ProMdlType::part, 3},
                      {L"Größe.ASM.12", L"GRÖßE", ProMdlType::assembly, 12},
                      {L"a.b.drw", L"A.B", ProMdlType::drawing, 0},
                      {L"x.mfg.1", L"X", ProMdlType::manufacturing, 1}};
  for (const Row& row : rows) {
    const auto file = documentFile(row.file);
    ASSERT_TRUE(file) << text::toUtf8(row.file);
    EXPECT_EQ(row.name, file->name);
    EXPECT_EQ(row.type, file->type);
    EXPECT_EQ(row.version, file->version);
  }
  for (const wchar_t* other : {L"bracket.prt.", L"bracket.prt.x", L".prt.1", L"prt", L"a.txt.1", L"a.prt.1.tmp", L""})
    EXPECT_FALSE(documentFile(other)) << text::toUtf8(other);
}

std::string changes(std::string_view before, std::string_view after, const CompareOptions& options = {}) {
  std::string out;
  for (const Change& c : compareTexts(before, after, options))
    out += text::toUtf8(c.path + L": " + c.before + L" -> " + c.after + L"\n");
  return out;
}

TEST(Documents, ComparisonNamesWhatChanged) {
  struct Row {
    const char* before;
    const char* after;
    const char* expected;
  };
  const Row rows[] = {
      {R"({"a": 5, "b": [1]})", R"({"b": [1], "a": 5.0})", ""},
      {R"({"parameters": [{"name": "A", "value": 1}, {"name": "B", "value": "x"}]})",
       R"({"parameters": [{"name": "B", "value": "y"}, {"name": "C", "value": ""}]})",
       "parameters/B/value: x -> y\nparameters/C/name:  -> C\nparameters/C/value:  -> \"\"\nparameters/A/name: A -> "
       "\nparameters/A/value: 1 -> \n"},
      {R"({"p": [{"name": "A", "v": 1}, {"name": "a", "v": 2}]})",
       R"({"p": [{"name": "A", "v": 1}, {"name": "A", "v": 3}]})", "p/A[1]/name: a -> A\np/A[1]/v: 2 -> 3\n"},
      {R"({"f": [{"id": 4, "name": "OLD"}]})", R"({"f": [{"id": 4, "name": "NEW"}]})", "f/4/name: OLD -> NEW\n"},
      {R"({"r": ["a", "b"]})", R"({"r": ["a", "c", "d"]})", "r/[1]: b -> c\nr/[2]:  -> d\n"},
      // Lines that stayed are found again, whatever moved around them; equal lines too.
      {R"({"r": ["a", "IF", "x", "ENDIF", "IF", "y", "ENDIF", "z"]})",
       R"({"r": ["new", "a", "IF", "y", "ENDIF", "IF", "y2", "ENDIF", "z"]})",
       "r/[0]:  -> new\nr/[3]: x -> y\nr/[6]: y -> y2\n"},
      {R"({"r": ["a", "b", "c", "b"]})", R"({"r": ["b", "c"]})", "r/[0]: a -> \nr/[3]: b -> \n"},
      {R"({"r": ["a", "b", "c", "d"]})", R"({"r": ["c", "d", "a", "b"]})",
       "r/[0]:  -> c\nr/[1]:  -> d\nr/[2]: c -> \nr/[3]: d -> \n"},
      // By ids and called by names; of two with one name each by its id.
      {R"({"l": [{"id": 1, "name": "X", "s": 1}, {"id": 2, "name": "Y", "s": 1}]})",
       R"({"l": [{"id": 2, "name": "y", "s": 2}, {"id": 3, "name": "Z"}]})",
       "l/y/name: Y -> y\nl/y/s: 1 -> 2\nl/Z/id:  -> 3\nl/Z/name:  -> Z\nl/X/id: 1 -> \nl/X/name: X -> \nl/X/s: 1 -> "
       "\n"},
      {R"({"l": [{"id": 1, "name": "X"}, {"id": 2, "name": "x", "s": 1}]})",
       R"({"l": [{"id": 2, "name": "X", "s": 2}, {"id": 1, "name": "X"}]})", "l/2/name: x -> X\nl/2/s: 1 -> 2\n"},
      {R"({"i": [{"type": "feature", "id": 5}, {"type": "dimension", "id": 5}]})",
       R"({"i": [{"type": "dimension", "id": 5}]})", "i/feature 5/type: feature -> \ni/feature 5/id: 5 -> \n"},
      {R"({"i": [{"feature": 5, "action": "include"}, {"feature": 6}]})",
       R"({"i": [{"feature": 6, "action": "exclude"}]})",
       "i/6/action:  -> exclude\ni/5/feature: 5 -> \ni/5/action: include -> \n"},
      {R"({"d": [{"id": 1, "symbol": "L", "v": 1}, {"id": 1, "reference": true, "v": 1}]})",
       R"({"d": [{"id": 1, "reference": true, "v": 2}, {"id": 1, "symbol": "L", "v": 3}]})",
       "d/reference 1/v: 1 -> 2\nd/L/v: 1 -> 3\n"},
      {R"({"v": 1})", R"({"v": "1"})", "v: 1 -> 1\n"},
      {R"({"v": [1]})", R"({"v": {"x": []}})", "v: [1] -> {\"x\": []}\n"},
      {"", R"({"v": true})", "v:  -> true\n"},
      {R"({"externalData": {"kvpslot": {"N": {"value": 1}}}})", R"({"externalData": {"kvpslot": {"N": {"value": 2}}}})",
       "externalData/kvpslot/N/value: 1 -> 2\n"},
  };
  for (const Row& row : rows) EXPECT_EQ(row.expected, changes(row.before, row.after)) << row.before;
  for (const char* before : {R"({"externalData": {"kvpslot": {"N": 1}}})", R"({"externalData": {}})", "{}"})
    EXPECT_EQ("", changes(before, R"({"externalData": {"kvpslot": {"N": 2}}})", {.history = false})) << before;
  // The same of instances, at any depth, also where they come with it.
  const std::string history = R"(, "externalData": {"kvpslot": {"N": 1}})";
  const auto table = [](const std::string& own, const std::string& inner) {
    return R"({"familyTable": {"instances": [{"name": "A")" + own + R"(, "familyTable": {"instances": [{"name": "B")" +
           inner + "}]}}]}}";
  };
  const std::pair<std::string, std::string> places[] = {{history, ""}, {"", history}, {history, history}};
  for (const auto& [own, inner] : places) {
    EXPECT_EQ("", changes(table("", ""), table(own, inner), {.history = false}));
    EXPECT_NE("", changes(table("", ""), table(own, inner), {}));
  }
  EXPECT_EQ("familyTable/instances/A/name:  -> A\nfamilyTable/instances/A/familyTable/instances/B/name:  -> B\n",
            changes(R"({"familyTable": {"instances": []}})", table(history, history), {.history = false}));
}

TEST(Documents, ALineMoreAmongThousandsIsOneDifference) {
  // Every tenth line is one of a kind, the rest repeats.
  const auto lines = [](int from, int to) {
    std::string all;
    for (int i = from; i < to; ++i)
      all += (all.empty() ? "\"" : ",\"") + (i % 10 == 0 ? "L" + std::to_string(i) : std::string("ENDIF")) + "\"";
    return all;
  };
  const std::string before = "{\"r\": [" + lines(0, 20000) + "]}";
  EXPECT_EQ("r/[0]: L0 -> X\nr/[10000]:  -> NEW\nr/[20000]: ENDIF -> Y\n",
            changes(before, "{\"r\": [\"X\"," + lines(1, 10000) + ",\"NEW\"," + lines(10000, 19999) + ",\"Y\"]}"));
  // Nothing in common, and nothing that stands once.
  std::string same = "\"A\"", other = "\"B\"";
  for (int i = 1; i < 20000; ++i) {
    same += ",\"A\"";
    other += ",\"B\"";
  }
  const std::string all = changes("{\"r\": [" + same + "]}", "{\"r\": [" + other + "]}");
  EXPECT_EQ(20000, std::count(all.begin(), all.end(), '\n'));
}

class Folders : public test::HeadlessSession {};

TEST_F(Folders, AreReadWithoutASession) {
  model("b.prt.2", R"("familyTable": {"instances": [{"name": "b1", "familyTable": {"instances": [{"name": "b2"}]}}]})");
  write("models/b.prt.1", "broken");
  model("a.asm.1", R"("components": [{"name": "b1<b>", "type": "prt"}])");
  write("models/c.drw.1", "{\n\"format\": 1,\n}");
  write("models/readme.txt", "");
  std::string out;
  for (const FolderDocument& document : readFolder(L"d:\\models")) {
    out += text::toUtf8(document.file.fileName + L" " + document.fault);
    for (const auto& instance : document.instances)
      out += text::toUtf8(L" " + instance.name + L"<" + instance.generic + L">");
    for (const auto& used : document.uses) out += text::toUtf8(L" uses " + used.name + L"." + used.typeText);
    out += "\n";
  }
  EXPECT_EQ("a.asm.1  uses B1<B>.PRT\nb.prt.2  B1<B> B2<B1>\n", out.substr(0, out.find("c.drw")));
  EXPECT_NE(std::string::npos, out.find("c.drw.1 d:\\models\\c.drw.1:3: syntax error")) << out;
}

}  // namespace
}  // namespace headless

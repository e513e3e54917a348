// The information sheet, looked at by other programs.
#include <gmock/gmock.h>

#include <filesystem>
#include <map>
#include <regex>

#include "actions/action_fixture.h"
#include "core/messages.h"
#include "creo/ProUtil.h"
#include "os/surroundings.h"
#include "support/foreign_program.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace {

using namespace creo;
using test::said;
using testing::HasSubstr;
using testing::Not;

constexpr const char* kPlate = R"({"format": 1, "units": "mmNs", "accuracy": {"kind": "absolute", "value": 0.01},
  "material": "STEEL", "materials": [{"name": "STEEL"}, {"name": "BRASS"}],
  "parameters": [{"name": "MASS", "type": "double", "value": 2.5, "units": "kg", "designated": true},
                 {"name": "COLOR", "type": "string", "value": "grün Ω", "description": "Farbe"},
                 {"name": "COUNT", "type": "integer", "value": 7}, {"name": "READY", "type": "boolean", "value": true}],
  "relations": ["WIDTH = 5"], "postRelations": ["COUNT = NOWHERE"],
  "views": [{"name": "FRONT"}, {"name": "TOP"}],
  "layers": [{"id": 1, "name": "AXES", "status": "blank"}, {"id": 2, "name": "POINTS"}],
  "features": [{"id": 39, "name": "BORE", "type": 911, "typeName": "HOLE", "relations": ["DEPTH = 3"],
                "parameters": [{"name": "FIT", "type": "string", "value": "H7"}],
                "sections": [{"relations": ["sd1 = 4", "sd2 = sd1"]}, {"relations": ["sd9 = 1"]}, {}]},
               {"id": 41, "type": 1118, "typeName": "INTERFACE"}],
  "notes": [{"id": 1, "name": "N1", "lines": ["Deburr all", "edges"]}],
  "simplifiedReps": [{"id": 1, "name": "LIGHT"}],
  "familyTable": {"items": [{"type": "parameter", "name": "COUNT"}],
                  "instances": [{"name": "PLATE_10"}, {"name": "PLATE_20"}]},
  "solid": {"primitives": [{"type": "box", "size": [80, 40, 20]}]}})";

const std::string kAll =
    " units='true' accuracy='true' customText='true' custextc='3' custext_0='made for @mdln@' custext_2='last'"
    " actMaterials='true' materialsInModel='true' parameter='true' keParameter='true' rels='true' postrel='true'"
    " kerel='true' views='true' layers='true' firstKEs='true' xKEs='1' firstNotes='true' xNotes='5' dependen='true'"
    " simreps='true' intrfcs='true' famtab='true' famtab_amount='true' ";

constexpr int kNumberPlace = 30;  // of the page's number

// A word where it stands, in points from the page's lower left corner.
struct Word {
  int page = 0, x = 0, y = 0, size = 0;
};

class InformationPdf : public test::ActionTest {
 protected:
  InformationPdf() {
    world.config("kvd_write_history_in_models=0");
    test::writeBytes(world.models() + "/PLATE.prt.1", kPlate);
    os::surroundings().clock = std::make_shared<os::FixedClock>(1700000000);
  }
  ~InformationPdf() override { core::setLanguage(L"en"); }
  static std::string sheet(const std::string& attributes, const std::string& file = "sheet") {
    return task("writeInformationPDF", "folder='t:\\' file='" + file + "' overwriteExisting='true' " + attributes);
  }
  std::wstring write(const std::string& attributes) { return run(sheet(attributes), L"PLATE"); }
  [[nodiscard]] std::string path(const std::string& name = "sheet.pdf") const { return world.temp() + "/" + name; }
  // The text as it stands on the pages, a form feed behind each.
  [[nodiscard]] std::string text() const { return said("pdftotext -layout -q '" + path() + "' - 2>/dev/null"); }
  // A word that is there several times is told by all its places.
  [[nodiscard]] std::multimap<std::string, Word> words() const {
    const std::string all = said("pdftotext -bbox -q '" + path() + "' - 2>/dev/null");
    static const std::regex item(R"re(<page width="[\d.]+" height="([\d.]+)"|)re"
                                 R"re(xMin="([\d.]+)" yMin="([\d.]+)" xMax="[\d.]+" yMax="([\d.]+)">([^<]*)<)re");
    std::multimap<std::string, Word> words;
    double height = 0;
    int page = 0;
    for (std::sregex_iterator at(all.begin(), all.end(), item), end; at != end; ++at) {
      if ((*at)[1].matched) {
        height = std::stod((*at)[1]);
        ++page;
        continue;
      }
      // The face of these tests reaches 0.9 of its size above the base line and 0.2 below it.
      const double size = (std::stod((*at)[4]) - std::stod((*at)[3])) / 1.1;
      const double y = height - std::stod((*at)[4]) + 0.2 * size;
      words.emplace((*at)[5], Word{page, static_cast<int>(std::stod((*at)[2]) + 0.5), static_cast<int>(y + 0.5),
                                   static_cast<int>(size + 0.5)});
    }
    return words;
  }
  // "50,791 18": of the first place.
  static std::string place(const std::multimap<std::string, Word>& words, const std::string& word) {
    const auto at = words.lower_bound(word);
    if (at == words.end() || at->first != word) return "none";
    const Word& found = at->second;
    return std::to_string(found.x) + "," + std::to_string(found.y) + " " + std::to_string(found.size);
  }
  [[nodiscard]] int pages() const {
    const std::string all = text();
    return static_cast<int>(std::count(all.begin(), all.end(), '\f'));
  }
};

TEST_F(InformationPdf, EveryTextStandsInItsPlace) {
  write("units='true' accuracy='true' customText='true' custextc='1' custext_0='mine' parameter='true'");
  const auto words = this->words();
  const std::pair<const char*, const char*> places[] = {
      {"PLATE", "50,791 18"},  {"Length:", "50,746 14"}, {"mm", "100,746 14"},        {"Time:", "50,686 14"},
      {"User", "50,616 20"},   {"mine", "100,596 10"},   {"Parameters", "50,566 20"}, {"Name", "50,546 15"},
      {"Type", "175,546 15"},  {"Value", "225,546 15"},  {"Unit", "325,546 15"},      {"PDM", "375,546 15"},
      {"Desc.", "425,546 15"}, {"MASS", "50,531 10"},    {"DOUB", "175,531 10"},      {"2.5000", "225,531 10"},
      {"kg", "325,531 10"},    {"COLOR", "50,516 10"},   {"Farbe", "425,516 10"},
  };
  for (const auto& [word, where] : places) EXPECT_EQ(where, place(words, word)) << word;
  const std::string all = said("pdftotext -bbox -q '" + path() + "' - 2>/dev/null");
  EXPECT_THAT(all, HasSubstr("xMax=\"545.0")) << "the date ends at the right margin";
  EXPECT_THAT(text(), HasSubstr("grün Ω"));
}

TEST_F(InformationPdf, AllSectionsAreThereInTheirOrderAndTheLogTellsThem) {
  const std::wstring log = write(kAll + "description='Größe @mdln@'");
  const std::string all = text();
  std::size_t from = 0;
  for (const char* piece : {"PLATE",
                            "Length:",
                            "Accuracy type: absolute",
                            "Accuracy value: 0.010000",
                            "User customized text",
                            "made for PLATE",
                            "last",
                            "Materials",
                            "Active",
                            "STEEL",
                            "All in model",
                            "BRASS",
                            "Parameters",
                            "COLOR",
                            "Feature parameters",
                            "BORE - Id: 39",
                            "FIT",
                            "H7",
                            "Relations",
                            "Pre regeneration relations",
                            "PLATE - Id: 0",
                            "WIDTH = 5",
                            "PLATE - Id: -2 - contain failures",
                            "COUNT = NOWHERE",
                            "Feature relations",
                            "BORE - Id: 39",
                            "DEPTH = 3",
                            "S2D0001 - at Id: 39",
                            "sd1 = 4",
                            "sd2 = sd1",
                            "S2D0002 - at Id: 39",
                            "sd9 = 1",
                            "Views",
                            "FRONT",
                            "TOP",
                            "Layers",
                            "AXES",
                            "BLANK",
                            "POINTS",
                            "NORMAL",
                            "First 1 features",
                            "BORE",
                            "HOLE",
                            "First 5 Annotations",
                            "Deburr all",
                            "edges",
                            "External dependencies",
                            "Simplified representations",
                            "LIGHT",
                            "Interfaces",
                            "Unknown feature name",
                            "Family table",
                            "Columns",
                            "COUNT",
                            "PARAM",
                            "Variants",
                            "PLATE_10",
                            "PLATE_20",
                            "Amount of variants: 2"}) {
    const std::size_t at = all.find(piece, from);
    ASSERT_NE(all.npos, at) << piece << " in " << all;
    from = at + 1;
  }
  EXPECT_EQ(all.npos, all.find("S2D0003")) << "a sketch without relations";
  EXPECT_EQ(
      L"B0 write informative PDF|Report unit system|Report accuracy|Write custom text|<KVD> NULL|"
      L"Report active materials|Report all materials|Report parameters|Report feature parameters|Report relations|"
      L"Report feature relations|Report views|Report layers|Report first # features|Report first # annotations|"
      L"Report external dependencies|Report simplified representations|Report interfaces|Report family table|"
      L"save the report to file|t:\\sheet.pdf",
      log);
  EXPECT_THAT(said("qpdf --check '" + path() + "'"), HasSubstr("No syntax or stream encoding errors"));
  const std::string info = said("pdfinfo '" + path() + "'");
  for (const char* line : {"Title:           PLATE", "Subject:         Größe PLATE", "CreationDate:"})
    EXPECT_THAT(info, HasSubstr(line));
  EXPECT_FALSE(std::filesystem::exists(path("kv_creo_temp_outp.txt")));
  EXPECT_EQ(L"", world.messages().find(L"unknown macro") == std::wstring::npos ? L"" : world.messages());
}

TEST_F(InformationPdf, WhatIsSwitchedOffIsLeftOutAndFiltersHold) {
  world.list("none.xml", sheet(""));
  world.list("filtered.xml", sheet("parameter='true' parameter_sv='true' paraFilter='true' paraFilterTxt='CO*' "
                                   "keParameter='true' keparaFilter='true' keparaFilterTxt='none' "
                                   "customText='true' custextc='0' firstKEs='true' xKEs='0'"));
  world.list("de.xml", sheet("parameter='true' paraFilter='true' paraFilterTxt='*' famtab='true'"));
  world.runOn(L"PLATE", ProMdlType::part, "none.xml");
  EXPECT_THAT(text(), Not(HasSubstr("Parameters")));
  EXPECT_EQ(1, pages());
  world.run("filtered.xml");
  const auto words = this->words();
  const std::string all = text();
  EXPECT_THAT(all, HasSubstr("Parameters (filtered)"));
  EXPECT_EQ("50", place(words, "COLOR").substr(0, 2));
  EXPECT_EQ("350", place(words, "7").substr(0, 3));
  for (const char* piece : {"MASS", "INT", "BORE", "HOLE"}) EXPECT_THAT(all, Not(HasSubstr(piece)));
  EXPECT_THAT(all, HasSubstr("First 0 features"));
  core::setLanguage(L"de");
  world.run("de.xml");
  for (const char* piece : {"Parameter (gefiltert)", "Einheit", "Beschr.", "Familientabelle", "Varianten"})
    EXPECT_THAT(text(), HasSubstr(piece));
}

TEST_F(InformationPdf, RowsGoDownToTheMarginAndHeadingsStartHigher) {
  std::string layers;
  for (int i = 0; i < 120; ++i)
    layers += std::string(i ? "," : "") + R"({"id": )" + std::to_string(i + 1) + R"(, "name": "L)" + std::to_string(i) +
              "\"}";
  world.list("list.xml", sheet("layers='true' simreps='true'"));
  std::map<int, int> titlePages;
  // One section after another; each row further moves the next title down.
  for (const int rows : {37, 38, 39, 40, 41, 42}) {
    const std::string some = layers.substr(0, layers.find("\"L" + std::to_string(rows) + "\"") - 20);
    test::writeBytes(world.models() + "/PLATE.prt.1",
                     R"({"format": 1, "layers": [)" + some.substr(0, some.rfind('}') + 1) + "]}");
    world.endSession();
    world.runOn(L"PLATE", ProMdlType::part, "list.xml");
    const auto words = this->words();
    for (const auto& [word, at] : words) {
      if (at.y == kNumberPlace) continue;
      EXPECT_GE(at.y, at.size > 15 ? 100 : 50) << rows << " " << word;
      EXPECT_LE(at.y, 791) << rows << " " << word;
    }
    const Word& title = words.lower_bound("Simplified")->second;
    EXPECT_EQ(title.page == 1 ? 716 - 15 * rows - 30 : 791, title.y) << rows;
    titlePages[rows] = title.page;
  }
  EXPECT_EQ(1, titlePages[39]);
  EXPECT_EQ(2, titlePages[40]);
  // All of them fill two pages and a half, each line in use.
  test::writeBytes(world.models() + "/PLATE.prt.1", R"({"format": 1, "layers": [)" + layers + "]}");
  world.endSession();
  world.runOn(L"PLATE", ProMdlType::part, "list.xml");
  int lowest = 841;
  for (const auto& [word, at] : this->words())
    if (at.y != kNumberPlace) lowest = std::min(lowest, at.y);
  EXPECT_LT(lowest, 50 + 15);
  EXPECT_EQ(3, pages());
}

TEST_F(InformationPdf, LongTextsStayInTheirColumnsAndOnThePage) {
  const std::string wide(31, 'W');
  std::string value;
  for (int i = 0; i < 26; ++i) value += "ninechars ";
  test::writeBytes(world.models() + "/" + wide + ".prt.1",
                   R"({"format": 1, "parameters": [{"name": ")" + wide + R"(", "type": "string", "value": ")" + value +
                       R"(", "description": ")" + std::string(80, 'M') + R"("}], "features": [{"id": 1, "name": ")" +
                       wide + R"(", "type": 911, "typeName": "HOLE"}]})");
  run(sheet("parameter='true' rels='true' firstKEs='true' xKEs='3'"), text::fromUtf8(wide));
  const std::string all = said("pdftotext -bbox -q '" + path() + "' - 2>/dev/null");
  static const std::regex item(R"re(xMin="([\d.]+)" yMin="[\d.]+" xMax="([\d.]+)")re");
  constexpr double kStops[] = {50, 175, 225, 325, 375, 425, 545.1};
  int count = 0;
  for (std::sregex_iterator at(all.begin(), all.end(), item), end; at != end; ++at, ++count) {
    EXPECT_GE(std::stod((*at)[1]), 49.9);
    EXPECT_LE(std::stod((*at)[2]), 545.1);
  }
  EXPECT_GT(count, 30);
  // In the table of parameters nothing reaches into the next column.
  for (const auto& [word, at] : words()) {
    if (word.find("MMM") != 0 && word.find("ninechars") != 0) continue;
    EXPECT_TRUE(std::any_of(std::begin(kStops), std::end(kStops), [x = at.x](double stop) { return x >= stop; }));
    EXPECT_EQ(word[0] == 'M' ? 425 : 225, word[0] == 'M' ? at.x : std::min(at.x, 225)) << word;
  }
  EXPECT_THAT(text(), HasSubstr("W…")) << "the heading is cut";
}

// Two hundred parameters with values of one to nine lines, and a table behind them that begins at every place of a
// page.
TEST_F(InformationPdf, HeadsStandOverTheirRowsOnEachPageAndRowsStayWhole) {
  std::string parameters, views;
  for (int i = 0; i < 200; ++i) {
    std::string value;
    for (int k = 0; k < i * 7 % 27; ++k) value += "ninechars ";
    parameters += std::string(i ? "," : "") + R"({"name": "P)" + std::to_string(i) +
                  R"(", "type": "string", "value": ")" + value + "end" + std::to_string(i) + "\"}";
  }
  for (int i = 0; i < 3; ++i) views += std::string(i ? "," : "") + R"({"name": "V)" + std::to_string(i) + "\"}";
  world.list("list.xml", sheet("parameter='true' views='true'"));
  for (int shown = 200; shown > 180; --shown) {
    const std::string some = parameters.substr(0, parameters.find(R"({"name": "P)" + std::to_string(shown) + "\"") - 1);
    test::writeBytes(world.models() + "/PLATE.prt.1", R"({"format": 1, "views": [)" + views + R"(], "parameters": [)" +
                                                          (shown == 200 ? parameters : some) + "]}");
    world.endSession();
    world.runOn(L"PLATE", ProMdlType::part, "list.xml");
    const auto words = this->words();
    const int pages = this->pages();
    ASSERT_GT(pages, 3);
    std::map<int, int> headsOfValues, numbers;
    for (const auto& [word, at] : words) {
      if (word == "Value") headsOfValues[at.page]++;
      if (at.y == kNumberPlace && word == std::to_string(at.page)) numbers[at.page]++;
    }
    const auto only = [&](const std::string& word) { return words.lower_bound(word)->second; };
    for (int page = 1; page <= only("P" + std::to_string(shown - 1)).page; ++page)
      EXPECT_EQ(1, headsOfValues[page]) << shown << ", page " << page;
    EXPECT_EQ(pages, static_cast<int>(numbers.size())) << shown;
    for (int i = 0; i < shown; ++i)
      EXPECT_EQ(only("P" + std::to_string(i)).page, only("end" + std::to_string(i)).page) << shown << ", row " << i;
    const Word title = only("Views"), first = only("V0"), head = std::prev(words.upper_bound("Alternative"))->second;
    EXPECT_EQ(title.page, first.page) << shown;
    EXPECT_EQ(head.page, first.page) << shown;
    EXPECT_EQ(15, head.y - first.y) << shown << ": letters of heads reach into a row that stands nearer";
  }
  EXPECT_EQ("", said("pdftotext '" + path() + "' - 2>&1 >/dev/null")) << "nothing to complain about";
}

TEST_F(InformationPdf, AManyPagedModelIsWrittenWhole) {
  std::string parameters, relations;
  for (int i = 0; i < 5000; ++i)
    parameters +=
        std::string(i ? "," : "") + R"({"name": "P)" + std::to_string(i) + R"(", "type": "integer", "value": 1})";
  for (int i = 0; i < 3000; ++i) relations += std::string(i ? "," : "") + "\"/* line " + std::to_string(i) + "\"";
  test::writeBytes(world.models() + "/PLATE.prt.1",
                   R"({"format": 1, "parameters": [)" + parameters + R"(], "relations": [)" + relations + "]}");
  write("parameter='true' rels='true'");
  const std::string all = text();
  for (const char* piece : {"P0 ", "P4999", "/* line 0", "/* line 2999"}) EXPECT_THAT(all, HasSubstr(piece));
  EXPECT_THAT(said("qpdf --check '" + path() + "'"), HasSubstr("No syntax or stream encoding errors"));
}

TEST_F(InformationPdf, AnUmlautHasItsDots) {
  write("customText='true' custextc='2' custext_0='u' custext_1='ü'");
  const auto words = this->words();
  // Ink of a letter, at four dots a point.
  const auto ink = [&](const char* letter) {
    const int top = (841 - words.find(letter)->second.y - 10) * 4;
    return std::stod(said("pdftoppm -q -r 288 -gray '" + path() + "' 2>/dev/null | convert - -crop 28x44+400+" +
                          std::to_string(top) + " -format '%[fx:10000*(1-mean)]' info:"));
  };
  ASSERT_GT(ink("u"), 100);
  EXPECT_GT(ink("ü"), 1.1 * ink("u"));
}

TEST_F(InformationPdf, ThePictureStandsBesideTheFactsAndGoesFromTheDisk) {
  const std::wstring log = write("image='true' units='true' parameter='true'");
  EXPECT_THAT(log, testing::HasSubstr(L"Create Image|t:\\pdf_image.jpg|Report unit system"));
  EXPECT_THAT(said("pdfimages -list '" + path() + "' 2>/dev/null"), HasSubstr("2400  1800"));
  EXPECT_FALSE(std::filesystem::exists(path("pdf_image.jpg")));
  EXPECT_EQ("50,621 20", place(words(), "Parameters")) << "below the picture";
}

TEST_F(InformationPdf, AFailingPictureLeavesASheetWithoutAndTheOptionAsItWas) {
  world.list("list.xml", sheet("image='true' parameter='true'"));
  ASSERT_EQ(0, world.start());
  world.session().setOption(L"skip_small_surfaces", L"yes");
  world.open(L"PLATE", ProMdlType::part);
  world.session().failNext("ProRasterFileWrite", ProGeneralError);
  world.run("list.xml");
  EXPECT_THAT(test::told(world.log()),
              testing::HasSubstr(L"Create Image|Export completed|E:Fehler occured while export as jpg|"));
  EXPECT_EQ(L"yes", ProConfigoptGet(L"skip_small_surfaces").value);
  EXPECT_THAT(text(), HasSubstr("COLOR"));
}

TEST_F(InformationPdf, OperationsThatFailAreToldAndTheSheetGoesOn) {
  const std::tuple<const char*, const char*, const wchar_t*> cases[] = {
      {"ProSolidAccuracyGet", "accuracy='true'", L"E:Accuracy - Error number: -1|E:Accuracy-type error"},
      {"ProParameterVisit", "parameter='true'", L"E:Error: -1"},
      {"ProParameterVisit", "keParameter='true'", L"E:Failure occured while read feature parameter: -1"},
      {"ProRelsetRelationsGet", "rels='true'", L"E:Failure while relset relations get: -1"},
      {"ProFeatureNumSectionsGet", "kerel='true'", L"E:Can't get the sections number"},
      {"ProFeatureTypenameGet", "firstKEs='true' xKEs='1'",
       L"E:Failure in pdfKEWriteVisitAction - ProFeatureTypenameGet: -1"},
      {"ProSolidSimprepVisit", "simreps='true'", L"E:Fehler bei simp rep"},
  };
  for (const auto& [operation, attributes, line] : cases)
    world.list(std::string(operation) + attributes[0] + ".xml", sheet(attributes));
  ASSERT_EQ(0, world.start());
  world.open(L"PLATE", ProMdlType::part);
  world.openTool();
  for (const auto& [operation, attributes, line] : cases) {
    world.choose(std::string(operation) + attributes[0] + ".xml");
    world.session().failNext(operation, ProGeneralError);
    world.pressStart();
    EXPECT_THAT(test::told(world.log()), testing::HasSubstr(line)) << operation;
  }
}

TEST_F(InformationPdf, FoldersAndFilesThatCantBeWrittenEndIt) {
  world.list("missing.xml", task("writeInformationPDF", "folder='t:\\nowhere' file='a'"));
  world.list("nameless.xml", task("writeInformationPDF", "folder='t:\\'"));
  world.list("old.xml", task("writeInformationPDF", "folder='t:\\' file='old.PDF'"));
  world.list("replace.xml", task("writeInformationPDF", "folder='t:\\' file='old.PDF' overwriteExisting='true'"));
  world.list("model.xml", task("writeInformationPDF", "folderFromModel='true' file='@mdln@'"));
  test::writeBytes(path("old.PDF"), "old");
  world.runOn(L"PLATE", ProMdlType::part, "missing.xml");
  const auto reported = [&] { return test::told(world.log()); };
  EXPECT_EQ(L"B0 write informative PDF|E:The path is not existing", reported());
  world.run("nameless.xml");
  EXPECT_EQ(L"B0 write informative PDF|E:The attribute 'file' is missing", reported());
  world.run("old.xml");
  EXPECT_EQ(L"B0 write informative PDF|W:File already exists, no new image taken", reported());
  EXPECT_EQ("old", test::readBytes(path("old.PDF")));
  world.run("replace.xml");
  EXPECT_EQ("%PDF", test::readBytes(path("old.PDF")).substr(0, 4));
  EXPECT_FALSE(std::filesystem::exists(path("old.PDF.pdf")));
  world.run("model.xml");
  EXPECT_TRUE(std::filesystem::exists(world.models() + "/PLATE.pdf")) << text::toUtf8(world.log());
}

// One name for all models would be one file for all.
TEST_F(InformationPdf, WithoutANameOfItsOwnNothingIsWritten) {
  const std::pair<std::string, std::wstring> names[] = {
      {"%MISSING%", L"E:Can't find parameter: MISSING"},
      {"%MISSING%.pdf", L"E:Can't find parameter: MISSING"},
      {std::string(260, 'x'), L"E:The replaced output is to large for this task"},
      {".PDF", L"E:The path names no file: 't:\\.PDF'"},
      {" ", L"E:The path names no file: 't:\\ .pdf'"},
      {"/", L"E:The path names no file: 't:\\/.pdf'"},
  };
  std::string tasks;
  for (const auto& [name, line] : names) tasks += task("writeInformationPDF", "folder='t:\\' file='" + name + "'");
  world.list("names.xml", tasks + task("writeInformationPDF", "folder='' file='beside'"));
  world.runOn(L"PLATE", ProMdlType::part, "names.xml");
  const std::wstring reported = test::told(world.log());
  for (const auto& [name, line] : names)
    EXPECT_NE(reported.npos, reported.find(L" write informative PDF|" + line)) << name << text::toUtf8(reported);
  for (const auto& entry : std::filesystem::directory_iterator(world.temp()))
    EXPECT_NE(".pdf", text::toUtf8(text::lower(entry.path().extension().wstring()))) << entry.path();
  EXPECT_TRUE(std::filesystem::exists(world.models() + "/beside.pdf"));  // from the working folder
}

TEST_F(InformationPdf, AnUnwritableFolderIsToldBeforeAnythingIsWritten) {
  std::filesystem::create_directory(world.temp() + "/closed");
  world.list("list.xml", task("writeInformationPDF", "folder='t:\\closed' file='a'"));
  ASSERT_EQ(0, world.start());
  world.open(L"PLATE", ProMdlType::part);
  world.disk().denyWrites(L"t:\\closed");
  world.run("list.xml");
  EXPECT_EQ(L"B0 write informative PDF|E:You have no write permissions to the selected path", test::told(world.log()));
  EXPECT_TRUE(std::filesystem::is_empty(world.temp() + "/closed"));
}

TEST_F(InformationPdf, AFontThatIsNoneEndsItWithItsReason) {
  const std::string whole = test::readBytes(test::World::machine(L"i:\\text\\FreeSans.ttf"));
  ASSERT_FALSE(whole.empty()) << "the face of texts isn't installed";
  std::string nameless = whole;
  nameless.replace(nameless.find("glyf"), 4, "glyX");
  // The font with a number of two bytes in one of its tables changed.
  const auto with = [&](const char* table, std::size_t at, const char* number) {
    const auto place = [&](std::size_t from) {
      std::size_t value = 0;
      for (int i = 0; i < 4; ++i) value = value << 8 | static_cast<unsigned char>(whole[from + i]);
      return value;
    };
    std::string other = whole;
    return other.replace(place(whole.find(table) + 8) + at, 2, number, 2);
  };
  const std::tuple<const char*, std::string, const wchar_t*> cases[] = {
      {"text.ttf", "hello", L"it is no TrueType font"},
      {"empty.ttf", "", L"it is no TrueType font"},
      {"cut.ttf", whole.substr(0, 100000), L"the file is cut"},
      {"table.ttf", nameless, L"its table 'glyf' is missing"},
      {"units.ttf", with("head", 18, "\0\0"), L"its tables don't fit together"},
      {"widths.ttf", with("hhea", 34, "\xFF\xFF"), L"its tables don't fit together"},
      {"glyphs.ttf", with("maxp", 4, "\0\0"), L"its tables don't fit together"},
      {"maps.ttf", with("cmap", 2, "\xFF\xFF"), L"it has no table of Unicode characters"},
      {"segments.ttf", with("cmap", 44 + 6, "\0\2"), L"it has no table of Unicode characters"},
  };
  for (const auto& [name, bytes, reason] : cases) {
    test::writeBytes(path(name), bytes);
    world.list(std::string(name) + ".xml", sheet(std::string("font='t:\\") + name + "'"));
  }
  world.list("missing.xml", sheet("font='t:\\nowhere.ttf'"));
  ASSERT_EQ(0, world.start());
  world.open(L"PLATE", ProMdlType::part);
  for (const auto& [name, bytes, reason] : cases) {
    world.run(std::string(name) + ".xml");
    EXPECT_EQ(L"B0 write informative PDF|E:The font t:\\" + text::fromUtf8(name) + L" can't be used: " + reason,
              test::told(world.log()));
  }
  world.run("missing.xml");
  EXPECT_TRUE(world.logHas(L"The font t:\\nowhere.ttf can't be used: "));
  EXPECT_FALSE(std::filesystem::exists(path()));
}

// A font of hundreds of kilobytes is in the file with the glyphs of its texts alone, for the plainest of which these
// are a few. Glyphs that are made of others bring them.
TEST_F(InformationPdf, ASheetHasOfItsFontWhatItsTextsNeed) {
  constexpr std::size_t kSmall = 12000;
  const std::string fonts = "z:/usr/share/fonts/truetype/freefont/";
  for (const char* font : {"", "FreeSerif.ttf", "FreeMono.ttf"}) {
    const std::string chosen = *font ? "font='" + fonts + font + "' " : "";
    world.endSession();
    write(chosen + "customText='true' custextc='1' custext_0='grün Ω ½ Å'");
    EXPECT_THAT(text(), HasSubstr("grün Ω ½ Å")) << font;
    EXPECT_GT(kSmall, test::readBytes(path()).size()) << font;
    EXPECT_EQ("", said("pdftoppm -r 20 '" + path() + "' 2>&1 >/dev/null")) << font;
    EXPECT_THAT(said("qpdf --check '" + path() + "'"), HasSubstr("No syntax or stream encoding errors")) << font;
  }
}

TEST_F(InformationPdf, AnotherFontAndADrawingWorkToo) {
  test::writeBytes(world.models() + "/SHEET.drw.1", R"({"format": 1, "sheets": [{"size": "A4"}],
    "models": [{"name": "PLATE", "type": "prt"}]})");
  const std::wstring log =
      run(sheet(kAll + "font='z:/usr/share/fonts/truetype/freefont/FreeMono.ttf'"), L"SHEET", ProMdlType::drawing);
  EXPECT_THAT(log, testing::HasSubstr(L"E:Accuracy - Error number: -2"));
  EXPECT_THAT(text(), HasSubstr("PLATE"));
  EXPECT_THAT(said("pdffonts '" + path() + "' 2>/dev/null"), HasSubstr("FreeMono"));
}

}  // namespace

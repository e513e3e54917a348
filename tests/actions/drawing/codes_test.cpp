// Codes as symbol definitions: drawn from the saved drawing's lines and read by ZXing's reader.
#include "actions/drawing/drawing_details_fixture.h"
#include "support/scanner.h"

namespace test {
namespace {

using headless::LineRecord;
using headless::SymbolDefinitionRecord;

// On the current sheet, the second, the sheet's own coordinates are x * 2 + 10 and y / 2 - 1.
constexpr const char* kDrawing = R"({"format": 1, "currentSheet": 2,
  "parameters": [{"name": "NUMBER", "type": "string", "value": "P-4711"}],
  "sheets": [{"size": "A3"}, {"size": "A4", "portrait": true,
              "matrix": {"scaleX": 2, "scaleY": 0.5, "offsetX": 10, "offsetY": -1}}],
  "symbolDefinitions": [{"id": 1, "name": "Plate", "lines": [[0, 0, 5, 5]]}, {"id": 2, "name": "other"}],
  "symbols": [{"id": 7, "definition": "Plate", "position": {"x": 1, "y": 2}}]})";

// A stroke in the sheet's coordinates.
struct Stroke {
  double x, low, high, width;
};

class Codes : public DetailTest {
 protected:
  static std::string lines(const std::vector<std::string>& texts) {
    std::string attributes = " valueh='0' valuec='" + std::to_string(texts.size()) + "'";
    for (std::size_t i = 0; i < texts.size(); ++i) attributes += " value" + std::to_string(i) + "='" + texts[i] + "'";
    return attributes;
  }
  static std::string qr(const std::string& attributes, const std::vector<std::string>& texts) {
    return task("setQRCode", "encoding='2' casesensitive='1' " + attributes + lines(texts));
  }
  static std::string pdf(const std::string& attributes, const std::vector<std::string>& texts) {
    return task("createPDF417Barcode", attributes + lines(texts));
  }
  // Runs the tasks and a save; what the log told.
  static std::wstring make(World& own, const std::string& tasks, const std::string& failing = "", int times = 1) {
    writeBytes(own.models() + "/sheets.drw.1", kDrawing);
    own.list("list.xml", tasks + task("saveModel"));
    own.start();
    own.open(L"SHEETS", creo::ProMdlType::drawing);
    own.openTool();
    own.choose("list.xml");
    for (int i = 0; i < times && !failing.empty(); ++i) own.session().failNext(failing, creo::ProGeneralError);
    own.pressStart();
    EXPECT_TRUE(failing.empty() || own.session().calls(failing) > 0) << failing;
    return told(own.log());
  }
  static std::vector<Stroke> strokes(const headless::ModelRecord& record, const std::string& name) {
    std::vector<Stroke> all;
    for (const SymbolDefinitionRecord& definition : record.symbolDefinitions) {
      if (definition.name != name) continue;
      for (const LineRecord& line : definition.lines) {
        EXPECT_EQ(line.x1, line.x2);
        all.push_back({line.x1 * 2 + 10, line.y1 / 2 - 1, line.y2 / 2 - 1, line.width * 2});
      }
    }
    return all;
  }
  // The strokes as a person sees them.
  static Picture picture(const std::vector<Stroke>& strokes, double module) {
    if (strokes.empty()) return {1, 1};
    double left = strokes[0].x, right = left, low = strokes[0].low, high = strokes[0].high;
    for (const Stroke& stroke : strokes) {
      left = std::min(left, stroke.x - module / 2);
      right = std::max(right, stroke.x + module / 2);
      low = std::min(low, stroke.low);
      high = std::max(high, stroke.high);
    }
    const double dots = 3 / module, quiet = 4 * module;  // dots a unit of the sheet
    Picture picture(static_cast<int>((right - left + 2 * quiet) * dots),
                    static_cast<int>((high - low + 2 * quiet) * dots));
    for (const Stroke& entry : strokes)
      picture.fill((entry.x - entry.width / 2 - left + quiet) * dots, (high - entry.high + quiet) * dots,
                   entry.width * dots, (entry.high - entry.low) * dots);
    return picture;
  }
  static std::string read(const std::vector<Stroke>& strokes, double module, const std::string& format) {
    return scanned(picture(strokes, module), format);
  }
  // "1:Plate(3) ...": ids, names, how many lines.
  static std::string definitions(const World& own) {
    std::string all;
    for (const SymbolDefinitionRecord& item : saved(own).symbolDefinitions)
      all += (all.empty() ? "" : " ") + std::to_string(item.id) + ":" + item.name + "(" +
             std::to_string(item.lines.size()) + ")";
    return all;
  }
};

struct Reading {
  std::string attributes;
  std::vector<std::string> texts;
  double module;
  std::string read;  // Latin-1
};

std::string times(const std::string& piece, int count) {
  std::string all;
  while (count-- > 0) all += piece;
  return all;
}

TEST_F(Codes, QrCodesAreReadBack) {
  const std::string long250 = times("Bracket 4711-0815, left; ", 10);
  const Reading readings[] = {
      {"eclevel='0' pixelsize='1'", {"1"}, 1, "1"},
      {"eclevel='1' pixelsize='0.5'", {"Drawing %NUMBER%", "Rev. C"}, 0.5, "Drawing P-4711\nRev. C"},
      {"eclevel='2' pixelsize='0.25'",
       {"Gr\xc3\xb6\xc3\x9f"
        "e \xc3\x84\xc3\x96\xc3\x9c"},
       0.25,
       "Gr\xf6\xdf"
       "e \xc4\xd6\xdc"},
      {"eclevel='3' pixelsize='2'", {"PART 4711/B", "", "0123456789"}, 2, "PART 4711/B\n\n0123456789"},
      {"eclevel='0' color='3'",
       {long250, long250, long250, long250},
       1,
       long250 + "\n" + long250 + "\n" + long250 + "\n" + long250},
  };
  World own;
  std::string tasks;
  for (const Reading& reading : readings)
    tasks += qr("symname='%NUMBER%_" + std::to_string(&reading - readings) + "' " + reading.attributes, reading.texts);
  make(own, tasks);
  const headless::ModelRecord record = saved(own);
  for (const Reading& entry : readings)
    EXPECT_EQ(entry.read, read(strokes(record, "P-4711_" + std::to_string(&entry - readings)), entry.module, "QRCode"));
  EXPECT_EQ(1, record.symbolDefinitions.back().lines.front().colorMethod);
  EXPECT_EQ(3, record.symbolDefinitions.back().lines.front().color);
}

TEST_F(Codes, Pdf417CodesAreReadBack) {
  const std::string long249 = times("Bracket 4711-0815, left; ", 9) + "and 123456789012345 more";
  const Reading readings[] = {
      {"eclevel='9' pixelsize='1'", {"1"}, 1, "1"},
      {"eclevel='0' pixelsize='0.5'", {"Drawing %NUMBER%", "Rev. C"}, 0.5, "Drawing P-4711\nRev. C"},
      {"eclevel='4' pixelsize='0.25'",
       {"Gr\xc3\xb6\xc3\x9f"
        "e \xc3\x84\xc3\x96\xc3\x9c"},
       0.25,
       "Gr\xf6\xdf"
       "e \xc4\xd6\xdc"},
      {"eclevel='8' pixelsize='2' pixelslim='0.2'", {"PART 4711/B", "", "0123456789"}, 2, "PART 4711/B\n\n0123456789"},
      {"eclevel='9' pixelsize='0.3'",
       {long249, long249, long249, long249},
       0.3,
       long249 + "\n" + long249 + "\n" + long249 + "\n" + long249},
  };
  World own;
  std::string tasks;
  for (const Reading& reading : readings)
    tasks += pdf("symname='%code" + std::to_string(&reading - readings) + "' " + reading.attributes, reading.texts);
  make(own, tasks);
  const headless::ModelRecord record = saved(own);
  for (const Reading& entry : readings)
    EXPECT_EQ(entry.read, read(strokes(record, "%code" + std::to_string(&entry - readings)), entry.module, "PDF417"));
  EXPECT_EQ(0, record.symbolDefinitions.back().lines.front().colorMethod);
}

TEST_F(Codes, SayTheirLettersWhereAskedTo) {
  const std::string tolerance =
      "\xc2\xb1"
      "0,1 \xc2\xb5m \xc3\x98"
      "12 \xc2\xb0"
      "C";
  World own;
  make(own, qr("symname='q' eclevel='1' pixelsize='1' eci='true'", {tolerance, "%NUMBER%"}) +
                pdf("symname='p' eclevel='9' pixelsize='1' eci='true'", {tolerance, "%NUMBER%"}) +
                qr("symname='old' eclevel='1' pixelsize='1' eci='True'", {tolerance}));
  const headless::ModelRecord record = saved(own);
  const std::string stated = tolerance + "\nP-4711 (stated)";
  EXPECT_EQ(stated, scannedText(picture(strokes(record, "q"), 1), "QRCode"));
  EXPECT_EQ(stated, scannedText(picture(strokes(record, "p"), 1), "PDF417"));
  EXPECT_FALSE(scannedText(picture(strokes(record, "old"), 1), "QRCode").ends_with("(stated)"));
}

TEST_F(Codes, StandWhereTheyShould) {
  World own;
  make(own, qr("symname='one' eclevel='0' pixelsize='1'", {"1"}) +
                qr("symname='two' eclevel='0' pixelsize='2'", {"1"}) +
                pdf("symname='low' eclevel='0' pixelsize='2' pixelslim='0.5'", {"PDF417"}) +
                pdf("symname='thin' eclevel='0' pixelsize='2' pixelslim='2'", {"PDF417"}));
  const headless::ModelRecord record = saved(own);
  const auto entry = strokes(record, "one"), two = strokes(record, "two"), low = strokes(record, "low");
  ASSERT_FALSE(entry.empty() || two.empty() || low.empty());
  // A code of 21 modules; its first row begins with a finder of seven.
  EXPECT_DOUBLE_EQ(0, entry[0].low);
  EXPECT_DOUBLE_EQ(1, entry[0].high);
  EXPECT_DOUBLE_EQ(6, entry[6].x);
  EXPECT_DOUBLE_EQ(-20, entry.back().low);
  EXPECT_DOUBLE_EQ(21, two[0].low);
  EXPECT_DOUBLE_EQ(23, two[0].high);
  EXPECT_DOUBLE_EQ(2, two[0].width);
  // Rows rise from the first, whose start pattern has eight dark modules.
  EXPECT_DOUBLE_EQ(2, low[0].x);
  EXPECT_DOUBLE_EQ(2, low[0].low);
  EXPECT_DOUBLE_EQ(16, low[7].x);
  EXPECT_DOUBLE_EQ(20, low[8].x);
  EXPECT_DOUBLE_EQ(1.5, low[0].width);
  EXPECT_GT(low.back().low, low[0].low);
  EXPECT_EQ(0, strokes(record, "thin")[0].width);
}

TEST_F(Codes, TakeThePlaceOfDefinitionsOfTheirName) {
  World own;
  EXPECT_EQ(L"B0 Set QR Code|B1 Create PDF 417 barcode|B2 Save model",
            make(own, qr("symname='PLATE' eclevel='0' pixelsize='1'", {"1"}) +
                          pdf("symname='OTHER' eclevel='0' pixelsize='1'", {"1"})));
  const headless::ModelRecord record = saved(own);
  ASSERT_EQ(2U, record.symbolDefinitions.size());
  EXPECT_EQ("PLATE", record.symbolDefinitions[0].name);
  EXPECT_EQ("OTHER", record.symbolDefinitions[1].name);
  EXPECT_EQ("7:Plate@1(1,2)", symbols(own));
}

TEST_F(Codes, ThatCantBeMadeLeaveTheOldDefinition) {
  const std::string good = "symname='plate' eclevel='0' pixelsize='1'";
  const std::wstring replacement =
      L"There happened a failure inside the variable replacement. Please check your used variables";
  struct Case {
    std::string task;
    std::wstring said;
  };
  const Case cases[] = {
      {qr(good, {}), L"Can't create the QR code"},
      {qr(good, {""}), L"Can't create the QR code"},
      {qr("symname='plate' eclevel='4' pixelsize='1'", {"1"}), L"Can't create the QR code"},
      {qr("symname='plate' eclevel='3' pixelsize='1'", std::vector<std::string>(6, times("a", 250))),
       L"Can't create the QR code"},
      {task("setQRCode", "encoding='4' casesensitive='1' " + good + lines({"1"})), L"Can't create the QR code"},
      {task("setQRCode", "encoding='2147483647' casesensitive='1' " + good + lines({"1"})),
       L"Can't create the QR code"},
      {qr(good, {"1", "\xe2\x82\xac 5"}), L"The code can't hold a character of its line 1: \x20ac 5"},
      {qr(good, {"%NONE%"}), replacement},
      {qr("symname='plate' pixelsize='0'", {"1"}), L"pixelsize isn't a positive number: 0"},
      {qr("symname='plate' pixelsize='-1'", {"1"}), L"pixelsize isn't a positive number: -1"},
      {qr("symname='plate' pixelsize='wide'", {"1"}), L"pixelsize isn't a positive number: wide"},
      {qr("symname='plate' pixelsize='1e999'", {"1"}), L"pixelsize isn't a positive number: 1e999"},
      {qr("symname='' pixelsize='1'", {"1"}), L"Symdef creation failure"},
      {pdf(good, {}), L"Can't create the Barcode"},
      {pdf("symname='plate' eclevel='10' pixelsize='1'", {"1"}), L"Can't create the Barcode"},
      {pdf("symname='plate' eclevel='8' pixelsize='1'", std::vector<std::string>(5, times("a;", 120))),
       L"Can't create the Barcode"},
      {pdf(good, {"\xce\xa9"}), L"The code can't hold a character of its line 0: \x3a9"},
      {pdf(good, {times("%NUMBER%", 50)}), replacement},
      {pdf("symname='plate' eclevel='0'", {"1"}), L"pixelsize isn't a positive number: "},
      {pdf("symname='plate' eclevel='0' pixelsize='nan'", {"1"}), L"pixelsize isn't a positive number: nan"},
      {pdf(good + " pixelslim='x'", {"1"}), L"pixelslim is no number: x"},
  };
  World own;
  std::string tasks;
  for (const Case& entry : cases) tasks += entry.task;
  const std::wstring log = make(own, tasks);
  EXPECT_EQ("1:Plate(1) 2:other(0)", definitions(own));
  for (const Case& item : cases) {
    const auto number = std::to_wstring(&item - cases);
    const std::size_t begin = log.find(L"B" + number + L" "), end = log.find(L"|B", begin);
    const std::wstring said = log.substr(begin, end - begin);
    EXPECT_TRUE(said.find(L"E:" + std::wstring(item.said.substr(0, item.said.find_last_not_of(L' ') + 1))) != said.npos)
        << text::toUtf8(said);
  }
}

// A text keeps the token, which nobody sees in a code.
TEST_F(Codes, ThatLackTheModelsNameArentMade) {
  constexpr int kCallsOfARun = 20;
  const std::string form = "symname='plate' eclevel='0' pixelsize='1'";
  const std::pair<std::string, const char*> cases[] = {
      {qr(form, {"1", "Drawing @mdln@"}), "ProMdlNameGet"},
      {pdf(form, {"1", "@common@ %NUMBER%"}), "ProMdlCommonnameGet"},
  };
  for (const auto& [one, operation] : cases) {
    World own;
    const std::wstring log = make(own, one, operation, kCallsOfARun);
    EXPECT_NE(log.npos, log.find(L"E:The code can't be made, as @")) << text::toUtf8(log);
    EXPECT_NE(log.npos, log.find(L"@ of its line 1 can't be read")) << text::toUtf8(log);
    EXPECT_EQ("1:Plate(1) 2:other(0)", definitions(own)) << operation;
  }
}

TEST_F(Codes, GoOnWithoutAModuleThatFails) {
  struct Case {
    const char* operation;
    std::wstring said;
    int lost;
  };
  const Case cases[] = {
      {"ProDrawingDtlsymdefsCollect", L"E:The definitions called Plate can't be deleted", -2},
      {"ProDtlsymdefNameGet", L"E:The definitions called Plate can't be deleted", -2},
      {"ProDtlsymdefdataAlloc", L"E:Symdef creation failure", -1},
      {"ProDtlsymdefCreate", L"E:Symdef creation failure", -1},
      {"ProDrawingSheetTrfGet", L"E:The matrix of sheet 2 can't be read", -2},
      {"ProDtlentitydataAlloc", L"E:1", 1},
      {"ProCurvedataAlloc", L"E:2", 1},
      {"ProDtlentitydataCurveSet", L"E:3", 1},
      {"ProDtlentitydataWidthSet", L"E:Err: -1", 1},
      {"ProDtlentityCreate", L"E:Err: -1", 1},
      {"ProWindowRepaint", L"", 0},
  };
  std::size_t strokes = 0;
  {
    World whole;
    make(whole, qr("symname='Plate' eclevel='0' pixelsize='1'", {"1"}));
    strokes = saved(whole).symbolDefinitions.back().lines.size();
  }
  for (const Case& entry : cases) {
    World own;
    const std::wstring log = make(own, qr("symname='Plate' eclevel='0' pixelsize='1'", {"1"}), entry.operation);
    EXPECT_EQ(L"B0 Set QR Code|" + entry.said + (entry.said.empty() ? L"" : L"|") + L"B1 Save model", log);
    const std::string left =
        entry.lost == -1 ? "2:other(0)"
        : entry.lost == -2
            ? "1:Plate(1) 2:other(0)"
            : "2:other(0) 3:Plate(" + std::to_string(strokes - static_cast<std::size_t>(entry.lost)) + ")";
    EXPECT_EQ(left, definitions(own)) << entry.operation;
  }
}

}  // namespace
}  // namespace test

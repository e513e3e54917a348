// Symbol definitions whose lines are a QR or a PDF417 code. A module is one upright stroke, as thick as it is long.
#include <algorithm>
#include <cmath>

#include "actions/drawing/code_text.h"
#include "actions/drawing/details.h"
#include "barcode/pdf417.h"
#include "creo/ProDtlentity.h"
#include "creo/ProWindow.h"
#include "language/read_number.h"
#include "language/variables.h"
#include "text/format.h"
#include "text/letters.h"
#include "text/numbers.h"

namespace actions {
namespace {

using namespace language;
using creo::ProError;
using creo::ProMdl;

// How the modules of a code are drawn.
struct Pen {
  double module = 1;     // edge, in units of the sheet
  double narrowing = 0;  // of the stroke
  creo::ProColorMethod method = creo::ProColorMethod::byDefault;
  int color = 0;
};

// False, with an error line: one of that name may be left, and two of one name can't be told apart.
bool deleteDefinitions(ProMdl drawing, const std::wstring& name) {
  const auto definitions = creo::ProDrawingDtlsymdefsCollect(drawing);
  bool isDone = creo::isTold(definitions);
  for (const creo::ProDtlsymdef& definition : definitions.value) {
    const auto found = creo::ProDtlsymdefNameGet(definition);
    if (!found || (text::equalNoCase(found.value, name) && creo::ProDtlsymdefDelete(definition) != creo::ProNoError))
      isDone = false;
  }
  if (!isDone) failDetail(text::format(L"The definitions called %s can't be deleted", name));
  return isDone;
}

creo::Got<creo::ProDtlsymdef> createDefinition(ProMdl drawing, const std::wstring& name) {
  auto data = creo::ProDtlsymdefdataAlloc(drawing);
  if (!data) return data.error;
  if (const ProError result = creo::ProDtlsymdefdataPathSet(data.value, name)) return result;
  return creo::ProDtlsymdefCreate(data.value);
}

// Draws strokes into a new definition, which takes the place of those of its name.
class CodeSymbol {
 public:
  CodeSymbol(const SheetFrame& frame, const Pen& pen) : frame_(frame), pen_(pen) {}
  // False, with an error line, where there is no new definition.
  bool begin(const std::wstring& name) {
    if (!deleteDefinitions(frame_.drawing, name)) return false;
    const auto created = createDefinition(frame_.drawing, name);
    if (!created) {
      failDetail(L"Symdef creation failure");
      return false;
    }
    definition_ = created.value;
    background_ = creo::ProDrawingBackgroundViewGet(frame_.drawing, frame_.sheet);
    return true;
  }
  // A dark module whose lower end lies there on the sheet.
  void addModule(double x, double y) const {
    auto data = creo::ProDtlentitydataAlloc(frame_.drawing);
    if (!data) return failDetail(L"1");
    const auto curve = creo::ProCurvedataAlloc(toDrawing(frame_, {x, y}), toDrawing(frame_, {x, y + pen_.module}));
    if (!curve) return failDetail(L"2");
    if (creo::ProDtlentitydataCurveSet(data.value, curve.value) != creo::ProNoError) return failDetail(L"3");
    ProError result = setForm(data.value);
    if (result == creo::ProNoError) result = creo::ProDtlentityCreate(definition_, data.value).error;
    if (result != creo::ProNoError) failDetail(text::format(L"Err: %d", static_cast<int>(result)));
  }
  void end() const {
    creo::ProWindowRepaint(creo::kAnyWindow);
    refreshTree(frame_.drawing);
  }

 private:
  // A stroke of another width or place than it should have would make another code.
  ProError setForm(creo::ProDtlentitydata& data) const {
    const double width = std::max(0.0, pen_.module - pen_.narrowing) / std::fabs(frame_.matrix.scaleX);
    if (const ProError result = creo::ProDtlentitydataConstructionSet(data, false)) return result;
    if (!background_) return background_.error;
    if (const ProError result = creo::ProDtlentitydataViewSet(data, background_.value)) return result;
    if (const ProError result = creo::ProDtlentitydataColorSet(data, pen_.method, pen_.color)) return result;
    return creo::ProDtlentitydataWidthSet(data, width);
  }

  SheetFrame frame_;
  Pen pen_;
  creo::ProDtlsymdef definition_;
  creo::Got<creo::ProView> background_;
};

std::optional<SheetFrame> currentFrame(ProMdl drawing) {
  const auto sheet = creo::ProDrawingCurrentSheetGet(drawing);
  if (sheet) return sheetFrame(drawing, sheet.value);
  failDetail(L"The current sheet can't be told");
  return std::nullopt;
}

// ---- QR

// Rows descend. Their start is the code's width below what would end the last one at 0.
void drawQr(const CodeSymbol& symbol, const barcode::QrCode& code, double module) {
  for (int row = 0; row < code.width; ++row) {
    const double y = -code.width + code.width * module - row * module;
    for (int column = 0; column < code.width; ++column)
      if (code.isDark(row, column)) symbol.addModule(column * module, y);
  }
}

Outcome setQRCode(const Task& task) {
  const auto code = qrCodeOf(task);
  if (!code) return done;
  const Replaced name = task.text(L"symname");
  if (!name.hasText()) {
    failDetail(L"The name of the symbol can't be put together");
    return done;
  }
  const auto module = task.has(L"pixelsize") ? codeLength(task, L"pixelsize") : 1.0;
  const auto frame = module ? currentFrame(task.model()) : std::nullopt;
  if (!frame) return done;
  CodeSymbol symbol(*frame, {*module, 0, creo::ProColorMethod::type, text::parseInt(task.attribute(L"color"))});
  if (!symbol.begin(name.text)) return done;
  drawQr(symbol, *code, *module);
  symbol.end();
  return done;
}

// ---- PDF417

constexpr int kRecommendedLevel = 9;

// Nothing, with an error line, where there is no code.
std::optional<barcode::Pdf417> pdf417Of(const Task& task) {
  auto text = codeText(task);
  if (!text) return std::nullopt;
  barcode::Pdf417 code;
  barcode::pdf417init(code);
  code.text = std::move(*text);
  code.options = barcode::kInvertedBitmap | (statesLetters(task) ? barcode::kLatin1Stated : 0);
  if (const int level = text::parseInt(task.attribute(L"eclevel")); level != kRecommendedLevel) {
    code.options |= barcode::kFixedErrorLevel;
    code.errorLevel = level;
  }
  barcode::paintCode(code);
  if (code.error == barcode::kPdf417Done) return code;
  failDetail(L"Can't create the Barcode");
  return std::nullopt;
}

// Rows rise: the bitmap's first one is the lowest.
void drawPdf417(const CodeSymbol& symbol, const barcode::Pdf417& code, double module) {
  const std::size_t bytesPerRow = (static_cast<std::size_t>(code.bitColumns) + 7) / 8;
  int row = 0, column = 0;
  for (std::size_t i = 0; i < code.outBits.size(); ++i) {
    if (i % bytesPerRow == 0) {
      column = 0;
      ++row;
    }
    for (int bit = 7; bit >= 0; --bit) {
      ++column;
      if ((code.outBits[i] >> bit & 1) == 0) symbol.addModule(column * module, module * row);
    }
  }
}

// `pixelslim`; 0 where it is absent or empty. Nothing, with an error line, where it is no number.
std::optional<double> narrowing(const Task& task) {
  const std::wstring_view value = task.attribute(L"pixelslim");
  if (value.empty()) return 0.0;
  if (const auto number = numberIn(value)) return number;
  failDetail(text::format(L"pixelslim is no number: %s", value));
  return std::nullopt;
}

Outcome createPDF417Barcode(const Task& task) {
  auto code = pdf417Of(task);
  if (!code) return done;
  const auto module = codeLength(task, L"pixelsize");
  const auto slim = module ? narrowing(task) : std::nullopt;
  const auto frame = slim ? currentFrame(task.model()) : std::nullopt;
  if (!frame) return done;
  CodeSymbol symbol(*frame, {*module, *slim, creo::ProColorMethod::byDefault, 0});
  if (!symbol.begin(std::wstring(task.attribute(L"symname")))) return done;
  drawPdf417(symbol, *code, *module);
  symbol.end();
  return done;
}

// ---- rows

constexpr Attribute kNameOfQr[] = {
    {.name = L"symname", .variables = true, .need = Need::needed, .about = "the definition's name"},
};
constexpr Attribute kStrokesOfQr[] = {
    {.name = L"pixelsize",
     .kind = Kind::number,
     .about = "edge of a module in units of the current sheet, above 0; absent: 1"},
    {.name = L"color", .kind = Kind::integer, .about = "number of the strokes' color"},
};
constexpr Attribute kNameOfPdf417[] = {
    {.name = L"symname", .need = Need::needed, .about = "the definition's name, without variables"},
};
constexpr Attribute kLevelOfPdf417[] = {
    {.name = L"eclevel",
     .kind = Kind::integer,
     .range = {.least = 0, .most = kRecommendedLevel},
     .about = "0 to 8: 2, 4, 8 ... 512 codewords for correction; 9: as many as are recommended"},
};
constexpr Attribute kStrokesOfPdf417[] = {
    {.name = L"pixelsize",
     .kind = Kind::number,
     .need = Need::needed,
     .about = "edge of a module in units of the current sheet, above 0"},
    {.name = L"pixelslim", .kind = Kind::number, .about = "how much narrower the strokes are; absent or empty: 0"},
};
constexpr auto kQrAttributes = joined(kNameOfQr, kCodeLines, kQrForm, kStatedLetters, kStrokesOfQr);
constexpr auto kPdf417Attributes = joined(kNameOfPdf417, kCodeLines, kLevelOfPdf417, kStatedLetters, kStrokesOfPdf417);

constexpr Action kActions[] = {
    {.key = L"setQRCode",
     .place = 79,
     .title = L"Set QR Code",
     .conditions = kOnDrawings,
     .attributes = kQrAttributes,
     .effects = {.changes = Touched::model},
     .about = "draws a QR code into the current drawing as a symbol definition",
     .function = &setQRCode},
    {.key = L"createPDF417Barcode",
     .place = 84,
     .title = L"Create PDF 417 barcode",
     .conditions = kOnDrawings,
     .attributes = kPdf417Attributes,
     .effects = {.changes = Touched::model},
     .about = "draws a PDF417 code into the current drawing as a symbol definition",
     .function = &createPDF417Barcode},
};

}  // namespace

std::span<const Action> codeActions() { return kActions; }

}  // namespace actions

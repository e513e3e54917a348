#include "headless/exports/sheet_pdf.h"

#include <hpdf.h>
#include <hpdf_doc.h>
#include <hpdf_pages.h>

#include <array>
#include <cmath>
#include <memory>
#include <numbers>
#include <utility>

#include "os/clock.h"
#include "os/surroundings.h"
#include "pdf/face.h"
#include "pdf/finish.h"
#include "pdf/font_file.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/numbers.h"

namespace headless {
namespace {

using creo::ProPDFcolor;
using creo::ProPDFfonts;
using creo::ProPDFlayers;

constexpr double kPointsAMm = 72 / 25.4;
constexpr float kFaceSize = 10;                           // texts are scaled from it, as the library bounds sizes
constexpr double kSlant = 0.21;                           // tangent of an oblique face's angle
constexpr double kOutlinePen = 0.1, kBoldPen = 0.03;      // mm; of the height
constexpr double kWidestPen = HPDF_MAX_LINEWIDTH;         // points
constexpr double kShortestEdge = 2, kLongestEdge = 5080;  // mm of a page, as the format bounds them
constexpr char kUtf8[] = "UTF-8";

struct FreePdf {
  void operator()(HPDF_Doc pdf) const { HPDF_Free(pdf); }
};
using PdfPtr = std::unique_ptr<HPDF_Doc_Rec, FreePdf>;

struct Rgb {
  float red = 0, green = 0, blue = 0;
  bool operator==(const Rgb&) const = default;
};

Rgb colorFor(SheetColor color, ProPDFcolor how) {
  if (how == ProPDFcolor::black) return {};
  const Rgb full{static_cast<float>((color >> 16) & 255) / 255, static_cast<float>((color >> 8) & 255) / 255,
                 static_cast<float>(color & 255) / 255};
  if (how == ProPDFcolor::color) return full;
  const float grey = 0.299F * full.red + 0.587F * full.green + 0.114F * full.blue;
  return {grey, grey, grey};
}

float points(double mm) { return static_cast<float>(mm * kPointsAMm); }

// What the library has no function for.
void writeCode(HPDF_Page page, const std::string& code) {
  HPDF_Stream_WriteStr(static_cast<HPDF_PageAttr>(page->attr)->stream, code.c_str());
}

// The face that all texts have.
struct Face {
  HPDF_Font font = nullptr;
  bool isUnicode = false;
  std::string file = {};    // its bytes, of one that is embedded
  std::wstring fault = {};  // why there is none

  [[nodiscard]] std::string written(const std::wstring& text) const {
    return isUnicode ? text::toUtf8(text) : text::toWindows1252(text);
  }
};

Face faceFor(HPDF_Doc pdf, const PdfForm& form) {
  if (form.fonts == ProPDFfonts::byName || form.fontFile.empty())
    return {HPDF_GetFont(pdf, "Helvetica", "WinAnsiEncoding"), false};
  auto file = os::files().read(form.fontFile);
  const text::Fault fault = file.error ? os::faultOf(file.error) : pdf::fontFault(file.value);
  if (fault) return {.fault = text::format(L"the font %s: %s", form.fontFile, fault.what)};
  HPDF_Font font = pdf::unicodeFont(pdf, file.value);
  return {font, true, std::move(file.value), text::format(L"the font %s can't be used", form.fontFile)};
}

// A layer for each kind of thing. The library knows none: they are put together from its objects.
class Layers {
 public:
  explicit Layers(HPDF_Doc pdf) : pdf_(pdf) {}
  // What is drawn now belongs to the part's layer, until leave.
  void enter(HPDF_Page page, SheetPart part) {
    const auto place = static_cast<std::size_t>(part);
    if (!groups_[place]) groups_[place] = create(partName(part));
    const std::string name = "OC" + std::to_string(place);
    if (HPDF_Dict properties = propertiesOf(page)) HPDF_Dict_Add(properties, name.c_str(), groups_[place]);
    writeCode(page, "/OC /" + name + " BDC\n");
  }
  static void leave(HPDF_Page page) { writeCode(page, "EMC\n"); }
  // Tells the reader of all layers.
  void finish() {
    HPDF_Array all = HPDF_Array_New(pdf_->mmgr), order = HPDF_Array_New(pdf_->mmgr);
    for (HPDF_Dict group : groups_) {
      if (!group) continue;
      HPDF_Array_Add(all, group);
      HPDF_Array_Add(order, group);
    }
    HPDF_Dict defaults = HPDF_Dict_New(pdf_->mmgr), properties = HPDF_Dict_New(pdf_->mmgr);
    HPDF_Dict_Add(defaults, "Order", order);
    HPDF_Dict_Add(properties, "OCGs", all);
    HPDF_Dict_Add(properties, "D", defaults);
    HPDF_Dict_Add(pdf_->catalog, "OCProperties", properties);
    pdf_->pdf_version = HPDF_VER_15;
  }

 private:
  HPDF_Dict create(std::string_view name) {
    HPDF_Dict group = HPDF_Dict_New(pdf_->mmgr);
    if (!group || HPDF_Xref_Add(pdf_->xref, group) != HPDF_OK) return nullptr;
    HPDF_Dict_AddName(group, "Type", "OCG");
    HPDF_Dict_Add(group, "Name", HPDF_String_New(pdf_->mmgr, std::string(name).c_str(), nullptr));
    return group;
  }
  HPDF_Dict propertiesOf(HPDF_Page page) {
    auto* resources = static_cast<HPDF_Dict>(HPDF_Page_GetInheritableItem(page, "Resources", HPDF_OCLASS_DICT));
    if (!resources) return nullptr;
    if (void* there = HPDF_Dict_GetItem(resources, "Properties", HPDF_OCLASS_DICT))
      return static_cast<HPDF_Dict>(there);
    HPDF_Dict made = HPDF_Dict_New(pdf_->mmgr);
    HPDF_Dict_Add(resources, "Properties", made);
    return made;
  }

  HPDF_Doc pdf_;
  std::array<HPDF_Dict, kSheetParts> groups_ = {};
};

class PagePainter {
 public:
  PagePainter(HPDF_Page page, const Face& face, const PdfForm& form) : page_(page), face_(face), form_(form) {
    HPDF_Page_SetLineJoin(page_, static_cast<HPDF_LineJoin>(form.lineJoin));
  }
  // Only what belongs to the part; all for null.
  void draw(const SheetPicture& sheet, const SheetPart* part) {
    for (const SheetStroke& stroke : sheet.strokes)
      if ((!part || stroke.pen.part == *part) && isFinite(stroke)) draw(stroke);
    for (const SheetText& text : sheet.texts)
      if (!part || text.part == *part) draw(text);
  }

 private:
  void setPen(const Rgb& color, double widthMm, int cap) {
    if (widthMm != width_) HPDF_Page_SetLineWidth(page_, points(widthMm));
    if (cap != cap_) HPDF_Page_SetLineCap(page_, static_cast<HPDF_LineCap>(cap));
    if (color != stroke_) HPDF_Page_SetRGBStroke(page_, color.red, color.green, color.blue);
    width_ = widthMm;
    cap_ = cap;
    stroke_ = color;
  }
  void setFill(const Rgb& color) {
    if (color != fill_) HPDF_Page_SetRGBFill(page_, color.red, color.green, color.blue);
    fill_ = color;
  }
  // The bytes go into the page as they are: the library's own dashes are whole points.
  void setDashes(LineKind kind) {
    if (kind == kind_) return;
    kind_ = kind;
    std::string dashes;
    for (const double length : dashesOf(kind))
      dashes += (dashes.empty() ? "" : " ") + text::toUtf8(text::format(L"%.3f", length * kPointsAMm));
    writeCode(page_, "[" + dashes + "] 0 d\n");
  }
  void trace(const geometry::FlatLine& line) {
    HPDF_Page_MoveTo(page_, points(line.from.x), points(line.from.y));
    HPDF_Page_LineTo(page_, points(line.to.x), points(line.to.y));
  }
  void trace(const geometry::FlatArc& arc) {
    const auto pieces = geometry::beziersOf(arc);
    HPDF_Page_MoveTo(page_, points(pieces.front()[0].x), points(pieces.front()[0].y));
    for (const auto& [from, first, second, to] : pieces)
      HPDF_Page_CurveTo(page_, points(first.x), points(first.y), points(second.x), points(second.y), points(to.x),
                        points(to.y));
  }
  void trace(const geometry::FlatPath& path) {
    HPDF_Page_MoveTo(page_, points(path.points.front().x), points(path.points.front().y));
    for (const geometry::FlatPoint& point : path.points) HPDF_Page_LineTo(page_, points(point.x), points(point.y));
  }
  void draw(const SheetStroke& stroke) {
    const SheetPen& pen = stroke.pen;
    const Rgb color = colorFor(pen.color, form_.color);
    if (pen.isFilled) {
      setFill(color);
      std::visit([this](const auto& curve) { trace(curve); }, stroke.curve);
      HPDF_Page_Fill(page_);
      return;
    }
    int cap = form_.lineCap;
    if (const auto* line = std::get_if<geometry::FlatLine>(&stroke.curve)) {
      const double length = std::hypot(line->to.x - line->from.x, line->to.y - line->from.y);
      if (pen.width * kPointsAMm > kWidestPen) return drawArea(*line, pen.width, length, color);
      if (pen.width * 2 > length) cap = HPDF_BUTT_END;
    }
    if (!dashesOf(pen.kind).empty()) cap = HPDF_BUTT_END;  // round ones would close the gaps
    setPen(color, pen.width, cap);
    setDashes(pen.kind);
    std::visit([this](const auto& curve) { trace(curve); }, stroke.curve);
    HPDF_Page_Stroke(page_);
  }
  // A stroke wider than the library's pens.
  void drawArea(const geometry::FlatLine& line, double width, double length, const Rgb& color) {
    if (!(length > 0)) return;
    const double acrossX = -(line.to.y - line.from.y) / length * width / 2;
    const double acrossY = (line.to.x - line.from.x) / length * width / 2;
    setFill(color);
    HPDF_Page_MoveTo(page_, points(line.from.x + acrossX), points(line.from.y + acrossY));
    HPDF_Page_LineTo(page_, points(line.to.x + acrossX), points(line.to.y + acrossY));
    HPDF_Page_LineTo(page_, points(line.to.x - acrossX), points(line.to.y - acrossY));
    HPDF_Page_LineTo(page_, points(line.from.x - acrossX), points(line.from.y - acrossY));
    HPDF_Page_ClosePath(page_);
    HPDF_Page_Fill(page_);
  }
  void draw(const SheetText& text) {
    if (text.text.empty() || !(text.height > 0) || !std::isfinite(text.x + text.y + text.height)) return;
    const Rgb color = colorFor(text.color, form_.color);
    const std::string written = face_.written(text.text);
    setFill(color);
    const bool isOutline = form_.fonts == ProPDFfonts::outlined;
    if (isOutline || text.isBold) {
      setPen(color, isOutline ? kOutlinePen : text.height * kBoldPen, HPDF_BUTT_END);
      setDashes(LineKind::plain);
    }
    HPDF_Page_BeginText(page_);
    HPDF_Page_SetFontAndSize(page_, face_.font, kFaceSize);
    HPDF_Page_SetTextRenderingMode(page_, isOutline ? HPDF_STROKE : text.isBold ? HPDF_FILL_THEN_STROKE : HPDF_FILL);
    const double up = text.height * kPointsAMm / kFaceSize;
    double along = up;
    const double width = HPDF_Page_TextWidth(page_, written.c_str()) * up / kPointsAMm;
    if (text.room > 0 && width > text.room) along *= text.room / width;
    const double turn = text.angle * std::numbers::pi / 180, c = std::cos(turn), s = std::sin(turn);
    const double lean = text.isOblique ? kSlant * up : 0;
    HPDF_Page_SetTextMatrix(page_, static_cast<float>(c * along), static_cast<float>(s * along),
                            static_cast<float>(c * lean - s * up), static_cast<float>(s * lean + c * up),
                            points(text.x), points(text.y));
    HPDF_Page_ShowText(page_, written.c_str());
    HPDF_Page_EndText(page_);
  }

  HPDF_Page page_;
  const Face& face_;
  const PdfForm& form_;
  Rgb stroke_, fill_;  // black at first
  double width_ = -1;
  int cap_ = -1;
  LineKind kind_ = LineKind::plain;  // whose dashes lines have
};

bool hasPart(const SheetPicture& sheet, SheetPart part) {
  for (const SheetStroke& stroke : sheet.strokes)
    if (stroke.pen.part == part) return true;
  for (const SheetText& text : sheet.texts)
    if (text.part == part) return true;
  return false;
}

// Empty: it can be a page.
std::wstring faultOf(const PdfPage& sheet) {
  const auto fits = [](double mm) { return mm >= kShortestEdge && mm <= kLongestEdge; };
  if (fits(sheet.picture.width) && fits(sheet.picture.height)) return {};
  return text::format(L"%s measures %.1f by %.1f mm, and a page has edges of %.0f to %.0f mm", sheet.name,
                      sheet.picture.width, sheet.picture.height, kShortestEdge, kLongestEdge);
}

void addPage(HPDF_Doc pdf, const PdfPage& sheet, const Face& face, const PdfForm& form, Layers& layers) {
  HPDF_Page page = HPDF_AddPage(pdf);
  if (!page) return;  // the document tells why
  HPDF_Page_SetWidth(page, points(sheet.picture.width));
  HPDF_Page_SetHeight(page, points(sheet.picture.height));
  PagePainter painter(page, face, form);
  if (form.layers == ProPDFlayers::none) {
    painter.draw(sheet.picture, nullptr);
  } else {
    for (int i = 0; i < kSheetParts; ++i) {
      const auto part = static_cast<SheetPart>(i);
      if (form.layers == ProPDFlayers::visible && !hasPart(sheet.picture, part)) continue;
      layers.enter(page, part);
      painter.draw(sheet.picture, &part);
      Layers::leave(page);
    }
  }
  if (!form.bookmarks) return;
  HPDF_Outline mark = HPDF_CreateOutline(pdf, nullptr, text::toUtf8(sheet.name).c_str(), HPDF_GetEncoder(pdf, kUtf8));
  if (mark) HPDF_Outline_SetDestination(mark, HPDF_Page_CreateDestination(page));
}

void describe(HPDF_Doc pdf, const PdfForm& form) {
  HPDF_SetCurrentEncoder(pdf, kUtf8);
  const std::pair<HPDF_InfoType, const std::wstring*> texts[] = {
      {HPDF_INFO_TITLE, &form.title}, {HPDF_INFO_AUTHOR, &form.author}, {HPDF_INFO_SUBJECT, &form.subject}};
  for (const auto& [kind, value] : texts)
    if (!value->empty()) HPDF_SetInfoAttr(pdf, kind, text::toUtf8(*value).c_str());
  const std::int64_t now = os::clock().seconds();
  const auto field = [now](const char* pattern) { return text::parseInt(os::localTime(now, pattern)); };
  HPDF_Date date = {};
  date.year = field("%Y");
  date.month = field("%m");
  date.day = field("%d");
  date.hour = field("%H");
  date.minutes = field("%M");
  date.seconds = field("%S");
  date.ind = ' ';
  HPDF_SetInfoDateAttr(pdf, HPDF_INFO_CREATION_DATE, date);
}

std::wstring faultOf(HPDF_Doc pdf) {
  return text::format(L"the PDF library refuses, code 0x%04X", static_cast<long long>(HPDF_GetError(pdf)));
}

std::string bytesOf(HPDF_Doc pdf) {
  if (HPDF_SaveToStream(pdf) != HPDF_OK) return {};
  std::string bytes(HPDF_GetStreamSize(pdf), '\0');
  HPDF_ResetStream(pdf);
  std::size_t read = 0;
  while (read < bytes.size()) {
    auto piece = static_cast<HPDF_UINT32>(bytes.size() - read);
    const HPDF_STATUS status = HPDF_ReadFromStream(pdf, reinterpret_cast<HPDF_BYTE*>(bytes.data() + read), &piece);
    read += piece;
    if (status != HPDF_OK || piece == 0) break;
  }
  bytes.resize(read);
  return bytes;
}

}  // namespace

PdfMade sheetPdf(std::span<const PdfPage> pages, const PdfForm& form) {
  for (const PdfPage& page : pages)
    if (const std::wstring fault = faultOf(page); !fault.empty()) return {{}, fault};
  const PdfPtr document(HPDF_New(nullptr, nullptr));
  if (!document) return {{}, L"no memory for the PDF library"};
  HPDF_UseUTFEncodings(document.get());
  const Face face = faceFor(document.get(), form);
  if (!face.font) return {{}, face.fault};
  describe(document.get(), form);
  Layers layers(document.get());
  for (const PdfPage& page : pages) addPage(document.get(), page, face, form, layers);
  if (form.layers != ProPDFlayers::none) layers.finish();
  if (face.isUnicode) pdf::keepUsed(face.font);
  if (HPDF_GetError(document.get()) != HPDF_OK) return {{}, faultOf(document.get())};
  const std::string bytes = bytesOf(document.get());
  if (bytes.empty()) return {{}, faultOf(document.get())};
  auto whole = pdf::finished(bytes, face.file);
  return {std::move(whole.value), whole.fault.what};
}

}  // namespace headless

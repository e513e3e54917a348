#include "reports/sheet/document.h"

#include <hpdf.h>

#include <algorithm>
#include <utility>

#include "core/log.h"
#include "os/clock.h"
#include "os/surroundings.h"
#include "pdf/face.h"
#include "pdf/finish.h"
#include "pdf/font_file.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/numbers.h"

namespace reports::sheet {
namespace {

constexpr const char* kEncoding = "UTF-8";
constexpr double kTextLineWidth = 1, kThousand = 1000;
constexpr std::size_t kBasicPlane = 0x10000;

// The library calls it from C, which no exception may cross.
void tellFault(HPDF_STATUS status, HPDF_STATUS detail, void*) noexcept {
  try {
    core::logWrite(text::format(L"Status: %04X : %d", status, detail), core::kError);
  } catch (...) {
    return;  // there is no memory for the line either
  }
}

HPDF_Doc docOf(void* document) { return static_cast<HPDF_Doc>(document); }
HPDF_Page pageOf(void* page) { return static_cast<HPDF_Page>(page); }
HPDF_Font fontOf(void* font) { return static_cast<HPDF_Font>(font); }
HPDF_REAL real(double value) { return static_cast<HPDF_REAL>(value); }

HPDF_Date dateOf(std::int64_t seconds) {
  const auto field = [&](const char* pattern) { return text::parseInt(os::localTime(seconds, pattern)); };
  // The blank: the time zone isn't told.
  return {field("%Y"), field("%m"), field("%d"), field("%H"), field("%M"), field("%S"), ' ', 0, 0};
}

}  // namespace

Document::Document() : document_(HPDF_New(&tellFault, nullptr)), advances_(kBasicPlane, std::int16_t{-1}) {}

Document::~Document() {
  if (document_) HPDF_Free(docOf(document_));
}

::text::Fault Document::useFont(const std::wstring& path) {
  auto file = os::files().read(path);
  if (!file) return os::faultOf(file.error);
  if (auto fault = pdf::fontFault(file.value)) return fault;
  HPDF_Doc doc = docOf(document_);
  HPDF_UseUTFEncodings(doc);
  HPDF_SetCurrentEncoder(doc, kEncoding);
  font_ = pdf::unicodeFont(doc, file.value);
  if (!font_) return {L"it can't be used"};
  fontFile_ = std::move(file.value);
  addPage();
  if (!page_) return {L"there is no page"};
  return {};
}

void Document::describe(const Properties& properties) {
  HPDF_Doc doc = docOf(document_);
  const std::pair<HPDF_InfoType, const std::wstring&> texts[] = {{HPDF_INFO_TITLE, properties.title},
                                                                 {HPDF_INFO_SUBJECT, properties.subject},
                                                                 {HPDF_INFO_AUTHOR, properties.author}};
  for (const auto& [type, value] : texts)
    if (!value.empty()) HPDF_SetInfoAttr(doc, type, text::toUtf8(value).c_str());
  HPDF_SetInfoDateAttr(doc, HPDF_INFO_CREATION_DATE, dateOf(properties.created));
  goOn();
}

void Document::addPage() {
  HPDF_Page page = HPDF_AddPage(docOf(document_));
  goOn();
  if (!page) return;  // the last one goes on, as told
  page_ = page;
  pages_.push_back(page);
  width_ = HPDF_Page_GetWidth(page);
  height_ = HPDF_Page_GetHeight(page);
  HPDF_Page_SetLineWidth(page, real(kTextLineWidth));
}

void Document::setColor(Color color) {
  HPDF_Page_SetRGBFill(pageOf(page_), color.red, color.green, color.blue);
  goOn();
}

Color Document::color() const {
  const HPDF_RGBColor fill = HPDF_Page_GetRGBFill(pageOf(page_));
  return {fill.r, fill.g, fill.b};
}

double Document::advance(wchar_t character, double size) {
  std::int16_t& known = advances_[static_cast<std::size_t>(character) % kBasicPlane];
  if (known < 0) {
    const HPDF_INT width = HPDF_Font_GetUnicodeWidth(fontOf(font_), static_cast<HPDF_UNICODE>(character));
    known = static_cast<std::int16_t>(std::clamp(width, 0, 0x7FFF));
  }
  return known * size / kThousand;
}

void Document::text(std::wstring_view printable, double size, double x, double y) {
  HPDF_Page page = pageOf(page_);
  HPDF_Page_SetLineWidth(page, real(kTextLineWidth));
  HPDF_Page_SetFontAndSize(page, fontOf(font_), real(size));
  HPDF_Page_BeginText(page);
  HPDF_Page_TextOut(page, real(x), real(y), text::toUtf8(printable).c_str());
  HPDF_Page_EndText(page);
  goOn();
}

void Document::rule(double fromX, double toX, double y, double width) {
  HPDF_Page page = pageOf(page_);
  HPDF_Page_SetLineWidth(page, real(width));
  HPDF_Page_MoveTo(page, real(fromX), real(y));
  HPDF_Page_LineTo(page, real(toX), real(y));
  HPDF_Page_Stroke(page);
  goOn();
}

bool Document::picture(std::string_view jpeg, double x, double y, double width, double height) {
  // The library's own type of a byte.
  const auto* bytes = reinterpret_cast<const HPDF_BYTE*>(jpeg.data());
  HPDF_Image image = HPDF_LoadJpegImageFromMem(docOf(document_), bytes, static_cast<HPDF_UINT>(jpeg.size()));
  if (image) HPDF_Page_DrawImage(pageOf(page_), image, real(x), real(y), real(width), real(height));
  goOn();
  return image != nullptr;
}

std::string Document::bytes() {
  HPDF_Doc doc = docOf(document_);
  pdf::keepUsed(fontOf(font_));
  if (HPDF_SaveToStream(doc) != HPDF_OK) {
    goOn();
    return {};
  }
  HPDF_ResetStream(doc);
  std::string all(HPDF_GetStreamSize(doc), '\0');
  auto length = static_cast<HPDF_UINT32>(all.size());
  HPDF_ReadFromStream(doc, reinterpret_cast<HPDF_BYTE*>(all.data()), &length);
  all.resize(length);
  goOn();
  auto whole = pdf::finished(all, fontFile_);
  if (whole.fault) core::logWrite(text::format(L"The PDF file can't be finished: %s", whole.fault.what), core::kError);
  return std::move(whole.value);
}

void Document::goOn() {
  if (HPDF_GetError(docOf(document_)) != HPDF_OK) HPDF_ResetError(docOf(document_));
}

}  // namespace reports::sheet

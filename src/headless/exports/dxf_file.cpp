#include "headless/exports/dxf_file.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "text/code_points.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/numbers.h"

namespace headless {
namespace {

constexpr double kMmAnInch = 25.4;
constexpr double kGap = 10;       // between sheets, in mm
constexpr double kThinPen = 0.2;  // lines up to it have no width of their own, in mm
// Faces of readers are about a quarter wider than what the pictures reckon with.
constexpr double kFaceWidth = 0.8;
constexpr double kOblique = 15;   // degrees
constexpr int kBlackOrWhite = 7;  // as the reader's background asks for
constexpr int kFirstHue = 10, kHues = 24;

// The format's colours: hues 15 degrees apart in five brightnesses each.
int colorNumber(SheetColor color) {
  if (color == 0) return kBlackOrWhite;
  constexpr double kBrightness[] = {255, 165, 127, 76, 38};
  constexpr int kGreys[][2] = {{250, 51}, {251, 91}, {8, 128}, {252, 132}, {253, 173}, {9, 192}, {254, 214}};
  const double red = (color >> 16) & 255, green = (color >> 8) & 255, blue = color & 255;
  int best = kBlackOrWhite;
  double least = std::numeric_limits<double>::max();
  const auto take = [&](int number, double r, double g, double b) {
    const double away = (r - red) * (r - red) + (g - green) * (g - green) + (b - blue) * (b - blue);
    if (away >= least) return;
    least = away;
    best = number;
  };
  for (const auto& [number, level] : kGreys) take(number, level, level, level);
  for (int hue = 0; hue < kHues; ++hue) {
    const auto part = [&](double shift) {
      const double place = std::fmod(hue / 4.0 + shift, 6);  // sixths of the circle
      return std::clamp(std::fabs(place - 3) - 1, 0.0, 1.0);
    };
    const double r = part(0), g = part(4), b = part(2);
    for (int i = 0; i < 5; ++i)
      take(kFirstHue + 10 * hue + 2 * i, r * kBrightness[i], g * kBrightness[i], b * kBrightness[i]);
  }
  return best;
}

std::string escape(char32_t unit) { return text::toUtf8(text::format(L"\\U+%04X", static_cast<long long>(unit))); }

// What the format reads as a code of its own is written by number: "%%", a caret, "\U+".
std::string written(std::wstring_view text) {
  std::string out;
  for (std::size_t i = 0; i < text.size();) {
    const text::CodePoint point = text::codePointAt(text, i);
    const bool isDouble =
        point.code == U'%' && (text.substr(i + 1).starts_with(L'%') || (i > 0 && text[i - 1] == L'%'));
    const bool isCode = point.code == U'\\' && text.substr(i + 1).starts_with(L"U+");
    if (point.code > 0xFFFF)
      out += escape(0xD800 + ((point.code - 0x10000) >> 10)) + escape(0xDC00 + ((point.code - 0x10000) & 0x3FF));
    else if (point.code >= 0x7F || isDouble || isCode || point.code == U'^')
      out += escape(point.code);
    else
      out += point.code < U' ' ? ' ' : static_cast<char>(point.code);
    i += point.length;
  }
  return out;
}

class DxfWriter {
 public:
  explicit DxfWriter(std::span<const SheetPicture> sheets)
      : sheets_(sheets), unit_(sheets.empty() || sheets.front().isInMm ? 1 : 1 / kMmAnInch) {}

  std::string file() {
    double left = 0;
    for (const SheetPicture& sheet : sheets_) {
      left_ = left;
      for (const SheetLine& line : sheet.lines) draw(line);
      for (const SheetText& text : sheet.texts) draw(text);
      reach(0, 0);
      reach(sheet.width, sheet.height);
      left += sheet.width + kGap;
    }
    std::string entities = std::move(out_);
    out_ = {};
    header();
    tables();
    section("BLOCKS");
    pair(0, "ENDSEC");
    section("ENTITIES");
    out_ += entities;
    pair(0, "ENDSEC");
    pair(0, "EOF");
    return std::move(out_);
  }

 private:
  void pair(int code, std::string_view value) {
    out_ += std::to_string(code);
    out_ += '\n';
    out_ += value;
    out_ += '\n';
  }
  // Six decimals; what isn't finite is 0.
  void number(int code, double value) {
    const double rounded = std::isfinite(value) ? std::round(value * 1e6) / 1e6 : 0;
    std::string digits = text::toUtf8(text::shortest(rounded == 0 ? 0.0 : rounded));
    if (digits.find_first_of(".e") == digits.npos) digits += ".0";
    pair(code, digits);
  }
  void point(int code, double x, double y) {
    number(code, x);
    number(code + 10, y);
  }
  void section(std::string_view name) {
    pair(0, "SECTION");
    pair(2, name);
  }
  // mm of the sheet in the file's coordinates.
  [[nodiscard]] double x(double mm) const { return (left_ + mm) * unit_; }
  [[nodiscard]] double y(double mm) const { return mm * unit_; }
  void reach(double atX, double atY) {
    if (!std::isfinite(atX) || !std::isfinite(atY)) return;
    lowX_ = std::min(lowX_, x(atX));
    lowY_ = std::min(lowY_, y(atY));
    highX_ = std::max(highX_, x(atX));
    highY_ = std::max(highY_, y(atY));
  }

  void header() {
    section("HEADER");
    pair(9, "$ACADVER");
    pair(1, "AC1009");
    pair(9, "$INSBASE");
    point(10, 0, 0);
    pair(9, "$EXTMIN");
    point(10, lowX_, lowY_);
    pair(9, "$EXTMAX");
    point(10, highX_, highY_);
    pair(9, "$LIMMIN");
    point(10, lowX_, lowY_);
    pair(9, "$LIMMAX");
    point(10, highX_, highY_);
    pair(0, "ENDSEC");
  }
  void table(std::string_view name, int entries) {
    pair(0, "TABLE");
    pair(2, name);
    pair(70, std::to_string(entries));
  }
  void layer(std::string_view name) {
    pair(0, "LAYER");
    pair(2, name);
    pair(70, "0");
    pair(62, std::to_string(kBlackOrWhite));
    pair(6, "CONTINUOUS");
  }
  void tables() {
    section("TABLES");
    table("LTYPE", 1);
    pair(0, "LTYPE");
    pair(2, "CONTINUOUS");
    pair(70, "0");
    pair(3, "Solid line");
    pair(72, "65");
    pair(73, "0");
    number(40, 0);
    pair(0, "ENDTAB");
    table("LAYER", kSheetParts + 1);
    layer("0");
    for (int part = 0; part < kSheetParts; ++part) layer(partName(static_cast<SheetPart>(part)));
    pair(0, "ENDTAB");
    table("STYLE", 1);
    pair(0, "STYLE");
    pair(2, "STANDARD");
    pair(70, "0");
    number(40, 0);
    number(41, 1);
    number(50, 0);
    pair(71, "0");
    number(42, 1);
    pair(3, "arial.ttf");
    pair(4, "");
    pair(0, "ENDTAB");
    pair(0, "ENDSEC");
  }

  void begin(std::string_view kind, SheetPart part, SheetColor color) {
    if (color != color_) {
      color_ = color;
      number_ = colorNumber(color);
    }
    pair(0, kind);
    pair(8, partName(part));
    pair(62, std::to_string(number_));
  }
  void draw(const SheetLine& line) {
    reach(line.x1, line.y1);
    reach(line.x2, line.y2);
    if (line.width > kThinPen) return drawThick(line);
    begin("LINE", line.part, line.color);
    point(10, x(line.x1), y(line.y1));
    point(11, x(line.x2), y(line.y2));
  }
  // A line has no width, a polyline has.
  void drawThick(const SheetLine& line) {
    begin("POLYLINE", line.part, line.color);
    pair(66, "1");
    point(10, 0, 0);
    number(40, line.width * unit_);
    number(41, line.width * unit_);
    for (const auto& [atX, atY] : {std::pair(line.x1, line.y1), std::pair(line.x2, line.y2)}) {
      pair(0, "VERTEX");
      pair(8, partName(line.part));
      point(10, x(atX), y(atY));
    }
    pair(0, "SEQEND");
    pair(8, partName(line.part));
  }
  void draw(const SheetText& text) {
    if (text.text.empty() || !(text.height > 0)) return;
    reach(text.x, text.y);
    begin("TEXT", text.part, text.color);
    point(10, x(text.x), y(text.y));
    number(40, text.height * unit_);
    pair(1, written(text.text));
    if (text.angle != 0) number(50, text.angle);
    number(41, kFaceWidth);
    if (text.isOblique) number(51, kOblique);
    pair(7, "STANDARD");
  }

  std::span<const SheetPicture> sheets_;
  double unit_;
  double left_ = 0;
  double lowX_ = 0, lowY_ = 0, highX_ = 0, highY_ = 0;
  SheetColor color_ = 0;
  int number_ = kBlackOrWhite;
  std::string out_;
};

}  // namespace

std::string dxfOf(std::span<const SheetPicture> sheets) { return DxfWriter(sheets).file(); }

}  // namespace headless

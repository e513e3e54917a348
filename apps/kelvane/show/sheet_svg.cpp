#include "kelvane/show/sheet_svg.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string_view>

#include "kelvane/base/xml_text.h"
#include "kelvane/show/svg.h"
#include "text/encoding.h"

namespace kelvane {
namespace {

constexpr double kGap = 10;  // between sheets, and around them, in mm
constexpr double kMmAnInch = 25.4;
constexpr double kFrame = 0.18;  // width of a sheet's border, in mm

// "#0050a0", "#000" where three digits say it.
std::string colorText(headless::SheetColor color) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  if (color == 0) return "#000";
  std::string text = "#";
  for (int shift = 20; shift >= 0; shift -= 4) text += kDigits[(color >> shift) & 15];
  return text;
}

std::string styleOf(const headless::SheetText& text) {
  std::string style;
  if (text.color != 0) style += "fill=\"" + colorText(text.color) + "\" ";
  if (text.isOblique) style += "font-style=\"oblique\" ";
  if (text.isBold) style += "font-weight=\"bold\" ";
  if (!text.font.empty()) style += "font-family=\"" + escaped(text.font) + "\" ";
  if (!style.empty()) style.pop_back();
  return style;
}

// Draws the strokes of a sheet.
class StrokeWriter {
 public:
  // left, bottom: of the sheet on the picture; unit: how long a millimetre is there.
  StrokeWriter(Svg& svg, double left, double bottom, double unit)
      : svg_(svg), left_(left), bottom_(bottom), unit_(unit) {}
  void draw(const headless::SheetStroke& stroke) {
    if (!headless::isFinite(stroke)) return;
    width_ = stroke.pen.width * unit_;
    color_ = colorText(stroke.pen.color);
    isFilled_ = stroke.pen.isFilled;
    dashes_.clear();
    for (const double length : headless::dashesOf(stroke.pen.kind))
      dashes_ += (dashes_.empty() ? "stroke-dasharray=\"" : " ") + svgNumber(length * unit_);
    if (!dashes_.empty()) dashes_ += '"';
    std::visit([this](const auto& curve) { put(curve); }, stroke.curve);
  }

 private:
  [[nodiscard]] double x(double mm) const { return left_ + mm * unit_; }
  [[nodiscard]] double y(double mm) const { return bottom_ - mm * unit_; }
  [[nodiscard]] std::string place(const headless::geometry::FlatPoint& p) const {
    return svgNumber(x(p.x)) + " " + svgNumber(y(p.y));
  }
  void put(const headless::geometry::FlatLine& line) {
    svg_.line(x(line.from.x), y(line.from.y), x(line.to.x), y(line.to.y), width_, color_, dashes_);
  }
  void put(const headless::geometry::FlatPath& path) {
    std::string data;
    for (const auto& point : path.points) data += (data.empty() ? "M" : "L") + place(point);
    if (isFilled_) return svg_.area(data + "Z", color_);
    svg_.path(data, width_, color_, dashes_);
  }
  // A whole ellipse is two arcs, as one would begin where it ends.
  void put(const headless::geometry::FlatArc& arc) {
    using headless::geometry::lengthOf;
    const double longer = lengthOf(arc.u) * unit_, shorter = lengthOf(arc.v) * unit_;
    const bool isWhole = headless::geometry::isWhole(arc);
    if (isWhole && headless::geometry::isCircle(arc))
      return svg_.circle(x(arc.centre.x), y(arc.centre.y), longer, width_, color_, dashes_);
    const double middle = (arc.from + arc.to) / 2;
    std::string data = "M" + place(headless::geometry::pointAt(arc, arc.from));
    const auto to = [&](double t, bool isLarge) {
      data += "A" + svgNumber(longer) + " " + svgNumber(shorter) + " " +
              svgNumber(-std::atan2(arc.u.y, arc.u.x) * 180 / std::numbers::pi) + (isLarge ? " 1 0 " : " 0 0 ") +
              place(headless::geometry::pointAt(arc, t));
    };
    if (isWhole) to(middle, false);
    to(arc.to, !isWhole && arc.to - arc.from > std::numbers::pi);
    svg_.path(data, width_, color_, dashes_);
  }

  Svg& svg_;
  double left_, bottom_, unit_;
  double width_ = 0;
  bool isFilled_ = false;
  std::string color_, dashes_;
};

// bottom: of the sheet on the picture; unit: how long a millimetre is there.
void draw(Svg& svg, const headless::SheetPicture& sheet, double left, double bottom, double unit) {
  const auto x = [&](double mm) { return left + mm * unit; };
  const auto y = [&](double mm) { return bottom - mm * unit; };
  svg.rectangle(left, y(sheet.height), sheet.width * unit, sheet.height * unit,
                "fill=\"#fff\" stroke=\"#888\" stroke-width=\"" + svgNumber(kFrame * unit) + "\"");
  StrokeWriter strokes(svg, left, bottom, unit);
  for (const headless::SheetStroke& stroke : sheet.strokes) strokes.draw(stroke);
  for (const headless::SheetText& text : sheet.texts)
    svg.text(x(text.x), y(text.y), text.height * unit, text::toUtf8(text.text), styleOf(text), text.angle);
}

}  // namespace

std::string sheetSvg(std::span<const headless::SheetPicture> sheets) {
  const bool isMm = sheets.front().isInMm;
  const double unit = isMm ? 1 : 1 / kMmAnInch, gap = kGap * unit;
  double width = 0, height = gap;
  for (const headless::SheetPicture& picture : sheets) {
    width = std::max(width, picture.width * unit);
    height += picture.height * unit + gap;
  }
  Svg svg(width + 2 * gap, height, isMm ? "mm" : "in");
  svg.rectangle(0, 0, width + 2 * gap, height, "fill=\"#ddd\"");
  double top = gap;
  for (const headless::SheetPicture& entry : sheets) {
    const double bottom = top + entry.height * unit;
    draw(svg, entry, gap, bottom, unit);
    top = bottom + gap;
  }
  return svg.finished();
}

}  // namespace kelvane

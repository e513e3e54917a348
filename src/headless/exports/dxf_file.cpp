#include "headless/exports/dxf_file.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <utility>
#include <vector>

#include "headless/exports/dxf_frame.h"
#include "text/code_points.h"
#include "text/encoding.h"
#include "text/format.h"

namespace headless {
namespace {

constexpr double kMmAnInch = 25.4;
constexpr double kGap = 10;       // between sheets, in mm
constexpr double kThinPen = 0.2;  // strokes up to it are lines of a pen, in mm; thicker ones have their width
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

// What the format reads as a code of its own is written as the code for it: of "%%" and "\U+" the number of the letter,
// a caret with a blank behind it.
std::string written(std::wstring_view text) {
  std::string out;
  for (std::size_t i = 0; i < text.size();) {
    const text::CodePoint point = text::codePointAt(text, i);
    const bool isDouble =
        point.code == U'%' && (text.substr(i + 1).starts_with(L'%') || (i > 0 && text[i - 1] == L'%'));
    const bool isCode = point.code == U'\\' && text.substr(i + 1).starts_with(L"U+");
    if (isDouble || isCode)
      out += text::toUtf8(text::format(L"%%%%%03d", static_cast<int>(point.code)));
    else if (point.code == U'^')
      out += "^ ";
    else if (point.code < U' ' || point.code == 0x7F)
      out += ' ';
    else
      out += text::toUtf8(text.substr(i, point.length));
    i += point.length;
  }
  return out;
}

class DxfWriter {
 public:
  explicit DxfWriter(std::span<const SheetPicture> sheets)
      : sheets_(sheets), unit_(sheets.empty() || sheets.front().isInMm ? 1 : 1 / kMmAnInch) {
    extent_.unit = unit_;
  }

  std::string file() {
    double left = 0;
    for (const SheetPicture& sheet : sheets_) {
      left_ = left;
      for (const SheetHatch& hatch : sheet.hatches) draw(hatch);
      for (const SheetDimension& dimension : sheet.dimensions) draw(sheet, dimension);
      // The lines of whole areas are those of their hatching, those of dimensions stand in blocks.
      const auto strokes =
          ofDimensions(sheet, sheet.strokes.size(), &SheetDimension::firstStroke, &SheetDimension::strokes);
      for (std::size_t i = 0; i < sheet.strokes.size(); ++i)
        if (!sheet.strokes[i].pen.isOfArea && !strokes[i]) draw(sheet.strokes[i]);
      const auto texts = ofDimensions(sheet, sheet.texts.size(), &SheetDimension::firstText, &SheetDimension::texts);
      for (std::size_t i = 0; i < sheet.texts.size(); ++i)
        if (!texts[i]) draw(sheet.texts[i]);
      reach(0, 0);
      reach(sheet.width, sheet.height);
      left += sheet.width + kGap;
    }
    DxfText file;
    addDxfHead(file, extent_, parts_, handle_);
    file.section("ENTITIES");
    file.add(out_);
    file.pair(0, "ENDSEC");
    addDxfEnd(file);
    return file.taken();
  }

 private:
  using Place = std::size_t SheetDimension::*;
  // Of `all` strokes or texts, which ones are those of dimensions.
  static std::vector<bool> ofDimensions(const SheetPicture& sheet, std::size_t all, Place first, Place count) {
    std::vector<bool> are(all);
    for (const SheetDimension& dimension : sheet.dimensions)
      for (std::size_t i = 0; i < dimension.*count; ++i) are[dimension.*first + i] = true;
    return are;
  }
  // mm of the sheet in the file's coordinates.
  [[nodiscard]] double x(double mm) const { return (left_ + mm) * unit_; }
  [[nodiscard]] double y(double mm) const { return mm * unit_; }
  void point(int code, const geometry::FlatPoint& p) { out_.point(code, x(p.x), y(p.y)); }
  void reach(double atX, double atY) {
    if (!std::isfinite(atX) || !std::isfinite(atY)) return;
    extent_.left = std::min(extent_.left, x(atX));
    extent_.low = std::min(extent_.low, y(atY));
    extent_.right = std::max(extent_.right, x(atX));
    extent_.high = std::max(extent_.high, y(atY));
  }

  void begin(std::string_view kind, std::string_view layer, SheetColor color) {
    if (color != color_) {
      color_ = color;
      number_ = colorNumber(color);
    }
    out_.pair(0, kind);
    out_.handle(5, handle_++);
    out_.handle(330, owner_);
    out_.pair(100, "AcDbEntity");
    out_.pair(8, layer);
    out_.whole(62, number_);
  }
  // Lines of the layer of visible edges that are drawn with the narrow pen say so; all others have their layer's.
  void begin(std::string_view kind, const SheetPen& pen) {
    const std::string_view layer = dxfLayer(pen);
    begin(kind, layer, pen.color);
    if (layer == dxfLayer({.part = SheetPart::views}) && pen.kind != LineKind::visible)
      out_.whole(370, static_cast<int>(std::lround(pen.width * 100)));
  }

  void draw(const SheetStroke& stroke) {
    if (!isFinite(stroke)) return;
    geometry::FlatBox box;
    box.take(stroke.curve);
    reach(box.left, box.low);
    reach(box.right, box.high);
    pen_ = stroke.pen;
    std::visit([this](const auto& curve) { put(curve); }, stroke.curve);
  }
  // Pens have no width that a reader must keep to; the modules of codes have one.
  [[nodiscard]] bool isPen() const {
    return pen_.part == SheetPart::views || pen_.width <= kThinPen || pen_.width == kNarrowPen;
  }
  void put(const geometry::FlatLine& line) {
    if (!isPen()) return put(geometry::FlatPath{{line.from, line.to}});
    begin("LINE", pen_);
    out_.pair(100, "AcDbLine");
    point(10, line.from);
    point(11, line.to);
  }
  void put(const geometry::FlatPath& path) {
    if (pen_.isFilled && path.points.size() >= 3) return area(path);
    constexpr int kDashesGoOn = 128;  // over its corners
    begin("LWPOLYLINE", pen_);
    out_.pair(100, "AcDbPolyline");
    out_.whole(90, static_cast<int>(path.points.size()));
    out_.whole(70, kDashesGoOn);
    out_.number(43, isPen() ? 0 : pen_.width * unit_);
    for (const geometry::FlatPoint& p : path.points) point(10, p);
  }
  void put(const geometry::FlatArc& arc) {
    if (!geometry::isCircle(arc)) return ellipse(arc);
    const bool isWhole = geometry::isWhole(arc);
    begin(isWhole ? "CIRCLE" : "ARC", pen_);
    out_.pair(100, "AcDbCircle");
    point(10, arc.centre);
    out_.number(40, geometry::lengthOf(arc.u) * unit_);
    if (isWhole) return;
    const double turn = std::atan2(arc.u.y, arc.u.x);
    out_.pair(100, "AcDbArc");
    for (const auto& [code, t] : {std::pair(50, arc.from), {51, arc.to}}) {
      const double degrees = std::fmod((t + turn) * 180 / std::numbers::pi, 360);
      out_.number(code, degrees < 0 ? degrees + 360 : degrees);
    }
  }
  // An arrow: of its three corners the last stands for the fourth, too.
  void area(const geometry::FlatPath& path) {
    begin("SOLID", pen_);
    out_.pair(100, "AcDbTrace");
    for (int i = 0; i < 4; ++i) point(10 + i, path.points[static_cast<std::size_t>(std::min(i, 2))]);
  }
  void ellipse(const geometry::FlatArc& arc) {
    begin("ELLIPSE", pen_);
    out_.pair(100, "AcDbEllipse");
    point(10, arc.centre);
    out_.number(30, 0);
    out_.point(11, arc.u.x * unit_, arc.u.y * unit_);
    out_.number(31, 0);
    out_.number(40, geometry::lengthOf(arc.v) / geometry::lengthOf(arc.u));
    out_.number(41, arc.from);
    out_.number(42, arc.to);
  }
  // A boundary for each loop, of straight and bent ways, and the hatching's lines in the sheet's own lengths.
  void draw(const SheetHatch& hatch) {
    constexpr int kOutline = 1 + 2, kInner = 2, kOddEven = 0, kOwnPattern = 0;  // 2: a polyline
    begin("HATCH", hatch.pen);
    out_.pair(100, "AcDbHatch");
    out_.point(10, 0, 0);
    out_.number(30, 0);
    out_.number(210, 0);
    out_.number(220, 0);
    out_.number(230, 1);
    out_.pair(2, "_USER");
    out_.whole(70, 0);
    out_.whole(71, 0);
    out_.whole(91, static_cast<int>(hatch.loops.size()));
    for (std::size_t i = 0; i < hatch.loops.size(); ++i) boundary(hatch.loops[i], i == 0 ? kOutline : kInner);
    out_.whole(75, kOddEven);
    out_.whole(76, kOwnPattern);
    out_.number(52, 0);
    out_.number(41, 1);
    out_.whole(77, 0);
    out_.whole(78, static_cast<int>(hatch.lines.size()));
    for (const geometry::HatchLines& lines : hatch.lines) family(lines);
    out_.whole(98, 0);
  }
  void boundary(const geometry::FlatLoop& loop, int kind) {
    const std::vector<geometry::BentCorner> corners = geometry::cornersOf(loop);
    out_.whole(92, kind);
    out_.whole(72, 1);
    out_.whole(73, 1);
    out_.whole(93, static_cast<int>(corners.size()));
    for (const geometry::BentCorner& corner : corners) {
      point(10, corner.at);
      out_.number(42, corner.bend);
    }
    out_.whole(97, 0);
  }
  // The lines go through the sheet's corner, which may stand right of the file's origin.
  void family(const geometry::HatchLines& lines) {
    const double turn = lines.angle * std::numbers::pi / 180, c = std::cos(turn), s = std::sin(turn);
    out_.number(53, lines.angle);
    out_.number(43, x(-s * lines.shift));
    out_.number(44, y(c * lines.shift));
    out_.number(45, -s * lines.spacing * unit_);
    out_.number(46, c * lines.spacing * unit_);
    out_.whole(79, 0);
  }
  void draw(const SheetText& text) {
    if (text.text.empty() || !(text.height > 0)) return;
    reach(text.x, text.y);
    begin("TEXT", dxfTextLayer(text.part), text.color);
    out_.pair(100, "AcDbText");
    point(10, {text.x, text.y});
    out_.number(40, text.height * unit_);
    out_.pair(1, written(text.text));
    if (text.angle != 0) out_.number(50, text.angle);
    out_.number(41, kFaceWidth);
    if (text.isOblique) out_.number(51, kOblique);
    out_.pair(7, "STANDARD");
    out_.pair(100, "AcDbText");
  }

  // ---- dimensions: a block with what is drawn of each, and what it measures

  std::size_t styleFor(double scale) {
    const auto number = static_cast<std::size_t>(std::ranges::find(parts_.scales, scale) - parts_.scales.begin());
    if (number == parts_.scales.size()) parts_.scales.push_back(scale);
    return number;
  }
  std::string block(const SheetPicture& sheet, const SheetDimension& dimension) {
    DxfText outside = std::exchange(out_, {});
    DxfBlock made{.name = "*D" + std::to_string(parts_.blocks.size() + 1), .record = handle_, .entities = {}};
    handle_ += 3;
    owner_ = made.record;
    for (std::size_t i = 0; i < dimension.strokes; ++i) draw(sheet.strokes[dimension.firstStroke + i]);
    for (std::size_t i = 0; i < dimension.texts; ++i) draw(sheet.texts[dimension.firstText + i]);
    owner_ = kDxfModelSpace;
    made.entities = std::exchange(out_, std::move(outside));
    parts_.blocks.push_back(std::move(made));
    return parts_.blocks.back().name;
  }
  void draw(const SheetPicture& sheet, const SheetDimension& dimension) {
    constexpr int kOwnBlock = 32;
    // Kinds by their numbers: turned, by three points, of a diameter, of a radius.
    const int kind = dimension.measuring == Measuring::length     ? 0
                     : dimension.measuring == Measuring::angle    ? 5
                     : dimension.measuring == Measuring::diameter ? dimension.isCircle ? 3 : 0
                                                                  : 4;
    const std::string name = block(sheet, dimension);
    const bool isAngle = dimension.measuring == Measuring::angle;
    if (dimension.texts > 0) parts_.textHeight = sheet.texts[dimension.firstText].height * unit_;
    begin("DIMENSION", {.part = SheetPart::dimensions});
    out_.pair(100, "AcDbDimension");
    out_.pair(2, name);
    point(10, kind == 3 || kind == 4 ? dimension.from : dimension.line);
    point(11, isAngle ? dimension.line : dimension.third);
    out_.whole(70, kind | kOwnBlock);
    out_.pair(1, written(dimension.text));
    out_.number(42, isAngle ? dimension.value * std::numbers::pi / 180 : dimension.value);
    out_.pair(3, dxfDimensionStyle(styleFor(isAngle ? 1 : 1 / (dimension.scale * unit_))));
    if (kind == 0) {
      out_.pair(100, "AcDbAlignedDimension");
      point(13, dimension.from);
      point(14, dimension.to);
      out_.number(50, dimension.angle);
      out_.pair(100, "AcDbRotatedDimension");
    } else if (isAngle) {
      out_.pair(100, "AcDb3PointAngularDimension");
      point(13, dimension.from);
      point(14, dimension.to);
      point(15, dimension.third);
    } else {
      out_.pair(100, kind == 3 ? "AcDbDiametricDimension" : "AcDbRadialDimension");
      point(15, dimension.to);
      out_.number(40, 0);
    }
  }

  std::span<const SheetPicture> sheets_;
  double unit_;
  double left_ = 0;
  DxfExtent extent_;
  SheetPen pen_;
  SheetColor color_ = 0;
  int number_ = kBlackOrWhite;
  int handle_ = kDxfFirstEntity, owner_ = kDxfModelSpace;
  DxfParts parts_;
  DxfText out_;
};

}  // namespace

std::string dxfOf(std::span<const SheetPicture> sheets) { return DxfWriter(sheets).file(); }

}  // namespace headless

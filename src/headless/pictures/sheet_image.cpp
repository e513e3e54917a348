#include <cairo-ft.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>
#include <stdexcept>
#include <vector>

#include "headless/pictures/face.h"
#include "headless/pictures/model_picture.h"
#include "headless/pictures/sheet_picture.h"
#include "os/freed.h"
#include "os/surroundings.h"
#include "text/encoding.h"

namespace headless {
namespace {

constexpr double kOblique = 0.2126;  // tangent of 12 degrees

using Surface = std::unique_ptr<cairo_surface_t, os::Freed<cairo_surface_destroy>>;
using Canvas = std::unique_ptr<cairo_t, os::Freed<cairo_destroy>>;

// A face with the memory that it is read from; it must outlive what is drawn with it.
class Face {
 public:
  explicit Face(const std::wstring& path) : read_(std::make_unique<Read>(path)) {}
  ~Face() {
    if (isStuck) static_cast<void>(read_.release());
  }  // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks): kept on purpose
  Face(const Face&) = delete;
  Face& operator=(const Face&) = delete;

  // Throws std::runtime_error where it couldn't be read: a sheet without its texts would pass for whole.
  void use(cairo_t* canvas) const {
    if (!read_->font) throw std::runtime_error("the face of texts: " + read_->fault);
    cairo_set_font_face(canvas, read_->font);
  }
  // Behind a failure the library may hold on to a face, and stops the program where it is to let go: from then on all
  // are kept.
  static void keepAll() { isStuck = true; }

 private:
  struct Read {
    explicit Read(const std::wstring& path) {
      auto read = os::files().read(path);
      if (read.error) {
        fault = path.empty() ? "FreeSans.ttf isn't there" : text::toUtf8(path) + ": " + read.error.message();
        return;
      }
      bytes = std::move(read.value);
      fault = text::toUtf8(path) + " is none";
      const auto* data = reinterpret_cast<const FT_Byte*>(bytes.data());
      if (FT_Init_FreeType(&library)) return;
      if (FT_New_Memory_Face(library, data, static_cast<FT_Long>(bytes.size()), 0, &face)) return;
      font = cairo_ft_font_face_create_for_ft_face(face, 0);
    }
    ~Read() {
      if (font) cairo_font_face_destroy(font);
      cairo_debug_reset_static_data();  // the library keeps scaled faces, which would outlive this one
      if (face) FT_Done_Face(face);
      if (library) FT_Done_FreeType(library);
    }
    Read(const Read&) = delete;
    Read& operator=(const Read&) = delete;

    std::string bytes, fault;
    FT_Library library = nullptr;
    FT_Face face = nullptr;
    cairo_font_face_t* font = nullptr;
  };
  inline static bool isStuck = false;
  std::unique_ptr<Read> read_;
};

// The library counts in fixed numbers: what is far outside of the sheet, or larger than any, isn't for it.
constexpr double kFarthest = 1e5, kLargest = 1e4;  // mm
bool isDrawable(double x, double y, double size) {
  return std::fabs(x) <= kFarthest && std::fabs(y) <= kFarthest && size > 0 && size <= kLargest;
}

void setColor(cairo_t* canvas, SheetColor color) {
  const auto part = [color](int shift) { return static_cast<double>((color >> shift) & 0xFFU) / 255; };
  cairo_set_source_rgb(canvas, part(16), part(8), part(0));
}

void trace(cairo_t* canvas, const geometry::FlatLine& line) {
  cairo_move_to(canvas, line.from.x, line.from.y);
  cairo_line_to(canvas, line.to.x, line.to.y);
}
void trace(cairo_t* canvas, const geometry::FlatArc& arc) {
  const auto pieces = geometry::beziersOf(arc);
  cairo_move_to(canvas, pieces.front()[0].x, pieces.front()[0].y);
  for (const auto& [from, first, second, to] : pieces)
    cairo_curve_to(canvas, first.x, first.y, second.x, second.y, to.x, to.y);
}
void trace(cairo_t* canvas, const geometry::FlatPath& path) {
  for (const geometry::FlatPoint& point : path.points) cairo_line_to(canvas, point.x, point.y);
}

// Strokes are at least as long as a dot of the image, else those of axes are too pale to be seen.
void setDashes(cairo_t* canvas, LineKind kind) {
  double dot = 1, none = 0;
  cairo_device_to_user_distance(canvas, &dot, &none);
  const auto lengths = dashesOf(kind);
  std::vector<double> dashes(lengths.begin(), lengths.end());
  for (std::size_t i = 0; i < dashes.size(); i += 2) dashes[i] = std::max(dashes[i], std::fabs(dot));
  cairo_set_dash(canvas, dashes.data(), static_cast<int>(dashes.size()), 0);
}

void draw(cairo_t* canvas, const SheetStroke& stroke) {
  geometry::FlatBox box;
  if (isFinite(stroke)) box.take(stroke.curve);
  const double width = stroke.pen.width;
  if (box.isEmpty || !isDrawable(box.left, box.low, width) || !isDrawable(box.right, box.high, width)) return;
  setColor(canvas, stroke.pen.color);
  cairo_set_line_width(canvas, width);
  setDashes(canvas, stroke.pen.kind);
  std::visit([canvas](const auto& curve) { trace(canvas, curve); }, stroke.curve);
  if (stroke.pen.isFilled)
    cairo_fill(canvas);
  else
    cairo_stroke(canvas);
}

void draw(cairo_t* canvas, const SheetText& text) {
  if (!isDrawable(text.x, text.y, text.height) || !std::isfinite(text.angle)) return;
  setColor(canvas, text.color);
  cairo_save(canvas);
  cairo_translate(canvas, text.x, text.y);
  cairo_rotate(canvas, text.angle * std::numbers::pi / 180);
  cairo_matrix_t face;  // y grows upwards here, downwards in the face
  cairo_matrix_init(&face, text.height, 0, text.isOblique ? text.height * kOblique : 0, -text.height, 0, 0);
  cairo_set_font_matrix(canvas, &face);
  cairo_move_to(canvas, 0, 0);
  cairo_show_text(canvas, text::toUtf8(text.text).c_str());
  cairo_restore(canvas);
}

Image imageOf(cairo_surface_t* surface, int width, int height) {
  cairo_surface_flush(surface);
  Image image(width, height, {});
  const unsigned char* const data = cairo_image_surface_get_data(surface);
  const auto stride = static_cast<std::size_t>(cairo_image_surface_get_stride(surface));
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) {
      std::uint32_t dot = 0;  // of the machine's own byte order
      std::copy_n(data + static_cast<std::size_t>(y) * stride + static_cast<std::size_t>(x) * sizeof dot, sizeof dot,
                  reinterpret_cast<unsigned char*>(&dot));
      image.at(x, y) = {static_cast<std::uint8_t>(dot >> 16U), static_cast<std::uint8_t>(dot >> 8U),
                        static_cast<std::uint8_t>(dot)};
    }
  return image;
}

}  // namespace

Image sheetImage(const SheetPicture& sheet, const std::wstring& textFolder, int width, int height) {
  const Face face(faceFile(textFolder));
  const Surface surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height));
  const Canvas canvas(cairo_create(surface.get()));
  if (cairo_status(canvas.get()) != CAIRO_STATUS_SUCCESS)
    throw std::runtime_error(cairo_status_to_string(cairo_status(canvas.get())));
  cairo_set_source_rgb(canvas.get(), 1, 1, 1);
  cairo_paint(canvas.get());
  if (sheet.width > 0 && sheet.height > 0) {
    const double scale = std::min(width / sheet.width, height / sheet.height);
    cairo_translate(canvas.get(), (width - scale * sheet.width) / 2, (height + scale * sheet.height) / 2);
    cairo_scale(canvas.get(), scale, -scale);
    for (const SheetStroke& stroke : sheet.strokes) draw(canvas.get(), stroke);
    if (!sheet.texts.empty()) face.use(canvas.get());
    for (const SheetText& text : sheet.texts) draw(canvas.get(), text);
  }
  if (const cairo_status_t status = cairo_status(canvas.get()); status != CAIRO_STATUS_SUCCESS) {
    Face::keepAll();
    throw std::runtime_error(cairo_status_to_string(status));
  }
  return imageOf(surface.get(), width, height);
}

}  // namespace headless

#include <cairo-ft.h>

#include <cmath>
#include <memory>
#include <numbers>
#include <stdexcept>

#include "headless/pictures/face.h"
#include "headless/pictures/model_picture.h"
#include "headless/pictures/sheet_picture.h"
#include "os/surroundings.h"
#include "text/encoding.h"

namespace headless {
namespace {

constexpr double kOblique = 0.2126;  // tangent of 12 degrees

template <auto Free>
struct Freed {
  template <class T>
  void operator()(T* one) const {
    Free(one);
  }
};
using Surface = std::unique_ptr<cairo_surface_t, Freed<cairo_surface_destroy>>;
using Canvas = std::unique_ptr<cairo_t, Freed<cairo_destroy>>;

// A face with the memory that it is read from; it must outlive what is drawn with it.
class Face {
 public:
  explicit Face(const std::wstring& path) {
    const auto bytes = os::files().read(path);
    if (!bytes || FT_Init_FreeType(&library_)) return;
    bytes_ = bytes.value;
    const auto* data = reinterpret_cast<const FT_Byte*>(bytes_.data());
    if (FT_New_Memory_Face(library_, data, static_cast<FT_Long>(bytes_.size()), 0, &face_)) return;
    font_ = cairo_ft_font_face_create_for_ft_face(face_, 0);
  }
  ~Face() {
    if (font_) cairo_font_face_destroy(font_);
    cairo_debug_reset_static_data();  // the library keeps scaled faces, which would outlive this one
    if (face_) FT_Done_Face(face_);
    if (library_) FT_Done_FreeType(library_);
  }
  Face(const Face&) = delete;
  Face& operator=(const Face&) = delete;

  void use(cairo_t* canvas) const {
    if (font_) cairo_set_font_face(canvas, font_);
  }
  [[nodiscard]] bool isThere() const { return font_ != nullptr; }

 private:
  std::string bytes_;
  FT_Library library_ = nullptr;
  FT_Face face_ = nullptr;
  cairo_font_face_t* font_ = nullptr;
};

void setColor(cairo_t* canvas, SheetColor color) {
  const auto part = [color](int shift) { return static_cast<double>((color >> shift) & 0xFFU) / 255; };
  cairo_set_source_rgb(canvas, part(16), part(8), part(0));
}

void draw(cairo_t* canvas, const SheetLine& line) {
  setColor(canvas, line.color);
  cairo_set_line_width(canvas, line.width);
  cairo_move_to(canvas, line.x1, line.y1);
  cairo_line_to(canvas, line.x2, line.y2);
  cairo_stroke(canvas);
}

void draw(cairo_t* canvas, const SheetText& text) {
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
    face.use(canvas.get());
    for (const SheetLine& line : sheet.lines) draw(canvas.get(), line);
    if (face.isThere())
      for (const SheetText& text : sheet.texts) draw(canvas.get(), text);
  }
  return imageOf(surface.get(), width, height);
}

}  // namespace headless

#include "headless/pictures/png.h"

#include <cairo.h>

#include <algorithm>
#include <memory>
#include <stdexcept>

#include "os/freed.h"

namespace headless {
namespace {

using Surface = std::unique_ptr<cairo_surface_t, os::Freed<cairo_surface_destroy>>;

// The library calls it from C, which no exception may cross.
cairo_status_t append(void* bytes, const unsigned char* data, unsigned int length) noexcept {
  try {
    static_cast<std::string*>(bytes)->append(reinterpret_cast<const char*>(data), length);
    return CAIRO_STATUS_SUCCESS;
  } catch (...) {
    return CAIRO_STATUS_NO_MEMORY;
  }
}

void check(cairo_status_t status) {
  if (status != CAIRO_STATUS_SUCCESS) throw std::runtime_error(cairo_status_to_string(status));
}

}  // namespace

std::string pngOf(const Image& image) {
  const Surface surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, image.width, image.height));
  check(cairo_surface_status(surface.get()));
  cairo_surface_flush(surface.get());
  unsigned char* const data = cairo_image_surface_get_data(surface.get());
  const auto stride = static_cast<std::size_t>(cairo_image_surface_get_stride(surface.get()));
  for (int y = 0; y < image.height; ++y)
    for (int x = 0; x < image.width; ++x) {
      const auto& [red, green, blue] = image.at(x, y);
      const std::uint32_t dot =
          std::uint32_t{red} << 16U | std::uint32_t{green} << 8U | blue;  // in the machine's order
      std::copy_n(reinterpret_cast<const unsigned char*>(&dot), sizeof dot,
                  data + static_cast<std::size_t>(y) * stride + static_cast<std::size_t>(x) * sizeof dot);
    }
  cairo_surface_mark_dirty(surface.get());
  std::string bytes;
  check(cairo_surface_write_to_png_stream(surface.get(), append, &bytes));
  return bytes;
}

}  // namespace headless

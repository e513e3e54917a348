// Pictures of dots, and the files that they are written to.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace headless {

using Color = std::array<std::uint8_t, 3>;  // red, green, blue

struct Image {
  int width = 0, height = 0;
  std::vector<Color> dots;  // row by row from the top

  Image() = default;
  Image(int w, int h, Color background)
      : width(w), height(h), dots(static_cast<std::size_t>(w) * static_cast<std::size_t>(h), background) {}
  Color& at(int x, int y) {
    return dots[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)];
  }
  [[nodiscard]] const Color& at(int x, int y) const { return const_cast<Image*>(this)->at(x, y); }
};

// Half the width and height: each dot is the mean of four. Both must be even.
Image halved(const Image& image);

// The bytes of a file, with its dots per inch. Throws std::runtime_error with the library's words.
std::string jpegOf(const Image& image, int dotsPerInch);
std::string tiffOf(const Image& image, int dotsPerInch);

}  // namespace headless

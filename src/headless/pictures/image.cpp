#include "headless/pictures/image.h"

namespace headless {

Image halved(const Image& image) {
  Image half(image.width / 2, image.height / 2, {});
  for (int y = 0; y < half.height; ++y)
    for (int x = 0; x < half.width; ++x) {
      const Color &a = image.at(2 * x, 2 * y), &b = image.at(2 * x + 1, 2 * y);
      const Color &c = image.at(2 * x, 2 * y + 1), &d = image.at(2 * x + 1, 2 * y + 1);
      for (std::size_t i = 0; i < 3; ++i)
        half.at(x, y)[i] = static_cast<std::uint8_t>((a[i] + b[i] + c[i] + d[i] + 2) / 4);
    }
  return half;
}

}  // namespace headless

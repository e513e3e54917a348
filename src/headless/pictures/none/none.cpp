// In place of the libraries that draw sheets and write pictures, where they aren't built in: whoever asks is told so.
#include <stdexcept>

#include "headless/pictures/model_picture.h"
#include "headless/pictures/png.h"

namespace headless {
namespace {

[[noreturn]] void refuse() { throw std::runtime_error("this program was built without pictures"); }

}  // namespace

std::string jpegOf(const Image& /*image*/, int /*dotsPerInch*/) { refuse(); }
std::string tiffOf(const Image& /*image*/, int /*dotsPerInch*/) { refuse(); }
std::string pngOf(const Image& /*image*/) { refuse(); }
Image sheetImage(const SheetPicture& /*sheet*/, const std::wstring& /*textFolder*/, int /*width*/, int /*height*/) {
  refuse();
}

}  // namespace headless

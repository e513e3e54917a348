#include "headless/pictures/image.h"

#include <tiffio.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <utility>
// After <cstdio>, which it needs and doesn't include.
#include <jpeglib.h>

namespace headless {
namespace {

constexpr int kQuality = 92;

// The library reports through a handler that must not return.
[[noreturn]] void jpegFailure(j_common_ptr info) {
  std::array<char, JMSG_LENGTH_MAX> words{};
  info->err->format_message(info, words.data());
  throw std::runtime_error(words.data());
}

// A TIFF file that grows in memory.
struct TiffBytes {
  std::string bytes;
  std::size_t at = 0;
};
TiffBytes& tiffBytes(thandle_t handle) { return *static_cast<TiffBytes*>(handle); }

tmsize_t readTiff(thandle_t handle, void* into, tmsize_t size) {
  TiffBytes& file = tiffBytes(handle);
  if (file.at >= file.bytes.size()) return 0;
  const std::size_t count = std::min(static_cast<std::size_t>(size), file.bytes.size() - file.at);
  std::memcpy(into, file.bytes.data() + file.at, count);
  file.at += count;
  return static_cast<tmsize_t>(count);
}
tmsize_t writeTiff(thandle_t handle, void* from, tmsize_t size) {
  TiffBytes& file = tiffBytes(handle);
  const auto count = static_cast<std::size_t>(size);
  if (file.bytes.size() < file.at + count) file.bytes.resize(file.at + count);
  std::memcpy(file.bytes.data() + file.at, from, count);
  file.at += count;
  return size;
}
toff_t seekTiff(thandle_t handle, toff_t offset, int from) {
  TiffBytes& file = tiffBytes(handle);
  const std::size_t base = from == SEEK_SET ? 0 : from == SEEK_CUR ? file.at : file.bytes.size();
  file.at = base + static_cast<std::size_t>(offset);
  return file.at;
}
int closeTiff(thandle_t) { return 0; }
toff_t sizeTiff(thandle_t handle) { return tiffBytes(handle).bytes.size(); }

}  // namespace

std::string jpegOf(const Image& image, int dotsPerInch) {
  jpeg_compress_struct info{};
  jpeg_error_mgr errors{};
  info.err = jpeg_std_error(&errors);
  errors.error_exit = jpegFailure;
  unsigned char* bytes = nullptr;
  unsigned long size = 0;
  struct Put {  // back, in whatever way this ends
    jpeg_compress_struct& info;
    unsigned char*& bytes;
    ~Put() {
      jpeg_destroy_compress(&info);
      std::free(bytes);
    }
  } const put{info, bytes};
  jpeg_create_compress(&info);
  jpeg_mem_dest(&info, &bytes, &size);
  info.image_width = static_cast<JDIMENSION>(image.width);
  info.image_height = static_cast<JDIMENSION>(image.height);
  info.input_components = 3;
  info.in_color_space = JCS_RGB;
  jpeg_set_defaults(&info);
  jpeg_set_quality(&info, kQuality, TRUE);
  info.density_unit = 1;  // dots per inch
  info.X_density = info.Y_density = static_cast<UINT16>(dotsPerInch);
  jpeg_start_compress(&info, TRUE);
  for (int y = 0; y < image.height; ++y) {
    auto* row = const_cast<JSAMPLE*>(image.at(0, y).data());  // it is only read
    jpeg_write_scanlines(&info, &row, 1);
  }
  jpeg_finish_compress(&info);
  return {reinterpret_cast<const char*>(bytes), size};
}

std::string tiffOf(const Image& image, int dotsPerInch) {
  TIFFSetWarningHandler(nullptr);
  TiffBytes file;
  struct Closed {
    TIFF* tiff;
    ~Closed() {
      if (tiff) TIFFClose(tiff);
    }
  } open{TIFFClientOpen("picture", "w", &file, readTiff, writeTiff, seekTiff, closeTiff, sizeTiff, nullptr, nullptr)};
  TIFF* tiff = open.tiff;
  if (!tiff) throw std::runtime_error("the TIFF library can't begin a file");
  TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, static_cast<std::uint32_t>(image.width));
  TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, static_cast<std::uint32_t>(image.height));
  TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 8);
  TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, 3);
  TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB);
  TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
  TIFFSetField(tiff, TIFFTAG_COMPRESSION, COMPRESSION_LZW);
  TIFFSetField(tiff, TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
  TIFFSetField(tiff, TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH);
  TIFFSetField(tiff, TIFFTAG_XRESOLUTION, static_cast<double>(dotsPerInch));
  TIFFSetField(tiff, TIFFTAG_YRESOLUTION, static_cast<double>(dotsPerInch));
  TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, TIFFDefaultStripSize(tiff, 0));
  for (int y = 0; y < image.height; ++y)
    if (TIFFWriteScanline(tiff, const_cast<std::uint8_t*>(image.at(0, y).data()), static_cast<std::uint32_t>(y), 0) < 0)
      throw std::runtime_error("the TIFF library can't write a row");
  TIFFClose(std::exchange(open.tiff, nullptr));
  return std::move(file.bytes);
}

}  // namespace headless

// A grey picture with modules of a code on it, and ZXing's reader to read it.
#pragma once

#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "barcode/pdf417.h"
#include "barcode/pdf417_patterns.h"

namespace test {

class Picture {
 public:
  // All white.
  Picture(int width, int height)
      : width_(width), height_(height), dots_(std::size_t(width) * std::size_t(height), kWhite) {}
  // Fills a box of dots, from the upper left corner; what lies outside the picture is left out.
  void fill(double left, double top, double width, double height, bool dark = true) {
    for (int y = dot(top, height_); y < dot(top + height, height_); ++y)
      for (int x = dot(left, width_); x < dot(left + width, width_); ++x)
        dots_[std::size_t(y) * std::size_t(width_) + std::size_t(x)] = dark ? kBlack : kWhite;
  }
  [[nodiscard]] std::string bytes() const {
    return "P5\n" + std::to_string(width_) + " " + std::to_string(height_) + "\n255\n" + dots_;
  }

 private:
  static constexpr char kWhite = static_cast<char>(0xff), kBlack = 0;
  static int dot(double place, int end) { return std::min(std::max(static_cast<int>(std::lround(place)), 0), end); }
  int width_, height_;
  std::string dots_;
};

// What the reader prints of a code of that format ("PDF417", "QRCode").
inline std::string scannerSays(const Picture& picture, const std::string& format) {
  static int number = 0;
  const std::filesystem::path file =
      std::filesystem::temp_directory_path() /
      ("kelvane-scan-" + std::to_string(getpid()) + "-" + std::to_string(++number) + ".pgm");
  std::ofstream(file, std::ios::binary) << picture.bytes();
  std::FILE* const reader = popen(("ZXingReader -format " + format + " " + file.string() + " 2>&1").c_str(), "r");
  std::string said;
  for (int c = reader ? std::fgetc(reader) : EOF; c != EOF; c = std::fgetc(reader)) said += static_cast<char>(c);
  const int status = reader ? pclose(reader) : -1;
  std::filesystem::remove(file);
  return status == 127 << 8 ? "ZXingReader isn't installed" : said;
}

// The text that the reader takes the code for, in UTF-8, and whether the code says which letters it has.
inline std::string scannedText(const Picture& picture, const std::string& format) {
  const std::string said = scannerSays(picture, format), label = "Text:";
  const std::size_t from = said.find('"', said.find(label)), to = said.find("\"\nBytes:");
  if (from >= to || to == said.npos) return said;
  return said.substr(from + 1, to - from - 1) + (said.find("HasECI:     true") == said.npos ? "" : " (stated)");
}

// The bytes that the reader finds in a code of that format; empty for none.
inline std::string scanned(const Picture& picture, const std::string& format) {
  std::string said = scannerSays(picture, format);
  if (said.starts_with("ZXingReader isn't")) return said;
  const std::string label = "Bytes:";
  std::size_t at = said.find(label);
  if (at == said.npos) return "";
  said.resize(std::min(said.find('\n', at), said.size()));
  std::string bytes;
  for (at = said.find_first_not_of(' ', at + label.size()); at + 1 < said.size() && std::isxdigit(said[at]); at += 3)
    bytes += static_cast<char>(std::stoi(said.substr(at, 2), nullptr, 16));
  return bytes;
}

// Puts wrong codewords at so many places, evenly over the code; the bitmap must be an inverted one.
inline void damage(barcode::Pdf417& code, int count) {
  const int bytesPerRow = (code.bitColumns + 7) / 8, rowHeight = code.lenBits / bytesPerRow / code.codeRows;
  for (int i = 0; i < count; ++i) {
    const std::size_t place = std::size_t(i) * code.codewords.size() / std::size_t(count);
    const int row = static_cast<int>(place) / code.codeColumns, column = static_cast<int>(place) % code.codeColumns;
    const auto wrong = std::size_t(code.codewords[place] + 1 + i % 900) % barcode::kCodewords;
    const unsigned bars = 0x10000U | barcode::kPatterns[std::size_t(row % barcode::kClusters)][wrong];
    for (int module = 0; module < 17; ++module) {
      const int x = 17 * (2 + column) + module, bit = 0x80 >> x % 8;
      const bool isDark = (bars >> (16 - module) & 1U) != 0;
      for (int y = row * rowHeight; y < (row + 1) * rowHeight; ++y) {
        std::uint8_t& byte = code.outBits[std::size_t(y * bytesPerRow + x / 8)];
        byte = static_cast<std::uint8_t>(isDark ? byte & ~bit : byte | bit);
      }
    }
  }
}

// The code as its bitmap says, with a quiet zone.
inline Picture pictureOf(const barcode::Pdf417& code) {
  constexpr int kDots = 3, kQuiet = 4 * kDots;
  const std::size_t bytesPerRow = (std::size_t(code.bitColumns) + 7) / 8;
  const int rows = static_cast<int>(code.outBits.size() / bytesPerRow);
  Picture picture(code.bitColumns * kDots + 2 * kQuiet, rows * kDots + 2 * kQuiet);
  for (int y = 0; y < rows; ++y)
    for (int x = 0; x < code.bitColumns; ++x)
      if (!(code.outBits[std::size_t(y) * bytesPerRow + std::size_t(x) / 8] >> (7 - x % 8) & 1))
        picture.fill(kQuiet + x * kDots, kQuiet + y * kDots, kDots, kDots);
  return picture;
}

}  // namespace test

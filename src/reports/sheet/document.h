// The PDF document of a sheet: one font, pages, texts, rules and a picture at places in points, y upwards.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "text/fault.h"

namespace reports::sheet {

struct Color {
  float red = 0, green = 0, blue = 0;
};
// What a document says of itself. created: seconds since 1970.
struct Properties {
  std::wstring title, subject, author;
  std::int64_t created = 0;
};

// Faults of the PDF library become lines of the log; the document goes on without what failed.
class Document {
 public:
  Document();
  ~Document();
  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;
  // False: the library has no document for us.
  [[nodiscard]] bool isOpen() const { return document_ != nullptr; }
  // Takes a TrueType font in and begins the first page. A fault tells why not.
  ::text::Fault useFont(const std::wstring& path);
  void describe(const Properties& properties);

  // What follows goes to a new page.
  void addPage();
  [[nodiscard]] std::size_t pages() const { return pages_.size(); }
  // What follows goes to that page, from 0.
  void goTo(std::size_t page) { page_ = pages_.at(page); }
  [[nodiscard]] double width() const { return width_; }
  [[nodiscard]] double height() const { return height_; }
  void setColor(Color color);
  [[nodiscard]] Color color() const;
  // Of a character at a size; printable ones only.
  double advance(wchar_t character, double size);
  // The base line begins at x, y.
  void text(std::wstring_view printable, double size, double x, double y);
  void rule(double fromX, double toX, double y, double width);
  // Draws a JPEG picture. False: the bytes are none.
  bool picture(std::string_view jpeg, double x, double y, double width, double height);

  // The whole file. Empty, with a line of the log: it couldn't be put together.
  std::string bytes();

 private:
  // After a fault the library does nothing more until it is told that it may.
  void goOn();

  // Handles of the library.
  void* document_ = nullptr;
  void* page_ = nullptr;
  void* font_ = nullptr;
  std::vector<void*> pages_;
  std::string fontFile_;  // its bytes
  double width_ = 0, height_ = 0;
  std::vector<std::int16_t> advances_;  // of each character, in thousandths of the size; -1: not asked yet
};

}  // namespace reports::sheet

// The sheet that is being written: line by line from the top, with a running y, and a new page where one is due.
#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "reports/sheet/document.h"

namespace reports::sheet {

// Lengths are points.
constexpr double kMargin = 50;
constexpr double kNameSize = 18, kTitleSize = 20, kHeadSize = 15, kFactSize = 14, kRowSize = 10;
constexpr double kHeadStep = 20, kTableStep = 10, kListStep = 15, kWideStep = 20;  // before a line
constexpr double kFactColumn = 100;                                                // of values and indented lines
constexpr Color kBlack = {0, 0, 0}, kBlue = {0, 0, 1};

// A text of a row, at a place of its own.
struct Cell {
  double x = 0;
  std::wstring_view text;
};

class Page {
 public:
  // The document has its font.
  explicit Page(Document& document) : document_(document), y_(document.height()) {}

  [[nodiscard]] double right() const { return document_.width() - kMargin; }
  [[nodiscard]] double height() const { return document_.height(); }
  [[nodiscard]] Document& document() { return document_; }
  [[nodiscard]] double widthOf(std::wstring_view text, double size);

  // The place of the line that was written last.
  [[nodiscard]] double y() const { return y_; }
  void moveTo(double y) { y_ = y; }
  // Titles of sections stay below this place of the first page, where a picture stands.
  void keepBelow(double y) { below_ = y; }

  // A text on the line y, broken at `right` where it is longer; the lines that follow are y then.
  void line(std::wstring_view text, double size, double x, double step) { line(text, size, x, step, right()); }
  void line(std::wstring_view text, double size, double x, double step, double right);
  // Texts side by side, each broken at the next one's place. In their order from left to right.
  void row(std::span<const Cell> cells, double size, double step);
  void row(std::initializer_list<Cell> cells, double size, double step) {
    row(std::span<const Cell>(cells.begin(), cells.size()), size, step);
  }
  // Heads of columns, each cut at the next one's place.
  void heads(std::span<const Cell> cells);
  void heads(std::initializer_list<Cell> cells) { heads(std::span<const Cell>(cells.begin(), cells.size())); }
  // One line, cut at `right`, at a place of its own; no page break.
  void cut(std::wstring_view text, double size, double x, double y, double right);
  // Across the page, at a place of its own.
  void rule(double y);
  // A rule, then the title in blue.
  void sectionTitle(std::wstring_view title);
  void endSection();

 private:
  using Lines = std::vector<std::wstring>;
  [[nodiscard]] Lines linesOf(std::wstring_view text, double size, double x, double right);
  // Where the text of a cell has to end.
  [[nodiscard]] double endOf(std::span<const Cell> cells, std::size_t i) const;
  void breakIfDue(double size);
  void setColor(Color color);

  Document& document_;
  double y_ = 0, below_ = 0;
  Color color_ = kBlack;  // goes on on the next page
  bool isFirst_ = true;
};

}  // namespace reports::sheet

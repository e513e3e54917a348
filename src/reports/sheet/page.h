// The sheet that is being written: line by line from the top, with a running y, and a new page where one is due.
#pragma once

#include <optional>
#include <span>
#include <string_view>
#include <utility>
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

// Titles and heads wait for the row that they stand over, so that none of them ends a page; a broken row stays whole
// where a page can hold it; heads of columns stand again on each page that their rows come to.
class Page {
 public:
  // The document has its font.
  explicit Page(Document& document) : document_(document), y_(document.height()) {}

  [[nodiscard]] double right() const { return document_.width() - kMargin; }
  [[nodiscard]] double height() const { return document_.height(); }
  [[nodiscard]] Document& document() { return document_; }
  [[nodiscard]] double widthOf(std::wstring_view text, double size);

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
  // A head over what follows.
  void head(std::wstring_view text, double x);
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
  // "2 / 5" below the right margin of each page; nothing is written behind it.
  void number();

 private:
  using Lines = std::vector<std::wstring>;
  // What stays together: columns of lines side by side.
  struct Block {
    enum class Kind { row, head, columnHeads, title };
    Kind kind = Kind::row;
    double size = 0, step = 0;                      // step: before its first line
    std::vector<std::pair<double, Lines>> columns;  // by their places
    [[nodiscard]] std::size_t count() const;        // of lines, at least 1
    [[nodiscard]] double height() const;            // from the line before to its last one
  };
  [[nodiscard]] Lines linesOf(std::wstring_view text, double size, double x, double right);
  [[nodiscard]] Lines cutLine(std::wstring_view text, double size, double x, double right);
  // Where the text of a cell has to end.
  [[nodiscard]] double endOf(std::span<const Cell> cells, std::size_t i) const;
  // A row with what waits for it, on one page if one can hold it.
  void place(const Block& row);
  void placeWaiting();
  void write(const Block& block);
  void writeLine(const Block& block, std::size_t line);
  [[nodiscard]] bool isBreakDue(double size) const;
  // Its first line stands at the upper margin, whatever its step.
  void breakBefore(double step, bool isRow);
  void setColor(Color color);

  Document& document_;
  double y_ = 0, below_ = 0;  // y_: of the line that was written last
  Color color_ = kBlack;      // goes on on the next page
  std::vector<Block> waiting_;
  std::optional<Block> columnHeads_;  // of the rows that are being written
  bool isFirst_ = true, isTop_ = false, isBelowHead_ = false;
};

}  // namespace reports::sheet

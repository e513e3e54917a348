#include "reports/sheet/page.h"

#include <algorithm>

#include "reports/sheet/fitting.h"

namespace reports::sheet {
namespace {

constexpr double kLowest = 50, kLowestHeading = 100, kLargestRow = 15;  // headings are larger
constexpr double kTitleStep = 25, kRuleStep = 5, kRuleWidth = 2;
constexpr double kColumnGap = 3;

// Between the lines of a text that was broken.
double lineStep(double size) {
  if (size <= kRowSize) return kTableStep;
  return size <= kHeadSize ? kHeadStep : kTitleStep;
}

}  // namespace

double Page::widthOf(std::wstring_view text, double size) {
  return sheet::widthOf(printable(text), [&](wchar_t c) { return document_.advance(c, size); });
}

Page::Lines Page::linesOf(std::wstring_view text, double size, double x, double right) {
  if (text.empty()) return {};
  return wrapped(printable(text), right - x, [&](wchar_t c) { return document_.advance(c, size); });
}

double Page::endOf(std::span<const Cell> cells, std::size_t i) const {
  return i + 1 < cells.size() ? cells[i + 1].x - kColumnGap : right();
}

void Page::breakIfDue(double size) {
  if (y_ >= kLowest && (y_ >= kLowestHeading || size <= kLargestRow)) return;
  document_.addPage();
  document_.setColor(color_);
  isFirst_ = false;
  y_ = document_.height() - kMargin;
}

void Page::line(std::wstring_view text, double size, double x, double step, double right) {
  const Lines lines = linesOf(text, size, x, right);
  for (std::size_t k = 0; k < std::max<std::size_t>(lines.size(), 1); ++k) {
    y_ -= k == 0 ? step : lineStep(size);
    breakIfDue(size);
    if (!text.empty()) document_.text(lines[k], size, x, y_);
  }
}

void Page::row(std::span<const Cell> cells, double size, double step) {
  std::vector<Lines> columns;
  std::size_t count = 1;
  for (std::size_t i = 0; i < cells.size(); ++i) {
    columns.push_back(linesOf(cells[i].text, size, cells[i].x, endOf(cells, i)));
    count = std::max(count, columns.back().size());
  }
  for (std::size_t k = 0; k < count; ++k) {
    y_ -= k == 0 ? step : lineStep(size);
    breakIfDue(size);
    for (std::size_t i = 0; i < cells.size(); ++i)
      if (k < columns[i].size() && !columns[i][k].empty()) document_.text(columns[i][k], size, cells[i].x, y_);
  }
}

void Page::heads(std::span<const Cell> cells) {
  y_ -= kHeadStep;
  breakIfDue(kHeadSize);
  for (std::size_t i = 0; i < cells.size(); ++i) cut(cells[i].text, kHeadSize, cells[i].x, y_, endOf(cells, i));
}

void Page::cut(std::wstring_view text, double size, double x, double y, double right) {
  const auto advance = [&](wchar_t c) { return document_.advance(c, size); };
  document_.text(cutTo(printable(text), right - x, advance), size, x, y);
}

void Page::rule(double y) { document_.rule(kMargin, right(), y, kRuleWidth); }

void Page::setColor(Color color) {
  color_ = color;
  document_.setColor(color);
}

void Page::sectionTitle(std::wstring_view title) {
  if (isFirst_ && below_ > 0) y_ = std::min(y_, below_);
  y_ -= kRuleStep;
  rule(y_);
  setColor(kBlue);
  line(title, kTitleSize, kMargin, kTitleStep);
  setColor(kBlack);
}

void Page::endSection() { rule(y_ - kRuleStep); }

}  // namespace reports::sheet

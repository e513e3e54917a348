#include "reports/sheet/page.h"

#include <algorithm>

#include "reports/sheet/fitting.h"
#include "text/format.h"

namespace reports::sheet {
namespace {

constexpr double kLowest = 50, kLowestHeading = 100, kLargestRow = 15;  // headings are larger
constexpr double kTitleStep = 25, kRuleStep = 5, kRuleWidth = 2;
constexpr double kColumnGap = 3;
constexpr double kBelowHead = 15;    // a row's least step below a head, whose letters reach down to it
constexpr double kNumberPlace = 30;  // of the page's number, from the lower edge

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

Page::Lines Page::cutLine(std::wstring_view text, double size, double x, double right) {
  return {cutTo(printable(text), right - x, [&](wchar_t c) { return document_.advance(c, size); })};
}

double Page::endOf(std::span<const Cell> cells, std::size_t i) const {
  return i + 1 < cells.size() ? cells[i + 1].x - kColumnGap : right();
}

std::size_t Page::Block::count() const {
  std::size_t most = 1;
  for (const auto& [x, lines] : columns) most = std::max(most, lines.size());
  return most;
}

double Page::Block::height() const { return step + static_cast<double>(count() - 1) * lineStep(size); }

bool Page::isBreakDue(double size) const { return y_ < kLowest || (y_ < kLowestHeading && size > kLargestRow); }

void Page::breakBefore(double step, bool isRow) {
  document_.addPage();
  document_.setColor(color_);
  isFirst_ = false;
  isBelowHead_ = false;
  y_ = document_.height() - kMargin;
  if (isRow && columnHeads_) {
    writeLine(*columnHeads_, 0);
    isBelowHead_ = true;
  } else {
    y_ += step;
    isTop_ = true;
  }
}

void Page::writeLine(const Block& block, std::size_t line) {
  for (const auto& [x, lines] : block.columns)
    if (line < lines.size() && !lines[line].empty()) document_.text(lines[line], block.size, x, y_);
}

void Page::write(const Block& block) {
  const bool isRow = block.kind == Block::Kind::row;
  if (block.kind == Block::Kind::title && !isTop_) {
    y_ -= kRuleStep;
    rule(y_);
  }
  if (block.kind == Block::Kind::title) setColor(kBlue);
  for (std::size_t k = 0; k < block.count(); ++k) {
    const auto stepHere = [&] {
      const double step = k == 0 ? block.step : lineStep(block.size);
      return isRow && isBelowHead_ && step > 0 ? std::max(step, kBelowHead) : step;
    };
    y_ -= stepHere();
    if (isBreakDue(block.size)) {
      breakBefore(0, isRow);
      if (!isTop_) y_ -= stepHere();
    }
    isTop_ = isBelowHead_ = false;
    writeLine(block, k);
  }
  if (block.kind == Block::Kind::title) setColor(kBlack);
  if (block.kind == Block::Kind::columnHeads) columnHeads_ = block;
  isBelowHead_ = block.kind == Block::Kind::head || block.kind == Block::Kind::columnHeads;
}

void Page::place(const Block& row) {
  double all = row.height() + (isBelowHead_ || !waiting_.empty() ? kBelowHead : 0);
  for (const Block& block : waiting_) all += block.height();
  const bool isTogether = row.step > 0 && (!waiting_.empty() || row.count() > 1);
  if (isTogether && y_ - all < kLowest && all < document_.height() - 2 * kMargin)
    breakBefore(waiting_.empty() ? row.step : waiting_.front().step, waiting_.empty());
  placeWaiting();
  write(row);
}

void Page::placeWaiting() {
  for (const Block& block : std::exchange(waiting_, {})) write(block);
}

void Page::line(std::wstring_view text, double size, double x, double step, double right) {
  place({.size = size, .step = step, .columns = {{x, linesOf(text, size, x, right)}}});
}

void Page::row(std::span<const Cell> cells, double size, double step) {
  Block row{.size = size, .step = step, .columns = {}};
  for (std::size_t i = 0; i < cells.size(); ++i)
    row.columns.emplace_back(cells[i].x, linesOf(cells[i].text, size, cells[i].x, endOf(cells, i)));
  place(row);
}

void Page::head(std::wstring_view text, double x) {
  columnHeads_.reset();
  waiting_.push_back({.kind = Block::Kind::head,
                      .size = kHeadSize,
                      .step = kHeadStep,
                      .columns = {{x, linesOf(text, kHeadSize, x, right())}}});
}

void Page::heads(std::span<const Cell> cells) {
  Block heads{.kind = Block::Kind::columnHeads, .size = kHeadSize, .step = kHeadStep, .columns = {}};
  for (std::size_t i = 0; i < cells.size(); ++i)
    heads.columns.emplace_back(cells[i].x, cutLine(cells[i].text, kHeadSize, cells[i].x, endOf(cells, i)));
  waiting_.push_back(std::move(heads));
}

void Page::cut(std::wstring_view text, double size, double x, double y, double right) {
  document_.text(cutLine(text, size, x, right).front(), size, x, y);
}

void Page::rule(double y) { document_.rule(kMargin, right(), y, kRuleWidth); }

void Page::setColor(Color color) {
  color_ = color;
  document_.setColor(color);
}

void Page::sectionTitle(std::wstring_view title) {
  placeWaiting();
  columnHeads_.reset();
  if (isFirst_ && below_ > 0) y_ = std::min(y_, below_);
  waiting_.push_back({.kind = Block::Kind::title,
                      .size = kTitleSize,
                      .step = kTitleStep,
                      .columns = {{kMargin, linesOf(title, kTitleSize, kMargin, right())}}});
}

void Page::endSection() {
  placeWaiting();
  columnHeads_.reset();
  isBelowHead_ = false;
  rule(y_ - kRuleStep);
}

void Page::number() {
  placeWaiting();
  const std::size_t count = document_.pages();
  for (std::size_t i = 0; i < count; ++i) {
    document_.goTo(i);
    document_.setColor(kBlack);
    const std::wstring text = text::format(L"%d / %d", i + 1, count);
    document_.text(text, kRowSize, right() - widthOf(text, kRowSize), kNumberPlace);
  }
}

}  // namespace reports::sheet

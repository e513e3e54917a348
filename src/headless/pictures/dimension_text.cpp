#include "headless/pictures/dimension_text.h"

#include <algorithm>
#include <cmath>

#include "headless/model/dimension_value.h"
#include "text/encoding.h"
#include "text/format.h"

namespace headless {
namespace {

constexpr std::wstring_view kValue = L"@D";
constexpr const wchar_t *kDiameter = L"\u00D8", *kRadius = L"R", *kDegree = L"\u00B0", *kPlusMinus = L"\u00B1";

std::wstring signFor(Measuring measuring, std::wstring_view before) {
  if (measuring == Measuring::radius && !before.ends_with(kRadius)) return kRadius;
  const bool isSigned = before.ends_with(kDiameter) || before.ends_with(L"\u2300");
  return measuring == Measuring::diameter && !isSigned ? kDiameter : L"";
}

int decimalsOf(double value) {
  const std::wstring shown = shownNumber(value);
  const std::size_t point = shown.find(L'.');
  return point == shown.npos ? 0 : static_cast<int>(shown.size() - point - 1);
}

std::wstring deviation(double value, int decimals) {
  if (shownNumber(value) == L"0") return L"0";
  return (value < 0 ? L"-" : L"+") + text::format(L"%." + std::to_wstring(decimals) + L"f", std::fabs(value));
}

creo::ProToleranceType shownAs(const ToleranceRecord& tolerance) {
  using creo::ProToleranceType;
  if (tolerance.type != ProToleranceType::none) return tolerance.type;
  return tolerance.upper == tolerance.lower ? ProToleranceType::symmetric : ProToleranceType::plusMinus;
}

void addTolerance(DimensionText& text, const ToleranceRecord& tolerance, double value, const std::wstring& unit) {
  using creo::ProToleranceType;
  const double up = tolerance.upper, down = -tolerance.lower;
  const int decimals = std::max(decimalsOf(up), decimalsOf(down));
  const std::wstring nominal = shownNumber(value) + unit;
  switch (shownAs(tolerance)) {
    case ProToleranceType::limits:
      text.upper = shownNumber(value + up) + unit;
      text.lower = shownNumber(value + down) + unit;
      return;
    case ProToleranceType::plusMinus:
      text.upper = deviation(up, decimals) + unit;
      text.lower = deviation(down, decimals) + unit;
      break;
    case ProToleranceType::symmetric:
      text.before += nominal + L" " + kPlusMinus + shownNumber(up) + unit;
      return;
    case ProToleranceType::symmetricSuperscript:
      text.upper = kPlusMinus + shownNumber(up) + unit;
      break;
    case ProToleranceType::none:
    case ProToleranceType::standard:
      break;
  }
  text.before += nominal;
}

}  // namespace

std::wstring DimensionText::inOneLine() const {
  std::wstring line = before;
  if (!upper.empty()) line += (before.empty() ? L"" : L" ") + upper;
  if (!lower.empty()) line += L"/" + lower;
  return line + after;
}

DimensionText dimensionText(const DimensionRecord& dimension, double value, Measuring measuring) {
  DimensionText made;
  std::vector<std::wstring> lines;
  for (const std::string& line : dimension.text) lines.push_back(text::fromUtf8(line));
  if (lines.empty()) lines.emplace_back(kValue);
  auto with = std::ranges::find_if(lines, [](const std::wstring& line) { return line.find(kValue) != line.npos; });
  if (with == lines.end()) {
    made.before = lines.front();
    with = lines.begin();
  } else {
    const std::size_t at = with->find(kValue);
    made.before = with->substr(0, at);
    made.after = with->substr(at + kValue.size());
    made.before += signFor(measuring, made.before);
    const std::wstring unit = measuring == Measuring::angle ? kDegree : L"";
    if (dimension.tolerance)
      addTolerance(made, *dimension.tolerance, value, unit);
    else
      made.before += shownNumber(value) + unit;
  }
  for (auto line = lines.begin(); line != lines.end(); ++line)
    if (line != with) made.below.push_back(*line);
  return made;
}

double faceWidth(std::wstring_view text, double height) {
  // Thousandths of the height, from the blank on.
  static constexpr short kWidths[] = {278,  278, 355, 556, 556, 889, 667, 191, 333, 333, 389, 584, 278, 333, 278, 278,
                                      556,  556, 556, 556, 556, 556, 556, 556, 556, 556, 278, 278, 584, 584, 584, 556,
                                      1015, 667, 667, 722, 722, 667, 611, 778, 722, 278, 500, 667, 556, 833, 722, 778,
                                      667,  778, 722, 667, 611, 722, 667, 944, 667, 667, 611, 278, 278, 278, 469, 556,
                                      333,  556, 556, 500, 556, 556, 278, 556, 556, 222, 222, 500, 222, 833, 556, 556,
                                      556,  556, 333, 500, 278, 556, 500, 722, 500, 500, 500, 334, 260, 334, 584};
  double sum = 0;
  for (const wchar_t c : text) {
    const bool isKnown = c >= L' ' && c <= L'~';
    sum += isKnown ? kWidths[c - L' '] : c == L'\u00B0' ? 400 : c == L'\u00B1' ? 584 : c == L'\u00D8' ? 778 : 600;
  }
  return sum / 1000 * height;
}

}  // namespace headless

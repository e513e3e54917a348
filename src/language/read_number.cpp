#include "language/read_number.h"

#include <cmath>

#include "core/log.h"
#include "text/format.h"
#include "text/numbers.h"
#include "text/pieces.h"

namespace language {

using text::NumberFault;

void tellCut(std::wstring_view text, double taken) {
  // The decimal comma of other languages is what is cut most.
  const std::wstring_view hint = text.find(L',') == text.npos ? L"" : L": the decimal sign is a point";
  core::logWrite(text::format(L"'%s' is read as %s%s", text, text::shortest(taken), hint), core::kWarning);
}

std::optional<double> numberIn(std::wstring_view text) {
  const auto read = text::readDouble(text);
  if (read.fault != NumberFault::none) return std::nullopt;
  if (!read.whole) tellCut(text, read.value);
  return read.value;
}

std::optional<int> integerIn(std::wstring_view text) {
  const auto read = text::readInt(text);
  if (read.fault != NumberFault::none) return std::nullopt;
  if (!read.whole) tellCut(text, read.value);
  return read.value;
}

std::optional<double> numberOrZero(std::wstring_view text) {
  const auto read = text::readDouble(text);
  if (!std::isfinite(read.value)) return std::nullopt;
  if (!read.whole && !text::trimmed(text).empty()) tellCut(text, read.value);
  return read.value;
}

int integerOrZero(std::wstring_view text) {
  const auto read = text::readInt(text);
  if (!read.whole && !text::trimmed(text).empty()) tellCut(text, read.value);
  return read.value;
}

}  // namespace language

#include "actions/environment/number_format.h"

#include <algorithm>

#include "text/format.h"

namespace actions {
namespace {

constexpr int kMostWidth = 4096, kMostPrecision = 512;

void skip(std::wstring_view text, std::size_t& at, std::wstring_view characters) {
  at = std::min(text.find_first_not_of(characters, at), text.size());
}

// Digits from `at` on. False: a number beyond `most`.
bool skipCount(std::wstring_view text, std::size_t& at, int most) {
  int value = 0;
  for (; at < text.size() && text[at] >= L'0' && text[at] <= L'9'; ++at)
    value = std::min(value * 10 + static_cast<int>(text[at] - L'0'), most + 1);
  return value <= most;
}

// How long the conversion at the start of a text is; 0: it is none of a floating number.
std::size_t conversionLength(std::wstring_view text) {
  std::size_t at = 1;
  skip(text, at, L"-+ 0#");
  if (!skipCount(text, at, kMostWidth)) return 0;
  if (at < text.size() && text[at] == L'.' && !skipCount(text, ++at, kMostPrecision)) return 0;
  if (at < text.size() && text[at] == L'l') ++at;
  constexpr std::wstring_view kFloating = L"fegFEG";
  const bool floating = at < text.size() && kFloating.find(text[at]) != kFloating.npos;
  return floating ? at + 1 : 0;
}

}  // namespace

std::optional<NumberFormat> NumberFormat::read(std::wstring_view pattern) {
  NumberFormat format;
  for (std::size_t at = 0; at < pattern.size(); ++at) {
    std::wstring& plain = format.conversion_.empty() ? format.before_ : format.behind_;
    if (pattern[at] != L'%') {
      plain += pattern[at];
      continue;
    }
    const std::wstring_view rest = pattern.substr(at);
    if (rest.starts_with(L"%%")) {
      plain += L'%';
      ++at;
      continue;
    }
    const std::size_t length = conversionLength(rest);
    if (length == 0 || !format.conversion_.empty()) return {};
    wchar_t letter = rest[length - 1];
    format.capitals_ = letter < L'a';
    if (format.capitals_) letter = static_cast<wchar_t>(letter - L'A' + L'a');
    format.conversion_ = rest.substr(0, length - 1);
    if (format.conversion_.back() == L'l') format.conversion_.pop_back();
    format.conversion_ += letter;
    at += length - 1;
  }
  if (format.conversion_.empty()) return {};
  return format;
}

std::wstring NumberFormat::apply(double value) const {
  std::wstring number = text::format(conversion_, value);
  if (capitals_) std::ranges::replace(number, L'e', L'E');  // the one letter of a finite number
  return before_ + number + behind_;
}

}  // namespace actions

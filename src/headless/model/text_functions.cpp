#include "headless/model/text_functions.h"

#include <array>
#include <charconv>
#include <cmath>
#include <string>

#include "headless/store/names.h"
#include "text/encoding.h"

namespace headless {
namespace {

using Arguments = std::vector<RelationValue>;

constexpr int kDecimals = 10;
constexpr double kLargest = 1e15;  // beyond it a double has no whole numbers of its own

const std::string& textOf(const RelationValue& value) { return std::get<std::string>(value); }

// Of characters, not of bytes.
std::wstring wide(const RelationValue& value) { return text::fromUtf8(textOf(value)); }

std::string trimmedZeros(std::string digits) {
  while (digits.ends_with('0')) digits.pop_back();
  if (digits.ends_with('.')) digits.pop_back();
  return digits;
}

std::string fixed(double value, int decimals) {
  std::array<char, 64> digits{};
  const auto end =
      std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed, decimals);
  return {digits.data(), end.ptr};
}

Evaluated itos(const Arguments& a) {
  const double value = std::round(*number(a[0]));
  if (!(std::abs(value) <= kLargest)) return {{}, L"the number is too large for a text"};
  return {std::to_string(static_cast<long long>(value)), {}};
}

Evaluated rtos(const Arguments& a) {
  const double value = *number(a[0]);
  const double decimals = a.size() > 1 ? *number(a[1]) : kDecimals;
  if (!(std::abs(value) <= kLargest)) return {{}, L"the number is too large for a text"};
  if (!(decimals >= 0 && decimals <= kDecimals)) return {{}, L"a text has 0 to 10 decimals"};
  const std::string digits = fixed(value, static_cast<int>(decimals));
  return {a.size() > 1 ? digits : trimmedZeros(digits), {}};
}

Evaluated search(const Arguments& a) {
  const std::size_t at = wide(a[0]).find(wide(a[1]));
  return {at == std::wstring::npos ? 0.0 : static_cast<double>(at + 1), {}};
}

Evaluated extract(const Arguments& a) {
  const std::wstring whole = wide(a[0]);
  const double place = *number(a[1]), length = *number(a[2]);
  if (!(place >= 1) || !(length >= 0)) return {{}, L"a piece begins at 1 or behind, and its length isn't negative"};
  if (place > static_cast<double>(whole.size())) return {std::string(), {}};
  const auto count = static_cast<std::size_t>(std::min(length, static_cast<double>(whole.size())));
  return {text::toUtf8(std::wstring_view(whole).substr(static_cast<std::size_t>(place) - 1, count)), {}};
}

Evaluated length(const Arguments& a) { return {static_cast<double>(wide(a[0]).size()), {}}; }
Evaluated starts(const Arguments& a) { return {textOf(a[0]).starts_with(textOf(a[1])), {}}; }
Evaluated ends(const Arguments& a) { return {textOf(a[0]).ends_with(textOf(a[1])), {}}; }
Evaluated match(const Arguments& a) { return {textOf(a[0]) == textOf(a[1]), {}}; }

struct TextFunction {
  std::string_view name;
  std::string_view kinds;  // of the arguments: t a text, n a number; upper case: it may be left out
  Evaluated (*value)(const Arguments& arguments);
};
constexpr TextFunction kFunctions[] = {
    {"itos", "n", itos},         {"rtos", "nN", rtos},           {"search", "tt", search},
    {"extract", "tnn", extract}, {"string_length", "t", length}, {"string_starts", "tt", starts},
    {"string_ends", "tt", ends}, {"string_match", "tt", match},
};

std::size_t fewest(std::string_view kinds) { return kinds.ends_with('N') ? kinds.size() - 1 : kinds.size(); }

}  // namespace

std::optional<Evaluated> textFunction(std::string_view name, const Arguments& arguments) {
  for (const TextFunction& function : kFunctions) {
    if (!sameName(function.name, name)) continue;
    if (arguments.size() < fewest(function.kinds) || arguments.size() > function.kinds.size()) return std::nullopt;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
      if (arguments[i].index() == 0) return Evaluated{};
      const bool isText = std::holds_alternative<std::string>(arguments[i]);
      if (isText != (function.kinds[i] == 't'))
        return Evaluated{
            {}, isText ? L"a text stands where a number is needed" : L"a number stands where a text is needed"};
    }
    return function.value(arguments);
  }
  return std::nullopt;
}

}  // namespace headless

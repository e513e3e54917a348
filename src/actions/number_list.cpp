#include "actions/number_list.h"

#include <algorithm>

#include "text/numbers.h"

namespace actions {
namespace {

constexpr std::wstring_view kSeparators = L" \t,;";

}  // namespace

std::optional<std::vector<double>> numberList(std::wstring_view text) {
  std::vector<double> numbers;
  for (std::size_t at = text.find_first_not_of(kSeparators); at < text.size();
       at = text.find_first_not_of(kSeparators, at)) {
    const std::size_t end = std::min(text.find_first_of(kSeparators, at), text.size());
    const auto number = text::wholeDouble(text.substr(at, end - at));
    if (!number) return std::nullopt;
    numbers.push_back(*number);
    at = end;
  }
  return numbers;
}

}  // namespace actions

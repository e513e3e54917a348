#include "language/substitution.h"

#include <algorithm>

#include "core/log.h"
#include "language/number_with_units.h"
#include "text/format.h"
#include "text/units.h"

namespace language {

std::wstring replaceAllText(std::wstring_view source, std::wstring_view find, std::wstring_view replacement,
                            std::size_t dstSize) {
  if (dstSize == 0) return {};
  const std::size_t most = dstSize - 1;
  const std::size_t end = text::cut(source, most).size();
  // An occurrence that begins within what is read is replaced whole.
  const std::wstring_view read = source.substr(0, end + find.size());
  std::wstring result;
  result.reserve(end);
  for (std::size_t at = 0; at < end;) {
    const std::size_t next = find.empty() ? read.npos : read.find(find, at);
    result.append(read.substr(at, std::min(next, end) - at));
    if (next >= end) break;
    result.append(replacement);
    at = next + find.size();
  }
  result.resize(text::cut(result, most).size());
  return result;
}

Substitution::Substitution(std::wstring_view input, creo::ProMdl mdl, std::size_t capacity)
    : text(text::cut(input, capacity - 1)), model(mdl), outgrown(text.size() < input.size()), capacity_(capacity) {}

// A token that has put its own sign into the text before and is met again: its value leads back to it.
bool Substitution::comesBack(std::wstring_view token, std::wstring_view value) {
  if (value.find(token.front()) == value.npos) return false;
  if (std::find(expanded_.begin(), expanded_.end(), token) != expanded_.end()) return true;
  expanded_.emplace_back(token);
  return false;
}

bool Substitution::replace(std::wstring_view token, std::wstring_view value) {
  // With room for one more character, so that a text that doesn't fit is told from one that just does.
  std::wstring replaced = replaceAllText(text, token, value, capacity_ + 2);
  const bool fits = text::fits(replaced, capacity_);
  written_ += replaced.size();
  if (++replacements_ > kMostReplacements || written_ > kMostWritten || (comesBack(token, value) && !fits)) {
    core::logWrite(L"The text takes too many replacements, perhaps a value holds its own name", core::kError);
    return false;
  }
  setText(std::move(replaced));
  return true;
}

void Substitution::setText(std::wstring replaced) {
  text = std::move(replaced);
  const std::size_t room = text::cut(text, capacity_ - 1).size();
  outgrown = outgrown || room < text.size();
  text.resize(room);
}

std::size_t Substitution::closingSign(std::size_t open, wchar_t sign) const {
  if (open + 1 >= text.size() || text[open] != sign || text[open + 1] == sign) return text.npos;
  for (std::size_t at = open + 1; at < text.size() && text[at] != L' '; ++at)
    if (text[at] == sign) return at;
  return text.npos;
}

std::wstring Substitution::nameBetween(std::size_t open, std::size_t close) const {
  std::wstring name = text.substr(open + 1, close - open - 1);
  if (text::fits(name, text::kTextSize)) return name;
  core::logWrite(text::format(L"A name between \"%c\" signs is longer than %d characters", text[open],
                              static_cast<int>(text::kTextSize) - 1),
                 core::kError);
  return {};
}

}  // namespace language

#include "engine/substitution.h"

#include <algorithm>

#include "core/log.h"
#include "engine/variables.h"
#include "text/format.h"
#include "text/units.h"

namespace engine {

Substitution::Substitution(std::wstring_view input, creo::ProMdl mdl, std::size_t capacity)
    : text(text::cut(input, capacity > 0 ? capacity - 1 : 0)), model(mdl), capacity_(capacity) {}

// A token that has put its own sign into the text before and is met again: its value leads back to it.
bool Substitution::comesBack(std::wstring_view token, std::wstring_view value) {
  if (value.find(token.front()) == value.npos) return false;
  if (std::find(expanded_.begin(), expanded_.end(), token) != expanded_.end()) return true;
  expanded_.emplace_back(token);
  return false;
}

bool Substitution::replace(std::wstring_view token, std::wstring_view value) {
  std::wstring replaced = replaceAllText(text, token, value, capacity_);
  // A longer value of a text that is full was cut; one that comes back has filled it, and would go on for ever.
  const bool full = text::units(replaced) + 1 >= capacity_;
  if (++replacements_ > kMostReplacements || (comesBack(token, value) && full)) {
    core::logWrite(L"The text takes too many replacements, perhaps a value holds its own name", core::kError);
    return false;
  }
  text = std::move(replaced);
  return true;
}

void Substitution::setText(std::wstring replaced) {
  text = std::move(replaced);
  text.resize(text::cut(text, capacity_ > 0 ? capacity_ - 1 : 0).size());
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

}  // namespace engine

#include "kelvane/check/attribute_mend.h"

#include <algorithm>

#include "kelvane/base/nearest.h"
#include "text/letters.h"

namespace kelvane {
namespace {

constexpr std::size_t kMostSlips = 2, kLettersOfSlip = 4;

bool isLetters(std::string_view text) {
  return std::all_of(text.begin(), text.end(),
                     [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '-'; });
}

}  // namespace

Mend wordMend(std::string_view value, std::span<const std::string> words) {
  if (!isLetters(value)) return {};
  const std::string meant = nearestAlone(value, words, std::min(kMostSlips, value.size() / kLettersOfSlip));
  return meant.empty() || !isLetters(meant) ? Mend() : Mend{Mend::Of::value, meant};
}

Mend flagMend(std::string_view value) {
  const std::string small = text::lower(std::string(value));
  return value != small && (small == "true" || small == "false") ? Mend{Mend::Of::value, small} : Mend();
}

Mend nameMend(std::string_view name, std::span<const std::string> known, std::span<const std::string> lacked) {
  const std::string meant = nearestAlone(name, known, name.size());
  const bool isLacked = std::find(lacked.begin(), lacked.end(), meant) != lacked.end();
  return meant.empty() || !isLacked ? Mend() : Mend{Mend::Of::name, meant};
}

}  // namespace kelvane

#include "kelvane/base/verb.h"

namespace kelvane {
namespace {

// Nothing: it isn't given.
std::vector<std::string> valuesOf(const OptionTarget& target) {
  if (auto* const* flag = std::get_if<bool*>(&target))
    return **flag ? std::vector<std::string>{""} : std::vector<std::string>();
  if (auto* const* number = std::get_if<int*>(&target))
    return **number != 0 ? std::vector{"=" + std::to_string(**number)} : std::vector<std::string>();
  if (auto* const* text = std::get_if<std::string*>(&target))
    return (*text)->empty() ? std::vector<std::string>() : std::vector{"=" + **text};
  if (auto* const* optional = std::get_if<std::optional<std::string>*>(&target))
    return **optional ? std::vector{"=" + ***optional} : std::vector<std::string>();
  std::vector<std::string> values = *std::get<std::vector<std::string>*>(target);
  for (std::string& value : values) value.insert(0, "=");
  return values;
}

}  // namespace

std::vector<std::string> givenOptions(const std::vector<OptionRow>& rows) {
  std::vector<std::string> given;
  for (const OptionRow& row : rows) {
    const std::string names = row.names;
    if (names[0] != '-') continue;
    for (const std::string& value : valuesOf(row.target)) given.push_back(names.substr(names.rfind(',') + 1) + value);
  }
  return given;
}

}  // namespace kelvane

#include "core/attribute.h"

#include <algorithm>

namespace core {
namespace {

// "name_7" and "name_%d".
bool means(std::wstring_view name, std::wstring_view pattern) {
  const std::size_t sign = pattern.find(kNumberSign);
  if (sign == pattern.npos) return name == pattern;
  const std::wstring_view before = pattern.substr(0, sign), after = pattern.substr(sign + kNumberSign.size());
  if (name.size() <= before.size() + after.size() || !name.starts_with(before) || !name.ends_with(after)) return false;
  name.remove_prefix(before.size());
  name.remove_suffix(after.size());
  return std::all_of(name.begin(), name.end(), [](wchar_t c) { return c >= L'0' && c <= L'9'; });
}
}  // namespace

const Attribute* findAttribute(std::span<const Attribute> attributes, std::wstring_view name) {
  const auto found = std::find_if(attributes.begin(), attributes.end(),
                                  [&](const Attribute& attribute) { return means(name, attribute.name); });
  return found == attributes.end() ? nullptr : &*found;
}

}  // namespace core

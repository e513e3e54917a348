#include "language/user_variables.h"

#include "text/units.h"

namespace language {
namespace {

std::wstring_view fitted(std::wstring_view text) { return text::cut(text, text::kTextSize - 1); }

}  // namespace

void UserVariableTable::set(std::wstring_view name, std::wstring_view value) {
  const auto [at, isNew] = index_.try_emplace(std::wstring(fitted(name)), names_.size());
  if (isNew) {
    names_.emplace_back(at->first);
    values_.emplace_back();
  }
  values_[at->second] = fitted(value);
}

void UserVariableTable::remove(std::wstring_view name) {
  const auto found = index_.find(fitted(name));
  if (found == index_.end()) return;
  const std::size_t place = found->second;
  names_.erase(names_.begin() + static_cast<std::ptrdiff_t>(place));
  values_.erase(values_.begin() + static_cast<std::ptrdiff_t>(place));
  index_.erase(found);
  for (auto& [other, at] : index_)
    if (at > place) --at;
}

const std::wstring* UserVariableTable::find(std::wstring_view name) const {
  const auto found = index_.find(fitted(name));
  return found == index_.end() ? nullptr : &values_[found->second];
}

void UserVariableTable::clear() {
  names_.clear();
  values_.clear();
  index_.clear();
}

UserVariableTable& userVariables() {
  static UserVariableTable table;
  return table;
}

}  // namespace language

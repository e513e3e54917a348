#include "headless/session/options.h"

#include "text/pieces.h"

namespace headless {

void ConfigOptions::read(std::wstring_view content) {
  for (const std::wstring& whole : text::lines(content)) {
    const std::wstring_view line = text::trimmed(whole);
    if (line.empty() || line.front() == L'!') continue;
    const auto blank = line.find_first_of(L" \t");
    const std::wstring_view value = blank == std::wstring_view::npos ? L"" : text::trimmed(line.substr(blank));
    options_[std::wstring(line.substr(0, blank))].emplace_back(value);
  }
}

void ConfigOptions::set(std::wstring_view name, std::wstring_view value) {
  options_[std::wstring(name)] = {std::wstring(value)};
}

std::vector<std::wstring> ConfigOptions::values(std::wstring_view name) const {
  const auto found = options_.find(name);
  return found == options_.end() ? std::vector<std::wstring>() : found->second;
}

}  // namespace headless

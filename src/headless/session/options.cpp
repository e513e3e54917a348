#include "headless/session/options.h"

#include <algorithm>

#include "text/pieces.h"

namespace headless {
namespace {

constexpr std::wstring_view kSeveral[] = {L"search_path", L"mapkey", L"def_layer"};

bool isOptionName(std::wstring_view name) {
  const auto isInName = [](wchar_t c) {
    return (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z') || (c >= L'0' && c <= L'9') || c == L'_' || c == L'-' ||
           c == L'.' || c == L'$';
  };
  return !name.empty() && std::all_of(name.begin(), name.end(), isInName);
}

bool mayHaveSeveral(std::wstring_view name) {
  return std::any_of(std::begin(kSeveral), std::end(kSeveral),
                     [name](std::wstring_view entry) { return text::equalNoCase(entry, name); });
}

}  // namespace

ConfigOptions::Option& ConfigOptions::option(std::wstring_view name) {
  const auto [at, fresh] = options_.try_emplace(std::wstring(name));
  if (fresh) at->second.several = mayHaveSeveral(name);
  return at->second;
}

void ConfigOptions::read(std::wstring_view content) {
  for (const std::wstring& whole : text::lines(content)) {
    const std::wstring_view line = text::trimmed(whole);
    if (line.empty() || line.front() == L'!') continue;
    const auto blank = line.find_first_of(L" \t");
    const std::wstring_view value = blank == std::wstring_view::npos ? L"" : text::trimmed(line.substr(blank));
    Option& read = option(line.substr(0, blank));
    read.several = read.several || !read.values.empty();
    read.values.emplace_back(value);
  }
}

bool ConfigOptions::set(std::wstring_view name, std::wstring_view value) {
  if (!isOptionName(name)) return false;
  Option& set = option(name);
  // An empty text takes the values away, also of an option that only a settings file gave several of.
  if (value.empty() && !mayHaveSeveral(name)) {
    set.values.clear();
    return true;
  }
  if (!set.several) set.values.clear();
  if (std::find(set.values.begin(), set.values.end(), value) == set.values.end()) set.values.emplace_back(value);
  return true;
}

std::vector<std::wstring> ConfigOptions::values(std::wstring_view name) const {
  const auto found = options_.find(name);
  return found == options_.end() ? std::vector<std::wstring>() : found->second.values;
}

}  // namespace headless

#include "headless/model/detail_options.h"

#include <algorithm>
#include <unordered_map>

#include "text/encoding.h"
#include "text/letters.h"
#include "text/pieces.h"

namespace headless {
namespace {

bool isOptionName(std::wstring_view name) {
  return std::all_of(name.begin(), name.end(), [](wchar_t c) {
    return (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z') || (c >= L'0' && c <= L'9') || c == L'_' || c == L'-';
  });
}

}  // namespace

std::size_t readDetailOptions(ModelDocument& drawing, std::wstring_view content) {
  std::vector<DetailOptionRecord>& options = drawing.record.detailOptions;
  std::unordered_map<std::string, std::size_t> places;
  for (std::size_t i = 0; i < options.size(); ++i) places.emplace(text::lower(options[i].name), i);
  std::size_t refused = 0;
  bool changed = false;
  for (const std::wstring& whole : text::lines(content)) {
    const std::wstring_view line = text::trimmed(whole);
    if (line.empty() || line.front() == L'!') continue;
    const std::wstring_view name = line.substr(0, line.find_first_of(L" \t"));
    const std::string value = text::toUtf8(text::trimmed(line.substr(name.size())));
    if (value.empty() || !isOptionName(name)) {
      ++refused;
      continue;
    }
    const auto [at, fresh] = places.try_emplace(text::lower(text::toUtf8(name)), options.size());
    if (fresh) options.emplace_back().name = text::toUtf8(name);
    DetailOptionRecord& option = options[at->second];
    changed = changed || option.value != value;
    option.value = value;
  }
  if (changed) drawing.touch(nullptr);
  return refused;
}

}  // namespace headless

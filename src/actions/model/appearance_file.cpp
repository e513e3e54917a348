#include "actions/model/appearance_file.h"

#include <algorithm>

#include "actions/number_list.h"
#include "os/text_files.h"
#include "text/format.h"
#include "text/letters.h"
#include "text/pieces.h"

namespace actions {
namespace {

struct Property {
  std::wstring_view word;
  double creo::ProAppearance::*value;
};
constexpr Property kProperties[] = {{L"ambient", &creo::ProAppearance::ambient},
                                    {L"diffuse", &creo::ProAppearance::diffuse},
                                    {L"highlight", &creo::ProAppearance::highlight},
                                    {L"shininess", &creo::ProAppearance::shininess},
                                    {L"transparency", &creo::ProAppearance::transparency}};

// How many numbers from 0 to 1 a word asks for, and where they go. False: the line is otherwise.
bool take(creo::ProAppearance& look, std::wstring_view word, std::wstring_view written) {
  const auto numbers = numberList(written);
  if (!numbers || std::any_of(numbers->begin(), numbers->end(), [](double number) { return number < 0 || number > 1; }))
    return false;
  if (text::equalNoCase(word, L"color")) {
    if (numbers->size() != 3) return false;
    look.red = (*numbers)[0];
    look.green = (*numbers)[1];
    look.blue = (*numbers)[2];
    return true;
  }
  for (const Property& property : kProperties) {
    if (!text::equalNoCase(word, property.word) || numbers->size() != 1) continue;
    look.*property.value = numbers->front();
    return true;
  }
  return false;
}

}  // namespace

text::Result<std::vector<creo::ProAppearance>> readAppearanceFile(const std::wstring& path) {
  const auto content = os::readText(path);
  if (!content) return text::Fault{L"the file can't be read", path};
  std::vector<creo::ProAppearance> looks;
  int number = 0;
  for (const std::wstring& whole : text::lines(content.value)) {
    ++number;
    const std::wstring_view line = text::trimmed(whole);
    if (line.empty() || line.starts_with(L'!')) continue;
    if (line.starts_with(L'[') && line.ends_with(L']') && line.size() > 2) {
      looks.emplace_back().label = text::trimmed(line.substr(1, line.size() - 2));
      continue;
    }
    const auto blank = std::min(line.find_first_of(L" \t"), line.size());
    if (!looks.empty() && take(looks.back(), line.substr(0, blank), line.substr(blank))) continue;
    return text::Fault{L"a line is [name], color with three numbers, or a property with one",
                       text::format(L"%s:%d", path, number)};
  }
  return looks;
}

const creo::ProAppearance* lookNamed(const std::vector<creo::ProAppearance>& looks, std::wstring_view name) {
  const auto found = std::find_if(looks.begin(), looks.end(), [&](const creo::ProAppearance& look) {
    return name.empty() || text::equalNoCase(look.label, name);
  });
  return found == looks.end() ? nullptr : &*found;
}

}  // namespace actions

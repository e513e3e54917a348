#include "actions/task.h"

#include <algorithm>

#include "language/variables.h"
#include "text/format.h"
#include "text/letters.h"
#include "text/numbers.h"

namespace actions {

using namespace language;
bool Task::extensionIs(std::wstring_view extension) const {
  std::wstring_view own = subject_.extension;
  if (own.starts_with(L'.')) own.remove_prefix(1);
  return own == extension;
}

bool Task::has(std::wstring_view name) const { return core::attrFind(node_.attributes, name) != nullptr; }

std::wstring_view Task::attribute(std::wstring_view name) const {
  const core::XmlAttr* found = core::attrFind(node_.attributes, name);
  return found ? found->value : std::wstring_view();
}

std::optional<std::wstring_view> Task::numbered(std::wstring_view pattern, int number) const {
  const core::XmlAttr* found = core::attrFind(node_.attributes, text::format(pattern, number));
  return found ? std::optional(found->value) : std::nullopt;
}

std::vector<int> Task::numbers(std::wstring_view stem, int count) const {
  std::vector<int> numbers;
  for (const Numbered& entry : numberedAll(stem, count)) numbers.push_back(entry.number);
  return numbers;
}

std::vector<Task::Numbered> Task::numberedAll(std::wstring_view stem, int count) const {
  std::vector<Numbered> found;
  for (const core::XmlAttrBlock* block = node_.attributes; block; block = block->next)
    for (std::uint16_t i = 0; i < block->count; ++i) {
      const std::wstring_view name = block->items[i]->name;
      if (!name.starts_with(stem)) continue;
      const std::wstring_view digits = name.substr(stem.size());
      const int number = text::parseInt(digits);
      if (number >= 0 && number < count && digits == text::format(L"%d", number))
        found.push_back({number, block->items[i]->value});
    }
  // Of two of one name the first counts.
  const auto before = [](const Numbered& a, const Numbered& b) { return a.number < b.number; };
  const auto same = [](const Numbered& a, const Numbered& b) { return a.number == b.number; };
  std::stable_sort(found.begin(), found.end(), before);
  found.erase(std::unique(found.begin(), found.end(), same), found.end());
  return found;
}

Replaced Task::text(std::wstring_view name, std::size_t size) const {
  return replaceVariables(attribute(name), subject_.model, size);
}

std::wstring Task::path(std::wstring_view name, std::wstring_view subdirectory, std::size_t size) const {
  return replaceVariablesPath(attribute(name), subject_.model, subdirectory, size);
}

}  // namespace actions

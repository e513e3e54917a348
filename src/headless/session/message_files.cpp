#include "headless/session/message_files.h"

#include "os/paths.h"
#include "os/text_files.h"
#include "text/pieces.h"

namespace headless {
namespace {

// The mark of a message's class may stand before its key, as "%CI", and is no part of it.
std::wstring withoutClass(std::wstring_view key) {
  if (key.starts_with(L"%C") && key.size() > 2) key.remove_prefix(3);
  return std::wstring(text::trimmed(key));
}

}  // namespace

const std::wstring* MessageFiles::find(const std::wstring& file, const std::wstring& key) {
  auto found = files_.find(file);
  if (found == files_.end()) found = files_.emplace(file, read(file)).first;
  const auto text = found->second.find(key);
  return text == found->second.end() ? nullptr : &text->second;
}

MessageFiles::Texts MessageFiles::read(const std::wstring& file) const {
  Texts texts;
  auto content = os::readText(os::joined(os::joined(folder_, language_), file));
  if (!content) content = os::readText(os::joined(folder_, file));
  if (!content) return texts;
  const auto lines = text::lines(content.value);
  for (std::size_t i = 0; i + 1 < lines.size(); ++i) {
    if (lines[i].empty() || lines[i].starts_with(L'#')) continue;
    texts.try_emplace(withoutClass(text::trimmed(lines[i])), lines[i + 1]);
    i += 3;
  }
  return texts;
}

}  // namespace headless

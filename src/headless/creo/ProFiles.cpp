#include "creo/ProFiles.h"

#include <algorithm>

#include "headless/creo/operation.h"
#include "os/surroundings.h"
#include "text/letters.h"
#include "text/pieces.h"

namespace creo {

using State = headless::Session::State;

Got<std::vector<std::wstring>> ProFilesList(const std::wstring& folder, const std::wstring& filter) {
  return headless::operation("ProFilesList", [&](State&) -> Got<std::vector<std::wstring>> {
    const auto entries = os::files().list(folder);
    if (!entries) return ProNotFound;
    const auto patterns = text::split(filter, L',');
    const auto fits = [&](std::wstring_view name) {
      return std::any_of(patterns.begin(), patterns.end(), [&](const std::wstring& pattern) {
        std::wstring_view ending = text::trimmed(pattern);
        if (ending.starts_with(L'*')) ending.remove_prefix(1);
        return text::endsWithNoCase(name, ending);
      });
    };
    std::vector<std::wstring> files;
    for (const os::Entry& entry : entries.value)
      if (!entry.isFolder && fits(entry.name)) files.push_back(os::joined(folder, entry.name));
    return files;
  });
}

}  // namespace creo

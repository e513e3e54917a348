#include "creo/pfcSession.h"

#include "headless/creo/operation.h"
#include "os/paths.h"
#include "os/surroundings.h"
#include "text/letters.h"

namespace creo {

using headless::operation;
using State = headless::Session::State;

namespace {

// A "*" is any run of characters; letters are case-blind.
bool fitsPattern(std::wstring_view name, std::wstring_view pattern) {
  std::size_t n = 0, p = 0, star = pattern.npos, retry = 0;
  while (n < name.size()) {
    if (p < pattern.size() && pattern[p] == L'*') {
      star = p++;
      retry = n;
    } else if (p < pattern.size() && text::lower(pattern[p]) == text::lower(name[n])) {
      ++p, ++n;
    } else if (star != pattern.npos) {
      p = star + 1;
      n = ++retry;
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of(L'*', p) == pattern.npos;
}

Got<std::vector<std::wstring>> listed(const std::wstring& path, bool folders, std::wstring_view pattern) {
  const auto entries = os::files().list(path);
  if (!entries) return ProNotFound;
  std::vector<std::wstring> paths;
  for (const os::Entry& entry : entries.value)
    if (entry.isFolder == folders && fitsPattern(entry.name, pattern)) paths.push_back(os::joined(path, entry.name));
  return paths;
}

}  // namespace

Got<std::wstring> pfcGetCurrentModelFileName() {
  return operation("pfcGetCurrentModelFileName", [](State& state) -> Got<std::wstring> {
    const headless::Model* model = state.models.find(state.windows.model(state.windows.active()));
    if (!model) return ProNotFound;
    return text::lower(model->name + L"." + typeExtension(model->type()));
  });
}

Got<std::vector<std::wstring>> pfcListSubdirectories(const std::wstring& path) {
  return operation("pfcListSubdirectories", [&](State&) { return listed(path, true, L"*"); });
}

Got<std::vector<std::wstring>> pfcListFiles(const std::wstring& path, const std::wstring& pattern) {
  return operation("pfcListFiles", [&](State&) { return listed(path, false, pattern); });
}

Got<int> pfcSessionActionListenerAdd(pfcSessionActionListener listener) {
  return operation("pfcSessionActionListenerAdd",
                   [&](State& state) -> Got<int> { return state.events.listen(std::move(listener)); });
}

ProError pfcSessionActionListenerRemove(int listener) {
  return operation("pfcSessionActionListenerRemove",
                   [&](State& state) { return state.events.unlisten(listener) ? ProNoError : ProNotFound; });
}

}  // namespace creo

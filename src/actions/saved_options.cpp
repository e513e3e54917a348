#include "actions/saved_options.h"

#include <functional>
#include <map>

#include "core/log.h"

namespace actions {
namespace {

using Saved = std::map<std::wstring, std::vector<SavedConfigOption>, std::less<>>;

Saved& store() {
  static Saved saved;
  return saved;
}

}  // namespace

const std::vector<SavedConfigOption>& savedConfigOptions(std::wstring_view saveName) {
  static const std::vector<SavedConfigOption> none;
  const auto found = store().find(saveName);
  return found == store().end() ? none : found->second;
}

void saveConfigOption(std::wstring_view saveName, SavedConfigOption saved) {
  auto found = store().find(saveName);
  if (found == store().end()) found = store().try_emplace(std::wstring(saveName)).first;
  found->second.push_back(std::move(saved));
}

void freeSavedConfigOptions() {
  core::logWrite(L"Free all option space", core::kDebug);
  store().clear();
  core::logWrite(L"finished", core::kDebug);
}

}  // namespace actions

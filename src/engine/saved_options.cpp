#include "engine/saved_options.h"

#include "core/log.h"

namespace engine {
namespace {

std::vector<SavedConfigOption>& store() {
  static std::vector<SavedConfigOption> saved;
  return saved;
}

}  // namespace

const std::vector<SavedConfigOption>& savedConfigOptions() { return store(); }

void saveConfigOption(SavedConfigOption saved) { store().push_back(std::move(saved)); }

void freeSavedConfigOptions() {
  core::logWrite(L"Free all option space", core::kDebug);
  std::vector<SavedConfigOption>().swap(store());
  core::logWrite(L"finished", core::kDebug);
}

}  // namespace engine

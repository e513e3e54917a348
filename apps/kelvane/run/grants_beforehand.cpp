#include "kelvane/run/grants_beforehand.h"

#include "kelvane/base/places.h"
#include "os/paths.h"

namespace kelvane {

// Folders that whoever started the run names for it are open: a list could name no others.
os::Grants grantsBeforehand(const RunOptions& options,
                            const std::vector<std::pair<std::wstring, std::wstring>>& creoOptions,
                            const std::vector<os::Need>& granted, const std::vector<os::Need>& denied,
                            std::wstring_view models) {
  os::Grants grants;
  grants.openTo(os::Permission::write, models);
  grants.openTo(os::Permission::read, systemPath(installationFolder()));
  grants.openTo(os::Permission::read, L"z:\\usr\\share\\fonts\\");
  for (const auto& [name, value] : creoOptions)
    if (!value.empty()) grants.openTo(os::Permission::read, os::wholeFrom(models, value));
  if (!options.config.empty()) grants.openTo(os::Permission::read, systemPath(options.config));
  if (!options.collect.empty()) grants.openTo(os::Permission::write, systemPath(options.collect));
  for (const os::Need& need : granted) grants.allow(need);
  for (const os::Need& need : denied) grants.deny(need);
  return grants;
}

}  // namespace kelvane

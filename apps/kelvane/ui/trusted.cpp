#include "kelvane/ui/trusted.h"

#include <filesystem>
#include <map>
#include <optional>
#include <set>

#include "kelvane/base/fault.h"
#include "kelvane/base/native_path.h"
#include "kelvane/package/place.h"
#include "kelvane/trust/grant_options.h"
#include "kelvane/trust/needs.h"
#include "kelvane/trust/store.h"
#include "os/confine.h"

namespace kelvane::view {
namespace {

namespace fs = std::filesystem;

// By the name under which it is shown, as placePackages chooses among those of one name.
std::map<std::string, fs::path> sourcesIn(const std::string& folder) {
  std::set<fs::path> all;
  for (const auto& entry : fs::directory_iterator(nativePath(folder))) all.insert(entry.path());
  std::map<std::string, fs::path> sources;
  for (const fs::path& path : all)
    if (isPackage(machinePath(path))) sources.emplace(packageFileName(machinePath(path)), path);
  return sources;
}

}  // namespace

std::vector<std::string> trustPackages(const SessionTrust& trust, const std::string& work, os::Grants& grants) {
  const os::OwnWork ownWork;
  std::vector<std::string> faults;
  std::optional<TrustStore> store;
  try {
    store.emplace();
  } catch (const Fault& fault) {
    faults.emplace_back(fault.what());
  }
  for (const auto& [name, source] : sourcesIn(trust.folder)) {
    const std::string shown = std::string(work).append("/packages/").append(name);
    std::error_code error;
    if (!fs::exists(nativePath(shown), error)) continue;
    // What is judged is what the plug-in gets, whatever becomes of its source.
    KnownPackage package = openKnown(shown);
    if (fs::is_directory(source, error)) package.identity = {name, "", machinePath(fs::canonical(source))};
    const KeptGrants kept = (store ? store->find(package.identity) : std::nullopt).value_or(KeptGrants());
    grants.ofPackage(unpackedFolder(name), kept.allowed, kept.denied);
    os::Grants own = trust.beforehand;
    for (const os::Need& need : kept.allowed) own.allow(need);
    for (const os::Need& need : kept.denied) own.deny(need);
    const std::vector<os::Need> lacking = lackingOf(*package.source, own);
    if (!trust.isRequired || lacking.empty()) continue;
    hidePackage(name, work);
    faults.push_back(name + " isn't shown: it isn't trusted with " + optionsOf(lacking) +
                     "; 'kelvane trust' keeps grants");
  }
  return faults;
}

}  // namespace kelvane::view

#include "kelvane/trust/store.h"
#include "kelvane/base/native_path.h"

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "kelvane/base/fault.h"
#include "kelvane/base/places.h"
#include "kelvane/package/source.h"
#include "os/digest.h"
#include "os/places.h"
#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/whole_number.h"

namespace kelvane {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

constexpr const char* kFile = "/kelvane/trust.json";
constexpr int kFormat = 1;

std::string siteFile() {
  for (const std::string& folder : os::siteFolders()) {
    std::error_code error;
    if (fs::exists(nativePath(folder + kFile), error)) return folder + kFile;
  }
  return {};
}

bool isSame(const PackageIdentity& a, const PackageIdentity& b) {
  return a.sha256.empty() ? !a.folder.empty() && a.folder == b.folder : a.sha256 == b.sha256;
}

Json asJson(const std::vector<os::Need>& needs) {
  Json all = Json::object();
  for (const os::Need& need : needs) {
    const std::string word = text::toUtf8(os::wordOf(need.permission));
    if (need.permission == os::Permission::clipboard)
      all[word] = true;
    else
      all[word].push_back(text::toUtf8(need.resource));
  }
  return all;
}

// Any other place would be taken for one below the root, or for the root; any other server would be none.
void requireWhole(const os::Need& need) {
  const bool isPlace = need.permission == os::Permission::read || need.permission == os::Permission::write;
  const bool isNoServer = need.permission == os::Permission::net && !os::isServer(need.resource);
  const bool isBelow = isPlace && !os::isWhole(text::toUtf8(need.resource));
  if (need.resource.empty() || isNoServer || isBelow)
    throw std::invalid_argument("'" + text::toUtf8(need.resource) + "' is no whole path or no name");
}

// Throws what the library throws for something else.
std::vector<os::Need> needsIn(const Json& entry, const char* member) {
  std::vector<os::Need> needs;
  if (!entry.contains(member)) return needs;
  for (const auto& [word, value] : entry.at(member).items()) {
    const auto known = std::find_if(os::kPermissions.begin(), os::kPermissions.end(), [&word = word](auto permission) {
      return text::toUtf8(os::wordOf(permission)) == word;
    });
    if (known == os::kPermissions.end()) throw std::invalid_argument("there is no permission '" + word + "'");
    if (*known == os::Permission::clipboard) {
      if (value.get<bool>()) needs.push_back({*known, {}});
      continue;
    }
    for (const Json& resource : value) {
      needs.push_back({*known, text::fromUtf8(resource.get<std::string>())});
      requireWhole(needs.back());
    }
  }
  return needs;
}

KeptGrants grantsIn(const Json& entry) {
  KeptGrants grants;
  grants.of = {entry.value("name", ""), entry.value("sha256", ""), entry.value("folder", "")};
  if (grants.of.sha256.empty() == grants.of.folder.empty())
    throw std::invalid_argument("a package has either a 'sha256' or a 'folder'");
  grants.allowed = needsIn(entry, "allow");
  grants.denied = needsIn(entry, "deny");
  return grants;
}

std::string workedOut(std::string hex, const std::string& file) {
  if (hex.empty()) throw Fault("the checksum of " + file + " can't be worked out");
  return hex;
}

}  // namespace

std::string sha256Of(const std::string& file) {
  const auto digest = os::sha256();
  const auto error = os::files().readPieces(systemPath(file), [&](std::string_view piece) { digest->take(piece); });
  if (error) throw Fault(file + " can't be read: " + error.message());
  return workedOut(digest->hex(), file);
}

std::string ownTrustFile() {
  const std::string folder = configurationFolder();
  return folder.empty() ? folder : folder + kFile;
}

KnownPackage openKnown(const std::string& package) {
  KnownPackage known;
  known.identity.name = packageFileName(package);
  std::error_code error;
  const bool isFile = fs::is_regular_file(nativePath(package), error);
  if (!isFile) {
    known.source = openPackage(package);  // or its Fault, where there is none
    known.identity.folder = machinePath(fs::canonical(nativePath(package)));
    return known;
  }
  auto bytes = os::files().read(systemPath(package));
  if (!bytes) throw Fault(package + " can't be read: " + bytes.error.message());
  known.identity.sha256 = workedOut(os::sha256OfBytes(bytes.value), package);
  known.source = openPackage(package, std::move(bytes.value));
  return known;
}

TrustStore::TrustStore() : path_(ownTrustFile()) {
  read(siteFile(), true);
  read(path_, false);
}

void TrustStore::read(const std::string& path, bool isSite) {
  std::error_code error;
  if (path.empty() || !fs::exists(nativePath(path), error)) return;
  if (os::isAnybodys(path)) throw Fault(path + " grants nothing: everybody may write it, or its folder");
  const auto bytes = os::files().read(systemPath(path));
  if (!bytes) throw Fault(path + " can't be read: " + bytes.error.message());
  try {
    const Json all = Json::parse(bytes.value);
    if (text::neededWhole<int>(all.at("format")) != kFormat)
      throw std::invalid_argument("a later version of the program wrote it");
    for (const Json& entry : all.at("packages")) {
      entries_.push_back(grantsIn(entry));
      entries_.back().isSite = isSite;
    }
  } catch (const std::exception& fault) {
    throw Fault(path + " holds no grants: " + fault.what());
  }
}

std::optional<KeptGrants> TrustStore::find(const PackageIdentity& package) const {
  std::optional<KeptGrants> found;
  for (const KeptGrants& entry : entries_) {
    if (!isSame(entry.of, package)) continue;
    if (!found) found = KeptGrants{entry.of, {}, {}, entry.isSite};
    found->allowed.insert(found->allowed.end(), entry.allowed.begin(), entry.allowed.end());
    found->denied.insert(found->denied.end(), entry.denied.begin(), entry.denied.end());
  }
  return found;
}

std::optional<KeptGrants> TrustStore::own(const PackageIdentity& package) const {
  const auto found = std::find_if(entries_.rbegin(), entries_.rend(),
                                  [&](const KeptGrants& entry) { return !entry.isSite && isSame(entry.of, package); });
  return found == entries_.rend() ? std::nullopt : std::optional<KeptGrants>(*found);
}

std::optional<KeptGrants> TrustStore::earlier(const PackageIdentity& package) const {
  if (package.sha256.empty()) return std::nullopt;
  const auto found = std::find_if(entries_.rbegin(), entries_.rend(), [&](const KeptGrants& entry) {
    return !entry.isSite && !entry.of.sha256.empty() && entry.of.name == package.name && !isSame(entry.of, package);
  });
  return found == entries_.rend() ? std::nullopt : std::optional<KeptGrants>(*found);
}

void TrustStore::keep(const KeptGrants& grants) {
  std::erase_if(entries_, [&](const KeptGrants& entry) { return !entry.isSite && isSame(entry.of, grants.of); });
  entries_.push_back(grants);
  write();
}

bool TrustStore::forget(const PackageIdentity& package) {
  const bool isThere =
      std::erase_if(entries_, [&](const KeptGrants& entry) { return !entry.isSite && isSame(entry.of, package); }) > 0;
  if (isThere) write();
  return isThere;
}

void TrustStore::write() const {
  if (path_.empty()) throw Fault("grants can't be kept: the machine knows no folder for settings of this user");
  Json packages = Json::array();
  for (const KeptGrants& entry : entries_) {
    if (entry.isSite) continue;
    Json json = {{"name", entry.of.name}};
    json[entry.of.sha256.empty() ? "folder" : "sha256"] = entry.of.sha256.empty() ? entry.of.folder : entry.of.sha256;
    json["allow"] = asJson(entry.allowed);
    if (!entry.denied.empty()) json["deny"] = asJson(entry.denied);
    packages.push_back(std::move(json));
  }
  const std::wstring target = systemPath(path_);
  std::error_code error = os::files().createFolders(os::folderOf(target));
  std::string bytes;
  try {
    bytes = Json({{"format", kFormat}, {"packages", std::move(packages)}}).dump(2) + "\n";
  } catch (const Json::type_error&) {
    throw Fault(path_ + " can't be written: a name in it isn't UTF-8");
  }
  if (!error) error = os::files().write(target, bytes);
  if (!error) fs::permissions(nativePath(path_), fs::perms::owner_read | fs::perms::owner_write, error);
  if (error) throw Fault(path_ + " can't be written: " + error.message());
}

}  // namespace kelvane

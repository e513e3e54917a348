// The grants that are kept for packages: a person's own, and those that an administrator keeps for a site.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "kelvane/package/source.h"
#include "os/grants.h"

namespace kelvane {

// What a package is known by: a .kvz by its content, a folder of one's own by its path.
struct PackageIdentity {
  std::string name;    // "standards.kvz"
  std::string sha256;  // of the file, in hexadecimal; empty for a folder
  std::string folder;  // whole, without links; empty for a file
};
// A package is read once: what it holds comes out of the very bytes that its checksum is of, whatever takes the file's
// place meanwhile. A Fault as openPackage gives it.
struct KnownPackage {
  PackageIdentity identity;
  std::unique_ptr<PackageSource> source;
};
KnownPackage openKnown(const std::string& package);
// Where one's own grants are kept, be it there or not, in the machine's form; empty where no folder of one's own is
// known.
std::string ownTrustFile();
// In hexadecimal. A Fault for a file that can't be read.
std::string sha256Of(const std::string& file);

struct KeptGrants {
  PackageIdentity of;
  std::vector<os::Need> allowed, denied;
  bool isSite = false;  // from the site's file
};

// A person's file is kelvane/trust.json in that person's folder of settings. A site's is the first kelvane/trust.json
// in the folders of settings for all (os/places.h); the program only reads it. A Fault for one that can't be read,
// holds something else, or that everybody may write.
class TrustStore {
 public:
  TrustStore();

  // What is kept for exactly this package, of both files; nothing where neither knows it.
  [[nodiscard]] std::optional<KeptGrants> find(const PackageIdentity& package) const;
  // The same of one's own file alone.
  [[nodiscard]] std::optional<KeptGrants> own(const PackageIdentity& package) const;
  // What one kept oneself for an earlier content of a package of that name, the latest one's; nothing without one.
  [[nodiscard]] std::optional<KeptGrants> earlier(const PackageIdentity& package) const;
  [[nodiscard]] const std::vector<KeptGrants>& all() const { return entries_; }

  // In place of what was kept of one's own for it. Both write the person's file, whole, readable for that person alone.
  void keep(const KeptGrants& grants);
  // False: nothing of one's own was kept.
  bool forget(const PackageIdentity& package);

 private:
  void read(const std::string& path, bool isSite);
  void write() const;

  std::string path_;
  std::vector<KeptGrants> entries_;  // the later ones behind the earlier
};

}  // namespace kelvane

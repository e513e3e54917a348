#include "kelvane/base/places.h"
#include "kelvane/base/native_path.h"

#include <filesystem>

#include "kelvane/base/fault.h"
#include "kelvane/base/hash.h"
#include "os/places.h"
#include "os/processes.h"
#include "os/program.h"
#include "os/surroundings.h"
#include "text/encoding.h"

namespace kelvane {
namespace {

namespace fs = std::filesystem;

std::string variable(std::wstring_view name) {
  const auto value = os::environment(name);
  return value ? text::toUtf8(*value) : std::string();
}

// Another folder would be meant, or written, than the one that is named.
std::string requiredUtf8(std::string folder, const char* variable) {
  if (text::isUtf8(folder)) return folder;
  throw Fault("the name of the folder '" + folder + "' isn't UTF-8; " + variable + " names another one");
}

fs::path cacheFolder() {
  const std::string folder = requiredUtf8(os::cacheFolder(), "XDG_CACHE_HOME");
  return folder.empty() ? fs::temp_directory_path() : nativePath(folder);
}

bool isInstallation(const fs::path& folder) {
  std::error_code error;
  return fs::is_directory(folder / "text", error);
}

}  // namespace

std::wstring systemPath(const std::string& argument) {
  return os::mounts().system(machinePath(fs::absolute(nativePath(argument)).lexically_normal()));
}

std::wstring systemFolder(const std::string& argument) {
  const std::wstring path = systemPath(argument);
  if (!os::files().exists(path)) throw Fault("there is no folder " + argument);
  if (!os::files().isFolder(path)) throw Fault(argument + " is no folder");
  return os::asFolder(path);
}

std::string shown(std::wstring_view path) { return os::mounts().machine(path); }

std::string installationFolder() {
  if (std::string set = variable(L"KELVANE_INSTALLATION"); !set.empty()) {
    if (!isInstallation(nativePath(set)))
      throw Fault("KELVANE_INSTALLATION names " + set + ", which has no folder 'text'");
    return machinePath(fs::absolute(nativePath(set)));
  }
  // Where the program is, in the archive for Windows; beside it when it is installed; above it in a build tree.
  const fs::path own = nativePath(os::programFile()).parent_path();
  if (isInstallation(own)) return machinePath(own);
  for (fs::path folder = own; !folder.empty(); folder = folder.parent_path()) {
    for (const char* name : {"installation", "share/kelvane"}) {
      if (isInstallation(folder / name)) return machinePath(folder / name);
    }
    if (folder == folder.root_path()) break;
  }
  throw Fault("the folder 'installation' isn't found; set KELVANE_INSTALLATION");
}

std::string workFolder(const std::string& models) {
  const fs::path folder = cacheFolder() / "kelvane" / hexHash(machinePath(fs::canonical(nativePath(models))));
  std::error_code error;
  fs::create_directories(folder, error);
  if (error) throw Fault("the temp folder " + machinePath(folder) + " can't be made: " + error.message());
  return machinePath(folder);
}

std::string configurationFolder() { return requiredUtf8(os::configurationFolder(), "XDG_CONFIG_HOME"); }

}  // namespace kelvane

// By the XDG base directories 0.8 of freedesktop.org, which count no path that isn't whole.
#include "os/places.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>

#include "os/posix/own_user.h"

namespace os {
namespace {

std::string variable(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

// As the machine's list of users has it where the environment doesn't.
std::string homeFolder() {
  if (std::string home = variable("HOME"); !home.empty()) return home;
  return ownUser().home;
}

std::string folderOfUser(const char* name, const char* usual) {
  if (std::string set = variable(name); isWhole(set)) return set;
  const std::string home = homeFolder();
  return home.empty() ? std::string() : home + "/" + usual;
}

}  // namespace

User ownUser() {
  std::string buffer(16384, '\0');
  passwd entry{};
  passwd* found = nullptr;
  if (::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || !found) return {};
  return {found->pw_name, found->pw_dir};
}

std::string cacheFolder() { return folderOfUser("XDG_CACHE_HOME", ".cache"); }

std::string configurationFolder() { return folderOfUser("XDG_CONFIG_HOME", ".config"); }

std::vector<std::string> siteFolders() {
  const std::string set = variable("XDG_CONFIG_DIRS");
  std::vector<std::string> folders;
  for (std::string_view rest = set.empty() ? std::string_view("/etc/xdg") : std::string_view(set); !rest.empty();) {
    const std::string_view folder = rest.substr(0, rest.find(':'));
    if (isWhole(folder)) folders.emplace_back(folder);
    rest.remove_prefix(folder.size() < rest.size() ? folder.size() + 1 : folder.size());
  }
  return folders;
}

bool isWhole(std::string_view machine) { return machine.starts_with('/'); }

bool isAnybodys(const std::string& machine) {
  struct stat file {
  }, folder{};
  if (::stat(machine.c_str(), &file) != 0) return false;
  const std::string above = machine.substr(0, machine.rfind('/') + 1);
  if (::stat(above.empty() ? "." : above.c_str(), &folder) != 0) return false;
  // In a sticky folder the owner of a file alone removes or renames it.
  const bool isShared = (folder.st_mode & S_IWOTH) != 0 && (folder.st_mode & S_ISVTX) == 0;
  return isShared || (file.st_mode & S_IWOTH) != 0;
}

}  // namespace os

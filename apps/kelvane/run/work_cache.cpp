#include "kelvane/run/work_cache.h"
#include "kelvane/base/native_path.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <vector>

#include "kelvane/base/places.h"
#include "os/lock.h"
#include "os/surroundings.h"

namespace kelvane {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMostFolders = 32;
constexpr const char* kNote = "models";  // its content is the folder of models, its time that of the last use
constexpr const char* kGone = ".gone";   // of a folder that is being removed

struct WorkFolder {
  fs::path path;
  fs::file_time_type used = fs::file_time_type::min();
  bool isWanted = true;  // its models are there
};

// Nothing else that someone put there is touched.
bool isOurs(const fs::path& path) {
  constexpr std::size_t kDigits = 16;  // of the hash that names it
  const std::string name = machinePath(path.stem());
  return name.size() == kDigits && name.find_first_not_of("0123456789abcdef") == name.npos;
}

// What an earlier version left has no note.
WorkFolder lookAt(const fs::path& path) {
  WorkFolder folder{path};
  std::error_code error;
  const auto used = fs::last_write_time(path / kNote, error);
  if (error) return folder;
  folder.used = used;
  std::ifstream file(path / kNote, std::ios::binary);
  const std::string models((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  folder.isWanted = fs::exists(nativePath(models), error);
  return folder;
}

// Under another name first, so that a run that begins meanwhile makes a folder of its own.
void removeUnused(const WorkFolder& folder) {
  auto lock = os::lockFile(systemPath(machinePath(folder.path / "run.lock")));
  if (!lock || lookAt(folder.path).used != folder.used) return;
  std::error_code error;
  const fs::path gone = nativePath(machinePath(folder.path) + kGone);
  fs::rename(folder.path, gone, error);
  lock.value.reset();
  if (!error) fs::remove_all(gone, error);
}

}  // namespace

void noteUse(const std::string& work, const std::string& models) {
  std::ofstream file(nativePath(work) / kNote, std::ios::binary | std::ios::trunc);
  file << machinePath(fs::canonical(nativePath(models)));
}

void tidyBeside(const std::string& work) {
  std::error_code error;
  const fs::path own = nativePath(work);
  std::vector<WorkFolder> others;
  for (const auto& entry : fs::directory_iterator(own.parent_path(), error)) {
    if (entry.path() == own || !isOurs(entry.path()) || !entry.is_directory(error)) continue;
    if (entry.path().extension() == kGone) {
      fs::remove_all(entry.path(), error);
    } else {
      others.push_back(lookAt(entry.path()));
    }
  }
  std::sort(others.begin(), others.end(), [](const WorkFolder& a, const WorkFolder& b) { return a.used > b.used; });
  std::size_t kept = 1;  // its own
  for (const WorkFolder& folder : others) {
    if (folder.isWanted && kept < kMostFolders) {
      ++kept;
    } else {
      removeUnused(folder);
    }
  }
}

}  // namespace kelvane

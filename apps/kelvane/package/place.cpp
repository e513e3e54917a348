#include "kelvane/package/place.h"
#include "kelvane/base/native_path.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <set>

#include "kelvane/base/fault.h"
#include "kelvane/base/hash.h"
#include "kelvane/package/packing.h"
#include "os/confine.h"
#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace kelvane {
namespace {

namespace fs = std::filesystem;

std::string bytesOf(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void addState(Hash& hash, const fs::path& path) {
  hash.add(machinePath(path));
  hash.add(std::to_string(fs::file_size(path)));
  hash.add(std::to_string(fs::last_write_time(path).time_since_epoch().count()));
}

// Tells one state of a package from another without reading it.
std::string stateOf(const fs::path& path, const PackageSource& package) {
  Hash hash;
  if (!fs::is_directory(path)) {
    addState(hash, fs::absolute(path));
  } else {
    for (const std::string& member : package.members()) {
      addState(hash, fs::absolute(path / nativePath(member)));
      hash.add(package.isExecutable(member) ? "x" : "");
    }
  }
  return hash.hex();
}

// The time of the newest file, in whole seconds.
fs::file_time_type timeOf(const fs::path& path, const PackageSource& package) {
  fs::file_time_type newest = fs::file_time_type::min();
  for (const std::string& member : package.members())
    newest = std::max(newest, fs::last_write_time(path / nativePath(member)));
  return std::chrono::floor<std::chrono::seconds>(newest);
}

void write(const fs::path& target, const std::string& bytes) {
  std::ofstream file(target, std::ios::binary | std::ios::trunc);
  file << bytes << std::flush;
  if (!file) throw Fault(machinePath(target) + " can't be written");
}

constexpr std::size_t kMostAside = 16;  // packages

fs::path shownIn(const std::string& work) { return nativePath(work) / "packages"; }
fs::path asideIn(const std::string& work) { return nativePath(work) / "aside"; }
fs::path noteOf(const std::string& work, const std::string& name) {
  return nativePath(work) / nativePath(name + ".state");
}

void forgetUnpacked(const std::string& name) {
  const os::OwnWork own;
  if (const auto error = os::files().removeFolder(unpackedFolder(name), L"t:\\")) {
    throw Fault("what was unpacked before can't be removed: " + error.message());
  }
}

void dropAside(const std::string& work, const std::string& name) {
  forgetUnpacked(name);
  fs::remove(noteOf(work, name));
  fs::remove_all(asideIn(work) / nativePath(name));
}

// Names that differ in their case alone: what is unpacked of both lies in one folder, where each would find the
// other's.
bool areTwins(const std::string& a, const std::string& b) {
  return a != b && text::equalNoCase(text::fromUtf8(a), text::fromUtf8(b));
}

// The oldest of what stands aside goes, with what was unpacked of it.
void boundAside(const std::string& work) {
  std::vector<std::pair<fs::file_time_type, std::string>> all;
  for (const auto& entry : fs::directory_iterator(asideIn(work))) {
    const std::string name = machinePath(entry.path().filename());
    std::error_code error;
    const auto used = fs::last_write_time(noteOf(work, name), error);
    all.emplace_back(error ? fs::file_time_type::min() : used, name);
  }
  std::sort(all.begin(), all.end());
  for (std::size_t i = 0; i + kMostAside < all.size(); ++i) dropAside(work, all[i].second);
}

// No twin of these stands aside, so that it is unpacked anew when it is wanted again.
void dropTwins(const std::string& work, const std::set<std::string>& names) {
  std::vector<std::string> aside;
  for (const auto& entry : fs::directory_iterator(asideIn(work))) aside.push_back(machinePath(entry.path().filename()));
  for (const std::string& name : aside)
    if (std::any_of(names.begin(), names.end(), [&](const std::string& wanted) { return areTwins(name, wanted); }))
      dropAside(work, name);
}

// Shows these alone. The others stand aside with their times, so that they needn't be unpacked anew when they are
// wanted again.
void showOnly(const std::string& work, const std::set<std::string>& names) {
  fs::create_directories(asideIn(work));
  for (const auto& entry : fs::directory_iterator(shownIn(work))) {
    const fs::path name = entry.path().filename();
    if (!names.contains(machinePath(name))) fs::rename(entry.path(), asideIn(work) / name);
  }
  dropTwins(work, names);
  for (const std::string& name : names) {
    const fs::path aside = asideIn(work) / nativePath(name);
    if (fs::exists(aside)) fs::rename(aside, shownIn(work) / nativePath(name));
  }
  boundAside(work);
}

void placeOne(const fs::path& source, const PackageSource& package, const std::string& work, bool byContent) {
  const std::string name = packageFileName(machinePath(source));
  const fs::path target = shownIn(work) / nativePath(name), note = noteOf(work, name);
  const std::string state = name + " " + stateOf(source, package);
  if (!byContent && fs::exists(target) && bytesOf(note) == state) return write(note, state);  // used now

  fs::remove(note);  // a run that breaks off here leaves nothing that looks finished
  const bool isFolder = fs::is_directory(source);
  const std::string bytes = isFolder ? packed(package) : bytesOf(source);
  if (!fs::exists(target) || bytesOf(target) != bytes) {
    forgetUnpacked(name);
    fs::remove(target);
    write(target, bytes);
    fs::last_write_time(target, isFolder ? timeOf(source, package) : fs::last_write_time(source));
  }
  write(note, state);
}

}  // namespace

std::wstring unpackedFolder(const std::string& name) {
  return L"t:\\open_kvz_" + text::fromUtf8(name.substr(0, name.size() - 4)) + L"\\";
}

void hidePackage(const std::string& name, const std::string& work) {
  fs::rename(shownIn(work) / nativePath(name), asideIn(work) / nativePath(name));
}

void placePackage(const std::string& path, const PackageSource& package, const std::string& work, bool byContent) {
  showOnly(work, {packageFileName(path)});
  placeOne(nativePath(path), package, work, byContent);
}

std::vector<std::string> placePackages(const std::string& folder, const std::string& work) {
  std::vector<fs::path> sources;
  std::set<std::string> names;
  std::vector<std::string> faults;
  std::set<fs::path> all;  // in an order, so that of two twins it is the same one each time
  for (const auto& entry : fs::directory_iterator(nativePath(folder))) all.insert(entry.path());
  for (const fs::path& path : all) {
    if (!isPackage(machinePath(path))) continue;
    const std::string name = packageFileName(machinePath(path));
    const auto twin =
        std::find_if(names.begin(), names.end(), [&](const std::string& known) { return areTwins(name, known); });
    if (twin != names.end())
      faults.push_back(name + " isn't shown: " + *twin + " has the same name but for its capitals");
    else if (names.insert(name).second)
      sources.push_back(path);
  }
  showOnly(work, names);
  for (const fs::path& source : sources) {
    try {
      placeOne(source, *openPackage(machinePath(source)), work, false);
    } catch (const std::exception& fault) {
      faults.push_back(machinePath(source.filename()) + ": " + fault.what());
    }
  }
  return faults;
}

}  // namespace kelvane

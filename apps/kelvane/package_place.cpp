#include "kelvane/package_place.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <set>

#include "kelvane/fault.h"
#include "kelvane/hash.h"
#include "kelvane/packing.h"
#include "os/surroundings.h"
#include "text/encoding.h"

namespace kelvane {
namespace {

namespace fs = std::filesystem;

std::string bytesOf(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void addState(Hash& hash, const fs::path& path) {
  hash.add(path.generic_string());
  hash.add(std::to_string(fs::file_size(path)));
  hash.add(std::to_string(fs::last_write_time(path).time_since_epoch().count()));
}

// Tells one state of a package from another without reading it.
std::string stateOf(const fs::path& path, const PackageSource& package) {
  Hash hash;
  if (!fs::is_directory(path)) {
    addState(hash, fs::absolute(path));
  } else {
    for (const std::string& member : package.members()) addState(hash, fs::absolute(path / member));
  }
  return hash.hex();
}

// The time of the newest file, in whole seconds.
fs::file_time_type timeOf(const fs::path& path, const PackageSource& package) {
  fs::file_time_type newest = fs::file_time_type::min();
  for (const std::string& member : package.members()) newest = std::max(newest, fs::last_write_time(path / member));
  return std::chrono::floor<std::chrono::seconds>(newest);
}

void write(const fs::path& target, const std::string& bytes) {
  std::ofstream file(target, std::ios::binary | std::ios::trunc);
  file << bytes << std::flush;
  if (!file) throw Fault(target.string() + " can't be written");
}

void clearOthers(const fs::path& folder, const std::set<std::string>& names) {
  for (const auto& entry : fs::directory_iterator(folder)) {
    if (!names.contains(entry.path().filename().string())) fs::remove_all(entry.path());
  }
}

void forgetUnpacked(const std::string& name) {
  const std::wstring folder = L"t:\\open_kvz_" + text::fromUtf8(name.substr(0, name.size() - 4)) + L"\\";
  if (const auto error = os::files().removeFolder(folder, L"t:\\")) {
    throw Fault("what was unpacked before can't be removed: " + error.message());
  }
}

void placeOne(const fs::path& source, const PackageSource& package, const std::string& work) {
  const std::string name = packageFileName(source.string());
  const fs::path target = fs::path(work) / "packages" / name;
  const fs::path note = fs::path(work) / (name + ".state");
  const std::string state = name + " " + stateOf(source, package);
  if (fs::exists(target) && bytesOf(note) == state) return;

  fs::remove(note);  // a run that breaks off here leaves nothing that looks finished
  if (fs::is_directory(source)) {
    const std::string bytes = packed(package);
    if (!fs::exists(target) || bytesOf(target) != bytes) {
      forgetUnpacked(name);
      write(target, bytes);
      fs::last_write_time(target, timeOf(source, package));
    }
  } else {
    readAll(package);
    forgetUnpacked(name);
    fs::copy_file(source, target, fs::copy_options::overwrite_existing);
    fs::last_write_time(target, fs::last_write_time(source));
  }
  write(note, state);
}

bool isPackage(const fs::path& path) { return path.extension() == ".kvz" || fs::is_regular_file(path / kPackageIndex); }

}  // namespace

void placePackage(const std::string& path, const PackageSource& package, const std::string& work) {
  clearOthers(fs::path(work) / "packages", {packageFileName(path)});
  placeOne(path, package, work);
}

std::vector<std::string> placePackages(const std::string& folder, const std::string& work) {
  std::vector<fs::path> sources;
  std::set<std::string> names;
  for (const auto& entry : fs::directory_iterator(folder)) {
    if (isPackage(entry.path()) && names.insert(packageFileName(entry.path().string())).second)
      sources.push_back(entry.path());
  }
  clearOthers(fs::path(work) / "packages", names);
  std::vector<std::string> faults;
  for (const fs::path& source : sources) {
    try {
      placeOne(source, *openPackage(source.string()), work);
    } catch (const std::exception& fault) {
      faults.push_back(source.filename().string() + ": " + fault.what());
    }
  }
  return faults;
}

}  // namespace kelvane

#include "kelvane/package_source.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "documents/package.h"
#include "documents/zip.h"
#include "kelvane/fault.h"
#include "kelvane/nearest.h"
#include "kelvane/places.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace kelvane {
namespace {

namespace fs = std::filesystem;

struct LessNoCase {
  bool operator()(const std::string& a, const std::string& b) const { return text::lower(a) < text::lower(b); }
};
template <class T>
using ByMember = std::map<std::string, T, LessNoCase>;

template <class T>
std::vector<std::string> namesOf(const ByMember<T>& members) {
  std::vector<std::string> names;
  for (const auto& [name, value] : members) names.push_back(name);
  return names;
}

// What would not stay in the package's folder, here or on a system with letters and backslashes.
bool isHostile(const std::string& member) {
  if (member.front() == '/' || member.find_first_of("\\:") != member.npos) return true;
  if (std::any_of(member.begin(), member.end(), [](char c) { return static_cast<unsigned char>(c) < 32; })) return true;
  return ("/" + member + "/").find("/../") != std::string::npos;
}

std::string wouldLeave(const std::string& member) {
  return " is refused: its member '" + member + "' would leave the package's folder";
}

class ZipPackage : public PackageSource {
 public:
  explicit ZipPackage(const std::string& path) : path_(path), zip_(documents::ZipReader::openFile(systemPath(path))) {
    if (!zip_) throw Fault(path + " is no package: it isn't a whole zip file");
    std::uint64_t total = 0;
    for (std::size_t i = 0; i < zip_->members().size(); ++i) take(i, total);
    if (members_.empty()) throw Fault(path + " holds no files");
  }

  [[nodiscard]] std::vector<std::string> members() const override { return namesOf(members_); }
  [[nodiscard]] bool has(const std::string& member) const override { return members_.contains(member); }

  [[nodiscard]] std::string read(const std::string& member) const override {
    const std::size_t index = members_.at(member);
    const std::uint64_t size = zip_->members()[index].size;
    std::string bytes;
    const bool whole = zip_->extract(index, [&](std::string_view piece) {
      bytes += piece;
      return bytes.size() <= size;
    });
    if (!whole || bytes.size() != size) throw Fault(path_ + " is damaged: " + member + " can't be unpacked");
    return bytes;
  }

 private:
  void take(std::size_t index, std::uint64_t& total) {
    const documents::ZipMember& member = zip_->members()[index];
    const std::string name = text::toUtf8(member.name);
    if (name.empty()) throw Fault(path_ + " is damaged: a member can't be read");
    if (isHostile(name)) throw Fault(path_ + wouldLeave(name));
    if (member.isLink) throw Fault(path_ + " is refused: its member '" + name + "' is a link");
    if (member.isFolder) return;
    total += std::min(member.size, documents::kMostUnpacked);
    if (member.size / documents::kMostRatio > member.packed || total >= documents::kMostUnpacked) {
      throw Fault(path_ + " is refused: '" + name + "' unpacks to more than a package may hold");
    }
    if (!members_.emplace(name, index).second) throw Fault(path_ + " is damaged: it holds '" + name + "' twice");
  }

  std::string path_;
  std::unique_ptr<documents::ZipReader> zip_;
  ByMember<std::size_t> members_;
};

class FolderPackage : public PackageSource {
 public:
  explicit FolderPackage(const fs::path& folder) : folder_(folder) {
    for (auto at = fs::recursive_directory_iterator(folder); at != fs::recursive_directory_iterator(); ++at) {
      // Hidden files are of editors and version control.
      if (at->path().filename().string().starts_with('.')) {
        if (at->is_directory()) at.disable_recursion_pending();
      } else if (at->is_symlink() || at->is_regular_file()) {
        take(*at);
      }
    }
  }
  [[nodiscard]] std::vector<std::string> members() const override { return namesOf(files_); }
  [[nodiscard]] bool has(const std::string& member) const override { return files_.contains(member); }
  [[nodiscard]] std::string read(const std::string& member) const override {
    const fs::path& path = files_.at(member);
    std::ifstream file(path, std::ios::binary);
    std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    if (!file) throw Fault(path.string() + " can't be read");
    return bytes;
  }

 private:
  void take(const fs::directory_entry& entry) {
    const std::string name = entry.path().lexically_relative(folder_).generic_string();
    if (isHostile(name)) throw Fault(folder_.string() + wouldLeave(name));
    if (const std::string fault = linkFault(entry); !fault.empty())
      throw Fault(folder_.string() + " is refused: its member '" + name + "' is a link " + fault);
    const auto [known, isNew] = files_.emplace(name, entry.path());
    if (!isNew) {
      throw Fault(folder_.string() + " is refused: '" + known->first + "' and '" + name +
                  "' are one name in a package");
    }
  }
  // What a package is made of lies in its folder; a link would bring in what happens to stand elsewhere.
  [[nodiscard]] std::string linkFault(const fs::directory_entry& entry) const {
    if (!entry.is_symlink()) return {};
    std::error_code error;
    const fs::path target = fs::canonical(entry.path(), error);
    if (error) return "that leads nowhere";
    if (*target.lexically_relative(fs::canonical(folder_)).begin() == "..") return "that leads out of the folder";
    return fs::is_regular_file(target) ? "" : "to what is no file";
  }

  fs::path folder_;
  ByMember<fs::path> files_;
};

std::vector<std::string> filesOf(const PackageSource& package, const std::string& folder) {
  std::vector<std::string> names;
  for (const std::string& member : package.members()) {
    if (!text::lower(member).starts_with(folder)) continue;
    const std::string name = member.substr(folder.size());
    const std::string lower = text::lower(name);
    const bool isXml = lower.find(".xml") != lower.npos && lower.find(".xmlinfo") == lower.npos;
    if (isXml && name.find('/') == name.npos) names.push_back(name);
  }
  return names;
}

}  // namespace

std::unique_ptr<PackageSource> openPackage(const std::string& path) {
  std::error_code error;
  if (fs::is_directory(path, error)) return std::make_unique<FolderPackage>(path);
  if (!fs::exists(path, error)) throw Fault("there is no package " + path);
  return std::make_unique<ZipPackage>(path);
}

bool isPackage(const std::string& path) {
  std::error_code error;
  return (isPackageName(path) && fs::exists(path, error)) || fs::is_regular_file(fs::path(path) / kPackageIndex, error);
}

void readAll(const PackageSource& package) {
  for (const std::string& member : package.members()) (void)package.read(member);
}

std::string packageFileName(const std::string& path) {
  const fs::path whole = fs::absolute(path).lexically_normal();
  const std::string name = (whole.has_filename() ? whole : whole.parent_path()).filename().string();
  constexpr std::string_view kEnd = ".kvz";
  return name.substr(0, isPackageName(name) ? name.size() - kEnd.size() : name.npos).append(kEnd);
}

bool isPackageName(std::string_view name) { return text::lower(name).ends_with(".kvz"); }

std::vector<std::string> actionLists(const PackageSource& package) { return filesOf(package, "actionlists/"); }
std::vector<std::string> filters(const PackageSource& package) { return filesOf(package, "filters/"); }

namespace {
// The name among `known`; null for none.
const std::string* nameOf(const std::vector<std::string>& known, const std::string& written) {
  for (const std::string& candidate : {written, written + ".xml"}) {
    for (const std::string& name : known) {
      if (text::equalNoCase(name, candidate)) return &name;
    }
  }
  return nullptr;
}
}  // namespace

bool hasName(const std::vector<std::string>& known, const std::string& written) {
  return nameOf(known, written) != nullptr;
}

std::string chosenName(const std::string& written, const std::vector<std::string>& known, const std::string& what) {
  if (const std::string* name = nameOf(known, written)) return *name;
  std::vector<std::string> plain;
  std::string all;
  for (const std::string& name : known) {
    plain.push_back(name.ends_with(".xml") ? name.substr(0, name.size() - 4) : name);
    all += (all.empty() ? "" : ", ") + plain.back();
  }
  const std::string there = known.empty() ? "; the package has none" : "; there are " + all;
  throw Fault("there is no " + what + " '" + written + "'" + didYouMean(written, plain) + there);
}

const std::map<std::string, std::string>& folderMarks() {
  static const std::map<std::string, std::string> marks = {
      {"checklist/readme.txt", "Check lists of this package.\n"},
      {"models/readme.txt", "Models, templates and formats that the action lists use.\n"},
      {"reports/readme.txt", "Reports that the action lists write.\n"},
  };
  return marks;
}

std::vector<std::string> MarkedPackage::members() const {
  std::vector<std::string> all = under_.members();
  for (const auto& [mark, content] : folderMarks())
    if (!under_.has(mark)) all.push_back(mark);
  std::sort(all.begin(), all.end(), LessNoCase());
  return all;
}
bool MarkedPackage::has(const std::string& member) const {
  return under_.has(member) || folderMarks().contains(member);
}
std::string MarkedPackage::read(const std::string& member) const {
  return under_.has(member) ? under_.read(member) : folderMarks().at(member);
}

}  // namespace kelvane

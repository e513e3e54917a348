#include "kelvane/package/source.h"
#include "kelvane/base/native_path.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "documents/package_rules.h"
#include "documents/zip.h"
#include "kelvane/base/fault.h"
#include "kelvane/base/nearest.h"
#include "kelvane/base/places.h"
#include "text/encoding.h"
#include "text/letters.h"
#include "text/pieces.h"

namespace kelvane {
namespace {

namespace fs = std::filesystem;

// As files are found by their names.
struct LessNoCase {
  static std::wstring folded(const std::string& name) { return text::lower(text::fromUtf8(name)); }
  bool operator()(const std::string& a, const std::string& b) const { return folded(a) < folded(b); }
};
template <class T>
using ByMember = std::map<std::string, T, LessNoCase>;

template <class T>
std::vector<std::string> namesOf(const ByMember<T>& members) {
  std::vector<std::string> names;
  for (const auto& [name, value] : members) names.push_back(name);
  return names;
}

// The same whether the members of a zip or the files of a folder are the fault.
std::string refusal(const std::string& path, std::wstring_view fault) {
  return path + " is refused: it " + text::toUtf8(fault);
}

class ZipPackage : public PackageSource {
 public:
  explicit ZipPackage(const std::string& path)
      : path_(path), opened_(documents::ZipReader::openFile(systemPath(path))) {
    if (!opened_) throw Fault(path + " can't be read: " + text::toUtf8(opened_.fault.what));
    takeAll(fs::file_size(nativePath(path)));
  }
  ZipPackage(const std::string& path, std::string bytes)
      : path_(path), bytes_(std::move(bytes)), opened_(documents::ZipReader::openBytes(bytes_)) {
    takeAll(bytes_.size());
  }

  [[nodiscard]] std::vector<std::string> members() const override { return namesOf(members_); }
  [[nodiscard]] bool has(const std::string& member) const override { return members_.contains(member); }

  [[nodiscard]] std::string read(const std::string& member) const override {
    const std::size_t index = members_.at(member);
    const documents::ZipMember& entry = opened_.value->members()[index];
    std::string bytes;
    const bool whole = opened_.value->extract(index, [&](std::string_view piece) {
      bytes += piece;
      return bytes.size() <= entry.size;
    });
    if (whole && bytes.size() == entry.size) return bytes;
    if (entry.obstacle().empty())
      throw MemberFault(path_ + " is damaged: " + member + " can't be unpacked", "it is damaged");
    const std::string why = text::toUtf8(entry.obstacle());
    throw MemberFault(path_ + ": " + member + " can't be unpacked, " + why, why);
  }
  [[nodiscard]] bool isExecutable(const std::string& member) const override {
    return opened_.value->members()[members_.at(member)].isExecutable;
  }

 private:
  // Where it lies once it is unpacked: some packers write the separator of their own system, or parts that lead
  // nowhere.
  static std::string placeOf(const documents::ZipMember& member) {
    std::vector<std::wstring> parts = text::split(text::replaceAll(member.name, L"\\", L"/"), L'/');
    std::erase_if(parts, [](const std::wstring& part) { return part.empty() || part == L"."; });
    return text::toUtf8(text::join(parts, L"/"));
  }
  void takeAll(std::uint64_t size) {
    if (!opened_.value) throw Fault(path_ + " is no package: it isn't a whole zip file");
    const auto& members = opened_.value->members();
    if (const auto fault = documents::packageFault(members, size)) throw Fault(refusal(path_, fault.what));
    for (std::size_t i = 0; i < members.size(); ++i)
      if (!members[i].isFolder) take(i);
    if (members_.empty()) throw Fault(path_ + " holds no files");
  }
  void take(std::size_t index) {
    const std::string name = placeOf(opened_.value->members()[index]);
    if (name.empty()) throw Fault(refusal(path_, L"has a member without a name"));
    if (!members_.emplace(name, index).second) throw Fault(path_ + " is damaged: it holds '" + name + "' twice");
  }

  std::string path_;
  std::string bytes_;  // what is read of them, where no file is
  text::Result<std::unique_ptr<documents::ZipReader>> opened_;
  ByMember<std::size_t> members_;
};

class FolderPackage : public PackageSource {
 public:
  explicit FolderPackage(const fs::path& folder) : folder_(folder) {
    for (auto at = fs::recursive_directory_iterator(folder); at != fs::recursive_directory_iterator(); ++at) {
      // Hidden files are of editors and version control.
      if (machinePath(at->path().filename()).starts_with('.')) {
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
    if (!file) throw MemberFault(machinePath(path) + " can't be read", "it can't be read");
    return bytes;
  }
  [[nodiscard]] bool isExecutable(const std::string& member) const override {
    return (fs::status(files_.at(member)).permissions() & fs::perms::owner_exec) != fs::perms::none;
  }

 private:
  void take(const fs::directory_entry& entry) {
    const std::string name = machinePath(entry.path().lexically_relative(folder_));
    if (name.find('\\') != name.npos)
      throw Fault(refusal(machinePath(folder_), L"has a member with a backslash in its name: " + text::fromUtf8(name)));
    if (!text::isUtf8(name))
      throw Fault(machinePath(folder_) + " is refused: the name of its member '" + name + "' isn't UTF-8");
    documents::ZipMember member;
    member.name = text::fromUtf8(name);
    if (const auto fault = documents::memberFault(member))
      throw Fault(refusal(machinePath(folder_), fault.what + L": " + member.name));
    if (const std::string fault = linkFault(entry); !fault.empty())
      throw Fault(machinePath(folder_) + " is refused: its member '" + name + "' is a link " + fault);
    const auto [known, isNew] = files_.emplace(name, entry.path());
    if (!isNew) {
      throw Fault(machinePath(folder_) + " is refused: '" + known->first + "' and '" + name +
                  "' are one name in a package");
    }
    if (files_.size() > documents::kMostMembers)
      throw Fault(refusal(machinePath(folder_),
                          documents::packageFault(std::vector<documents::ZipMember>(files_.size()), 0).what));
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
  const fs::path place = nativePath(path);
  if (fs::is_directory(place, error)) return std::make_unique<FolderPackage>(place);
  if (!fs::exists(place, error)) throw Fault("there is no package " + path);
  return std::make_unique<ZipPackage>(path);
}

std::unique_ptr<PackageSource> openPackage(const std::string& path, std::string bytes) {
  return std::make_unique<ZipPackage>(path, std::move(bytes));
}

bool isPackage(const std::string& path) {
  std::error_code error;
  const fs::path place = nativePath(path);
  return (isPackageName(path) && fs::exists(place, error)) || fs::is_regular_file(place / kPackageIndex, error);
}

std::string packageFileName(const std::string& path) {
  const fs::path whole = fs::absolute(nativePath(path)).lexically_normal();
  const std::string name = machinePath((whole.has_filename() ? whole : whole.parent_path()).filename());
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
bool MarkedPackage::isExecutable(const std::string& member) const {
  return under_.has(member) && under_.isExecutable(member);
}
std::string MarkedPackage::read(const std::string& member) const {
  return under_.has(member) ? under_.read(member) : folderMarks().at(member);
}

}  // namespace kelvane

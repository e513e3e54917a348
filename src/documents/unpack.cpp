// A package's way from its zip file into its folder.
#include <algorithm>
#include <array>
#include <optional>

#include "core/log.h"
#include "core/state.h"
#include "documents/package.h"
#include "documents/zip.h"
#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/letters.h"
#include "text/pieces.h"

namespace documents {
namespace {

constexpr int kMostAttempts = 5;
constexpr std::wstring_view kPackageEnd = L".kvz";
constexpr std::array<std::wstring_view, 4> kRequired = {L"system\\index.kvane", L"models\\readme.txt",
                                                        L"reports\\readme.txt", L"checklist\\readme.txt"};

void refuseLine(std::wstring_view name, std::wstring_view why) {
  core::creoLog(text::format(L"<KVD> Package refused: %s %s", name, why));
}

// A part of a path that some system takes for the folder above.
bool leadsUp(std::wstring_view part) {
  return part.find_first_not_of(L". ") == std::wstring_view::npos && std::count(part.begin(), part.end(), L'.') > 1;
}

std::wstring_view withoutEnd(std::wstring_view name) {
  if (text::endsWithNoCase(name, kPackageEnd)) name.remove_suffix(kPackageEnd.size());
  return name;
}

// The package's name without the folder of packages; nothing for a name that leads anywhere else. Some systems drop a
// dot at a folder's end, which would then be another package's.
std::optional<std::wstring> plainName(std::wstring_view given) {
  const std::wstring folder = os::folderOf(given);
  const std::wstring name = os::nameOf(given);
  const std::wstring& packages = core::pluginState().kvzPath;
  if (!folder.empty() && !(os::isInside(folder, packages) && os::isInside(packages, folder))) return std::nullopt;
  const std::wstring_view plain = withoutEnd(name);
  if (plain.empty() || plain.ends_with(L'.') || leadsUp(plain) || plain.find(L':') != plain.npos) return std::nullopt;
  return name;
}

// All packages' folders stand side by side in the temp folder, whatever the configuration left in `openKvzPath`.
std::wstring folderFor(std::wstring_view name) {
  auto& state = core::pluginState();
  const std::wstring& temp = state.tempPath;
  if (state.unpackedSubdir.empty()) {
    const bool strictlyInside = os::isInside(state.openKvzPath, temp) && !os::isInside(temp, state.openKvzPath);
    state.unpackedSubdir = strictlyInside ? state.openKvzPath : os::joined(temp, L"open_kvz\\");
  }
  std::wstring folder = state.unpackedSubdir.substr(0, state.unpackedSubdir.size() - 1);
  return folder.append(L"_").append(withoutEnd(name)).append(L"\\");
}

bool requiredAreThere(std::wstring_view folder) {
  return std::all_of(kRequired.begin(), kRequired.end(),
                     [&](std::wstring_view member) { return os::files().exists(os::joined(folder, member)); });
}

// Names the state of the package file that was unpacked.
std::wstring markerName(const os::FileTime& time) {
  return text::format(L"%d_%d_%d_%d_%d_%d", time.year, time.month, time.day, time.hour, time.minute, time.millisecond);
}

// Why a member may not be unpacked; empty when it may.
std::wstring_view memberFault(const ZipMember& member) {
  if (member.name.empty()) return L"has a member without a name";
  if (member.isLink) return L"has a member that is a link:";
  if (member.name.find(L':') != std::wstring::npos) return L"has a member with a drive:";
  const std::wstring path = os::withBackslashes(member.name);
  if (path.starts_with(L'\\')) return L"has a member with an absolute path:";
  const auto parts = text::split(path, L'\\');
  if (std::any_of(parts.begin(), parts.end(), &leadsUp)) return L"has a member that leaves the package's folder:";
  return {};
}

// How much this package may unpack to, or nothing when its own words are beyond that.
std::optional<std::uint64_t> allowance(const std::vector<ZipMember>& members, std::uint64_t fileSize) {
  std::uint64_t size = 0, packed = 0;
  for (const ZipMember& member : members) {
    if (member.size > kMostUnpacked || member.packed > fileSize) return std::nullopt;
    size += member.size;
    packed += member.packed;
    if (size > kMostUnpacked) return std::nullopt;
  }
  // Members may claim the same packed bytes, so the file's own size is a border as well.
  const std::uint64_t most =
      std::min<std::uint64_t>(kMostUnpacked, std::max<std::uint64_t>(1, std::min(packed, fileSize)) * kMostRatio);
  if (size > most) return std::nullopt;
  return most;
}

class Unpacker {
 public:
  Unpacker(ZipReader& zip, std::wstring folder, std::uint64_t most)
      : zip_(zip), folder_(std::move(folder)), room_(most) {}

  void member(std::size_t index) {
    const std::wstring name = os::withBackslashes(zip_.members()[index].name);
    if (!extract(index, os::joined(folder_, name))) {
      core::creoLog(text::format(L"failure while extract file %s", name));
      failed_ = true;
    }
  }
  [[nodiscard]] bool failed() const { return failed_; }
  [[nodiscard]] bool isBomb() const { return bomb_; }

 private:
  bool extract(std::size_t index, const std::wstring& target) {
    if (std::wstring above = os::folderOf(target); above != made_) {
      if (os::files().createFolders(above)) return false;
      made_ = std::move(above);
    }
    // A second member of that name takes the first one's place.
    if (os::files().exists(target) && os::files().remove(target)) return false;
    auto file = os::files().append(target);
    if (!file) return false;
    const bool whole = zip_.extract(index, [&](std::string_view bytes) {
      bomb_ = bytes.size() > room_;
      if (bomb_) return false;
      room_ -= bytes.size();
      return !file.value->write(bytes);
    });
    file.value.reset();
    if (!whole) os::files().remove(target);
    return whole;
  }

  ZipReader& zip_;
  std::wstring folder_, made_;
  std::uint64_t room_;
  bool failed_ = false, bomb_ = false;
};

Unpacked unpackInto(const std::wstring& folder, const std::wstring& package, std::wstring_view name) {
  const auto zip = ZipReader::openFile(package);
  const auto size = os::files().size(package);
  if (!zip || !size) {
    core::creoLog(L"zip file appears invalid...");
    return Unpacked::refused;
  }
  const auto& members = zip->members();
  if (members.empty()) {
    core::creoLog(L"zero files inside zip...");
    return Unpacked::refused;
  }
  if (members.front().name.empty()) {
    core::creoLog(L"can't read stat file...");
    return Unpacked::refused;
  }
  // Every member is judged before the first byte is written.
  for (const ZipMember& member : members) {
    if (const std::wstring_view fault = memberFault(member); !fault.empty()) {
      refuseLine(name, text::format(L"%s %s", fault, member.name));
      return Unpacked::refused;
    }
  }
  const auto most = allowance(members, size.value);
  if (!most) {
    refuseLine(name, L"would unpack to more than is allowed");
    return Unpacked::refused;
  }
  if (os::files().createFolders(folder)) {
    core::creoLog(L"Can't create folder");
    return Unpacked::refused;
  }
  Unpacker unpacker(*zip, folder, *most);
  for (std::size_t i = 0; i < members.size(); ++i) {
    if (!members[i].isFolder) unpacker.member(i);
    if (unpacker.isBomb()) {
      refuseLine(name, L"unpacks to more than is allowed");
      os::files().removeFolder(folder, core::pluginState().tempPath);
      return Unpacked::refused;
    }
  }
  return unpacker.failed() ? Unpacked::incomplete : Unpacked::ready;
}

}  // namespace

Unpacked unpackPackage(std::string_view given, int attempt) {
  auto& state = core::pluginState();
  const auto name = plainName(os::withBackslashes(text::fromUtf8(given)));
  const std::wstring folder = name ? folderFor(*name) : std::wstring();
  if (!name || !os::isInside(folder, state.tempPath)) {
    refuseLine(text::fromUtf8(given), L"isn't a name of a package");
    return Unpacked::refused;
  }
  state.openKvzPath = folder;
  const std::wstring package = os::joined(state.kvzPath, *name);
  const auto time = os::files().modified(package);
  const std::wstring marker = os::joined(folder, markerName(time.value));
  if (time && requiredAreThere(folder) && os::files().exists(marker)) return Unpacked::ready;

  if (const auto fault = os::files().removeFolder(folder, state.tempPath)) {
    core::creoLog(text::format(L"<KVD> Can't remove folder %s", folder));
    return Unpacked::refused;
  }
  Unpacked result = unpackInto(folder, package, *name);
  if (result == Unpacked::refused) return result;
  if (!requiredAreThere(folder)) {
    if (attempt < kMostAttempts) {
      core::creoLog(L"KVD: FAILURE WHILE EXTRACT KVZ FILE, TRY AGAIN.");
      return unpackPackage(given, attempt + 1);
    }
    result = Unpacked::incomplete;
  }
  // What isn't whole gets no marker, so that the next selection unpacks it anew.
  if (result == Unpacked::ready && os::files().write(marker, "f"))
    core::creoLog(text::format(L"<KVD> Can't write file %s", marker));
  return result;
}

}  // namespace documents

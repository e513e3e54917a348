// A package's way from its zip file into its folder.
#include <algorithm>
#include <array>
#include <optional>

#include "core/log.h"
#include "core/state.h"
#include "documents/package_rules.h"
#include "documents/unpack.h"
#include "documents/zip.h"
#include "os/confine.h"
#include "os/executable.h"
#include "os/interrupt.h"
#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/letters.h"

namespace documents {
namespace {

constexpr int kMostAttempts = 5;
constexpr std::wstring_view kPackageEnd = L".kvz";
constexpr std::array<std::wstring_view, 4> kRequired = {L"system\\index.kvane", L"models\\readme.txt",
                                                        L"reports\\readme.txt", L"checklist\\readme.txt"};

void refuseLine(std::wstring_view name, std::wstring_view why) {
  core::creoLog(text::format(L"<KVD> Package refused: %s %s", name, why));
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

class Unpacker {
 public:
  Unpacker(ZipReader& zip, std::wstring folder, std::uint64_t most)
      : zip_(zip), folder_(std::move(folder)), room_(most) {}

  // False: it, and what follows, isn't wanted any more.
  bool member(std::size_t index) {
    if (wasInterrupted_ = os::isInterrupted(); wasInterrupted_) return false;
    const std::wstring name = os::withBackslashes(zip_.members()[index].name);
    if (extract(index, os::joined(folder_, name))) return true;
    if (isBomb_ || wasInterrupted_) return false;
    const std::wstring why = why_.empty() ? std::wstring() : L" (" + why_ + L")";
    core::creoLog(text::format(L"failure while extract file %s", name) + why);
    failed_ = true;
    return true;
  }
  [[nodiscard]] bool failed() const { return failed_; }
  [[nodiscard]] bool isBomb() const { return isBomb_; }
  [[nodiscard]] bool wasInterrupted() const { return wasInterrupted_; }

 private:
  bool extract(std::size_t index, const std::wstring& target) {
    why_ = zip_.members()[index].obstacle();
    if (std::wstring above = os::folderOf(target); above != made_) {
      if (isFault(os::files().createFolders(above))) return false;
      made_ = std::move(above);
    }
    // A second member of that name takes the first one's place.
    if (os::files().exists(target) && isFault(os::files().remove(target))) return false;
    auto file = os::files().append(target);
    if (isFault(file.error)) return false;
    const bool isWhole = zip_.extract(index, [&](std::string_view bytes) {
      isBomb_ = bytes.size() > room_;
      wasInterrupted_ = os::isInterrupted();
      if (isBomb_ || wasInterrupted_) return false;
      room_ -= bytes.size();
      return !isFault(file.value->write(bytes));
    });
    file.value.reset();
    const bool isProgram = zip_.members()[index].isExecutable;
    if (isWhole && !(isProgram && isFault(os::makeExecutable(target)))) return true;
    os::files().remove(target);
    return false;
  }
  // Keeps the reason of a failure of the disk.
  bool isFault(std::error_code error) {
    if (error) why_ = text::fromUtf8(error.message());
    return static_cast<bool>(error);
  }

  ZipReader& zip_;
  std::wstring folder_, made_;
  std::wstring why_;  // the last member isn't unpacked; empty: it is damaged
  std::uint64_t room_;
  bool failed_ = false, isBomb_ = false, wasInterrupted_ = false;
};

Unpacked refusedWith(std::wstring_view line) {
  core::creoLog(line);
  return Unpacked::refused;
}

Unpacked extractAll(ZipReader& zip, const std::wstring& folder, std::wstring_view name, std::uint64_t most) {
  Unpacker unpacker(zip, folder, most);
  const auto& members = zip.members();
  for (std::size_t i = 0; i < members.size(); ++i)
    if (!members[i].isFolder && !unpacker.member(i)) break;
  // What is there has no marker, so that the next selection begins anew.
  if (unpacker.wasInterrupted()) return refusedWith(text::format(L"<KVD> Unpacking was interrupted: %s", name));
  if (unpacker.isBomb()) {
    refuseLine(name, L"unpacks to more than is allowed");
    os::files().removeFolder(folder, core::pluginState().tempPath);
    return Unpacked::refused;
  }
  return unpacker.failed() ? Unpacked::incomplete : Unpacked::ready;
}

Unpacked unpackInto(const std::wstring& folder, const std::wstring& package, std::wstring_view name) {
  const auto opened = ZipReader::openFile(package);
  const auto size = os::files().size(package);
  if (!opened.value || !size) {
    if (!opened) refuseLine(name, text::format(L"can't be read: %s", opened.fault.what));
    return refusedWith(L"zip file appears invalid...");
  }
  const auto& members = opened.value->members();
  if (members.empty()) return refusedWith(L"zero files inside zip...");
  if (members.front().name.empty()) return refusedWith(L"can't read stat file...");
  // Every member is judged before the first byte is written.
  if (const text::Fault fault = packageFault(members, size.value)) {
    refuseLine(name, fault.what);
    return Unpacked::refused;
  }
  if (os::files().createFolders(folder)) return refusedWith(L"Can't create folder");
  return extractAll(*opened.value, folder, name, mostUnpacked(members, size.value));
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
  // Of its own folder a confined list writes the reports alone: what is unpacked there runs again without being
  // unpacked anew.
  if (os::Confine* const confine = os::Confine::inForce()) confine->grants().ownPackage(folder);
  const os::OwnWork unpacking;
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

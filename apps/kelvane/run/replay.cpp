#include "kelvane/run/replay.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <random>

#include "kelvane/base/exit_codes.h"
#include "kelvane/base/fault.h"
#include "kelvane/base/hash.h"
#include "kelvane/base/native_path.h"
#include "kelvane/base/places.h"
#include "kelvane/base/words.h"
#include "kelvane/package/place.h"
#include "kelvane/package/source.h"
#include "kelvane/run/run_trace.h"
#include "kelvane/run/steps.h"
#include "os/confine.h"
#include "os/paths.h"
#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/letters.h"
#include "trace/refused.h"

namespace kelvane {
namespace {

namespace fs = std::filesystem;

// A place of its own for the letters of a run, which goes with it.
class ReplayPlace {
 public:
  ReplayPlace()
      : folder_(machinePath(fs::canonical(fs::temp_directory_path()) / "kelvane-replay-") +
                std::to_string(std::random_device{}())) {
    for (const char* name : {"packages", "temp", "models"}) fs::create_directories(nativePath(folder_) / name);
    os::mounts().set(L'd', folder_ + "/models");
    os::mounts().set(L'p', folder_ + "/packages");
    os::mounts().set(L't', folder_ + "/temp");
    os::mounts().set(L'i', installationFolder());
  }
  ~ReplayPlace() { remove(); }
  ReplayPlace(const ReplayPlace&) = delete;
  ReplayPlace& operator=(const ReplayPlace&) = delete;
  [[nodiscard]] const std::string& folder() const { return folder_; }
  // Packages that were placed, and what is unpacked, lie from now on where they lay when the trace was recorded.
  void moveTo(const trace::OwnPlaces& own) {
    const fs::path shown = nativePath(folder_) / "packages", aside = nativePath(folder_) / "placed";
    fs::rename(shown, aside);
    const fs::path packages = machineOf(own.packages);
    fs::remove_all(packages);
    fs::rename(aside, packages);
    (void)machineOf(os::folderOf(own.unpacked));
  }
  void remove() {
    std::error_code error;  // what stays is in the system's folder for what is temporary
    fs::remove_all(nativePath(folder_), error);
  }

 private:
  // A folder of the trace's under this one, made with all above it.
  [[nodiscard]] fs::path machineOf(const std::wstring& folder) const {
    const std::wstring letter = os::splitDevice(folder).device;
    if (letter.size() != 1 || text::lower(letter[0]) == L'z')
      throw Fault("the folder " + text::toUtf8(folder) +
                  " of the trace has no letter that can stand for another place");
    const std::string own = folder_ + "/letters/" + text::toUtf8(text::lower(letter));
    if (!os::mounts().machine(letter + L":\\").starts_with(folder_)) {
      fs::create_directories(nativePath(own));
      os::mounts().set(letter[0], own);
    }
    fs::path machine = nativePath(os::mounts().machine(folder));
    fs::create_directories(machine);
    return machine;
  }

  os::SurroundingsGuard surroundings_;
  std::string folder_;
};

// The package, or the packages of a folder, where the plug-in will find them.
void place(const std::string& given, const std::string& trace, const ReadTrace& read, ReplayPlace& place,
           Console& console) {
  const trace::Head& head = read.head;
  if (fs::is_directory(nativePath(given)) && !isPackage(given)) {
    for (const std::string& fault : placePackages(given, place.folder())) console.trouble("warning: " + fault);
    return;
  }
  if (!head.package.empty() && packageFileName(given) != head.package)
    throw Fault(trace + ": it is of the package " + head.package + ", not of " + packageFileName(given));
  const std::unique_ptr<PackageSource> source = openPackage(given);
  const std::string member = "actionlists/" + head.list;
  if (!head.list.empty() && !(source->has(member) && hexHash(source->read(member)) == head.listSum))
    console.trouble("warning: the list " + head.list + " isn't the one that was recorded");
  placePackage(given, *source, place.folder(), false);
}

// A line is shown from a little before the place where they part, as it may hold a file's content.
std::string around(const std::string& text, std::size_t place) {
  constexpr std::size_t kBefore = 60, kMost = 300;
  if (text.empty()) return "the end";
  std::size_t from = place > kBefore ? place - kBefore : 0;
  if (text.size() <= kMost) from = 0;
  while (from > 0 && (text[from] & '\xC0') == '\x80') --from;  // whole letters
  std::size_t end = std::min(text.size(), from + kMost);
  while (end < text.size() && (text[end] & '\xC0') == '\x80') ++end;
  return (from > 0 ? "... " : "") + text.substr(from, end - from) + (end < text.size() ? " ..." : "");
}

void tell(Console& console, const std::string& trace, const trace::Difference& difference) {
  const std::string &expected = difference.expected, &got = difference.got;
  const auto parts = std::mismatch(expected.begin(), expected.end(), got.begin(), got.end());
  const auto place = static_cast<std::size_t>(parts.first - expected.begin());
  const std::string in = difference.remark.empty() ? std::string() : ", in " + difference.remark;
  console.trouble("error: " + trace + ":" + std::to_string(difference.line) + ": the plug-in does otherwise" + in);
  console.trouble("  expected  " + around(expected, place));
  console.trouble("  got       " + around(got, place));
}

// What the plug-in asks beside operations, as it was answered when it was recorded.
class ReplaySurroundings {
 public:
  explicit ReplaySurroundings(const trace::Head& head)
      : heard_(std::make_shared<trace::OwnPlaces>(head.own), head.clock) {
    os::doors() = {head.programs, {}};
  }

 private:
  os::DoorsGuard doors_;
  trace::HeardDoors heard_;
};

struct TapeGuard {
  explicit TapeGuard(trace::Tape& tape) { trace::Tape::setCurrent(&tape); }
  ~TapeGuard() { trace::Tape::setCurrent(nullptr); }
  TapeGuard(const TapeGuard&) = delete;
  TapeGuard& operator=(const TapeGuard&) = delete;
};

}  // namespace

int replayTrace(const std::string& package, const std::string& path, Console& console) {
  if (!trace::isHeard()) throw Fault("this program was built without what hears operations");
  ReadTrace read = readTrace(path);
  const bool isConfined = read.head.isConfined;
  ReplayPlace here;
  place(package, path, read, here, console);
  here.moveTo(read.head.own);
  const ReplaySurroundings surroundings(read.head);
  const auto differs = [&](const trace::Difference& difference) {
    tell(console, path, difference);
    here.remove();
    console.flush();
    std::_Exit(kErrors);  // the plug-in stands in the midst of a question that has no answer
  };
  trace::Player player(std::move(read.lines), differs, &steps::play);
  const TapeGuard playing(player);
  std::optional<os::Confine> confine;
  if (isConfined) confine.emplace([&](const os::Asked& asked) { return trace::isRefused(player, asked); });
  try {
    player.play(read.first);
  } catch (const trace::BadLine& fault) {
    throw Fault(path + ": " + fault.what());
  }
  console.result(counted(player.asked(), "question") + " asked as before");
  return kFine;
}

}  // namespace kelvane

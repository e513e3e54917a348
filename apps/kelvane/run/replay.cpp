#include "kelvane/run/replay.h"

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
#include "os/processes.h"
#include "os/surroundings.h"

namespace kelvane {
namespace {

namespace fs = std::filesystem;

// A place of its own for the letters of a run, which goes with it.
class ReplayPlace {
 public:
  ReplayPlace()
      : folder_(machinePath(fs::temp_directory_path() / "kelvane-replay-") + std::to_string(std::random_device{}())) {
    for (const char* name : {"packages", "temp/conf", "models"}) fs::create_directories(nativePath(folder_) / name);
    os::mounts().set(L'd', folder_ + "/models");
    os::mounts().set(L'p', folder_ + "/packages");
    os::mounts().set(L't', folder_ + "/temp");
    os::mounts().set(L'i', installationFolder());
  }
  ~ReplayPlace() { remove(); }
  ReplayPlace(const ReplayPlace&) = delete;
  ReplayPlace& operator=(const ReplayPlace&) = delete;
  [[nodiscard]] const std::string& folder() const { return folder_; }
  void remove() {
    std::error_code error;  // what stays is in the system's folder for what is temporary
    fs::remove_all(nativePath(folder_), error);
  }

 private:
  os::SurroundingsGuard surroundings_;
  std::string folder_;
};

void requireSame(const std::string& package, const std::string& trace, const TraceHead& head) {
  if (!trace::isHeard()) throw Fault("this program was built without what hears operations");
  if (head.isConfined) throw Fault(trace + ": a confined run can't be replayed");
  if (packageFileName(package) != head.package)
    throw Fault(trace + ": it is of the package " + head.package + ", not of " + packageFileName(package));
}

bool hasList(const PackageSource& package, const TraceHead& head) {
  const std::string member = "actionlists/" + head.list;
  return package.has(member) && hexHash(package.read(member)) == head.listSum;
}

void tell(Console& console, const std::string& trace, const trace::Difference& difference) {
  const auto line = [](const std::string& text) { return text.empty() ? std::string("the end") : text; };
  console.trouble("error: " + trace + ":" + std::to_string(difference.line) + ": the plug-in does otherwise");
  console.trouble("  expected  " + line(difference.expected));
  console.trouble("  got       " + line(difference.got));
}

// The plug-in's own surroundings, as they were told to it when it was recorded.
class ReplaySurroundings {
 public:
  explicit ReplaySurroundings(const TraceHead& head) {
    if (os::files().write(L"t:\\conf\\kvd_main.cfg", head.config)) throw Fault("the temp folder can't be written");
    os::setEnvironment(L"KVD_CONF_DIR", L"t:\\");
    os::setEnvironment(L"username", head.user);
    os::surroundings().clock = std::make_shared<os::FixedClock>(head.clock);
    os::doors() = {head.programs, {}};
    heard_.emplace(kOwnPlaces);
  }

 private:
  os::DoorsGuard doors_;
  std::optional<trace::HeardDoors> heard_;
};

struct TapeGuard {
  explicit TapeGuard(trace::Tape& tape) { trace::Tape::setCurrent(&tape); }
  ~TapeGuard() { trace::Tape::setCurrent(nullptr); }
  TapeGuard(const TapeGuard&) = delete;
  TapeGuard& operator=(const TapeGuard&) = delete;
};

}  // namespace

int replayTrace(const std::string& package, const std::string& path, Console& console) {
  ReadTrace read = readTrace(path);
  const std::unique_ptr<PackageSource> source = openPackage(package);
  requireSame(package, path, read.head);
  if (!hasList(*source, read.head))
    console.trouble("warning: the list " + read.head.list + " isn't the one that was recorded");
  ReplayPlace place;
  placePackage(package, *source, place.folder(), false);
  const ReplaySurroundings surroundings(read.head);
  const auto differs = [&](const trace::Difference& difference) {
    tell(console, path, difference);
    place.remove();
    console.flush();
    std::_Exit(kErrors);  // the plug-in stands in the midst of a question that has no answer
  };
  trace::Player player(std::move(read.lines), differs, &steps::play);
  const TapeGuard playing(player);
  try {
    player.play(read.first);
  } catch (const trace::BadLine& fault) {
    throw Fault(path + ": " + fault.what());
  }
  console.result(counted(player.asked(), "question") + " asked as before");
  return kFine;
}

}  // namespace kelvane

#include "plugin/recording.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "core/confinement.h"
#include "core/log.h"
#include "core/state.h"
#include "core/trace_settings.h"
#include "os/confine.h"
#include "os/doors.h"
#include "os/processes.h"
#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/format.h"
#include "trace/doors.h"
#include "trace/head.h"
#include "trace/tape.h"

namespace plugin {
namespace {

constexpr int kMostNames = 16384;

// One session, from the start of the plug-in to its end.
class Recording {
 public:
  Recording() : files_(os::surroundings().files), clock_(os::surroundings().clock) {
    doors_.emplace(own_, std::nullopt);
    trace::Tape::setCurrent(&recorder_);
  }
  ~Recording() { stop(); }
  Recording(const Recording&) = delete;
  Recording& operator=(const Recording&) = delete;

  void decide() {
    const trace::Turn notThePlugins(recorder_, false);
    const core::TraceSettings& settings = core::traceSettings();
    if (settings.folder.empty()) return stop();
    clockAt_ = settings.time;
    own_->packages = core::pluginState().kvzPath;
    own_->unpacked = core::pluginState().tempPath + L"open_kvz_";
    open(settings.folder);
    trace::Head head;
    head.clock = settings.time;
    head.programs = os::doors().programs;
    head.isConfined = core::confinementSettings().isOn || os::Confine::inForce() != nullptr;
    head.own = *own_;
    hearAgain([] {});
    const std::string kept = std::exchange(kept_, {});
    if (file_) write(trace::written(head) + kept);
  }
  // Takes the doors away, and puts them before those that are there behind the function.
  template <class Function>
  void hearAgain(const Function& function) {
    const bool areThere = doors_.has_value();
    doors_.reset();
    function();
    if (areThere) doors_.emplace(own_, clockAt_);
  }
  [[nodiscard]] bool isOn() const { return isOn_; }

 private:
  // The first name of this second under which no file stands.
  void open(const std::wstring& folder) {
    const os::OwnWork own;
    const std::wstring user = os::machineEnvironment(L"username").value_or(L"nouser");
    const std::int64_t now = clock_->seconds();
    std::error_code error = files_->createFolders(folder);
    for (int i = 0; i < kMostNames && !error; ++i) {
      path_ = i == 0 ? text::format(L"%skvd_trace - %s - %lld.trace", folder, user, now)
                     : text::format(L"%skvd_trace - %s - %lld_%i.trace", folder, user, now, i);
      if (files_->exists(path_)) continue;
      auto opened = files_->append(path_);
      file_ = std::move(opened.value);
      if (file_) return;
      error = opened.error;
    }
    if (path_.empty()) path_ = folder;
    fail(error);
  }

  // Nothing more is recorded: what would follow couldn't be played. The doors stay, as one of them may ask just now.
  void fail(std::error_code error) {
    file_.reset();
    isOn_ = false;
    trace::Tape::setCurrent(nullptr);
    trace::recordingFault() = L"The trace " + path_ + L" can't be written: " + text::fromUtf8(error.message());
    core::creoLog(L"<KVD> " + trace::recordingFault());
  }

  void take(std::string_view line) {
    if (!isOn()) return;  // a question that was open when it ended gets its answer
    if (file_)
      write(line);
    else
      kept_ += line;
  }
  void write(std::string_view bytes) {
    const os::OwnWork own;
    const trace::Turn notThePlugins(recorder_, false);
    if (const std::error_code error = file_->write(bytes)) fail(error);
  }

  // The tape itself stays: the plug-in may stand in the midst of a question.
  void stop() {
    isOn_ = false;
    if (trace::Tape::current() == &recorder_) trace::Tape::setCurrent(nullptr);
    doors_.reset();
    kept_.clear();
  }

  std::shared_ptr<os::Files> files_;  // of the machine, and the clock
  std::shared_ptr<os::Clock> clock_;
  std::shared_ptr<trace::OwnPlaces> own_ = std::make_shared<trace::OwnPlaces>();
  trace::Recorder recorder_{[this](std::string_view line) { take(line); }};
  std::optional<trace::HeardDoors> doors_;
  std::unique_ptr<os::Appender> file_;
  std::optional<std::int64_t> clockAt_;
  std::wstring path_;
  bool isOn_ = true;  // also while no doors hear
  std::string kept_;  // while the configuration isn't read
};

std::unique_ptr<Recording>& recording() {
  static std::unique_ptr<Recording> current;
  return current;
}

}  // namespace

void beginRecording() {
  trace::recordingFault().clear();
  if (trace::isHeard() && !trace::Tape::current()) recording() = std::make_unique<Recording>();
}

void decideRecording() {
  if (recording()) return recording()->decide();
  if (core::traceSettings().folder.empty() || trace::isHeard()) return;
  trace::recordingFault() = L"kvd_trace: this plug-in was built without what hears operations";
  core::creoLog(L"<KVD> " + trace::recordingFault());
}

void withoutHearing(void (*function)()) {
  if (!recording()) return function();
  recording()->hearAgain(function);
}

void endRecording() { recording().reset(); }

bool isRecording() { return recording() && recording()->isOn(); }

}  // namespace plugin

// What of a run may leave the process: programs that its list starts, and addresses on the web that it asks.
#pragma once

#include <functional>

#include "core/log.h"
#include "kelvane/run/options.h"
#include "os/doors.h"
#include "os/surroundings.h"
#include "os/web.h"

namespace kelvane {

// A run at a desk opens its report behind it; here that would be one window for each of many runs.
class SilentOpener : public os::Processes {
 public:
  // tell: hears of each program before it starts; may be empty.
  SilentOpener(std::shared_ptr<os::Processes> under, std::function<void(const std::string&)> tell)
      : under_(std::move(under)), tell_(std::move(tell)) {}

 private:
  std::error_code doOpen(std::wstring_view /*path*/) override { return {}; }
  os::Result<int> doRun(std::wstring_view command, std::wstring_view folder) override {
    if (tell_) tell_("ran " + text::toUtf8(command));
    return under_->run(command, folder);
  }
  std::error_code doStart(std::wstring_view program, std::wstring_view arguments, std::wstring_view folder) override {
    if (tell_) tell_("started " + text::toUtf8(program) + " " + text::toUtf8(arguments));
    return under_->start(program, arguments, folder);
  }

  std::shared_ptr<os::Processes> under_;
  std::function<void(const std::string&)> tell_;
};

// Tells of each request before it goes out, without what it carries.
class ToldWeb : public os::Web {
 public:
  ToldWeb(os::Web& under, std::function<void(const std::string&)> tell) : under_(under), tell_(std::move(tell)) {}
  text::Result<std::string> send(const os::WebRequest& request) override {
    const std::string address = os::withoutCredentials(request.url.substr(0, request.url.find('?')));
    tell_((request.body ? "sent POST " : "sent GET ") + address);
    return under_.send(request);
  }

 private:
  os::Web& under_;
  std::function<void(const std::string&)> tell_;
};

// A program reads the clipboard for this one.
class ClosedClipboard : public os::Clipboard {
 public:
  std::optional<std::wstring> text() override {
    core::logWrite(L"This run starts no programs, and one would read the clipboard", core::kError);
    return std::nullopt;
  }
};

// The doors as the options say, until the run is over. A dry run asks nothing and starts nothing; what is refused
// anyway is refused there too.
class RunDoors {
 public:
  // tell: hears of each program and request that goes out; may be empty.
  explicit RunDoors(const RunOptions& options, const std::function<void(const std::string&)>& tell = {})
      : processes_(os::surroundings().processes), clipboard_(os::surroundings().clipboard) {
    const os::Door open = options.dryRun ? os::Door::withheld : os::Door::open;
    os::doors() = {options.noPrograms ? os::Door::closed : open, {}};
    if (options.noWeb) web_ = std::make_shared<os::WithheldWeb>(L"this run asks nothing of the web");
    if (!web_ && options.dryRun) web_ = requests_ = std::make_shared<os::WithheldWeb>(L"");
    if (web_) {
      webGuard_.emplace(web_);
    } else if (tell) {
      webGuard_.emplace(std::make_shared<ToldWeb>(os::web(), tell));
    }
    os::surroundings().processes = std::make_shared<SilentOpener>(processes_, tell);
    if (options.noPrograms) os::surroundings().clipboard = std::make_shared<ClosedClipboard>();
  }
  ~RunDoors() {
    os::surroundings().processes = processes_;
    os::surroundings().clipboard = clipboard_;
  }
  RunDoors(const RunDoors&) = delete;
  RunDoors& operator=(const RunDoors&) = delete;
  // Lines of what a dry run withheld.
  [[nodiscard]] static const std::vector<std::wstring>& withheld() { return os::doors().noted; }
  [[nodiscard]] std::vector<std::string> requests() const {
    return requests_ ? requests_->asked() : std::vector<std::string>();
  }

 private:
  os::DoorsGuard doors_;
  std::shared_ptr<os::Processes> processes_;
  std::shared_ptr<os::Clipboard> clipboard_;
  std::shared_ptr<os::WithheldWeb> web_, requests_;  // none: the web is asked; of a dry run
  std::optional<os::WebGuard> webGuard_;
};

}  // namespace kelvane

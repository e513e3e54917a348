// The confinement of a list that isn't trusted. While a Confine lives, whatever is asked of os::files(), os::web(),
// os::clipboard(), os::processes() and os::setEnvironment() is asked of its grants first, so that no action can forget
// it. What is refused fails with operation_not_permitted and is told, with the grant that it lacks.
#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "os/gate.h"
#include "os/grants.h"
#include "os/surroundings.h"
#include "os/web.h"

namespace os {

// What was asked for and needs a grant.
struct Asked {
  Need need;
  bool isGranted = false;
  std::wstring what;    // "read /etc/passwd", "run mail.cmd -q"
  std::wstring reason;  // of a refusal: "--allow-read=/etc isn't granted"
};

class Confine : public Gate {
 public:
  // tell: is called for each refusal, at once, where the thread asks that makes it; what another one is refused is
  // found in asked() alone, as no log is written from there.
  Confine(Grants grants, std::function<void(const Asked&)> tell);
  // Holds nobody back by itself: what is asked now is refused where isRefused says so, and has been told then. For a
  // run that is played, whose paths are other ones.
  explicit Confine(std::function<bool(const Asked&)> isRefused);
  ~Confine() override;  // the doors are as they were before
  Confine(const Confine&) = delete;
  Confine& operator=(const Confine&) = delete;

  [[nodiscard]] Grants& grants() { return grants_; }
  // Each need once, in the order of its first asking: what a run used of its grants, and what it lacked. To be read
  // when no other thread asks.
  [[nodiscard]] const std::vector<Asked>& asked() const { return asked_; }

  // The one in force; null: nothing is confined.
  static Confine* inForce();

  // ---- for the doors, as Gate's.
  // Whether it is there, and how large and old; so where it may be written, too.
  std::error_code look(std::wstring_view path);
  std::error_code read(std::wstring_view path);
  // place: what it leads to, in the machine's form.
  std::error_code touch(Permission permission, const std::string& place);
  // itself: a link is meant, and not the file that it leads to.
  std::error_code write(std::wstring_view path, bool itself = false);
  std::error_code run(std::wstring_view command, std::wstring_view folder) override;
  std::error_code start(std::wstring_view program, std::wstring_view arguments, std::wstring_view folder) override;
  std::error_code open(std::wstring_view path) override;
  std::error_code set(std::wstring_view variable) override;
  std::error_code ask(std::string_view address);
  std::error_code paste();
  // Steps that are recorded or written for Creo itself, which can start programs and reach any file.
  std::error_code play(std::wstring_view what);

 private:
  friend class OwnWork;
  [[nodiscard]] bool isMaker() const { return std::this_thread::get_id() == maker_; }
  [[nodiscard]] bool isOwnWork() const { return isMaker() && ownWork_ > 0; }
  void note(const Asked& asked);
  std::error_code judged(Grants::Verdict verdict, Need need, std::wstring what, std::wstring_view reason = {});
  std::error_code judgedProgram(std::wstring_view program, std::wstring_view folder, const std::wstring& line);

  Grants grants_;
  std::function<void(const Asked&)> tell_;
  std::function<bool(const Asked&)> isRefused_;  // empty: the grants decide
  std::thread::id maker_ = std::this_thread::get_id();
  std::mutex askedMutex_;
  std::vector<Asked> asked_;
  int ownWork_ = 0;  // of the maker's thread
  Surroundings saved_;
  WebGuard web_;
  Confine* outer_;
};

// The name by which `--allow-run` grants macros and trail files.
constexpr std::wstring_view kMacros = L"macros";
// The name by which it grants that a file is shown by the system's program for it, on every system.
constexpr std::wstring_view kSystemOpener = L"xdg-open";

// What is done while it lives is the program's own work and no list's: unpacking a package, the server's client.
// Nothing that a list's text decides alone may be done under it.
class OwnWork {
 public:
  OwnWork();
  ~OwnWork();
  OwnWork(const OwnWork&) = delete;
  OwnWork& operator=(const OwnWork&) = delete;

 private:
  Confine* confine_;
};

}  // namespace os

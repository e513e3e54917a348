// What the plug-in asks beside Creo: files, programs, the web, the clipboard, the clock, the environment. A tape hears
// these questions as it hears operations, and answers them where it is played.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "os/environment_door.h"
#include "os/files_wrapper.h"
#include "os/surroundings.h"
#include "os/web.h"

namespace trace {

// What stays out of the trace, as who plays it has it himself: the packages' content, and what is unpacked of them.
struct OwnPlaces {
  std::wstring packages;  // their folder, "p:\\": of a file there that is a package, size and content
  std::wstring unpacked;  // how the folders of unpacked packages begin, "t:\\open_kvz_": all that is asked there
  [[nodiscard]] bool isUnpacked(std::wstring_view path) const;
  [[nodiscard]] bool isPackage(std::wstring_view path) const;
};

// What is written stands there by its bytes where it is a short text, else by their number and their SHA-256.
class HeardFiles : public os::FilesWrapper {
 public:
  // under is kept for as long as this lives; own may be filled later.
  HeardFiles(std::shared_ptr<os::Files> under, std::shared_ptr<const OwnPlaces> own)
      : os::FilesWrapper(*under), kept_(std::move(under)), own_(std::move(own)) {}
  bool exists(std::wstring_view path) override;
  bool isFolder(std::wstring_view path) override;
  os::Result<std::uint64_t> size(std::wstring_view path) override;
  os::Result<os::FileTime> modified(std::wstring_view path) override;
  os::Result<std::string> read(std::wstring_view path) override;
  std::error_code readPieces(std::wstring_view path, const std::function<void(std::string_view)>& take) override;
  std::error_code write(std::wstring_view path, std::string_view bytes) override;
  std::error_code create(std::wstring_view path, std::string_view bytes) override;
  os::Result<std::unique_ptr<os::Appender>> append(std::wstring_view path) override;
  std::error_code createFolders(std::wstring_view path) override;
  std::error_code remove(std::wstring_view path) override;
  std::error_code rename(std::wstring_view from, std::wstring_view to) override;
  std::error_code removeFolder(std::wstring_view path, std::wstring_view within) override;
  os::Result<std::vector<os::Entry>> list(std::wstring_view folder) override;

 private:
  // What is unpacked is asked of the disk alone.
  template <class Function, class... Words>
  auto heard(std::string_view name, std::wstring_view path, const Function& real, const Words&... words);
  std::shared_ptr<os::Files> kept_;
  std::shared_ptr<const OwnPlaces> own_;
};

class HeardProcesses : public os::Processes {
 public:
  explicit HeardProcesses(std::shared_ptr<os::Processes> under) : under_(std::move(under)) {}

 private:
  std::error_code doOpen(std::wstring_view path) override;
  os::Result<int> doRun(std::wstring_view command, std::wstring_view folder) override;
  std::error_code doStart(std::wstring_view program, std::wstring_view arguments, std::wstring_view folder) override;
  std::shared_ptr<os::Processes> under_;
};

// Of a request the trace has the address without user and password, and the checksum of what it carries.
class HeardWeb : public os::Web {
 public:
  explicit HeardWeb(os::Web& under) : under_(under) {}
  text::Result<std::string> send(const os::WebRequest& request) override;

 private:
  os::Web& under_;
};

class HeardClipboard : public os::Clipboard {
 public:
  explicit HeardClipboard(std::shared_ptr<os::Clipboard> under) : under_(std::move(under)) {}
  std::optional<std::wstring> text() override;

 private:
  std::shared_ptr<os::Clipboard> under_;
};

// What a run's times come from; where the clock stands still it isn't asked.
class HeardClock : public os::Clock {
 public:
  explicit HeardClock(std::shared_ptr<os::Clock> under) : under_(std::move(under)) {}
  std::int64_t seconds() override;
  void sleep(std::int64_t milliseconds) override;

 private:
  std::shared_ptr<os::Clock> under_;
};

// All of them before those in force, and the environment, until it is gone.
class HeardDoors {
 public:
  // clock: where it stands still; nothing: it is heard, too.
  HeardDoors(std::shared_ptr<const OwnPlaces> own, std::optional<std::int64_t> clock);

 private:
  os::SurroundingsGuard before_;
  os::WebGuard web_;
  os::EnvironmentGuard environment_;
};

}  // namespace trace

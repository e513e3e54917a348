// What the plug-in asks beside Creo: files, programs, the web, the clipboard. A tape hears these questions as it hears
// operations, and answers them where it is played.
#pragma once

#include <memory>
#include <string>

#include "os/files_wrapper.h"
#include "os/surroundings.h"
#include "os/web.h"

namespace trace {

// Files there stay out of the trace: who plays it has files of his own.
struct OwnPlaces {
  std::wstring letters;   // "pi"
  std::wstring unpacked;  // how the folders of packages in the temp folder begin: "t:\\open_kvz_"
  [[nodiscard]] bool has(std::wstring_view path) const;
};

// What is written stands there by its bytes where it is a short text, else by their number and their SHA-256.
class HeardFiles : public os::FilesWrapper {
 public:
  // under is kept for as long as this lives.
  HeardFiles(std::shared_ptr<os::Files> under, OwnPlaces own)
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
  std::shared_ptr<os::Files> kept_;
  OwnPlaces own_;
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

// All of them before those in force, until it is gone.
class HeardDoors {
 public:
  explicit HeardDoors(const OwnPlaces& own);

 private:
  os::SurroundingsGuard before_;
  os::WebGuard web_;
};

}  // namespace trace

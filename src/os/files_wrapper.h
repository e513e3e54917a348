// A Files that forwards everything to another one; wrappers override what they change.
#pragma once

#include <unordered_set>

#include "os/files.h"

namespace os {

class FilesWrapper : public Files {
 public:
  // under is not owned and outlives the wrapper.
  explicit FilesWrapper(Files& under) : under_(under) {}
  bool exists(std::wstring_view path) override { return under_.exists(path); }
  bool isFolder(std::wstring_view path) override { return under_.isFolder(path); }
  Result<std::uint64_t> size(std::wstring_view path) override { return under_.size(path); }
  Result<FileTime> modified(std::wstring_view path) override { return under_.modified(path); }
  Result<std::string> read(std::wstring_view path) override { return under_.read(path); }
  std::error_code write(std::wstring_view path, std::string_view bytes) override { return under_.write(path, bytes); }
  std::error_code create(std::wstring_view path, std::string_view bytes) override { return under_.create(path, bytes); }
  Result<std::unique_ptr<Appender>> append(std::wstring_view path) override { return under_.append(path); }
  std::error_code createFolders(std::wstring_view path) override { return under_.createFolders(path); }
  std::error_code remove(std::wstring_view path) override { return under_.remove(path); }
  std::error_code rename(std::wstring_view from, std::wstring_view to) override { return under_.rename(from, to); }
  std::error_code removeFolder(std::wstring_view path, std::wstring_view within) override {
    return under_.removeFolder(path, within);
  }
  Result<std::vector<Entry>> list(std::wstring_view folder) override { return under_.list(folder); }

 protected:
  Files& under_;
};

// Writing, removing and renaming that would leave one folder is withheld and recorded: the dry run. What was withheld
// reads as if it weren't there, but can be removed and renamed, so that a dry run takes the same road.
class DryFiles : public FilesWrapper {
 public:
  // Changes inside `freeFolder` (the temp folder) are carried out.
  DryFiles(Files& under, std::wstring freeFolder) : FilesWrapper(under), free_(std::move(freeFolder)) {}
  std::error_code write(std::wstring_view path, std::string_view bytes) override;
  std::error_code create(std::wstring_view path, std::string_view bytes) override;
  Result<std::unique_ptr<Appender>> append(std::wstring_view path) override;
  std::error_code createFolders(std::wstring_view path) override;
  std::error_code remove(std::wstring_view path) override;
  std::error_code rename(std::wstring_view from, std::wstring_view to) override;
  std::error_code removeFolder(std::wstring_view path, std::wstring_view within) override;
  // "write d:\x\a.csv", "create d:\x", "remove ...", "rename d:\a to d:\b", in order, each once.
  [[nodiscard]] const std::vector<std::wstring>& withheld() const { return withheld_; }

 private:
  // True, and recorded, for a path outside the free folder.
  bool withhold(std::wstring_view verb, std::wstring_view path);
  // On disk, or withheld: what a run would find.
  bool wouldBeThere(std::wstring_view path);
  std::wstring free_;
  std::vector<std::wstring> withheld_;
  std::unordered_set<std::wstring> seen_;
};

// Arranged faults: places without permission, and a disk that fills.
class FaultyFiles : public FilesWrapper {
 public:
  using FilesWrapper::FilesWrapper;
  // Every change inside the folder fails with permission_denied.
  void denyWrites(std::wstring folder) { denied_.push_back(std::move(folder)); }
  // Every read of a file of that folder fails with permission_denied.
  void denyReads(std::wstring folder) { unreadable_.push_back(std::move(folder)); }
  // After that many more bytes writes fail with no_space_on_device.
  void fillAfter(std::uint64_t bytes) {
    room_ = bytes;
    limited_ = true;
  }
  void heal() {
    denied_.clear();
    unreadable_.clear();
    limited_ = false;
  }
  Result<std::string> read(std::wstring_view path) override;
  std::error_code write(std::wstring_view path, std::string_view bytes) override;
  std::error_code create(std::wstring_view path, std::string_view bytes) override;
  Result<std::unique_ptr<Appender>> append(std::wstring_view path) override;
  std::error_code createFolders(std::wstring_view path) override;
  std::error_code remove(std::wstring_view path) override;
  std::error_code rename(std::wstring_view from, std::wstring_view to) override;
  std::error_code removeFolder(std::wstring_view path, std::wstring_view within) override;

 private:
  friend class FaultyAppender;
  [[nodiscard]] std::error_code change(std::wstring_view path) const;
  std::error_code take(std::uint64_t bytes);
  std::vector<std::wstring> denied_, unreadable_;
  std::uint64_t room_ = 0;
  bool limited_ = false;
};

}  // namespace os

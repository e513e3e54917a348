// The door to the disk with a journal before it: each change is announced, and what it replaces is kept, before it is
// done. Where the journal can't take it the change fails with the journal's error.
#pragma once

#include <functional>

#include "kelvane/journal/journal.h"
#include "os/files_wrapper.h"

namespace kelvane {

class JournalFiles : public os::FilesWrapper {
 public:
  JournalFiles(std::shared_ptr<os::Files> under, Journal& journal, JournalPaths paths)
      : FilesWrapper(*under), owned_(std::move(under)), journal_(journal), paths_(std::move(paths)) {}

  // The temp folder's packages count from now on: what is done there before is unpacking.
  void countTemp() { countsTemp_ = true; }
  // The log that this path gets behind the run, past this door: what is there now is kept. Undo asks nothing of it.
  std::error_code keepLog(const std::wstring& path);
  // Behind the run: a log that it didn't write after all is none of its deeds.
  void settleLog();

  std::error_code write(std::wstring_view path, std::string_view bytes) override;
  std::error_code create(std::wstring_view path, std::string_view bytes) override;
  os::Result<std::unique_ptr<os::Appender>> append(std::wstring_view path) override;
  std::error_code createFolders(std::wstring_view path) override;
  std::error_code remove(std::wstring_view path) override;
  std::error_code rename(std::wstring_view from, std::wstring_view to) override;
  std::error_code removeFolder(std::wstring_view path, std::wstring_view within) override;

 private:
  // The path as the journal writes it; nothing for what it doesn't tell. isNew: nothing has that path.
  [[nodiscard]] std::optional<std::string> counted(std::wstring_view path, bool isNew = false) const;
  std::error_code carryOut(Deed& deed, const std::function<std::error_code()>& change);
  std::error_code announceWrite(std::wstring_view path, std::string_view bytes, Deed& deed);

  std::shared_ptr<os::Files> owned_;
  Journal& journal_;
  JournalPaths paths_;
  bool countsTemp_ = false;
  std::optional<Deed> log_;
};

}  // namespace kelvane

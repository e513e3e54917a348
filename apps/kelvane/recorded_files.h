// Notes which files a run writes.
#pragma once

#include <set>

#include "os/files_wrapper.h"
#include "text/letters.h"

namespace kelvane {

class RecordedFiles : public os::FilesWrapper {
 public:
  explicit RecordedFiles(std::shared_ptr<os::Files> under) : FilesWrapper(*under), owned_(std::move(under)) {}

  std::error_code write(std::wstring_view path, std::string_view bytes) override {
    return noted(path, under_.write(path, bytes));
  }
  os::Result<std::unique_ptr<os::Appender>> append(std::wstring_view path) override {
    auto opened = under_.append(path);
    noted(path, opened.error);
    return opened;
  }
  std::error_code rename(std::wstring_view from, std::wstring_view to) override {
    const std::error_code error = under_.rename(from, to);
    if (!error) forget(from);
    return noted(to, error);
  }
  std::error_code remove(std::wstring_view path) override {
    const std::error_code error = under_.remove(path);
    if (!error) forget(path);
    return error;
  }

  void forgetAll() { written_.clear(); }
  // Each once, in the order of their first writing; what was removed again isn't among them.
  [[nodiscard]] const std::vector<std::wstring>& written() const { return written_; }

 private:
  static auto same(std::wstring_view path) {
    return [path](const std::wstring& other) { return text::equalNoCase(path, other); };
  }
  std::error_code noted(std::wstring_view path, std::error_code error) {
    const bool known = std::any_of(written_.begin(), written_.end(), same(path));
    if (!error && !known) written_.emplace_back(path);
    return error;
  }
  void forget(std::wstring_view path) { std::erase_if(written_, same(path)); }

  std::shared_ptr<os::Files> owned_;
  std::vector<std::wstring> written_;
};

}  // namespace kelvane

// Notes which files a run writes, and keeps its log from being one of them.
#pragma once

#include <functional>
#include <map>
#include <unordered_map>

#include "os/files_wrapper.h"
#include "os/paths.h"
#include "os/surroundings.h"
#include "text/letters.h"

namespace kelvane {

class RecordedFiles : public os::FilesWrapper {
 public:
  explicit RecordedFiles(std::shared_ptr<os::Files> under) : FilesWrapper(*under), owned_(std::move(under)) {}

  // Writing that file is refused (permission_denied): what it is kept for would replace what a list wrote.
  void keep(std::wstring path) { kept_ = std::move(path); }

  // Told of each file that is opened for lines behind those that it has.
  void tellAppends(std::function<void(std::wstring_view)> appends) { appends_ = std::move(appends); }

  std::error_code write(std::wstring_view path, std::string_view bytes) override {
    return isKept(path) ? kRefused : noted(path, under_.write(path, bytes));
  }
  std::error_code create(std::wstring_view path, std::string_view bytes) override {
    return isKept(path) ? kRefused : noted(path, under_.create(path, bytes));
  }
  os::Result<std::unique_ptr<os::Appender>> append(std::wstring_view path) override {
    if (isKept(path)) return {nullptr, kRefused};
    auto opened = under_.append(path);
    noted(path, opened.error);
    if (opened && appends_) appends_(path);
    return opened;
  }
  std::error_code rename(std::wstring_view from, std::wstring_view to) override {
    if (isKept(to)) return kRefused;
    const std::error_code error = under_.rename(from, to);
    if (!error) forget(from);
    return noted(to, error);
  }
  std::error_code remove(std::wstring_view path) override {
    const std::error_code error = under_.remove(path);
    if (!error) forget(path);
    return error;
  }

  void forgetAll() { places_.clear(); }
  // Each once, in the order of their first writing; what was removed again isn't among them.
  [[nodiscard]] std::vector<std::wstring> written() const {
    std::map<std::size_t, std::wstring> ordered;
    for (const auto& [path, place] : places_) ordered.emplace(place, path);
    std::vector<std::wstring> paths;
    paths.reserve(ordered.size());
    for (auto& [place, path] : ordered) paths.push_back(std::move(path));
    return paths;
  }

 private:
  static inline const std::error_code kRefused = std::make_error_code(std::errc::permission_denied);

  // Names first: the machine is asked for few.
  [[nodiscard]] bool isKept(std::wstring_view path) const {
    return !kept_.empty() && text::equalNoCase(os::nameOf(path), os::nameOf(kept_)) &&
           os::mounts().machine(path) == os::mounts().machine(kept_);
  }
  std::error_code noted(std::wstring_view path, std::error_code error) {
    if (!error && places_.try_emplace(os::withBackslashes(path), next_).second) ++next_;
    return error;
  }
  void forget(std::wstring_view path) { places_.erase(os::withBackslashes(path)); }

  std::shared_ptr<os::Files> owned_;
  std::unordered_map<std::wstring, std::size_t, text::HashNoCase, text::EqualNoCase> places_;
  std::size_t next_ = 0;
  std::wstring kept_;
  std::function<void(std::wstring_view)> appends_;
};

}  // namespace kelvane

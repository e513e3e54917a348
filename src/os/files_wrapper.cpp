#include "os/files_wrapper.h"

#include "os/paths.h"

namespace os {
namespace {

const auto kNoSuch = std::make_error_code(std::errc::no_such_file_or_directory);
const auto kDenied = std::make_error_code(std::errc::permission_denied);
const auto kNoSpace = std::make_error_code(std::errc::no_space_on_device);
const auto kTaken = std::make_error_code(std::errc::file_exists);
const auto kRefused = std::make_error_code(std::errc::operation_not_permitted);

class WithheldAppender : public Appender {
 public:
  std::error_code write(std::string_view) override { return {}; }
};

bool isInsideAny(std::wstring_view path, const std::vector<std::wstring>& folders) {
  for (const std::wstring& folder : folders) {
    if (isInside(path, folder)) return true;
  }
  return false;
}

}  // namespace

bool DryFiles::withhold(std::wstring_view verb, std::wstring_view path) {
  if (isInside(path, free_)) return false;
  std::wstring line = std::wstring(verb) + L" " + withBackslashes(path);
  if (seen_.insert(line).second) withheld_.push_back(std::move(line));
  return true;
}

bool DryFiles::wouldBeThere(std::wstring_view path) {
  return under_.exists(path) || seen_.contains(L"write " + withBackslashes(path));
}

std::error_code DryFiles::write(std::wstring_view path, std::string_view bytes) {
  return withhold(L"write", path) ? std::error_code{} : under_.write(path, bytes);
}

std::error_code DryFiles::create(std::wstring_view path, std::string_view bytes) {
  if (wouldBeThere(path)) return kTaken;
  return withhold(L"write", path) ? std::error_code{} : under_.create(path, bytes);
}

Result<std::unique_ptr<Appender>> DryFiles::append(std::wstring_view path) {
  if (withhold(L"write", path)) return {std::make_unique<WithheldAppender>(), {}};
  return under_.append(path);
}

std::error_code DryFiles::createFolders(std::wstring_view path) {
  if (under_.isFolder(path)) return {};
  return withhold(L"create", path) ? std::error_code{} : under_.createFolders(path);
}

std::error_code DryFiles::remove(std::wstring_view path) {
  if (!wouldBeThere(path)) return kNoSuch;
  // Made and taken away again: nothing would come of it.
  const std::wstring made = L"write " + withBackslashes(path);
  if (!under_.exists(path) && seen_.erase(made) > 0) {
    std::erase(withheld_, made);
    return {};
  }
  return withhold(L"remove", path) ? std::error_code{} : under_.remove(path);
}

std::error_code DryFiles::rename(std::wstring_view from, std::wstring_view to) {
  if (!wouldBeThere(from)) return kNoSuch;
  if (isInside(from, free_) && isInside(to, free_)) return under_.rename(from, to);
  // One line for the pair; what makes it leave the free folder may be either side.
  const std::wstring pair = withBackslashes(from) + L" to " + withBackslashes(to);
  if (seen_.insert(L"rename " + pair).second) withheld_.push_back(L"rename " + pair);
  return {};
}

std::error_code DryFiles::removeFolder(std::wstring_view path, std::wstring_view within) {
  if (!isInside(path, within) || isInside(within, path)) return kRefused;
  if (!under_.exists(path)) return {};
  return withhold(L"remove", path) ? std::error_code{} : under_.removeFolder(path, within);
}

// Asks its disk before each write; the disk outlives it.
class FaultyAppender : public Appender {
 public:
  FaultyAppender(FaultyFiles& disk, std::wstring_view path, std::unique_ptr<Appender> under)
      : disk_(disk), path_(path), under_(std::move(under)) {}
  std::error_code write(std::string_view bytes) override {
    if (const auto error = disk_.change(path_)) return error;
    if (const auto error = disk_.take(bytes.size())) return error;
    return under_->write(bytes);
  }

 private:
  FaultyFiles& disk_;
  std::wstring path_;
  std::unique_ptr<Appender> under_;
};

std::error_code FaultyFiles::change(std::wstring_view path) const {
  return isInsideAny(path, denied_) ? kDenied : std::error_code{};
}

std::error_code FaultyFiles::take(std::uint64_t bytes) {
  if (!limited_) return {};
  if (bytes > room_) return kNoSpace;
  room_ -= bytes;
  return {};
}

Result<std::string> FaultyFiles::read(std::wstring_view path) {
  if (isInsideAny(path, unreadable_)) return {{}, kDenied};
  return under_.read(path);
}

std::error_code FaultyFiles::readPieces(std::wstring_view path, const std::function<void(std::string_view)>& take) {
  return isInsideAny(path, unreadable_) ? kDenied : under_.readPieces(path, take);
}

std::error_code FaultyFiles::write(std::wstring_view path, std::string_view bytes) {
  if (const auto error = change(path)) return error;
  if (const auto error = take(bytes.size())) return error;
  return under_.write(path, bytes);
}

std::error_code FaultyFiles::create(std::wstring_view path, std::string_view bytes) {
  if (const auto error = change(path)) return error;
  if (const auto error = take(bytes.size())) return error;
  return under_.create(path, bytes);
}

Result<std::unique_ptr<Appender>> FaultyFiles::append(std::wstring_view path) {
  if (const auto error = change(path)) return {nullptr, error};
  auto under = under_.append(path);
  if (under.error) return under;
  return {std::make_unique<FaultyAppender>(*this, path, std::move(under.value)), {}};
}

std::error_code FaultyFiles::createFolders(std::wstring_view path) {
  const auto error = change(path);
  return error ? error : under_.createFolders(path);
}

std::error_code FaultyFiles::remove(std::wstring_view path) {
  const auto error = change(path);
  return error ? error : under_.remove(path);
}

std::error_code FaultyFiles::rename(std::wstring_view from, std::wstring_view to) {
  if (const auto error = change(from)) return error;
  if (const auto error = change(to)) return error;
  return under_.rename(from, to);
}

std::error_code FaultyFiles::removeFolder(std::wstring_view path, std::wstring_view within) {
  const auto error = change(path);
  return error ? error : under_.removeFolder(path, within);
}

}  // namespace os

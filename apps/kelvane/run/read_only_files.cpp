#include "kelvane/run/read_only_files.h"

#include "core/log.h"
#include "headless/store/folder.h"
#include "os/links.h"
#include "os/paths.h"
#include "os/surroundings.h"
#include "text/format.h"

namespace kelvane {

ReadOnlyFiles::ReadOnlyFiles(std::shared_ptr<os::Files> under)
    : FilesWrapper(*under), owned_(std::move(under)), temp_(os::machineBehindLinks(L"t:\\") + "/") {}

std::error_code ReadOnlyFiles::kept(std::wstring_view path) {
  const std::string real = os::machineBehindLinks(path);
  const bool isDocument =
      headless::documentFile(os::nameOf(path)) || headless::documentFile(os::nameOf(os::mounts().system(real)));
  if (!isDocument || real.starts_with(temp_)) return {};
  if (told_.insert(real).second) core::logWrite(text::format(L"This run writes no models: %s", path), core::kError);
  return std::make_error_code(std::errc::read_only_file_system);
}

std::error_code ReadOnlyFiles::write(std::wstring_view path, std::string_view bytes) {
  const auto error = kept(path);
  return error ? error : under_.write(path, bytes);
}

std::error_code ReadOnlyFiles::create(std::wstring_view path, std::string_view bytes) {
  const auto error = kept(path);
  return error ? error : under_.create(path, bytes);
}

os::Result<std::unique_ptr<os::Appender>> ReadOnlyFiles::append(std::wstring_view path) {
  if (const auto error = kept(path)) return {nullptr, error};
  return under_.append(path);
}

std::error_code ReadOnlyFiles::remove(std::wstring_view path) {
  const auto error = kept(path);
  return error ? error : under_.remove(path);
}

std::error_code ReadOnlyFiles::rename(std::wstring_view from, std::wstring_view to) {
  if (const auto error = kept(from)) return error;
  const auto error = kept(to);
  return error ? error : under_.rename(from, to);
}

}  // namespace kelvane

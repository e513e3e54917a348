#include "kelvane/log/follower.h"
#include "kelvane/base/native_path.h"

#include <filesystem>
#include <fstream>

#include "kelvane/base/places.h"
#include "text/encoding.h"
#include "text/pieces.h"

namespace kelvane {

void LogFollower::begin(const std::wstring& path) {
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(shown(path), error);
  before_ = path;
  offset_ = error ? 0 : size;
}

std::vector<std::wstring> LogFollower::more(const std::wstring& path) {
  if (path != (path_.empty() ? before_ : path_)) offset_ = 0;
  std::ifstream file(nativePath(shown(path)), std::ios::binary);
  file.seekg(static_cast<std::streamoff>(offset_));
  std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  bytes.resize(bytes.rfind('\n') + 1);
  if (bytes.empty()) return {};
  path_ = path;
  offset_ += bytes.size();
  return text::lines(text::fromUtf8(bytes));
}

}  // namespace kelvane

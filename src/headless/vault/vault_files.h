// The files of a vault. In a dry run what would change is kept and read back, so that the run goes on as if it had
// been.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "os/result.h"

namespace headless {

class VaultFiles {
 public:
  explicit VaultFiles(bool withhold) : withhold_(withhold) {}
  [[nodiscard]] bool withholds() const { return withhold_; }
  [[nodiscard]] os::Result<std::string> read(const std::wstring& path) const;
  // Makes the folder above it, too. The disk has it, and all that was written before it, when this returns: what a
  // record of the vault names must be there whatever happens next.
  std::error_code write(const std::wstring& path, std::string_view bytes);
  std::error_code remove(const std::wstring& path);
  // Names of the files in a folder (with its closing backslash), in byte order; none where the folder isn't there.
  [[nodiscard]] std::vector<std::wstring> names(const std::wstring& folder) const;

 private:
  bool withhold_;
  std::map<std::wstring, std::optional<std::string>> withheld_;  // by path; nothing: removed
};

}  // namespace headless

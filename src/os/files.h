// Files and folders: the one door to the disk. Paths are in the system's form; names are found case-blind.
// Errors are std::errc values: no_such_file_or_directory, permission_denied, read_only_file_system,
// no_space_on_device, file_exists, operation_not_permitted (refused by this layer).
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "os/result.h"

namespace os {

struct Entry {
  std::wstring name;
  bool isFolder = false;
  std::uint64_t size = 0;
};

// When a file was last written, UTC.
struct FileTime {
  int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0, millisecond = 0;
};

// An open file that grows at its end. Closing is the destructor's; a failure then has been reported by flush.
class Appender {
 public:
  virtual ~Appender() = default;
  // All bytes reach the operating system before it returns.
  virtual std::error_code write(std::string_view bytes) = 0;
};

class Files {
 public:
  virtual ~Files() = default;
  // True for a file or a folder of that path.
  virtual bool exists(std::wstring_view path) = 0;
  virtual bool isFolder(std::wstring_view path) = 0;
  virtual Result<std::uint64_t> size(std::wstring_view path) = 0;
  virtual Result<FileTime> modified(std::wstring_view path) = 0;
  // The whole content. A folder is is_a_directory.
  virtual Result<std::string> read(std::wstring_view path) = 0;
  // Replaces the whole file: written to a temporary name beside it, flushed to the disk, renamed. After a failure the
  // old file is as it was and no temporary one is left.
  virtual std::error_code write(std::wstring_view path, std::string_view bytes) = 0;
  // The same for a file that isn't there yet. file_exists where the name is taken, be it at this very moment and by
  // another program; what is there stays as it is.
  virtual std::error_code create(std::wstring_view path, std::string_view bytes) = 0;
  // Creates the file where it isn't there. Null with an error where it can't be opened.
  virtual Result<std::unique_ptr<Appender>> append(std::wstring_view path) = 0;
  // The folder and all above it; one that is there is no error.
  virtual std::error_code createFolders(std::wstring_view path) = 0;
  virtual std::error_code remove(std::wstring_view path) = 0;
  // Replaces the target.
  virtual std::error_code rename(std::wstring_view from, std::wstring_view to) = 0;
  // A folder with all it holds. Refuses (operation_not_permitted) a path that isn't strictly inside `within`; follows
  // no link: a link is removed, what it points to stays. A folder that isn't there is no error.
  virtual std::error_code removeFolder(std::wstring_view path, std::wstring_view within) = 0;
  // Sorted by name in byte order; "." and ".." aside. A folder that isn't there: no_such_file_or_directory.
  virtual Result<std::vector<Entry>> list(std::wstring_view folder) = 0;
};

// The machine's own disk, through the mounts of the surroundings (os/surroundings.h).
std::unique_ptr<Files> diskFiles();

}  // namespace os

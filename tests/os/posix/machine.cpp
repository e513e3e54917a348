#include "machine.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include "os/program.h"

namespace os::test {

namespace fs = std::filesystem;

bool makeLink(const fs::path& at, const std::string& target) {
  std::error_code error;
  fs::create_symlink(pathOf(target), at, error);
  return !error;
}
bool isLink(const fs::path& path) { return fs::is_symlink(path); }

void setModified(const fs::path& file, std::int64_t seconds, int milliseconds) {
  const timespec at{seconds, milliseconds * 1'000'000L + 654'321};
  const timespec times[] = {at, at};
  ::utimensat(AT_FDCWD, file.c_str(), times, 0);
}

void setVariable(const char* name, const std::string& value) { ::setenv(name, value.c_str(), 1); }
void takeVariable(const char* name) { ::unsetenv(name); }
std::uint32_t ownProcess() { return static_cast<std::uint32_t>(::getpid()); }

fs::path toldProgram() { return fs::path(programFile()).parent_path() / "kvd_told"; }
void putProgram(const fs::path& at) { fs::copy_file(toldProgram(), at); }

}  // namespace os::test

#include "os/left_files.h"

#include "os/machine_path.h"
#include "os/surroundings.h"
#include "os/temporary_name.h"
#include "os/windows/native.h"
#include "text/encoding.h"

namespace os {
namespace {

// One that may not be asked is there.
bool isAlive(DWORD process) {
  const Handle open(::OpenProcess(SYNCHRONIZE, FALSE, process));
  if (!open) return ::GetLastError() != ERROR_INVALID_PARAMETER;
  return ::WaitForSingleObject(open.get(), 0) == WAIT_TIMEOUT;
}

}  // namespace

void removeLeftTemporaries(std::wstring_view folder) {
  const auto entries = files().list(folder);
  for (const Entry& entry : entries.value) {
    const DWORD process = processOfTemporary(text::toUtf8(entry.name));
    if (process == 0 || isAlive(process)) continue;
    ::DeleteFileW(native(withSlash(mounts().machine(folder)) + text::toUtf8(entry.name)).c_str());
  }
}

}  // namespace os

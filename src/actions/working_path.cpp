#include "actions/working_path.h"

#include "creo/ProUtil.h"
#include "os/paths.h"

namespace actions {

std::wstring wholePath(const std::wstring& path) {
  const bool isWhole = !os::splitDevice(path).device.empty() || path.starts_with(L'/') || path.starts_with(L'\\');
  return isWhole ? path : os::joined(creo::ProDirectoryCurrentGet().value, path);
}

}  // namespace actions

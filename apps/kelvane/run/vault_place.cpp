#include "kelvane/run/vault_place.h"

#include <filesystem>

#include "kelvane/base/fault.h"
#include "kelvane/base/native_path.h"
#include "kelvane/base/places.h"
#include "os/paths.h"
#include "os/processes.h"
#include "text/encoding.h"

namespace kelvane {

headless::VaultConnection connection(const std::string& vault, const std::string& workspace, const std::string& user,
                                     const std::string& models) {
  headless::VaultConnection made;
  (void)systemFolder(vault);
  // By the root, which no other mount of the run changes.
  made.folder = L"z:" + os::withBackslashes(text::fromUtf8(machinePath(std::filesystem::canonical(nativePath(vault)))));
  const std::string folder = machinePath(std::filesystem::canonical(nativePath(models)).filename());
  made.workspace = text::fromUtf8(workspace.empty() ? folder : workspace);
  made.user = user.empty() ? os::environment(L"username").value_or(L"") : text::fromUtf8(user);
  return made;
}

void require(const headless::VaultAnswer& answer, const std::string& whenNotFound) {
  if (answer) return;
  throw Fault(answer.reason.empty() ? whenNotFound : text::toUtf8(answer.reason));
}

}  // namespace kelvane

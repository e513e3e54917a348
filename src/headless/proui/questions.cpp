#include "headless/proui/questions.h"

#include "os/paths.h"
#include "os/surroundings.h"

namespace headless {

bool canBeChosen(FileQuestion::What what, const std::wstring& path) {
  switch (what) {
    case FileQuestion::What::open:
      return os::files().exists(path) && !os::files().isFolder(path);
    case FileQuestion::What::save:
      return !os::nameOf(path).empty() && !os::files().isFolder(path) && os::files().isFolder(os::folderOf(path));
    case FileQuestion::What::folder:
      return os::files().isFolder(path);
  }
  return false;
}

}  // namespace headless

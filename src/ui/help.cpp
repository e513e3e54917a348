#include "ui/help.h"

#include "core/config.h"
#include "core/messages.h"
#include "creo/ProUtil.h"
#include "os/surroundings.h"

namespace ui {

void openHelp() {
  const std::wstring folder = core::normalisedTextPath(creo::ProToolkitApplTextPathGet().value);
  os::processes().open(folder + (core::useGerman() ? L"help\\ol_kvd_help_de.exe" : L"help\\ol_kvd_help_en.exe"));
}

}  // namespace ui

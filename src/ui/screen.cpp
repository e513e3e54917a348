#include "ui/screen.h"

#include "ui/components.h"
#include "ui/main_dialog.h"

namespace ui {

run::Screen screen() {
  return {.open = pressStartEntry,
          .close = toolClose,
          .takePackage = takePackage,
          .takeList = takeList,
          .setHistoryButton = setHistoryButton};
}

}  // namespace ui

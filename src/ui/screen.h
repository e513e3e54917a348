// The main dialog as a run's screen.
#pragma once

#include "run/screen.h"

namespace ui {

run::Screen screen();

}  // namespace ui

#include "run/screen.h"

namespace run {

Screen& screen() {
  static Screen screen;
  return screen;
}

}  // namespace run

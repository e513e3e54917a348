// kelvane-import: reads files of other systems for the program or host that starts it.
#include <cstdio>

#include "headless/geometry/foreign_answer.h"
#include "os/helper.h"

int main() {
  if (os::serveRequests(headless::geometry::answerForeign)) return 0;
  std::fputs("kelvane-import is started by kelvane, which reads STEP and IGES files with it\n", stderr);
  return 2;
}

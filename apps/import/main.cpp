// kelvane-import: reads files of other systems and works out views for the program or host that starts it.
#include <cstdio>

#include "headless/geometry/foreign_answer.h"
#include "os/helper.h"

int main() {
  if (os::serveRequests(headless::geometry::answerForeign)) return 0;
  std::fputs("kelvane-import is started by kelvane, which reads STEP and IGES files and works out views with it\n",
             stderr);
  return 2;
}

// No ended helper is left to this process, which only this system would show.
#include <sys/wait.h>

#include "disk.h"
#include "os/helper.h"

namespace os {
namespace {

using namespace std::chrono_literals;

TEST(HelperChildren, NoneIsLeft) {
  const Disk disk;
  for (const char* program : {"brief", "idle"}) {
    test::putProgram(disk.place(program));
    const auto helper = startHelper(disk.at(program));
    ASSERT_TRUE(helper) << program;
    EXPECT_TRUE(helper.value->ask("x", 500ms).error) << program;
    EXPECT_EQ(-1, ::waitpid(-1, nullptr, WNOHANG)) << program;
  }
  { const auto unused = startHelper(disk.at("idle")); }
  EXPECT_EQ(-1, ::waitpid(-1, nullptr, WNOHANG));
}

}  // namespace
}  // namespace os

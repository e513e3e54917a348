// Helpers against programs of the system that answer, end and never answer.
#include "os/helper.h"

#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/wait.h>

#include "os/program.h"

namespace os {
namespace {

using namespace std::chrono_literals;

// Where a test asks for it this program is the helper: what was asked is the answer, and "end" ends it.
constexpr const char* kEcho = "KVD_TEST_ECHO";
[[maybe_unused]] const bool kServed = [] {
  if (!::getenv(kEcho)) return false;
  serveRequests([](std::string_view request) {
    if (request == "end") std::abort();
    return std::string(request);
  });
  std::_Exit(0);
}();

TEST(Helper, AnswersRequestsOfAnySizeUntilItEnds) {
  ::setenv(kEcho, "1", 1);
  const auto echo = startHelper(programFile());
  ::unsetenv(kEcho);
  ASSERT_TRUE(echo) << echo.error.message();
  const std::string nothing, binary("a\0b\nc", 5), large(10'000'000, 'x');
  for (const std::string& request : {binary, nothing, large, binary}) {
    const auto answer = echo.value->ask(request, 20s);
    ASSERT_TRUE(answer) << answer.error.message();
    EXPECT_TRUE(request == answer.value) << answer.value.size();
  }
  EXPECT_EQ(std::errc::broken_pipe, echo.value->ask("end", 20s).error);
}

TEST(Helper, ThatEndsOrNeverAnswersIsToldAndLeavesNoChild) {
  const struct {
    const char* program;
    std::errc fault;
  } cases[] = {{"/bin/true", std::errc::broken_pipe}, {"/usr/bin/yes", std::errc::timed_out}};
  for (const auto& [program, fault] : cases) {
    const auto helper = startHelper(program);
    ASSERT_TRUE(helper) << program;
    const std::string large(10'000'000, 'x');  // more than the wire holds: nobody reads it
    const auto begun = std::chrono::steady_clock::now();
    EXPECT_EQ(fault, helper.value->ask(large, 200ms).error) << program;
    EXPECT_LT(std::chrono::steady_clock::now() - begun, 10s);
    EXPECT_EQ(std::errc::broken_pipe, helper.value->ask("more", 20s).error) << program;
    EXPECT_EQ(-1, ::waitpid(-1, nullptr, WNOHANG)) << program;
  }
  { const auto unused = startHelper("/usr/bin/yes"); }
  EXPECT_EQ(-1, ::waitpid(-1, nullptr, WNOHANG));
  EXPECT_EQ(std::errc::no_such_file_or_directory, startHelper("/bin/no-such-helper").error);
}

}  // namespace
}  // namespace os

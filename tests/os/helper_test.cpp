// Helpers against programs of the system that answer, end and never answer.
#include "os/helper.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

namespace os {
namespace {

using namespace std::chrono_literals;

TEST(Helper, AnswersRequestsOfAnySize) {
  const auto echo = startHelper("/bin/cat");  // what was asked is the answer
  ASSERT_TRUE(echo) << echo.error.message();
  const std::string nothing, binary("a\0b\nc", 5), large(60'000, 'x');
  for (const std::string& request : {binary, nothing, large, binary}) {
    const auto answer = echo.value->ask(request, 20s);
    ASSERT_TRUE(answer) << answer.error.message();
    EXPECT_EQ(request, answer.value);
  }
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

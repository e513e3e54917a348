// Helpers against programs that answer, end and never answer.
#include "os/helper.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "disk.h"
#include "machine.h"
#include "os/program.h"

namespace os {
namespace {

using namespace std::chrono_literals;

// Where a test asks for it this program is the helper: what was asked is the answer, and "end" ends it.
constexpr const char* kEcho = "KVD_TEST_ECHO";
[[maybe_unused]] const bool kServed = [] {
  if (!std::getenv(kEcho)) return false;
  serveRequests([](std::string_view request) {
    if (request == "end") std::abort();
    return std::string(request);
  });
  std::_Exit(0);
}();

// The program that was put there, whatever its name ends in.
std::string programIn(const Disk& disk, const std::string& name) {
  for (const auto& entry : std::filesystem::directory_iterator(disk.place("")))
    if (entry.path().stem() == name) return test::bytesOf(entry.path());
  return {};
}

TEST(Helper, AnswersRequestsOfAnySizeUntilItEnds) {
  test::setVariable(kEcho, "1");
  const auto echo = startHelper(programFile());
  test::takeVariable(kEcho);
  ASSERT_TRUE(echo) << echo.error.message();
  const std::string nothing, binary("a\0b\nc", 5), large(10'000'000, 'x');
  for (const std::string& request : {binary, nothing, large, binary}) {
    const auto answer = echo.value->ask(request, 20s);
    ASSERT_TRUE(answer) << answer.error.message();
    EXPECT_TRUE(request == answer.value) << answer.value.size();
  }
  EXPECT_EQ(std::errc::broken_pipe, echo.value->ask("end", 20s).error);
}

TEST(Helper, ThatEndsOrNeverAnswersIsTold) {
  const Disk disk;
  const struct {
    const char* program;
    std::errc fault;
  } cases[] = {{"brief", std::errc::broken_pipe}, {"idle", std::errc::timed_out}};
  for (const auto& [program, fault] : cases) {
    test::putProgram(disk.place(program));
    const auto helper = startHelper(programIn(disk, program));
    ASSERT_TRUE(helper) << program;
    const std::string large(10'000'000, 'x');  // more than the wire holds: nobody reads it
    const auto begun = std::chrono::steady_clock::now();
    EXPECT_EQ(fault, helper.value->ask(large, fault == std::errc::timed_out ? 300ms : 20s).error) << program;
    EXPECT_LT(std::chrono::steady_clock::now() - begun, 20s);
    EXPECT_EQ(std::errc::broken_pipe, helper.value->ask("more", 20s).error) << program;
  }
  EXPECT_EQ(std::errc::no_such_file_or_directory, startHelper(disk.at("none")).error);
}

}  // namespace
}  // namespace os

// The finished program as its own process: exit codes, streams, the folders that it finds.
#include <cstdlib>

#include "program/program_fixture.h"
#include "support/folders.h"

namespace test {
namespace {

class FinishedProgram : public ProgramTest {
 protected:
  // A command of the shell in which "kelvane" is the program, run in this test's folder.
  Ended shell(const std::string& command) const {
    file("do.sh", "cd '" + path("") + "'\nkelvane() { '" + binaryFolder() + "/kelvane' \"$@\"; }\n" + command +
                      " > out 2> err\necho $? > code\n");
    if (std::system(("sh '" + path("do.sh") + "'").c_str()) != 0) return {-1, "", "no shell"};
    return {std::stoi(readBytes(path("code"))), readBytes(path("out")), readBytes(path("err"))};
  }
};

TEST_F(FinishedProgram, StreamsAndExitCodesArePartedAsPromised) {
  part(L"PLATE").with(L"MASS", 2.5);
  Ended ended = shell("kelvane models models --param MASS");
  EXPECT_EQ("PLATE.PRT  .1  Double  2.5\n", ended.out);
  EXPECT_EQ("", ended.err);
  EXPECT_EQ(0, ended.code);
  ended = shell("kelvane modles");
  EXPECT_EQ("", ended.out);
  EXPECT_EQ("kelvane: there is no verb 'modles'; did you mean 'models'?\n", ended.err);
  EXPECT_EQ(2, ended.code);
}

TEST_F(FinishedProgram, RunFindsItsInstallationAndRecaps) {
  part(L"PLATE");
  list("keep.xml", "<task type='saveModel' version='3' forPRT='true' forEF='false'/>");
  const Ended ended = shell("unset KELVANE_INSTALLATION\nkelvane run standards keep models");
  EXPECT_EQ("[1/1] PLATE.PRT  unchanged\n", ended.err);
  EXPECT_EQ("done  models=1 changed=0 unchanged=1 skipped=0 failed=0 saved=1  errors=0 warnings=0", recapOf(ended));
  EXPECT_EQ(0, ended.code);
}

}  // namespace
}  // namespace test

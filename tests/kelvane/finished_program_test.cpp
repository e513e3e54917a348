// The finished program as its own process: exit codes, streams, the folders that it finds.
#include <cstdlib>

#include "kelvane/program_fixture.h"
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

int occurrences(const std::string& text, const std::string& piece) {
  int count = 0;
  for (std::size_t at = text.find(piece); at != text.npos; at = text.find(piece, at + 1)) ++count;
  return count;
}

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

// The list sends the signals itself, so that nothing has to be waited for.
TEST_F(FinishedProgram, ASecondSignalEndsAtOnceAndTheLogIsKept) {
  const std::string signal =
      "<task type='runMSDOScommand' version='3' forPRT='true' forEF='false' cmd='kill' args='-TERM $PPID' uncup='false'"
      " waitafter='0'/>";
  const std::string endless =
      "<task type='groupActions' version='3' forPRT='true' forEF='false' reworkMode='4' forcount='2000000000'>"
      "<subtasks>" +
      signal + "</subtasks></task>";
  const std::string say = "<task type='writeToCreoLog' version='3' forPRT='true' forEF='false' message='on'/>";
  part(L"A");
  part(L"B");
  list("twice.xml", signal + say + signal + say);
  list("endless.xml", endless, say);
  Ended ended = shell("kelvane run standards twice models --log kept.log");
  EXPECT_EQ(143, ended.code);
  EXPECT_EQ("", ended.out);
  EXPECT_THAT(ended.err, testing::EndsWith("\nended at once; log  " + path("kept.log") + "\n"));
  EXPECT_EQ(1, occurrences(readBytes(path("kept.log")), "Write To Creo Log")) << "up to the second signal";
  ended = shell("kelvane run standards endless models --log kept.log");
  EXPECT_EQ(143, ended.code);
  EXPECT_THAT(ended.err, testing::HasSubstr("The loop is left after 1 of 2000000000 rounds, as the run is to end"));
  EXPECT_THAT(recapOf(ended), testing::StartsWith("done  models=1 "));
  EXPECT_EQ(1, occurrences(readBytes(path("kept.log")), "F0 Write To Creo Log")) << "Foot ran";
}

}  // namespace
}  // namespace test

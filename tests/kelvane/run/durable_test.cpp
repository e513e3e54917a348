// `kelvane run`: when the disk has what the run wrote, and what the run says where the disk doesn't take it.
#include <fstream>
#include <mutex>
#include <thread>

#include "kelvane/run/run_fixture.h"
#include "os/durable.h"

namespace test {
namespace {

using testing::HasSubstr;

class RunDurable : public RunFixture {
 protected:
  void SetUp() override {
    RunFixture::SetUp();
    for (const wchar_t* name : {L"PLATE", L"ROD", L"SHAFT"}) part(name);
  }
};

// Documents that the disk was asked to take, in place of it; one of them it refuses.
class Flushed {
 public:
  explicit Flushed(std::string refused = "") : refused_(std::move(refused)) {}
  [[nodiscard]] std::string documents() {
    const std::lock_guard guard(mutex_);
    std::string all;
    for (const std::string& name : names_) all += (all.empty() ? "" : " ") + name;
    return all;
  }

 private:
  std::error_code take(const std::string& path) {
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
    const std::string name = std::filesystem::path(path).filename();
    const std::lock_guard guard(mutex_);
    if (name.find(".prt.") != std::string::npos) names_.insert(name);
    return !refused_.empty() && name == refused_ ? std::make_error_code(std::errc::io_error) : std::error_code();
  }

  std::mutex mutex_;
  std::set<std::string> names_;
  std::string refused_;
  os::FlushInstead instead_{[this](const std::string& path) { return take(path); }};
};

TEST_F(RunDurable, EveryWayLeavesTheSameModels) {
  const std::string all = "PLATE.prt.2 ROD.prt.2 SHAFT.prt.2";
  for (const auto& [how, asked] :
       {std::pair("run", all), std::pair("each", std::string()), std::pair("none", std::string())}) {
    Flushed flushed;
    const Ended ended = run("norm", {"--durable", how, "--into", path(how)});
    EXPECT_EQ(0, ended.code) << how << ended.err;
    EXPECT_THAT(recapOf(ended), HasSubstr("changed=3 unchanged=0 skipped=0 failed=0 saved=3")) << how;
    EXPECT_EQ(asked, flushed.documents()) << how << ": under its own name, each once";
  }
  for (const char* how : {"each", "none"}) {
    const Ended differs = kelvane({"diff", path("run"), path(how)});
    EXPECT_EQ(0, differs.code) << differs.out;
  }
}

TEST_F(RunDurable, ADocumentThatTheDiskDidntTakeFailsItsModel) {
  Flushed flushed("ROD.prt.2");
  const Ended ended = run("norm", {"--events", path("events")});
  EXPECT_EQ(1, ended.code);
  EXPECT_THAT(recapOf(ended), HasSubstr("changed=2 unchanged=0 skipped=0 failed=1 saved=2"));
  const std::string line = "ROD.prt.2: the disk didn't take it: Input/output error";
  const std::size_t told = ended.err.find("error: " + line + "\n");
  ASSERT_NE(std::string::npos, told) << ended.err;
  EXPECT_EQ(std::string::npos, ended.err.find(line, told + line.size())) << "once";
  EXPECT_THAT(readBytes(path("events")), HasSubstr(R"({"event":"model","model":"ROD.PRT","fault":")" + line));
}

// The list mails each model as soon as it is saved.
TEST_F(RunDurable, AProgramStartsWhenTheDiskHasWhatWasSaved) {
  const std::string tell =
      "<task type='runMSDOScommand' version='3' forPRT='true' forEF='false' cmd='echo' args='@mdln@ "
      "&gt;&gt;d:/told.txt'"
      " uncup='false'/>";
  list("tell.xml", kAddNorm + kSave + tell);
  {
    Flushed flushed;
    EXPECT_EQ(0, run("tell", {"--into", path("good")}).code);
    EXPECT_EQ("PLATE\nROD\nSHAFT\n", readBytes(path("good/told.txt")));
  }
  Flushed flushed("ROD.prt.2");
  const Ended ended = run("tell");
  EXPECT_EQ(1, ended.code);
  EXPECT_EQ("PLATE\nSHAFT\n", readBytes(models() + "/told.txt"));
  EXPECT_THAT(ended.err, HasSubstr("ROD.prt.2: the disk didn't take it"));
}

// A person is told that a model is saved when the disk has it.
TEST_F(RunDurable, WatchSaysThatAModelIsSavedWhenTheDiskHasIt) {
  Flushed flushed("ROD.prt.2");
  std::istringstream in("open plate.prt\nsave\nopen rod.prt\nsave\n");
  std::ostringstream out, err;
  EXPECT_EQ(1, kelvane::program({"watch", models(), "--durable", "run"}, out, err, {}, &in));
  EXPECT_THAT(err.str(), HasSubstr("saved PLATE.PRT\n"));
  EXPECT_THAT(err.str(), HasSubstr("error: ROD.prt.2: the disk didn't take it: Input/output error\n"));
  EXPECT_THAT(err.str(), testing::Not(HasSubstr("saved ROD.PRT")));
}

}  // namespace
}  // namespace test

// `kelvane run` where something is wrong: requests, models, disks, signals.
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#include <set>
#include <utility>

#include "headless/geometry/foreign_place.h"
#include "headless/geometry/seen.h"
#include "headless/session.h"
#include "kelvane/run/run_fixture.h"
#include "os/files_wrapper.h"
#include "os/lock.h"
#include "os/surroundings.h"
#include "support/step_file.h"
#include "text/pieces.h"

namespace test {
namespace {

using creo::ProMdlType;

class RunTrouble : public RunFixture {};

TEST_F(RunTrouble, WrongRequestsEndBeforeAnythingRuns) {
  part(L"PLATE");
  file("config/readme", "no configuration");
  file("standards/actionlists/empty.xml", "");
  const std::vector<std::pair<std::vector<std::string>, std::string>> cases = {
      {{"norn"}, "there is no list 'norn'; did you mean 'norm'?; there are empty, norm, unsaved"},
      {{"empty"}, "actionlists/empty.xml: it holds no element"},
      {{"norm", "--filter", "x"}, "there is no filter 'x'; the package has none"},
      {{"norm", "--start", "PLAT.PRT"}, "--start: there is no model PLAT.PRT; did you mean 'PLATE.PRT'?"},
      {{"norm", "--set", "kvd_log_levl=8"}, "--set: there is no key 'kvd_log_levl'; did you mean 'kvd_log_level'?"},
      {{"norm", "--select", "/(/"}, "--select: '/(/' is no expression (missing closing parenthesis)"},
      {{"norm", "--set", "kvd_lang=a=b"}, "--set kvd_lang: a value holds no '=' and no line break"},
      {{"norm", "--creo-option", "pro_format_dir"}, "--creo-option pro_format_dir: write NAME=VALUE"},
      {{"norm", "--config", path("config")},
       "--config: " + path("config") + "/kvd_main.cfg can't be read: No such file or directory"},
      {{"norm", "--events", path("none/events")}, "the events' file " + path("none/events") + " can't be written"},
  };
  for (const auto& [words, line] : cases) {
    const Ended ended = run(words[0], {words.begin() + 1, words.end()});
    EXPECT_EQ(2, ended.code) << line;
    EXPECT_EQ("kelvane: " + line + "\n", ended.err);
    EXPECT_EQ(std::vector<std::string>{"PLATE.prt.1"}, filesIn("models")) << line;
  }
}

TEST_F(RunTrouble, AFilterThatCantJudgeIsToldThoughItLeavesNoModel) {
  part(L"PLATE");
  file("standards/filters/cut.xml", "");
  file("standards/filters/odd.xml", "<root><i type=\"hammer\" filtertype=\"false\"/></root>");
  const Ended cut = run("norm", {"--filter", "cut"});
  EXPECT_EQ(2, cut.code);
  EXPECT_EQ("kelvane: filters/cut.xml: it holds no element\n", cut.err);
  const Ended lacking = run("norm", {"--set", "kvd_ext_filter_file=none.xml", "-n"});
  EXPECT_EQ(0, lacking.code);
  EXPECT_THAT(lacking.err,
              testing::HasSubstr("warning: the package has no filter 'none.xml' (kvd_ext_filter_file); none judges\n"));
  const std::pair<std::vector<std::string>, std::string> cases[] = {
      {{"--set", "kvd_ext_filter_file=cut.xml"}, "cut.xml can't be read, no model passes it\n"},
      {{"--filter", "odd"}, "Filter not found: hammer\n"},
  };
  for (const auto& [more, line] : cases) {
    const Ended ended = run("norm", more);
    EXPECT_EQ(1, ended.code) << line;
    EXPECT_THAT(recapOf(ended),
                testing::AllOf(testing::HasSubstr("models=0"), testing::Not(testing::HasSubstr("errors=0"))));
    const std::size_t reported = ended.err.find(line);
    EXPECT_NE(std::string::npos, reported) << ended.err;
    EXPECT_EQ(std::string::npos, ended.err.find(line, reported + 1)) << "once";
    EXPECT_THAT(readBytes(models() + "/kelvane.log"), testing::HasSubstr("(ERR)"));
  }
}

// The log says nothing of such an expression, as of anything else that matches nothing.
TEST_F(RunTrouble, AnExpressionThatDoesntCompileIsToldOnceOnTheConsole) {
  for (const wchar_t* name : {L"PLATE", L"SHAFT"}) part(name).with(L"A", 1.0);
  const std::string filter = "<filter><i type='filename' filtertype='false' filename='/[/'/></filter>";
  list("broken.xml",
       "<task type='deleteModelParameter' version='3' forPRT='true' forEF='true' searchin='1' count='1' "
       "name_0='/(/'>" +
           filter + "</task>" + kAddNorm +
           "<task type='editModelParameterFromFile' version='3' forPRT='true' path='values.csv'/>");
  writeBytes(models() + "/values.csv", "model name;parameter name;value\n/PLATE(/;A;2\n");
  const Ended ended = run("broken");
  EXPECT_EQ(0, ended.code) << ended.err;
  for (const std::string expression : {"'/[/'", "'/(/'", "'/PLATE(/'"}) {
    const std::string line = "warning: the expression " + expression + " doesn't compile (missing ";
    const std::size_t reported = ended.err.find(line);
    ASSERT_NE(std::string::npos, reported) << ended.err;
    EXPECT_EQ(std::string::npos, ended.err.find(line, reported + 1)) << "once";
  }
  EXPECT_THAT(recapOf(ended), testing::HasSubstr("errors=0"));
}

// No model passes for want of an answer, also where the filter asks for the contrary.
TEST_F(RunTrouble, AMatchThatIsGivenUpIsAnErrorOfTheRun) {
  for (const wchar_t* name : {L"PLATE", L"SHAFT"}) part(name).with(L"TEXT", std::wstring(60, L'a').c_str());
  const std::string filtered = text::replaceAll(kAddNorm, "forEF='false'", "forEF='true'");
  list("slow.xml",
       text::replaceAll(filtered, "/>", ">") +
           "<filter><i type='parameter' filtertype='false' param='TEXT' value='/^(a+)+[^a]/'/></filter></task>" +
           kSave);
  const Ended ended = run("slow");
  EXPECT_EQ(1, ended.code) << ended.err;
  EXPECT_THAT(recapOf(ended), testing::HasSubstr("errors=1"));
  for (const std::string& name : filesIn("models"))
    EXPECT_THAT(readBytes(models() + "/" + name), testing::Not(testing::HasSubstr("WN-100"))) << name;
  EXPECT_THAT(ended.err, testing::HasSubstr("The pattern '/^(a+)+[^a]/' was given up on the text '" +
                                            std::string(60, 'a') + "': it takes too many steps"));
}

TEST_F(RunTrouble, AFileThatEndsItsReaderIsNamedAndTheListGoesOn) {
  part(L"PLATE");
  file("wedge.stp", stepTetrahedron());
  list("import.xml",
       "<task type='groupActions' version='3' forPRT='true' forASM='true' forDRW='true' forEF='false' reworkMode='5' "
       "mdlname='z:" +
           path("wedge.stp") + "'><subtasks/></task>" + kAddNorm + kSave);
  const headless::geometry::ForeignPlaceGuard guard;
  headless::geometry::foreignPlace().program = "/bin/true";
  const Ended ended = run("import");
  EXPECT_EQ(1, ended.code);
  EXPECT_THAT(ended.err, testing::HasSubstr("wedge.stp: it ended the program that reads it: the file is damaged\n"));
  EXPECT_THAT(ended.err, testing::HasSubstr("The file that isn't imported: z:" + path("wedge.stp")));
  EXPECT_THAT(recapOf(ended), testing::HasSubstr("changed=1"));
}

TEST_F(RunTrouble, AViewThatCantBeDrawnIsAnErrorOfItsDrawing) {
  viewOfAPin();
  const headless::geometry::ForeignPlaceGuard guard;
  headless::geometry::forgetSeen();
  headless::geometry::foreignPlace().program = "/bin/no-such-program";
  const Ended ended = run("pdf");
  EXPECT_EQ(1, ended.code);
  EXPECT_THAT(ended.err, testing::HasSubstr("error: the view FRONT of PIN.PRT in PLAN.DRW can't be drawn: the program "
                                            "that works it out doesn't start: /bin/no-such-program"));
  EXPECT_THAT(ended.err, testing::HasSubstr("PLAN.DRW  unchanged, 1 error\n"));
}

TEST_F(RunTrouble, PlacesThatCantBeWrittenAreNamed) {
  part(L"PLATE");
  file("plain", "a file where a folder should be");
  const Ended ended = run("norm", {"--log", path("plain/log"), "--collect", path("plain/out")});
  EXPECT_EQ(1, ended.code);
  EXPECT_THAT(ended.err, testing::HasSubstr("error: the log can't be written to " + path("plain/log") + ": "));
  EXPECT_THAT(ended.err,
              testing::HasSubstr("error: --collect: " + path("plain/out/PLATE.prt.2") + " can't be written: "));
  EXPECT_THAT(recapOf(ended), testing::HasSubstr("changed=1"));
  os::setEnvironment(L"XDG_CACHE_HOME", text::fromUtf8(path("plain")));
  EXPECT_THAT(run("norm").err, testing::MatchesRegex("kelvane: the temp folder " + path("plain/kelvane/") +
                                                     "[0-9a-f]+ can't be made: Not a directory\n"));
}

TEST_F(RunTrouble, FolderIsLockedAgainstASecondRun) {
  part(L"PLATE");
  {
    const auto lock = os::lockFile(os::mounts().system(models() + "/.kelvane.lock"));
    ASSERT_TRUE(lock);
    EXPECT_EQ("kelvane: another run works on " + models() + "\n", run("norm").err);
  }
  EXPECT_EQ(0, run("norm").code);
  EXPECT_EQ((std::vector<std::string>{"PLATE.prt.1", "PLATE.prt.2", "kelvane.log"}), filesIn("models"));
}

TEST_F(RunTrouble, TroubledModelsAreCountedAndTheOthersWorked) {
  part(L"GOOD");
  file("models/bad.prt.2", "{\n\"format\": 1,\n\"parameters\": 7}\n");
  assembly(L"RING_A").uses(L"RING_B", ProMdlType::assembly);
  assembly(L"RING_B").uses(L"RING_A", ProMdlType::assembly).uses(L"NUT", ProMdlType::part);
  part(L"FIXED").readOnly();
  const Ended ended = run("norm");
  EXPECT_EQ(1, ended.code);
  EXPECT_EQ("done  models=5 changed=3 unchanged=0 skipped=1 failed=1 saved=3  errors=0 warnings=0", recapOf(ended));
  EXPECT_THAT(ended.err, testing::StartsWith("error: bad.prt.2:3: 'parameters' must be an array\n"
                                             "warning: RING_B.ASM uses NUT.PRT, which isn't there\n"));
  EXPECT_THAT(ended.err, testing::HasSubstr("warning: passed over, as it can't be modified: FIXED.PRT\n"));
}

// A file that is good when the folder is looked through, and damaged from then on.
class DamagedLater : public os::FilesWrapper {
 public:
  DamagedLater(std::shared_ptr<os::Files> under, std::wstring path)
      : FilesWrapper(*under), owned_(std::move(under)), path_(std::move(path)) {}
  os::Result<std::string> read(std::wstring_view path) override {
    auto read = under_.read(path);
    if (path == path_ && ++reads_ > 1) read.value = "{\n\"format\": 1,\n\"parameters\": 7}\n";
    return read;
  }

 private:
  std::shared_ptr<os::Files> owned_;
  std::wstring path_;
  int reads_ = 0;
};

TEST_F(RunTrouble, AModelThatIsDamagedMeanwhileFailsAndTheOthersAreWorked) {
  const std::pair<const wchar_t*, const char*> cases[] = {{L"d:\\A.prt.1", "A.prt.1"},     // the first start
                                                          {L"d:\\C.prt.1", "C.prt.1"},     // another one
                                                          {L"d:\\IN.prt.1", "IN.prt.1"}};  // what the assembly uses
  for (const auto& [damaged, name] : cases) {
    std::filesystem::remove_all(models());
    for (const wchar_t* each : {L"A", L"B", L"C", L"IN"}) part(each);
    assembly(L"TOP").uses(L"IN", ProMdlType::part).uses(L"B", ProMdlType::part);
    const os::SurroundingsGuard guard;
    os::surroundings().files = std::make_shared<DamagedLater>(os::surroundings().files, damaged);
    const Ended ended = run("norm");
    EXPECT_EQ(1, ended.code) << name;
    EXPECT_EQ("done  models=5 changed=4 unchanged=0 skipped=0 failed=1 saved=4  errors=0 warnings=0", recapOf(ended))
        << name << ended.err;
    const std::string line = "error: " + std::string(name) + ":3: 'parameters' must be an array\n";
    EXPECT_EQ(0U, ended.err.find(line)) << ended.err;
    EXPECT_EQ(std::string::npos, ended.err.find(line, 1)) << "once";
  }
}

// Arranges a fault of an operation when the run begins to read its models.
class ArrangingBuffer : public std::stringbuf {
 public:
  explicit ArrangingBuffer(std::string operation) : operation_(std::move(operation)) {}
  int sync() override {
    if (!arranged_ && str().find("reading the models") != std::string::npos) {
      arranged_ = true;
      headless::Session::current().failNext(operation_, creo::ProGeneralError);
    }
    return 0;
  }
  std::streamsize xsputn(const char* bytes, std::streamsize count) override {
    const std::streamsize put = std::stringbuf::xsputn(bytes, count);
    sync();
    return put;
  }
  [[nodiscard]] bool arranged() const { return arranged_; }

 private:
  std::string operation_;
  bool arranged_ = false;
};

TEST_F(RunTrouble, AnyOperationOfTheStartMayFail) {
  part(L"A");
  part(L"B");
  run("norm", {"--read-only", "--events", path("events"), "--operations", "--log", path("log")});
  std::set<std::string> operations;
  std::istringstream lines(readBytes(path("events")));
  for (std::string line; std::getline(lines, line);) {
    constexpr std::string_view kStart = R"({"event":"operation","name":")";
    if (line.starts_with(kStart))
      operations.insert(line.substr(kStart.size(), line.find('"', kStart.size()) - kStart.size()));
  }
  ASSERT_TRUE(operations.contains("ProMenubarMenuAdd") && operations.contains("ProUIDialogCreate"));
  int refused = 0;
  for (const std::string& operation : operations) {
    ArrangingBuffer buffer(operation);
    std::ostream err(&buffer);
    std::ostringstream out;
    const int code = kelvane::program({"run", path("standards"), "norm", models(), "--read-only", "--log", path("log")},
                                      out, err, {false, true});
    EXPECT_TRUE(buffer.arranged()) << operation;
    EXPECT_EQ(nullptr, headless::Session::currentOrNull()) << operation;
    EXPECT_TRUE(code == 0 || code == 1 || code == 2) << operation << " " << code;
    if (code == 2) EXPECT_THAT(buffer.str(), testing::HasSubstr("kelvane: ")) << operation;
    if (code == 0)
      EXPECT_THAT(out.str(), testing::HasSubstr("models=2 ")) << operation << ": nothing is left out silently";
    refused += code == 2 ? 1 : 0;
  }
  EXPECT_GT(refused, 0) << "some of them are needed";
  EXPECT_EQ("done  models=2 changed=2 unchanged=0 skipped=0 failed=0 saved=2  errors=0 warnings=0",
            recapOf(run("norm")));
}

TEST_F(RunTrouble, ReadOnlyModelsAreNotSavedAndTheRunSaysSo) {
  part(L"FIXED").readOnly();
  const Ended listSaves = run("norm", {"--set", "kvd_check_modifyable=0", "--log", path("log")});
  EXPECT_EQ(1, listSaves.code);
  EXPECT_THAT(listSaves.err, testing::HasSubstr("error: FIXED.prt.2: can't be written: the model is read-only\n"));
  EXPECT_EQ("done  models=1 changed=0 unchanged=1 skipped=0 failed=0 saved=0  errors=1 warnings=0 troubled=1",
            recapOf(listSaves));
  EXPECT_THAT(readBytes(path("log")), testing::HasSubstr("Failure while save model"));
  const Ended allSaved = run("unsaved", {"--set", "kvd_check_modifyable=0", "--save", "all"});
  EXPECT_EQ(1, allSaved.code);
  EXPECT_EQ("done  models=1 changed=0 unchanged=0 skipped=0 failed=1 saved=0  errors=0 warnings=0", recapOf(allSaved));
  const Ended leftOut = run("unsaved", {"--save", "all"});
  EXPECT_EQ(0, leftOut.code) << leftOut.err;
  EXPECT_FALSE(std::filesystem::exists(models() + "/FIXED.prt.2"));
}

TEST_F(RunTrouble, ErrorLinesAreShownUpToTheLimitAndMakeTheExitCode) {
  part(L"A");
  part(L"B");
  list("wrong.xml", "<task type='hammer' version='3'/>");
  const Ended ended = run("wrong", {"--max-errors", "1", "-q"});
  EXPECT_EQ(1, ended.code);
  EXPECT_THAT(ended.err, testing::MatchesRegex("error: [^\n]*Filter not found: hammer\n"
                                               "... and [0-9] more error lines in the log\n"));
}

// Names are compared case-blind, "A<B>" means an instance, and a session has one model of a name: what loses isn't
// silently left out.
TEST_F(RunTrouble, ModelsThatCantBeWorkedForTheirNamesAreNamedAndCounted) {
  part(L"PLATE");
  part(L"plate");
  part(L"A<B>");
  part(L"OWN");
  part(L"BOLT").instance(L"OWN");
  assembly(L"TOP").uses(L"OWN<BOLT>", ProMdlType::part).uses(L"BOLT", ProMdlType::part);
  const Ended ended = run("norm");
  EXPECT_EQ(1, ended.code);
  EXPECT_THAT(ended.err, testing::ContainsRegex("error: (PLATE|plate).prt.1: can't be worked: (plate|PLATE).prt.1 has "
                                                "its name and version\n"));
  for (const char* line :
       {"error: A<B>.prt.1: can't be worked: a name of the form A<B> is that of an instance A of B\n",
        "error: TOP.ASM uses OWN.PRT as an instance of BOLT.PRT, and a document has that name: only one of them can be "
        "worked\n"})
    EXPECT_THAT(ended.err, testing::HasSubstr(line));
  EXPECT_THAT(recapOf(ended), testing::StartsWith("done  models=6 changed=3 unchanged=0 skipped=0 failed=3 saved="));
}

// No action notices it, so no log has it.
TEST_F(RunTrouble, AnotherProgramsVersionUnderASaveMakesTheExitCode) {
  part(L"PLATE");
  list("late.xml",
       "<task type='runMSDOScommand' version='3' forPRT='true' forEF='false' cmd='cp' "
       "args='d:/PLATE.prt.1 d:/PLATE.prt.2'/>" +
           kAddNorm + kSave);
  const Ended ended = run("late");
  EXPECT_EQ(1, ended.code);
  EXPECT_THAT(ended.err,
              testing::HasSubstr("error: PLATE.prt.3: another program wrote version 2 meanwhile; its changes "
                                 "aren't in this one\n"));
  EXPECT_THAT(ended.err, testing::HasSubstr("PLATE.PRT  changed, 1 error\n"));
  EXPECT_EQ("done  models=1 changed=1 unchanged=0 skipped=0 failed=0 saved=1  errors=0 warnings=0 troubled=1",
            recapOf(ended));
}

TEST_F(RunTrouble, DiskThatRefusesWritingLeavesTheOldVersionsWhole) {
  part(L"A").with(L"MASS", 1.5);
  const std::string before = readBytes(models() + "/A.prt.1");
  const os::SurroundingsGuard guard;
  const auto disk = os::surroundings().files;
  const auto full = std::make_shared<os::FaultyFiles>(*disk);
  // The program calls the folder d:, as all of a run does.
  full->denyWrites(L"d:\\A.prt.2");
  os::surroundings().files = full;
  const Ended ended = run("norm", {"--log", path("log")});
  EXPECT_EQ(1, ended.code);
  EXPECT_THAT(ended.err, testing::HasSubstr("error: A.prt.2: can't be written: Permission denied\n"));
  EXPECT_THAT(recapOf(ended), testing::StartsWith("done  models=1 changed=0 unchanged=1 skipped=0 failed=0 saved=0"));
  EXPECT_EQ(std::vector<std::string>{"A.prt.1"}, filesIn("models"));
  EXPECT_EQ(before, readBytes(models() + "/A.prt.1"));
}

// Raises a signal when the first model is reported.
class SignallingBuffer : public std::stringbuf {
 public:
  explicit SignallingBuffer(int signal) : signal_(signal) {}
  int sync() override {
    if (!raised_ && str().find("[1/") != std::string::npos) {
      raised_ = true;
      std::raise(signal_);
    }
    return 0;
  }
  std::streamsize xsputn(const char* bytes, std::streamsize count) override {
    const std::streamsize put = std::stringbuf::xsputn(bytes, count);
    sync();
    return put;
  }

 private:
  int signal_;
  bool raised_ = false;
};

TEST_F(RunTrouble, SignalEndsTheRunBetweenTwoModelsAndTheNextOneFinishesIt) {
  for (int i = 0; i < 6; ++i) part(L"P" + std::to_wstring(i));
  const auto ran = [this](int signal) {
    SignallingBuffer buffer(signal);
    std::ostream err(&buffer);
    std::ostringstream out;
    const int code = kelvane::program({"run", path("standards"), "norm", models()}, out, err);
    return Ended{code, out.str(), ""};
  };
  const Ended hungUp = ran(SIGHUP), ended = ran(SIGTERM);
  EXPECT_EQ(129, hungUp.code);
  EXPECT_EQ("done  models=1 changed=1 unchanged=0 skipped=0 failed=0 saved=1  errors=0 warnings=0", recapOf(hungUp));
  EXPECT_EQ(143, ended.code);
  EXPECT_EQ("done  models=2 changed=1 unchanged=0 skipped=1 failed=0 saved=1  errors=0 warnings=0", recapOf(ended));
  EXPECT_EQ("done  models=6 changed=4 unchanged=0 skipped=2 failed=0 saved=4  errors=0 warnings=0",
            recapOf(run("norm")));
}

// Raises a signal when the first file whose path begins so is written: a member of a package, or the log.
class SignallingFiles : public os::FilesWrapper {
 public:
  SignallingFiles(os::Files& under, std::wstring_view begin) : os::FilesWrapper(under), begin_(begin) {}
  os::Result<std::unique_ptr<os::Appender>> append(std::wstring_view path) override {
    if (path.starts_with(begin_) && !std::exchange(raised_, true)) std::raise(SIGTERM);
    return under_.append(path);
  }

 private:
  std::wstring begin_;
  bool raised_ = false;
};

TEST_F(RunTrouble, SignalEndsUnpackingAndTheNextRunBeginsAnew) {
  part(L"PLATE");
  {
    const os::SurroundingsGuard guard;
    const std::shared_ptr<os::Files> disk = os::surroundings().files;
    os::surroundings().files = std::make_shared<SignallingFiles>(*disk, L"t:\\open_kvz_");
    const Ended ended = run("norm");
    EXPECT_EQ(143, ended.code);
    EXPECT_EQ("done  models=0 changed=0 unchanged=0 skipped=0 failed=0 saved=0  errors=0 warnings=0", recapOf(ended));
    EXPECT_EQ("", ended.err);
  }
  EXPECT_EQ("done  models=1 changed=1 unchanged=0 skipped=0 failed=0 saved=1  errors=0 warnings=0",
            recapOf(run("norm")));
}

TEST_F(RunTrouble, SignalInHeadEndsTheRunBeforeTheFirstModelAndRunsFoot) {
  for (int count = 1; count <= 2; ++count) {  // one row is worked where Creo stands, several by their windows
    part(L"P" + std::to_wstring(count));
    file("standards/actionlists/stop.xml",
         "<actionlist><head><task type=\"openCSVReport\" version=\"3\" name=\"stop\" file=\"d:/stop.csv\"/></head>"
         "<body><task type=\"saveModel\" version=\"3\" forPRT=\"true\" forEF=\"false\"/></body><filter/><foot/>"
         "</actionlist>");
    const os::SurroundingsGuard guard;
    const std::shared_ptr<os::Files> disk = os::surroundings().files;
    os::surroundings().files = std::make_shared<SignallingFiles>(*disk, L"d:\\stop");
    const Ended ended = run("stop");
    EXPECT_EQ(143, ended.code);
    EXPECT_EQ("done  models=0 changed=0 unchanged=0 skipped=0 failed=0 saved=0  errors=0 warnings=0", recapOf(ended));
    EXPECT_THAT(readBytes(models() + "/kelvane.log"), testing::HasSubstr("Run Foot actions"));
    EXPECT_FALSE(std::filesystem::exists(models() + "/P1.prt.2"));
  }
}

TEST_F(RunTrouble, AMemberThatCantBeUnpackedIsToldAndTheRunGoesOn) {
  part(L"PLATE");
  file("standards/models/odd.txt", "what is damaged on its way");
  kelvane({"pack", path("standards"), path("torn.kvz")});
  const std::string member = "models/odd.txt";
  std::string torn = readBytes(path("torn.kvz"));
  torn[torn.find(member) + member.size() + 8] ^= 0x55;
  file("torn.kvz", torn);
  const Ended checked = kelvane({"check", path("torn.kvz")});
  EXPECT_EQ(1, checked.code);
  EXPECT_EQ("models/odd.txt: it can't be unpacked: it is damaged\n", checked.out);
  for (const auto& more : {std::vector<std::string>(), std::vector<std::string>{"--again"}}) {
    const Ended ended = runPackage(path("torn.kvz"), "norm", more);
    EXPECT_EQ(1, ended.code);
    EXPECT_THAT(ended.err,
                testing::HasSubstr("error: " + path("torn.kvz") + ": failure while extract file models\\odd.txt\n"));
    EXPECT_THAT(recapOf(ended), testing::AllOf(testing::StartsWith("done  models=1 "),
                                               testing::EndsWith("failed=0 saved=1  errors=1 warnings=0")));
  }
}

// A caller that wants one passed over gets it so, as nohup.
TEST_F(RunTrouble, SignalsThatArePassedOverStaySo) {
  part(L"PLATE");
  const auto old = std::signal(SIGHUP, SIG_IGN);
  SignallingBuffer buffer(SIGHUP);
  std::ostream err(&buffer);
  std::ostringstream out;
  EXPECT_EQ(0, kelvane::program({"run", path("standards"), "norm", models()}, out, err));
  EXPECT_EQ(SIG_IGN, std::signal(SIGHUP, old));
}

TEST_F(RunTrouble, OutputThatIsLostIsAnError) {
  part(L"PLATE");
  std::ostringstream err;
  std::ostream out(nullptr);  // it takes nothing
  EXPECT_EQ(1, kelvane::program({"models", models()}, out, err));
  EXPECT_EQ("kelvane: what came of it can't be written to the standard output\n", err.str());
  const Ended events = run("norm", {"--events", "/dev/full"});
  EXPECT_EQ(1, events.code);
  EXPECT_THAT(events.err, testing::HasSubstr("error: the events can't be written to /dev/full\n"));
}

// A file may grow up to a bound, as under a quota: what goes beyond is an ordinary error, for which nobody dies.
TEST_F(RunTrouble, AFileThatGrowsTooLargeIsAnOrdinaryError) {
  part(L"PLATE");
  rlimit old{};
  ASSERT_EQ(0, ::getrlimit(RLIMIT_FSIZE, &old));
  const rlimit small{64, old.rlim_max};
  ASSERT_EQ(0, ::setrlimit(RLIMIT_FSIZE, &small));
  const Ended ended = kelvane({"new", models(), "BLOCK.PRT", "--box", "1,2,3"});
  ::setrlimit(RLIMIT_FSIZE, &old);
  EXPECT_EQ(2, ended.code);
  EXPECT_THAT(ended.err, testing::HasSubstr("File too large"));
  EXPECT_EQ(std::vector<std::string>{"PLATE.prt.1"}, filesIn("models"));
}

TEST_F(RunTrouble, TemporaryFilesOfDeadRunsGo) {
  part(L"PLATE");
  const std::string alive = ".kvd-" + std::to_string(::getpid()) + "-7.tmp";
  for (const std::string& name : {std::string(".kvd-999999999-0.tmp"), std::string(".kvd-x-0.tmp"), alive})
    file("models/" + name, "half of it");
  EXPECT_EQ(0, run("norm", {"-n"}).code);
  EXPECT_TRUE(std::filesystem::exists(models() + "/.kvd-999999999-0.tmp")) << "what only looks holds no lock";
  EXPECT_EQ(0, run("norm").code);
  EXPECT_THAT(filesIn("models"),
              testing::ElementsAre(alive, ".kvd-x-0.tmp", "PLATE.prt.1", "PLATE.prt.2", "kelvane.log"));
}

TEST_F(RunTrouble, ArgumentsInAnotherOrderAndNamesThatAreNearlyRightAreTold) {
  part(L"BOLT_M8");
  part(L"PLATE");
  const std::string package = path("standards"), order = "' is one; the order is PACKAGE LIST DIR\n";
  const std::string noPackage = "' is no package, '" + package + order;
  const std::vector<std::pair<std::vector<std::string>, std::string>> cases = {
      {{"norm", package, models()}, "kelvane: 'norm" + noPackage},
      {{models(), "norm", package}, "kelvane: '" + models() + noPackage},
      {{package, models(), "norm"}, "kelvane: '" + models() + "' is no list of the package, 'norm" + order},
  };
  for (auto [words, line] : cases) {
    words.insert(words.begin(), "run");
    const Ended ended = kelvane(words);
    EXPECT_EQ(2, ended.code) << line;
    EXPECT_EQ(line, ended.err);
  }
  for (const std::string pattern : {"BOTL*", "BOLT_M8", "bolt-m8.prt"}) {
    EXPECT_THAT(
        run("norm", {"-n", "--select", pattern}).err,
        testing::HasSubstr("warning: --select: no model matches '" + pattern + "'; did you mean 'BOLT_M8.PRT'?\n"));
  }
}

// One cause: the log tells each, console and recap tell it once for each model.
TEST_F(RunTrouble, EqualErrorsOfOneActionAndModelAreOne) {
  part(L"A");
  part(L"B");
  list("twice.xml",
       "<task type='runMSDOScommand' version='3' forPRT='true' forEF='false' cmd='%NONE%' args='%NONE%'/>");
  const Ended ended = run("twice", {"-n", "--log", path("log"), "--events", path("events")});
  EXPECT_EQ(1, ended.code);
  for (const std::string model : {"A", "B"})
    EXPECT_THAT(ended.err, testing::HasSubstr(model + ".PRT - Can't find parameter: NONE  (2 times)\n"));
  const std::string log = readBytes(path("log")), events = readBytes(path("events"));
  const auto count = [](const std::string& text) {
    int found = 0;
    for (std::size_t at = text.find("parameter: NONE"); at != text.npos; at = text.find("parameter: NONE", at + 1))
      ++found;
    return found;
  };
  EXPECT_EQ(4, count(log));
  EXPECT_EQ(4, count(events));
  EXPECT_EQ(2, count(ended.err));
  EXPECT_THAT(recapOf(ended),
              testing::EndsWith("changed=0 unchanged=2 skipped=0 failed=0 saved=0  errors=2 warnings=0 troubled=2"));
  EXPECT_THAT(events, testing::HasSubstr(R"({"event":"model","model":"A.PRT","outcome":"unchanged","errors":1})"));
}

TEST_F(RunTrouble, ExportsThatCantBeWrittenHereMayBeAccepted) {
  file("models/block.prt.1", R"({"format": 1, "solid": {"primitives": [{"type": "box", "size": [8, 4, 2]}]}})");
  file("models/sheet.drw.1", R"({"format": 1})");
  const auto task = [](const std::string& type, const std::string& more) {
    return "<task type='" + type + "' version='3' forPRT='true' forEF='false' folderFromModel='true' file='@mdln@' " +
           more + "/>";
  };
  const std::string sat = task("exportsat", "assemblyConfig='single file' solids='true'");
  list("all.xml", sat + sat + task("exportProductView", "exportas='.ed'") + task("exportpdf", "") +
                      "<task type='exportdwg' version='3' forDRW='true' forEF='false' folderFromModel='true' "
                      "file='@mdln@' sheetoption='1'/>");
  const Ended strict = run("all", {"-n"});
  EXPECT_EQ(1, strict.code);
  EXPECT_THAT(recapOf(strict), testing::HasSubstr("errors=5 warnings=5 troubled=2"));
  EXPECT_THAT(strict.err, testing::HasSubstr("BLOCK.PRT  unchanged, 4 errors\n"));
  for (const std::string language : {"en", "de"}) {
    const Ended ended = run("all", {"--again", "--accept", "SAT,productview", "--accept", "pdf3d,dwg", "--set",
                                    "kvd_lang=" + language, "--log", path("log")});
    EXPECT_EQ(0, ended.code) << ended.err;
    EXPECT_THAT(recapOf(ended), testing::EndsWith("errors=0 warnings=10")) << language;
    EXPECT_THAT(readBytes(path("log")), testing::HasSubstr("2(ERR) B3 Export 3dPDF"));
  }
  const Ended some = run("all", {"-n", "--again", "--accept", "sat"});
  EXPECT_THAT(recapOf(some), testing::HasSubstr("errors=3 warnings=7"));
  EXPECT_EQ("kelvane: --accept: there is no 'satt'; did you mean 'sat'?; there are sat, dwg, productview, pdf3d\n",
            run("all", {"--accept", "satt"}).err);
}

// What a list writes is never what the run itself writes.
TEST_F(RunTrouble, ReportsLeaveModelsAndTheLogAlone) {
  const std::string norm = R"({"format": 1, "parameters": [{"name": "NORM", "type": "string", "value": "WN-1"}]})";
  for (const char* target : {"plate.prt.1", "kelvane.log", "sub\\..\\KELVANE.LOG"}) {
    SCOPED_TRACE(target);
    file("models/plate.prt.1", norm);
    file("models/kelvane.log", "");
    list("report.xml",
         "<task type='writeListReport' version='3' forPRT='true' forEF='false' sel='9' overwrite='true' "
         "file='" +
             std::string(target) + "'/>");
    const Ended ended = run("report", {"--read-only", "--set", "kvd_write_history_in_models=0"});
    EXPECT_EQ(1, ended.code) << ended.err;
    EXPECT_EQ(norm, readBytes(path("models/plate.prt.1")));
    EXPECT_THAT(readBytes(path("models/kelvane.log")), testing::HasSubstr("write list report"));
    EXPECT_THAT(ended.err, testing::HasSubstr(std::string(target).ends_with(".1") ? "is the document of a model"
                                                                                  : "Failure while open report."));
    EXPECT_EQ(1, run("report", {"-n", "--set", "kvd_write_history_in_models=0"}).code);
  }
}

}  // namespace
}  // namespace test

// The program's words, and the verbs that look at packages and logs.
#include "kelvane/program_fixture.h"

namespace test {
namespace {

constexpr const char* kSaveModel = "<task type='saveModel' version='3' forPRT='true' forEF='false'/>";

class Verbs : public ProgramTest {};

TEST_F(Verbs, WrongWordsEndWithOneLineThatSaysWhy) {
  struct Case {
    std::vector<std::string> words;
    std::string line;
  };
  const std::vector<Case> cases = {
      {{}, "kelvane: a verb is missing; 'kelvane -h' tells which there are\n"},
      {{"modles"}, "kelvane: there is no verb 'modles'; did you mean 'models'?\n"},
      {{"lists"}, "kelvane: lists: package is required ('kelvane lists -h' tells more)\n"},
      {{"lists", path("none")}, "kelvane: there is no package " + path("none") + "\n"},
      {{"models", path("none")}, "kelvane: there is no folder " + path("none") + "\n"},
      {{"new", path("x"), "PLATE"}, "kelvane: 'PLATE' is no model's name; it ends in .PRT, .ASM or .DRW\n"},
      {{"new", path("x"), "P.PRT", "--param", "2A=1"},
       "kelvane: '2A' is no parameter's name; at most 31 letters, digits and '_', no digit first\n"},
      {{"new", path("x"), "P.PRT", "--param", "A:Integer=1.5"},
       "kelvane: 'A:Integer=1.5': the value is no whole number\n"},
      {{"new", path("x"), "P.PRT", "--param", "A:Integer=1-2"},
       "kelvane: 'A:Integer=1-2': the value is no whole number\n"},
      {{"new", path("x"), "P.PRT", "--param", "A:Double=1.2.3"}, "kelvane: 'A:Double=1.2.3': the value is no number\n"},
      {{"new", path("x"), "P.PRT", "--param", "A:Real=1"},
       "kelvane: 'A:Real=1': the type is one of String, Integer, Double, Boolean\n"},
      {{"new", path("x"), "P.PRT", "--param", "A=1", "--param", "a=2"}, "kelvane: parameter 'A' is given twice\n"},
      {{"new", path("x"), "P.PRT", "--box", "1,2"}, "kelvane: --box takes three sides over 0, as 80,40,5; not '1,2'\n"},
      {{"new", path("x"), "A.ASM", "--box", "1,2,3"}, "kelvane: --box: only a part has a body of its own\n"},
      {{"new", path("x"), "P.PRT", "--box", "1,2,3", "--step", "a.stp"},
       "kelvane: a part's body is --box or --step, not both\n"},
      {{"new", path("x"), "A.ASM", "--step", "a.stp"}, "kelvane: --step: only a part has a body of its own\n"},
  };
  for (const Case& c : cases) {
    const Ended ended = kelvane(c.words);
    EXPECT_EQ(2, ended.code) << c.line;
    EXPECT_EQ(c.line, ended.err);
    EXPECT_EQ("", ended.out) << c.line;
  }
}

TEST_F(Verbs, OptionsTakeOneValueEachAndLeaveTextsAsTheyStand) {
  part(L"PLATE").with(L"S", L"steel");
  part(L"BOLT");
  list("keep.xml", kSaveModel);
  const Ended run = kelvane({"run", "--start", "PLATE.PRT", "--start", "BOLT.PRT", path("standards"), "keep", models(),
                             "-n", "--set", "KVD_LOG_LEVEL=0", "--set", "kvd_log_level=2"});
  EXPECT_EQ("dry  models=2 changed=0 unchanged=2 skipped=0 failed=0 saved=2  errors=0 warnings=0", recapOf(run))
      << run.err;
  const std::vector<std::pair<std::string, std::string>> texts = {
      {"[a,b] of [@mdln@]", "[a,b] of [PLATE]"}, {"[%S%]", "[steel]"}, {"[\"x\"]", "[\"x\"]"}, {"{a},b", "{a},b"}};
  for (const auto& [text, expected] : texts)
    EXPECT_EQ(expected + "\n", kelvane({"eval", models(), "PLATE.PRT", text}).out);
  EXPECT_EQ("[1,2]\n", kelvane({"eval", "--user", "X=[1,2]", models(), "PLATE.PRT", "%user:X%"}).out);
}

// A terminal would obey them, and a line break would make two lines of one.
TEST_F(Verbs, ControlCharactersAreShownAsEscapes) {
  part(L"PLATE").with(L"S", L"a\x1b[2Jb\nc\u009b\u2028\u202egpj.\ufeff\u200d");
  part(L"BOLT").with(L"S", L"steel");
  const std::string shown = "a\\x1b[2Jb\\nc\\x9b\\u2028\\u202egpj.\\ufeff\u200d";
  EXPECT_EQ("BOLT.PRT   .1  String  steel\nPLATE.PRT  .1  String  " + shown + "\n",
            kelvane({"models", models(), "--param", "S"}).out);
  EXPECT_THAT(kelvane({"show", models(), "PLATE.PRT"}).out, testing::HasSubstr(shown));
  std::filesystem::copy(models(), path("other"));
  part(L"PLATE").with(L"S", L"steel");
  EXPECT_THAT(kelvane({"diff", path("other"), models(), "--color", "always"}).out,
              testing::HasSubstr("\x1b[31m" + shown + "\x1b[0m -> "));
  EXPECT_THAT(kelvane({"models", path("other"), "--param", "S", "--json"}).out,
              testing::HasSubstr("b\\nc\\u009b\\u2028\\u202egpj"));
  // Names of files have any bytes.
  for (const char* name : {"\x9b[2J", "\xc0\x9b[2J", "\xf0\x9f\x9b[2J",
                           "\xff"
                           "1\x9b[2J"})
    EXPECT_THAT(kelvane({"models", path(name)}).err,
                testing::AllOf(testing::HasSubstr("\\x9b[2J' isn't UTF-8"), testing::Not(testing::HasSubstr("\x1b"))));
  file("package/system/index.kvane", "Package\n");
  file(
      "package/models/\xff"
      "1.txt",
      "");
  EXPECT_THAT(kelvane({"check", path("package")}).err, testing::HasSubstr("/\xff"
                                                                          "1.txt' isn't UTF-8"));
  EXPECT_EQ("a\\x1b[2Jb\nc\\x9b\\u2028\\u202egpj.\\ufeff\u200d\n",
            kelvane({"eval", path("other"), "PLATE.PRT", "%S%"}).out);
}

TEST_F(Verbs, HelpNamesEachVerbAndAnExample) {
  EXPECT_THAT(kelvane({"-h"}).out, testing::HasSubstr("\n  run         runs a list on the models of a folder\n"));
  const Ended run = kelvane({"run", "-h"});
  EXPECT_EQ(0, run.code);
  EXPECT_THAT(run.out, testing::HasSubstr("--start NAME.EXT"));
  EXPECT_THAT(run.out, testing::HasSubstr("Example: kelvane run standards.kvz clean models --dry-run"));
  EXPECT_EQ("kelvane 8.0.1.1\n", kelvane({"--version"}).out);
}

TEST_F(Verbs, ListsShowsDescriptionsInColumns) {
  list("title_block.xml", "");
  file("standards/actionlists/title_block.xmlinfo", "Gives every model a title block.\nSkeletons are left out.\n");
  list("count.xml", "");
  file("standards/actionlists/count.xmlinfo", "Counts the models.\n");
  EXPECT_EQ(
      "count.xml        Counts the models.\n"
      "title_block.xml  Gives every model a title block.\n"
      "                 Skeletons are left out.\n",
      kelvane({"lists", path("standards")}).out);
}

TEST_F(Verbs, PackedPackageDependsOnItsContentAlone) {
  std::filesystem::copy(example("packages/standards"), path("a"), std::filesystem::copy_options::recursive);
  std::filesystem::copy(example("packages/standards"), path("b"), std::filesystem::copy_options::recursive);
  std::filesystem::remove_all(path("b/reports"));  // pack adds the readme
  file("b/.git/config", "no part of it");
  std::filesystem::last_write_time(path("b/system/index.kvane"),
                                   std::filesystem::file_time_type::clock::now() - std::chrono::hours(1000));
  EXPECT_EQ(0, kelvane({"pack", path("a"), path("a.kvz")}).code);
  EXPECT_EQ(0, kelvane({"pack", path("b"), path("b")}).code);
  EXPECT_NE("", readBytes(path("a.kvz")));
  EXPECT_EQ(kelvane({"lists", path("a")}).out, kelvane({"lists", path("a.kvz")}).out);
  // Their readme texts are the same, so the bytes are.
  EXPECT_EQ(readBytes(path("a.kvz")), readBytes(path("b.kvz")));
  std::filesystem::remove(path("a/system/index.kvane"));
  EXPECT_EQ("kelvane: the package needs a file system/index.kvane\n", kelvane({"pack", path("a"), path("c")}).err);
}

TEST_F(Verbs, AFolderIsPackedWithoutWhatLiesElsewhere) {
  namespace fs = std::filesystem;
  file("secret.txt", "not of the package");
  fs::create_directories(path("elsewhere"));
  list("a.xml", kSaveModel);
  const std::string refused = "kelvane: " + path("standards") + " is refused: ";
  const std::pair<std::string, std::string> links[] = {
      {"../../secret.txt", "its member 'models/link' is a link that leads out of the folder"},
      {"../../elsewhere", "its member 'models/link' is a link that leads out of the folder"},
      {"../system", "its member 'models/link' is a link to what is no file"},
      {"none", "its member 'models/link' is a link that leads nowhere"},
      {"../system/index.kvane", ""},
  };
  fs::create_directories(path("standards/models"));
  for (const auto& [target, why] : links) {
    fs::remove(path("standards/models/link"));
    fs::create_symlink(target, path("standards/models/link"));
    for (const Ended& ended :
         {kelvane({"pack", path("standards"), path("out.KVZ")}), kelvane({"check", path("standards")})}) {
      EXPECT_EQ(why.empty() ? 0 : 2, ended.code) << ended.out;
      if (!why.empty()) EXPECT_EQ(refused + why + "\n", ended.err);
    }
  }
  EXPECT_EQ(0, kelvane({"check", path("out.KVZ")}).code);
  fs::remove(path("standards/models/link"));
  file("standards/actionlists/A.XML", "");
  EXPECT_THAT(kelvane({"pack", path("standards"), path("b")}).err, testing::HasSubstr("' are one name in a package\n"));
  EXPECT_FALSE(fs::exists(path("b.kvz")));
}

TEST_F(Verbs, PackagesThatCantBeTrustedAreRefused) {
  writeZip(path("up.kvz"), {{"../up.txt", "x"}});
  writeZip(path("letter.kvz"), {{"c:/up.txt", "x"}});
  writeZip(path("bomb.kvz"), {{"bomb", std::string(8 << 20, 'x')}});
  writeZip(path("slash.kvz"), {{"a\\..\\..\\up.txt", "x"}});
  writeZip(path("twice.kvz"), {{"models\\a", "x"}, {"models/A", "y"}});
  // Each would be unpacked over the one that is looked at.
  for (const char* again : {"models//a", "./models/a", "models/./A"}) {
    writeZip(path("dots.kvz"), {{"models/a", "x"}, {again, "y"}});
    EXPECT_THAT(kelvane({"check", path("dots.kvz")}).err, testing::HasSubstr(" is damaged: it holds 'models/"))
        << again;
  }
  writeZip(path("umlaut.kvz"), {{"models/\xC3\xA4", "x"}, {"models/\xC3\x84", "y"}});
  file("text.kvz", "this is no zip file");
  kelvane({"pack", example("packages/standards"), path("whole.kvz")});
  const std::string whole = readBytes(path("whole.kvz"));
  file("short.kvz", whole.substr(0, whole.size() / 2));
  std::string torn = whole;
  torn[whole.find("actionlists/title_block.xml") + 60] ^= 0x55;
  file("torn.kvz", torn);
  const std::map<std::string, std::string> cases = {
      {"up.kvz", " is refused: it has a member that leaves the package's folder: ../up.txt"},
      {"letter.kvz", " is refused: it has a member with a drive: c:/up.txt"},
      {"slash.kvz", " is refused: it has a member that leaves the package's folder: a\\..\\..\\up.txt"},
      {"twice.kvz", " is damaged: it holds 'models/a' twice"},
      {"umlaut.kvz", " is damaged: it holds 'models/\xC3\xA4' twice"},
      {"bomb.kvz", " is refused: it would unpack to more than is allowed"},
      {"text.kvz", " is no package: it isn't a whole zip file"},
      {"short.kvz", " is no package: it isn't a whole zip file"},
      {"torn.kvz", " is damaged: actionlists/title_block.xml can't be unpacked"},
  };
  std::filesystem::create_directories(models());
  for (const auto& [name, why] : cases) {
    const Ended ended = kelvane({"run", path(name), "title_block", models()});
    EXPECT_EQ(2, ended.code) << name;
    EXPECT_EQ("kelvane: " + path(name) + why + "\n", ended.err);
  }
}

TEST_F(Verbs, LogIsATreeOfTheAskedLevel) {
  file("run.log",
       "9 Start\r\n9 work now on A.PRT\r\n0   B0 Save model\r\n0     Filter\r\n1(WAR) B0 Save - A.PRT - odd\r\n"
       "2(ERR) B0 Save - A.PRT - wrong\r\n8(DBG) inner\r\n0   B1 Next\r\n");
  const Ended all = kelvane({"log", path("run.log")});
  EXPECT_EQ(1, all.code);  // it holds an error
  EXPECT_EQ(
      "Start\nwork now on A.PRT\n  B0 Save model\n    Filter\n      (WAR) B0 Save - A.PRT - odd\n"
      "      (ERR) B0 Save - A.PRT - wrong\n  B1 Next\n",
      all.out);
  EXPECT_EQ("Start\nwork now on A.PRT\n      (ERR) B0 Save - A.PRT - wrong\n",
            kelvane({"log", path("run.log"), "--level", "2"}).out);
  EXPECT_THAT(kelvane({"log", path("run.log"), "--color", "always", "--level", "2"}).out,
              testing::HasSubstr("\x1b[31m(ERR) B0 Save - A.PRT - wrong\x1b[0m"));
  file("other.txt", "no log\n");
  EXPECT_EQ(2, kelvane({"log", path("other.txt")}).code);
}

}  // namespace
}  // namespace test

// Which files a list may write, and where paths that aren't whole lead.
#include <filesystem>

#include "actions/action_fixture.h"
#include "core/state.h"
#include "os/surroundings.h"
#include "support/drawings.h"
#include "text/encoding.h"

namespace test {
namespace {

namespace fs = std::filesystem;

class OutputFiles : public ActionTest {
 protected:
  OutputFiles() {
    world.config("kvd_write_history_in_models=0");
    world.part(L"BRACKET").with(L"COLOR", L"red");
  }
  static constexpr const char* kRow = "reporter='r' paramName_0='*' value='true'";
  // Names and bytes of all files below the folder of models.
  [[nodiscard]] std::map<std::string, std::string> files() const {
    std::map<std::string, std::string> all;
    for (const auto& entry : fs::recursive_directory_iterator(world.models()))
      if (entry.is_regular_file() && !entry.is_symlink())
        all[fs::relative(entry.path(), world.models())] = readBytes(entry.path());
    return all;
  }
  static std::size_t count(const std::wstring& text, std::wstring_view piece) {
    std::size_t found = 0;
    for (std::size_t at = 0; (at = text.find(piece, at)) != text.npos; at += piece.size()) ++found;
    return found;
  }
  static std::string openReport(const std::string& file, const std::string& more = "") {
    return task("openCSVReport", "name='r' file='" + file + "' " + more);
  }
};

TEST_F(OutputFiles, OfModelsAndTheLogAreWrittenByNothingElse) {
  writeBytes(world.models() + "/gear.prt", "an old first version");
  writeBytes(world.models() + "/plan.drw.12", "a drawing");
  fs::create_symlink("plan.drw.12", world.models() + "/plan.csv");
  fs::create_symlink("new.asm.3", world.models() + "/new.csv");
  fs::create_symlink(world.temp() + "/LOG - tester - 0.txt", world.models() + "/log.csv");
  const auto before = files();
  world.config("kvd_new_log_file_for_every_run=0");
  const std::string documents[] = {"d:/bracket.prt.1",      "D:\\GEAR.PRT", "gear.prt",
                                   "d:/sub/../plan.drw.12", "d:/new.asm.3", "d:/gear.prt.",
                                   "d:/plan.csv",           "d:/new.csv",   "d:/gear.pr"};  // by its "t" file
  std::string tasks;
  for (const std::string& file : documents) {
    for (const char* mode : {"", "overwrite='true'"}) {
      tasks += openReport(file, mode) + task("writeParameters", kRow);
      tasks += task("writeListReport", "sel='9' file='" + file + "' " + std::string(mode));
    }
    if (file.ends_with(".pr") || file.ends_with(".csv")) continue;
    tasks += task("reportFeatureParameter", "csvFileName='" + file + "'");
    tasks += task("exportProductView", "folder='d:' overwriteExisting='true' exportas='.ed' file='" +
                                           file.substr(file.find_last_of("/\\") + 1) + "'");
  }
  const std::string log = "t:/LOG - tester - 0.txt";
  tasks +=
      openReport(log) + openReport("z:" + world.temp() + log.substr(2), "overwrite='true'") + openReport("d:/log.csv");
  const std::wstring said = run(tasks);
  EXPECT_EQ(before, files());
  EXPECT_EQ(9 * 4U + 6 * 2U, count(said, L"is the document of a model and isn't written over")) << text::toUtf8(said);
  EXPECT_EQ(3U, count(said, L"is the log and isn't written over")) << text::toUtf8(core::pluginState().logFile);
  EXPECT_EQ(9 * 4U + 6 * 2U + 3U, count(said, L"E:"));  // one line each: rows for a refused report go nowhere
}

TEST_F(OutputFiles, CountFromTheWorkingFolder) {
  world.config("kvd_filter_curmod=1");
  writePair(world.models());
  fs::create_directories(world.models() + "/desk/sub");
  const std::string root = "kvd_" + fs::path(world.models()).parent_path().filename().string() + ".csv";
  const std::wstring said =
      run(task("setWorkingDirectory", "path='d:/desk'") + openReport("a.csv") +
              task("writeListReport", "sel='9' file='sub/b.csv'") + task("exportdxf", "folder='' file='c'") +
              task("exportdxf", "folder='sub' file='d'") + task("exportpdf2d", "file='e'") + openReport("/" + root) +
              task("exportdxf", "folder='/' file='" + root + "'") + task("openCSVReport", "name='r'") +
              task("writeParameters", kRow),
          L"PAIR", creo::ProMdlType::drawing);
  for (const char* file : {"a.csv", "sub/b.csv", "c.dxf", "sub/d.dxf", "e.pdf"})
    EXPECT_TRUE(fs::exists(world.models() + "/desk/" + file)) << file << text::toUtf8(said);
  EXPECT_FALSE(fs::exists("/" + root) || fs::exists("/" + root + ".dxf") || fs::exists("/header"));
  EXPECT_EQ(2U, count(said, L" would lie in the root of the disk")) << text::toUtf8(said);
  EXPECT_EQ(1U, count(said, L"E:The attribute 'file' is missing"));
  EXPECT_EQ(3U, count(said, L"E:")) << text::toUtf8(said);
}

TEST_F(OutputFiles, NeedANameOfTheirOwn) {
  world.part(L"BRACKET").with(L"EMPTY", L"");
  const std::wstring said =
      run(task("exportiges", "folder='d:/' file='%EMPTY%' solids='true'") +
          text::replaceAll(task("exportStep", "folder='d:/' file='%EMPTY%.stp'"), "version='3'", "version='4'") +
          openReport("d:/%EMPTY%"));
  EXPECT_EQ(3U, count(said, L"E:The path names no file: 'd:")) << text::toUtf8(said);
  EXPECT_EQ(1U, files().size());
}

}  // namespace
}  // namespace test

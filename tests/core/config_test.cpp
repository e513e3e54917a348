#include "core/config.h"

#include <gtest/gtest.h>

#include <set>

#include "core/messages.h"
#include "os/surroundings.h"
#include "support/folders.h"
#include "support/world.h"
#include "text/encoding.h"
#include "text/units.h"

namespace {

using core::OptionSource;
using core::pluginState;
using core::PluginState;

// Configuration files read without a Creo.
class Configuration : public ::testing::Test {
 protected:
  Configuration() {
    pluginState().reset();
    os::mounts().set(L'c', folder_.path());
  }
  ~Configuration() override {
    pluginState().reset();
    core::setLanguage(L"en");
  }
  PluginState& read(const std::string& content, OptionSource which = OptionSource::mainFile) {
    test::writeBytes(folder_.path() + "/kvd.cfg", content);
    core::readConfigFile(L"c:\\kvd.cfg", which);
    return pluginState();
  }

 private:
  os::SurroundingsGuard guard_;
  test::TempFolder folder_;
};

TEST_F(Configuration, LinesAreReadByTheirOwnRules) {
  const PluginState& state = read(
      "KVD_LOG_LEVEL=2\n"                       // case-blind keys
      "kvd_kvz_path=d:\\packages\r\n"           // CR LF, a separator is added
      "kvd_temp_path=d:/tmp/\n"                 // either separator counts
      "kvd_column_parameter=a=b=c\n"            // "=" is lost from the value
      "# kvd_filter_prt=0\n"                    // a comment is an unknown key
      "kvd_filter_asm\n"                        // no "=": ignored
      "kvd_filter_inst=yes\n"                   // no number is 0
      "kvd_start_kvz_before_save_conf=10000\n"  // the fifth digit is forced
      "kvd_start_kvz_after_open_conf=10000\n"
      "kvd_check_modifyable=2\n"  // true for exactly "1"
      "kvd_show_log=1x\n"         // stored inverted
      "parameter_width=4\n"
      "kvd_filter_drw=0");  // no closing line feed: not evaluated
  EXPECT_EQ(2, state.loglevel);
  EXPECT_EQ(L"d:\\packages\\", state.kvzPath);
  EXPECT_EQ(L"d:/tmp/", state.tempPath);
  EXPECT_EQ(L"d:/tmp/open_kvz\\", state.openKvzPath);
  EXPECT_EQ(L"bc", state.columnParameter.substr(1));
  EXPECT_EQ(1, state.filterPrt);
  EXPECT_EQ(1, state.filterAsm);
  EXPECT_EQ(0, state.filterInst);
  EXPECT_EQ(1, state.filterDrw);
  EXPECT_EQ(L"10001", state.triggers[static_cast<std::size_t>(core::Trigger::beforeSave)].startConf);
  EXPECT_EQ(L"10000", state.triggers[static_cast<std::size_t>(core::Trigger::afterOpen)].startConf);
  EXPECT_FALSE(state.checkModifiable);
  EXPECT_EQ(0, state.logVisible);
}

TEST_F(Configuration, TheUserFileWinsAndItsKeysSaySo) {
  read("kvd_log_level=1\nkvd_filter_prt=0\nkvd_lang=de\n");
  const PluginState& state = read("loglevel=8\nlang=fr\n", OptionSource::userFile);
  EXPECT_EQ(8, state.loglevel);
  EXPECT_EQ(0, state.filterPrt);
  EXPECT_FALSE(core::useGerman());
  const auto source = [&](std::wstring_view name) {
    for (const core::ConfigKey& key : core::configKeys()) {
      if (key.name == name) return state.optionSource.at(static_cast<std::size_t>(key.sourceSlot));
    }
    return OptionSource::byDefault;
  };
  EXPECT_EQ(OptionSource::userFile, source(L"kvd_log_level"));
  EXPECT_EQ(OptionSource::mainFile, source(L"kvd_filter_prt"));
  EXPECT_EQ(OptionSource::byDefault, source(L"kvd_filter_asm"));
}

TEST_F(Configuration, EnvironmentVariablesAreReplacedAndEndlessOnesEnd) {
  os::setEnvironment(L"KVD_TEST_SITE", L"d:\\site");
  os::setEnvironment(L"KVD_TEST_SELF", L" %KVD_TEST_SELF%");
  os::setEnvironment(L"KVD_TEST_OUTER", L"x%KVD_TEST_SITE%");
  struct Case {
    const char* value;
    const wchar_t* expected;
  };
  for (const auto& [value, expected] :
       {Case{"%KVD_TEST_SITE%\\p", L"d:\\site\\p"}, Case{"%KVD_TEST_OUTER%", L"xd:\\site"},
        Case{"%KVD_TEST_NOWHERE%-%KVD_TEST_SITE%", L"%KVD_TEST_NOWHERE%-d:\\site"}, Case{"50%", L"50%"}}) {
    read(std::string("kvd_column_parameter=") + value + "\n");
    EXPECT_EQ(expected, pluginState().columnParameter) << value;
  }
  read("kvd_column_parameter=%KVD_TEST_SELF%\n");
  EXPECT_LT(pluginState().columnParameter.size(), text::kTextSize);
}

TEST_F(Configuration, EachKeyOnceAndSlotsInOrder) {
  std::set<std::wstring_view> names;
  int slot = 0;
  for (const core::ConfigKey& key : core::configKeys()) {
    EXPECT_TRUE(names.insert(key.name).second);
    EXPECT_TRUE(key.shortName.empty() || names.insert(key.shortName).second);
    if (key.sourceSlot >= 0) EXPECT_EQ(slot++, key.sourceSlot);
  }
  EXPECT_LE(static_cast<std::size_t>(slot), pluginState().optionSource.size());
}

TEST_F(Configuration, TheTextFolderIsCutFromThePath) {
  struct Case {
    const wchar_t *path, *expected;
  };
  for (const auto& [path, expected] : {Case{L"c:\\kvd\\text", L"c:\\kvd\\"}, Case{L"c:\\kvd\\TEXT\\", L"c:\\kvd\\"},
                                       Case{L"c:/kvd/text/", L"c:/kvd/"}, Case{L"c:\\kvdtext", L"c:\\kvdtext\\"},
                                       Case{L"c:\\kvd", L"c:\\kvd\\"}, Case{L"text", L"text"}, Case{L"", L""}}) {
    EXPECT_EQ(expected, core::normalisedTextPath(path)) << path;
  }
}

// Those of triggers stand in a document of their own, by what their names begin with.
TEST(ConfigurationDocument, TellsEachKeyWithItsShortName) {
  const std::string reported = test::readBytes(test::sourceFolder() + "/docs/configuration.md");
  for (const core::ConfigKey& key : core::configKeys()) {
    if (key.name.starts_with(L"kvd_start_kvz_")) continue;
    for (const std::wstring_view name : {key.name, key.shortName}) {
      const std::string word = "`" + text::toUtf8(name);
      if (!name.empty())
        EXPECT_TRUE(reported.find(word + '`') != reported.npos || reported.find(word + '=') != reported.npos) << word;
    }
  }
}

}  // namespace

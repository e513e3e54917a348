// The examples of the documents, run as lists on models that they fit: each is carried out, says what its rows know,
// and touches nothing that they don't tell.
#include <gtest/gtest.h>

#include <cctype>
#include <functional>

#include "actions/dispatch.h"
#include "actions/environment/question.h"
#include "headless/proui/ui.h"
#include "headless/vault/servers.h"
#include "headless/vault/vault.h"
#include "kelvane/check/attribute_check.h"
#include "kelvane/example_world.h"
#include "kelvane/watched_doors.h"
#include "language/user_variables.h"
#include "plugin/action_table.h"
#include "support/markdown.h"

namespace test {
namespace {

// The rows are read without a plug-in.
[[maybe_unused]] const bool kRowsAreThere = (plugin::handDownActions(), true);

using actions::Touched;

struct Example {
  std::string name, tasks;
};
void PrintTo(const Example& example, std::ostream* out) { *out << example.tasks; }

// The task elements of a block; a filter, or items of one, become a task that asks them.
std::string tasksOf(const std::string& block) {
  const std::size_t begin = block.find("<task"), single = block.rfind("/>"), last = block.rfind("</task>");
  if (begin != block.npos) {
    const bool isNested = last != block.npos && (single == block.npos || last > single);
    return block.substr(begin, (isNested ? last + 7 : single + 2) - begin);
  }
  const bool isWhole = block.starts_with("<filter>");
  return R"(<task type="writeToCreoLog" version="3" forPRT="true" forASM="true" forDRW="true" forEF="true" message="fits">)" +
         (isWhole ? block : "<filter>" + block + "</filter>") + "</task>";
}

std::vector<Example> examples() {
  std::vector<Example> all;
  for (const char* page : {"actions.md", "variables.md"})
    for (const Section& section : sectionsOf(page)) {
      int number = 0;
      for (const std::string& block : xmlBlocks(section)) {
        std::string name = section.title.empty() ? "page" : section.title;
        std::erase_if(name, [](unsigned char c) { return std::isalnum(c) == 0; });
        all.push_back({name + "_" + std::to_string(number++), tasksOf(block)});
      }
    }
  return all;
}

struct Kind {
  std::wstring_view attribute;
  const wchar_t* name;
  creo::ProMdlType type;
};
constexpr Kind kKinds[] = {{L"forPRT", L"BOLT", creo::ProMdlType::part},
                           {L"forASM", L"UNIT", creo::ProMdlType::assembly},
                           {L"forDRW", L"PLAN", creo::ProMdlType::drawing}};

std::wstring_view valueOf(const core::XmlNode& task, std::wstring_view name) {
  const core::XmlAttr* found = core::attrFind(task.attributes, name);
  return found ? found->value : std::wstring_view();
}

// Also those inside of groups.
void eachTask(const core::XmlNode& node, const std::function<void(const core::XmlNode&)>& visit) {
  core::xmlEachChild(node, [&](const core::XmlNode& child) {
    if (child.name == L"task") visit(child);
    eachTask(child, visit);
  });
}

const std::pair<Touched, const char*> kDoors[] = {
    {Touched::model, "the model"},          {Touched::users, "models that use it or that it uses"},
    {Touched::family, "its family"},        {Touched::files, "files"},
    {Touched::reports, "reports"},          {Touched::session, "the session"},
    {Touched::options, "Creo's options"},   {Touched::server, "the server"},
    {Touched::programs, "programs"},        {Touched::web, "the web"},
    {Touched::variables, "user variables"}, {Touched::surroundings, "environment variables"},
};
std::string doorName(Touched door) {
  for (const auto& [one, name] : kDoors)
    if (one == door) return name;
  return "?";
}

// What the rows of an example's tasks know.
struct Told {
  Touched changes = Touched::nothing;
  std::string keys;
  bool hasReport = false, hasGroup = false, hasServer = false;

  void add(const core::XmlNode& task, const actions::Action& row) {
    // Programs, servers and addresses may be asked for what is read.
    changes = changes | row.effects.changes;
    for (const Touched asked : {Touched::programs, Touched::server, Touched::web})
      if (actions::holds(row.effects.reads, asked)) changes = changes | asked;
    keys += (keys.empty() ? "" : ", ") + text::toUtf8(row.key);
    hasReport = hasReport || core::attrFind(task.attributes, L"reporter");
    hasGroup = hasGroup || row.key == L"groupActions";
    hasServer = hasServer || (actions::holds(row.effects.changes, Touched::server) &&
                              !actions::holds(row.effects.changes, Touched::family));
  }
  // A table of values is a report, or a file that an action writes for itself.
  [[nodiscard]] bool knows(Touched door) const {
    return actions::holds(changes, door) || (door == Touched::reports && actions::holds(changes, Touched::files));
  }
};

const std::string kForAll = "version='3' forPRT='true' forASM='true' forDRW='true' forEF='false' ";
void addIdleList(World& world) {
  world.config("kvd_write_history_in_models=0");
  world.list("idle.xml", "<task type='writeToCreoLog' message='idle' " + kForAll + "/>");
}
// What the list "example.xml" does with the tool open on a model.
Seen watched(World& world, WatchedDoors& doors, std::set<std::wstring> underWork) {
  world.choose("idle.xml");
  doors.learnIdle([&] { world.pressStart(); });
  world.choose("example.xml");
  return doors.during(std::move(underWork), [&] { world.pressStart(); });
}

class DocumentedExample : public testing::TestWithParam<Example> {
 protected:
  // The attributes of each task are those of its row, and its version is the row's.
  static Told readTasks(const core::XmlNode& list) {
    Told reported;
    eachTask(list, [&](const core::XmlNode& task) {
      const actions::Action* row = actions::findAction(valueOf(task, L"type"));
      if (!row) {
        ADD_FAILURE() << "no action " << text::toUtf8(valueOf(task, L"type"));
        return;
      }
      reported.add(task, *row);
      if (!row->version.empty()) EXPECT_EQ(row->version, valueOf(task, L"version"));
      for (const kelvane::AttributeFault& fault : kelvane::attributeFaults(task, *row))
        ADD_FAILURE() << fault.rule << ": " << fault.text;
    });
    return reported;
  }
  // Those that one of the tasks is for; a part for tasks that ask no kind.
  static std::vector<Kind> kindsOf(const core::XmlNode& list) {
    std::vector<Kind> kinds;
    for (const Kind& kind : kKinds) {
      bool fits = false;
      core::xmlEachChild(list,
                         [&](const core::XmlNode& task) { fits = fits || valueOf(task, kind.attribute) == L"true"; });
      if (fits) kinds.push_back(kind);
    }
    if (kinds.empty()) kinds.push_back(kKinds[0]);
    return kinds;
  }

  static void prepare(World& world, const Told& announced) {
    addIdleList(world);
    world.config("kvd_check_modifyable=0\nkvd_filter_curmod=1");
    writeExampleModels(world);
    writeExamplePackage(world);
    const std::string open =
        "<task type='openCSVReport' version='3' name='audit' file='@project_dir@/audit.csv' overwrite='true'/>";
    world.list("in.xml", "<task type='checkinModel' " + kForAll + "/>");
    world.list("example.xml", GetParam().tasks, announced.hasReport ? open : "");
    if (announced.hasServer) ASSERT_TRUE(headless::Vault::create(L"c:\\plm", "production"));
  }
  static void answerQuestions(World& world) {
    headless::Ui& ui = world.session().ui();
    ui.answerQuestions([&ui](const headless::Question& question) {
      if (question.dialog == actions::question::kDialog) ui.press(question.dialog, actions::question::kOk);
      return 0;
    });
  }

  static void runOn(const Kind& kind, const Told& noted) {
    World world;
    prepare(world, noted);
    WatchedDoors doors(world);
    ASSERT_EQ(0, world.start());
    if (noted.hasServer) ASSERT_EQ(L"", world.session().servers().connect({L"c:\\plm", L"design", L"ann", 0}));
    answerQuestions(world);
    language::userVariables().set(L"ROUNDS", L"2");
    ASSERT_TRUE(world.open(kind.name, kind.type));
    world.openTool();
    if (noted.hasServer && noted.keys != "checkinModel") world.run("in.xml");

    std::set<std::wstring> underWork = {text::lower(kind.name)};
    if (noted.hasGroup) underWork.insert({L"gb_120", L"blank"});  // the drawing and the part of its tasks
    const Seen seen = watched(world, doors, underWork);
    for (const auto& [door, what] : seen)
      EXPECT_TRUE(noted.knows(door)) << noted.keys << " changes " << doorName(door)
                                     << ", which its row doesn't tell: " << what;
    for (const wchar_t* line :
         {L"CAN'T FIND THIS FUNCTION", L"because false version code", L"Filter not found", L"Failure in new relations"})
      EXPECT_FALSE(world.logHas(line)) << text::toUtf8(world.log());
  }
};

TEST_P(DocumentedExample, IsCarriedOutAndTouchesWhatItsRowTells) {
  const auto loaded = core::xmlParse(std::string_view("<list>" + GetParam().tasks + "</list>"));
  ASSERT_TRUE(loaded) << text::toUtf8(loaded.fault.sentence());
  const core::XmlNode& list = *loaded.value->root()->next;
  const Told message = readTasks(list);
  for (const Kind& kind : kindsOf(list)) {
    SCOPED_TRACE(text::toUtf8(kind.name));
    runOn(kind, message);
  }
}

TEST(WatchedDoors, SeeWhatGoesOutThroughThem) {
  World world;
  writeExampleModels(world);
  addIdleList(world);
  const std::pair<std::string, std::string> tasks[] = {
      {"editModelParameter", "searchin='1' name='COLOR' totype='0' value='blue'"},
      {"saveModel", ""},
      {"backupAction", "path='b:\\release'"},
      {"writeListReport", "sel='9' file='d:\\out\\list.csv'"},
      {"setConfigOption", "><option name_0='skip_small_surfaces' value_0='yes'/"},
      {"runMSDOScommand", "cmd='tool' args='x'"},
      {"setUserVariableFromUrl", "name='ANSWER' value='https://pdm.example/'"},
      {"setEnvironmentVariable", "name='KVD_TEST_MODEL' value='x'"},
      {"setWorkingDirectory", "path='d:\\out'"},
  };
  std::string list;
  for (const auto& [type, attributes] : tasks) {
    const std::string begin = "<task type='" + type + "' " + kForAll;
    list += begin + (attributes.starts_with(">") ? attributes + "></task>" : attributes + "/>");
  }
  world.list("example.xml", list);
  WatchedDoors doors(world);
  ASSERT_EQ(0, world.start());
  world.open(L"BOLT", creo::ProMdlType::part);
  world.openTool();
  std::set<std::string> seen;
  for (const auto& [door, what] : watched(world, doors, {L"bolt"})) seen.insert(doorName(door));
  const std::set<std::string> expected = {"the model",  "files",   "reports",        "Creo's options",
                                          "programs",   "the web", "user variables", "environment variables",
                                          "the session"};
  EXPECT_EQ(expected, seen) << text::toUtf8(world.log());
}

INSTANTIATE_TEST_SUITE_P(Pages, DocumentedExample, testing::ValuesIn(examples()),
                         [](const testing::TestParamInfo<Example>& example) { return example.param.name; });

}  // namespace
}  // namespace test

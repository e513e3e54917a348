// Documents that others wrote: their members stand in any order, and some of them this version doesn't know. What is
// made from them is what is made from documents in the writer's own order, and nothing of theirs is lost.
#include <algorithm>
#include <filesystem>
#include <functional>
#include <map>
#include <random>
#include <set>

#include "actions/action_fixture.h"
#include "headless/store/json.h"
#include "support/folders.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace test {
namespace {

using creo::ProMdlType;
using headless::Json;
using headless::JsonKind;
namespace fs = std::filesystem;

const std::string kUnknown = "x-";

Json parsed(const std::string& text) {
  Json tree;
  EXPECT_FALSE(headless::parseJson(text, tree)) << text;
  return tree;
}

bool isUnknown(const Json& member) { return member.name.starts_with(kUnknown); }
// Objects whose members' names are data.
bool holdsData(const Json& member) { return member.name == "values" || member.name == "externalData"; }

// Shuffles each object's members and gives it one that nobody knows: "x-17": {"kept": 17}.
void shuffle(Json& value, std::mt19937& random, int& count) {
  value.begin = value.end = 0;
  for (Json& item : value.items)
    if (!holdsData(item)) shuffle(item, random, count);
  if (!value.is(JsonKind::object)) return;
  Json number = parsed(std::to_string(++count));
  number.name = "kept";
  Json member;
  member.kind = JsonKind::object;
  member.name = kUnknown + std::to_string(count);
  member.items.push_back(number);
  value.items.push_back(member);
  std::shuffle(value.items.begin(), value.items.end(), random);
}

// What a document says, whatever the order in which it does, and without what nobody knows.
std::string known(Json value) {
  const std::function<void(Json&)> sort = [&](Json& item) {
    std::erase_if(item.items, isUnknown);
    for (Json& inside : item.items) sort(inside);
    if (item.is(JsonKind::object))
      std::sort(item.items.begin(), item.items.end(), [](const Json& a, const Json& b) { return a.name < b.name; });
  };
  sort(value);
  return headless::prettyJson(value);
}

// The unknown members, without those inside a family table.
std::set<std::string> unknown(const Json& value) {
  std::set<std::string> names;
  for (const Json& item : value.items) {
    if (item.name == "familyTable") continue;
    if (isUnknown(item)) names.insert(item.name);
    names.merge(unknown(item));
  }
  return names;
}

// What a model's document and those of its instances, once they are models of their own, keep: an instance has what its
// row has, too. Of a model it is the highest version; a renamed one takes its older versions along, each as it was.
void noteUnknown(const std::string& file, const Json& document, std::map<std::string, std::set<std::string>>& into) {
  const std::string model = file.substr(0, file.rfind('.'));
  const std::set<std::string> own = into[model] = into[file] = unknown(document);
  const Json* table = document.member("familyTable");
  for (const Json& row : table ? table->member("instances")->items : std::vector<Json>()) {
    std::set<std::string>& ofRow = into[text::toUtf8(text::lower(text::fromUtf8(row.member("name")->text))) + ".prt"];
    ofRow = own;
    for (const Json& member : row.items)
      if (isUnknown(member)) ofRow.insert(member.name);
  }
}

// The documents that a list makes of the example's models, each by its file's name.
using Documents = std::map<std::string, std::string>;
Documents made(const std::function<std::string(const std::string& file, const std::string& text)>& written,
               const std::string& tasks) {
  World world;
  world.config("kvd_write_history_in_models=0");
  world.list("list.xml", tasks);
  std::set<fs::path> examples;  // in their order
  for (const auto& entry : fs::directory_iterator(sourceFolder() + "/examples/workspace"))
    examples.insert(entry.path());
  for (const fs::path& path : examples)
    writeBytes(world.models() + "/" + path.filename().string(), written(path.filename(), readBytes(path)));
  world.start();
  for (const auto& [name, type] :
       {std::pair(L"GEARBOX", ProMdlType::assembly), std::pair(L"SHAFT_OUT", ProMdlType::drawing)}) {
    world.open(name, type);
    world.run("list.xml");
    EXPECT_EQ(std::wstring::npos, world.log().find(L"(ERR)")) << text::toUtf8(world.log());
  }
  Documents documents;
  for (const auto& entry : fs::directory_iterator(world.models()))
    documents[entry.path().filename()] = readBytes(entry.path());
  return documents;
}

struct Tasks : ActionTest {
  using ActionTest::task;
};

TEST(MemberOrder, InstancesInUseBecomeTheSameModels) {
  const std::string tasks = Tasks::task("deleteFamilyTableInstance", "namec='1' name_0='*'") + Tasks::task("saveModel");
  std::mt19937 random(4711);
  int count = 0;
  const Documents plain = made([](const auto&, const std::string& text) { return text; }, tasks);
  const Documents shuffled = made(
      [&](const auto&, const std::string& text) {
        Json tree = parsed(text);
        shuffle(tree, random, count);
        return headless::prettyJson(tree);
      },
      tasks);
  EXPECT_TRUE(plain.contains("bolt_m6x20.prt.1"));
  for (const auto& [file, text] : plain)
    if (file.find(".log") == file.npos) EXPECT_EQ(known(parsed(text)), known(parsed(shuffled.at(file)))) << file;
}

TEST(MemberOrder, CopiesBreakUpsAndRenamesGiveTheSameAndLoseNothing) {
  const std::string tasks = Tasks::task("breakUpFamilytable") + Tasks::task("saveModel") +
                            Tasks::task("copyModel", "name='C_@mdln@'") + Tasks::task("renameModel", "name='R_@mdln@'");
  std::map<std::string, std::set<std::string>> given;  // the unknown members of each model, by "gear.prt"
  std::mt19937 random(4711);
  int count = 0;
  const Documents plain = made([](const auto&, const std::string& text) { return text; }, tasks);
  const Documents shuffled = made(
      [&](const std::string& file, const std::string& text) {
        Json tree = parsed(text);
        shuffle(tree, random, count);
        noteUnknown(file, tree, given);
        return headless::prettyJson(tree);
      },
      tasks);

  std::set<std::string> compared;
  for (const auto& [file, text] : plain) {
    ASSERT_TRUE(shuffled.contains(file)) << file;
    if (file.find(".log") != file.npos) continue;
    const Json tree = parsed(shuffled.at(file));
    EXPECT_EQ(known(parsed(text)), known(tree)) << file;
    const bool isNew = file.starts_with("c_") || file.starts_with("r_");
    const std::string before = isNew ? file.substr(2) : file, model = before.substr(0, before.rfind('.'));
    if (!given.contains(model)) continue;
    EXPECT_EQ(given.at(given.contains(before) ? before : model), unknown(tree)) << file;
    compared.insert(file);
  }
  for (const char* file : {"c_gearbox.asm.1", "r_gearbox.asm.5", "c_bolt_din933.prt.1", "bolt_m10x40.prt.2",
                           "key_8x7x28.prt.2", "c_shaft_out.drw.1"})
    EXPECT_TRUE(compared.contains(file)) << file;
  EXPECT_EQ(plain.size(), shuffled.size());
}

}  // namespace
}  // namespace test

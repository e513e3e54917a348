// The table of keys, tested as data.
#include <gtest/gtest.h>

#include <set>

#include "actions/families.h"
#include "engine/dispatch.h"
#include "text/encoding.h"

namespace engine {
namespace {

TEST(ActionTable, HoldsEachKeyOnceInItsGroup) {
  std::set<std::wstring_view> keys;
  std::map<Group, int> sizes;
  Group last = Group::withoutModel;
  for (const ActionRow& row : actionTable()) {
    EXPECT_TRUE(keys.insert(row.key).second) << text::toUtf8(row.key);
    EXPECT_GE(row.group, last) << text::toUtf8(row.key);
    EXPECT_EQ(&row, findAction(row.key));
    last = row.group;
    ++sizes[row.group];
  }
  const std::map<Group, int> expected = {
      {Group::withoutModel, 17}, {Group::knownEmpty, 4}, {Group::modelNeeded, 87}, {Group::second, 51}};
  EXPECT_EQ(expected, sizes);
  EXPECT_EQ(nullptr, findAction(L"saveModels"));
  EXPECT_EQ(nullptr, findAction(L"SAVEMODEL"));
}

TEST(ActionTable, CarriesOutWhatTheFamiliesContribute) {
  for (const auto& family : {actions::creoLogActions(), actions::workingFolderActions(), actions::userVariableActions(),
                             actions::groupActionsFamily(), actions::saveActions(), actions::parameterActions()})
    for (const auto& row : family) {
      const ActionRow* found = findAction(row.key);
      ASSERT_NE(nullptr, found) << text::toUtf8(row.key);
      EXPECT_EQ(row.function, found->function) << text::toUtf8(row.key);
    }
  EXPECT_NE(nullptr, findAction(L"writeInformationPDF")->function);
  EXPECT_NE(nullptr, findAction(L"asmFastOpen")->function);
}

}  // namespace
}  // namespace engine

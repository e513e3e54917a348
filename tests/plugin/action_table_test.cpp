// The table of keys, tested as data.
#include <gtest/gtest.h>

#include <set>

#include "actions/dispatch.h"
#include "plugin/action_table.h"
#include "text/encoding.h"

namespace actions {
namespace {

// The rows are read without a plug-in.
[[maybe_unused]] const bool kRowsAreThere = (plugin::handDownActions(), true);

TEST(ActionTable, HoldsEachKeyOnceInItsGroup) {
  std::set<std::wstring_view> keys;
  std::map<Group, int> sizes;
  Group last = Group::withoutModel;
  for (const Action& row : actionTable()) {
    EXPECT_TRUE(keys.insert(row.key).second) << text::toUtf8(row.key);
    EXPECT_GE(row.group, last) << text::toUtf8(row.key);
    EXPECT_EQ(&row, findAction(row.key));
    last = row.group;
    ++sizes[row.group];
  }
  const std::map<Group, int> expected = {
      {Group::withoutModel, 17}, {Group::withoutEffect, 4}, {Group::modelNeeded, 87}, {Group::ownModelTest, 51}};
  EXPECT_EQ(expected, sizes);
  EXPECT_EQ(nullptr, findAction(L"saveModels"));
  EXPECT_EQ(nullptr, findAction(L"SAVEMODEL"));
}

}  // namespace
}  // namespace actions

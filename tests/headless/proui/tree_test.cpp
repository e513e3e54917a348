#include "headless/proui/tree.h"

#include <gtest/gtest.h>

namespace {

using headless::Tree;

std::string nameOf(int i) { return "n" + std::to_string(i); }

TEST(Tree, NodesStayInOrderWhateverIsRemovedAround) {
  Tree tree({{"plain", ""}, {"marked", ""}});
  // Hundreds of roots with two children each; all but every tenth root go, several times over.
  for (int round = 0; round < 3; ++round) {
    std::wstring expected;
    for (int i = 0; i < 300; ++i) {
      ASSERT_EQ(creo::ProNoError, tree.add("", nameOf(i), L"Grö" + std::to_wstring(i), "plain"));
      ASSERT_EQ(creo::ProNoError, tree.add(nameOf(i), nameOf(1000 + i), L"first", "plain"));
      ASSERT_EQ(creo::ProNoError, tree.add(nameOf(1000 + i), nameOf(2000 + i), L"below", "marked"));
    }
    EXPECT_EQ(creo::ProExists, tree.add("", nameOf(2000), L"", "plain"));
    tree.find(nameOf(2250))->selected = true;
    tree.find(nameOf(2251))->selected = true;
    for (int i = 0; i < 300; ++i) {
      if (i % 10 != 0) {
        ASSERT_EQ(creo::ProNoError, tree.remove(nameOf(i)));
        ASSERT_EQ(creo::ProNotFound, tree.remove(nameOf(2000 + i)));
      } else {
        expected += L"Grö" + std::to_wstring(i) + L" (plain)\n  first (plain)\n    below (marked)\n";
      }
    }
    EXPECT_EQ(expected, tree.dump());
    EXPECT_EQ(90U, tree.size());
    EXPECT_EQ((std::vector<std::string>{nameOf(2250)}), tree.selected());
    for (int i = 0; i < 3000; ++i) {
      const Tree::Node* found = tree.find(nameOf(i));
      ASSERT_EQ(i % 1000 < 300 && i % 10 == 0, found != nullptr) << i;
      if (found) {
        ASSERT_EQ(nameOf(i), found->name);
      }
    }
    for (int i = 290; i >= 0; i -= 10) ASSERT_EQ(creo::ProNoError, tree.remove(nameOf(i)));
    EXPECT_EQ(L"", tree.dump());
    EXPECT_EQ(nullptr, tree.find(nameOf(0)));
  }
}

}  // namespace

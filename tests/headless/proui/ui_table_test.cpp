#include "creo/ProUITable.h"

#include <algorithm>
#include <numeric>
#include <random>
#include <set>

#include "creo/ProUITree.h"
#include "headless/proui/ui_fixture.h"
#include "text/pieces.h"

namespace {

using namespace creo;
using Names = std::vector<std::string>;

constexpr const char* kRunner = "kvanerunner";
constexpr const char* kTable = "LargeTable";
constexpr const char* kTree = "kvaneLogTT";

class UiTable : public test::UiTest {
 protected:
  UiTable() { made_ = created(kRunner).size(); }
  ProError insert(const std::string& after, const Names& rows) {
    return ProUITableRowsInsert(kRunner, kTable, after, rows);
  }
  ProError copy(const std::string& row, const std::string& column, const std::string& from, const std::string& name) {
    return ProUITableCellComponentCopy(kRunner, kTable, row, column, from, name);
  }
  // "A B D"
  std::string rows() {
    std::string all;
    for (const std::string& row : dialog(kRunner).rows(kTable)) all += (all.empty() ? "" : " ") + row;
    return all;
  }
  ProError add(const std::string& parent, const std::string& node, const std::wstring& label,
               const std::string& type = "kvaneChild") {
    return ProUITreeNodeAdd(kRunner, kTree, parent, node, label, type);
  }
  std::size_t made_ = 0;  // components of the resource
};

TEST_F(UiTable, RowsStandWhereTheyWereInserted) {
  const struct {
    const char* after;
    Names rows;
    ProError result;
    const char* then;
  } cases[] = {
      {"", {"D"}, ProNoError, "D"},
      {"", {"A", "B"}, ProNoError, "A B D"},
      {"B", {"C"}, ProNoError, "A B C D"},
      {"D", {"E"}, ProNoError, "A B C D E"},
      {"X", {"F"}, ProNotFound, "A B C D E"},
      {"A", {"F", "C"}, ProExists, "A B C D E"},
      {"A", {"F", "F"}, ProExists, "A B C D E"},
      {"A", {"F", ""}, ProBadInputs, "A B C D E"},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(row.result, insert(row.after, row.rows));
    EXPECT_EQ(row.then, rows());
  }
  EXPECT_EQ(ProNotFound, ui().selectRows(kRunner, kTable, {"B", "X"}));
  EXPECT_EQ(ProNoError, ui().selectRows(kRunner, kTable, {"D", "B"}));
  EXPECT_EQ((Names{"B", "D"}), ProUITableSelectednamesGet(kRunner, kTable).value);
  EXPECT_EQ(ProNotFound, ProUITableRowsDelete(kRunner, kTable, {"A", "X"}));
  EXPECT_EQ(ProNoError, ProUITableRowsDelete(kRunner, kTable, {"B", "E", "B"}));
  EXPECT_EQ("A C D", rows());
  EXPECT_EQ((Names{"D"}), ProUITableSelectednamesGet(kRunner, kTable).value);
}

TEST_F(UiTable, CellsHoldOneComponentEach) {
  insert("", {"A.PRT", "B.PRT"});
  ProUICheckbuttonSet(kRunner, "kvaneCheckButton");
  EXPECT_EQ(ProNoError, copy("A.PRT", "1", "kvaneCheckButton", "A.PRT_cb"));
  EXPECT_EQ(ProExists, copy("A.PRT", "1", "kvaneCheckButton", "other"));
  EXPECT_EQ(ProExists, copy("B.PRT", "1", "kvaneCheckButton", "A.PRT_cb"));
  EXPECT_EQ(ProNotFound, copy("A.PRT", "5", "kvaneCheckBtn", "A.PRT_lock"));
  EXPECT_EQ(ProNotFound, copy("A.PRT", "7", "kvaneCheckButton", "A.PRT_lock"));
  EXPECT_EQ(ProNotFound, copy("C.PRT", "5", "kvaneCheckButton", "A.PRT_lock"));
  EXPECT_EQ(ProBadInputs, copy("A.PRT", "5", "kvaneLogTT", "A.PRT_lock"));
  EXPECT_TRUE(dialog(kRunner).checked("A.PRT_cb"));  // as its template was
  EXPECT_EQ(ProNoError, copy("A.PRT", "6", "kvaneFromHdd", "A.PRT_wc"));
  EXPECT_EQ("fromHDD.gif", ProUILabelBitmapGet(kRunner, "A.PRT_wc").value);
  EXPECT_EQ("A.PRT_wc", dialog(kRunner).cellComponent(kTable, "A.PRT", "6"));

  EXPECT_EQ(ProBadInputs, ProUITableLabelRemove(kRunner, kTable, "A.PRT_cb"));
  EXPECT_EQ(ProBadInputs, ProUITableLabelRemove(kRunner, kTable, "kvaneLogLbl"));  // none of the table's
  EXPECT_EQ(ProNoError, ProUITableLabelRemove(kRunner, kTable, "A.PRT_wc"));
  EXPECT_EQ(ProGeneralError, ProUITableCellComponentDelete(kRunner, kTable, "A.PRT", "6"));
  EXPECT_EQ(ProNoError, copy("A.PRT", "6", "kvaneWCLbl", "A.PRT_wc"));
  EXPECT_EQ(ProNoError, ProUITableCellComponentDelete(kRunner, kTable, "A.PRT", "6"));
  for (const auto remove : {&ProUITableLabelRemove, &ProUITableCheckbuttonRemove})
    EXPECT_EQ(ProGeneralError, remove(kRunner, kTable, "A.PRT_wc"));
}

TEST_F(UiTable, ComponentsOutliveTheirRow) {
  insert("", {"A.PRT", "B.PRT"});
  copy("A.PRT", "1", "kvaneCheckButton", "A.PRT_cb");
  ProUITableCellLabelSet(kRunner, kTable, "A.PRT", "3", L"A.prt");
  ProUITableRowsDelete(kRunner, kTable, {"A.PRT"});
  insert("B.PRT", {"A.PRT"});
  EXPECT_EQ(L"", dialog(kRunner).cellText(kTable, "A.PRT", "3"));
  EXPECT_EQ("", dialog(kRunner).cellComponent(kTable, "A.PRT", "1"));
  EXPECT_EQ(ProExists, copy("A.PRT", "1", "kvaneCheckButton", "A.PRT_cb"));
  EXPECT_EQ(ProNoError, ProUITableCheckbuttonRemove(kRunner, kTable, "A.PRT_cb"));
  EXPECT_EQ(ProNoError, copy("A.PRT", "1", "kvaneCheckButton", "A.PRT_cb"));
}

TEST_F(UiTable, TwentyThousandSortedRowsComeAndGo) {
  constexpr int kRows = 20000;
  std::vector<int> order(kRows);
  std::iota(order.begin(), order.end(), 0);
  std::shuffle(order.begin(), order.end(), std::mt19937(4711));
  const auto name = [](int number) { return "MODEL_" + std::to_string(100000 + number) + ".PRT"; };
  std::set<std::string> there;
  for (const int number : order) {
    const std::string row = name(number);
    const auto place = there.insert(row).first;
    ASSERT_EQ(ProNoError, insert(place == there.begin() ? "" : *std::prev(place), {row}));
    ASSERT_EQ(ProNoError, copy(row, "1", "kvaneCheckButton", row + "_cb"));
    ASSERT_EQ(ProNoError, copy(row, "2", "kvanePrtLbl", row + "_type"));
    ASSERT_EQ(ProNoError, copy(row, "5", "kvaneCheckButton", row + "_lock"));
    ASSERT_EQ(ProNoError, copy(row, "6", "kvaneFromHdd", row + "_wc"));
    if (number % 2 == 0) ProUICheckbuttonSet(kRunner, row + "_cb");
  }
  EXPECT_EQ(Names(there.begin(), there.end()), ProUITableRownamesGet(kRunner, kTable).value);
  EXPECT_EQ(made_ + 4 * kRows, dialog(kRunner).size());
  int checked = 0;
  for (const std::string& row : there) checked += ProUICheckbuttonGetState(kRunner, row + "_cb").value ? 1 : 0;
  EXPECT_EQ(kRows / 2, checked);
  for (const std::string& row : there) {
    for (const char* label : {"_type", "_wc"})
      ASSERT_EQ(ProNoError, ProUITableLabelRemove(kRunner, kTable, row + label));
    for (const char* button : {"_cb", "_lock"})
      ASSERT_EQ(ProNoError, ProUITableCheckbuttonRemove(kRunner, kTable, row + button));
  }
  EXPECT_EQ(ProNoError, ProUITableRowsDelete(kRunner, kTable, Names(there.begin(), there.end())));
  EXPECT_EQ("", rows());
  EXPECT_EQ(made_, dialog(kRunner).size());
}

TEST_F(UiTable, TreesAddBehindTheirBrothersAndDeleteWhatIsBelow) {
  EXPECT_EQ(ProNoError, add("", "root", L"Log", "kvaneParent"));
  for (const char* node : {"a", "b", "c"})
    EXPECT_EQ(ProNoError, add("root", node, std::wstring(1, static_cast<wchar_t>(*node))));
  EXPECT_EQ(ProNoError, add("b", "b1", L"deep", "kvaneChildErr"));
  EXPECT_EQ(ProNoError, add("", "second", L"Next"));
  EXPECT_EQ(ProExists, add("a", "b1", L"again"));
  EXPECT_EQ(ProNotFound, add("x", "y", L""));
  EXPECT_EQ(ProBadInputs, add("a", "y", L"", "kvaneNoType"));
  EXPECT_EQ(
      L"Log (kvaneParent)\n  a (kvaneChild)\n  b (kvaneChild)\n    deep (kvaneChildErr)\n  c (kvaneChild)\n"
      L"Next (kvaneChild)\n",
      dialog(kRunner).tree(kTree));
  EXPECT_EQ(ProNoError, ProUITreeNodeDelete(kRunner, kTree, "b"));
  EXPECT_EQ(ProNotFound, ProUITreeNodeDelete(kRunner, kTree, "b1"));
  EXPECT_EQ(ProNoError, ProUITreeNodeDelete(kRunner, kTree, "c"));
  EXPECT_EQ(ProNoError, add("root", "b", L"b again"));
  EXPECT_EQ(ProBadInputs, ProUITreeNodeTypeSet(kRunner, kTree, "b", "kvaneNoType"));
  EXPECT_EQ(ProNoError, ProUITreeNodeDelete(kRunner, kTree, "a"));
  EXPECT_EQ(L"Log (kvaneParent)\n  b again (kvaneChild)\nNext (kvaneChild)\n", dialog(kRunner).tree(kTree));
  ProUITreeNodeDelete(kRunner, kTree, "root");
  ProUITreeNodeDelete(kRunner, kTree, "second");
  EXPECT_EQ(L"", dialog(kRunner).tree(kTree));
}

TEST_F(UiTable, AVeryDeepTreeExhaustsNothing) {
  constexpr int kDepth = 20000;
  std::string parent;
  for (int i = 0; i < kDepth; ++i) {
    const std::string node = "n" + std::to_string(i);
    ASSERT_EQ(ProNoError, add(parent, node, L"."));
    parent = node;
  }
  ui().onNode(kRunner, kTree, parent, ProUITreeEvent::select);
  EXPECT_EQ(Names{parent}, ProUITreeSelectednamesGet(kRunner, kTree).value);
  EXPECT_EQ(ProNoError, ProUITreeNodeDelete(kRunner, kTree, "n0"));
  EXPECT_EQ(L"", dialog(kRunner).tree(kTree));
}

TEST_F(UiTable, ReadersRefuseNamesThatArent) {
  const headless::Dialog& runner = dialog(kRunner);
  EXPECT_THROW(static_cast<void>(runner.checked("BOLT.PRT_cb")), std::invalid_argument);
  EXPECT_THROW(static_cast<void>(runner.checked("kvaneLogLbl")), std::invalid_argument);
  EXPECT_THROW(static_cast<void>(runner.cellText(kTable, "BOLT.PRT", "3")), std::invalid_argument);
  EXPECT_THROW(static_cast<void>(runner.selected("kvaneLogLbl")), std::invalid_argument);
}

}  // namespace

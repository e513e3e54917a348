// The table of what predicates read.
#include "documents/predicate_attributes.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

#include "documents/filter.h"
#include "text/encoding.h"

namespace test {
namespace {

TEST(PredicateAttributes, BelongToPredicatesAndStandTogether) {
  std::set<std::pair<std::wstring_view, std::wstring_view>> seen;
  std::map<std::wstring_view, std::size_t> counts;
  for (const auto& row : documents::predicateAttributes()) {
    EXPECT_TRUE(documents::isPredicate(row.key)) << text::toUtf8(row.key);
    EXPECT_TRUE(seen.emplace(row.key, row.attribute).second) << text::toUtf8(row.key);
    ++counts[row.key];
  }
  for (const auto& [key, count] : counts)
    EXPECT_EQ(count, documents::predicateAttributes(key).size()) << text::toUtf8(key);
  EXPECT_TRUE(documents::predicateAttributes(L"isInstance").empty());
}

}  // namespace
}  // namespace test

// The table of predicates, and what the documents tell of it.
#include "documents/predicate_table.h"

#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "support/folders.h"
#include "support/world.h"
#include "text/encoding.h"

namespace test {
namespace {

using documents::Models;
using documents::Predicate;

std::string letters(Models models) {
  switch (models) {
    case Models::all:
    case Models::typed:
      return {};
    case Models::solids:
      return " S";
    case Models::parts:
      return " P";
    case Models::assemblies:
      return " A";
    case Models::partsAndAssemblies:
      return " P A";
    case Models::drawings:
      return " D";
  }
  return " ?";
}

// A row's first three cells in the table of the documents.
std::string documented(const Predicate& row) {
  std::string attributes;
  for (const core::Attribute& attribute : row.attributes) {
    const std::string name = '`' + text::toUtf8(attribute.name) + '`';
    attributes += (attributes.empty() ? " " : ", ") + (attribute.variables ? '*' + name + '*' : name);
    const bool hasOneWord = attribute.kind == core::Kind::word && attribute.words.find(L'|') == attribute.words.npos;
    if (hasOneWord) attributes += " \"" + text::toUtf8(attribute.words) + '"';
  }
  return "| `" + text::toUtf8(row.key) + "` |" + letters(row.models) + " |" + attributes + " |";
}

TEST(PredicateTable, HasARowForEachPlace) {
  int place = 0;
  for (const Predicate& row : documents::predicateTable()) {
    const std::string key = text::toUtf8(row.key);
    EXPECT_EQ(place++, row.place) << key;
    EXPECT_EQ(&row, documents::findPredicate(row.key)) << key;
    EXPECT_TRUE(row.function && row.title.isThere() && !row.about.empty()) << key;
    std::set<std::wstring_view> names;
    for (const core::Attribute& attribute : row.attributes)
      EXPECT_TRUE(names.insert(attribute.name).second && !attribute.about.empty()) << key;
  }
}

TEST(PredicateTable, IsTheOneOfTheDocuments) {
  std::vector<std::string> expected, found;
  for (const Predicate& row : documents::predicateTable()) expected.push_back(documented(row));
  std::istringstream lines(readBytes(sourceFolder() + "/docs/variables.md"));
  bool isIn = false;
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with("| `type` | Only |")) isIn = true;
    if (isIn && line.empty()) break;
    if (isIn && line.starts_with("| `") && !line.starts_with("| `type`"))
      found.push_back(line.substr(0, line.find(" |", line.find(" |", line.find(" |") + 2) + 2) + 2));
  }
  EXPECT_EQ(expected, found);
}

}  // namespace
}  // namespace test

// docs/actions.md held against the rows of the actions, in both directions.
#include <gtest/gtest.h>

#include <map>
#include <set>

#include "actions/dispatch.h"
#include "plugin/action_table.h"
#include "support/markdown.h"
#include "text/encoding.h"
#include "text/numbers.h"
#include "text/pieces.h"

namespace test {
namespace {

// The rows are read without a plug-in.
[[maybe_unused]] const bool kRowsAreThere = (plugin::handDownActions(), true);

using actions::Action;
using core::Attribute;

constexpr const char* kWithoutEffect = "Keys without effect";
constexpr const char* kCodes = "Codes of feature types";

int numberIn(const std::string& digits) { return text::parseInt(text::fromUtf8(digits)); }
bool isNumber(const std::string& text) {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
}

// The attribute that a name in the documents means: "name_N" and "name_7" are "name_%d".
const Attribute* attributeOf(const Action& action, const std::string& name) {
  const std::wstring wide = text::fromUtf8(name);
  const Attribute* found = core::findAttribute(action.attributes, wide);
  if (found || !wide.ends_with(L'N')) return found;
  return core::findAttribute(action.attributes, wide.substr(0, wide.size() - 1) + L"0");
}

class ActionsDocument : public testing::Test {
 protected:
  ActionsDocument() {
    for (Section& section : sectionsOf("actions.md")) sections_[section.title] = std::move(section);
  }
  // Null for a key that does nothing: it has no section of its own.
  const Section* sectionOf(const Action& action) const {
    const auto found = sections_.find(text::toUtf8(action.key));
    return found == sections_.end() ? nullptr : &found->second;
  }
  // Null where the section doesn't tell the attribute.
  static const AttributeLine* lineOf(const std::vector<AttributeLine>& lines, const Action& action,
                                     const Attribute& attribute) {
    for (const AttributeLine& line : lines)
      for (const std::string& name : inTicks(line.names))
        if (attributeOf(action, name) == &attribute) return &line;
    return nullptr;
  }
  // The words of a line; "`1` to `4`" are four.
  static void addWords(const AttributeLine& line, std::set<std::string>& words) {
    const std::vector<std::string> pieces = atTicks(line.value);
    for (std::size_t i = 1; i < pieces.size(); i += 2) {
      words.insert(pieces[i]);
      const bool isRange = i >= 3 && pieces[i - 1] == " to " && isNumber(pieces[i - 2]) && isNumber(pieces[i]);
      for (int n = isRange ? numberIn(pieces[i - 2]) : 0; isRange && n < numberIn(pieces[i]); ++n)
        words.insert(std::to_string(n));
    }
  }
  static const Attribute* named(std::span<const Attribute> attributes, std::wstring_view name) {
    for (const Attribute& entry : attributes)
      if (entry.name == name) return &entry;
    return nullptr;
  }
  // The words that an attribute's line names, and those of the lines that it refers to: "as for `addSymbol`" is the
  // attribute of that name there, "as `stylef`" another one of the same action.
  std::set<std::string> wordsOf(const Action& action, const Attribute& attribute) const {
    std::set<std::string> words;
    const std::vector<AttributeLine> own = attributeLines(*sectionOf(action));
    const AttributeLine* line = lineOf(own, action, attribute);
    if (!line) return words;
    addWords(*line, words);
    for (const std::string& name : inTicks(line->value)) {
      const Action* other = actions::findAction(text::fromUtf8(name));
      const Action& meant = other ? *other : action;
      const Attribute* there = other ? named(other->attributes, attribute.name)
                                     : core::findAttribute(action.attributes, text::fromUtf8(name));
      if (!there || !sectionOf(meant)) continue;
      const std::vector<AttributeLine> lines = attributeLines(*sectionOf(meant));
      if (const AttributeLine* found = lineOf(lines, meant, *there)) addWords(*found, words);
    }
    return words;
  }

  std::map<std::string, Section> sections_;
};

TEST_F(ActionsDocument, HasASectionForEachKey) {
  std::set<std::string> idle, keys, titles;
  for (const std::string& line : sections_[kWithoutEffect].lines)
    for (const std::string& name : inTicks(line)) idle.insert(name);
  for (const Action& row : actions::actionTable())
    if (!idle.contains(text::toUtf8(row.key))) keys.insert(text::toUtf8(row.key));
  for (const auto& [title, section] : sections_)
    if (!title.empty() && title != kWithoutEffect && title != kCodes) titles.insert(title);
  EXPECT_EQ(keys, titles);

  std::string before;
  for (const std::string& line : sections_[""].lines) before += line + "\n";
  EXPECT_NE(std::string::npos,
            before.find("The system knows " + std::to_string(actions::actionTable().size()) + " keys"));
}

TEST_F(ActionsDocument, NamesTheActionsOfAnotherVersion) {
  std::set<std::string> expected, named;
  for (const Action& row : actions::actionTable())
    if (!row.version.empty() && row.version != L"3") expected.insert(text::toUtf8(row.key));
  for (const AttributeLine& line : attributeLines(sections_[""]))
    for (const std::string& name : inTicks(line.value))
      if (line.names == "`version`" && actions::findAction(text::fromUtf8(name))) named.insert(name);
  EXPECT_EQ(expected, named);
}

TEST_F(ActionsDocument, TellsTheAttributesOfEachRowAndNoOther) {
  for (const Action& row : actions::actionTable()) {
    const Section* section = sectionOf(row);
    if (!section) continue;
    std::set<std::wstring_view> reported;
    for (const AttributeLine& line : attributeLines(*section)) {
      const std::vector<std::string> pieces = atTicks(line.names);
      for (std::size_t i = 1; i < pieces.size(); i += 2) {
        const Attribute* attribute = attributeOf(row, pieces[i]);
        if (!attribute) {
          ADD_FAILURE() << section->title << ": its row has no attribute " << pieces[i];
          continue;
        }
        reported.insert(attribute->name);
        if (pieces[i - 1] != " to ") continue;
        const std::size_t digits = pieces[i].find_last_not_of("0123456789") + 1;
        EXPECT_EQ(attribute->most - 1, numberIn(pieces[i].substr(digits))) << section->title << ": " << pieces[i];
      }
    }
    for (const Attribute& attribute : row.attributes)
      EXPECT_TRUE(reported.contains(attribute.name))
          << section->title << " doesn't tell " << text::toUtf8(attribute.name);
  }
}

TEST_F(ActionsDocument, NamesTheWordsOfEachAttribute) {
  for (const Action& row : actions::actionTable()) {
    if (!sectionOf(row)) continue;
    for (const Attribute& attribute : row.attributes) {
      if (attribute.kind != core::Kind::word) continue;
      const std::set<std::string> named = wordsOf(row, attribute);
      for (const std::wstring& word : text::split(attribute.words, L'|'))
        EXPECT_TRUE(word.empty() || named.contains(text::toUtf8(word)))
            << text::toUtf8(row.key) << ", " << text::toUtf8(attribute.name) << ": " << text::toUtf8(word);
    }
  }
}

}  // namespace
}  // namespace test

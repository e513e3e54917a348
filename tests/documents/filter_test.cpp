// Filters: the logic of their items as one table, the gate of actions, and the predicates.
#include <gtest/gtest.h>

#include "creo/ProMdl.h"
#include "documents/action_list.h"
#include "documents/filter.h"
#include "documents/parsed.h"
#include "documents/predicate_table.h"
#include "support/world.h"
#include "text/encoding.h"
#include "text/pieces.h"

namespace {

using namespace creo;
using documents::kFilterHolds;
using documents::kFilterRefuses;
using test::element;
using test::parsed;
using test::predicate;
using test::World;

// "T and not F or N | T": T holds and F doesn't on a drawing, N isn't applicable to one, U is no key, G is given up;
// "|" ends a group.
std::wstring block(const std::wstring& items) {
  std::wstring xml = L"<block><filter>", open;
  bool negated = false;
  for (const std::wstring& word : text::split(items, L' ')) {
    if (word == L"not") {
      negated = true;
    } else if (word == L"and" || word == L"or") {
      xml += L" opand='" + std::wstring(word == L"and" ? L"true" : L"false") + L"'/>";
      open.clear();
    } else if (word == L"|") {
      xml += open + L"</filter><root>";
      open.clear();
    } else if (!word.empty()) {
      const std::wstring test = word == L"T"   ? L"type='filename' filename='*.drw'"
                                : word == L"F" ? L"type='filename' filename='other'"
                                : word == L"N" ? L"type='isGeneric'"
                                : word == L"G" ? L"type='filename' filename='/(*LIMIT_MATCH=5)(?:.?){9}\\d/'"
                                               : L"type='unheard'";
      xml += L"<i " + test + L" filtertype='" + (negated ? L"false" : L"true") + L"'";
      open = L"/>";
      negated = false;
    }
  }
  xml += open + (items.find(L'|') == std::wstring::npos ? L"</filter>" : L"</root>");
  return xml + L"</block>";
}

TEST(FilterLogic, ItemsAreGroupsOfAndsJoinedByOrs) {
  World world;
  world.drawing(L"SHEET");
  ASSERT_EQ(0, world.start());
  const ProMdl sheet = world.open(L"SHEET", ProMdlType::drawing);
  struct Case {
    const wchar_t* items;
    bool holds;
    int tried;  // how many of T and F were evaluated
  };
  const Case cases[] = {
      {L"", true, 0},
      {L"T", true, 1},
      {L"F", false, 1},
      {L"not F", true, 1},
      {L"not T", false, 1},
      {L"N", false, 0},
      {L"not N", false, 0},
      {L"U", true, 0},
      {L"not U", false, 0},
      {L"G", false, 1},
      {L"not G", false, 1},
      {L"not G or T", true, 2},
      {L"not F and not G", false, 2},
      {L"F or T", true, 2},
      {L"T or F", true, 1},
      {L"F and T", false, 2},
      {L"T and F or T", true, 3},
      {L"T and F or F and T", false, 4},
      {L"T and T or F", true, 2},
      {L"F or F or T and T", true, 4},
      {L"N or T", true, 1},
      {L"F | T", false, 2},
      {L"F | T or T", true, 3},
      {L"T | F", false, 2},
      {L"T or F | T", true, 2},
  };
  for (const Case& c : cases) {
    const auto document = parsed(block(c.items));
    const int before = world.session().calls("ProMdlDataGet");
    EXPECT_EQ(c.holds ? kFilterHolds : kFilterRefuses,
              documents::evaluateFilter(element(*document), L"DRW", sheet, true))
        << text::toUtf8(c.items);
    EXPECT_EQ(c.tried, world.session().calls("ProMdlDataGet") - before) << text::toUtf8(c.items);
  }
}

TEST(FilterLogic, NumberedLinesTellEachStepUnlessItIsSilent) {
  World world;
  world.drawing(L"SHEET");
  ASSERT_EQ(0, world.start());
  const ProMdl sheet = world.open(L"SHEET", ProMdlType::drawing);
  const auto document = parsed(block(L"F or T and T"));
  documents::evaluateFilter(element(*document), L"DRW", sheet, true);
  EXPECT_FALSE(world.logHas(L"Filter"));
  documents::evaluateFilter(element(*document), L"DRW", sheet, false);
  EXPECT_EQ(
      L"0     Filter returns: FALSE\n0     linked to next filter with OR\n0     Filter returns: TRUE\n"
      L"0     linked to next filter with AND\n0     Filter returns: TRUE\n0     Filter summary(all filters): TRUE\n",
      world.log());
}

TEST(FilterLogic, ChildrenThatAreNoGroupsArePassedOver) {
  const auto document =
      parsed(L"<task><subtasks><i type='filename' filename='x' filtertype='true'/></subtasks></task>");
  EXPECT_EQ(kFilterHolds, documents::evaluateFilter(element(*document), L"", {}, true));
}

TEST(FilterFile, IsTheDocumentOrItsElementByWhereTheGroupsAre) {
  const struct {
    const wchar_t* text;
    bool document;
  } cases[] = {
      {L"<root><i type='a'/></root>", true},
      {L"<root><filter type='a'/></root>", true},
      {L"<filter/>", true},
      {L"<root><filter><i type='a'/></filter></root>", false},
      {L"<kvfilter><filter><i type='a'/></filter></kvfilter>", false},
  };
  for (const auto& c : cases) {
    const auto document = parsed(c.text);
    const core::XmlNode* block = documents::filterFileBlock(*document);
    EXPECT_EQ(c.document ? document->root() : document->root()->next, block) << text::toUtf8(c.text);
  }
  EXPECT_EQ(nullptr, documents::filterFileBlock(*parsed(L"")));
}

TEST(FilterCheck, AnActionMustBeOpenForTheTypeAndItsFilterHold) {
  World world;
  world.part(L"P");
  world.assembly(L"A").uses(L"P", ProMdlType::part);
  world.drawing(L"D").uses(L"P", ProMdlType::part);
  ASSERT_EQ(0, world.start());
  const ProMdl part = world.open(L"P", ProMdlType::part), assembly = world.open(L"A", ProMdlType::assembly),
               drawing = world.open(L"D", ProMdlType::drawing);
  const std::wstring refusing = L"<filter><i type='filename' filename='x' filtertype='true'/></filter>";
  const struct {
    const wchar_t* attributes;
    ProMdl model;
    int result;
  } cases[] = {
      {L"", part, 2},
      {L"forPRT='false'", part, 2},
      {L"forPRT='true'", part, 0},
      {L"forPRT='yes'", part, 0},
      {L"forPRT='true'", assembly, 2},
      {L"forASM='true'", assembly, 0},
      {L"forASM='true'", drawing, 2},
      {L"forDRW='true'", drawing, 0},
      {L"", {}, 0},
      {L"forPRT='true' forEF='false'", part, 0},
      {L"forPRT='true' forEF='True'", part, 0},
      {L"forPRT='true' forEF='true'", part, 2},
  };
  for (const auto& c : cases) {
    const auto document = parsed(L"<task " + std::wstring(c.attributes) + L">" + refusing + L"</task>");
    EXPECT_EQ(c.result, documents::filterCheck(element(*document), L"PRT", c.model)) << text::toUtf8(c.attributes);
  }
}

// What stands outside a group is passed over. What was meant for a filter is told, what an action has beside it isn't.
TEST(FilterCheck, TellsOfItemsWithoutAGroup) {
  World world;
  world.part(L"P");
  ASSERT_EQ(0, world.start());
  const ProMdl part = world.open(L"P", ProMdlType::part);
  const struct {
    const wchar_t* children;
    bool told;
  } cases[] = {
      {L"<i type='filename' filename='x' filtertype='true'/>", true},
      {L"<Filter><i type='filename' filename='x' filtertype='true'/></Filter>", true},
      {L"<i type='filename' filename='x'/><filter><i type='filename' filename='P*' filtertype='true'/></filter>",
       false},
      {L"<filter/>", false},
      {L"", false},
      {L"<subtasks><task type='saveModel'/></subtasks>", false},
      {L"<option name_0='a' value_0='b'/>", false},
  };
  for (const auto& c : cases) {
    const auto document = parsed(L"<task forPRT='true' forEF='true'>" + std::wstring(c.children) + L"</task>");
    const std::size_t before = world.log().size();
    EXPECT_EQ(kFilterHolds, documents::filterCheck(element(*document), L"PRT", part)) << text::toUtf8(c.children);
    const std::wstring log = world.log().substr(before);
    EXPECT_EQ(c.told, log.find(L"The filter of this action holds no items, every model passes it") != log.npos)
        << text::toUtf8(c.children);
  }
}

TEST(Predicates, ParametersAreComparedByTheirType) {
  World world;
  world.part(L"BRACKET")
      .with(L"YES", true)
      .with(L"NO", false)
      .with(L"COLOR", L"Dark Red")
      .with(L"COUNT", 10)
      .with(L"LOSS", -3)
      .with(L"MASS", 10.05)
      .with(L"COLOR_2", L"blue");
  ASSERT_EQ(0, world.start());
  const ProMdl part = world.open(L"BRACKET", ProMdlType::part);
  const struct {
    const wchar_t *param, *rest;
    int holds;
  } cases[] = {
      {L"YES", L"value='*'", 1},
      {L"NO", L"value='*'", 1},
      {L"YES", L"value='JA'", 1},
      {L"YES", L"value='nein'", 0},
      {L"NO", L"value='F'", 1},
      {L"NO", L"value='0'", 1},
      {L"COLOR", L"value='dark*'", 1},
      {L"color", L"value='/^Dark/'", 1},
      {L"COLOR", L"value='red'", 0},
      {L"COLOR*", L"value='blue'", 1},
      {L"COLOR*", L"value='green'", 0},
      {L"COUNT", L"value='10'", 1},
      {L"COUNT", L"value='11'", 0},
      {L"COUNT", L"value='11' epsilon='1'", 1},
      {L"COUNT", L"value='11' epsilon='0.9'", 0},
      {L"COUNT", L"value='10' ncomp='1'", 0},
      {L"COUNT", L"value='10' ncomp='2'", 1},
      {L"COUNT", L"value='10' ncomp='4'", 1},
      {L"COUNT", L"value='10' ncomp='5'", 0},
      {L"COUNT", L"value='9' ncomp='5'", 1},
      {L"COUNT", L"value='10' ncomp='6'", 0},
      {L"COUNT", L"value='99999999999' ncomp='1'", 1},
      {L"COUNT", L"value='1*'", 1},
      {L"LOSS", L"value='-3'", 1},
      {L"LOSS", L"value='-4' ncomp='5'", 1},
      {L"MASS", L"value='10' epsilon='0.1' ncomp='3'", 1},
      {L"MASS", L"value='10' epsilon='0.1'", 1},
      {L"MASS", L"value='10'", 0},
      {L"MASS", L"value='10' epsilon='0.05' ncomp='1'", 0},
      {L"MASS", L"value='1.1e1' ncomp='1'", 1},
      {L"MASS", L"value='10.05*'", 1},
      {L"MASS", L"value='*.050000'", 1},
      {L"MASS", L"value='x*'", 0},
      {L"ABSENT", L"value='*'", 0},
      {L"COLOR", L"", 0},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.holds, predicate(L"type='parameter' param='" + std::wstring(c.param) + L"' " + c.rest, part))
        << text::toUtf8(c.param) << " " << text::toUtf8(c.rest);
  }
  EXPECT_EQ(1, predicate(L"type='parameter' param='COLOR' value='%COLOR%'", part)) << "both are substituted";
}

TEST(Predicates, ADrawingsParameterMayBeThatOfItsModel) {
  World world;
  world.part(L"BRACKET").with(L"COLOR", L"red");
  world.drawing(L"SHEET").with(L"COLOR", L"white").uses(L"BRACKET", ProMdlType::part);
  world.drawing(L"EMPTY").with(L"COLOR", L"white");
  ASSERT_EQ(0, world.start());
  const ProMdl sheet = world.open(L"SHEET", ProMdlType::drawing), empty = world.open(L"EMPTY", ProMdlType::drawing);
  EXPECT_EQ(1, predicate(L"type='parameter' param='COLOR' value='white'", sheet));
  EXPECT_EQ(1, predicate(L"type='parameter' param='curmod:COLOR' value='red'", sheet));
  EXPECT_EQ(0, predicate(L"type='parameter' param='curmod:COLOR' value='white'", sheet));
  EXPECT_EQ(0, predicate(L"type='parameter' param='curmod:COLOR' value='white'", empty));
}

TEST(Predicates, TellFamiliesSkeletonsAndNames) {
  World world;
  world.part(L"BOLT").instance(L"BOLT_M6");
  world.part(L"FRAME").skeleton();
  world.drawing(L"BOLT");
  ASSERT_EQ(0, world.start());
  const ProMdl generic = world.open(L"BOLT", ProMdlType::part), frame = world.open(L"FRAME", ProMdlType::part),
               drawing = world.open(L"BOLT", ProMdlType::drawing),
               instance = ProMdlRetrieve(L"BOLT_M6", ProMdlType::part).value;
  const struct {
    const wchar_t* item;
    int generic, instance, frame, drawing;
  } cases[] = {
      {L"type='isInstance'", 0, 1, 0, 3},
      {L"type='isGeneric'", 1, 0, 0, 3},
      {L"type='isSkeleton'", 0, 0, 1, 0},
      {L"type='filename' filename='bolt.prt'", 1, 0, 0, 0},
      {L"type='filename' filename='bolt*'", 1, 1, 0, 1},
      {L"type='filename' filename='/\\.DRW$/'", 0, 0, 0, 1},
  };
  for (const auto& c : cases) {
    const std::string item = text::toUtf8(c.item);
    EXPECT_EQ(c.generic, predicate(c.item, generic)) << item;
    EXPECT_EQ(c.instance, predicate(c.item, instance)) << item;
    EXPECT_EQ(c.frame, predicate(c.item, frame)) << item;
    EXPECT_EQ(c.drawing, predicate(c.item, drawing)) << item;
  }
  world.session().failNext("ProMdlTypeGet", ProGeneralError);
  EXPECT_EQ(3, predicate(L"type='isInstance'", generic));
  EXPECT_TRUE(world.logHas(L"Failure while ProMdlTypeGet"));
}

TEST(Predicates, AKeyThatIsUnknownSaysItsName) {
  std::set<std::wstring_view> keys;
  for (const documents::Predicate& row : documents::predicateTable())
    EXPECT_TRUE(keys.insert(row.key).second && row.function) << text::toUtf8(row.key);
  EXPECT_EQ(53u, keys.size());

  World world;
  world.part(L"P");
  ASSERT_EQ(0, world.start());
  const ProMdl part = world.open(L"P", ProMdlType::part);
  const auto item = parsed(L"<i/>");
  EXPECT_EQ(documents::Answer::noKey, documents::runPredicate(element(*item), L"unheard", part, true));
  EXPECT_EQ(L"", world.log());
  EXPECT_EQ(documents::Answer::noKey, documents::runPredicate(element(*item), L"unheard", part));
  EXPECT_TRUE(world.logHas(L"Filter not found: unheard\n"));
}

TEST(ActionList, SectionsStandByPosition) {
  const struct {
    const wchar_t *children, *sections;
  } cases[] = {
      {L"", L"----"},
      {L"<a/>", L"a---"},
      {L"<a/><b/><c/>", L"abc-"},
      {L"<a/><b/><c/><d/>", L"abcd"},
      {L"<a/><b/><c/><d/><e/>", L"abce"},
      {L"<a/><b/><c/><d/><e/><f/>", L"abce"},
  };
  for (const auto& c : cases) {
    const auto document = parsed(L"<list>" + std::wstring(c.children) + L"</list>");
    const documents::ActionList list = documents::actionList(*document);
    std::wstring sections;
    for (const core::XmlNode* section : {list.head, list.body, list.filter, list.foot})
      sections += section ? std::wstring(section->name) : L"-";
    EXPECT_EQ(c.sections, sections);
  }
  EXPECT_EQ(nullptr, documents::actionList(*parsed(L"")).head);
}

}  // namespace

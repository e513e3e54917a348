#include "core/xml.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "os/surroundings.h"

namespace {

using core::attrFind;
using core::XmlNode;

// name[attribute=value ...](children), one after the other.
std::wstring shape(const XmlNode& node) {
  std::wstring text(node.name);
  if (node.attributes && node.attributes->count > 0) {
    text += L'[';
    for (const auto* block = node.attributes; block; block = block->next)
      for (std::uint16_t i = 0; i < block->count; ++i) {
        if (text.back() != L'[') text += L' ';
        text.append(block->items[i]->name).append(L"=").append(block->items[i]->value);
      }
    text += L']';
  }
  if (node.children) {
    text += L'(';
    core::xmlEachChild(node, [&](const XmlNode& child) {
      if (text.back() != L'(') text += L' ';
      text += shape(child);
    });
    text += L')';
  }
  return text;
}

std::wstring shapeOf(std::wstring text) {
  const auto loaded = core::xmlParse(std::move(text));
  return loaded ? shape(*loaded.value->root()) : L"fault: " + loaded.fault.sentence();
}

std::wstring times(std::size_t count, std::wstring_view piece) {
  std::wstring text;
  for (std::size_t i = 0; i < count; ++i) text += piece;
  return text;
}

TEST(Xml, TextsAndTheirTrees) {
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L"", L"root"},
      {L"no tags > \" here", L"root"},
      {L"\uFEFF<a/>", L"root(a)"},
      {L"<?xml version=\"1.0\"?><a/>", L"root(a)"},
      {L"<?x \">\" ?><a/>", L"root(a)"},
      {L"<?never closed <a/", L"root"},
      {L"<a x=\"1\"/>", L"root(a[x=1])"},
      {L"<a x=\"1\"></a>", L"root(a[x=1])"},
      {L"<a x=\"1\" />", L"root(a[x=1])"},
      {L"<a>text<b/>more<c/></a><d/>", L"root(a(b c) d)"},
      {L"<a\n\tx=\"1\"\r\n\ty=\"2\"\n/>", L"root(a[x=1 y=2])"},
      {L"<a x=\"x > y\" y=\"/\"><b/></a>", L"root(a[x=x > y y=/](b))"},
      {L"<a x=\"\" x=\"2\"/>", L"root(a[x= x=2])"},
      {L"<a x = \"1\" y=\"2\"/>", L"root(a[\"1\"y=2])"},  // the quote must stand right behind the "="
      {L"<a x ty pe=\"1\"/>", L"root(a[xtype=1])"},
      {L"<a x='1' y=\"2\"/>", L"root(a['1'y=2])"},
      {L"<a/b><c/>", L"root(ab c)"},
      {L"<a/ x=\"1\"><b/>", L"root(a[x=1] b)"},
      {L"<a x=1/><b/>", L"root(a b)"},
      {L"<a / ><b/>", L"root(a(b))"},  // the last character is no slash
      {L"<a><b></c></d></e></f><g/>", L"root(a(b) g)"},
      {L"<!-- x=\"1\" --><a/>", L"root(!--[x=1](a))"},
      {L"<a x=\"1", L"root(a[x=1])"},
      {L"<a x", L"root(a)"},
      {L"<a><", L"root(a())"},
      {L"<>", L"root()"},
      {L"<a x=\"R&amp;D\"/>", L"root(a[x=R&D])"},
      {L"<a x=\"&lt;&gt;&quot;\"/>", L"root(a[x=<>\"])"},
      {L"<a x=\"&amp;lt; &amp;gt; &amp;quot; &amp;amp; &amp;amp;lt;\"/>", L"root(a[x=< &gt; &quot; &amp; &amp;lt;])"},
      {L"<a x=\"&#65; &apos; & &a&\"/>", L"root(a[x=&#65; &apos; & &a&])"},
      {L"<ä ö=\"ü&amp;\U0001F600\"/>", L"root(ä[ö=ü&\U0001F600])"},
  };
  for (const auto& [text, expected] : cases) {
    EXPECT_EQ(expected, shapeOf(text)) << text;
    // What is read in steps of many bytes gives the same far from the end.
    const std::wstring whole = text;
    if (whole.ends_with(L'>')) {
      EXPECT_EQ(expected, shapeOf(whole + std::wstring(64, L' '))) << text;
    }
  }
}

TEST(Xml, AttributesOfAnyLengthAtAnyPlace) {
  for (const wchar_t* piece : {L"v", L"ü", L"&amp;", L" ", L"\n", L"=", L"\U0001F600", L">"}) {
    const std::wstring letters = std::wstring_view(piece) == L"&amp;" ? L"&" : piece;
    std::wstring task = L"<t", expected = L"t[";
    for (std::size_t size = 0; size < 40; ++size) {
      const std::wstring name = std::wstring(1 + size % 5, L'n') + std::to_wstring(size);
      task += L" " + name + L"=\"" + times(size, piece) + L"\"";
      expected += (size == 0 ? L"" : L" ") + name + L"=" + times(size, letters);
    }
    expected += L"]";
    EXPECT_EQ(L"root(" + expected + L" " + expected + L" " + expected + L")", shapeOf(times(3, task + L"/>"))) << piece;
  }
}

TEST(Xml, NodesAreChainedInDocumentOrder) {
  const auto loaded = core::xmlParse(L"<list><head/><body><task/></body></list>");
  ASSERT_TRUE(loaded);
  const XmlNode* root = loaded.value->root();
  EXPECT_EQ(root, root->parent);
  EXPECT_EQ(0, root->isElement);
  EXPECT_EQ(root->next, core::xmlChildAt(root->children, 0));
  std::wstring order, back;
  const XmlNode* last = root;
  for (const XmlNode* node = root->next; node; last = node, node = node->next) {
    EXPECT_EQ(1, node->isElement);
    order.append(node->name).append(L"<").append(node->parent->name).append(L" ");
  }
  for (; last; last = last->prev) back.append(last->name).append(L" ");
  EXPECT_EQ(L"list<root head<list body<list task<body ", order);
  EXPECT_EQ(L"task body head list root ", back);
}

TEST(Xml, BlocksOfEight) {
  for (std::size_t count : {0U, 1U, 7U, 8U, 9U, 17U}) {
    std::wstring text = L"<a";
    for (std::size_t i = 0; i < count; ++i) text += L" n" + std::to_wstring(i) + L"=\"" + std::to_wstring(i) + L"\"";
    text += L">" + times(count, L"<c/>") + L"</a>";
    const auto loaded = core::xmlParse(text);
    const XmlNode* node = loaded.value->root()->next;
    EXPECT_EQ(count, core::xmlChildCount(node));
    for (std::size_t i = 0; i < 20; ++i) {
      EXPECT_EQ(i < count, core::xmlChildAt(node->children, i) != nullptr) << count << ' ' << i;
      const auto* found = attrFind(node->attributes, L"n" + std::to_wstring(i));
      EXPECT_EQ(i < count, found && found->value == std::to_wstring(i)) << count << ' ' << i;
    }
    if (count == 8) {
      ASSERT_TRUE(node->children->next);
      EXPECT_EQ(0, node->children->next->count);
    }
  }
  EXPECT_EQ(0U, core::xmlChildCount(nullptr));
}

TEST(Xml, AttributesAreFoundByTheirExactFirstName) {
  const auto loaded = core::xmlParse(L"<a Name=\"1\" name=\"2\" name=\"3\"/>");
  const auto* attributes = loaded.value->root()->next->attributes;
  EXPECT_EQ(L"2", attrFind(attributes, L"name")->value);
  EXPECT_EQ(nullptr, attrFind(attributes, L"NAME"));
  EXPECT_EQ(nullptr, attrFind(nullptr, L"name"));
}

TEST(Xml, WhatExceedsALimitIsRefusedWithItsLine) {
  const std::wstring face = L"\U0001F600";  // two units
  const std::wstring names = L"root(" + std::wstring(259, L'n') + L"[" + std::wstring(259, L'm') + L"=1])";
  EXPECT_EQ(names, shapeOf(L"<" + std::wstring(259, L'n') + L" " + std::wstring(259, L'm') + L"=\"1\"/>"));
  EXPECT_TRUE(core::xmlParse(L"<a x=\"" + std::wstring(25999, L'v') + L"\"/>"));
  EXPECT_TRUE(core::xmlParse(L"<a x=\"" + times(12999, face) + L"v\"/>"));
  const std::pair<std::wstring, const wchar_t*> cases[] = {
      {L"<a/>\n<" + std::wstring(260, L'n') + L"/>", L"fault: line 2: a name holds more than 259 characters"},
      {L"<a>\n\n</" + std::wstring(260, L'n') + L">", L"fault: line 3: a name holds more than 259 characters"},
      {L"<a\n" + std::wstring(260, L'n') + L"=\"\"/>", L"fault: line 2: a name holds more than 259 characters"},
      {L"<" + times(130, face) + L"/>", L"fault: line 1: a name holds more than 259 characters"},
      {L"<a>\n<b\n x=\"" + std::wstring(26000, L'v') + L"\"/>",
       L"fault: line 3: a value holds more than 25999 characters"},
      {L"<a x=\"" + times(13000, face) + L"\"/>", L"fault: line 1: a value holds more than 25999 characters"},
      {L"<a x=\"" + std::wstring(26000, L'v'), L"fault: line 1: a value holds more than 25999 characters"}};
  for (const auto& [text, fault] : cases) EXPECT_EQ(fault, shapeOf(text)) << text.substr(0, 10);
}

TEST(Xml, ADocumentMayBeUtf16) {
  for (const char* bytes : {"\xFF\xFE<\0a\0/\0>\0", "\xFE\xFF\0<\0a\0/\0>"}) {
    const auto loaded = core::xmlParse(std::string_view(bytes, 10));
    ASSERT_TRUE(loaded);
    EXPECT_EQ(L"a", loaded.value->root()->next->name);
  }
}

TEST(Xml, LinesOfNodes) {
  const auto loaded = core::xmlParse(
      L"<?xml\n?><a>\n\n  <b\n x=\"1\"/><c/>\n</a\n>\n<d x=\"two\nlines\"\n\ty\n=\"2\"/><e/>" + std::wstring(64, L' '));
  std::wstring lines;
  for (const XmlNode* node = loaded.value->root()->next; node; node = node->next)
    lines += std::wstring(node->name) + std::to_wstring(loaded.value->lineOf(*node)) + L" ";
  EXPECT_EQ(L"a2 b4 c5 d8 e11 ", lines);
}

TEST(Xml, AMillionTagsNeedNoStack) {
  constexpr std::size_t kMany = 1'000'000;
  const auto deep = core::xmlParse(times(kMany, L"<a>"));
  std::size_t depth = 0;
  for (const XmlNode* node = deep.value->root(); node->children; node = node->next) ++depth;
  EXPECT_EQ(kMany, depth);
  const auto closed = core::xmlParse(times(kMany, L"</a>") + L"<b/>");
  EXPECT_EQ(L"root(b)", shape(*closed.value->root()));
  const auto flat = core::xmlParse(L"<a>" + times(kMany, L"<b/>"));
  EXPECT_EQ(kMany, core::xmlChildCount(flat.value->root()->next));
}

TEST(Xml, Files) {
  const os::SurroundingsGuard guard;
  const std::filesystem::path folder = std::filesystem::path(testing::TempDir()) / "kvd_xml_test";
  std::filesystem::create_directories(folder);
  os::mounts().set(L'q', folder.string());
  ASSERT_FALSE(os::files().write(L"q:\\list.xml",
                                 "\xEF\xBB\xBF<list name=\"Pr\xC3\xBC"
                                 "fung\"/>"));
  const auto loaded = core::xmlLoadFile(L"q:\\list.xml");
  ASSERT_TRUE(loaded);
  EXPECT_EQ(L"root(list[name=Prüfung])", shape(*loaded.value->root()));

  ASSERT_FALSE(os::files().write(L"q:\\list.xml",
                                 "<list name=\"Pr\xFC"
                                 "fung \x80\"/>"));  // Windows-1252
  EXPECT_EQ(L"root(list[name=Prüfung €])", shape(*core::xmlLoadFile(L"q:\\list.xml").value->root()));

  ASSERT_FALSE(os::files().write(L"q:\\list.xml", "<a>\n<" + std::string(260, 'n')));
  EXPECT_EQ(L"q:\\list.xml: line 2: a name holds more than 259 characters",
            core::xmlLoadFile(L"q:\\list.xml").fault.sentence());
  const auto missing = core::xmlLoadFile(L"q:\\none.xml");
  EXPECT_FALSE(missing);
  EXPECT_EQ(L"q:\\none.xml: No such file or directory", missing.fault.sentence());
  std::filesystem::remove_all(folder);
}

}  // namespace

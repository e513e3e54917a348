#include "kelvane/vocabulary/relax_ng.h"

#include <limits>

#include "actions/dispatch.h"
#include "documents/predicate_table.h"
#include "kelvane/base/version.h"
#include "kelvane/base/xml_text.h"
#include "kelvane/vocabulary/relax_ng_attributes.h"
#include "kelvane/vocabulary/task_children.h"
#include "text/encoding.h"

namespace kelvane {
namespace {

using core::Attribute;

constexpr Attribute kItemAttributes[] = {
    {.name = L"filtertype", .kind = core::Kind::flag, .words = L"true", .need = core::Need::needed},
    {.name = L"opand", .kind = core::Kind::flag, .words = L"true"},
};
constexpr Attribute kFilterSection[] = {
    {.name = L"active", .kind = core::Kind::flag, .words = L"true"},
    {.name = L"exists", .kind = core::Kind::flag, .words = L"true"},
};

bool isSwitch(const Attribute& attribute) { return attribute.name.starts_with(L"for"); }
// In an element of its own, inside the task.
bool isInside(const Attribute& attribute) { return attribute.most == std::numeric_limits<int>::max(); }
bool doesSomething(const actions::Action& action) {
  return !action.isRemoved && action.group != actions::Group::withoutEffect;
}

template <class Wanted>
std::vector<Attribute> chosen(std::span<const Attribute> attributes, Wanted wanted) {
  std::vector<Attribute> result;
  for (const Attribute& attribute : attributes)
    if (wanted(attribute)) result.push_back(attribute);
  return result;
}

class Grammar {
 public:
  Grammar() {
    out_.line(R"(<?xml version="1.0" encoding="UTF-8"?>)");
    out_.line(std::string("<!-- kelvane ") + kVersion + " -->");
    out_.open(
        "grammar xmlns=\"http://relaxng.org/ns/structure/1.0\" "
        "xmlns:a=\"http://relaxng.org/ns/compatibility/annotations/1.0\" "
        "datatypeLibrary=\"http://www.w3.org/2001/XMLSchema-datatypes\"");
  }
  std::string finished() {
    addAttributeForms(out_);
    out_.close();
    return out_.text();
  }

  void addList() {
    out_.open("start");
    out_.open("element");
    out_.leaf("anyName");
    for (const char* section : {"head", "body", "filterSection", "foot"})
      out_.leaf("ref name=\"" + std::string(section) + "\"");
    out_.close();
    out_.close();
    for (const char* section : {"head", "body", "foot"}) addTasks(section, section, "zeroOrMore");
    openElement("filterSection", "filter");
    addAttributes(out_, kFilterSection);
    addMany("zeroOrMore", {"group"});
    closeElement();
    addTask();
  }

  void addFilterFile() {
    out_.open("start");
    out_.open("choice");
    out_.leaf("ref name=\"group\"");
    out_.open("element");
    out_.line("<choice><name>filters</name><name>filter</name><name>root</name></choice>");
    addMany("oneOrMore", {"group"});
    out_.close();
    out_.close();
    out_.close();
  }

  // Groups of items, and the items by their keys.
  void addGroups() {
    out_.open("define name=\"group\"");
    out_.open("element");
    out_.line("<choice><name>filter</name><name>root</name></choice>");
    addMany("zeroOrMore", {"item"});
    closeElement();
    out_.open("define name=\"item\"");
    out_.open("element");
    out_.leaf("anyName");
    out_.open("choice");
    for (const documents::Predicate& row : documents::predicateTable()) addItem(row);
    out_.close();
    closeElement();
  }

 private:
  void openElement(const std::string& define, const std::string& element) {
    out_.open("define name=\"" + define + "\"");
    out_.open("element name=\"" + element + "\"");
  }
  void closeElement() {
    out_.close();
    out_.close();
  }
  // head: "zeroOrMore" or "oneOrMore" of these definitions.
  void addMany(std::string_view head, const std::vector<std::string>& names) {
    out_.open(head);
    if (names.size() > 1) out_.open("choice");
    for (const std::string& name : names) out_.leaf("ref name=\"" + name + "\"");
    if (names.size() > 1) out_.close();
    out_.close();
  }
  void addTasks(const std::string& define, const std::string& element, std::string_view head) {
    openElement(define, element);
    addMany(head, {"task"});
    closeElement();
  }
  void addKey(std::wstring_view key, std::string_view about) {
    out_.line("<a:documentation>" + escaped(about) + "</a:documentation>");
    out_.line("<attribute name=\"type\"><value type=\"string\">" + text::toUtf8(key) + "</value></attribute>");
  }

  void addItem(const documents::Predicate& row) {
    out_.open("group");
    addKey(row.key, row.about);
    std::vector<Attribute> all(row.attributes.begin(), row.attributes.end());
    all.insert(all.end(), std::begin(kItemAttributes), std::end(kItemAttributes));
    // Some programs give items what tasks have; nothing reads it.
    for (Attribute common :
         chosen(actions::commonAttributes(), [](const Attribute& attribute) { return attribute.name != L"type"; })) {
      common.need = core::Need::optional;
      all.push_back(common);
    }
    addAttributes(out_, all);
    out_.close();
  }

  void addTask() {
    openElement("task", "task");
    out_.open("choice");
    for (const actions::Action& row : actions::actionTable())
      if (doesSomething(row)) out_.leaf("ref name=\"action." + text::toUtf8(row.key) + "\"");
    out_.close();
    closeElement();
    for (const actions::Action& row : actions::actionTable())
      if (doesSomething(row)) addAction(row);
  }

  void addAction(const actions::Action& row) {
    const std::string name = "action." + text::toUtf8(row.key);
    out_.open("define name=\"" + name + "\"");
    addKey(row.key, row.about);
    const std::string version = text::toUtf8(row.version);
    out_.line("<attribute name=\"version\">" +
              (version.empty() ? "<text/>" : "<value type=\"string\">" + version + "</value>") + "</attribute>");
    std::vector<Attribute> all = chosen(row.attributes, [](const Attribute& entry) { return !isInside(entry); });
    for (const Attribute& common : actions::commonAttributes())
      if (common.name != L"type" && common.name != L"version") all.push_back(common);
    addAttributes(out_, all);
    const TaskChildren* inside = childrenOf(row.key);
    std::vector<std::string> children = {"group"};
    if (inside) children.push_back(name + ".inside");
    if (inside && inside->isNeeded) {
      addMany("zeroOrMore", {"group"});
      out_.leaf("ref name=\"" + children.back() + "\"");
    }
    addMany("zeroOrMore", children);
    out_.close();
    if (inside) addInside(children.back(), row, *inside);
  }

  void addInside(const std::string& define, const actions::Action& row, const TaskChildren& inside) {
    const std::string element(inside.element);
    switch (inside.what) {
      case TaskChildren::What::tasks:
        return addTasks(define, element, "zeroOrMore");
      case TaskChildren::What::lastFilter:
      case TaskChildren::What::filters:
        openElement(define, element);
        addAttributes(out_, chosen(actions::commonAttributes(), &isSwitch));
        addMany("zeroOrMore", {"group"});
        return closeElement();
      case TaskChildren::What::options:
        openElement(define, element);
        addAttributes(out_, chosen(row.attributes, &isInside));
        return closeElement();
    }
  }

  XmlText out_;
};

}  // namespace

std::string listSchema() {
  Grammar grammar;
  grammar.addList();
  grammar.addGroups();
  return grammar.finished();
}

std::string filterSchema() {
  Grammar grammar;
  grammar.addFilterFile();
  grammar.addGroups();
  return grammar.finished();
}

}  // namespace kelvane

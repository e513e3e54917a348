#include "kelvane/vocabulary/row_example.h"

#include <algorithm>

#include "kelvane/base/xml_text.h"
#include "kelvane/vocabulary/task_children.h"
#include "kelvane/vocabulary/words.h"
#include "text/encoding.h"
#include "text/numbers.h"

namespace kelvane {
namespace {

using core::Attribute;
using core::Kind;
using core::Need;

// "@project_dir@" is the attribute's own folder of the package. What is written among the reports is a file.
std::string pathIn(const Attribute& attribute, std::string_view end) {
  const bool isReport = attribute.kind == Kind::written && attribute.folder == L"reports";
  return "@project_dir@" + std::string(isReport ? std::string_view("/name.csv") : end);
}

std::string numberOf(const Attribute& attribute) {
  if (!attribute.range.isThere()) return "1";
  return text::toUtf8(text::shortest(std::max(attribute.range.least, std::min(1.0, attribute.range.most))));
}

struct Sample {
  Kind kind;
  const char* text;
};
// A text has the last one.
constexpr Sample kSamples[] = {
    {Kind::present, "true"},
    {Kind::pattern, "NAME*"},
    {Kind::numbers, "1,2"},
    {Kind::file, "/name.txt"},
    {Kind::model, "/name.prt"},
    {Kind::folder, ""},
    {Kind::written, ""},
    {Kind::program, "python3"},
    {Kind::address, "https://intranet.example/"},
    {Kind::feature, "4"},
    {Kind::relation, "LENGTH = 10"},
    {Kind::macro, "~ Command `ProCmdModelSave`;"},
    {Kind::unit, "mm"},
    {Kind::cell, "1,1"},
    {Kind::format, "%.2f"},
    {Kind::text, "NAME"},
};

std::string sample(const Attribute& attribute) {
  switch (attribute.kind) {
    case Kind::word:
    case Kind::flag:
      return wordsOf(attribute).empty() ? "" : wordsOf(attribute).front();
    case Kind::integer:
    case Kind::number:
    case Kind::measure:
    case Kind::index:
      return numberOf(attribute);
    default:
      break;
  }
  const Sample& row = *std::find_if(std::begin(kSamples), std::end(kSamples) - 1,
                                    [&](const Sample& entry) { return entry.kind == attribute.kind; });
  const bool isPath =
      row.kind == Kind::file || row.kind == Kind::model || row.kind == Kind::folder || row.kind == Kind::written;
  return isPath ? pathIn(attribute, row.text) : row.text;
}

class Element {
 public:
  Element(std::string name, std::wstring_view key) : name_(std::move(name)), text_("<" + name_) {
    add("type", text::toUtf8(key));
  }
  void add(std::string_view name, std::string_view value) {
    text_.append(" ").append(name).append("=\"").append(escaped(value)).append("\"");
  }
  void add(std::string_view name, bool value) { add(name, value ? std::string_view("true") : "false"); }
  // What the element can't do without, and the first of those of which one is needed.
  void addNeeded(std::span<const Attribute> attributes) {
    bool hasWork = false;
    for (const Attribute& attribute : attributes) {
      const bool isWork = attribute.need == Need::oneOf && !hasWork;
      hasWork = hasWork || isWork;
      if (isWork || attribute.need == Need::needed) addWithCounter(attribute, attributes);
    }
  }
  // inside: what stands between the tags; empty: there is one tag alone.
  [[nodiscard]] std::string text(const std::string& inside) const {
    return inside.empty() ? text_ + "/>" : text_ + ">" + inside + "</" + name_ + ">";
  }

 private:
  // A list's counter stands before it.
  void addWithCounter(const Attribute& attribute, std::span<const Attribute> attributes) {
    if (attribute.numbers == core::Numbers::counted && core::findAttribute(attributes, attribute.counter))
      addOnce(text::toUtf8(attribute.counter), "1");
    addOnce(text::toUtf8(numberedName(attribute, 0)), sample(attribute));
  }
  void addOnce(const std::string& name, const std::string& value) {
    if (text_.find(" " + name + "=") == text_.npos) add(name, value);
  }

  std::string name_, text_;
};

}  // namespace

std::string example(const actions::Action& action) {
  Element element("task", action.key);
  element.add("version", action.version.empty() ? "3" : text::toUtf8(action.version));
  const ModelKinds kinds = kindsOf(action);
  element.add("forPRT", kinds.parts);
  element.add("forASM", kinds.assemblies);
  element.add("forDRW", kinds.drawings);
  element.add("forEF", false);
  const TaskChildren* inside = childrenOf(action.key);
  element.addNeeded(action.attributes);
  return element.text(inside ? std::string(inside->example) : std::string());
}

std::string example(const documents::Predicate& predicate) {
  Element element("item", predicate.key);
  element.add("filtertype", true);
  element.add("opand", true);
  element.addNeeded(predicate.attributes);
  return element.text({});
}

}  // namespace kelvane

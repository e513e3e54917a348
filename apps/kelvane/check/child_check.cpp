#include "kelvane/check/child_check.h"

#include <algorithm>

#include "documents/filter.h"
#include "kelvane/base/nearest.h"
#include "kelvane/vocabulary/task_children.h"
#include "text/encoding.h"
#include "text/pieces.h"

namespace kelvane {
namespace {

constexpr std::wstring_view kNumberSign = L"%d";

std::string inQuotes(std::wstring_view text) { return "'" + text::toUtf8(text) + "'"; }

// Other letters than small ones are told by themselves.
bool isNoSwitch(const core::XmlAttr& given) {
  return !given.value.empty() && given.value != L"true" && given.value != L"false" &&
         !lettersFault(given.name, given.value);
}
AttributeFault brokenSwitch(const core::XmlAttr& given) {
  return {"word-unknown", text::toUtf8(given.name),
          inQuotes(given.name) + ": neither 'true' nor 'false': " + inQuotes(given.value)};
}
AttributeFault unknownAttribute(const core::XmlNode& node, const core::XmlAttr& given, const std::string& hint) {
  return {"attribute-unknown", text::toUtf8(given.name),
          "element " + inQuotes(node.name) + " has no attribute " + inQuotes(given.name) + hint};
}

class Children {
 public:
  Children(const core::XmlNode& task, const actions::Action& action)
      : task_(task), action_(action), inside_(childrenOf(action.key)) {}

  std::vector<ChildFault> run() {
    if (inside_ && inside_->what == TaskChildren::What::options)
      readOptions();
    else
      core::xmlEachChild(task_, [this](const core::XmlNode& child) { readName(child); });
    return std::move(faults_);
  }

 private:
  void add(const core::XmlNode& at, std::string_view rule, std::wstring_view attribute, std::string text) {
    faults_.push_back({&at, {rule, text::toUtf8(attribute), std::move(text)}});
  }

  void readName(const core::XmlNode& child) {
    const std::string name = text::toUtf8(child.name);
    std::vector<std::string> known = {"filter", "root"};
    if (inside_) known.emplace_back(inside_->element);
    if (std::find(known.begin(), known.end(), name) != known.end()) return readRepeated(child, name);
    const std::string meant = nearest(name, known);
    if (!meant.empty() && !isMissed(meant))
      add(child, "element-unknown", L"", "an element '" + name + "' isn't read here; did you mean '" + meant + "'?");
  }
  // Of the elements with tasks the first one runs, of those with a filter to report the last one counts.
  void readRepeated(const core::XmlNode& child, const std::string& name) {
    using enum TaskChildren::What;
    if (!inside_ || inside_->element != name || (inside_->what != tasks && inside_->what != lastFilter)) return;
    const bool isFirst = inside_->what == tasks;
    const core::XmlNode* read = nullptr;
    core::xmlEachChild(task_, [&](const core::XmlNode& other) {
      if (other.name == child.name && (!isFirst || !read)) read = &other;
    });
    if (read != &child)
      add(child, "element-unknown", L"",
          "of several elements '" + name + "' the " + (isFirst ? "first" : "last") +
              " one alone is read, not this one");
  }
  // That it isn't there is told for the whole action.
  [[nodiscard]] bool isMissed(const std::string& name) const {
    if (inside_ && inside_->element == name) {
      bool isThere = false;
      core::xmlEachChild(task_,
                         [&](const core::XmlNode& child) { isThere = isThere || text::toUtf8(child.name) == name; });
      return inside_->isNeeded && !isThere;
    }
    const core::XmlAttr* filtered = core::attrFind(task_.attributes, L"forEF");
    return filtered && filtered->value == L"true" && !documents::holdsItems(task_);
  }

  void readOptions() {
    eachAttribute(task_, [this](const core::XmlAttr& given) {
      const core::Attribute* row = core::findAttribute(action_.attributes, given.name);
      if (row && row->name.ends_with(kNumberSign))
        add(task_, "attribute-unknown", given.name,
            inQuotes(given.name) + " isn't read here; options stand in elements inside");
    });
    int number = 0;
    core::xmlEachChild(task_, [&](const core::XmlNode& child) {
      const std::wstring own = std::to_wstring(number++);  // a filter among them is counted too
      if (child.name != L"filter" && child.name != L"root") readOption(child, own);
    });
  }
  // The element of that number has the attributes of that number.
  void readOption(const core::XmlNode& option, const std::wstring& number) {
    std::vector<std::string> known;
    for (const core::Attribute& row : action_.attributes) {
      if (!row.name.ends_with(kNumberSign)) continue;
      const std::wstring name = text::replaceAll(std::wstring(row.name), kNumberSign, number);
      known.push_back(text::toUtf8(name));
      if (!core::attrFind(option.attributes, name))
        add(option, "attribute-missing", name,
            "the option of number " + text::toUtf8(number) + " has no " + inQuotes(name));
    }
    eachAttribute(option, [&](const core::XmlAttr& given) {
      const std::string name = text::toUtf8(given.name);
      if (std::find(known.begin(), known.end(), name) == known.end())
        add(option, "attribute-unknown", given.name,
            "the option of number " + text::toUtf8(number) + " has no attribute '" + name + "'" +
                didYouMean(name, known));
    });
  }

  const core::XmlNode& task_;
  const actions::Action& action_;
  const TaskChildren* inside_;
  std::vector<ChildFault> faults_;
};

}  // namespace

std::vector<ChildFault> childFaults(const core::XmlNode& task, const actions::Action& action) {
  return Children(task, action).run();
}

std::vector<AttributeFault> switchFaults(const core::XmlNode& node) {
  std::vector<std::string> known;
  for (const core::Attribute& row : actions::commonAttributes()) known.push_back(text::toUtf8(row.name));
  std::vector<AttributeFault> faults;
  eachAttribute(node, [&](const core::XmlAttr& given) {
    const core::Attribute* row = core::findAttribute(actions::commonAttributes(), given.name);
    if (!row)
      faults.push_back(unknownAttribute(node, given, didYouMean(text::toUtf8(given.name), known)));
    else if (row->kind == core::Kind::flag && isNoSwitch(given))
      faults.push_back(brokenSwitch(given));
  });
  return faults;
}

std::vector<AttributeFault> listFilterFaults(const core::XmlNode& filter) {
  const std::vector<std::string> known = {"active", "exists"};
  std::vector<AttributeFault> faults;
  eachAttribute(filter, [&](const core::XmlAttr& given) {
    const std::string name = text::toUtf8(given.name);
    const bool isKnown = std::find(known.begin(), known.end(), name) != known.end();
    if (isKnown && isNoSwitch(given)) faults.push_back(brokenSwitch(given));
    const std::string meant = isKnown ? std::string() : didYouMean(name, known);
    if (!meant.empty()) faults.push_back(unknownAttribute(filter, given, meant));
  });
  return faults;
}

}  // namespace kelvane

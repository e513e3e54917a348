#include "kelvane/check/list_names.h"

#include <algorithm>

#include "actions/dispatch.h"
#include "kelvane/base/nearest.h"
#include "kelvane/check/text_check.h"
#include "text/encoding.h"
#include "text/letters.h"
#include "text/pieces.h"

namespace kelvane {
namespace {

using core::Kind;

constexpr std::wstring_view kOpensReport = L"openCSVReport";

std::wstring_view valueOf(const core::XmlNode& node, std::wstring_view name) {
  const core::XmlAttr* found = core::attrFind(node.attributes, name);
  return found ? found->value : std::wstring_view();
}

// In their order, whatever holds them.
template <class Names>
std::vector<std::string> narrowed(const Names& names) {
  std::vector<std::string> all;
  all.reserve(names.size());
  for (const std::wstring& name : names) all.push_back(text::toUtf8(name));
  std::sort(all.begin(), all.end());
  return all;
}

}  // namespace

bool isSwitchedOff(const core::XmlNode& task) {
  const core::XmlAttr* deak = core::attrFind(task.attributes, L"deak");
  return deak && deak->value != L"false";
}

void ListNames::readSection(const core::XmlNode* section) {
  if (!section) return;
  core::xmlEachChild(*section, [this](const core::XmlNode& task) { readTask(task); });
}

void ListNames::readTask(const core::XmlNode& task) {
  if (isSwitchedOff(task)) return;
  const std::wstring_view type = valueOf(task, L"type");
  const actions::Action* action = actions::findAction(type);
  if (action) {
    eachAttribute(task, [&](const core::XmlAttr& given) {
      const core::Attribute* attribute = actions::findAttribute(*action, given.name);
      if (!attribute || attribute->kind != Kind::variable || given.value.empty()) return;
      setsAny_ = setsAny_ || hasVariables(given.value);
      variables_.insert(std::wstring(given.value));
    });
  }
  if (type == kOpensReport) {
    opensAny_ = opensAny_ || hasVariables(valueOf(task, L"name"));
    reporters_.insert(std::wstring(valueOf(task, L"name")));
  }
  core::xmlEachChild(task, [this](const core::XmlNode& child) {
    if (child.name == L"subtasks") readSection(&child);
  });
}

std::vector<AttributeFault> ListNames::faults(const core::XmlNode& task, const actions::Action& action) {
  std::vector<AttributeFault> faults;
  eachAttribute(task, [&](const core::XmlAttr& given) {
    const core::Attribute* attribute = actions::findAttribute(action, given.name);
    const std::string name = text::toUtf8(given.name);
    if (attribute && attribute->kind == Kind::reporter && !opensAny_ && !hasVariables(given.value) &&
        !reporters_.contains(std::wstring(given.value)))
      faults.push_back({"reporter-unknown", name,
                        "'" + name + "': no action up to this section opens a report '" + text::toUtf8(given.value) +
                            "'" + didYouMean(text::toUtf8(given.value), narrowed(reporters_))});
    for (AttributeFault& fault : unsetVariables(given)) faults.push_back(std::move(fault));
  });
  addReport(task, action, faults);
  return faults;
}

std::vector<AttributeFault> ListNames::unsetVariables(const core::XmlAttr& given) const {
  std::vector<AttributeFault> faults;
  if (setsAny_) return faults;
  const std::string name = text::toUtf8(given.name);
  for (const std::string& used : namedUserVariables(given.value)) {
    const std::string variable = used.substr(1, used.size() - 2);
    if (!variables_.contains(text::fromUtf8(variable)))
      faults.push_back({"user-variable-unset", name,
                        std::string("'").append(name).append("': no action up to this section sets '%user:") +
                            variable + "%'" + didYouMean(variable, narrowed(variables_))});
  }
  return faults;
}

// The same text gives the same file, but for what differs between models.
void ListNames::addReport(const core::XmlNode& task, const actions::Action& action,
                          std::vector<AttributeFault>& faults) {
  if (action.key != kOpensReport) return;
  const std::wstring file = text::replaceAll(text::lower(std::wstring(valueOf(task, L"file"))), L"\\", L"/");
  if (!file.empty() && !files_.insert(file).second)
    faults.push_back({"report-path-twice", "file", "'file': another report of the list is opened on this file, too"});
}

}  // namespace kelvane

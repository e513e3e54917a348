#include "kelvane/check/command_check.h"

#include <algorithm>

#include "kelvane/check/text_check.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace kelvane {
namespace {

// The values of models and user variables outside single quotes; a single quote inside double ones is a letter.
std::vector<std::string> openValues(std::wstring_view line) {
  std::wstring open;
  wchar_t quote = 0;
  for (const wchar_t c : line) {
    const bool isQuote = c == L'\'' || c == L'"';
    if (isQuote && quote == 0)
      quote = c;
    else if (c == quote)
      quote = 0;
    if (quote != L'\'') open += c;
  }
  return namedParameters(open);
}

}  // namespace

std::vector<AttributeFault> commandFaults(const core::XmlNode& task, const actions::Action& action) {
  std::vector<AttributeFault> faults;
  const auto partOf = [&](std::wstring_view name) {
    return std::any_of(action.attributes.begin(), action.attributes.end(), [&](const core::Attribute& row) {
      return row.kind == core::Kind::program && (row.name == name || row.with == name);
    });
  };
  const core::XmlAttr* const credentials = core::attrFind(task.attributes, L"usrcred");
  const bool sends = credentials && credentials->value == L"true";
  eachAttribute(task, [&](const core::XmlAttr& given) {
    const std::string name = text::toUtf8(given.name);
    if (partOf(given.name))
      for (const std::string& value : openValues(given.value))
        faults.push_back({"command-value", name,
                          "'" + name + "': " + value +
                              " is read by the command processor, which takes ';', '|' or '$' in it for its own; in "
                              "single quotes it is one argument"});
    const core::Attribute* row = actions::findAttribute(action, given.name);
    if (!sends || !row || row->kind != core::Kind::address) return;
    const bool isOpen = text::startsWithNoCase(given.value, L"http://");
    faults.push_back(
        {"credentials-unproved", name,
         "'" + name + "': user name and password go " +
             (isOpen ? "through the net in the open" : "to a server that is proved with kvd_url_verify=1 alone")});
  });
  return faults;
}

}  // namespace kelvane

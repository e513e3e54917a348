#include "kelvane/check/command_check.h"

#include <algorithm>

#include "kelvane/check/text_check.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace kelvane {
namespace {

// Takes single quotes out of what follows, up to "$$".
constexpr std::wstring_view kWithoutQuotes = L"$$repl$'$$";

// The values of models in a command line.
struct CommandValues {
  std::vector<std::string> open;    // outside single quotes; one inside double quotes is a letter
  std::vector<std::string> quoted;  // inside, and with those that they bring along
};

CommandValues valuesIn(std::wstring_view line) {
  std::wstring open, quoted;
  wchar_t quote = 0;
  for (std::size_t at = 0; at < line.size(); ++at) {
    if (line.substr(at).starts_with(kWithoutQuotes)) {
      const std::size_t begin = at + kWithoutQuotes.size(), end = std::min(line.find(L"$$", begin), line.size());
      if (quote != L'\'') open += line.substr(begin, end - begin);
      at = end + 1;
      continue;
    }
    const wchar_t c = line[at];
    const bool isQuote = c == L'\'' || c == L'"';
    if (isQuote && quote == 0)
      quote = c;
    else if (c == quote)
      quote = 0;
    (quote == L'\'' ? quoted : open) += c;
  }
  return {namedParameters(open), namedParameters(quoted)};
}

void addValueFaults(const core::XmlAttr& given, std::vector<AttributeFault>& faults) {
  const std::string name = text::toUtf8(given.name);
  const CommandValues values = valuesIn(given.value);
  const auto add = [&](std::string_view before, std::string_view value, std::string_view about, std::string_view end) {
    std::string line;
    for (const std::string_view piece : {std::string_view("'"), std::string_view(name), std::string_view("': "), before,
                                         value, about, std::string_view("; '$$repl$'$$"), value, end})
      line += piece;
    faults.push_back({"command-value", name, std::move(line)});
  };
  for (const std::string& value : values.open)
    add("", value, " is read by the command processor, which takes ';', '|' or '$' in it for its own",
        "$$' is one argument");
  for (const std::string& value : values.quoted)
    add("a single quote in ", value, " ends the argument for the command processor", "$$' takes it out");
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
    if (partOf(given.name)) addValueFaults(given, faults);
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

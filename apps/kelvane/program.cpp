#include "kelvane/program.h"

#include <CLI/CLI.hpp>
#include <algorithm>

#include "kelvane/base/fault.h"
#include "kelvane/base/interrupt.h"
#include "kelvane/base/nearest.h"
#include "kelvane/base/version.h"
#include "kelvane/verb_table.h"
#include "os/surroundings.h"
#include "plugin/action_table.h"
#include "text/encoding.h"

namespace kelvane {
namespace {

std::vector<std::string> verbNames() {
  std::vector<std::string> names;
  for (const VerbRow& row : verbRows()) names.emplace_back(row.name);
  return names;
}

constexpr std::size_t kWidth = 12;  // of the names of verbs in a column

std::string overview() {
  std::string text = "usage: kelvane VERB ...\n\n";
  for (const VerbRow& row : verbRows()) {
    text.append("  ").append(row.name).append(kWidth - std::string_view(row.name).size(), ' ').append(row.help) += '\n';
  }
  return text + "\n'kelvane VERB -h' tells a verb's options.\n";
}

// The library's own line for it names the largest number that there is.
std::string notNegative(const std::string& text) {
  return text.starts_with('-') ? "'" + text + "' is less than 0" : std::string();
}

void addOption(CLI::App& app, const OptionRow& row) {
  const auto shape = [&row](CLI::Option* option) {
    option->option_text(row.value);
    const std::vector<std::string> words = choices(row);
    if (!words.empty())
      option->check(CLI::IsMember(std::set<std::string>(words.begin(), words.end()), CLI::ignore_case));
    return option;
  };
  if (auto* const* flag = std::get_if<bool*>(&row.target)) {
    app.add_flag(row.names, **flag, row.help);
  } else if (auto* const* number = std::get_if<int*>(&row.target)) {
    shape(app.add_option(row.names, **number, row.help)->check(notNegative));
  } else if (auto* const* text = std::get_if<std::string*>(&row.target)) {
    shape(app.add_option(row.names, **text, row.help)->required(isArgument(row)));
  } else if (auto* const* optional = std::get_if<std::optional<std::string>*>(&row.target)) {
    shape(app.add_option(row.names, **optional, row.help));
  } else {
    CLI::Option* option = shape(app.add_option(row.names, *std::get<std::vector<std::string>*>(row.target), row.help));
    // One value a mention: what stands behind it is an argument, and brackets are part of a text.
    if (!isArgument(row)) option->allow_extra_args(false)->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
  }
}

std::string oneLine(std::string text) {
  for (char& c : text) c = c == '\n' ? ' ' : c;
  return text;
}

int runVerb(const VerbRow& row, std::vector<std::string> arguments, Console& console, const Terminals& terminals) {
  const std::unique_ptr<Verb> verb = row.make();
  Common common;
  CLI::App app(row.help, std::string("kelvane ") + row.name);
  app.footer(std::string("Example: ") + row.example);
  app.allow_windows_style_options(false);  // a path may begin with "/" there, too
  for (const OptionRow& option : verb->options()) addOption(app, option);
  for (const OptionRow& option : commonOptions(common)) addOption(app, option);
  std::reverse(arguments.begin(), arguments.end());  // the parser takes them from the end
  try {
    app.parse(arguments);
  } catch (const CLI::CallForHelp&) {
    console.resultLines(app.help());
    return kFine;
  } catch (const CLI::ParseError& error) {
    throw Fault(std::string(row.name) + ": " + oneLine(error.what()) + " ('kelvane " + row.name + " -h' tells more)");
  }
  console.beQuiet(common.quiet);
  console.colours(common.color, terminals.out);
  console.errIsTerminal(terminals.err);
  console.inIsTerminal(terminals.in);
  return verb->run(console);
}

// Else another file could be meant, or written, than the one that is named.
void requireUtf8(const std::vector<std::string>& given) {
  for (const std::string& word : given)
    if (!text::isUtf8(word)) throw Fault("'" + word + "' isn't UTF-8; names are taken in UTF-8 alone");
}

int dispatch(const std::vector<std::string>& given, Console& console, const Terminals& terminals) {
  requireUtf8(given);
  const std::string first = given.empty() ? "" : given.front();
  if (first == "-h" || first == "--help" || (first == "help" && given.size() == 1)) {
    console.resultLines(overview());
    return kFine;
  }
  if (first == "--version") {
    console.result(std::string("kelvane ") + kVersion);
    return kFine;
  }
  if (first.empty()) throw Fault("a verb is missing; 'kelvane -h' tells which there are");
  // A verb's help is the same whatever options stand beside it.
  const auto words = given.begin() + (first == "help" ? 1 : static_cast<std::ptrdiff_t>(given.size()));
  for (const VerbRow& row : verbRows()) {
    if (std::find(words, given.end(), row.name) != given.end()) return runVerb(row, {"-h"}, console, terminals);
  }
  for (const VerbRow& row : verbRows()) {
    if (first == row.name) return runVerb(row, {given.begin() + 1, given.end()}, console, terminals);
  }
  throw Fault("there is no verb '" + first + "'" + didYouMean(first, verbNames()));
}

}  // namespace

int program(const std::vector<std::string>& given, std::ostream& out, std::ostream& err, Terminals terminals,
            std::istream* in) {
  const os::SurroundingsGuard surroundings;
  const OutOfRoom outOfRoom;
  plugin::handDownActions();
  Console console(out, err, in);
  int code = kCouldNot;
  try {
    code = dispatch(given, console, terminals);
  } catch (const std::exception& fault) {
    console.trouble(std::string("kelvane: ") + fault.what());
  }
  console.flush();
  if (console.lostResults()) {
    console.trouble("kelvane: what came of it can't be written to the standard output");
    if (code == kFine) code = kErrors;
  }
  return code;
}

}  // namespace kelvane

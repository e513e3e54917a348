#include "kelvane/program.h"

#include <CLI/CLI.hpp>

#include "kelvane/fault.h"
#include "kelvane/nearest.h"
#include "kelvane/verb.h"
#include "os/surroundings.h"

namespace kelvane {
namespace {

constexpr const char* kVersion = "kelvane 8.0.1.1";

const VerbRow kVerbs[] = {
    {"run", "runs a list on the models of a folder", "kelvane run standards.kvz clean models --dry-run", &makeRun},
    {"lists", "a package's action lists, with their descriptions", "kelvane lists standards.kvz", &makeLists},
    {"check", "what of a package would not run", "kelvane check standards.kvz", &makeCheck},
    {"eval", "what a text or a filter gives on a model", "kelvane eval workspace SHAFT.PRT \"%MATERIAL% of @mdln@\"",
     &makeEval},
    {"why", "why a model is or isn't worked by a list", "kelvane why standards.kvz clean workspace SHAFT.PRT",
     &makeWhy},
    {"models", "the models of a folder", "kelvane models workspace --param MATERIAL", &makeModels},
    {"show", "one model, readable", "kelvane show workspace SHAFT.PRT", &makeShow},
    {"new", "makes a model", "kelvane new workspace PLATE.PRT --param MASS:Double=2.5 --box 80,40,5", &makeNew},
    {"diff", "what two folders of models differ in", "kelvane diff before after --stat", &makeDiff},
    {"watch", "shows the triggers that fire while models are opened and saved",
     "echo save | kelvane watch models SHAFT.PRT --package standards.kvz --set \"kvd_start_kvz_before_save=standards "
     "clean\"",
     &makeWatch},
    {"ui", "the tool's dialogs in a browser", "kelvane ui --models workspace --packages packages", &makeUi},
    {"pack", "makes a package from a folder", "kelvane pack standards standards.kvz", &makePack},
    {"report", "a report as an aligned table", "kelvane report reports/masses.csv --columns", &makeReport},
    {"log", "a log as a tree", "kelvane log workspace/kelvane.log --level 1", &makeLog},
    {"vault", "a PDM folder: makes it, lists it, shows who has what", "kelvane vault /srv/plm --create", &makeVault},
};

// Options that every verb has.
struct Common {
  std::string color = "auto";
  bool quiet = false;
};
std::vector<OptionRow> commonOptions(Common& common) {
  return {{"--color", "auto|always|never", "colours in results", &common.color},
          {"-q,--quiet", "", "nothing but results and trouble", &common.quiet}};
}

std::vector<std::string> verbNames() {
  std::vector<std::string> names;
  for (const VerbRow& row : kVerbs) names.emplace_back(row.name);
  return names;
}

std::string overview() {
  std::string text = "usage: kelvane VERB ...\n\n";
  for (const VerbRow& row : kVerbs) {
    text.append("  ").append(row.name).append(10 - std::string_view(row.name).size(), ' ').append(row.help) += '\n';
  }
  return text + "\n'kelvane VERB -h' tells a verb's options.\n";
}

std::set<std::string> words(const std::string& choices) {
  std::set<std::string> result;
  std::stringstream stream(choices);
  for (std::string word; std::getline(stream, word, '|');) result.insert(word);
  return result;
}

void addOption(CLI::App& app, const OptionRow& row) {
  const auto shape = [&row](CLI::Option* option) {
    const std::string value(row.value);
    option->option_text(value);
    if (value.find('|') != value.npos) option->check(CLI::IsMember(words(value), CLI::ignore_case));
    return option;
  };
  const bool isArgument = row.names[0] != '-';
  if (auto* const* flag = std::get_if<bool*>(&row.target)) {
    app.add_flag(row.names, **flag, row.help);
  } else if (auto* const* number = std::get_if<int*>(&row.target)) {
    shape(app.add_option(row.names, **number, row.help)->check(CLI::NonNegativeNumber));
  } else if (auto* const* text = std::get_if<std::string*>(&row.target)) {
    shape(app.add_option(row.names, **text, row.help)->required(isArgument));
  } else {
    CLI::Option* option = app.add_option(row.names, *std::get<std::vector<std::string>*>(row.target), row.help);
    // One value a mention, so that an argument behind the option isn't taken for another value.
    if (!isArgument) option->expected(1)->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    shape(option);
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
  for (const OptionRow& option : verb->options()) addOption(app, option);
  for (const OptionRow& option : commonOptions(common)) addOption(app, option);
  std::reverse(arguments.begin(), arguments.end());  // the parser takes them from the end
  try {
    app.parse(arguments);
  } catch (const CLI::CallForHelp&) {
    console.result(app.help());
    return kFine;
  } catch (const CLI::ParseError& error) {
    throw Fault(std::string(row.name) + ": " + oneLine(error.what()) + " ('kelvane " + row.name + " -h' tells more)");
  }
  console.beQuiet(common.quiet);
  console.colours(common.color, terminals.out);
  console.errIsTerminal(terminals.err);
  return verb->run(console);
}

int dispatch(const std::vector<std::string>& given, Console& console, const Terminals& terminals) {
  const std::string first = given.empty() ? "" : given.front();
  if (first == "-h" || first == "--help" || first == "help") {
    console.result(overview());
    return kFine;
  }
  if (first == "--version") {
    console.result(kVersion);
    return kFine;
  }
  if (first.empty()) throw Fault("a verb is missing; 'kelvane -h' tells which there are");
  for (const VerbRow& row : kVerbs) {
    if (first == row.name) return runVerb(row, {given.begin() + 1, given.end()}, console, terminals);
  }
  throw Fault("there is no verb '" + first + "'" + didYouMean(first, verbNames()));
}

}  // namespace

int program(const std::vector<std::string>& given, std::ostream& out, std::ostream& err, Terminals terminals,
            std::istream* in) {
  const os::SurroundingsGuard surroundings;
  Console console(out, err, in);
  int code = kCouldNot;
  try {
    code = dispatch(given, console, terminals);
  } catch (const std::exception& fault) {
    console.trouble(std::string("kelvane: ") + fault.what());
  }
  console.flush();
  return code;
}

}  // namespace kelvane

// A verb of the program: its options as rows, and what it does.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "kelvane/base/console.h"
#include "kelvane/base/exit_codes.h"

namespace kelvane {

using OptionTarget = std::variant<bool*, int*, std::string*, std::optional<std::string>*, std::vector<std::string>*>;

// "-n,--dry-run" is an option; a name without dashes is an argument, which must be given unless its target may do
// without. An option with a list as its target may be given several times; of any other one the last counts.
struct OptionRow {
  const char* names;
  const char* value;  // what the help shows for the value: "NAME.EXT"; "a|b|c" takes just these words
  const char* help;
  OptionTarget target;
};

// The options that have a value, as a person would write them: "--save=all", "-n,--dry-run" as "--dry-run". Arguments
// aside.
std::vector<std::string> givenOptions(const std::vector<OptionRow>& rows);

class Verb {
 public:
  Verb() = default;
  virtual ~Verb() = default;
  Verb(const Verb&) = delete;
  Verb& operator=(const Verb&) = delete;
  virtual std::vector<OptionRow> options() = 0;
  // The exit code; kCouldNot is thrown as a Fault.
  virtual int run(Console& console) = 0;
};

struct VerbRow {
  const char* name;
  const char* help;
  const char* example;
  std::unique_ptr<Verb> (*make)();
};
// A file per verb, each with one of these.
std::unique_ptr<Verb> makeRun();
std::unique_ptr<Verb> makeLists();
std::unique_ptr<Verb> makeCheck();
std::unique_ptr<Verb> makeExplain();
std::unique_ptr<Verb> makeEval();
std::unique_ptr<Verb> makeWhy();
std::unique_ptr<Verb> makeModels();
std::unique_ptr<Verb> makeShow();
std::unique_ptr<Verb> makeNew();
std::unique_ptr<Verb> makeDiff();
std::unique_ptr<Verb> makeWatch();
std::unique_ptr<Verb> makePack();
std::unique_ptr<Verb> makeReport();
std::unique_ptr<Verb> makeLog();
std::unique_ptr<Verb> makeVault();
std::unique_ptr<Verb> makeUi();
std::unique_ptr<Verb> makeCompletion();
std::unique_ptr<Verb> makeMan();
std::unique_ptr<Verb> makeActions();
std::unique_ptr<Verb> makePredicates();
std::unique_ptr<Verb> makeHelp();
std::unique_ptr<Verb> makeSchema();
std::unique_ptr<Verb> makeInit();
std::unique_ptr<Verb> makeUndo();
std::unique_ptr<Verb> makeRuns();
std::unique_ptr<Verb> makePurge();
std::unique_ptr<Verb> makeTrust();
std::unique_ptr<Verb> makeReplay();

}  // namespace kelvane

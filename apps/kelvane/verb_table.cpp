#include "kelvane/verb_table.h"

#include <cstring>
#include <sstream>

namespace kelvane {
namespace {

const VerbRow kVerbs[] = {
    {"run", "runs a list on the models of a folder", "kelvane run standards.kvz clean models --dry-run", &makeRun},
    {"lists", "a package's action lists, with their descriptions", "kelvane lists standards.kvz", &makeLists},
    {"check", "what of a package would not run", "kelvane check standards.kvz", &makeCheck},
    {"trust", "what a package may do in a confined run, as it is kept", "kelvane trust standards.kvz", &makeTrust},
    {"explain", "what a rule of the check finds", "kelvane explain attribute-unknown", &makeExplain},
    {"actions", "the actions that lists can hold, or all of one of them", "kelvane actions renameLayer", &makeActions},
    {"predicates", "what filters can ask, or all of one filter", "kelvane predicates parameter", &makePredicates},
    {"help", "what an action, a filter, a rule of the check or a verb is", "kelvane help attribute-unknown", &makeHelp},
    {"schema", "what lists, filters and models are made of, for editors: RELAX NG and JSON Schema",
     "kelvane schema lists > lists.rng", &makeSchema},
    {"init", "makes the folder of a package that runs", "kelvane init standards", &makeInit},
    {"eval", "what a text or a filter gives on a model", "kelvane eval workspace SHAFT.PRT \"%MATERIAL% of @mdln@\"",
     &makeEval},
    {"why", "why a model is or isn't worked by a list", "kelvane why standards.kvz clean workspace SHAFT.PRT",
     &makeWhy},
    {"models", "the models of a folder", "kelvane models workspace --param MATERIAL", &makeModels},
    {"show", "one model, readable", "kelvane show workspace SHAFT.PRT", &makeShow},
    {"new", "makes a model", "kelvane new workspace PLATE.PRT --param MASS:Double=2.5 --box 80,40,5", &makeNew},
    {"diff", "what two folders of models differ in", "kelvane diff before after --stat", &makeDiff},
    {"runs", "the runs of a folder, and what each wrote", "kelvane runs workspace", &makeRuns},
    {"replay", "the plug-in against a recorded trace, without a session", "kelvane replay standards.kvz site.trace",
     &makeReplay},
    {"undo", "takes back what a run wrote", "kelvane undo workspace --dry-run", &makeUndo},
    {"purge", "drops old versions of documents and journals of old runs", "kelvane purge workspace --keep 3",
     &makePurge},
    {"watch", "shows the triggers that fire while models are opened and saved",
     "echo save | kelvane watch models SHAFT.PRT --package standards.kvz --set \"kvd_start_kvz_before_save=standards "
     "clean\"",
     &makeWatch},
    {"ui", "the tool's dialogs in a browser", "kelvane ui --models workspace --packages packages", &makeUi},
    {"pack", "makes a package from a folder", "kelvane pack standards standards.kvz", &makePack},
    {"report", "a report as an aligned table", "kelvane report reports/masses.csv --columns", &makeReport},
    {"log", "a log as a tree", "kelvane log workspace/kelvane.log --level 1", &makeLog},
    {"completion", "completes the program's words in a shell", "source <(kelvane completion bash)", &makeCompletion},
    {"man", "a page of the manual, for man(1)", "kelvane man run | man -l -", &makeMan},
    {"vault", "a PDM folder: makes it, lists it, shows who has what", "kelvane vault /srv/plm --create", &makeVault},
};

}  // namespace

std::span<const VerbRow> verbRows() { return kVerbs; }

std::vector<OptionRow> commonOptions(Common& common) {
  return {{"--color", "auto|always|never", "colours in results", &common.color},
          {"-q,--quiet", "", "nothing but results and trouble", &common.quiet}};
}

std::vector<std::string> choices(const OptionRow& row) {
  std::vector<std::string> result;
  if (std::strchr(row.value, '|') == nullptr) return result;
  std::stringstream stream(row.value);
  for (std::string word; std::getline(stream, word, '|');) result.push_back(word);
  return result;
}

std::vector<std::string> names(const OptionRow& row) {
  std::vector<std::string> result;
  std::stringstream stream(row.names);
  for (std::string name; std::getline(stream, name, ',');) result.push_back(name);
  return result;
}

bool isArgument(const OptionRow& row) { return row.names[0] != '-'; }
bool takesValue(const OptionRow& row) { return !std::holds_alternative<bool*>(row.target); }
bool mayRepeat(const OptionRow& row) { return std::holds_alternative<std::vector<std::string>*>(row.target); }

}  // namespace kelvane

#include "kelvane/vocabulary/words.h"

#include <algorithm>
#include <limits>

#include "actions/dispatch.h"
#include "documents/predicate_table.h"
#include "kelvane/base/words.h"
#include "text/encoding.h"
#include "text/numbers.h"
#include "text/pieces.h"

namespace kelvane {
namespace {

using actions::Test;
using actions::Touched;
using core::Attribute;
using core::Kind;

struct KindWords {
  Kind kind;
  const char* words;
};
// Those of words and flags tell the words themselves.
constexpr KindWords kKinds[] = {
    {Kind::text, "text"},
    {Kind::pattern, "pattern, with * and ?, or an expression in slashes"},
    {Kind::present, "anything: that it is there counts"},
    {Kind::integer, "whole number"},
    {Kind::number, "number"},
    {Kind::numbers, "numbers, with signs between them"},
    {Kind::file, "path of a file"},
    {Kind::model, "path of a model"},
    {Kind::newModel, "name of a new model"},
    {Kind::folder, "path of a folder"},
    {Kind::written, "path that is written"},
    {Kind::program, "program that is started"},
    {Kind::address, "address that is asked"},
    {Kind::feature, "code of a feature type"},
    {Kind::relation, "line of relations or of a program"},
    {Kind::macro, "line of macros"},
    {Kind::unit, "unit"},
    {Kind::reporter, "name of an opened report"},
    {Kind::variable, "name of a user variable that is set"},
    {Kind::cell, "numbers of row, column and line, with signs between them"},
    {Kind::format, "format of a number"},
    {Kind::measure, "number, of digits and a point"},
    {Kind::index, "whole number, or * for all"},
};
std::string kindWords(Kind kind) {
  const auto* found =
      std::find_if(std::begin(kKinds), std::end(kKinds), [kind](const KindWords& row) { return row.kind == kind; });
  return found == std::end(kKinds) ? std::string() : found->words;
}

std::string chosenWords(const Attribute& attribute) {
  std::string all;
  for (const std::string& word : wordsOf(attribute)) addPiece(all, word);
  const std::string entry = attribute.words.find(L'|') == attribute.words.npos ? "" : "one of ";
  return entry + all;
}

std::string number(double value) { return text::toUtf8(text::shortest(value)); }

struct TouchedWord {
  Touched touched;
  const char* words;
};
constexpr TouchedWord kTouched[] = {
    {Touched::model, "the model"},
    {Touched::users, "models that use it or that it uses"},
    {Touched::family, "its generic and instances"},
    {Touched::files, "files"},
    {Touched::reports, "reports of the run"},
    {Touched::session, "the session: windows, memory, the working folder"},
    {Touched::options, "Creo's options"},
    {Touched::server, "the PDM server and its workspace"},
    {Touched::programs, "other programs or macros"},
    {Touched::web, "addresses of the web"},
    {Touched::clipboard, "the clipboard"},
    {Touched::surroundings, "environment variables"},
    {Touched::variables, "user variables"},
};

constexpr ModelKinds kAnyKind, kPart{.assemblies = false, .drawings = false},
    kAssembly{.parts = false, .drawings = false}, kDrawing{.parts = false, .assemblies = false},
    kSolid{.drawings = false}, kUser{.parts = false};

struct TestWords {
  Test test;
  const char* words;
  ModelKinds kinds;  // that it lets through
};
constexpr TestWords kTests[] = {
    {Test::filter,
     "the switches forPRT, forASM and forDRW let the model through, and the filter too where forEF is true", kAnyKind},
    {Test::filterUnlessForAll,
     "the switches and the filter let the model through; they aren't asked where none of the switches is false and "
     "forEF isn't true",
     kAnyKind},
    {Test::filterWithModel, "the switches and the filter let the model through; they aren't asked without a model",
     kAnyKind},
    {Test::noFilter, "the switches and the filter aren't asked", kAnyKind},
    {Test::model, "there is a model", kAnyKind},
    {Test::part, "the model is a part", kPart},
    {Test::assembly, "the model is an assembly", kAssembly},
    {Test::drawing, "the model is a drawing", kDrawing},
    {Test::partOrAssembly, "the model is a part or an assembly", kSolid},
    {Test::solidType, "the model is a part or an assembly", kSolid},
    {Test::partType, "the model is a part", kPart},
    {Test::assemblyType, "the model is an assembly", kAssembly},
    {Test::drawingType, "the model is a drawing", kDrawing},
    {Test::anyType, "the model is a part, an assembly or a drawing", kAnyKind},
    {Test::solidOrDrawingUser, "the model is an assembly or a drawing", kUser},
    {Test::typeKnown, "Creo tells the model's type", kAnyKind},
    {Test::notInstance, "the model is no instance of a family table", kAnyKind},
    {Test::notSkeleton, "the model is no skeleton", kAnyKind},
    {Test::instancesAsTold, "the model is no instance of a family table, or forInstances isn't false", kAnyKind},
    {Test::skeletonsAsTold, "the model is no skeleton, or forSkel is true", kAnyKind},
    {Test::anyOfTheWork, "one of the needed attributes is there", kAnyKind},
};
const TestWords& rowOf(Test test) {
  return *std::find_if(std::begin(kTests), std::end(kTests) - 1,
                       [test](const TestWords& row) { return row.test == test; });
}

}  // namespace

bool isCounted(const Attribute& attribute) { return attribute.name.find(core::kNumberSign) != attribute.name.npos; }

std::wstring numberedName(const Attribute& attribute, int number) {
  return text::replaceAll(attribute.name, core::kNumberSign, std::to_wstring(number));
}

std::vector<std::string> wordsOf(const Attribute& attribute) {
  std::vector<std::string> result;
  for (const std::wstring& word : text::split(attribute.words, L'|'))
    if (!word.empty()) result.push_back(text::toUtf8(word));
  return result;
}

std::string valueWords(const Attribute& attribute) {
  const std::string words = chosenWords(attribute);
  std::string result = attribute.kind == Kind::word   ? words
                       : attribute.kind == Kind::flag ? "true or false; only " + words + " counts"
                                                      : kindWords(attribute.kind);
  if (attribute.range.isThere()) result += ", " + number(attribute.range.least) + " to " + number(attribute.range.most);
  if (attribute.variables) result += ", with variables";
  if (!attribute.folder.empty()) result += "; @project_dir@ is the package's folder " + text::toUtf8(attribute.folder);
  return result;
}

std::string nameWords(const Attribute& attribute) {
  std::string first = text::toUtf8(numberedName(attribute, 0));
  if (!isCounted(attribute)) return first;
  if (attribute.numbers == core::Numbers::counted)
    return first + " ... as " + text::toUtf8(attribute.counter) + " says";
  const bool hasEnd = attribute.most < std::numeric_limits<int>::max();
  const std::string end = hasEnd ? " to " + text::toUtf8(numberedName(attribute, attribute.most - 1)) : " ...";
  return first + end + (attribute.numbers == core::Numbers::toFirstGap ? ", without gaps" : "");
}

std::string needWords(const Attribute& attribute, std::span<const Attribute> all) {
  const auto isChoice = [](const Attribute& entry) { return entry.need == core::Need::oneOf; };
  switch (attribute.need) {
    case core::Need::needed:
      return "needed";
    case core::Need::oneOf:
      return std::count_if(all.begin(), all.end(), isChoice) == 1 ? "needed" : "one of these";
    case core::Need::optional:
      break;
  }
  return {};
}

std::string conditionWords(const actions::Condition& condition) {
  std::string words = rowOf(condition.test).words;
  if (condition.test == Test::noFilter) return words;
  const bool isTold = condition.line.isThere() || condition.test == Test::anyOfTheWork;
  const char* const line = condition.level == core::kError ? "an error line" : "a line in the log";
  return words + "; else " + (isTold ? line : "nothing is done, without a word");
}

std::vector<std::string> touchedWords(Touched touched) {
  std::vector<std::string> result;
  for (const TouchedWord& row : kTouched)
    if (holds(touched, row.touched)) result.emplace_back(row.words);
  return result;
}

std::string modelsWords(documents::Models models) {
  switch (models) {
    case documents::Models::all:
    case documents::Models::typed:
      return "all models";
    case documents::Models::solids:
      return "all but drawings";
    case documents::Models::parts:
      return "parts";
    case documents::Models::assemblies:
      return "assemblies";
    case documents::Models::partsAndAssemblies:
      return "parts and assemblies";
    case documents::Models::drawings:
      return "drawings";
  }
  return {};
}

ModelKinds kindsOf(const actions::Action& action) {
  ModelKinds all;
  for (const actions::Condition& condition : action.conditions) {
    const ModelKinds& asked = rowOf(condition.test).kinds;
    all.parts = all.parts && asked.parts;
    all.assemblies = all.assemblies && asked.assemblies;
    all.drawings = all.drawings && asked.drawings;
  }
  return all;
}

std::vector<std::string> actionKeys() {
  std::vector<std::string> keys;
  for (const actions::Action& row : actions::actionTable()) keys.push_back(text::toUtf8(row.key));
  return keys;
}
std::vector<std::string> predicateKeys() {
  std::vector<std::string> keys;
  for (const documents::Predicate& row : documents::predicateTable()) keys.push_back(text::toUtf8(row.key));
  return keys;
}

}  // namespace kelvane

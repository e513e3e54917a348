// Predicates on the session: user variables, the environment, Creo's version.
#include <algorithm>

#include "core/log.h"
#include "core/state.h"
#include "documents/predicate_families.h"
#include "documents/predicate_words.h"
#include "language/variables.h"
#include "os/processes.h"
#include "text/format.h"
#include "text/letters.h"
#include "text/units.h"

namespace documents {
namespace {

Answer userVariablePredicate(const Question& question) {
  const auto name = language::replaceVariables(question.value(L"param"), question.model);
  const auto value = language::replaceVariables(question.value(L"value"), question.model);
  if (!name || !value) return Answer::no;
  const language::UserVariableTable& variables = language::userVariables();
  for (std::size_t i = 0; i < variables.count(); ++i)
    if (matches(name.text, variables.names()[i]) && matches(value.text, variables.values()[i])) return Answer::yes;
  return Answer::no;
}

Answer creoVersionPredicate(const Question& question) {
  static constexpr std::pair<std::wstring_view, std::wstring_view> kVersions[] = {
      {L"creo2", L"Creo 2.0"}, {L"creo3", L"Creo 3.0"}, {L"creo4", L"Creo 4.0"}, {L"creo5", L"Creo 5.0"},
      {L"creo6", L"Creo 6.0"}, {L"creo7", L"Creo 7.0"}, {L"creo8", L"Creo 8.0"},
  };
  const std::wstring& version = core::pluginState().creoVersion;
  for (const auto& [attribute, text] : kVersions) {
    if (core::attrFind(question.item.attributes, attribute) && text::equalNoCase(version, text))
      return answer(question.isTrue(attribute));
  }
  core::logWrite(text::format(L"CreoVersion: Don't know version %s", version), core::kError);
  return Answer::no;
}

Answer environmentVariablePredicate(const Question& question) {
  const auto name = language::replaceVariables(question.value(L"param"), question.model);
  const auto value = language::replaceVariables(question.value(L"value"), question.model);
  if (!name || !value) return Answer::no;
  const auto actual = os::environment(name.text);
  return answer(actual && matches(value.text, text::cut(*actual, text::kTextSize - 1)));
}

constexpr Attribute kUserVariable[] = {
    {.name = L"param",
     .kind = Kind::pattern,
     .variables = true,
     .need = Need::needed,
     .about = "the name of the variable"},
    {.name = L"value", .kind = Kind::pattern, .variables = true, .need = Need::needed, .about = "its value"},
};
constexpr Attribute kCreoVersion[] = {
    {.name = L"creo2", .kind = Kind::flag, .words = L"true", .need = Need::oneOf, .about = "the answer in Creo 2.0"},
    {.name = L"creo3", .kind = Kind::flag, .words = L"true", .need = Need::oneOf, .about = "the answer in Creo 3.0"},
    {.name = L"creo4", .kind = Kind::flag, .words = L"true", .need = Need::oneOf, .about = "the answer in Creo 4.0"},
    {.name = L"creo5", .kind = Kind::flag, .words = L"true", .need = Need::oneOf, .about = "the answer in Creo 5.0"},
    {.name = L"creo6", .kind = Kind::flag, .words = L"true", .need = Need::oneOf, .about = "the answer in Creo 6.0"},
    {.name = L"creo7", .kind = Kind::flag, .words = L"true", .need = Need::oneOf, .about = "the answer in Creo 7.0"},
    {.name = L"creo8", .kind = Kind::flag, .words = L"true", .need = Need::oneOf, .about = "the answer in Creo 8.0"},
};
constexpr Attribute kEnvironment[] = {
    {.name = L"param", .variables = true, .need = Need::needed, .about = "the name of the variable"},
    {.name = L"value", .kind = Kind::pattern, .variables = true, .need = Need::needed, .about = "its value"},
};

constexpr Predicate kPredicates[] = {
    {.key = L"userVariable",
     .place = 25,
     .title = L"Extended filter: User variable",
     .attributes = kUserVariable,
     .about = "a user variable has a name and a value that fit",
     .function = &userVariablePredicate},
    {.key = L"creoVersion",
     .place = 27,
     .title = L"Extended filter: Creo version",
     .attributes = kCreoVersion,
     .about = "the attribute of the running version is true",
     .function = &creoVersionPredicate},
    {.key = L"environmentVariable",
     .place = 31,
     .title = L"Extended filter: Environment variable",
     .attributes = kEnvironment,
     .about = "the environment variable is set and fits",
     .function = &environmentVariablePredicate},
};

}  // namespace

std::span<const Predicate> sessionPredicates() { return kPredicates; }

}  // namespace documents

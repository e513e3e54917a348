// Predicates on parameters: "parameter" with its numeric comparisons, their type, their number.
#include <unordered_set>

#include "core/log.h"
#include "core/messages.h"
#include "creo/ProDrawing.h"
#include "creo/ProMdl.h"
#include "creo/ProParameter.h"
#include "documents/predicate_families.h"
#include "documents/predicate_words.h"
#include "language/compare.h"
#include "language/comparison_watch.h"
#include "language/variables.h"
#include "text/format.h"
#include "text/letters.h"
#include "text/numbers.h"

namespace documents {
namespace {

using core::Message;

constexpr std::wstring_view kCurrentModelPrefix = L"curmod:";

// How a parameter is compared, read once for all parameters that the pattern meets.
struct Comparison {
  std::wstring value;
  std::wstring_view ncomp, epsilon;
};

bool comparesNumber(const Comparison& with, double number, double target, double margin) {
  const double low = target - margin, high = target + margin;
  if (with.ncomp == L"1") return number < high;
  if (with.ncomp == L"2") return number <= high;
  if (with.ncomp == L"3") return low <= number && number <= high;
  if (with.ncomp == L"4") return number >= low;
  if (with.ncomp == L"5") return number > low;
  return false;
}

// The same, told to whoever watches comparisons.
bool comparesNumber(const Comparison& with, std::wstring_view shown, double number, double target, double margin) {
  const bool holds = comparesNumber(with, number, target, margin);
  if (!language::ComparisonWatch::on()) return holds;
  static constexpr std::wstring_view kSigns[] = {L"<", L"<=", L"=", L">=", L">"};
  const bool known = with.ncomp.size() == 1 && with.ncomp[0] >= L'1' && with.ncomp[0] <= L'5';
  const std::wstring_view sign = known ? kSigns[with.ncomp[0] - L'1'] : L"no known comparison";
  const std::wstring wanted = text::format(L"%s %s", sign, with.value);
  language::ComparisonWatch::note(margin == 0 ? wanted : text::format(L"%s, margin %s", wanted, with.epsilon), shown,
                                  holds);
  return holds;
}

bool comparesBoolean(const Comparison& with, bool state) {
  static constexpr std::wstring_view kWords[2][7] = {{L"false", L"0", L"no", L"nein", L"f", L"n", L"*"},
                                                     {L"true", L"1", L"yes", L"ja", L"j", L"y", L"*"}};
  const auto& words = kWords[state ? 1 : 0];
  const bool holds = std::any_of(std::begin(words), std::end(words),
                                 [&with](std::wstring_view word) { return text::equalNoCase(with.value, word); });
  language::ComparisonWatch::note(with.value, words[0], holds);
  return holds;
}

bool comparesInteger(const Comparison& with, int number) {
  const std::wstring shown = text::format(L"%d", number);
  if (!matches(language::kIntegerPattern, with.value)) return matches(with.value, shown);
  // A double holds every integer of the parameter's range, and a value beyond it still lies on its side.
  return comparesNumber(with, shown, number, text::parseDouble(with.value), text::parseInt(with.epsilon));
}

bool comparesReal(const Comparison& with, double number) {
  const std::wstring shown = text::format(L"%f", number);
  if (!matches(language::kDoublePattern, with.value)) return matches(with.value, shown);
  return comparesNumber(with, shown, number, text::parseDouble(with.value), text::parseDouble(with.epsilon));
}

// The visit's answer: stop at a hit, and at a kind that can't be compared.
creo::ProError compareParameter(const Comparison& with, const creo::ProParameter& parameter, bool& holds) {
  const auto value = creo::ProParameterValueGet(parameter);
  if (!value) return creo::ProNoError;
  switch (value.value.type) {
    case creo::ProParamvalueType::boolean:
      holds = comparesBoolean(with, value.value.boolean);
      break;
    case creo::ProParamvalueType::string:
      holds = matches(with.value, value.value.string);
      break;
    case creo::ProParamvalueType::integer:
      holds = comparesInteger(with, value.value.integer);
      break;
    case creo::ProParamvalueType::real:
      holds = comparesReal(with, value.value.real);
      break;
    case creo::ProParamvalueType::none:
    case creo::ProParamvalueType::noteId:
      core::logWrite(L"Deletion test of NoteID is not supported", core::kWarning);
      return creo::ProStopVisit;
  }
  return holds ? creo::ProStopVisit : creo::ProNoError;
}

Answer parameterPredicate(const Question& question) {
  const auto value = language::replaceVariables(question.value(L"value"), question.model);
  auto name = language::replaceVariables(question.value(L"param"), question.model);
  if (!value || !name) return Answer::no;
  const auto type = applicableType(question.model, Models::typed);
  if (!type) return Answer::notApplicable;
  creo::ProMdl model = question.model;
  if (*type == creo::ProMdlType::drawing && name.text.starts_with(kCurrentModelPrefix)) {
    const auto solid = creo::ProDrawingCurrentsolidGet(question.model);
    if (!solid) return Answer::no;
    model = solid.value;
    name.text.erase(0, kCurrentModelPrefix.size());
  }
  const auto owner = creo::ProMdlToModelitem(model);
  if (!owner) return Answer::no;

  const Comparison with{value.text, question.value(L"ncomp", L"3"), question.value(L"epsilon")};
  bool met = false, holds = false;
  creo::ProParameterVisit(owner.value, [&](const creo::ProParameter& parameter) {
    if (!matches(name.text, parameter.id)) return creo::ProNoError;
    met = true;
    core::logMsgId(Message::parameterFound, core::kDebug, 1);
    return compareParameter(with, parameter, holds);
  });
  // A name that holds a star or slashes of its own isn't met as a pattern.
  if (!met) {
    if (const auto plain = creo::ProParameterInit(owner.value, name.text)) compareParameter(with, plain.value, holds);
  }
  return answer(holds);
}

Answer parameterTypePredicate(const Question& question) {
  static constexpr std::pair<std::wstring_view, creo::ProParamvalueType> kTypes[] = {
      {L"0", creo::ProParamvalueType::string},
      {L"1", creo::ProParamvalueType::integer},
      {L"2", creo::ProParamvalueType::real},
      {L"3", creo::ProParamvalueType::boolean},
  };
  const auto owner = creo::ProMdlToModelitem(question.model);
  if (!owner) return Answer::no;
  const auto parameter = creo::ProParameterInit(owner.value, std::wstring(question.value(L"pname")));
  if (!parameter) return Answer::no;
  const auto value = creo::ProParameterValueGet(parameter.value);
  if (!value) return Answer::no;
  const std::wstring_view wanted = question.value(L"ptype");
  return answer(std::any_of(std::begin(kTypes), std::end(kTypes),
                            [&](const auto& row) { return row.first == wanted && row.second == value.value.type; }));
}

Answer doubleDefinedPredicate(const Question& question) {
  std::unordered_set<std::wstring, text::HashNoCase, text::EqualNoCase> met;
  for (const std::wstring& name : creo::pfcListParams(question.model).value)
    if (!met.insert(name).second) return Answer::yes;
  return Answer::no;
}

constexpr Attribute kParameter[] = {
    {.name = L"param",
     .kind = Kind::pattern,
     .variables = true,
     .need = Need::needed,
     .about = "the name of the parameter; on a drawing, curmod: before it means that of the current model"},
    {.name = L"value",
     .kind = Kind::pattern,
     .variables = true,
     .need = Need::needed,
     .about = "what its value is compared with"},
    {.name = L"epsilon", .kind = Kind::number, .about = "how far from that a number may lie"},
    {.name = L"ncomp",
     .kind = Kind::word,
     .words = L"1|2|3|4|5",
     .about = "numbers: 1 below, 2 at most, 3 equal, 4 at least, 5 above"},
};
constexpr Attribute kType[] = {
    {.name = L"pname", .need = Need::needed, .about = "the name of the parameter"},
    {.name = L"ptype",
     .kind = Kind::word,
     .words = L"0|1|2|3",
     .need = Need::needed,
     .about = "0 string, 1 integer, 2 double, 3 boolean"},
};

constexpr Predicate kPredicates[] = {
    {.key = L"parameter",
     .place = 4,
     .title = Message::filterParameter,
     .models = Models::typed,
     .asksTypeItself = true,
     .attributes = kParameter,
     .about = "a parameter has a name that fits and a value that compares",
     .function = &parameterPredicate},
    {.key = L"doubleDefinedParameters",
     .place = 36,
     .title = L"Extended filter: Double defined parameters",
     .about = "two parameters have one name",
     .function = &doubleDefinedPredicate},
    {.key = L"parametertype",
     .place = 48,
     .title = L"Extended filter: Parameter type",
     .attributes = kType,
     .about = "the parameter has that type",
     .function = &parameterTypePredicate},
};

}  // namespace

std::span<const Predicate> parameterPredicates() { return kPredicates; }

}  // namespace documents

// Predicates on parameters: "parameter" with its numeric comparisons, their type, their number.
#include <unordered_set>

#include "core/log.h"
#include "core/messages.h"
#include "creo/ProDrawing.h"
#include "creo/ProMdl.h"
#include "creo/ProParameter.h"
#include "documents/predicate_families.h"
#include "documents/predicate_words.h"
#include "engine/compare.h"
#include "engine/comparison_watch.h"
#include "engine/variables.h"
#include "text/format.h"
#include "text/letters.h"
#include "text/numbers.h"

namespace documents {
namespace {

constexpr int kParameterFound = 36, kTitleParameter = 37;
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
  const bool held = comparesNumber(with, number, target, margin);
  if (!engine::ComparisonWatch::on()) return held;
  static constexpr std::wstring_view kSigns[] = {L"<", L"<=", L"=", L">=", L">"};
  const bool known = with.ncomp.size() == 1 && with.ncomp[0] >= L'1' && with.ncomp[0] <= L'5';
  const std::wstring_view sign = known ? kSigns[with.ncomp[0] - L'1'] : L"no known comparison";
  const std::wstring wanted = text::format(L"%s %s", sign, with.value);
  engine::ComparisonWatch::note(margin == 0 ? wanted : text::format(L"%s, margin %s", wanted, with.epsilon), shown,
                                held);
  return held;
}

bool comparesBoolean(const Comparison& with, bool state) {
  static constexpr std::wstring_view kWords[2][7] = {{L"false", L"0", L"no", L"nein", L"f", L"n", L"*"},
                                                     {L"true", L"1", L"yes", L"ja", L"j", L"y", L"*"}};
  const auto& words = kWords[state ? 1 : 0];
  const bool held = std::any_of(std::begin(words), std::end(words),
                                [&with](std::wstring_view word) { return text::equalNoCase(with.value, word); });
  engine::ComparisonWatch::note(with.value, words[0], held);
  return held;
}

bool comparesInteger(const Comparison& with, int number) {
  const std::wstring shown = text::format(L"%d", number);
  if (!matches(engine::kIntegerPattern, with.value)) return matches(with.value, shown);
  // A double holds every integer of the parameter's range, and a value beyond it still lies on its side.
  return comparesNumber(with, shown, number, text::parseDouble(with.value), text::parseInt(with.epsilon));
}

bool comparesReal(const Comparison& with, double number) {
  const std::wstring shown = text::format(L"%f", number);
  if (!matches(engine::kDoublePattern, with.value)) return matches(with.value, shown);
  return comparesNumber(with, shown, number, text::parseDouble(with.value), text::parseDouble(with.epsilon));
}

// The visit's answer: stop at a hit, and at a kind that can't be compared.
creo::ProError compareParameter(const Comparison& with, const creo::ProParameter& parameter, bool& held) {
  const auto value = creo::ProParameterValueGet(parameter);
  if (!value) return creo::ProNoError;
  switch (value.value.type) {
    case creo::ProParamvalueType::boolean:
      held = comparesBoolean(with, value.value.boolean);
      break;
    case creo::ProParamvalueType::string:
      held = matches(with.value, value.value.string);
      break;
    case creo::ProParamvalueType::integer:
      held = comparesInteger(with, value.value.integer);
      break;
    case creo::ProParamvalueType::real:
      held = comparesReal(with, value.value.real);
      break;
    case creo::ProParamvalueType::none:
    case creo::ProParamvalueType::noteId:
      core::logWrite(L"Deletion test of NoteID is not supported", core::kWarning);
      return creo::ProStopVisit;
  }
  return held ? creo::ProStopVisit : creo::ProNoError;
}

}  // namespace

int parameterPredicate(creo::ProMdl model, const core::XmlNode& item) {
  title(kTitleParameter);
  const auto value = engine::replaceVariables(valueOf(item, L"value"), model);
  auto name = engine::replaceVariables(valueOf(item, L"param"), model);
  if (!value || !name) return kFalse;
  const auto type = applicableType(model, AppliesTo::any);
  if (!type) return kNotApplicable;
  if (*type == creo::ProMdlType::drawing && name.text.starts_with(kCurrentModelPrefix)) {
    const auto solid = creo::ProDrawingCurrentsolidGet(model);
    if (!solid) return kFalse;
    model = solid.value;
    name.text.erase(0, kCurrentModelPrefix.size());
  }
  const auto owner = creo::ProMdlToModelitem(model);
  if (!owner) return kFalse;

  const Comparison with{value.text, valueOf(item, L"ncomp", L"3"), valueOf(item, L"epsilon")};
  bool met = false, held = false;
  creo::ProParameterVisit(owner.value, [&](const creo::ProParameter& parameter) {
    if (!matches(name.text, parameter.id)) return creo::ProNoError;
    met = true;
    core::logMsgId(kParameterFound, core::kDebug, 1);
    return compareParameter(with, parameter, held);
  });
  // A name that holds a star or slashes of its own isn't met as a pattern.
  if (!met) {
    if (const auto plain = creo::ProParameterInit(owner.value, name.text)) compareParameter(with, plain.value, held);
  }
  return held ? kTrue : kFalse;
}

int parameterTypePredicate(creo::ProMdl model, const core::XmlNode& item) {
  title(L"Extended filter: Parameter type");
  static constexpr std::pair<std::wstring_view, creo::ProParamvalueType> kTypes[] = {
      {L"0", creo::ProParamvalueType::string},
      {L"1", creo::ProParamvalueType::integer},
      {L"2", creo::ProParamvalueType::real},
      {L"3", creo::ProParamvalueType::boolean},
  };
  const auto owner = creo::ProMdlToModelitem(model);
  if (!owner) return kFalse;
  const auto parameter = creo::ProParameterInit(owner.value, std::wstring(valueOf(item, L"pname")));
  if (!parameter) return kFalse;
  const auto value = creo::ProParameterValueGet(parameter.value);
  if (!value) return kFalse;
  const std::wstring_view wanted = valueOf(item, L"ptype");
  return std::any_of(std::begin(kTypes), std::end(kTypes),
                     [&](const auto& row) { return row.first == wanted && row.second == value.value.type; })
             ? kTrue
             : kFalse;
}

int doubleDefinedPredicate(creo::ProMdl model, const core::XmlNode&) {
  title(L"Extended filter: Double defined parameters");
  std::unordered_set<std::wstring, text::HashNoCase, text::EqualNoCase> met;
  for (const std::wstring& name : creo::pfcListParams(model).value)
    if (!met.insert(name).second) return kTrue;
  return kFalse;
}

}  // namespace documents

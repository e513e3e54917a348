#include "actions/model/parameter_values.h"

#include <algorithm>

#include "language/compare.h"
#include "language/read_number.h"
#include "text/format.h"
#include "text/numbers.h"

namespace actions {
namespace {

using core::Message;
using creo::ProParamvalueType;

constexpr ParameterKind kKinds[] = {{ProParamvalueType::string, L"0", L"String"},
                                    {ProParamvalueType::integer, L"1", L"Integer"},
                                    {ProParamvalueType::real, L"2", L"Double"},
                                    {ProParamvalueType::boolean, L"3", L"Boolean"}};

template <class Test>
const ParameterKind* findKind(Test test) {
  const auto* found = std::find_if(std::begin(kKinds), std::end(kKinds), test);
  return found == std::end(kKinds) ? nullptr : found;
}

}  // namespace

const ParameterKind* kindOfType(ProParamvalueType type) {
  return findKind([type](const ParameterKind& kind) { return kind.type == type; });
}

const ParameterKind* kindOfDigit(std::wstring_view digit) {
  return findKind([digit](const ParameterKind& kind) { return kind.digit == digit; });
}

creo::Got<creo::ProParamvalue> editedValue(const creo::ProParameter& parameter) {
  return creo::ProParameterUnitsGet(parameter) ? creo::ProParameterValueGet(parameter)
                                               : creo::ProParameterScaledvalueGet(parameter);
}

std::wstring textOf(const creo::ProParamvalue& value) {
  switch (value.type) {
    case ProParamvalueType::string:
      return value.string;
    case ProParamvalueType::integer:
      return text::format(L"%d", value.integer);
    case ProParamvalueType::real:
      return text::format(L"%f", value.real);
    case ProParamvalueType::boolean:
      return value.boolean ? L"true" : L"false";
    case ProParamvalueType::none:
    case ProParamvalueType::noteId:
      break;
  }
  return {};
}

std::wstring exactTextOf(const creo::ProParamvalue& value) {
  return value.type == ProParamvalueType::real ? text::exactFixed(value.real) : textOf(value);
}

std::optional<creo::ProParamvalue> convertedValue(const creo::ProParamvalue& value, ProParamvalueType type) {
  static constexpr std::wstring_view kTrue[] = {L"true", L"1", L"1.000000", L"yes", L"y", L"ja"};
  if (value.type == type) return value;
  creo::ProParamvalue made;
  made.type = type;
  const std::wstring text = exactTextOf(value);
  if (type == ProParamvalueType::real) {
    const auto number = language::numberOrZero(text);
    if (!number) return std::nullopt;
    made.real = *number;
  } else if (type == ProParamvalueType::integer) {
    // "%f", as an integer would take the 7 of 7.85e-09.
    const auto read = text::readInt(textOf(value));
    if (read.fault == text::NumberFault::outOfRange) return std::nullopt;
    made.integer = value.type == ProParamvalueType::real ? read.value : language::integerOrZero(text);
    if (value.type == ProParamvalueType::real && value.real != made.integer) language::tellCut(text, made.integer);
  } else {
    made.boolean = std::find(std::begin(kTrue), std::end(kTrue), text) != std::end(kTrue);
    made.string = text;
  }
  return made;
}

Message noNumberMessage(ProParamvalueType type) {
  return type == ProParamvalueType::integer ? Message::castToIntegerFailed : Message::castToRealFailed;
}

bool namesTruth(std::wstring_view entry, bool state) {
  const auto fits = [entry](std::wstring_view word) { return language::matches(entry, word); };
  return state ? fits(L"true") || fits(L"yes") || entry == L"1" : fits(L"false") || fits(L"no") || entry == L"0";
}

}  // namespace actions

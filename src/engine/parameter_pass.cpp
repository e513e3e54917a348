// %NAME% and %user:NAME%, with the prefixes that change a value.
#include <algorithm>

#include "core/log.h"
#include "creo/ProMdl.h"
#include "creo/ProParameter.h"
#include "engine/substitution.h"
#include "engine/variables.h"
#include "text/format.h"
#include "text/letters.h"
#include "text/pieces.h"
#include "text/units.h"

namespace engine {
namespace {

// What stands between two "%": prefixes and a name.
struct Reference {
  std::wstring token, name;  // the token as it stands, signs and prefixes included
  bool isUser = false, length = false, toUpper = false, toLower = false, noZero = false, exponent = false;
};
struct Prefix {
  std::wstring_view text;
  bool Reference::*flag;
};
// Taken off in this order, each once.
constexpr Prefix kPrefixes[] = {
    {L"user:", &Reference::isUser},     {L"length:", &Reference::length}, {L"toupper:", &Reference::toUpper},
    {L"tolower:", &Reference::toLower}, {L"nozero:", &Reference::noZero}, {L"dubase:", &Reference::exponent},
};

void takePrefixes(Reference& reference) {
  std::wstring_view rest = reference.name;
  for (const Prefix& prefix : kPrefixes) {
    if (rest.size() <= prefix.text.size() || !text::startsWithNoCase(rest, prefix.text)) continue;
    reference.*prefix.flag = true;
    rest.remove_prefix(prefix.text.size());
  }
  reference.name = std::wstring(rest);
}

std::wstring withoutTrailingZeros(std::wstring value) {
  while (value.size() > 1 && value.back() == L'0' && value[value.size() - 2] != L'.') value.pop_back();
  return value;
}

// The first modifier that applies; the others don't.
std::wstring modified(const Reference& reference, std::wstring value) {
  if (reference.length) return text::format(L"%d", text::units(value));
  if (reference.toLower) return text::lower(value);
  if (reference.toUpper) return text::upper(value);
  if (reference.noZero) return withoutTrailingZeros(std::move(value));
  return value;
}

bool failure(std::wstring_view pattern, const Reference& reference) {
  core::logWrite(text::format(pattern, reference.name), core::kError);
  return false;
}

bool replaceUserVariable(Substitution& call, const Reference& reference) {
  const std::wstring* value = userVariables().find(reference.name);
  if (!value)
    return failure(L"The user variable isn't declared with a 'set user variable' action from the environment group.",
                   reference);
  return call.replace(reference.token, modified(reference, *value));
}

// Parameters with units count in the model's own.
creo::Got<creo::ProParamvalue> valueOf(const creo::ProParameter& parameter) {
  const bool hasUnits = creo::ProParameterUnitsGet(parameter).error != creo::ProNotFound;
  return hasUnits ? creo::ProParameterScaledvalueGet(parameter) : creo::ProParameterValueGet(parameter);
}

bool replaceParameter(Substitution& call, const Reference& reference) {
  constexpr std::wstring_view kUnreadable = L"Failure while read parameter: %s";
  const auto owner = creo::ProMdlToModelitem(call.model);
  if (!owner) return failure(kUnreadable, reference);
  const auto parameter = creo::ProParameterInit(owner.value, reference.name);
  if (parameter.error == creo::ProNotFound) return failure(L"Can't find parameter: %s", reference);
  if (!parameter) return failure(kUnreadable, reference);
  const auto got = valueOf(parameter.value);
  if (!got) return failure(kUnreadable, reference);

  const creo::ProParamvalue& value = got.value;
  const auto written = [&](std::wstring_view kind, std::wstring_view text) {
    core::logWrite(kind, core::kDebug);
    return call.replace(reference.token, text::cut(text, text::kTextSize - 1));
  };
  using enum creo::ProParamvalueType;
  switch (value.type) {
    case string:
      return written(L"TYPE = PRO_PARAM_STRING", modified(reference, value.string));
    case integer:
      return written(L"TYPE = PRO_PARAM_INTEGER", text::format(L"%d", value.integer));
    case real:
      return written(L"TYPE = PRO_PARAM_DOUBLE", text::format(reference.exponent ? L"%e" : L"%f", value.real));
    case boolean:
      return written(L"TYPE = PRO_PARAM_BOOLEAN", value.boolean ? L"true" : L"false");
    case none:
    case noteId:
      break;
  }
  return failure(kUnreadable, reference);
}

}  // namespace

bool parameterPass(Substitution& call) {
  std::size_t i = call.text.find(L'%');
  while (i != call.text.npos) {
    const std::size_t close = call.closingSign(i, L'%');
    std::size_t next = i + 1;
    if (close != call.text.npos) {
      Reference reference;
      reference.token = call.text.substr(i, close - i + 1);
      reference.name = call.nameBetween(i, close);
      if (reference.name.empty()) return false;
      core::logWrite(L"FOUND PARAMETER", core::kDebug);
      core::logWrite(reference.name, core::kDebug);
      takePrefixes(reference);
      if (!(reference.isUser ? replaceUserVariable : replaceParameter)(call, reference)) return false;
      // A parameter's value may hold further names, so the scan begins anew behind the first character.
      if (!reference.isUser) next = 1;
    }
    i = call.text.find(L'%', next);
  }
  call.text = text::replaceAll(call.text, L"%%", L"%");
  return true;
}

}  // namespace engine

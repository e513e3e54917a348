// %NAME%, %user:NAME% and %b64:FILE%, with the prefixes that change a value or where it is looked for.
#include <algorithm>
#include <optional>

#include "core/log.h"
#include "creo/ProDrawing.h"
#include "creo/ProMaterial.h"
#include "creo/ProMdl.h"
#include "creo/ProParameter.h"
#include "language/base64.h"
#include "language/substitution.h"
#include "language/user_variables.h"
#include "os/surroundings.h"
#include "text/capitals.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/letters.h"
#include "text/pieces.h"
#include "text/units.h"

namespace language {
namespace {

// What stands between two "%": prefixes and a name.
struct Reference {
  std::wstring token, name;  // the token as it stands, signs and prefixes included
  bool ofCurrentModel = false, ofMaterial = false;
  bool isUser = false, isFile = false, isUrlSafeFile = false;
  bool length = false, toUpper = false, toLower = false, noZero = false, exponent = false;
};
struct Prefix {
  std::wstring_view text;
  bool Reference::*flag;
};
// Taken off in this order, each once.
constexpr Prefix kPrefixes[] = {
    {L"curmod:", &Reference::ofCurrentModel}, {L"curmat:", &Reference::ofMaterial},
    {L"user:", &Reference::isUser},           {L"b64:", &Reference::isFile},
    {L"b64uc:", &Reference::isUrlSafeFile},   {L"length:", &Reference::length},
    {L"toupper:", &Reference::toUpper},       {L"tolower:", &Reference::toLower},
    {L"nozero:", &Reference::noZero},         {L"dubase:", &Reference::exponent},
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
  if (reference.toLower) return text::inSmallLetters(value);
  if (reference.toUpper) return text::inCapitals(value);
  if (reference.noZero) return withoutTrailingZeros(std::move(value));
  return value;
}

bool failure(std::wstring_view pattern, const Reference& reference) {
  core::logWrite(text::format(pattern, reference.name), core::kError);
  return false;
}

// ---- where a parameter is looked for

// The item whose parameter is asked; ProMdlToModelitem's own error where the model has gone. Nothing: a prefix doesn't
// apply, which has its line in the log.
std::optional<creo::Got<creo::ProModelitem>> ownerOf(const Substitution& call, const Reference& reference) {
  const auto refused = [](std::wstring_view line) {
    core::logWrite(line, core::kError);
    return std::nullopt;
  };
  const auto isA = [](creo::ProMdl model, creo::ProMdlType wanted) {
    const auto type = creo::ProMdlTypeGet(model);
    return type && type.value == wanted;
  };
  creo::ProMdl model = call.model;
  if (reference.ofCurrentModel) {
    if (!isA(model, creo::ProMdlType::drawing)) return refused(L"Model needs to be a drawing for the curmod option");
    const auto solid = creo::ProDrawingCurrentsolidGet(model);
    if (!solid) return refused(L"Can't get the current model from the drawing");
    model = solid.value;
  }
  if (!reference.ofMaterial) return creo::ProMdlToModelitem(model);
  if (!isA(model, creo::ProMdlType::part)) return refused(L"Model needs to be a part for the curmat option");
  const auto material = creo::ProMaterialCurrentGet(model);
  if (!material) return refused(L"Can't get the current material from the part");
  return creo::ProModelitemByNameInit(model, creo::ProItemType::material, material.value.name);
}

// In the parameter's own units, as Creo shows it. units: gets them.
creo::Got<creo::ProParamvalue> shownValue(const creo::ProParameter& parameter, std::wstring& units) {
  auto present = creo::ProParameterUnitsGet(parameter);
  units = std::move(present.value);
  return present.error != creo::ProNotFound ? creo::ProParameterScaledvalueGet(parameter)
                                            : creo::ProParameterValueGet(parameter);
}

// ---- the three look-ups

bool replaceUserVariable(Substitution& call, const Reference& reference) {
  const std::wstring* value = userVariables().find(reference.name);
  if (!value)
    return failure(L"The user variable isn't declared with a 'set user variable' action from the environment group.",
                   reference);
  return call.replace(reference.token, modified(reference, *value));
}

// Four characters for each three bytes: would they outgrow the text?
bool outgrows(const Substitution& call, const Reference& reference) {
  const auto size = os::files().size(reference.name);
  return size && size.value / 3 * 4 >= call.capacity();
}

bool replaceFile(Substitution& call, const Reference& reference) {
  // Such a file gives no result whatever it holds, so it isn't read.
  call.outgrown = call.outgrown || outgrows(call, reference);
  if (call.outgrown) return true;
  const auto content = os::files().read(reference.name);
  if (!content) return call.replace(reference.token, L"file_not_found_or_readable");
  const Base64 alphabet = reference.isUrlSafeFile ? Base64::urlSafe : Base64::standard;
  return call.replace(reference.token, text::fromUtf8(base64(content.value, alphabet)));
}

// A note's parameter has no text of its own: the form stays, and is passed, wherever it stands.
bool passNote(Substitution& call, const Reference& reference) {
  core::logWrite(text::format(L"The parameter %s is a note, %s stays as it is", reference.name, reference.token),
                 core::kWarning);
  return call.replace(reference.token, text::replaceAll(reference.token, L"%", std::wstring(1, kClosedPercent)));
}

bool replaceParameter(Substitution& call, const Reference& reference, const creo::Got<creo::ProModelitem>& owner) {
  constexpr std::wstring_view kUnreadable = L"Failure while read parameter: %s";
  if (!owner) return failure(kUnreadable, reference);
  const auto parameter = creo::ProParameterInit(owner.value, reference.name);
  if (parameter.error == creo::ProNotFound) return failure(L"Can't find parameter: %s", reference);
  if (!parameter) return failure(kUnreadable, reference);
  std::wstring units;
  const auto got = shownValue(parameter.value, units);
  if (!got) return failure(kUnreadable, reference);

  const creo::ProParamvalue& value = got.value;
  const auto written = [&](std::wstring_view kind, std::wstring_view text) {
    core::logWrite(kind, core::kDebug);
    return call.replace(reference.token, text);
  };
  using enum creo::ProParamvalueType;
  switch (value.type) {
    case string:
      return written(L"TYPE = PRO_PARAM_STRING", text::cut(modified(reference, value.string), text::kTextSize - 1));
    case integer:
      return written(L"TYPE = PRO_PARAM_INTEGER", text::format(L"%d", value.integer));
    case real:
      if (!units.empty()) call.numbers.push_back({reference.token, value.real, std::move(units), parameter.value});
      // A huge number is too long for most fields, but never cut to another number.
      return written(L"TYPE = PRO_PARAM_DOUBLE", text::format(reference.exponent ? L"%e" : L"%f", value.real));
    case boolean:
      return written(L"TYPE = PRO_PARAM_BOOLEAN", value.boolean ? L"true" : L"false");
    case noteId:
      return passNote(call, reference);
    case none:
      break;
  }
  return failure(kUnreadable, reference);
}

// Where the scan goes on behind a name; nothing: the call fails.
std::optional<std::size_t> replaceReference(Substitution& call, std::size_t open, std::size_t close) {
  Reference reference;
  reference.token = call.text.substr(open, close - open + 1);
  reference.name = call.nameBetween(open, close);
  if (reference.name.empty()) return std::nullopt;
  core::logWrite(L"FOUND PARAMETER", core::kDebug);
  core::logWrite(reference.name, core::kDebug);
  takePrefixes(reference);

  std::optional<creo::Got<creo::ProModelitem>> owner;
  const bool isParameter = !reference.isUser && !reference.isFile && !reference.isUrlSafeFile;
  if (isParameter || reference.ofCurrentModel || reference.ofMaterial) {
    owner = ownerOf(call, reference);
    if (!owner) return std::nullopt;
  }
  const auto onlyIf = [](bool replaced, std::size_t next) {
    return replaced ? std::optional<std::size_t>(next) : std::nullopt;
  };
  if (reference.isUser) return onlyIf(replaceUserVariable(call, reference), open + 1);
  // What a file gave isn't searched, and nothing behind it either.
  if (!isParameter) return onlyIf(replaceFile(call, reference), call.text.npos);
  // A parameter's value may hold further names, so the scan begins anew behind the first character.
  return onlyIf(replaceParameter(call, reference, *owner), 1);
}

}  // namespace

bool parameterPass(Substitution& call) {
  std::size_t i = call.text.find(L'%');
  while (i != call.text.npos) {
    const std::size_t close = call.closingSign(i, L'%');
    std::size_t next = i + 1;
    if (close != call.text.npos) {
      const auto behind = replaceReference(call, i, close);
      if (!behind) return false;
      next = *behind;
    }
    i = next < call.text.size() ? call.text.find(L'%', next) : call.text.npos;
  }
  call.text = text::replaceAll(call.text, L"%%", L"%");
  return true;
}

}  // namespace language

#include "engine/substitution.h"

#include <limits>
#include <optional>

#include "core/log.h"
#include "core/state.h"
#include "creo/ProFamtable.h"
#include "creo/ProMdl.h"
#include "creo/ProUtil.h"
#include "engine/compare.h"
#include "engine/variables.h"
#include "os/processes.h"
#include "os/surroundings.h"
#include "text/format.h"
#include "text/letters.h"
#include "text/pieces.h"
#include "text/units.h"

namespace engine {
namespace {

constexpr std::size_t kCounterDigits = 7;
constexpr wchar_t kSectionSign = L'\u00A7';

struct ClockToken {
  std::wstring_view token;
  const char* pattern;
};
constexpr ClockToken kClockTokens[] = {
    {L"@date@", "%Y-%m-%d"},        {L"@datede@", "%d.%m.%Y"}, {L"@dateen@", "%d-%m-%Y"}, {L"@dateus@", "%m-%d-%Y"},
    {L"@dateusshort@", "%m-%d-%y"}, {L"@time@", "%H-%M"},      {L"@timede@", "%H:%M"},    {L"@timeen@", "%I:%M %p"},
};

// What the model tokens ask; Creo's record of name and place is read once for all that need it.
struct ModelFacts {
  creo::ProMdl model;
  creo::ProMdlType type{};
  std::optional<creo::Got<creo::ProMdlData>> data;

  const creo::Got<creo::ProMdlData>& place() {
    if (!data) data = creo::ProMdlDataGet(model);
    return *data;
  }
};
using Value = std::optional<std::wstring>;  // none: the token stays

Value modelName(ModelFacts& facts) {
  const auto name = creo::ProMdlNameGet(facts.model);
  return name ? Value(name.value) : Value();
}
Value modelType(ModelFacts& facts) { return text::lower(creo::typeExtension(facts.type)); }
Value genericName(ModelFacts& facts) {
  if (facts.type != creo::ProMdlType::part && facts.type != creo::ProMdlType::assembly) return L"-";
  const auto generic = creo::ProFaminstanceImmediategenericinfoGet(facts.model);
  return generic ? generic.value.name : L"-";
}
Value modelPath(ModelFacts& facts) {
  const auto& place = facts.place();
  return place ? Value(place.value.device + L":" + place.value.path) : Value();
}
Value modelPathWithSlashes(ModelFacts& facts) {
  const Value path = modelPath(facts);
  return path ? Value(text::replaceAll(*path, L"\\", L"/")) : Value();
}
Value modelVersion(ModelFacts& facts) {
  const auto& place = facts.place();
  return place ? Value(text::format(L"%d", place.value.version)) : Value();
}
Value fileVersion(ModelFacts& facts) {
  const Value version = modelVersion(facts);
  return version ? Value(L"." + *version) : Value();
}

struct ModelToken {
  std::wstring_view token;
  Value (*value)(ModelFacts& facts);
};
// The two names are replaced before the model's type is asked for.
constexpr ModelToken kNameTokens[] = {{L"@mdln@", &modelName}, {L"@filename@", &modelName}};
constexpr ModelToken kModelTokens[] = {
    {L"@mdltype@", &modelType},  {L"@genname@", &genericName},           {L"@mdlpath@", &modelPath},
    {L"@filepath@", &modelPath}, {L"@mdlpathr@", &modelPathWithSlashes}, {L"@fileversion@", &fileVersion},
    {L"@mdlno@", &modelVersion},
};

template <std::size_t N>
bool replaceTokens(Substitution& call, const ModelToken (&tokens)[N], ModelFacts& facts) {
  for (const ModelToken& row : tokens) {
    if (!call.holds(row.token)) continue;
    const Value value = row.value(facts);
    if (value && !call.replace(row.token, *value)) return false;
  }
  return true;
}

}  // namespace

Substitution::Substitution(std::wstring_view input, creo::ProMdl mdl, std::size_t capacity)
    : text(text::cut(input, capacity > 0 ? capacity - 1 : 0)), model(mdl), capacity_(capacity) {}

bool Substitution::replace(std::wstring_view token, std::wstring_view value) {
  if (++replacements_ > kMostReplacements) {
    core::logWrite(L"The text takes too many replacements, perhaps a value holds its own name", core::kError);
    return false;
  }
  text = replaceAllText(text, token, value, capacity_);
  return true;
}

std::size_t Substitution::closingSign(std::size_t open, wchar_t sign) const {
  if (open + 1 >= text.size() || text[open] != sign || text[open + 1] == sign) return text.npos;
  for (std::size_t at = open + 1; at < text.size() && text[at] != L' '; ++at)
    if (text[at] == sign) return at;
  return text.npos;
}

std::wstring Substitution::nameBetween(std::size_t open, std::size_t close) const {
  std::wstring name = text.substr(open + 1, close - open - 1);
  if (text::fits(name, text::kTextSize)) return name;
  core::logWrite(text::format(L"A name between \"%c\" signs is longer than %d characters", text[open],
                              static_cast<int>(text::kTextSize) - 1),
                 core::kError);
  return {};
}

bool counterPass(Substitution& call) {
  // The comparison accepts the token in any case and counts up; only its exact form is replaced.
  if (text::lower(call.text).find(L"@number@") == call.text.npos) return true;
  if (wildcardCompare(L"*@number@*", call.text) != 1) return true;
  int& counter = core::pluginState().numberCounter;
  const std::wstring number = text::format(L"%i", counter);
  counter = counter == std::numeric_limits<int>::max() ? std::numeric_limits<int>::min() : counter + 1;
  return call.replace(L"@number@", text::cut(number, kCounterDigits));
}

bool environmentPass(Substitution& call) {
  for (bool again = true; again;) {
    again = false;
    for (std::size_t i = call.text.find(kSectionSign); i != call.text.npos; i = call.text.find(kSectionSign, i + 1)) {
      const std::size_t close = call.closingSign(i, kSectionSign);
      if (close == call.text.npos) continue;
      const std::wstring name = call.nameBetween(i, close);
      if (name.empty()) return false;
      core::logWrite(L"FOUND Environment variable", core::kDebug);
      core::logWrite(name, core::kDebug);
      const std::wstring value(text::cut(os::environment(name).value_or(L""), text::kTextSize - 1));
      if (value.empty()) continue;
      if (!call.replace(call.text.substr(i, close - i + 1), value)) return false;
      again = true;
    }
  }
  call.text = text::replaceAll(call.text, L"\u00A7\u00A7", L"\u00A7");
  return true;
}

bool clockPass(Substitution& call) {
  std::optional<std::int64_t> now;
  for (const ClockToken& row : kClockTokens) {
    if (!call.holds(row.token)) continue;
    if (!now) now = os::clock().seconds();
    const std::wstring value = os::localTime(*now, row.pattern);
    if (!value.empty() && !call.replace(row.token, value)) return false;
  }
  return true;
}

bool sessionPass(Substitution& call) {
  if (!call.holds(L"@curworkdir@")) return true;
  const auto folder = creo::ProDirectoryCurrentGet();
  return !folder || call.replace(L"@curworkdir@", folder.value);
}

bool modelPass(Substitution& call) {
  ModelFacts facts{.model = call.model, .type = {}, .data = {}};
  const bool hasTokens = call.text.find(L'@') != call.text.npos;
  if (hasTokens && !replaceTokens(call, kNameTokens, facts)) return false;
  const auto type = creo::ProMdlTypeGet(call.model);
  if (!type || type.value == creo::ProMdlType::unused) {
    core::logWrite(type ? L"Model is unused" : L"Failure while get Modeltype", core::kWarning);
    return false;
  }
  facts.type = type.value;
  if (hasTokens && !replaceTokens(call, kModelTokens, facts)) return false;
  return !hasTokens || facts.type != creo::ProMdlType::drawing || drawingTokens(call);
}

}  // namespace engine

// Predicates on the session: user variables, the environment, Creo's version.
#include <algorithm>

#include "core/log.h"
#include "core/state.h"
#include "documents/predicate_families.h"
#include "documents/predicate_words.h"
#include "engine/variables.h"
#include "os/processes.h"
#include "text/format.h"
#include "text/letters.h"
#include "text/units.h"

namespace documents {

int userVariablePredicate(creo::ProMdl model, const core::XmlNode& item) {
  title(L"Extended filter: User variable");
  const auto name = engine::replaceVariables(valueOf(item, L"param"), model);
  const auto value = engine::replaceVariables(valueOf(item, L"value"), model);
  if (!name || !value) return kFalse;
  const engine::UserVariableTable& variables = engine::userVariables();
  for (std::size_t i = 0; i < variables.count(); ++i)
    if (matches(name.text, variables.names()[i]) && matches(value.text, variables.values()[i])) return kTrue;
  return kFalse;
}

int creoVersionPredicate(creo::ProMdl, const core::XmlNode& item) {
  title(L"Extended filter: Creo version");
  static constexpr std::pair<std::wstring_view, std::wstring_view> kVersions[] = {
      {L"creo2", L"Creo 2.0"}, {L"creo3", L"Creo 3.0"}, {L"creo4", L"Creo 4.0"}, {L"creo5", L"Creo 5.0"},
      {L"creo6", L"Creo 6.0"}, {L"creo7", L"Creo 7.0"}, {L"creo8", L"Creo 8.0"},
  };
  const std::wstring& version = core::pluginState().creoVersion;
  for (const auto& [attribute, text] : kVersions) {
    if (core::attrFind(item.attributes, attribute) && text::equalNoCase(version, text))
      return isTrue(item, attribute) ? kTrue : kFalse;
  }
  core::logWrite(text::format(L"CreoVersion: Don't know version %s", version), core::kError);
  return kFalse;
}

int environmentVariablePredicate(creo::ProMdl model, const core::XmlNode& item) {
  title(L"Extended filter: Environment variable");
  const auto name = engine::replaceVariables(valueOf(item, L"param"), model);
  const auto value = engine::replaceVariables(valueOf(item, L"value"), model);
  if (!name || !value) return kFalse;
  const auto held = os::environment(name.text);
  return held && matches(value.text, text::cut(*held, text::kTextSize - 1)) ? kTrue : kFalse;
}

}  // namespace documents

// The list of a model's parameters.
#include "actions/model/parameter_values.h"
#include "creo/ProMdl.h"
#include "reports/list_rows.h"
#include "reports/parameter_words.h"

namespace reports {
namespace {

struct Parameter {
  const ListSubject& subject;
  const creo::ProParameter& handle;
};

// In its own units, as variables give it.
std::wstring value(const Parameter& parameter) {
  const auto value = creo::ProParameterScaledvalueGet(parameter.handle);
  return value ? actions::textOf(value.value) : std::wstring();
}

constexpr ListColumn<Parameter> kColumns[] = {
    {L"File name", L"fname", [](const Parameter& parameter) { return parameter.subject.file.name; }},
    {L"Parameter", L"name", [](const Parameter& parameter) { return parameter.handle.id; }},
    {L"Type", L"type", [](const Parameter& parameter) { return parameterTypeWord(parameter.handle); }},
    {L"Value", L"value", &value},
    {L"Description", L"descr",
     [](const Parameter& parameter) { return creo::ProParameterDescriptionGet(parameter.handle).value; }},
    {L"Is designated", L"isdesig",
     [](const Parameter& parameter) { return truth(creo::ProParameterDesignationVerify(parameter.handle)); }},
    {L"Restriction type", L"restriction", [](const Parameter& parameter) { return restrictionWord(parameter.handle); }},
};

}  // namespace

void parameterList(CsvReport& report, const ListSubject& subject) {
  const ListRows<Parameter> rows(report, kColumns);
  const auto owner = creo::ProMdlToModelitem(subject.model);
  if (!owner) return;
  creo::ProParameterVisit(owner.value, [&](const creo::ProParameter& parameter) {
    rows.add({subject, parameter});
    return creo::ProNoError;
  });
}

}  // namespace reports

// The report on parameters: a set of columns for each one that a name or a pattern tells.
#include "core/log.h"
#include "creo/ProMdl.h"
#include "creo/ProParameter.h"
#include "language/compare.h"
#include "language/variables.h"
#include "reports/parameter_words.h"
#include "reports/report_row.h"

namespace reports {
namespace {

using namespace actions;
using namespace language;
using creo::ProParameter;

constexpr int kMostNames = 100;
constexpr std::size_t kNameLength = 32;  // UTF-16 units; more of a name doesn't count

// A parameter under the name that its columns bear.
struct NamedParameter {
  std::wstring_view name;
  const ProParameter& parameter;
  creo::ProMdl model;
  bool byPattern = false;
};

// Empty where the template engine can't tell it, or leaves the form as it is, as that of a note.
std::wstring variable(std::wstring_view name, creo::ProMdl model) {
  const std::wstring form = L"%" + std::wstring(name) + L"%";
  Replaced value = replaceVariables(form, model);
  return value && value.text != form ? std::move(value.text) : std::wstring();
}

bool isNote(const ProParameter& parameter) {
  const auto value = creo::ProParameterValueGet(parameter);
  return value && value.value.type == creo::ProParamvalueType::noteId;
}

// A note has none, which is nothing to warn of where nobody named it.
std::wstring value(const NamedParameter& named) {
  return named.byPattern && isNote(named.parameter) ? std::wstring() : variable(named.name, named.model);
}

std::wstring valueType(const NamedParameter& named) { return parameterTypeWord(named.parameter); }

std::wstring designated(const NamedParameter& named) {
  return truth(creo::ProParameterDesignationVerify(named.parameter));
}

std::wstring description(const NamedParameter& named) {
  return creo::ProParameterDescriptionGet(named.parameter).value;
}

std::wstring driver(const NamedParameter& named) {
  const auto driver = creo::ProParameterDriverGet(named.parameter);
  if (!driver) return {};
  switch (driver.value) {
    case creo::ProParameterDriver::parameter:
      return L"Parameter";
    case creo::ProParameterDriver::function:
      return L"Function";
    case creo::ProParameterDriver::relation:
      return L"Relation";
    case creo::ProParameterDriver::none:
      break;
  }
  return {};
}

std::wstring restriction(const NamedParameter& named) { return restrictionWord(named.parameter); }

std::wstring units(const NamedParameter& named) { return creo::ProParameterUnitsGet(named.parameter).value; }

struct ParameterColumn {
  std::wstring_view attribute, title, keyEnding;
  std::wstring (*value)(const NamedParameter& parameter);
  std::string_view about;  // for people
};
// clang-format off
constexpr ParameterColumn kColumns[] = {
    {L"value", L" Value", L"V", &value, "the value; none for a note"},
    {L"art", L" Type", L"T", &valueType, "the type"},
    {L"designated", L" Designated", L"Desig", &designated, "whether it is designated"},
    {L"paraDescription", L" Description", L"Descr", &description, "the description"},
    {L"isRelated", L" Relation driven", L"Rel", &driver, "what drives it: a relation, a parameter, a function"},
    {L"restric", L" Restriction type", L"Res", &restriction, "how its values are restricted"},
    {L"units", L" Unit", L"U", &units, "the unit"},
};
// clang-format on
constexpr const ParameterColumn& kValueColumn = kColumns[0];

class ParameterReport {
 public:
  ParameterReport(const Task& task, const ReportRow& row, creo::ProModelitem owner)
      : model_(task.model()), row_(row), owner_(std::move(owner)) {
    for (const ParameterColumn& column : kColumns)
      if (task.isTrue(column.attribute)) columns_.push_back(&column);
  }

  // All parameters whose names fit, each under its own name.
  void matching(std::wstring_view pattern) const {
    creo::ProParameterVisit(owner_, [&](const ProParameter& parameter) {
      if (!matches(pattern, parameter.id)) return creo::ProNoError;
      addColumns(parameter.id);
      write({parameter.id, parameter, model_, true});
      return creo::ProNoError;
    });
  }

  // Its columns are there also where the model has no such parameter.
  void named(std::wstring_view name) const {
    addColumns(name);
    const bool isElsewhere = name.find(L':') != name.npos;
    if (isElsewhere && !columns_.empty() && columns_.front() == &kValueColumn)
      row_.value(key(name, kValueColumn), variable(name, model_));
    if (const auto parameter = creo::ProParameterInit(owner_, std::wstring(name)))
      write({name, parameter.value, model_});
  }

 private:
  static std::wstring key(std::wstring_view name, const ParameterColumn& column) {
    return L"paramName_" + std::wstring(name) + L"_" + std::wstring(column.keyEnding);
  }
  void addColumns(std::wstring_view name) const {
    for (const ParameterColumn* column : columns_)
      row_.column(key(name, *column), std::wstring(name) + std::wstring(column->title));
  }
  void write(const NamedParameter& parameter) const {
    for (const ParameterColumn* column : columns_) row_.value(key(parameter.name, *column), column->value(parameter));
  }

  creo::ProMdl model_;
  const ReportRow& row_;
  creo::ProModelitem owner_;
  std::vector<const ParameterColumn*> columns_;  // those that are on
};

Outcome writeParameters(const Task& task) {
  const auto row = ReportRow::of(task);
  if (!row) return done;
  const auto owner = creo::ProMdlToModelitem(task.model());
  if (!owner) {
    core::logWrite(L"Can't convert mdl to mi", core::kError);
    return done;
  }
  const ParameterReport report(task, *row, owner.value);
  for (const int i : task.numbers(L"paramName_", kMostNames)) {
    const std::wstring_view name = text::cut(*task.numbered(L"paramName_%d", i), kNameLength);
    if (name.empty()) continue;
    if (name.find_first_of(L"/*") != name.npos)
      report.matching(name);
    else
      report.named(name);
  }
  return done;
}

constexpr Attribute kNames[] = {
    {.name = L"paramName_%d",
     .kind = Kind::pattern,
     .need = Need::needed,
     .about = "a parameter's name of up to 32 characters; with * or / in it a pattern, with a colon another place"},
};
constexpr auto kAttributes = reportAttributes(kNames, kColumns);

constexpr Action kActions[] = {
    {.key = L"writeParameters",
     .place = 25,
     .title = L"Report Parameter",
     .attributes = kAttributes,
     .effects = {.reads = Touched::model | Touched::users, .changes = Touched::reports},
     .about = "reports parameters: a set of columns for each name",
     .function = &writeParameters},
};

}  // namespace

std::span<const actions::Action> parameterReportActions() { return kActions; }

}  // namespace reports

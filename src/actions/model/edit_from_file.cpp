// Parameters and dimensions that take their values from a table: a row each, by the model's name.
#include <array>
#include <unordered_map>

#include "actions/model/instances.h"
#include "actions/model/parameter_edit.h"
#include "actions/model/parameter_values.h"
#include "actions/table_file.h"
#include "actions/visits.h"
#include "core/log.h"
#include "core/messages.h"
#include "creo/ProDimension.h"
#include "creo/ProDrawing.h"
#include "language/compare.h"
#include "language/read_number.h"
#include "language/variables.h"
#include "language/workbook.h"
#include "text/format.h"
#include "text/letters.h"
#include "text/numbers.h"

namespace actions {
namespace {

using namespace language;

constexpr std::size_t kExpressionSize = 81;
constexpr std::wstring_view kModelName = L"model name", kParameterName = L"parameter name",
                            kDimensionName = L"dimension name", kPresent = L"present value", kValue = L"value";

template <class Value>
using ByName = std::unordered_map<std::wstring, Value, text::HashNoCase, text::EqualNoCase>;

void error(std::wstring_view text) { core::logWrite(text, core::kError); }

// What a row says.
struct Entry {
  std::wstring name, value;
  std::wstring present;  // a pattern for the value before; "*" where the table doesn't ask
};

// Behind the lines for instances and generics: the table's rows for the task's model, those that name it "GEAR",
// "GEAR.PRT" or by a pattern for one of them. Nothing, with a line, where the table can't be read or lacks a column.
std::optional<std::vector<Entry>> entriesFor(const Task& task, std::wstring_view nameTitle) {
  announceFamily(task);
  const CsvTable* table = tableOf(task);
  if (!table) return std::nullopt;
  const std::array titles = {kModelName, nameTitle, kValue};
  std::array<std::size_t, titles.size()> columns{};
  bool all = true;
  for (std::size_t i = 0; i < titles.size(); ++i) {
    columns[i] = table->column(titles[i]);
    if (columns[i] < table->columnCount()) continue;
    error(text::format(L"%s: there is no column '%s'", task.attribute(L"path"), titles[i]));
    all = false;
  }
  if (!all) return std::nullopt;
  std::wstring extension = task.subject().extension;
  if (extension.starts_with(L'.')) extension.erase(0, 1);
  const std::array names = {task.subject().name, task.subject().name + L"." + extension};
  const std::size_t present = table->column(kPresent);
  std::vector<Entry> entries;
  for (const std::size_t row : table->rowsFor(columns[0], names)) {
    // It would empty what the parameter holds.
    if (!table->holds(row, columns[2])) {
      core::logWrite(text::format(L"%s: a row for '%s' ends before its value, nothing is set by it",
                                  task.attribute(L"path"), table->cell(row, columns[1])),
                     core::kWarning);
      continue;
    }
    const bool asks = present < table->columnCount();
    entries.push_back({std::wstring(table->cell(row, columns[1])), std::wstring(table->cell(row, columns[2])),
                       asks ? std::wstring(table->cell(row, present)) : L"*"});
  }
  return entries;
}

void noParameter(std::wstring_view name) { error(text::format(L"Parameter can't be found on Model: %s", name)); }

Outcome editModelParameterFromFile(const Task& task) {
  const auto entries = entriesFor(task, kParameterName);
  if (!entries) return done;
  for (const Entry& entry : *entries) {
    const auto parameter = parameterNamed(task.model(), entry.name);
    if (!parameter) {
      noParameter(entry.name);
      continue;
    }
    core::logIndented(text::format(core::msgText(Message::setParameterTo), parameter.value.id, entry.value),
                      core::kNormal, 2);
    setParameterTo(task, parameter.value, {.value = entry.value});
  }
  return done;
}

// A parameter as it was before the action: what its rows are compared with, so that no row works on another's result.
struct Present {
  creo::Got<creo::ProParameter> parameter;
  std::wstring text;
  bool isSet = false;
};

Present presentOf(creo::ProMdl model, std::wstring_view name) {
  Present present{parameterNamed(model, name), {}};
  if (!present.parameter) {
    noParameter(name);
    return present;
  }
  const auto value = editedValue(present.parameter.value);
  if (!value) error(L"Failure in ProParameterValueGet()");
  present.isSet = !value;
  present.text = textOf(value.value);
  return present;
}

Outcome editParameterFromDictionary(const Task& task) {
  const auto entries = entriesFor(task, kParameterName);
  if (!entries) return done;
  ByName<Present> parameters;
  for (const Entry& entry : *entries) {
    auto found = parameters.find(entry.name);
    if (found == parameters.end()) found = parameters.emplace(entry.name, presentOf(task.model(), entry.name)).first;
    Present& present = found->second;
    if (!present.parameter || present.isSet || !matches(entry.present, present.text)) continue;
    core::logIndented(
        text::format(core::msgText(Message::setParameterFromTo), present.parameter.value.id, present.text, entry.value),
        core::kNormal, 2);
    setParameterTo(task, present.parameter.value, {.value = entry.value});
    present.isSet = true;
  }
  return done;
}

// The model's dimensions by their symbols; of two of one symbol the first.
ByName<creo::ProDimension> dimensionsOf(const Task& task) {
  ByName<creo::ProDimension> dimensions;
  const auto add = [&](const creo::ProDimension& dimension) {
    if (const auto symbol = creo::ProDimensionSymbolGet(dimension)) dimensions.try_emplace(symbol.value, dimension);
    return creo::ProNoError;
  };
  for (const bool reference : {false, true}) {
    const auto visit = task.extensionIs(L"DRW") ? &creo::ProDrawingDimensionVisit : &creo::ProSolidDimensionVisit;
    isWhole(visit(task.model(), reference, add), L"The dimensions");
  }
  return dimensions;
}

void setDimension(const Task& task, const creo::ProDimension& dimension, const Entry& entry) {
  const auto present = creo::ProDimensionValueGet(dimension);
  if (!present) return error(text::format(L"The value of the dimension '%s' can't be read", entry.name));
  const Replaced value =
      replaceVariablesLine(entry.value, task.model(), text::exactFixed(present.value), kExpressionSize);
  if (!value)
    return error(text::format(L"The dimension '%s' is not set because errors in the replacement", entry.name));
  const auto number = numberIn(value.text);
  if (!number)
    return error(text::format(L"Failure at dimension '%s' while cast value '%s' to double", entry.name, value.text));
  core::logIndented(text::format(core::msgText(Message::setDoubleTo), entry.name, *number), core::kNormal, 2);
  if (creo::ProDimensionValueSet(dimension, *number) != creo::ProNoError)
    error(text::format(L"The dimension '%s' can't be set", entry.name));
}

Outcome editModelDimensionFromFile(const Task& task) {
  const auto entries = entriesFor(task, kDimensionName);
  if (!entries) return done;
  const auto dimensions = entries->empty() ? ByName<creo::ProDimension>() : dimensionsOf(task);
  for (const Entry& entry : *entries) {
    const auto found = dimensions.find(entry.name);
    if (found == dimensions.end())
      error(text::format(L"Dimension can't be found on Model: %s", entry.name));
    else
      setDimension(task, found->second, entry);
  }
  return done;
}

constexpr auto kAttributes = joined(kTableFile, kInstancesToo);
constexpr Conditions kConditions = {kFilter, kInstancesAsTold};
// A workbook becomes a CSV file first.
constexpr Effects kEffects{.reads = Touched::model | Touched::files | Touched::programs,
                           .changes = Touched::model | Touched::family | Touched::files};

constexpr Action kActions[] = {
    {.key = L"editModelDimensionFromFile",
     .place = 83,
     .title = L"Edit model dimension from file",
     .conditions = kConditions,
     .attributes = kAttributes,
     .effects = kEffects,
     .about = "sets dimensions to values of a table",
     .function = &editModelDimensionFromFile},
    {.key = L"editModelParameterFromFile",
     .place = 104,
     .title = Message::editFromFile,
     .inTitle = L"path",
     .conditions = kConditions,
     .attributes = kAttributes,
     .effects = kEffects,
     .about = "sets parameters to values of a table",
     .function = &editModelParameterFromFile},
    {.key = L"editParameterFromDictionary",
     .place = 105,
     .title = Message::editFromDictionary,
     .conditions = kConditions,
     .attributes = kAttributes,
     .effects = kEffects,
     .about = "replaces values of parameters by those of a table",
     .function = &editParameterFromDictionary},
};

}  // namespace

std::span<const Action> editFromFileActions() { return kActions; }

}  // namespace actions

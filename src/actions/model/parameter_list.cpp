#include "actions/model/parameter_list.h"

#include <cmath>
#include <optional>

#include "actions/visits.h"
#include "core/log.h"
#include "core/messages.h"
#include "creo/ProFamtable.h"
#include "creo/ProMdl.h"
#include "creo/ProParameter.h"
#include "creo/ProSolid.h"
#include "language/compare.h"
#include "language/read_number.h"
#include "language/variables.h"
#include "text/format.h"
#include "text/numbers.h"
#include "text/pieces.h"

namespace actions {
namespace {

using namespace creo;
using core::Message;

constexpr int kUsualCount = 100;
constexpr std::size_t kUnitLength = 32;
constexpr std::size_t kDescriptionLength = 80;

// Symbols of a model's dimensions, read once for a whole list.
class DimensionSymbols {
 public:
  explicit DimensionSymbols(ProMdl model) : model_(model) {}
  // The message that tells who has the name; none when it is free.
  std::optional<Message> holderOf(std::wstring_view name) {
    if (!isRead_) read();
    for (const Symbol& symbol : symbols_)
      if (language::matches(name, symbol.text))
        return symbol.reference ? Message::nameOfReferenceDimension : Message::nameOfDimension;
    return std::nullopt;
  }

 private:
  struct Symbol {
    std::wstring text;
    bool reference;
  };
  void read() {
    isRead_ = true;
    const auto type = model_ ? ProMdlTypeGet(model_) : Got<ProMdlType>(ProNotFound);
    if (!type || (type.value != ProMdlType::assembly && type.value != ProMdlType::part)) return;
    for (const bool reference : {false, true}) {
      const ProError visited = ProSolidDimensionVisit(model_, reference, [&](const ProDimension& dimension) {
        if (auto symbol = ProDimensionSymbolGet(dimension)) symbols_.push_back({std::move(symbol.value), reference});
        return ProNoError;
      });
      isWhole(visited, L"The dimensions");
    }
  }

  ProMdl model_;
  bool isRead_ = false;
  std::vector<Symbol> symbols_;
};

struct TypeWord {
  std::wstring_view word;  // of `type_%d`
  ProParamvalueType type;
};
constexpr TypeWord kTypeWords[] = {
    {L"String", ProParamvalueType::string},
    {L"Integer", ProParamvalueType::integer},
    {L"Double", ProParamvalueType::real},
    {L"Boolean", ProParamvalueType::boolean},
};

// The text that stands for the value in Creo: numbers as far as the list's text is one, else 0. Nothing: no number that
// a parameter can hold.
std::optional<std::wstring> canonical(std::wstring_view text, ProParamvalueType type) {
  switch (type) {
    case ProParamvalueType::integer:
      return text::format(L"%d", text::parseInt(text));
    case ProParamvalueType::real:
      if (const double number = text::parseDouble(text); std::isfinite(number)) return text::shortest(number);
      return std::nullopt;
    case ProParamvalueType::boolean:
      return std::wstring(text == L"true" ? L"true" : L"false");
    default:
      return std::wstring(text::cut(text, text::kTextSize - 1));
  }
}

// The value of an index; nothing, with its line in the log, when it can't be built.
std::optional<ProParamvalue> valueOf(const Task& task, int index) {
  const std::wstring_view word = task.numbered(L"type_%d", index).value_or(L"");
  const std::wstring_view text = task.numbered(L"value_%d", index).value_or(L"");
  for (const TypeWord& row : kTypeWords) {
    if (row.word != word) continue;
    ProParamvalue value;
    const auto written = canonical(text, row.type);
    if (written && ProParamvalueSet(value, *written, row.type) == ProNoError) return value;
    core::logMsgPlain(Message::paramvalueSetFailed, core::kError);
    return std::nullopt;
  }
  core::logWrite(text::format(L"The parameter type '%s' isn't one of String, Integer, Double, Boolean", word),
                 core::kError);
  return std::nullopt;
}

// What isn't in a new parameter's value of its text; one that is there takes nothing of it.
void tellCut(const Task& task, int index, const ProParamvalue& value) {
  const std::wstring_view text = task.numbered(L"value_%d", index).value_or(L"");
  if (text::trimmed(text).empty()) return;
  if (value.type == ProParamvalueType::integer && text::wholeInt(text) != value.integer)
    language::tellCut(text, value.integer);
  if (value.type == ProParamvalueType::real && text::wholeDouble(text) != value.real)
    language::tellCut(text, value.real);
}

std::wstring_view unitOf(const Task& task, int index) { return task.numbered(L"unit_%d", index).value_or(L""); }

bool isNumber(const ProParamvalue& value) {
  return value.type == ProParamvalueType::real || value.type == ProParamvalueType::integer;
}

// Where the parameter of an index is made: one with a unit always in the model.
Got<ProModelitem> ownerOf(std::wstring_view unit, const ParameterTarget& target) {
  return unit.empty() ? Got<ProModelitem>(target.owner) : ProMdlToModelitem(target.model);
}

Got<ProParameter> create(const ProModelitem& owner, const std::wstring& name, const ProParamvalue& value,
                         std::wstring_view unit) {
  if (unit.empty()) return ProParameterCreate(owner, name, value);
  return ProParameterWithUnitsCreate(owner, name, value, std::wstring(text::cut(unit, kUnitLength)));
}

void setDescription(const ProParameter& parameter, std::wstring_view description) {
  if (ProParameterDescriptionSet(parameter, std::wstring(description)) != ProNoError)
    core::logWrite(text::format(L"Can't set description of parameter: %s", parameter.id), core::kError);
}

void designate(const ProParameter& parameter, bool designated) {
  if (setDesignation(parameter, designated) != ProNoError)
    core::logWrite(text::format(core::msgText(Message::designationFailed), parameter.id), core::kError);
}

void designateAsAsked(const ProParameter& parameter, bool designated) {
  const auto now = ProParameterDesignationVerify(parameter);
  if (!now || now.value != designated) designate(parameter, designated);
}

void completeNew(const Task& task, int index, const ProParameter& parameter, int depth) {
  core::logMsgId(Message::parameterCreated, core::kNormal, depth);
  if (const auto description = task.numbered(L"description_%d", index)) {
    if (text::units(*description) <= kDescriptionLength) {
      core::logMsgId(Message::setDescription, core::kNormal, depth);
      setDescription(parameter, *description);
    } else {
      core::logWrite(L"Can't set description with more than 80 characters", core::kError);
    }
  }
  if (!task.has(L"desig")) return;
  core::logMsgId(Message::setDesignated, core::kNormal, depth);
  designateAsAsked(parameter, task.numbered(L"designated_%d", index) == L"true");
}

void changeExisting(const Task& task, int index, const ProParameter& parameter, int depth) {
  core::logMsgId(Message::parameterExists, core::kNormal, depth);
  if (task.isTrue(L"descr"))
    if (const auto description = task.numbered(L"description_%d", index))
      setDescription(parameter, text::cut(*description, kDescriptionLength));
  if (task.isTrue(L"desig"))
    if (const auto designated = task.numbered(L"designated_%d", index))
      designateAsAsked(parameter, *designated == L"true");
}

ProError addColumn(ProMdl model, const ProParameter& parameter) {
  const auto table = ProFamtableInit(model);
  if (!table) return table.error;
  const auto item = ProParameterToFamtableItem(parameter);
  return item ? ProFamtableItemAdd(table.value, item.value) : item.error;
}

void addToFamilyTable(ProMdl model, const ProParameter& parameter, int depth) {
  switch (addColumn(model, parameter)) {
    case ProNoError:
      core::logMsgId(Message::addedToTable, core::kNormal, depth);
      break;
    case ProNoFamtable:
    case ProExists:
      core::logMsgPlain(Message::inTableOrNoTable, core::kWarning);
      break;
    default:
      core::logMsgPlain(Message::addToTableFailed, core::kError);
  }
}

void addParameter(const Task& task, int index, const ParameterTarget& target, const std::wstring& name,
                  const ProParamvalue& value) {
  const std::wstring_view unit = unitOf(task, index);
  if (!unit.empty() && !isNumber(value)) {
    core::logWrite(text::format(L"'%s' isn't created: only numbers have a unit", name), core::kError);
    return;
  }
  const auto owner = ownerOf(unit, target);
  Got<ProParameter> parameter = owner ? create(owner.value, name, value, unit) : owner.error;
  if (parameter) {
    tellCut(task, index, value);
    completeNew(task, index, parameter.value, target.logDepth);
  } else if (parameter.error == ProExists && (parameter = ProParameterInit(owner.value, name))) {
    changeExisting(task, index, parameter.value, target.logDepth);
  } else {
    core::logWrite(text::format(L"Can't create parameter: %s", name), core::kError);
    return;
  }
  if (target.addToFamilyTable) addToFamilyTable(target.model, parameter.value, target.logDepth);
}

}  // namespace

void addParametersFromAction(const Task& task, const ParameterTarget& target) {
  const std::wstring_view count = task.attribute(L"count");
  DimensionSymbols dimensions(target.model);
  for (const int index : task.numbers(L"name_", count.empty() ? kUsualCount : text::parseInt(count))) {
    const language::Replaced name =
        language::replaceVariables(task.numbered(L"name_%d", index).value_or(L""), task.model());
    if (!name.hasText()) continue;
    core::logIndented(text::format(L"%s:%s", core::msgText(Message::tryToCreateParameter), name.text), core::kNormal,
                      target.logDepth);
    const auto value = valueOf(task, index);
    if (!value) continue;
    if (const auto holder = dimensions.holderOf(name.text)) {
      core::logMsgPlain(*holder, core::kError);
      return;
    }
    addParameter(task, index, target, name.text, *value);
  }
}

ProError setDesignation(const ProParameter& parameter, bool designated) {
  const ProError result = designated ? ProParameterDesignationAdd(parameter) : ProParameterDesignationRemove(parameter);
  return result == (designated ? ProExists : ProNotFound) ? ProNoError : result;
}

}  // namespace actions

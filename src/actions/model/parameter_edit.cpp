#include "actions/model/parameter_edit.h"

#include "actions/model/parameter_convert.h"
#include "actions/model/parameter_values.h"
#include "core/log.h"
#include "core/messages.h"
#include "creo/ProMdl.h"
#include "language/compare.h"
#include "language/number_with_units.h"
#include "language/read_number.h"
#include "language/variables.h"
#include "text/format.h"
#include "text/numbers.h"

namespace actions {
namespace {

using namespace creo;
using core::Message;

constexpr std::size_t kExpressionSize = 81;
constexpr std::wstring_view kNotEditable = L"This parameter is not editable (not completely created)";

// The line of a value that couldn't be read or compared.
void error(std::wstring_view text) { core::logWrite(text, core::kError); }

enum class Fit { no, yes, endVisit };
Fit fits(bool condition) { return condition ? Fit::yes : Fit::no; }

// How a number that is searched must look, and the lines for one that doesn't: of a renaming, of an edit.
struct NumberSearch {
  std::wstring_view pattern;
  Message cantCast;
  std::wstring_view cantCompare;
};
constexpr NumberSearch kIntegers{language::kIntegerPattern, Message::noInteger,
                                 L"%s - Integer can't compared with not a number"};
constexpr NumberSearch kDoubles{language::kDoublePattern, Message::noDouble,
                                L"%s - Double can't compared with not a number"};

// number: what the whole text is. Those of a renaming are read as they are, those of an edit must look like one.
template <class T>
Fit numberFits(const ParameterEditContext& context, const NumberSearch& search, std::wstring_view wanted,
               std::optional<T> number, T value) {
  if (number && (context.rename || language::matches(search.pattern, wanted))) return fits(*number == value);
  if (context.rename)
    error(core::msgText(search.cantCast));
  else
    core::logWrite(text::format(search.cantCompare, wanted), core::kWarning);
  return Fit::no;
}

Fit valueFits(const ParameterEditContext& context, std::wstring_view wanted, const ProParameter& parameter) {
  const auto value = editedValue(parameter);
  if (!value) {
    error(L"Failure in ProParameterValueGet()");
    return Fit::no;
  }
  switch (value.value.type) {
    case ProParamvalueType::boolean:
      return fits(namesTruth(wanted, value.value.boolean));
    case ProParamvalueType::string:
      return fits(language::matches(wanted, value.value.string));
    case ProParamvalueType::integer:
      return numberFits(context, kIntegers, wanted, text::wholeInt(wanted), value.value.integer);
    case ProParamvalueType::real:
      return numberFits(context, kDoubles, wanted, text::wholeDouble(wanted), value.value.real);
    case ProParamvalueType::noteId:
      error(L"NoteID is not supported");
      return Fit::endVisit;
    case ProParamvalueType::none:
      break;
  }
  error(kNotEditable);
  return Fit::endVisit;
}

// `name` for a parameter: substituted on the model that owns it, as it stands for a feature's or a material's.
std::optional<std::wstring> searchedName(ParameterEditContext& context, const ProParameter& parameter) {
  if (parameter.owner.type != ProItemType::model) return std::wstring(context.currentAction.attribute(L"name"));
  if (context.searched) return context.searched;
  language::Replaced name = language::replaceVariables(context.currentAction.attribute(L"name"), parameter.owner.owner);
  if (name) context.searched = std::move(name.text);
  return context.searched;
}

void renameParameter(ParameterEditContext& context, const ProParameter& parameter) {
  language::Replaced name = context.currentAction.text(L"value", text::kNameSize);
  if (!name) return error(text::format(core::msgText(Message::replacementFaulty), parameter.id));
  context.workingName = std::move(name.text);
  convertParameter(context, parameter, nullptr);
}

void edit(ParameterEditContext& context, const ProParameter& parameter) {
  if (context.rename)
    renameParameter(context, parameter);
  else
    editParameterValue(context, parameter);
}

// The line for a driven parameter; false for one that nothing drives.
bool isDriven(const ProParameter& parameter) {
  const auto driver = ProParameterDriverGet(parameter);
  if (!driver || driver.value == ProParameterDriver::none) return false;
  const Message message = driver.value == ProParameterDriver::relation   ? Message::relationDriven
                          : driver.value == ProParameterDriver::function ? Message::functionDriven
                                                                         : Message::parameterDriven;
  error(text::format(core::msgText(message), parameter.id));
  return true;
}

struct NewValue {
  std::wstring text;  // that Creo takes
  std::wstring shown;
  std::wstring_view failure;
};

// The text as a value of the kind. Nothing, with its line, for a number that is none, isn't finite or is out of range.
std::optional<NewValue> newValue(const ProParameter& parameter, std::wstring_view text, ProParamvalueType type) {
  const auto noNumber = [&] {
    error(text::format(core::msgText(noNumberMessage(type)), parameter.id, text));
    return std::nullopt;
  };
  if (type == ProParamvalueType::real) {
    const auto number = language::numberIn(text);
    if (!number) return noNumber();
    return NewValue{text::shortest(*number), text::format(L"%f", *number), core::msgText(Message::doubleSetFailed)};
  }
  if (type == ProParamvalueType::integer) {
    const auto number = language::integerIn(text);
    if (!number) return noNumber();
    const std::wstring shown = text::format(L"%d", *number);
    return NewValue{shown, shown, core::msgText(Message::integerSetFailed)};
  }
  if (type == ProParamvalueType::boolean) {
    const std::wstring shown = namesTruth(text, true) ? L"true" : L"false";
    return NewValue{shown, shown, core::msgText(Message::booleanSetFailed)};
  }
  return NewValue{std::wstring(text), std::wstring(text), L"Parameter - Failure in ProParamvalueSet - String"};
}

// A number with units loses them on its way into another one's text: what is written counts in the units of the model.
// Those that aren't the same number there.
std::vector<language::NumberWithUnits> foreignNumbers(const ParameterEditContext& context, language::Replaced& replaced,
                                                      const ProParameter& target) {
  std::vector<language::NumberWithUnits> numbers = std::move(replaced.numbers);
  if (context.override)
    numbers.insert(numbers.end(), context.override->numbers.begin(), context.override->numbers.end());
  std::erase_if(numbers, [&](const language::NumberWithUnits& number) {
    if (number.parameter.owner.owner != target.owner.owner) return false;
    const auto inModel = ProParameterValueGet(number.parameter);
    return inModel && inModel.value.real == number.value;
  });
  return numbers;
}

void warnOfUnits(const ProParameter& written, const std::vector<language::NumberWithUnits>& numbers) {
  if (numbers.empty()) return;
  const auto units = ProParameterUnitsGet(written);
  const auto value = ProParameterScaledvalueGet(written);
  if (!units || !value || value.value.type != ProParamvalueType::real) return;
  for (const language::NumberWithUnits& number : numbers) {
    if (number.units == units.value && number.value == value.value.real) continue;
    core::logWrite(text::format(L"'%s' is %s %s, and '%s' is %s %s now: what is written counts in the model's units",
                                number.token, text::shortest(number.value), number.units, written.id,
                                text::shortest(value.value.real), units.value),
                   core::kWarning);
  }
}

// Is its value held within a range or a list?
bool isRestricted(const ProParameter& parameter) {
  return ProParameterRangeGet(parameter).value || ProParameterIsEnumerated(parameter).value;
}

void set(const ParameterEditContext& context, const ProParameter& parameter, const ProParamvalue& current) {
  const std::wstring_view expression =
      context.override ? std::wstring_view(context.override->value) : context.currentAction.attribute(L"value");
  language::Replaced replaced =
      language::replaceVariablesLine(expression, context.currentModel, exactTextOf(current), kExpressionSize);
  if (!replaced) return error(text::format(core::msgText(Message::replacementFaulty), parameter.id));
  const auto wanted = newValue(parameter, replaced.text, current.type);
  if (!wanted) return;
  core::logIndented(text::format(core::msgText(Message::setTextTo), parameter.id, wanted->shown), core::kNormal, 4);
  ProParamvalue value;
  if (ProParamvalueSet(value, wanted->text, current.type) != ProNoError) return error(wanted->failure);
  const auto foreign = foreignNumbers(context, replaced, parameter);
  const ProError result = ProParameterValueSet(parameter, value);
  if (result != ProNoError) core::logMsgPlain(Message::valueNotSet, core::kError);
  if (result == ProBadInputs && isRestricted(parameter))
    error(text::format(L"The restriction of '%s' doesn't allow '%s'", parameter.id, wanted->shown));
  if (result == ProNoError) warnOfUnits(parameter, foreign);
}

}  // namespace

void editParameterValue(ParameterEditContext& context, const ProParameter& parameter) {
  context.editHandled = true;
  if (isDriven(parameter)) return;
  const auto value = editedValue(parameter);
  if (!value) return error(L"Failure in ProParameterValueGet()");
  if (value.value.type == ProParamvalueType::noteId)
    return error(L"The Id Note Parameter is not supported by this action");
  const ParameterKind* own = kindOfType(value.value.type);
  if (!own) return error(kNotEditable);
  const std::wstring_view digit = context.currentAction.attribute(L"totype");
  const ParameterKind* target = context.override ? kindOfType(context.override->kind) : kindOfDigit(digit);
  const bool retypes = context.editPass == ParameterEditContext::retype;
  if (!target) {
    if (retypes) error(text::format(L"The type '%s' isn't one of 0, 1, 2, 3", digit));
    return;
  }
  if (target != own && retypes) {
    context.familyAware = true;
    convertParameter(context, parameter, target);
  }
  if (target == own && !retypes) set(context, parameter, value.value);
  context.override.reset();
}

ProError findAndEditParameter(ParameterEditContext& context, const ProParameter& parameter) {
  // The visit is repeated behind a conversion, and meets it at its new place.
  if (parameter.ordinal > 0 && context.renamed.contains(parameter.id)) return ProNoError;
  const std::wstring_view search = context.currentAction.attribute(L"searchin");
  const auto wanted = searchedName(context, parameter);
  if (!wanted) return ProNoError;
  if (search == L"1") {
    if (!language::matches(*wanted, parameter.id)) return ProNoError;
    core::logIndented(parameter.id, core::kNormal, 3);
    edit(context, parameter);
    ++context.editHits;
    return ProNoError;
  }
  if (search != L"2") {
    error(L"Error in xml");
    return ProStopVisit;
  }
  const Fit fit = valueFits(context, *wanted, parameter);
  if (fit == Fit::yes) edit(context, parameter);
  return fit == Fit::endVisit ? ProStopVisit : ProNoError;
}

void setParameterTo(const Task& task, const ProParameter& parameter, ParameterOverride value) {
  if (value.kind == ProParamvalueType::none) {
    const auto own = editedValue(parameter);
    if (!own) return error(L"Failure in ProParameterValueGet()");
    value.kind = own.value.type;
  }
  ParameterEditContext context{.currentAction = task, .currentModel = parameter.owner.owner};
  context.editPass = ParameterEditContext::setValue;
  context.override = std::move(value);
  editParameterValue(context, parameter);
}

Got<ProParameter> parameterNamed(ProMdl model, std::wstring_view name) {
  const auto owner = ProMdlToModelitem(model);
  if (!owner) return owner.error;
  return ProParameterInit(owner.value, std::wstring(name));
}

bool visitAndEdit(ParameterEditContext& context, const ProModelitem& owner) {
  context.searched.reset();
  context.renamed.clear();
  const ProError result =
      ProParameterVisit(owner, [&](const ProParameter& parameter) { return findAndEditParameter(context, parameter); });
  if (result == ProNoError || result == ProNotFound) return true;  // over nothing it hasn't failed
  if (result != ProStopVisit) error(L"Failure in ProParameterVisit()");
  return false;
}

}  // namespace actions

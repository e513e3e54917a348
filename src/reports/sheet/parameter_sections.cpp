// The parameters of the model, and those of its features.

#include "actions/model/parameter_values.h"
#include "core/messages.h"
#include "creo/ProFeature.h"
#include "creo/ProMdl.h"
#include "creo/ProModelitem.h"
#include "language/compare.h"
#include "reports/sheet/items.h"
#include "reports/sheet/sections.h"
#include "text/format.h"
#include "text/numbers.h"

namespace reports::sheet {
namespace {

using core::Message;

constexpr double kTypeColumn = 175, kValueColumn = 225, kUnitColumn = 325, kDesignatedColumn = 375,
                 kDescriptionColumn = 425, kShortValueColumn = 350;
constexpr double kStep = 5 + 10;

// What a section of parameters lets through, and how much it tells of each.
struct ParameterForm {
  bool isFiltered = false, isShort = false;
  std::wstring_view filter;
  [[nodiscard]] bool passes(const std::wstring& name) const { return !isFiltered || language::matches(filter, name); }
};

struct KindAndText {
  std::wstring_view kind;
  std::wstring text;
};

KindAndText valueOf(const creo::ProParamvalue& value) {
  switch (value.type) {
    case creo::ProParamvalueType::boolean:
      return {L"BOOL", value.boolean ? L"TRUE" : L"FALSE"};
    case creo::ProParamvalueType::real:
      return {L"DOUB", text::format(L"%.4f", value.real)};
    case creo::ProParamvalueType::integer:
      return {L"INT", text::format(L"%d", value.integer)};
    case creo::ProParamvalueType::string:
      return {L"STR", value.string};
    case creo::ProParamvalueType::noteId:
      return {L"NID", text::format(L"%d", value.integer)};
    case creo::ProParamvalueType::none:
      break;
  }
  return {};
}

void heads(Page& page, const ParameterForm& form) {
  if (form.isShort)
    return page.heads({{kMargin, core::msgText(Message::name)}, {kShortValueColumn, core::msgText(Message::value)}});
  page.heads({{kMargin, core::msgText(Message::name)},
              {kTypeColumn, core::msgText(Message::type)},
              {kValueColumn, core::msgText(Message::value)},
              {kUnitColumn, core::msgText(Message::unit)},
              {kDesignatedColumn, core::msgText(Message::designated)},
              {kDescriptionColumn, core::msgText(Message::description)}});
}

// fault: the line of a parameter that can't be read, with its code.
void row(const Subject& subject, const ParameterForm& form, const creo::ProParameter& parameter,
         std::wstring_view fault) {
  Page& page = subject.page;
  Unread& unread = subject.unread;
  // In the unit that stands beside it.
  const auto value = creo::ProParameterScaledvalueGet(parameter);
  if (!value) tellError(text::format(fault, static_cast<int>(value.error)));
  const KindAndText shown = value ? valueOf(value.value) : KindAndText();
  if (form.isShort) return page.row({{kMargin, parameter.id}, {kShortValueColumn, shown.text}}, kRowSize, kStep);
  const bool isDesignated = unread.read(creo::ProParameterDesignationVerify(parameter), L"designations of parameters");
  const std::wstring unit = unread.readAny(creo::ProParameterUnitsGet(parameter), L"units of parameters");
  const std::wstring description =
      unread.readAny(creo::ProParameterDescriptionGet(parameter), L"descriptions of parameters");
  page.row({{kMargin, parameter.id},
            {kTypeColumn, shown.kind},
            {kValueColumn, shown.text},
            {kUnitColumn, unit},
            {kDesignatedColumn, isDesignated ? L"TRUE" : L"FALSE"},
            {kDescriptionColumn, description}},
           kRowSize, kStep);
}

// The heads stand over the first parameter of a feature; a feature without one that passes has none.
void featureParameters(const Subject& subject, const ParameterForm& form, const creo::ProModelitem& feature) {
  constexpr std::wstring_view kFault = L"Failure occured while read feature parameter: %d";
  bool isFirst = true;
  const creo::ProError result = creo::ProParameterVisit(feature, [&](const creo::ProParameter& parameter) {
    if (!form.passes(parameter.id)) return creo::ProNoError;
    if (std::exchange(isFirst, false)) {
      head(subject, text::format(L"%s - Id: %d", itemName(subject, feature), feature.id));
      heads(subject.page, form);
    }
    row(subject, form, parameter, kFault);
    return creo::ProNoError;
  });
  if (result != creo::ProNoError && result != creo::ProNotFound)
    tellError(text::format(kFault, static_cast<int>(result)));
}

}  // namespace

void parameterSection(const Subject& subject) {
  if (!subject.wants(L"parameter")) return;
  tell(L"Report parameters");
  const ParameterForm form{subject.wants(L"paraFilter"), subject.wants(L"parameter_sv"),
                           subject.task.attribute(L"paraFilterTxt")};
  title(subject, form.isFiltered ? Message::parametersFiltered : Message::parameters);
  heads(subject.page, form);
  const auto owner = creo::ProMdlToModelitem(subject.model);
  const creo::ProError result = !owner ? owner.error : creo::ProParameterVisit(owner.value, [&](const auto& parameter) {
    if (form.passes(parameter.id)) row(subject, form, parameter, L"Failure occured while read parameter: %d");
    return creo::ProNoError;
  });
  if (result != creo::ProNoError && result != creo::ProNotFound)
    tellError(text::format(L"Error: %d", static_cast<int>(result)));
  subject.page.endSection();
}

void featureParameterSection(const Subject& subject) {
  if (!subject.wants(L"keParameter")) return;
  tell(L"Report feature parameters");
  const ParameterForm form{subject.wants(L"keparaFilter"), subject.wants(L"parameter_sv"),
                           subject.task.attribute(L"keparaFilterTxt")};
  title(subject, form.isFiltered ? Message::featureParametersFiltered : Message::featureParameters);
  visitFeatures(subject, [&](const creo::ProFeature& feature) {
    featureParameters(subject, form, itemOf(feature));
    return creo::ProNoError;
  });
  subject.page.endSection();
}

}  // namespace reports::sheet

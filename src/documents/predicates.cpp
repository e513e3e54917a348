#include "documents/predicates.h"

#include "core/log.h"
#include "core/messages.h"
#include "creo/ProDrawing.h"
#include "creo/ProFamtable.h"
#include "creo/ProMdl.h"
#include "creo/ProParameter.h"
#include "documents/filter.h"
#include "engine/compare.h"
#include "engine/variables.h"
#include "text/format.h"
#include "text/letters.h"
#include "text/numbers.h"
#include "text/units.h"

namespace documents {
namespace {

constexpr int kTitleInstance = 6, kTypeFailed = 7, kTitleGeneric = 8, kTitleFilename = 18;
constexpr int kParameterFound = 36, kTitleParameter = 37;
constexpr std::size_t kFileNameField = 101;
constexpr std::wstring_view kCurrentModelPrefix = L"curmod:";

void title(int id) { core::logMsgId(id, core::kDebug, 1); }

std::wstring_view valueOf(const core::XmlNode& item, std::wstring_view name, std::wstring_view absent = {}) {
  const core::XmlAttr* attribute = core::attrFind(item.attributes, name);
  return attribute ? attribute->value : absent;
}

bool matches(std::wstring_view pattern, std::wstring_view text) { return engine::wildcardCompare(pattern, text) == 1; }

// The type for a predicate that drawings don't have; nothing, after its line, where it can't be read.
bool isSolid(creo::ProMdl model) {
  const auto type = creo::ProMdlTypeGet(model);
  if (!type) {
    core::logMsgPlain(kTypeFailed, core::kError);
    return false;
  }
  return type.value != creo::ProMdlType::drawing;
}

// How a parameter is compared, read once for all parameters that the pattern meets.
struct Comparison {
  std::wstring value;
  std::wstring_view ncomp, epsilon;
};

bool comparesNumber(const Comparison& with, double number, double target, double margin) {
  const double low = target - margin, high = target + margin;
  if (with.ncomp == L"1") return number < high;
  if (with.ncomp == L"2") return number <= high;
  if (with.ncomp == L"3") return low <= number && number <= high;
  if (with.ncomp == L"4") return number >= low;
  if (with.ncomp == L"5") return number > low;
  return false;
}

bool comparesBoolean(const Comparison& with, bool state) {
  static constexpr std::wstring_view kWords[2][7] = {{L"false", L"0", L"no", L"nein", L"f", L"n", L"*"},
                                                     {L"true", L"1", L"yes", L"ja", L"j", L"y", L"*"}};
  const auto& words = kWords[state ? 1 : 0];
  return std::any_of(std::begin(words), std::end(words),
                     [&with](std::wstring_view word) { return text::equalNoCase(with.value, word); });
}

bool comparesInteger(const Comparison& with, int number) {
  if (!matches(engine::kIntegerPattern, with.value)) return matches(with.value, text::format(L"%d", number));
  // A double holds every integer of the parameter's range, and a value beyond it still lies on its side.
  return comparesNumber(with, number, text::parseDouble(with.value), text::parseInt(with.epsilon));
}

bool comparesReal(const Comparison& with, double number) {
  if (!matches(engine::kDoublePattern, with.value)) return matches(with.value, text::format(L"%f", number));
  return comparesNumber(with, number, text::parseDouble(with.value), text::parseDouble(with.epsilon));
}

// The visit's answer: stop at a hit, and at a kind that can't be compared.
creo::ProError compareParameter(const Comparison& with, const creo::ProParameter& parameter, bool& held) {
  const auto value = creo::ProParameterValueGet(parameter);
  if (!value) return creo::ProNoError;
  switch (value.value.type) {
    case creo::ProParamvalueType::boolean:
      held = comparesBoolean(with, value.value.boolean);
      break;
    case creo::ProParamvalueType::string:
      held = matches(with.value, value.value.string);
      break;
    case creo::ProParamvalueType::integer:
      held = comparesInteger(with, value.value.integer);
      break;
    case creo::ProParamvalueType::real:
      held = comparesReal(with, value.value.real);
      break;
    case creo::ProParamvalueType::none:
    case creo::ProParamvalueType::noteId:
      core::logWrite(L"Deletion test of NoteID is not supported", core::kWarning);
      return creo::ProStopVisit;
  }
  return held ? creo::ProStopVisit : creo::ProNoError;
}

int instancePredicate(creo::ProMdl model, const core::XmlNode&) { return isInstance(model); }
int genericPredicate(creo::ProMdl model, const core::XmlNode&) { return isGeneric(model); }
int skeletonPredicate(creo::ProMdl model, const core::XmlNode&) { return isSkeleton(model); }

int parameterPredicate(creo::ProMdl model, const core::XmlNode& item) {
  title(kTitleParameter);
  const auto value = engine::replaceVariables(valueOf(item, L"value"), model);
  auto name = engine::replaceVariables(valueOf(item, L"param"), model);
  if (!value || !name) return kFalse;
  const auto type = creo::ProMdlTypeGet(model);
  if (!type) {
    core::logMsgPlain(kTypeFailed, core::kError);
    return kNotApplicable;
  }
  if (type.value == creo::ProMdlType::drawing && name.text.starts_with(kCurrentModelPrefix)) {
    const auto solid = creo::ProDrawingCurrentsolidGet(model);
    if (!solid) return kFalse;
    model = solid.value;
    name.text.erase(0, kCurrentModelPrefix.size());
  }
  const auto owner = creo::ProMdlToModelitem(model);
  if (!owner) return kFalse;

  const Comparison with{value.text, valueOf(item, L"ncomp", L"3"), valueOf(item, L"epsilon")};
  bool met = false, held = false;
  creo::ProParameterVisit(owner.value, [&](const creo::ProParameter& parameter) {
    if (!matches(name.text, parameter.id)) return creo::ProNoError;
    met = true;
    core::logMsgId(kParameterFound, core::kDebug, 1);
    return compareParameter(with, parameter, held);
  });
  // A name that holds a star or slashes of its own isn't met as a pattern.
  if (!met) {
    if (const auto plain = creo::ProParameterInit(owner.value, name.text)) compareParameter(with, plain.value, held);
  }
  return held ? kTrue : kFalse;
}

int filenamePredicate(creo::ProMdl model, const core::XmlNode& item) {
  title(kTitleFilename);
  const auto data = creo::ProMdlDataGet(model);
  if (!data) return kFalse;
  const std::wstring name = data.value.name + L"." + data.value.type;
  return matches(valueOf(item, L"filename"), text::cut(name, kFileNameField - 1)) ? kTrue : kFalse;
}

constexpr Predicate kTable[] = {
    {L"isInstance", &instancePredicate},
    {L"isGeneric", &genericPredicate},
    {L"isSkeleton", &skeletonPredicate},
    {L"isMultiModelDrawing", nullptr},
    {L"parameter", &parameterPredicate},
    {L"pdmobject", nullptr},
    {L"pdmobject_2", nullptr},
    {L"path", nullptr},
    {L"filename", &filenamePredicate},
    {L"relation", nullptr},
    {L"currentMaterialName", nullptr},
    {L"layer", nullptr},
    {L"sheetsize", nullptr},
    {L"unitSystem", nullptr},
    {L"keExists", nullptr},
    {L"formatName", nullptr},
    {L"drawingCurrentModel", nullptr},
    {L"keSuppressed", nullptr},
    {L"materialParameter", nullptr},
    {L"formatsOnSheets", nullptr},
    {L"symbolOnDrawing", nullptr},
    {L"symbolInDrawing", nullptr},
    {L"keFromType", nullptr},
    {L"geomchk", nullptr},
    {L"modelsubtype", nullptr},
    {L"userVariable", nullptr},
    {L"simpRepExists", nullptr},
    {L"creoVersion", nullptr},
    {L"tableOnDrawing", nullptr},
    {L"accuracy", nullptr},
    {L"hasInstanceWithName", nullptr},
    {L"environmentVariable", nullptr},
    {L"drawingDimensionText", nullptr},
    {L"hasUnregeneratedInstance", nullptr},
    {L"viewexists", nullptr},
    {L"tolerance", nullptr},
    {L"doubleDefinedParameters", nullptr},
    {L"combinedState", nullptr},
    {L"keIsFlexible", nullptr},
    {L"fileexists", nullptr},
    {L"modelexists", nullptr},
    {L"insertmodeisactive", nullptr},
    {L"layerstateexists", nullptr},
    {L"combstateexists", nullptr},
    {L"stylestateexists", nullptr},
    {L"xsecexists", nullptr},
    {L"explodestateexists", nullptr},
    {L"sketchhasentities", nullptr},
    {L"parametertype", nullptr},
    {L"isregenerateable", nullptr},
    {L"dimensiontolerance", nullptr},
    {L"ismodified", nullptr},
    {L"containsCircularReferences", nullptr},
};
static_assert(std::size(kTable) == 53);

}  // namespace

std::span<const Predicate> predicateTable() { return kTable; }

int isInstance(creo::ProMdl model) {
  title(kTitleInstance);
  if (!isSolid(model)) return kNotApplicable;
  const auto generic = creo::ProFaminstanceImmediategenericinfoGet(model);
  if (!generic || generic.value.version == -1) return kFalse;
  const auto name = creo::ProMdlNameGet(model);
  return name && !text::equalNoCase(name.value, generic.value.name) ? kTrue : kFalse;
}

int isGeneric(creo::ProMdl model) {
  title(kTitleGeneric);
  if (!isSolid(model)) return kNotApplicable;
  return creo::ProSolidFamtableCheck(model) == creo::ProNoError ? kTrue : kFalse;
}

int isSkeleton(creo::ProMdl model) {
  core::logIndented(L"Extended filter: Is skeleton", core::kDebug, 1);
  const auto skeleton = creo::ProMdlIsSkeleton(model);
  return skeleton && skeleton.value ? kTrue : kFalse;
}

}  // namespace documents

// Predicates on what a solid is as a whole: relations, material, units, accuracy, tolerances, kind, regeneration.
#include <cmath>

#include "core/log.h"
#include "core/messages.h"
#include "creo/ProDrawing.h"
#include "creo/ProMaterial.h"
#include "creo/ProMdl.h"
#include "creo/ProModelitem.h"
#include "creo/ProParameter.h"
#include "creo/ProRelset.h"
#include "creo/ProSolid.h"
#include "documents/predicate_families.h"
#include "documents/predicate_words.h"
#include "engine/compare.h"
#include "text/letters.h"
#include "text/numbers.h"
#include "text/units.h"

namespace documents {
namespace {

constexpr int kTypeFailed = 7;
constexpr int kTitleUnits = 20, kUnitsFailed = 21;
constexpr int kTitleMaterial = 23, kTitleMaterialParameter = 24, kNoInteger = 25, kNoDouble = 26;
constexpr int kTitleRelations = 38, kTitlePostRelations = 39;
constexpr int kTitleSubtype = 46;
constexpr int kDrawingFailed = 124;

// What stands for the material of a part that has none.
constexpr std::wstring_view kSystemMaterial = L"PTC_SYSTEM_MTRL_PROPS";
constexpr int kSubtypes = 30;
constexpr double kMargin = 1e-9;
constexpr int kRetries = 2;

int answer(bool held) { return held ? kTrue : kFalse; }

bool anyRelation(const creo::ProModelitem& owner, std::wstring_view search) {
  auto relations = creo::ProModelitemToRelset(owner);
  if (!relations) relations = creo::ProRelsetCreate(owner);
  if (!relations) return false;
  const auto lines = creo::ProRelsetRelationsGet(relations.value);
  if (!lines) return false;
  return std::any_of(lines.value.begin(), lines.value.end(),
                     [search](const std::wstring& line) { return matches(search, line); });
}

bool boolean(std::wstring_view value, bool state) {
  static constexpr std::wstring_view kWords[2][3] = {{L"false", L"0", L"no"}, {L"true", L"1", L"yes"}};
  const auto& words = kWords[state ? 1 : 0];
  return std::any_of(std::begin(words), std::end(words),
                     [value](std::wstring_view word) { return text::equalNoCase(value, word); });
}

// A value that must have the form of a number; message: what is said of one that hasn't.
bool hasForm(std::wstring_view value, std::wstring_view pattern, int message) {
  if (matches(pattern, value)) return true;
  core::logMsgPlain(message, core::kError);
  return false;
}

bool equals(const creo::ProParamvalue& held, std::wstring_view value) {
  switch (held.type) {
    case creo::ProParamvalueType::string:
      return matches(value, held.string);
    case creo::ProParamvalueType::integer:
      return hasForm(value, engine::kIntegerPattern, kNoInteger) &&
             noted(L"=", value, held.integer, text::parseDouble(value) == held.integer);  // beyond int, too
    case creo::ProParamvalueType::real:
      return hasForm(value, engine::kDoublePattern, kNoDouble) &&
             noted(L"=", value, held.real, text::parseDouble(value) == held.real);
    case creo::ProParamvalueType::boolean:
      return boolean(value, held.boolean);
    case creo::ProParamvalueType::none:
    case creo::ProParamvalueType::noteId:
      break;
  }
  return false;
}

// Which of the numbers "1" to "30" the pattern meets first; 0 for none.
int subtypeOf(std::wstring_view pattern) {
  for (int subtype = 1; subtype <= kSubtypes; ++subtype)
    if (matches(pattern, std::to_wstring(subtype))) return subtype;
  return 0;
}

creo::ProError regenerated(creo::ProMdl solid, unsigned flags) {
  creo::ProError result = creo::ProSolidRegenerate(solid, flags);
  for (int retry = 0; result == creo::ProRegenAgain && retry < kRetries; ++retry)
    result = creo::ProSolidRegenerate(solid, flags);
  return result;
}

}  // namespace

int relationPredicate(creo::ProMdl model, const core::XmlNode& item) {
  title(kTitleRelations);
  const std::wstring_view search = valueOf(item, L"search");
  if (search.empty()) return kFalse;
  auto owner = creo::ProMdlToModelitem(model);
  if (!owner) return kFalse;
  bool held = isTrue(item, L"rel") && anyRelation(owner.value, search);
  if (!held && isTrue(item, L"posrel")) {
    title(kTitlePostRelations);
    owner.value.id = creo::kPostRegeneration;
    held = anyRelation(owner.value, search);
  }
  return answer(held);
}

int currentMaterialPredicate(creo::ProMdl model, const core::XmlNode& item) {
  title(kTitleMaterial);
  if (!applicableType(model, AppliesTo::parts)) return kNotApplicable;
  const auto material = creo::ProMaterialCurrentGet(model);
  if (!material) return answer(isTrue(item, L"whenNoCurr"));
  const std::wstring_view pattern = valueOf(item, L"currmat");
  if (matches(pattern, material.value.name)) return kTrue;
  return answer(matches(pattern, kSystemMaterial) && isTrue(item, L"whenNoCurr"));
}

int materialParameterPredicate(creo::ProMdl model, const core::XmlNode& item) {
  title(kTitleMaterialParameter);
  if (!applicableType(model, AppliesTo::parts)) return kNotApplicable;
  const auto current = creo::ProMaterialCurrentGet(model);
  if (!current) return kFalse;
  const auto material = creo::ProModelitemByNameInit(model, creo::ProItemType::material, current.value.name);
  if (!material) return kFalse;
  const std::wstring name(text::cut(valueOf(item, L"param"), text::kNameSize - 1));
  const auto parameter = creo::ProParameterInit(material.value, name);
  if (!parameter) return kFalse;
  const auto held = creo::ProParameterValueGet(parameter.value);
  return answer(held && equals(held.value, valueOf(item, L"value")));
}

int unitSystemPredicate(creo::ProMdl model, const core::XmlNode& item) {
  title(kTitleUnits);
  if (!applicableType(model, AppliesTo::solids)) return kNotApplicable;
  const auto name = creo::ProMdlPrincipalunitsystemGet(model);
  if (!name) {
    core::logMsgPlain(kUnitsFailed, core::kError);
    return kFalse;
  }
  return answer(matches(valueOf(item, L"us"), name.value));
}

int modelSubtypePredicate(creo::ProMdl model, const core::XmlNode& item) {
  title(kTitleSubtype);
  const auto subtype = creo::ProMdlSubtypeGet(model);
  if (!subtype) {
    core::logMsgPlain(kTypeFailed, core::kWarning);
    return kNotApplicable;
  }
  return answer(subtypeOf(valueOf(item, L"subtype")) == subtype.value);
}

int accuracyPredicate(creo::ProMdl model, const core::XmlNode& item) {
  title(L"Extended filter: Accuracy");
  if (!applicableType(model, AppliesTo::solids)) return kNotApplicable;
  const auto accuracy = creo::ProSolidAccuracyGet(model);
  if (!accuracy) return kFalse;
  const std::wstring_view kind = valueOf(item, L"valtype"), how = valueOf(item, L"eq");
  if (kind == L"rel" && accuracy.value.kind == creo::ProAccuracyKind::absolute) return kFalse;
  if (kind == L"abs" && accuracy.value.kind == creo::ProAccuracyKind::relative) return kFalse;
  const std::wstring_view value = valueOf(item, L"value");
  const double wanted = text::parseDouble(value), held = accuracy.value.value;
  if (how == L"0") return answer(noted(L"<", value, held, wanted - kMargin > held));
  if (how == L"1") {
    const bool near = held == wanted || (held < wanted + kMargin && held > wanted - kMargin);
    return answer(noted(L"=", value, held, near));
  }
  return answer(how == L"2" && noted(L">", value, held, held > wanted + kMargin));
}

int tolerancePredicate(creo::ProMdl model, const core::XmlNode& item) {
  title(L"Extended filter: Tolerance");
  if (!applicableType(model, AppliesTo::solids)) return kNotApplicable;
  const auto held = creo::ProSolidModelclassGet(model);
  // The list counts from 1; 0 is a model without a class.
  const int number = held ? static_cast<int>(held.value) + 1 : 0;
  return answer(valueOf(item, L"tol") == std::to_wstring(number));
}

int insertModePredicate(creo::ProMdl model, const core::XmlNode&) {
  title(L"Extended filter: Insert mode is active");
  if (!applicableType(model, AppliesTo::solids)) return kNotApplicable;
  const auto active = creo::ProInsertModeIsActive(model);
  return answer(active && active.value);
}

int regeneratePredicate(creo::ProMdl model, const core::XmlNode& item) {
  title(L"Extended filter: Is regenerateable");
  const auto type = applicableType(model, AppliesTo::any);
  if (!type) return kNotApplicable;
  if (*type == creo::ProMdlType::drawing) {
    if (creo::ProDwgDraftRegenerate(model) == creo::ProNoError) return kTrue;
    core::logMsgId(kDrawingFailed, core::kDebug, 1);
    return kFalse;
  }
  if (valueOf(item, L"force") == L"false") {
    regenerated(model, creo::kRegenerateNoFlags);
    const auto status = creo::ProSolidRegenerationstatusGet(model);
    return answer(status && status.value == creo::ProRegenerationStatus::regenerated);
  }
  constexpr unsigned kFlags = creo::kRegenerateForce | creo::kRegenerateUpdateInstances;
  return answer(regenerated(model, kFlags) == creo::ProNoError);
}

}  // namespace documents

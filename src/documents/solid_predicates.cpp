// Predicates on what a solid is as a whole: relations, material, units, accuracy, tolerances, kind, regeneration.
#include <cmath>

#include "core/log.h"
#include "core/messages.h"
#include "creo/ProDrawing.h"
#include "creo/ProMaterial.h"
#include "creo/ProMdl.h"
#include "creo/ProModelitem.h"
#include "creo/ProParameter.h"
#include "creo/ProSolid.h"
#include "documents/predicate_families.h"
#include "documents/predicate_words.h"
#include "documents/relations.h"
#include "language/compare.h"
#include "text/letters.h"
#include "text/numbers.h"
#include "text/units.h"

namespace documents {
namespace {

using core::Message;

// What stands for the material of a part that has none.
constexpr std::wstring_view kSystemMaterial = L"PTC_SYSTEM_MTRL_PROPS";
constexpr int kSubtypes = 30;
constexpr double kMargin = 1e-9;
constexpr int kRetries = 2;

bool anyRelation(const creo::ProModelitem& owner, std::wstring_view search) {
  auto relations = relationsOf(owner);
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
bool hasForm(std::wstring_view value, std::wstring_view pattern, Message message) {
  if (matches(pattern, value)) return true;
  core::logMsgPlain(message, core::kError);
  return false;
}

bool equals(const creo::ProParamvalue& paramvalue, std::wstring_view value) {
  switch (paramvalue.type) {
    case creo::ProParamvalueType::string:
      return matches(value, paramvalue.string);
    case creo::ProParamvalueType::integer:
      return hasForm(value, language::kIntegerPattern, Message::noInteger) &&
             noted(L"=", value, paramvalue.integer, text::parseDouble(value) == paramvalue.integer);  // beyond int, too
    case creo::ProParamvalueType::real:
      return hasForm(value, language::kDoublePattern, Message::noDouble) &&
             noted(L"=", value, paramvalue.real, text::parseDouble(value) == paramvalue.real);
    case creo::ProParamvalueType::boolean:
      return boolean(value, paramvalue.boolean);
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

Answer relationPredicate(const Question& question) {
  const std::wstring_view search = question.value(L"search");
  if (search.empty()) return Answer::no;
  auto owner = creo::ProMdlToModelitem(question.model);
  if (!owner) return Answer::no;
  bool found = question.isTrue(L"rel") && anyRelation(owner.value, search);
  if (!found && question.isTrue(L"posrel")) {
    core::logMsgId(Message::filterPostRelations, core::kDebug, 1);
    owner.value.id = creo::kPostRegeneration;
    found = anyRelation(owner.value, search);
  }
  return answer(found);
}

Answer currentMaterialPredicate(const Question& question) {
  const auto material = creo::ProMaterialCurrentGet(question.model);
  if (!material) return answer(question.isTrue(L"whenNoCurr"));
  const std::wstring_view pattern = question.value(L"currmat");
  if (matches(pattern, material.value.name)) return Answer::yes;
  return answer(matches(pattern, kSystemMaterial) && question.isTrue(L"whenNoCurr"));
}

Answer materialParameterPredicate(const Question& question) {
  const auto current = creo::ProMaterialCurrentGet(question.model);
  if (!current) return Answer::no;
  const auto material = creo::ProModelitemByNameInit(question.model, creo::ProItemType::material, current.value.name);
  if (!material) return Answer::no;
  const std::wstring name(text::cut(question.value(L"param"), text::kNameSize - 1));
  const auto parameter = creo::ProParameterInit(material.value, name);
  if (!parameter) return Answer::no;
  const auto value = creo::ProParameterValueGet(parameter.value);
  return answer(value && equals(value.value, question.value(L"value")));
}

Answer unitSystemPredicate(const Question& question) {
  const auto name = creo::ProMdlPrincipalunitsystemGet(question.model);
  if (!name) {
    core::logMsgPlain(Message::unitSystemUnread, core::kError);
    return Answer::no;
  }
  return answer(matches(question.value(L"us"), name.value));
}

Answer modelSubtypePredicate(const Question& question) {
  const auto subtype = creo::ProMdlSubtypeGet(question.model);
  if (!subtype) {
    core::logMsgPlain(Message::typeUnread, core::kWarning);
    return Answer::notApplicable;
  }
  return answer(subtypeOf(question.value(L"subtype")) == subtype.value);
}

Answer accuracyPredicate(const Question& question) {
  const auto accuracy = creo::ProSolidAccuracyGet(question.model);
  if (!accuracy) return Answer::no;
  const std::wstring_view kind = question.value(L"valtype"), how = question.value(L"eq");
  if (kind == L"rel" && accuracy.value.kind == creo::ProAccuracyKind::absolute) return Answer::no;
  if (kind == L"abs" && accuracy.value.kind == creo::ProAccuracyKind::relative) return Answer::no;
  const std::wstring_view value = question.value(L"value");
  const double wanted = text::parseDouble(value), held = accuracy.value.value;
  if (how == L"0") return answer(noted(L"<", value, held, wanted - kMargin > held));
  if (how == L"1") {
    const bool near = held == wanted || (held < wanted + kMargin && held > wanted - kMargin);
    return answer(noted(L"=", value, held, near));
  }
  return answer(how == L"2" && noted(L">", value, held, held > wanted + kMargin));
}

Answer tolerancePredicate(const Question& question) {
  const auto modelclass = creo::ProSolidModelclassGet(question.model);
  // The list counts from 1; 0 is a model without a class.
  const int number = modelclass ? static_cast<int>(modelclass.value) + 1 : 0;
  return answer(question.value(L"tol") == std::to_wstring(number));
}

Answer insertModePredicate(const Question& question) {
  const auto active = creo::ProInsertModeIsActive(question.model);
  return answer(active && active.value);
}

Answer regeneratePredicate(const Question& question) {
  if (question.type == creo::ProMdlType::drawing) {
    if (creo::ProDwgDraftRegenerate(question.model) == creo::ProNoError) return Answer::yes;
    core::logMsgId(Message::drawingNotRegenerated, core::kDebug, 1);
    return Answer::no;
  }
  if (question.value(L"force") == L"false") {
    regenerated(question.model, creo::kRegenerateNoFlags);
    const auto status = creo::ProSolidRegenerationstatusGet(question.model);
    return answer(status && status.value == creo::ProRegenerationStatus::regenerated);
  }
  constexpr unsigned kFlags = creo::kRegenerateForce | creo::kRegenerateUpdateInstances;
  return answer(regenerated(question.model, kFlags) == creo::ProNoError);
}

constexpr Attribute kRelation[] = {
    {.name = L"rel", .kind = Kind::flag, .words = L"true", .need = Need::oneOf, .about = "the relations are searched"},
    {.name = L"posrel",
     .kind = Kind::flag,
     .words = L"true",
     .need = Need::oneOf,
     .about = "those after regeneration are searched"},
    {.name = L"search", .kind = Kind::pattern, .need = Need::needed, .about = "the line"},
};
constexpr Attribute kMaterial[] = {
    {.name = L"currmat", .kind = Kind::pattern, .need = Need::needed, .about = "the name of the material"},
    {.name = L"whenNoCurr", .kind = Kind::flag, .words = L"true", .about = "the answer for a part without a material"},
};
constexpr Attribute kUnitSystem[] = {
    {.name = L"us", .kind = Kind::pattern, .need = Need::needed, .about = "the name of the system of units"},
};
constexpr Attribute kMaterialParameter[] = {
    {.name = L"param", .need = Need::needed, .about = "the name of the parameter"},
    {.name = L"value", .kind = Kind::pattern, .need = Need::needed, .about = "its value"},
};
constexpr Attribute kSubtype[] = {
    {.name = L"subtype",
     .kind = Kind::pattern,
     .need = Need::needed,
     .about = "the number of the subtype, 1 to 30; the first that fits counts"},
};
constexpr Attribute kAccuracy[] = {
    {.name = L"valtype", .need = Need::needed, .about = "rel or abs asks for an accuracy of that kind"},
    {.name = L"value", .kind = Kind::number, .need = Need::needed, .about = "what the accuracy is compared with"},
    {.name = L"eq", .kind = Kind::word, .words = L"0|1|2", .need = Need::needed, .about = "0 below, 1 equal, 2 above"},
};
constexpr Attribute kTolerance[] = {
    {.name = L"tol",
     .kind = Kind::word,
     .words = L"0|1|2|3|4",
     .need = Need::needed,
     .about = "0 no class, 1 fine to 4 very coarse"},
};
constexpr Attribute kRegeneration[] = {
    {.name = L"force", .kind = Kind::flag, .words = L"false", .about = "false regenerates only what has changed"},
};

constexpr Predicate kPredicates[] = {
    {.key = L"relation",
     .place = 9,
     .title = Message::filterRelations,
     .attributes = kRelation,
     .about = "a line of the relations fits",
     .function = &relationPredicate},
    {.key = L"currentMaterialName",
     .place = 10,
     .title = Message::filterMaterialName,
     .models = Models::parts,
     .attributes = kMaterial,
     .about = "the name of the current material fits",
     .function = &currentMaterialPredicate},
    {.key = L"unitSystem",
     .place = 13,
     .title = Message::filterUnitSystem,
     .models = Models::solids,
     .attributes = kUnitSystem,
     .about = "the principal system of units fits",
     .function = &unitSystemPredicate},
    {.key = L"materialParameter",
     .place = 18,
     .title = Message::filterMaterialParameter,
     .models = Models::parts,
     .attributes = kMaterialParameter,
     .about = "a parameter of the current material has that value",
     .function = &materialParameterPredicate},
    {.key = L"modelsubtype",
     .place = 24,
     .title = Message::filterSubtype,
     .attributes = kSubtype,
     .about = "it is of that subtype",
     .function = &modelSubtypePredicate},
    {.key = L"accuracy",
     .place = 29,
     .title = L"Extended filter: Accuracy",
     .models = Models::solids,
     .attributes = kAccuracy,
     .about = "the accuracy is below, equal to or above a value",
     .function = &accuracyPredicate},
    {.key = L"tolerance",
     .place = 35,
     .title = L"Extended filter: Tolerance",
     .models = Models::solids,
     .attributes = kTolerance,
     .about = "the class of its general tolerances is that one",
     .function = &tolerancePredicate},
    {.key = L"insertmodeisactive",
     .place = 41,
     .title = L"Extended filter: Insert mode is active",
     .models = Models::solids,
     .about = "insert mode is on",
     .function = &insertModePredicate},
    {.key = L"isregenerateable",
     .place = 49,
     .title = L"Extended filter: Is regenerateable",
     .models = Models::typed,
     .attributes = kRegeneration,
     .about = "it regenerates; it is really regenerated",
     .function = &regeneratePredicate},
};

}  // namespace

std::span<const Predicate> solidPredicates() { return kPredicates; }

}  // namespace documents

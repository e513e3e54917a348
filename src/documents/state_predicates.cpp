// Predicates on what a model keeps under a name: layers and layer states, views, and the states of solids.
#include "core/log.h"
#include "core/messages.h"
#include "creo/ProLayer.h"
#include "creo/ProState.h"
#include "documents/predicate_families.h"
#include "documents/predicate_words.h"
#include "text/numbers.h"

namespace documents {
namespace {

using core::Message;

bool anyMatches(std::wstring_view pattern, const std::vector<std::wstring>& names) {
  return std::any_of(names.begin(), names.end(),
                     [pattern](const std::wstring& name) { return matches(pattern, name); });
}

using StateVisit = creo::ProError (*)(creo::ProMdl solid, creo::Visitor<creo::ProModelitem> visitor);

// Does a visit of the solid meet an item whose name fits the attribute's pattern?
Answer stateNamed(const Question& question, StateVisit visit, std::wstring_view attribute) {
  bool found = false;
  visit(question.model, [&](const creo::ProModelitem& state) {
    const auto name = creo::ProModelitemNameGet(state);
    found = name && matches(question.value(attribute), name.value);
    return found ? creo::ProStopVisit : creo::ProNoError;
  });
  return answer(found);
}

Answer combinedStateNamed(creo::ProMdl model, std::wstring_view pattern) {
  std::vector<std::wstring> names;
  for (const creo::ProModelitem& state : creo::ProMdlCombstatesGet(model).value)
    if (const auto data = creo::ProCombstateDataGet(state)) names.push_back(data.value.name);
  return answer(anyMatches(pattern, names));
}

// How many items a layer may hold, by the sign: fewer, more, or just so many as the number.
bool countHolds(const core::XmlNode& item, std::size_t count) {
  const std::wstring_view sign = valueOf(item, L"aomisign");
  const auto actual = static_cast<long long>(count),
             wanted = static_cast<long long>(text::parseInt(valueOf(item, L"aomitf")));
  const bool holds =
      (sign == L"=" && actual == wanted) || (sign == L">" && actual > wanted) || (sign == L"<" && actual < wanted);
  return noted(sign, valueOf(item, L"aomitf"), static_cast<double>(count), holds);
}

bool layerHolds(const core::XmlNode& item, const creo::ProLayer& layer) {
  const auto name = creo::ProLayerNameGet(layer);
  if (!name || !matches(valueOf(item, L"currmat"), name.value)) return false;
  if (valueOf(item, L"aomi") == L"false") return true;
  const auto items = creo::ProLayerItemsGet(layer);
  if (items) return countHolds(item, items.value.size());
  core::logWrite(L"AAAAAAAAAAAH .... PLIG Error ^^", core::kError);
  return false;
}

Answer layerPredicate(const Question& question) {
  bool found = false;
  creo::ProMdlLayerVisit(question.model, [&](const creo::ProLayer& layer) {
    found = layerHolds(question.item, layer);
    return found ? creo::ProStopVisit : creo::ProNoError;
  });
  return answer(found);
}

Answer layerStatePredicate(const Question& question) {
  std::vector<std::wstring> names;
  for (const creo::ProLayerstate& state : creo::ProLayerstatesGet(question.model).value)
    if (const auto name = creo::ProLayerstateNameGet(state)) names.push_back(name.value);
  return answer(anyMatches(question.value(L"statename"), names));
}

Answer viewPredicate(const Question& question) {
  const auto views = creo::ProViewNamesGet(question.model);
  if (!views) return Answer::no;
  const std::wstring_view pattern = question.value(L"viewname");
  return answer(anyMatches(pattern, views.value.names) || anyMatches(pattern, views.value.alternateNames));
}

Answer combinedStatePredicate(const Question& question) {
  return combinedStateNamed(question.model, question.value(L"csname"));
}

Answer combinedStateExistsPredicate(const Question& question) {
  return combinedStateNamed(question.model, question.value(L"statename"));
}

Answer simplifiedRepPredicate(const Question& question) {
  return stateNamed(question, &creo::ProSolidSimprepVisit, L"simpRepName");
}

Answer styleStatePredicate(const Question& question) {
  return stateNamed(question, &creo::ProSolidCompdisplayVisit, L"stylename");
}

Answer crossSectionPredicate(const Question& question) {
  return stateNamed(question, &creo::ProSolidXsecVisit, L"xsecname");
}

Answer explodedStatePredicate(const Question& question) {
  return stateNamed(question, &creo::ProSolidExpldstateVisit, L"expldname");
}

constexpr Attribute kLayer[] = {
    {.name = L"currmat", .kind = Kind::pattern, .need = Need::needed, .about = "the name of the layer"},
    {.name = L"aomi",
     .kind = Kind::flag,
     .words = L"false",
     .need = Need::needed,
     .about = "unless false, the number of items is tested"},
    {.name = L"aomisign", .kind = Kind::word, .words = L"=|>|<", .about = "how many items it has beside the number"},
    {.name = L"aomitf", .kind = Kind::integer, .about = "the number of items"},
};
constexpr Attribute kSimplifiedRep[] = {
    {.name = L"simpRepName", .kind = Kind::pattern, .need = Need::needed, .about = "the name of the representation"},
};
constexpr Attribute kView[] = {
    {.name = L"viewname", .kind = Kind::pattern, .need = Need::needed, .about = "the name of the view"},
};
constexpr Attribute kCombinedState[] = {
    {.name = L"csname", .kind = Kind::pattern, .need = Need::needed, .about = "the name of the state"},
};
constexpr Attribute kStateName[] = {
    {.name = L"statename", .kind = Kind::pattern, .need = Need::needed, .about = "the name of the state"},
};
constexpr Attribute kStyleState[] = {
    {.name = L"stylename", .kind = Kind::pattern, .need = Need::needed, .about = "the name of the state"},
};
constexpr Attribute kCrossSection[] = {
    {.name = L"xsecname", .kind = Kind::pattern, .need = Need::needed, .about = "the name of the cross section"},
};
constexpr Attribute kExplodedState[] = {
    {.name = L"expldname", .kind = Kind::pattern, .need = Need::needed, .about = "the name of the state"},
};

constexpr Predicate kPredicates[] = {
    {.key = L"layer",
     .place = 11,
     .title = Message::filterLayer,
     .models = Models::solids,
     .attributes = kLayer,
     .about = "a layer has a name, and a number of items, that fit",
     .function = &layerPredicate},
    {.key = L"simpRepExists",
     .place = 26,
     .title = L"Extended filter: Simplified representation exists",
     .models = Models::solids,
     .attributes = kSimplifiedRep,
     .about = "the name of a simplified representation fits",
     .function = &simplifiedRepPredicate},
    {.key = L"viewexists",
     .place = 34,
     .title = L"Extended filter: View exists",
     .attributes = kView,
     .about = "the name of a view fits",
     .function = &viewPredicate},
    {.key = L"combinedState",
     .place = 37,
     .title = L"Extended filter: Combined state",
     .models = Models::partsAndAssemblies,
     .attributes = kCombinedState,
     .about = "the name of a combined state fits",
     .function = &combinedStatePredicate},
    {.key = L"layerstateexists",
     .place = 42,
     .title = L"Extended filter: Layer state exists",
     .models = Models::solids,
     .attributes = kStateName,
     .about = "the name of a layer state fits",
     .function = &layerStatePredicate},
    {.key = L"combstateexists",
     .place = 43,
     .title = L"Extended filter: Combined state exists",
     .models = Models::solids,
     .attributes = kStateName,
     .about = "the name of a combined state fits",
     .function = &combinedStateExistsPredicate},
    {.key = L"stylestateexists",
     .place = 44,
     .title = L"Extended filter: Style state exists",
     .models = Models::solids,
     .attributes = kStyleState,
     .about = "the name of a style state fits",
     .function = &styleStatePredicate},
    {.key = L"xsecexists",
     .place = 45,
     .title = L"Extended filter: Cross section exists",
     .models = Models::solids,
     .attributes = kCrossSection,
     .about = "the name of a cross section fits",
     .function = &crossSectionPredicate},
    {.key = L"explodestateexists",
     .place = 46,
     .title = L"Extended filter: Explode state exists",
     .models = Models::solids,
     .attributes = kExplodedState,
     .about = "the name of an exploded state fits",
     .function = &explodedStatePredicate},
};

}  // namespace

std::span<const Predicate> statePredicates() { return kPredicates; }

}  // namespace documents

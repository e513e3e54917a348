#include "headless/model/items.h"

#include <algorithm>
#include <utility>

#include "creo/ProFeature.h"
#include "creo/ProRelset.h"
#include "headless/model/datums.h"
#include "headless/model/family.h"
#include "headless/model/features.h"
#include "headless/model/follow_rename.h"
#include "headless/model/layers.h"
#include "headless/model/materials.h"
#include "headless/model/parameters.h"
#include "headless/model/placed.h"
#include "headless/model/states.h"
#include "text/encoding.h"
#include "text/letters.h"
#include "text/units.h"

namespace headless {

using creo::Got;
using creo::ProItemType;
using creo::ProModelitem;

namespace {

template <class Record>
std::vector<NamedItem> named(const std::vector<Record>& records) {
  std::vector<NamedItem> items;
  for (const Record& record : records) {
    int id = 0;
    if constexpr (requires { record.id; }) id = record.id;
    items.push_back({id, text::fromUtf8(record.name)});
  }
  return items;
}

std::vector<NamedItem> dimensions(const ModelRecord& record, bool reference) {
  std::vector<NamedItem> items;
  for (const DimensionRecord& dimension : record.dimensions)
    if (dimension.reference == reference) items.push_back({dimension.id, text::fromUtf8(symbolOf(dimension))});
  return items;
}

std::vector<NamedItem> features(const Model& model) {
  std::vector<NamedItem> items;
  for (const ModelFeature& feature : featuresOf(model)) items.push_back({feature.place.id, featureName(feature)});
  return items;
}

// Those that are there, by their places among their kind.
std::vector<NamedItem> coordinateSystems(const Model& model) {
  std::vector<NamedItem> items;
  int id = 0;
  for (const DatumRecord& system : model.document->solid().coordinateSystems) {
    ++id;
    if (hasGeometry(model, system.feature)) items.push_back({id, datumName(model, system)});
  }
  return items;
}

}  // namespace

std::vector<NamedItem> namedItems(const Model& model, ProItemType type) {
  const ModelRecord& record = model.document->record;
  switch (type) {
    case ProItemType::feature:
      return features(model);
    case ProItemType::coordinateSystem:
      return coordinateSystems(model);
    case ProItemType::dimension:
      return dimensions(record, false);
    case ProItemType::referenceDimension:
      return dimensions(record, true);
    case ProItemType::simplifiedRep:
      return named(record.simplifiedReps);
    case ProItemType::explodedState:
      return named(record.explodedStates);
    case ProItemType::styleState:
      return named(record.styleStates);
    case ProItemType::combinedState:
      return named(record.combinedStates);
    case ProItemType::crossSection:
      return named(record.crossSections);
    case ProItemType::layer:
      return named(record.layers);
    case ProItemType::view:
      return named(record.views);
    case ProItemType::material:
      return named(record.materials);
    case ProItemType::model:
      return {{0, model.name}};
    default:
      return {};
  }
}

namespace {

// Null for a kind that isn't renamed.
template <class Record>
std::string* nameIn(std::vector<Record>& records, int id) {
  const auto found =
      std::find_if(records.begin(), records.end(), [id](const Record& record) { return record.id == id; });
  return found == records.end() ? nullptr : &found->name;
}

std::string* nameOf(ModelRecord& record, const ProModelitem& item) {
  switch (item.type) {
    case ProItemType::layer:
      return nameIn(record.layers, item.id);
    case ProItemType::view:
      return nameIn(record.views, item.id);
    case ProItemType::feature:
      return nameIn(record.features, item.id);
    case ProItemType::crossSection:
      return nameIn(record.crossSections, item.id);
    case ProItemType::simplifiedRep:
      return nameIn(record.simplifiedReps, item.id);
    case ProItemType::explodedState:
      return nameIn(record.explodedStates, item.id);
    case ProItemType::styleState:
      return nameIn(record.styleStates, item.id);
    case ProItemType::combinedState:
      return nameIn(record.combinedStates, item.id);
    default:
      return nullptr;
  }
}

}  // namespace

Got<std::wstring> itemName(const Model& model, const ProModelitem& item) {
  if (item.type == ProItemType::material) {
    const auto found = itemNamed(model, item.type, item.name);
    if (!found) return found.error;
    return found.value.name;
  }
  if (item.type == creo::kParameterItem) {
    const ParameterRecord* parameter = findParameter(*model.document, model.row, text::toUtf8(item.name));
    return parameter ? Got<std::wstring>(text::fromUtf8(parameter->name)) : creo::ProNotFound;
  }
  if (item.type == ProItemType::model) return model.name;
  if (item.type == ProItemType::feature) {
    const auto feature = featureOf(model, item.id);
    std::wstring name = feature ? featureName(*feature) : std::wstring();
    if (name.empty()) return creo::ProNotFound;
    return name;
  }
  // By the id alone: a visit that asks for each name must not make the names of all each time.
  if (const std::string* name = nameOf(model.document->record, item))
    return name->empty() ? Got<std::wstring>(creo::ProNotFound) : Got<std::wstring>(text::fromUtf8(*name));
  for (NamedItem& entry : namedItems(model, item.type))
    if (entry.id == item.id && !entry.name.empty()) return std::move(entry.name);
  return creo::ProNotFound;
}

Got<ProModelitem> itemNamed(const Model& model, ProItemType type, const std::wstring& name) {
  for (NamedItem& item : namedItems(model, type)) {
    if (name.empty() || !text::equalNoCase(item.name, name)) continue;
    return ProModelitem{type, item.id, model.handle, type == ProItemType::material ? std::move(item.name) : L""};
  }
  return creo::ProNotFound;
}

creo::ProError renameItem(Models& models, const Model& model, const ProModelitem& item, const std::wstring& name) {
  if (name.empty() || !text::fits(name, text::kNameSize)) return creo::ProBadInputs;
  std::string* present = nameOf(model.document->record, item);
  if (!present) return namedItems(model, item.type).empty() ? creo::ProBadInputs : creo::ProNotFound;
  const auto other = itemNamed(model, item.type, name);
  if (other && other.value.id != item.id) return creo::ProExists;
  const auto feature = item.type == ProItemType::feature ? featureOf(model, item.id) : std::nullopt;
  if (feature && feature->isComponent()) return creo::ProBadInputs;
  if (feature)
    renameColumn(*model.document, creo::ProFamitemType::feature, featureColumn(*feature), text::toUtf8(name));
  const std::string former = std::exchange(*present, text::toUtf8(name));
  if (item.type == ProItemType::layer) layerRenamed(model.document->record, former, *present);
  replaceReferences(model, item.type, former, *present);
  if (item.type == ProItemType::crossSection) followSectionRename(models, model, former, *present);
  model.document->touch(nullptr);
  return creo::ProNoError;
}

std::wstring currentMaterial(const Model& model) {
  const Scalar* own = rowValue(*model.document, model.row, creo::ProFamitemType::parameter, kMaterialColumn);
  const std::string* named = own ? std::get_if<std::string>(own) : nullptr;
  const std::wstring name = text::fromUtf8(named ? *named : model.document->record.material);
  const auto present = itemNamed(model, ProItemType::material, name);
  return present ? present.value.name : name;
}

namespace {

// A set of relations where the document keeps it.
struct HeldRelations {
  std::vector<std::string>* lines = nullptr;
  std::optional<bool>* unitSensitive = nullptr;
};

HeldRelations heldRelations(const Model& model, const ProModelitem& owner, int section) {
  if (owner.type == ProItemType::feature) {
    const auto feature = featureOf(model, owner.id);
    FeatureRecord* record = feature ? feature->record() : nullptr;
    if (!record) return {};
    if (section < 0) return {&record->relations, &record->unitSensitive};
    const auto place = static_cast<std::size_t>(section);
    if (place >= record->sections.size()) return {};
    return {&record->sections[place].relations, &record->sections[place].unitSensitive};
  }
  if (owner.type != ProItemType::model) return {};
  ModelRecord& record = model.document->record;
  if (owner.id == creo::kPostRegeneration) return {&record.postRelations, &record.postUnitSensitive};
  return {&record.relations, &record.unitSensitive};
}

}  // namespace

std::vector<std::string>* relationLines(const Model& model, const ProModelitem& owner, int section) {
  return heldRelations(model, owner, section).lines;
}

std::optional<bool>* relationUnits(const Model& model, const ProModelitem& owner, int section) {
  return heldRelations(model, owner, section).unitSensitive;
}

}  // namespace headless

#include "headless/model/parameters.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <unordered_map>
#include <utility>

#include "headless/model/features.h"
#include "headless/model/models.h"
#include "headless/model/units.h"
#include "text/encoding.h"
#include "text/letters.h"
#include "text/units.h"

namespace headless {

using creo::Got;
using creo::ProError;
using creo::ProFamitemType;
using creo::ProModelitem;
using creo::ProParameter;
using creo::ProParameterDriver;
using creo::ProParamvalue;
using creo::ProParamvalueType;

namespace {

constexpr std::size_t kDescriptionLength = 80;  // UTF-16 units
constexpr std::size_t kUnitNameLength = 32;

std::size_t indexOf(ParameterList& list, std::string_view name) {
  return list.index.find(name, list.list.size(), [&](std::size_t i) -> std::string_view { return list.list[i].name; });
}

// A feature's list, or null; a feature without parameters has none.
std::unique_ptr<ParameterList>* featureList(ModelDocument& document, int id) {
  const TreeFeature* place = document.tree.find(document.record, id);
  if (!place || place->record == TreeFeature::kNone) return nullptr;
  return &document.record.features[place->record].parameters;
}

// Does a component's parameter give what the component varies its value?
bool drivesItem(ModelDocument& document, const ProModelitem& owner, std::string_view name) {
  if (owner.type != creo::ProItemType::feature) return false;
  const TreeFeature* place = document.tree.find(document.record, owner.id);
  if (!place || place->record == TreeFeature::kNone) return false;
  const auto& items = document.record.features[place->record].variantItems;
  return std::any_of(items.begin(), items.end(),
                     [&](const VariantItemRecord& item) { return sameName(item.parameter, name); });
}

ParameterList* materialList(ModelRecord& record, const std::wstring& name) {
  const std::string wanted = text::toUtf8(name);
  for (MaterialRecord& material : record.materials)
    if (sameName(material.name, wanted)) return &material.parameters;
  return nullptr;
}

// Nothing for a value that no document can hold.
Scalar toScalar(const ProParamvalue& value) {
  switch (value.type) {
    case ProParamvalueType::string:
      return text::toUtf8(value.string);
    case ProParamvalueType::real:
      if (!std::isfinite(value.real)) break;
      return value.real;
    case ProParamvalueType::integer:
    case ProParamvalueType::noteId:
      return value.integer;
    case ProParamvalueType::boolean:
      return value.boolean;
    case ProParamvalueType::none:
      break;
  }
  return {};
}

ProParamvalue fromScalar(const Scalar& value, ProParamvalueType type) {
  ProParamvalue out;
  out.type = type;
  if (const auto* text = std::get_if<std::string>(&value)) out.string = text::fromUtf8(*text);
  if (const auto* real = std::get_if<double>(&value)) out.real = *real;
  if (const auto* flag = std::get_if<bool>(&value)) out.boolean = *flag;
  if (const auto* integer = std::get_if<int>(&value)) {
    out.integer = *integer;
    if (type == ProParamvalueType::real) out.real = *integer;
  }
  return out;
}

std::optional<double> number(const Scalar& value) {
  if (const auto* real = std::get_if<double>(&value)) return *real;
  if (const auto* integer = std::get_if<int>(&value)) return *integer;
  return {};
}
bool isNumber(ProParamvalueType type) { return type == ProParamvalueType::real || type == ProParamvalueType::integer; }

// Equal as values of a type, however they are stored.
bool sameValue(const Scalar& stored, const Scalar& wanted) {
  const auto a = number(stored), b = number(wanted);
  return a && b ? *a == *b : stored == wanted;
}

// The ends of a range belong to it. A restriction counts in the units of its parameter.
bool allows(const RestrictionRecord& record, const Scalar& value) {
  if (const auto wanted = number(value)) {
    const auto least = number(record.minimum), most = number(record.maximum);
    if ((least && *wanted < *least) || (most && *wanted > *most)) return false;
  }
  return record.values.empty() || std::any_of(record.values.begin(), record.values.end(),
                                              [&](const Scalar& scalar) { return sameValue(scalar, value); });
}

std::unique_ptr<RestrictionRecord> copyOf(const RestrictionRecord& record) {
  auto copy = std::make_unique<RestrictionRecord>();
  copy->minimum = record.minimum;
  copy->maximum = record.maximum;
  copy->values = record.values;
  if (record.extra) copy->extra = std::make_unique<Extra>(*record.extra);
  return copy;
}

bool sameOwner(const ProModelitem& a, const ProModelitem& b) {
  return a.type == b.type && a.id == b.id && a.owner == b.owner && text::equalNoCase(a.name, b.name);
}

void erase(const ParameterPlace& place) {
  place.list->list.erase(place.list->list.begin() + static_cast<std::ptrdiff_t>(place.at));
  place.list->index.drop();
}

double inModel(double value, const ParameterPlace& place) {
  return inModelUnits(value, place.record().units, place.model->document->record);
}
double inUnits(double value, const ParameterPlace& place) {
  return inOwnUnits(value, place.record().units, place.model->document->record);
}

}  // namespace

ParameterRecord* findParameter(const ModelDocument& document, const RowRecord* row, std::string_view name) {
  // Finding changes nothing but the index beside the list.
  auto& own = const_cast<ModelDocument&>(document).record.parameters;
  if (const std::size_t at = indexOf(own, name); at != NameIndex::kNone) return &own.list[at];
  for (; row; row = row->parent) {
    if (!row->parameters) continue;
    if (const std::size_t at = indexOf(*row->parameters, name); at != NameIndex::kNone)
      return &row->parameters->list[at];
  }
  return nullptr;
}

Got<ProParamvalue> parameterOfRow(const std::shared_ptr<ModelDocument>& document, RowRecord& row,
                                  std::string_view name) {
  const ParameterRecord* record = findParameter(*document, &row, name);
  if (!record) return creo::ProNotFound;
  const Model instance{{}, document, &row, {}};  // it needn't be in memory
  const Scalar& value = heldValue(instance, ProFamitemType::parameter, name, record->value);
  return fromScalar(fitsType(value, record->type) ? value : record->value, record->type);
}

ProError setParameterOfRow(ModelDocument& document, RowRecord& row, std::string_view name, const ProParamvalue& value) {
  const ParameterRecord* record = findParameter(document, &row, name);
  if (!record) return creo::ProNotFound;
  Scalar wanted = toScalar(value);
  if (value.type != record->type || isDefault(wanted)) return creo::ProBadInputs;
  if (record->restriction && !allows(*record->restriction, wanted)) return creo::ProBadInputs;
  setRowValue(document, row, ProFamitemType::parameter, name, std::move(wanted));
  document.touch(&row);
  return creo::ProNoError;
}

Got<Parameters::Owner> Parameters::owner(const ProModelitem& item) const {
  Owner out;
  out.model = models_.find(item.owner);
  if (!out.model) return creo::ProBadInputs;
  ModelRecord& record = out.model->document->record;
  switch (item.type) {
    case creo::ProItemType::model: {
      out.ofModel = true;
      for (RowRecord* row = out.model->row; row; row = row->parent)
        if (row->parameters) out.parts.push_back({row->parameters.get(), row});
      out.parts.push_back({&record.parameters, nullptr});
      std::reverse(out.parts.begin(), out.parts.end());
      return out;
    }
    case creo::ProItemType::feature: {
      ModelDocument& document = *out.model->document;
      if (!document.tree.find(record, item.id)) return creo::ProBadInputs;
      // A component without a record owns nothing yet.
      const auto* list = featureList(document, item.id);
      if (list && *list) out.parts.push_back({list->get(), nullptr});
      return out;
    }
    case creo::ProItemType::material: {
      ParameterList* list = materialList(record, item.name);
      if (!list) return creo::ProBadInputs;
      out.parts.push_back({list, nullptr});
      return out;
    }
    default:
      break;
  }
  return creo::ProBadInputs;
}

Parameters::Part Parameters::newPart(const Owner& owner, const ProModelitem& item) {
  if (owner.ofModel && owner.model->row) {
    auto& own = owner.model->row->parameters;
    if (!own) own = std::make_unique<ParameterList>();
    return {own.get(), owner.model->row};
  }
  if (!owner.parts.empty()) return owner.parts.front();
  ModelDocument& document = *owner.model->document;
  if (!featureList(document, item.id)) giveComponentsRecords(document);
  auto& list = *featureList(document, item.id);
  list = std::make_unique<ParameterList>();
  return {list.get(), nullptr};
}

Got<std::vector<ProParameter>> Parameters::all(const ProModelitem& item) const {
  const auto owned = owner(item);
  if (!owned) return owned.error;
  std::vector<ProParameter> out;
  std::unordered_map<std::string, int> ordinals;
  for (const Part& part : owned.value.parts)
    for (const ParameterRecord& record : part.list->list)
      out.push_back({text::fromUtf8(record.name), item, ordinals[folded(record.name)]++});
  return out;
}

Got<ParameterPlace> Parameters::find(const ProParameter& parameter) const {
  const auto owned = owner(parameter.owner);
  if (!owned) return owned.error;
  const std::string name = text::toUtf8(parameter.id);
  int ordinal = parameter.ordinal;
  for (const Part& part : owned.value.parts) {
    const auto& records = part.list->list;
    for (std::size_t at = indexOf(*part.list, name); at < records.size(); ++at)
      if (sameName(records[at].name, name) && ordinal-- == 0)
        return ParameterPlace{owned.value.model, part.list, at, part.row, owned.value.ofModel};
  }
  return creo::ProNotFound;
}

Got<ProParameter> Parameters::first(const ProModelitem& item, std::wstring_view name) const {
  const auto place = find({std::wstring(name), item, 0});
  if (!place) return place.error;
  return ProParameter{text::fromUtf8(place.value.record().name), item, 0};
}

Got<ProParameter> Parameters::create(const ProModelitem& item, const std::wstring& name, const ProParamvalue& value,
                                     const std::wstring& units) {
  const auto owned = owner(item);
  if (!owned) return owned.error;
  const Scalar stored = toScalar(value);
  if (!text::isName(name) || !text::fits(name, text::kNameSize)) return creo::ProBadInputs;
  if (isDefault(stored) || !text::fits(units, kUnitNameLength + 1)) return creo::ProBadInputs;
  if (find({name, item, 0})) return creo::ProExists;
  if (!units.empty() && !unitScale(text::toUtf8(units))) return creo::ProGeneralError;
  if (const RowRecord* row = owned.value.ofModel ? owned.value.model->row : nullptr; row && row->locked)
    return refuseLocked(models_, *owned.value.model->document, *row);
  const Part part = newPart(owned.value, item);
  ParameterRecord& record = part.list->list.emplace_back();
  record.name = text::toUtf8(text::upper(name));
  record.type = value.type;
  record.value = stored;
  record.units = text::toUtf8(units);
  owned.value.model->document->touch(part.row);
  return ProParameter{text::fromUtf8(record.name), item, 0};
}

ProError Parameters::remove(const ProParameter& parameter) {
  const auto place = find(parameter);
  if (!place) return place.error;
  const ParameterPlace& p = place.value;
  ModelDocument& document = *p.model->document;
  const std::string name = p.record().name;
  if (p.isInherited() || driver(p) != ProParameterDriver::none) return creo::ProGeneralError;
  if (p.row && p.row->locked) return refuseLocked(models_, document, *p.row);
  if (drivesItem(document, parameter.owner, name)) return creo::ProGeneralError;
  if (p.ofModel && document.relationNames().read.contains(folded(name))) return creo::ProGeneralError;
  auto removed = std::make_unique<RemovedParameter>();
  removed->owner = parameter.owner;
  removed->at = p.at;
  removed->wasAlone = !find({parameter.id, parameter.owner, 1});
  removed->before = document.marks();
  if (p.ofModel && !p.row && removed->wasAlone)
    removed->columns = takeColumns(document, ProFamitemType::parameter, name);
  touch(p);
  removed->record = std::move(p.record());
  removed->changes = document.marks().changes;
  erase(p);
  removed_ = std::move(removed);
  return creo::ProNoError;
}

ProError Parameters::undoRemoval(const ProModelitem& item, const ProParameter* successor) {
  if (!removed_ || !sameOwner(removed_->owner, item)) return creo::ProNotFound;
  const auto owned = owner(item);
  if (!owned) return owned.error;
  const std::string name = removed_->record.name;
  ModelDocument& document = *owned.value.model->document;
  if (successor) {
    const auto made = find(*successor);
    if (!made) return made.error;
    // A relation that had the new name already doesn't hold it: the model had none of that name before.
    touch(made.value);
    if (made.value.ofModel && !made.value.row)
      takeColumns(document, ProFamitemType::parameter, made.value.record().name);
    erase(made.value);
  }
  if (removed_->wasAlone && find({text::fromUtf8(name), item, 0})) return creo::ProExists;
  const auto removed = std::move(removed_);
  const bool wasUntouched = document.marks().changes == removed->changes;
  const Part part = newPart(owned.value, item);
  auto& records = part.list->list;
  const auto at = static_cast<std::ptrdiff_t>(std::min(removed->at, records.size()));
  records.insert(records.begin() + at, std::move(removed->record));
  part.list->index.drop();
  returnColumns(document, removed->columns, name, true);
  document.touch(part.row);
  if (wasUntouched) document.setMarks(removed->before);
  return creo::ProNoError;
}

ProError Parameters::takeRemains(const ProParameter& parameter) {
  const auto place = find(parameter);
  if (!place) return place.error;
  if (!removed_ || !sameOwner(removed_->owner, parameter.owner)) return creo::ProNotFound;
  ParameterRecord& record = place.value.record();
  if (const auto& number = removed_->record.restriction) {
    const bool fits =
        record.type == removed_->record.type || (isNumber(record.type) && isNumber(removed_->record.type));
    if (!fits || !allows(*number, record.value)) return creo::ProBadInputs;
    record.restriction = copyOf(*number);
  }
  if (removed_->record.extra) record.extra = std::make_unique<Extra>(*removed_->record.extra);
  returnColumns(*place.value.model->document, removed_->columns, record.name, false);
  touch(place.value);
  return creo::ProNoError;
}

ProParamvalue Parameters::value(const ParameterPlace& place) {
  const ParameterRecord& record = place.record();
  const Scalar& value = place.ofModel ? heldValue(*place.model, ProFamitemType::parameter, record.name, record.value)
                                      : heldValue(*place.model, record.value);
  return fromScalar(fitsType(value, record.type) ? value : record.value, record.type);
}

Got<ProParamvalue> Parameters::valueInModel(const ParameterPlace& place) {
  ProParamvalue paramvalue = value(place);
  if (paramvalue.type != ProParamvalueType::real) return paramvalue;
  paramvalue.real = inModel(paramvalue.real, place);
  if (!std::isfinite(paramvalue.real)) return creo::ProGeneralError;
  return paramvalue;
}

ProError Parameters::setInModel(const ProParameter& parameter, ProParamvalue value) {
  const auto place = find(parameter);
  if (!place) return place.error;
  if (value.type == ProParamvalueType::real && !place.value.record().units.empty()) {
    const auto model = valueInModel(place.value);
    // What was read is the number that stands there, whatever its last digits come to on the way back.
    value.real = model && model.value.type == value.type && model.value.real == value.real
                     ? Parameters::value(place.value).real
                     : inUnits(value.real, place.value);
  }
  return set(parameter, value);
}

ProError Parameters::set(const ProParameter& parameter, const ProParamvalue& value) {
  const auto place = find(parameter);
  if (!place) return place.error;
  const ParameterPlace& p = place.value;
  ParameterRecord& record = p.record();
  Scalar wanted = toScalar(value);
  if (value.type != record.type || isDefault(wanted)) return creo::ProBadInputs;
  if (const double* real = std::get_if<double>(&wanted); real && !std::isfinite(*real)) return creo::ProBadInputs;
  if (driver(p) != ProParameterDriver::none) return creo::ProGeneralError;
  if (sameValue(p.isInherited() ? toScalar(Parameters::value(p)) : record.value, wanted)) return creo::ProNoError;
  if (record.restriction && !allows(*record.restriction, wanted)) return creo::ProBadInputs;
  const RowRecord* row = p.isInherited() ? p.model->row : p.row;
  if (row && row->locked) return refuseLocked(models_, *p.model->document, *row);
  if (p.isInherited()) {
    setRowValue(*p.model->document, *p.model->row, ProFamitemType::parameter, record.name, std::move(wanted));
    p.model->document->touch(p.model->row);
    return creo::ProNoError;
  }
  record.value = std::move(wanted);
  touch(p);
  return creo::ProNoError;
}

template <class Change>
ProError Parameters::onRecord(const ProParameter& parameter, Change change) {
  const auto place = find(parameter);
  if (!place) return place.error;
  const ParameterPlace& p = place.value;
  if (p.row && !p.isInherited() && p.row->locked) return refuseLocked(models_, *p.model->document, *p.row);
  if (change(p.record())) touch(p);
  return creo::ProNoError;
}

ProError Parameters::describe(const ProParameter& parameter, const std::wstring& description) {
  if (!text::fits(description, kDescriptionLength + 1)) return creo::ProBadInputs;
  return onRecord(parameter, [&](ParameterRecord& record) {
    std::string wanted = text::toUtf8(description);
    return std::exchange(record.description, wanted) != wanted;
  });
}

ProError Parameters::designate(const ProParameter& parameter, bool on) {
  bool isNew = false;
  const ProError result =
      onRecord(parameter, [&](ParameterRecord& record) { return isNew = std::exchange(record.designated, on) != on; });
  return result || isNew || !on ? result : creo::ProExists;
}

// A document may name the driver; else a relation that assigns the parameter drives it.
ProParameterDriver Parameters::driver(const ParameterPlace& place) {
  const ParameterRecord& record = place.record();
  if (record.driver != ProParameterDriver::none || !place.ofModel) return record.driver;
  const auto& names = place.model->document->relationNames();
  const std::string key = folded(record.name);
  return names.assigned.contains(key) || names.assignedAfter.contains(key) ? ProParameterDriver::relation
                                                                           : ProParameterDriver::none;
}

void Parameters::touch(const ParameterPlace& place) { place.model->document->touch(place.row); }

}  // namespace headless

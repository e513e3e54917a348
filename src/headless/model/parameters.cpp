#include "headless/model/parameters.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

#include "headless/model/family.h"
#include "headless/model/features.h"
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
                     [&](const VariantItemRecord& one) { return sameName(one.parameter, name); });
}

ParameterList* materialList(ModelRecord& record, const std::wstring& name) {
  const std::string wanted = text::toUtf8(name);
  for (MaterialRecord& material : record.materials)
    if (sameName(material.name, wanted)) return &material.parameters;
  return nullptr;
}

// Letters, digits and "_", not beginning with a digit. Beyond ASCII letters are what can be shown from U+00C0 on.
bool isParameterName(std::wstring_view name) {
  if (name.empty() || !text::fits(name, text::kNameSize)) return false;
  if (name.front() >= L'0' && name.front() <= L'9') return false;
  return std::all_of(name.begin(), name.end(), [](wchar_t c) {
    const wchar_t small = text::lower(c);
    return (small >= L'a' && small <= L'z') || (c >= L'0' && c <= L'9') || c == L'_' ||
           (c >= 0xC0 && c != 0xD7 && c != 0xF7 && text::isPrintable(c));
  });
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

// Equal as values of a type, however they are stored.
bool sameValue(const Scalar& stored, const Scalar& wanted) {
  if (const auto* integer = std::get_if<int>(&stored); integer && std::holds_alternative<double>(wanted))
    return static_cast<double>(*integer) == std::get<double>(wanted);
  return stored == wanted;
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

Got<ProParamvalue> parameterOfRow(const ModelDocument& document, const RowRecord& row, std::string_view name) {
  const ParameterRecord* record = findParameter(document, &row, name);
  if (!record) return creo::ProNotFound;
  const Scalar* value = rowValue(document, &row, ProFamitemType::parameter, name);
  return fromScalar(value && fitsType(*value, record->type) ? *value : record->value, record->type);
}

ProError setParameterOfRow(ModelDocument& document, RowRecord& row, std::string_view name, const ProParamvalue& value) {
  const ParameterRecord* record = findParameter(document, &row, name);
  if (!record) return creo::ProNotFound;
  Scalar wanted = toScalar(value);
  if (value.type != record->type || isDefault(wanted)) return creo::ProBadInputs;
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
  if (!isParameterName(name) || isDefault(stored) || !text::fits(units, kUnitNameLength + 1)) return creo::ProBadInputs;
  if (find({name, item, 0})) return creo::ProExists;
  if (!units.empty() && !unitScale(text::toUtf8(units))) return creo::ProGeneralError;
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
  if (drivesItem(document, parameter.owner, name)) return creo::ProGeneralError;
  if (p.ofModel && document.relationNames().read.contains(folded(name))) return creo::ProGeneralError;
  if (p.ofModel && !p.row) removeColumn(document, ProFamitemType::parameter, name);
  touch(p);
  p.list->list.erase(p.list->list.begin() + static_cast<std::ptrdiff_t>(p.at));
  p.list->index.drop();
  return creo::ProNoError;
}

ProParamvalue Parameters::value(const ParameterPlace& place) {
  const ParameterRecord& record = place.record();
  const Scalar& value = place.ofModel ? heldValue(*place.model, ProFamitemType::parameter, record.name, record.value)
                                      : heldValue(*place.model, record.value);
  return fromScalar(fitsType(value, record.type) ? value : record.value, record.type);
}

ProError Parameters::set(const ProParameter& parameter, const ProParamvalue& value) {
  const auto place = find(parameter);
  if (!place) return place.error;
  const ParameterPlace& p = place.value;
  ParameterRecord& record = p.record();
  Scalar wanted = toScalar(value);
  if (value.type != record.type || isDefault(wanted)) return creo::ProBadInputs;
  if (driver(p) != ProParameterDriver::none) return creo::ProGeneralError;
  if (p.isInherited()) {
    if (toScalar(Parameters::value(p)) == wanted) return creo::ProNoError;
    if (p.model->row->locked) return refuseLocked(models_, *p.model->document, *p.model->row);
    setRowValue(*p.model->document, *p.model->row, ProFamitemType::parameter, record.name, std::move(wanted));
    p.model->document->touch(p.model->row);
    return creo::ProNoError;
  }
  if (sameValue(record.value, wanted)) return creo::ProNoError;
  record.value = std::move(wanted);
  touch(p);
  return creo::ProNoError;
}

ProError Parameters::describe(const ProParameter& parameter, const std::wstring& description) {
  if (!text::fits(description, kDescriptionLength + 1)) return creo::ProBadInputs;
  const auto place = find(parameter);
  if (!place) return place.error;
  std::string& stored = place.value.record().description;
  std::string wanted = text::toUtf8(description);
  if (stored == wanted) return creo::ProNoError;
  stored = std::move(wanted);
  touch(place.value);
  return creo::ProNoError;
}

ProError Parameters::designate(const ProParameter& parameter, bool on) {
  const auto place = find(parameter);
  if (!place) return place.error;
  bool& stored = place.value.record().designated;
  if (stored == on) return creo::ProNoError;
  stored = on;
  touch(place.value);
  return creo::ProNoError;
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

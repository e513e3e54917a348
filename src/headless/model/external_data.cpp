#include "headless/model/external_data.h"

#include "text/encoding.h"
#include "text/units.h"

namespace headless {

using creo::ProError;
using creo::ProExtdataType;
using creo::ProExtdataValue;

namespace {

template <class T>
T* memberOf(Members<T>& members, const std::wstring& name) {
  const std::size_t at = members.index.find(text::toUtf8(name), members.list.size(),
                                            [&](std::size_t i) -> std::string_view { return members.list[i].name; });
  return at == NameIndex::kNone ? nullptr : &members.list[at].value;
}

constexpr std::size_t kNames = 30;  // UTF-16 units of class and slot together

// Null: an instance without data of its own.
ExternalData* dataOf(Model& model) {
  return model.row ? model.row->externalData.get() : &model.document->record.externalData;
}

SlotList* classOf(Model& model, const std::wstring& name) {
  ExternalData* data = dataOf(model);
  return data ? memberOf(*data, name) : nullptr;
}

SlotRecord* slotOf(Model& model, const std::wstring& name, const std::wstring& slot) {
  SlotList* slots = classOf(model, name);
  return slots ? memberOf(*slots, slot) : nullptr;
}

}  // namespace

// An empty class says nothing about the model: reading a history must not make a model one that needs saving.
ProError registerClass(Model& model, const std::wstring& name) {
  if (name.empty() || classOf(model, name)) return creo::ProBadInputs;
  if (text::units(name) >= kNames) return creo::ProGeneralError;
  if (model.row && !model.row->externalData) model.row->externalData = std::make_unique<ExternalData>();
  dataOf(model)->list.emplace_back().name = text::toUtf8(name);
  return creo::ProNoError;
}

ProError createSlot(Model& model, const std::wstring& name, const std::wstring& slot) {
  SlotList* slots = classOf(model, name);
  if (!slots) return creo::ProNotFound;
  if (slot.empty() || memberOf(*slots, slot)) return creo::ProBadInputs;
  if (slot.front() >= L'0' && slot.front() <= L'9') return creo::ProGeneralError;
  if (text::units(name) + text::units(slot) > kNames) return creo::ProGeneralError;
  slots->list.emplace_back().name = text::toUtf8(slot);
  model.document->touchData(model.row);
  return creo::ProNoError;
}

creo::Got<ProExtdataValue> readSlot(Model& model, const std::wstring& name, const std::wstring& slot) {
  const SlotRecord* record = slotOf(model, name, slot);
  if (!record || isDefault(record->value)) return creo::ProNotFound;
  ProExtdataValue value;
  value.type = record->type;
  if (const auto* integer = std::get_if<int>(&record->value)) value.integer = *integer;
  if (const auto* text = std::get_if<std::string>(&record->value)) value.text = text::fromUtf8(*text);
  return value;
}

ProError writeSlot(Model& model, const std::wstring& name, const std::wstring& slot, const ProExtdataValue& value) {
  SlotRecord* record = slotOf(model, name, slot);
  if (!record) return creo::ProNotFound;
  Scalar wanted = value.integer;
  if (value.type == ProExtdataType::text)
    wanted = text::toUtf8(value.text);
  else if (value.type != ProExtdataType::integer)
    return creo::ProBadInputs;
  if (record->type == value.type && record->value == wanted) return creo::ProNoError;
  record->type = value.type;
  record->value = std::move(wanted);
  model.document->touchData(model.row);
  return creo::ProNoError;
}

}  // namespace headless

#include "run/model_rows.h"

#include "core/log.h"
#include "core/state.h"
#include "creo/ProMdl.h"
#include "creo/ProParameter.h"
#include "creo/ProUITable.h"
#include "run/check_out_state.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/letters.h"

namespace run {
namespace {

constexpr const char* kCheckButton = "kvaneCheckButton";
// Columns by their fixed names.
constexpr const char *kSelected = "1", *kType = "2", *kFile = "3", *kParameter = "4", *kLock = "5", *kCheckOut = "6";

const std::string& dialog() { return core::pluginState().dialogName; }

// What a row shows for a type; the roles in their order. Drawings have no families.
struct TypeLook {
  creo::ProMdlType type;
  const wchar_t* ending;
  const char* labels[4];
};
constexpr TypeLook kLooks[] = {
    {creo::ProMdlType::part, L".prt", {"kvanePrtLbl", "kvanePrtLblInst", "kvanePrtLblGen", "kvanePrtInLblGen"}},
    {creo::ProMdlType::assembly, L".asm", {"kvaneAsmLbl", "kvaneAsmLblInst", "kvaneAsmLblGen", "kvaneAsmInLblGen"}},
    {creo::ProMdlType::drawing, L".drw", {"kvaneDrwLbl", "kvaneDrwLbl", "kvaneDrwLbl", "kvaneDrwLbl"}},
};

const TypeLook* lookOf(creo::ProMdlType type) {
  for (const TypeLook& look : kLooks)
    if (look.type == type) return &look;
  return nullptr;
}

std::wstring shown(const creo::ProParamvalue& value) {
  switch (value.type) {
    case creo::ProParamvalueType::string:
      return value.string;
    case creo::ProParamvalueType::integer:
      return text::format(L"%d", value.integer);
    case creo::ProParamvalueType::real:
      return text::format(L"%.6f", value.real);
    case creo::ProParamvalueType::boolean:
      return value.boolean ? L"true" : L"false";
    case creo::ProParamvalueType::none:
    case creo::ProParamvalueType::noteId:
      break;
  }
  return {};
}

}  // namespace

bool ModelRows::check(creo::ProError result, std::wstring_view call) {
  if (result == creo::ProNoError) return true;
  status_ = result;
  core::creoLog(text::format(L"<KVD> sourceData - Failure while use %s", call));
  return false;
}

bool ModelRows::insert(const ModelRow& row) {
  const auto next = names_.lower_bound(row.name);
  const std::string after = next == names_.begin() ? std::string() : *std::prev(next);
  if (!check(creo::ProUITableRowsInsert(dialog(), kModelTable, after, {row.name}), L"ProUITableRowsInsert"))
    return false;
  names_.emplace_hint(next, row.name);
  fillCells(row);
  return true;
}

void ModelRows::copy(const std::string& row, const char* column, const char* from, const std::string& name) {
  if (check(creo::ProUITableCellComponentCopy(dialog(), kModelTable, row, column, from, name),
            L"ProUITableCellComponentCopy"))
    components_.insert(name);
}

void ModelRows::fillCells(const ModelRow& row) {
  const TypeLook* look = lookOf(row.type);
  if (!look) return;
  const std::string select = row.name + "_cb", lock = row.name + "_lock";
  copy(row.name, kSelected, kCheckButton, select);
  if (row.allowed) check(creo::ProUICheckbuttonSet(dialog(), select), L"ProUICheckbuttonSet");

  const std::wstring file = text::fromUtf8(row.name.substr(0, row.name.rfind('.'))) + look->ending;
  check(creo::ProUITableCellLabelSet(dialog(), kModelTable, row.name, kFile, file), L"ProUITableCellLabelSet");
  copy(row.name, kType, look->labels[static_cast<std::size_t>(row.role)], row.name + "_type");
  fillParameter(row);

  copy(row.name, kLock, kCheckButton, lock);
  if (row.allowed)
    check(creo::ProUICheckbuttonUnset(dialog(), lock), L"ProUICheckbuttonUnset");
  else
    check(creo::ProUICheckbuttonSet(dialog(), lock), L"ProUICheckbuttonSet");
  if (core::pluginState().noPdmServerInformations != 1) showCheckOut(row.name, checkOutLabel(row.model, row.name));
}

void ModelRows::fillParameter(const ModelRow& row) {
  const std::wstring& name = core::pluginState().columnParameter;
  if (name.empty()) return;
  const auto owner = creo::ProMdlToModelitem(row.model);
  if (!check(owner.error, L"ProMdlToModelitem")) return;
  const auto parameter = creo::ProParameterInit(owner.value, name);
  if (parameter.error == creo::ProNotFound || !check(parameter.error, L"ProParameterInit")) return;
  auto value = creo::ProParameterScaledvalueGet(parameter.value);
  if (!value) value = creo::ProParameterValueGet(parameter.value);
  if (!check(value.error, L"ProParameterValueGet")) return;
  check(creo::ProUITableCellLabelSet(dialog(), kModelTable, row.name, kParameter, shown(value.value)),
        L"ProUITableCellLabelSet");
}

void ModelRows::showCheckOut(const std::string& row, const char* label) { copy(row, kCheckOut, label, row + "_wc"); }

void ModelRows::removeCheckOut(const std::string& row) {
  if (check(creo::ProUITableCellComponentDelete(dialog(), kModelTable, row, kCheckOut),
            L"ProUITableCellComponentDelete"))
    components_.erase(row + "_wc");
}

void ModelRows::clear() {
  names_.clear();
  const auto rows = creo::ProUITableRownamesGet(dialog(), kModelTable);
  if (!check(rows.error, L"ProUITableRownamesGet") || rows.value.empty()) return;
  // A cell may be without its component, which Creo doesn't tell from a failure: its copying failed, or the column
  // isn't shown.
  const auto remove = [this](auto* operation, const std::string& name, std::wstring_view call) {
    if (components_.contains(name) && check(operation(dialog(), kModelTable, name), call)) components_.erase(name);
  };
  for (const std::string& row : rows.value) {
    for (const char* label : {"_type", "_wc"})
      remove(&creo::ProUITableLabelRemove, row + label, L"ProUITableLabelRemove");
    for (const char* button : {"_cb", "_lock"})
      remove(&creo::ProUITableCheckbuttonRemove, row + button, L"ProUITableCheckbuttonRemove");
  }
  check(creo::ProUITableRowsDelete(dialog(), kModelTable, rows.value), L"ProUITableRowsDelete");
}

}  // namespace run

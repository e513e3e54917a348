#include "reports/sheet_names.h"

namespace reports {

std::wstring sizeName(const creo::Got<creo::ProSheetDimensions>& size) {
  static constexpr struct {
    creo::ProSheetSize size;
    std::wstring_view name;
  } kNames[] = {
      {creo::ProSheetSize::a0, L"A0"},
      {creo::ProSheetSize::a1, L"A1"},
      {creo::ProSheetSize::a2, L"A2"},
      {creo::ProSheetSize::a3, L"A3"},
      {creo::ProSheetSize::a4, L"A4"},
      {creo::ProSheetSize::a, L"A"},
      {creo::ProSheetSize::b, L"B"},
      {creo::ProSheetSize::c, L"C"},
      {creo::ProSheetSize::d, L"D"},
      {creo::ProSheetSize::e, L"E"},
      {creo::ProSheetSize::f, L"F"},
      {creo::ProSheetSize::variable, L"variable"},
      {creo::ProSheetSize::variableMm, L"variable"},
  };
  if (!size) return {};
  for (const auto& row : kNames)
    if (row.size == size.value.size) return std::wstring(row.name);
  return L"other";
}

creo::Got<std::wstring> symbolName(const creo::ProDtlsyminst& symbol) {
  const auto definition = creo::ProDtlsyminstDefGet(symbol);
  return definition ? creo::ProDtlsymdefNameGet(definition.value) : definition.error;
}

void eachSheet(creo::ProMdl drawing, creo::FunctionRef<void(int sheet)> visit) {
  const auto count = creo::ProDrawingSheetsCount(drawing);
  for (int sheet = 1; count && sheet <= count.value; ++sheet) visit(sheet);
}

}  // namespace reports

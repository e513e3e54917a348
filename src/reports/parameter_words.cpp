#include "reports/parameter_words.h"

namespace reports {

std::wstring parameterTypeWord(const creo::ProParameter& parameter) {
  const auto value = creo::ProParameterValueGet(parameter);
  if (!value) return {};
  switch (static_cast<int>(value.value.type)) {
    case 50:
      return L"Double";
    case 51:
      return L"String";
    case 52:
      return L"Integer";
    case 53:
      return L"Boolean";
    case 54:
      return L"Note ID";
    case 57:
      return L"Void";
    case 58:
      return L"Not Set";
    default:
      return {};
  }
}

std::wstring restrictionWord(const creo::ProParameter& parameter) {
  if (const auto range = creo::ProParameterRangeGet(parameter); range && range.value) return L"Range";
  const auto enumerated = creo::ProParameterIsEnumerated(parameter);
  return enumerated && enumerated.value ? L"Enumeration" : L"";
}

}  // namespace reports

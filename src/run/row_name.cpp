#include "run/row_name.h"

#include "text/encoding.h"

namespace run {

std::wstring rowModelName(std::string_view row) {
  return text::fromUtf8(row.substr(0, row.size() - std::min<std::size_t>(row.size(), 4)));
}

creo::ProMdlType rowType(std::string_view row) {
  if (row.ends_with("ASM")) return creo::ProMdlType::assembly;
  if (row.ends_with("DRW")) return creo::ProMdlType::drawing;
  return creo::ProMdlType::part;
}

std::string rowName(std::wstring_view modelName, creo::ProMdlType type) {
  return text::toUtf8(modelName) + "." + text::toUtf8(creo::typeExtension(type));
}

}  // namespace run

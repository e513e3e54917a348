#include "actions/visits.h"

#include "core/log.h"
#include "text/format.h"

namespace actions {

bool isWhole(creo::ProError visited, std::wstring_view what) {
  if (visited == creo::ProNoError || visited == creo::ProNotFound || visited == creo::ProStopVisit) return true;
  core::logWrite(text::format(L"%s can't be visited", what), core::kError);
  return false;
}

void cantRead(std::wstring_view what) { core::logWrite(text::format(L"%s can't be read", what), core::kError); }

std::wstring nameOrNone(creo::Got<std::wstring> name, std::wstring_view what) {
  if (!creo::isTold(name)) cantRead(what);
  return name ? std::move(name.value) : std::wstring();
}

std::vector<creo::ProDependency> usedBy(creo::ProMdl model) {
  auto used = creo::ProMdlDependenciesList(model);
  if (used || used.error == creo::ProNotFound) return std::move(used.value);
  core::logWrite(text::format(L"What %s uses can't be read", creo::ProMdlNameGet(model).value), core::kError);
  return {};
}

}  // namespace actions

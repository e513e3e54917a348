#include "headless/exports/export_file.h"

#include "headless/model/models.h"
#include "headless/store/faults.h"
#include "os/paths.h"
#include "os/surroundings.h"

namespace headless {

bool isWholePath(std::wstring_view path) {
  const std::wstring text = os::withBackslashes(path);
  return !os::splitDevice(text).device.empty() || text.starts_with(L'\\');
}

std::wstring exportPath(const Models& models, std::wstring_view path) {
  std::wstring whole = os::withBackslashes(path);
  return isWholePath(whole) ? whole : os::joined(models.folders().working(), whole);
}

creo::ProError writeExport(const Models& models, std::wstring_view path, std::string_view bytes) {
  const std::wstring whole = exportPath(models, path);
  const auto error = os::files().write(whole, bytes);
  if (!error) return creo::ProNoError;
  models.message(cantWrite(whole, error));
  return creo::ProCantWrite;
}

}  // namespace headless

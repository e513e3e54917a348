#include "headless/exports/export_file.h"

#include "headless/creo/state.h"
#include "headless/store/faults.h"
#include "os/paths.h"
#include "os/surroundings.h"

namespace headless {

std::wstring exportPath(const Session::State& state, std::wstring_view path) {
  std::wstring whole = os::withBackslashes(path);
  if (!os::splitDevice(whole).device.empty() || whole.starts_with(L'\\')) return whole;
  return os::joined(state.models.workingFolder(), whole);
}

creo::ProError writeExport(Session::State& state, std::wstring_view path, std::string_view bytes) {
  const std::wstring whole = exportPath(state, path);
  const auto error = os::files().write(whole, bytes);
  if (!error) return creo::ProNoError;
  state.showMessage(cantWrite(whole, error));
  return creo::ProCantWrite;
}

}  // namespace headless

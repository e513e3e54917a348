#include "kelvane/run/files.h"

#include <nlohmann/json.hpp>
#include <set>

#include "kelvane/base/fault.h"
#include "kelvane/base/places.h"
#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace kelvane {
namespace {

// What a file is called in the folder that collects: "shaft.prt.4", "reports\mass.csv". Without "..", so that it lies
// in that folder however the list called it.
std::wstring placeBelow(std::wstring_view path) {
  constexpr std::wstring_view kUnpacked = L"open_kvz_";
  const std::wstring letter = text::lower(os::splitDevice(path).device);
  const std::vector<std::wstring> parts = os::partsOf(path);
  std::size_t first = parts.empty() ? 0 : parts.size() - 1;
  if (letter == L"d") first = 0;
  if (letter == L"t" && parts.size() > 1 && text::startsWithNoCase(parts.front(), kUnpacked)) first = 1;
  std::wstring place;
  for (std::size_t i = first; i < parts.size(); ++i) place = os::joined(place, parts[i]);
  return place;
}

}  // namespace

std::wstring logTarget(const RunOptions& options, const std::wstring& models) {
  return options.log.empty() ? models + L"kelvane.log" : systemPath(options.log);
}

bool keepsLog(const RunOptions& options) { return !options.dryRun || !options.log.empty(); }

std::string keepLog(const std::wstring& log, const RunOptions& options, const std::wstring& models, Console& console,
                    bool& troubled) {
  if (log.empty() || !keepsLog(options)) return {};
  const std::wstring target = logTarget(options, models);
  const auto read = os::files().read(log);
  const std::error_code error = read ? os::diskFiles()->write(target, read.value) : read.error;
  if (!error) return shown(target);
  troubled = true;
  console.trouble("error: the log can't be written to " + shown(target) + ": " + error.message());
  return {};
}

void showPlaces(const std::vector<std::wstring>& written, Console& console, Events& events) {
  std::set<std::string> folders;  // as they are shown: lists may write one folder in several ways
  for (const std::wstring& path : written) {
    folders.insert(shown(os::folderOf(path)));
    if (events.on()) events.tell("written", {{"path", shown(path)}});
  }
  for (const std::string& folder : folders) console.result("files  " + folder);
}

void collect(const std::vector<std::wstring>& files, const std::string& folder) {
  const std::wstring target = os::asFolder(systemPath(folder));
  for (const std::wstring& path : files) {
    const std::wstring place = target + placeBelow(path);
    std::error_code error = os::files().createFolders(os::folderOf(place));
    const auto read = os::files().read(path);
    if (!error) error = read ? os::files().write(place, read.value) : read.error;
    if (error) throw Fault("--collect: " + shown(place) + " can't be written: " + error.message());
  }
}

}  // namespace kelvane

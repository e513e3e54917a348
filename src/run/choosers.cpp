#include "run/choosers.h"

#include <algorithm>

#include "core/log.h"
#include "core/state.h"
#include "creo/ProUI.h"
#include "documents/unpack.h"
#include "os/surroundings.h"
#include "run/model_table.h"
#include "text/encoding.h"
#include "text/letters.h"
#include "text/pieces.h"
#include "text/units.h"

namespace run {
namespace {

constexpr const char* kPackageChooser = "kvaneKVZChooser";
constexpr const char* kListChooser = "kvaneActionlistChooser";
constexpr const char* kFilterChooser = "kvaneFilterChooser";
constexpr const char* kPackageText = "kvaneKVZInfoTa";
constexpr const char* kListText = "kvaneALInfoTa";
constexpr std::size_t kDescriptionLength = 4095;  // characters
constexpr std::size_t kInfoBytes = 4096;

const std::string& dialog() { return core::pluginState().dialogName; }

// The names, sorted, of a folder's files that a test takes.
template <class Test>
std::vector<std::wstring> filesOf(std::wstring_view folder, Test takes) {
  std::vector<std::wstring> names;
  for (os::Entry& entry : os::files().list(folder).value)
    if (!entry.isFolder && takes(entry.name)) names.push_back(std::move(entry.name));
  std::sort(names.begin(), names.end());
  return names;
}

bool contains(std::wstring_view text, std::wstring_view part) { return text.find(part) != std::wstring_view::npos; }

bool isListFile(std::wstring_view name) { return contains(name, L".xml") && !contains(name, L".xmlinfo"); }

void fillChooser(const std::string& inDialog, const char* chooser, const std::vector<std::wstring>& labels) {
  std::vector<std::string> names;
  names.reserve(labels.size());
  for (const std::wstring& label : labels) names.push_back(text::toUtf8(label));
  if (creo::ProUIOptionmenuNamesSet(inDialog, chooser, names) ||
      creo::ProUIOptionmenuLabelsSet(inDialog, chooser, labels))
    core::creoLog(L"<KVD> main - Error at fill " + text::fromUtf8(chooser));
}

// The chosen filter file; empty for none.
std::string chosenFilter() {
  const std::string chosen = chosenName(kFilterDialog, kFilterChooser);
  return chosen == kNoFilter ? std::string() : chosen;
}

// The first bytes of a text, without the torn character that a cut through UTF-8 leaves.
std::string_view firstBytes(std::string_view bytes, std::size_t most) {
  if (bytes.size() <= most) return bytes;
  constexpr std::size_t kLongestCharacter = 4;
  for (std::size_t less = 0; less < kLongestCharacter; ++less)
    if (text::isUtf8(bytes.substr(0, most - less))) return bytes.substr(0, most - less);
  return bytes.substr(0, most);
}

// Line 2 of the index file, its pairs ";;" shown as line breaks.
std::wstring descriptionOf(std::wstring_view index) {
  const auto start = index.find(L'\n');
  if (start == std::wstring_view::npos) return {};
  std::wstring_view line = index.substr(start + 1);
  line = line.substr(0, std::min(line.find(L'\n'), line.find(L'\0')));
  if (line.ends_with(L'\r')) line.remove_suffix(1);
  return text::replaceAll(text::cut(line, kDescriptionLength), L";;", L" \n");
}

}  // namespace

std::string chosenName(const std::string& dialog, const char* menu) {
  const auto names = creo::ProUIOptionmenuSelectednamesGet(dialog, menu);
  if (!names) core::logWrite(L"Can't read what is chosen in " + text::fromUtf8(menu), core::kError);
  return names && !names.value.empty() ? names.value.front() : std::string();
}

int listPackages() {
  auto& state = core::pluginState();
  core::logWrite(L"<KVD> Read kvz and fill option menu", core::kDebug);
  if (!os::files().isFolder(state.kvzPath)) {
    core::creoLog(L"<KVANE> Can't find KVZ Path");
    core::creoLog(state.kvzPath);
    return -1;
  }
  constexpr std::wstring_view kPart = L".kvz";
  const auto names = filesOf(state.kvzPath, [kPart](std::wstring_view name) {
    return name.size() > kPart.size() && contains(text::lower(name), kPart);
  });
  if (names.empty()) {
    core::logWrite(L"NO KVZ FILES FOUND", core::kNormal);
    core::logWrite(L"NO KVZ FILES FOUND", core::kError);
    core::creoLog(L"<KVD> No kvz files found");
    return 1;
  }
  state.currentKvz = names.front();
  fillChooser(dialog(), kPackageChooser, names);
  selectPackage(text::toUtf8(names.front()));
  return 0;
}

int selectPackage(std::string_view name) {
  core::logWrite(L"<KVD> Read actionlists from kvz", core::kDebug);
  if (documents::unpackPackage(name) == documents::Unpacked::refused) return 1;
  listActionLists();
  const auto lists = creo::ProUIOptionmenuNamesGet(dialog(), kListChooser);
  if (!lists || lists.value.empty()) {
    core::creoLog(L"<KVD> NO ACTIONLISTS");
    return 1;
  }
  readPackageIndex();
  listFilters();
  // The former package's filter file must not go on judging models. A trigger's list brings its own filter.
  setGlobalFilter(core::pluginState().triggerType == 0 ? chosenFilter() : std::string());
  creo::ProUIOptionmenuSelectednamesSet(dialog(), kListChooser, {lists.value.front()});
  selectActionList(lists.value.front());
  return 0;
}

void listActionLists() {
  auto& state = core::pluginState();
  core::creoLog(L"Read Actionlists", 2);
  const auto names = filesOf(os::joined(state.openKvzPath, L"actionlists\\"), &isListFile);
  state.currentList = names.empty() ? std::wstring() : names.front();
  fillChooser(dialog(), kListChooser, names);
}

void listFilters() {
  const auto& state = core::pluginState();
  auto names = filesOf(os::joined(state.openKvzPath, L"filters\\"),
                       [](std::wstring_view name) { return text::endsWithNoCase(name, L".xml"); });
  const auto configured = std::find_if(names.begin(), names.end(), [&state](std::wstring_view name) {
    return text::equalNoCase(name, state.extFilter);
  });
  const std::string selected = configured == names.end() ? std::string(kNoFilter) : text::toUtf8(*configured);
  names.insert(names.begin(), text::fromUtf8(kNoFilter));
  fillChooser(kFilterDialog, kFilterChooser, names);
  creo::ProUIOptionmenuSelectednamesSet(kFilterDialog, kFilterChooser, {selected});
}

void selectActionList(std::string_view name) {
  auto& state = core::pluginState();
  state.currentList = text::fromUtf8(name);
  state.useGlobFilterNow = state.useGlobFilter;
  loadListFilter(name);
  readActionListInfo(name);
}

int readPackageIndex() {
  const auto index = os::files().read(os::joined(core::pluginState().openKvzPath, L"system\\index.kvane"));
  if (!index) {
    core::creoLog(L"<KVD> KVZ index.kvane file not found");
    return 1;
  }
  core::logWrite(L"<KVD> KVZ index.kvane file found", core::kDebug);
  creo::ProUITextareaValueSet(dialog(), kPackageText, descriptionOf(text::fromTextFile(index.value)));
  return 0;
}

void readActionListInfo(std::string_view name) {
  const std::wstring path =
      os::joined(core::pluginState().openKvzPath, L"actionlists\\" + text::fromUtf8(name) + L"info");
  const auto info = os::files().read(path);
  if (!info) {
    core::creoLog(L"<KVD> xmlinfo file not found");
    creo::ProUITextareaValueSet(dialog(), kListText, L"No info file.");
    return;
  }
  core::creoLog(L"<KVD> xmlinfo file found", 2);
  creo::ProUITextareaValueSet(dialog(), kListText, text::fromTextFile(firstBytes(info.value, kInfoBytes)));
}

std::wstring selectedListPath() {
  const std::string selected = chosenName(dialog(), kListChooser);
  if (selected.empty()) return {};
  return os::joined(core::pluginState().openKvzPath, L"actionlists\\" + text::fromUtf8(selected));
}

}  // namespace run

#include "core/config.h"

#include "core/log.h"
#include "core/messages.h"
#include "creo/ProMessage.h"
#include "creo/ProUtil.h"
#include "os/surroundings.h"
#include "os/text_files.h"
#include "text/format.h"
#include "text/letters.h"
#include "text/units.h"

namespace core {
namespace {

constexpr int kMostLogNames = 16384;

// Replaces %NAME% by environment variables. After each replacement the scan starts over at the second character, so
// that a value may hold further names; a value that outgrows its buffer ends it.
std::wstring withEnvironment(std::wstring value) {
  std::size_t from = 0;
  for (;;) {
    const std::size_t open = value.find(L'%', from);
    if (open == std::wstring::npos) return value;
    const std::size_t close = value.find(L'%', open + 1);
    if (close == std::wstring::npos) return value;
    const std::wstring token = value.substr(open, close - open + 1);
    const auto found = os::environment(std::wstring_view(token).substr(1, token.size() - 2));
    if (!found) {
      creoLog(L"The environment variable can't be found");
      creoLog(token);
      from = close + 1;
      continue;
    }
    const std::wstring next = value.substr(0, open) + *found + value.substr(close + 1);
    if (!text::fits(next, text::kTextSize)) return value;
    value = next;
    from = 1;
  }
}

struct Line {
  std::wstring key, value;
  bool hasValue = false;
};

void applyLine(Line& line, OptionSource which) {
  line.key = text::cut(line.key, text::kTextSize - 1);
  line.value = text::cut(line.value, text::kTextSize - 1);
  creoProgress(line.value);
  line.value = withEnvironment(std::move(line.value));
  creoProgress(line.key);
  creoProgress(line.value);
  if (line.hasValue) {
    for (const ConfigKey& key : configKeys()) {
      if (!text::equalNoCase(key.name, line.key) &&
          (key.shortName.empty() || !text::equalNoCase(key.shortName, line.key))) {
        continue;
      }
      key.apply(pluginState(), line.value);
      if (key.sourceSlot >= 0) pluginState().optionSource[static_cast<std::size_t>(key.sourceSlot)] = which;
      break;
    }
  }
  line = Line();
  creoProgress(L"------");
}

// Every CR is dropped, and every "=": it ends the key. A last line without a line feed isn't evaluated.
void applyLines(std::wstring_view content, OptionSource which) {
  Line line;
  for (const wchar_t c : content) {
    if (c == L'\n') {
      applyLine(line, which);
    } else if (c == L'=') {
      line.hasValue = true;
    } else if (c != L'\r') {
      (line.hasValue ? line.value : line.key).push_back(c);
    }
  }
}

// The numbered name for runs that share one log file.
void chooseLogFile(PluginState& state) {
  creoProgress(L"<KVD> create logpath with env user");
  const std::wstring user = os::environment(L"username").value_or(L"nouser");
  creoProgress(L"<KVD> create logname number");
  for (int i = 0; i < kMostLogNames; ++i) {
    state.logFile = text::format(L"%slog - %s - %i.txt", state.tempPath, user, i);
    if (!os::files().exists(state.logFile)) break;
  }
  creoProgress(L"<KVD> fin create std options");
}

}  // namespace

void readConfigFile(std::wstring_view path, OptionSource which) {
  const bool mainFile = which == OptionSource::mainFile;
  const auto content = os::readText(path);
  if (!content) {
    if (mainFile) {
      creoLog(L"<KVD> kvd_main.cfg file not found");
    } else {
      creoProgress(L"<KVD> kvd_user.cfg file not found");
    }
    return;
  }
  creoProgress(mainFile ? L"<KVD> read kvd_main.cfg" : L"<KVD> read kvd_user.cfg");
  creoProgress(L"<KVD> kvd_main.cfg file found");
  applyLines(content.value, which);
  PluginState& state = pluginState();
  creoProgress(L"<KVD> build more paths");
  state.openKvzPath = state.tempPath + L"open_kvz\\";
  chooseLogFile(state);
}

std::wstring normalisedTextPath(std::wstring_view path) {
  std::wstring whole(path);
  constexpr std::size_t kShortest = 6;
  if (whole.size() < kShortest) return whole;
  for (const std::size_t behind : {std::size_t{0}, std::size_t{1}}) {
    const std::size_t at = whole.size() - 4 - behind;
    const bool separated = whole[at - 1] == L'\\' || whole[at - 1] == L'/';
    if (separated && text::equalNoCase(std::wstring_view(whole).substr(at, 4), L"text")) {
      whole.resize(at);
      break;
    }
  }
  return os::asFolder(whole);
}

void readConfigPaths() {
  PluginState& state = pluginState();
  const std::wstring base = normalisedTextPath(creo::ProToolkitApplTextPathGet().value);
  creoProgress(L"<KVD> read Environment Variable");
  const auto folder = os::environment(L"KVD_CONF_DIR");
  creoProgress(folder ? L"<KVD> Environment path found" : L"<KVD> No environment path found");
  state.confPath = folder.value_or(base) + L"conf\\";
  state.binPath = base + L"bin\\";
  creoProgress(L"Confpath");
  creoProgress(state.confPath);
  creoProgress(L"Binpath");
  creoProgress(state.binPath);
  setLanguage(creo::ProMessageToBuffer(state.msgFile, "KVD LANG").value);
}

}  // namespace core

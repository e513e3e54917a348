#include "core/creo_log.h"

#include "core/state.h"
#include "creo/ProMessage.h"

namespace core {

void creoLog(std::wstring_view text, int level) {
  const PluginState& state = pluginState();
  if (level >= state.noDebugInCreoLog) return;
  creo::ProMessageDisplay(state.msgFile, "KVD USER %0s", std::wstring(text));
  creo::ProMessageClear();
}

void creoProgress(std::wstring_view text) {
  if (pluginState().noDebugInLogFile == 0) creoLog(text);
}

}  // namespace core

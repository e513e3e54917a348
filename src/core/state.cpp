#include "core/state.h"

namespace core {

PluginState& pluginState() {
  static PluginState state;
  return state;
}

}  // namespace core

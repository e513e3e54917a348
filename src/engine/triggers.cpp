#include "engine/triggers.h"

#include "core/log.h"
#include "core/state.h"

namespace engine {

// A site that has configured a trigger is told at the start that nothing will fire: silence would look like checking.
void attachTriggers() {
  for (const core::TriggerSettings& settings : core::pluginState().triggers) {
    if (!settings.startKvz.empty()) {
      core::creoLog(L"<KVD> this version doesn't carry out triggers: " + settings.startKvz);
    }
  }
}

void detachTriggers() {}

}  // namespace engine

// Runs that Creo's notifications start.
#pragma once

namespace engine {

// Hangs in a trigger for each event that has a list in the configuration.
void attachTriggers();
void detachTriggers();

}  // namespace engine

// The table of all actions, gathered from the floors that have some, for the dispatch below.
#pragma once

namespace plugin {

// Hands the rows of all families to actions/dispatch.h; a second call changes nothing. The start of the plug-in does
// it; a program that reads the rows without a plug-in calls it before.
void handDownActions();

}  // namespace plugin

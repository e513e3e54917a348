// The run: Head once, Body on each chosen row of the model table, Foot once. Creo makes a model current only through
// its windows, so Body over several models is resumed by the window notification.
#pragma once

#include <string>

#include "core/xml.h"

namespace run {

// The press on the start button.
void startRun();
// Control returned with a window: goes on with the model that the run waits for. window: what the notification tells,
// for where Creo doesn't give the current one.
void onWindowActivated(int window);
// Runs the actions of a section on a row's model ("BRACKET.PRT"), or on none. Null sections hold nothing.
void runSection(const core::XmlNode* section, const std::string& rowName);
// Foot, and the end of everything that belongs to the run.
void finishRun();
// Ends a run that waits for a window: no report, notification or trigger stays behind. Nothing when none goes on.
void abandonRun();

// The five notifications by which the table follows Creo's current model; attached while no run goes on.
void setRefreshNotifications();
void unsetRefreshNotifications();

}  // namespace run

// The warning on Creo's window for as long as the current model lacks an expected parameter value.
#pragma once

namespace ui {

// Nothing happens where no parameter is to be checked.
void startParameterIndicator();
// Takes the label away.
void stopParameterIndicator();

}  // namespace ui

// The filter dialog "kvanefilter": picks a filter file of the package for the whole table.
#pragma once

namespace ui {

// Creates the dialog and gives its components their actions. What fails leaves a line in Creo's log.
void createFilterDialog();
// "no Filter" and the filter files of the selected package.
void fillFilterChooser();
// Applies what stands in the chooser: drops the filter, or loads it; the table is rebuilt.
void applyChosenFilter();
// Brings the dialog before the user.
void openFilterDialog();

}  // namespace ui

// Dialogs: created from resource files of the application, made of named components. Every operation fails for a dialog
// that isn't created, a component that it lacks and one of another kind: with ProNotFound and ProBadInputs where they
// are told apart, which Creo doesn't promise.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

// Called with the names of the dialog and of the component.
using ProUIAction = std::function<void(const std::string& dialog, const std::string& component)>;

// Properties of a dialog beyond its resource. A modeless dialog's activation returns at once.
enum class ProUIDialogTrait { modeless, keepsLayout, keepsPosition, keepsSize, resizable };

// The resource, its file and the dialog in it have one name, in the same case; the dialog's own name is free, but none
// of Creo's. ProGeneralError: a dialog of that name is created, there is no such resource, or it is none.
ProError ProUIDialogCreate(const std::string& dialog, const std::string& resource);
ProError ProUIDialogTraitSet(const std::string& dialog, ProUIDialogTrait trait, bool on);
// Takes it out of memory, also while it is shown.
ProError ProUIDialogDestroy(const std::string& dialog);
// Shows the dialog and gives it the keys. A modal one blocks until ProUIDialogExit and gives its status; a modeless one
// gives 0 at once, which an adapter must see to.
Got<int> ProUIDialogActivate(const std::string& dialog);
// Ends the activation, with the status that it gives.
ProError ProUIDialogExit(const std::string& dialog, int status);
ProError ProUIDialogShow(const std::string& dialog);
ProError ProUIDialogHide(const std::string& dialog);
ProError ProUIDialogTitleSet(const std::string& dialog, const std::wstring& title);
ProError ProUIDialogBitmapSet(const std::string& dialog, const std::string& image);
// Runs when a person closes the dialog by its cross; it exits the dialog, or that stays. Exiting it may run it, too.
ProError ProUIDialogCloseActionSet(const std::string& dialog, ProUIAction action);

ProError ProUIPushbuttonActivateActionSet(const std::string& dialog, const std::string& button, ProUIAction action);
ProError ProUIPushbuttonEnable(const std::string& dialog, const std::string& button);
ProError ProUIPushbuttonDisable(const std::string& dialog, const std::string& button);
ProError ProUIPushbuttonBitmapSet(const std::string& dialog, const std::string& button, const std::string& image);

ProError ProUICheckbuttonActivateActionSet(const std::string& dialog, const std::string& button, ProUIAction action);
ProError ProUICheckbuttonTextSet(const std::string& dialog, const std::string& button, const std::wstring& text);
// These two run no action: a person's change alone does.
ProError ProUICheckbuttonSet(const std::string& dialog, const std::string& button);
ProError ProUICheckbuttonUnset(const std::string& dialog, const std::string& button);
Got<bool> ProUICheckbuttonGetState(const std::string& dialog, const std::string& button);

// The names of an option menu; setting them selects the first.
ProError ProUIOptionmenuNamesSet(const std::string& dialog, const std::string& menu, std::vector<std::string> names);
Got<std::vector<std::string>> ProUIOptionmenuNamesGet(const std::string& dialog, const std::string& menu);
// One for each name; the names are set before. ProBadInputs: another number of them.
ProError ProUIOptionmenuLabelsSet(const std::string& dialog, const std::string& menu, std::vector<std::wstring> labels);
// ProNotFound also for a name that the menu doesn't have.
ProError ProUIOptionmenuSelectednamesSet(const std::string& dialog, const std::string& menu,
                                         std::vector<std::string> names);
Got<std::vector<std::string>> ProUIOptionmenuSelectednamesGet(const std::string& dialog, const std::string& menu);
ProError ProUIOptionmenuSelectActionSet(const std::string& dialog, const std::string& menu, ProUIAction action);

ProError ProUILabelTextSet(const std::string& dialog, const std::string& label, const std::wstring& text);
Got<std::string> ProUILabelBitmapGet(const std::string& dialog, const std::string& label);

// Both ends are set before a value is; ProBadInputs: ends that cross, a value that isn't between them.
ProError ProUIProgressbarMinintegerSet(const std::string& dialog, const std::string& bar, int value);
ProError ProUIProgressbarMaxintegerSet(const std::string& dialog, const std::string& bar, int value);
ProError ProUIProgressbarIntegerSet(const std::string& dialog, const std::string& bar, int value);

// Lines are parted by line feeds.
Got<std::wstring> ProUITextareaValueGet(const std::string& dialog, const std::string& area);
ProError ProUITextareaValueSet(const std::string& dialog, const std::string& area, const std::wstring& value);

// With all that it holds.
ProError ProUILayoutShow(const std::string& dialog, const std::string& layout);
ProError ProUILayoutHide(const std::string& dialog, const std::string& layout);
// Whether showing and hiding a layout changes what it holds alone, while its size stays.
ProError ProUILayoutMappedSet(const std::string& dialog, const std::string& layout);
ProError ProUILayoutMappedUnset(const std::string& dialog, const std::string& layout);

}  // namespace creo

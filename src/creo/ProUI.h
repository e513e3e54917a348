// Dialogs: created from resource files of the application, made of named components. Every setter gives ProNotFound
// for a dialog that isn't created or a component that it lacks, ProBadInputs for one of another kind.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

// Called with the names of the dialog and of the component.
using ProUIAction = std::function<void(const std::string& dialog, const std::string& component)>;

// Properties of a dialog beyond its resource. A modeless dialog's activation returns at once.
enum class ProUIDialogTrait { modeless, keepsLayout, keepsPosition, keepsSize, resizable };

// ProExists: a dialog of that name is created. ProNotFound: no such resource; ProGeneralError: it is no resource.
ProError ProUIDialogCreate(const std::string& dialog, const std::string& resource);
ProError ProUIDialogTraitSet(const std::string& dialog, ProUIDialogTrait trait, bool on);
ProError ProUIDialogDestroy(const std::string& dialog);
// Shows the dialog. A modal one blocks until ProUIDialogExit and gives its status; a modeless one gives 0 at once.
Got<int> ProUIDialogActivate(const std::string& dialog);
ProError ProUIDialogExit(const std::string& dialog, int status);
ProError ProUIDialogShow(const std::string& dialog);
ProError ProUIDialogHide(const std::string& dialog);
ProError ProUIDialogTitleSet(const std::string& dialog, const std::wstring& title);
ProError ProUIDialogBitmapSet(const std::string& dialog, const std::string& image);
ProError ProUIDialogCloseActionSet(const std::string& dialog, ProUIAction action);

ProError ProUIPushbuttonActivateActionSet(const std::string& dialog, const std::string& button, ProUIAction action);
ProError ProUIPushbuttonEnable(const std::string& dialog, const std::string& button);
ProError ProUIPushbuttonDisable(const std::string& dialog, const std::string& button);
ProError ProUIPushbuttonBitmapSet(const std::string& dialog, const std::string& button, const std::string& image);

ProError ProUICheckbuttonActivateActionSet(const std::string& dialog, const std::string& button, ProUIAction action);
ProError ProUICheckbuttonTextSet(const std::string& dialog, const std::string& button, const std::wstring& text);
ProError ProUICheckbuttonSet(const std::string& dialog, const std::string& button);
ProError ProUICheckbuttonUnset(const std::string& dialog, const std::string& button);
Got<bool> ProUICheckbuttonGetState(const std::string& dialog, const std::string& button);

// The names of an option menu; setting them selects the first.
ProError ProUIOptionmenuNamesSet(const std::string& dialog, const std::string& menu, std::vector<std::string> names);
Got<std::vector<std::string>> ProUIOptionmenuNamesGet(const std::string& dialog, const std::string& menu);
ProError ProUIOptionmenuLabelsSet(const std::string& dialog, const std::string& menu, std::vector<std::wstring> labels);
// ProNotFound also for a name that the menu doesn't have.
ProError ProUIOptionmenuSelectednamesSet(const std::string& dialog, const std::string& menu,
                                         std::vector<std::string> names);
Got<std::vector<std::string>> ProUIOptionmenuSelectednamesGet(const std::string& dialog, const std::string& menu);
ProError ProUIOptionmenuSelectActionSet(const std::string& dialog, const std::string& menu, ProUIAction action);

ProError ProUILabelTextSet(const std::string& dialog, const std::string& label, const std::wstring& text);
Got<std::wstring> ProUILabelTextGet(const std::string& dialog, const std::string& label);
Got<std::string> ProUILabelBitmapGet(const std::string& dialog, const std::string& label);

ProError ProUIProgressbarMinintegerSet(const std::string& dialog, const std::string& bar, int value);
ProError ProUIProgressbarMaxintegerSet(const std::string& dialog, const std::string& bar, int value);
ProError ProUIProgressbarIntegerSet(const std::string& dialog, const std::string& bar, int value);

Got<std::wstring> ProUITextareaValueGet(const std::string& dialog, const std::string& area);
ProError ProUITextareaValueSet(const std::string& dialog, const std::string& area, const std::wstring& value);

ProError ProUILayoutShow(const std::string& dialog, const std::string& layout);
ProError ProUILayoutHide(const std::string& dialog, const std::string& layout);
ProError ProUILayoutMappedSet(const std::string& dialog, const std::string& layout);
ProError ProUILayoutMappedUnset(const std::string& dialog, const std::string& layout);

}  // namespace creo

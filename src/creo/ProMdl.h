// Models in memory.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

// Name and place of a model. type is upper case ("PRT"). A model on disk has a device that is never empty ("d"), the
// path has its closing backslash ("\models\"); one of a PDM workspace has the device "wtws" and the path
// "//server/workspace/". version is the number of the file that was read, 0 for a new model.
struct ProMdlData {
  std::wstring name, type, device, path, host;
  int version = 0;
};
// Creo's number of the type of layouts. They aren't brought into memory.
constexpr auto kLayoutType = static_cast<ProMdlType>(19);
// A model that another one uses.
struct ProDependency {
  std::wstring name;
  std::wstring typeText;  // upper case: "PRT"
  ProMdlType type = ProMdlType::unused;
};

// The model that the user works on. ProNotFound: no window, or an empty one. A window that is only made current doesn't
// change it.
Got<ProMdl> ProMdlCurrentGet();
// A model that is in memory; nothing is retrieved. ProNotFound: it isn't.
Got<ProMdl> ProMdlInit(const std::wstring& name, ProMdlType type);
// Brings a model into memory, with the models it uses; one that is there already is given as it is. It is neither shown
// nor made current. The working folder is looked in first, then the session's folder of models and the folders of the
// option search_path, for formats and drawings also those of pro_format_dir; "NAME<GENERIC>" or an instance's bare name
// gives an instance. ProNotFound: no document of that name; ProGeneralError: unreadable, the message area says file,
// line and reason. A component that can't be retrieved is suppressed, and the assembly a success. With a PDM server,
// what isn't there is brought from it into its workspace.
Got<ProMdl> ProMdlRetrieve(const std::wstring& name, ProMdlType type);
// As ProMdlRetrieve with the master representation, which becomes the active one.
Got<ProMdl> ProMdlnameRetrieve(const std::wstring& name, ProMdlType type);
// ProBadInputs for a handle that has gone, here and below. Upper case.
Got<std::wstring> ProMdlNameGet(ProMdl model);
Got<ProMdlType> ProMdlTypeGet(ProMdl model);
Got<ProMdlData> ProMdlDataGet(ProMdl model);
// As the model is called in its family table and on disk; upper case. The same as ProMdlNameGet for a native model.
Got<std::wstring> ProMdlMdlnameGet(ProMdl model);
// The extension by type, upper case: "PRT".
Got<std::wstring> ProMdlExtensionGet(ProMdl model);
// The name that the PDM system shows. ProNotFound: it has none; an instance doesn't have its generic's.
Got<std::wstring> ProMdlCommonnameGet(ProMdl model);
// Creo's number of the kind of part or assembly, from 1. ProBadInputs for a drawing, which has no kinds.
Got<int> ProMdlSubtypeGet(ProMdl model);
// The file that the model was read from, with its path; empty for a new model. Of an instance: its generic's.
Got<std::wstring> ProMdlOriginGet(ProMdl model);
// The folder that the next save writes to, with its closing backslash: behind a backup, that of the backup.
// ProNotFound: the model was never saved.
Got<std::wstring> ProMdlDirectoryPathGet(ProMdl model);
// Saves the model as the next version of its document; an instance saves its generic. What it uses and what was changed
// of that is saved before it; the option save_objects may say otherwise: "changed" and "changed_and_updated" leave out
// an unchanged model, "all" saves unchanged ones too. Raises notification 103 before; an error of its handler ends the
// save. A drawing that isn't displayed is saved without its preview. ProGeneralError: not all was written (the old
// versions are whole), the message area has the reason.
ProError ProMdlSave(ProMdl model);
// Takes it out of memory, which is complete once control is back with Creo: until then it is there as it was, its name
// isn't free, and what becomes of calls for it isn't told. One that is used or displayed by then stays.
// ProGeneralError: another model in memory uses it, which isn't to be erased itself. An instance's changes stay with
// its generic. Raises notification 9 before, as ProMdlEraseAll does for its model; an error of its handler ends the
// erasure.
ProError ProMdlErase(ProMdl model);
// The same with all that it uses and that no other model in memory uses and no window shows.
ProError ProMdlEraseAll(ProMdl model);
// Takes all out of memory that stand in no window and that no model in a window uses, changed ones too.
ProError ProMdlEraseNotDisplayed();
// May the model be changed, which is: could it be saved? What it uses isn't looked at. False: a read-only document, or
// one of a PDM workspace that isn't checked out and can't be. askUser: Creo may ask the user to resolve a conflict, who
// may check it out; without, the option dm_checkout_on_the_fly has the answer, which a save goes by.
Got<bool> ProMdlIsModifiable(ProMdl model, bool askUser);
// ProNoLicense: Creo's option for skeletons isn't there.
Got<bool> ProMdlIsSkeleton(ProMdl model);
// True when it was changed since it was retrieved or saved.
Got<bool> ProMdlModificationVerify(ProMdl model);
// What the model uses directly: an assembly's components, a drawing's models, an instance's generic not among them;
// then the layouts that it declares. Each once, in no order to rely on. ProNotFound: nothing.
Got<std::vector<ProDependency>> ProMdlDependenciesList(ProMdl model);
// The same as files: with type code and name; another kind of file that the model refers to has a type of its own.
struct ProDependencyData {
  std::wstring name;
  std::wstring typeText;
  int type = 0;  // 1 assembly, 2 part, 4 drawing, 19 layout
};
Got<std::vector<ProDependencyData>> ProMdlDependenciesDataList(ProMdl model);
// Names of parameters as the object interface lists them; one that is defined twice is there twice.
Got<std::vector<std::wstring>> pfcListParams(ProMdl model);
// The model itself as an owner of parameters.
Got<ProModelitem> ProMdlToModelitem(ProMdl model);

// Shows the model: in its own window if it has one, else in the current one (a window is opened where there is none).
// The picture follows; the menus may stay with another window until this one is activated. ProInvalidType: a model that
// has no picture.
ProError ProMdlDisplay(ProMdl model);
// The number of the window that the model is on top of. ProNotFound: none.
Got<int> ProMdlWindowGet(ProMdl model);

}  // namespace creo

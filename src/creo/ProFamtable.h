// Family tables: a generic, its columns (items) and its rows (instances), which may be generics themselves.
#pragma once

#include "creo/ProParameter.h"

namespace creo {

struct ProFamtable {
  ProMdl owner;
};
// A row of a generic's table.
struct ProFaminstance {
  std::wstring name;
  ProMdl owner;
};
enum class ProFamitemType : int { unused = 0, parameter = 1, dimension = 2, feature = 3, component = 4 };
struct ProFamtableItem {
  ProFamitemType type = ProFamitemType::unused;
  std::wstring name;
};

// ProNoError: the solid has a family table with rows. ProNotFound: none; ProNoFamtable: one without rows; ProBadInputs:
// no solid.
ProError ProSolidFamtableCheck(ProMdl solid);
// ProNotFound: the solid has no family table.
Got<ProFamtable> ProFamtableInit(ProMdl solid);
// ProNoError: the table has rows, and each of them can be read. ProNotFound: there is no table; ProNoFamtable: it has
// no rows; ProGeneralError: a row can't be read, the message area has the reason.
ProError ProFamtableCheck(const ProFamtable& table);
// The rows of a generic's own table, not those below them. ProNotFound: none.
ProError ProFamtableInstanceVisit(const ProFamtable& table, Visitor<ProFaminstance> visitor);
// Was the instance regenerated and found good? 0 is a yes. ProNotFound, here and for the other questions to a row: the
// table has no such row.
enum class ProVerification : int { verified = 0, failed = 1, notVerified = 2 };
Got<ProVerification> ProFaminstanceIsVerified(const ProFaminstance& instance);
// A locked instance can't be changed.
enum class ProInstanceLock : int { none = 0, locked = 1 };
Got<ProInstanceLock> ProFaminstanceCheck(const ProFaminstance& instance);
// The instance as a model, where it is in memory. ProNotFound: it isn't.
Got<ProMdl> ProFaminstanceMdlGet(const ProFaminstance& instance);
// Builds the instance in memory, also one that lies on disk. ProGeneralError: the row can't be built.
Got<ProMdl> ProFaminstanceCreate(const ProFaminstance& instance);
// The instance as a model in memory, regenerated where it has to be brought; it shares the generic's document.
// ProGeneralError: the row can't be built.
Got<ProMdl> ProFaminstanceRetrieve(const ProFaminstance& instance);
// An instance's generic as a model. immediate: the one whose table has the row, else the topmost. ProNotFound: the
// model is no instance; ProGeneralError: the immediate generic isn't in memory, and it isn't brought. Then
// ProFaminstanceImmediategenericinfoGet tells what to retrieve.
Got<ProMdl> ProFaminstanceGenericGet(ProMdl instance, bool immediate);
// The immediate generic's name and type, be it in memory or not. ProNotFound: the model is no instance.
struct ProGenericInfo {
  std::wstring name;
  ProMdlType type = ProMdlType::unused;
};
Got<ProGenericInfo> ProFaminstanceImmediategenericinfoGet(ProMdl instance);

// The column that a model's parameter has or would have. ProBadInputs: it is no parameter of the model itself;
// ProNotFound: it has gone.
Got<ProFamtableItem> ProParameterToFamtableItem(const ProParameter& parameter);
// Adds a column, in which all rows have the generic's value. ProExists: it is there; ProGeneralError: the model has no
// family table.
ProError ProFamtableItemAdd(const ProFamtable& table, const ProFamtableItem& item);

// The columns of a generic's own table. ProNotFound: none.
ProError ProFamtableItemVisit(const ProFamtable& table, Visitor<ProFamtableItem> visitor);
// With its values in all rows of that table. ProNotFound: it is no column of the table; ProBadInputs: there is none.
ProError ProFamtableItemRemove(const ProFamtable& table, const ProFamtableItem& item);

// An instance's value of a parameter column: its own, or the one it takes over from its generic, in the units of the
// parameter, as the table shows it. ProNotFound: it is no column of the table that lists the instance.
Got<ProParamvalue> ProFaminstanceValueGet(const ProFaminstance& instance, const ProFamtableItem& item);
// The same. ProBadInputs: the value is of another kind than the parameter, a number that isn't finite, or its
// restriction doesn't allow it.
ProError ProFaminstanceValueSet(const ProFaminstance& instance, const ProFamtableItem& item,
                                const ProParamvalue& value);
// Does the instance take the value over from its generic?
Got<bool> ProFaminstanceFamtableItemIsDefault(const ProFaminstance& instance, const ProFamtableItem& item);

}  // namespace creo

// Rows of family tables changed and taken away.
#pragma once

#include "creo/ProFamtable.h"

namespace creo {

// A locked row answers ProGeneralError to what would change it, and to its removal. ProNotFound, here and below: the
// table has no such row.
ProError ProFaminstanceLock(const ProFaminstance& instance, ProInstanceLock lock);
// Takes the row out of its table, with the rows below it. What is in memory of them becomes a model of its own, with
// the values, features and components that it had. ProGeneralError: the row, or one below it, is locked.
ProError ProFaminstanceRemove(const ProFaminstance& instance);
// Adds a row of that name, which has its generic's values; one that was taken out of its table before comes back with
// its own values and the rows below it. ProExists: a row or a model in memory has the name; ProNotFound: the model has
// no table; ProBadInputs: a name that is empty or longer than 31 characters.
ProError ProFaminstanceAdd(const ProFaminstance& instance);
// Takes the whole table away, its rows as ProFaminstanceRemove does it. ProGeneralError: one of them is locked, and
// nothing was changed.
ProError ProFamtableErase(const ProFamtable& table);

}  // namespace creo

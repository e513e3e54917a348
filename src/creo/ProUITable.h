// Table components: named rows and columns; a cell holds a text and at most one component, copied from another one of
// the dialog.
#pragma once

#include "creo/ProUI.h"

namespace creo {

// In order from the top.
Got<std::vector<std::string>> ProUITableRownamesGet(const std::string& dialog, const std::string& table);
// Behind the row `after`, or at the top when it is empty. ProExists: a row of that name is there.
ProError ProUITableRowsInsert(const std::string& dialog, const std::string& table, const std::string& after,
                              const std::vector<std::string>& rows);
// With the texts of their cells; components are deleted by their own calls. ProNotFound: a row isn't there.
ProError ProUITableRowsDelete(const std::string& dialog, const std::string& table,
                              const std::vector<std::string>& rows);
// A copy of the component `from` of the same dialog, named `name`, in a cell. ProExists: the cell or the dialog has
// such a component.
ProError ProUITableCellComponentCopy(const std::string& dialog, const std::string& table, const std::string& row,
                                     const std::string& column, const std::string& from, const std::string& name);
// ProGeneralError: the cell has none.
ProError ProUITableCellComponentDelete(const std::string& dialog, const std::string& table, const std::string& row,
                                       const std::string& column);
ProError ProUITableCellLabelSet(const std::string& dialog, const std::string& table, const std::string& row,
                                const std::string& column, const std::wstring& label);
ProError ProUITableColumnLabelSet(const std::string& dialog, const std::string& table, const std::string& column,
                                  const std::wstring& label);
// width: in characters.
ProError ProUITableColumnWidthSet(const std::string& dialog, const std::string& table, const std::string& column,
                                  int width);
// Components of cells, by their names. ProGeneralError: it isn't there.
ProError ProUITableLabelRemove(const std::string& dialog, const std::string& table, const std::string& label);
ProError ProUITableCheckbuttonRemove(const std::string& dialog, const std::string& table, const std::string& button);
// The rows that the user marked; an adapter leaves the columns of the marked cells out.
Got<std::vector<std::string>> ProUITableSelectednamesGet(const std::string& dialog, const std::string& table);

}  // namespace creo

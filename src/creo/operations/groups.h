// The rows by what the operations are about; each group has its file.
#pragma once

#include "creo/operations.h"

namespace creo {

using Operations = std::vector<Operation>;

Operations modelOperations();    // models, files, backups, copies, family tables, the server
Operations solidOperations();    // solids, features, elements, geometry, materials, units, sections
Operations drawingOperations();  // drawings, views, tables, notes, symbols, dimensions, formats
Operations stateOperations();    // layers, representations, states, views, appearances, parameters, relations, data
Operations outputOperations();   // exports, imports, prints, pictures
Operations sessionOperations();  // session, options, windows, selections, messages, macros, notifications
Operations dialogOperations();   // dialogs, their buttons, menus, labels, layouts and input panels

// Lists, tables and trees of dialogs.
Operations dialogTableOperations();

}  // namespace creo

// The rows by what the operations are about; each group has its file.
#pragma once

#include "creo/operations.h"

namespace creo {

using Operations = std::vector<Operation>;

Operations modelOperations();    // models, files, backups, copies, family tables, the server
Operations solidOperations();    // solids, features, elements, geometry, materials, units, sections
Operations drawingOperations();  // drawings, views, tables, notes, symbols, dimensions, formats
Operations stateOperations();    // layers, layer states, states by name, views, looks
Operations outputOperations();   // exports, imports, prints, pictures
Operations sessionOperations();  // session, options, windows, selections, messages, macros, notifications
Operations dialogOperations();   // dialogs, menus, trees

Operations representationOperations();  // simplified representations
Operations parameterOperations();       // parameters, relations, external data, items

}  // namespace creo

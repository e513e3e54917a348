// The rows by what the operations are about; each group has its file.
#pragma once

#include "creo/operations.h"

namespace creo {

using Operations = std::vector<Operation>;

Operations modelOperations();           // models, files, backups, copies, replacements, references, the server
Operations familyOperations();          // family tables, their rows and columns
Operations solidOperations();           // solids, their geometry, materials and units
Operations featureOperations();         // features, their elements and sketches, cross sections, components, programs
Operations drawingOperations();         // drawings, sheets, formats, views, and their trees
Operations symbolOperations();          // symbols of drawings, their definitions, attachments
Operations textOperations();            // tables and notes, dimensions
Operations stateOperations();           // layers, layer states, states by name, views, looks
Operations representationOperations();  // simplified representations
Operations parameterOperations();       // parameters, relations, external data, items
Operations outputOperations();          // exports, imports, prints, pictures
Operations sessionOperations();         // session, options, windows, selections, messages, macros, notifications
Operations dialogOperations();          // dialogs, their buttons, menus, labels, layouts and input panels
Operations dialogTableOperations();     // lists, tables and trees of dialogs

}  // namespace creo

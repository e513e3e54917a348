// The check-out state of the table's models on the PDM server.
#pragma once

#include <string>

#include "creo/ProTypes.h"

namespace engine {

// The template of the label that shows a row's state. Without a server, a workspace or an object there the model counts
// as one of the disk.
const char* checkOutLabel(creo::ProMdl model, const std::string& row);

class ModelRows;
// Checks out the models of the rows whose check button is set.
void checkOutRows(ModelRows& rows);

}  // namespace engine

// What becomes of models in memory whose rows go.
#pragma once

#include <memory>

#include "headless/model/document.h"

namespace headless {

class Models;  // models.h

// Takes a row out of its table; what is in memory of it and of the rows below it becomes a model of its own.
void removeRow(Models& models, const std::shared_ptr<ModelDocument>& document, RowRecord& row);

}  // namespace headless

// Documents of their own for what was a row of a family table.
#pragma once

#include <memory>
#include <string_view>

#include "headless/model/model.h"

namespace headless {

// A copy of the model's document under another name, new and changed. An instance's values, features and components are
// worked into it, and its own external data replace the generic's. table: it keeps its family table; an instance's is
// that of its own row.
std::shared_ptr<ModelDocument> standAlone(const Model& model, std::wstring_view name, bool table);

}  // namespace headless

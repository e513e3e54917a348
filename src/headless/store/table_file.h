// Files of stored tables: "NAME.tbl", what a drawing's document holds of a table.
#pragma once

#include <string>
#include <string_view>

#include "headless/store/json.h"
#include "headless/store/records_drawing.h"

namespace headless {

// The table gets that name, whatever the file says, no id and no segments. `into` is meaningful only without a fault.
JsonFault readTable(std::string_view source, std::string name, TableRecord& into);

}  // namespace headless

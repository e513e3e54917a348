// Taking away a member that a document was read with.
#pragma once

#include "headless/store/records.h"

namespace headless {

// The family table goes, and its member with it.
void eraseFamilyTable(ModelRecord& record);
void eraseFamilyTable(RowRecord& row);

}  // namespace headless

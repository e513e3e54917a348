// Checks out the models of the table from the PDM server.
#pragma once

#include <string>
#include <vector>

#include "run/check_out_state.h"
#include "run/model_rows.h"

namespace run {

// Checks out the models of the rows whose check button is set.
void checkOutRows(ModelRows& rows);

struct RefusedCheckOut {
  std::string row;
  std::wstring conflicts;  // empty: it failed, the message area has the reason
};
// Those of the last time, in the table's order.
const std::vector<RefusedCheckOut>& refusedCheckOuts();

}  // namespace run

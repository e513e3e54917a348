// The check-out state of the table's models on the PDM server.
#pragma once

#include <string>
#include <vector>

#include "creo/ProTypes.h"

namespace run {

// The template of the label that shows a row's state. Without a server, a workspace or an object there the model counts
// as one of the disk.
const char* checkOutLabel(creo::ProMdl model, const std::string& row);

// Why no row shows a check-out where `kvd_show_no_pdm_server_informations` is 1.
constexpr const wchar_t* kNoServerLabels =
    L"kvd_show_no_pdm_server_informations=1: the table doesn't show what is checked out";
// Does the row's label show its model as checked out? False also for one without a label.
bool showsCheckedOut(const std::string& row);

class ModelRows;
// Checks out the models of the rows whose check button is set.
void checkOutRows(ModelRows& rows);

struct RefusedCheckOut {
  std::string row;
  std::wstring conflicts;  // empty: it failed, the message area has the reason
};
// Those of the last time, in the table's order.
const std::vector<RefusedCheckOut>& refusedCheckOuts();

}  // namespace run

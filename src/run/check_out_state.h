// The check-out state of the table's models on the PDM server.
#pragma once

#include <string>

#include "creo/ProServer.h"
#include "documents/server_workspace.h"

namespace run {

// The active workspace; a line in Creo's area says what is missing.
documents::ServerWorkspace workspaceOrLine();
// What the server says of a row's model. ProNotFound as documents::statusIn.
creo::Got<creo::ProServerStatus> statusOf(const documents::ServerWorkspace& workspace, const std::string& row);
// The template of the label that shows a row's state. Without a server, a workspace or an object there the model counts
// as one of the disk.
const char* checkOutLabel(creo::ProMdl model, const std::string& row);

// Why no row shows a check-out where `kvd_show_no_pdm_server_informations` is 1.
constexpr const wchar_t* kNoServerLabels =
    L"kvd_show_no_pdm_server_informations=1: the table doesn't show what is checked out";
// Does the row's label show its model as checked out? False also for one without a label.
bool showsCheckedOut(const std::string& row);

}  // namespace run

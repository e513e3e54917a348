// The exports of solids whose structure and contents a list chooses.
#pragma once

#include "actions/exports/export_frame.h"
#include "creo/ProIntf.h"

namespace actions {

struct BrepForm {
  ExportForm file;
  creo::ProIntfFormat format{};
  bool choosesFaces = false;  // `surfaces` and `wireframe` count, beside `quilts` and `solids`
  core::Message failure;      // where the file can't be written
};
// From the target on: whether the format can hold what is asked for, the file.
Outcome exportBrep(const Task& task, const BrepForm& form);

}  // namespace actions

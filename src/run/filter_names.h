// Names in the dialog that chooses the filter of the table.
#pragma once

namespace run {

constexpr const char* kFilterDialog = "kvanefilter";
// The entry of its chooser that stands for none.
constexpr const char* kNoFilter = "no Filter";

}  // namespace run

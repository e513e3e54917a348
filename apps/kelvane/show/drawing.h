// What kelvane show tells of a drawing beside what it tells of every model.
#pragma once

#include <string>
#include <vector>

#include "creo/ProTypes.h"

namespace kelvane {

struct Section {
  std::string title;
  std::vector<std::vector<std::string>> rows;
};
// Sheets, a section for each table with what its cells show, symbols.
std::vector<Section> drawingSections(creo::ProMdl drawing);

}  // namespace kelvane

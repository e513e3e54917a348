// How the table of models decides on a model, in words.
#pragma once

#include <string>

#include "creo/ProMdl.h"

namespace kelvane {

struct TableVerdict {
  bool worked = false;
  std::string reason;
};
// As the plug-in's settings, filter and list stand now.
TableVerdict judgedByTable(creo::ProMdl model);

}  // namespace kelvane

// What is kept for the packages of a confined session.
#pragma once

#include <string>
#include <vector>

#include "os/grants.h"

namespace kelvane::view {

struct SessionTrust {
  std::string folder;     // of the packages
  os::Grants beforehand;  // what all of them may
  bool isRequired = false;
};
// For each package that `work` shows of the folder's: what is kept for it joins the grants, for its own lists alone.
// Where trust is required, one that needs more than that and than all may is shown no longer. Gives a line for each of
// these, and for what is kept and can't be read: nothing is granted by it then.
std::vector<std::string> trustPackages(const SessionTrust& trust, const std::string& work, os::Grants& grants);

}  // namespace kelvane::view

// What the processes of a sweep found, from their files to lines and counts for a person.
#pragma once

#include <array>
#include <iosfwd>
#include <string>
#include <vector>

#include "sweep/sweep.h"

namespace sweep {

// Adds a line to a file of findings.
void write(std::ostream& file, const Finding& finding);
std::vector<Finding> findingsOf(const std::string& file);

struct Report {
  bool all = false;       // a line of all findings, not of faults alone
  bool complete = false;  // everything was tried, so that a silence that nothing met is a fault
  std::size_t places = 0, failures = 0;
};
// Shows the counts of each list and the faults. Gives the number of faults.
int tell(std::ostream& out, const std::vector<Finding>& findings, const Report& report);

}  // namespace sweep

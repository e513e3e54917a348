// What a run's journal tells of the run as a whole, for who lists and explains runs.
#pragma once

#include <set>
#include <string>

#include "kelvane/journal/book.h"

namespace kelvane {

// "norm.xml of standards.kvz", "undo of 0003".
std::string whatRan(const RunJournal& journal);
// Models whose documents or objects it changed, as rows name them: "SHAFT.PRT".
std::set<std::string> modelsOf(const RunJournal& journal);

}  // namespace kelvane

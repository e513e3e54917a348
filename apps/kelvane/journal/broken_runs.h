// What runs came to that broke off, for the run behind them.
#pragma once

#include <set>
#include <string>

#include "kelvane/journal/book.h"

namespace kelvane {

// Models that runs of that list checked in and finished without an error before they broke off, one behind the other,
// with no other run since: running again goes on behind them. All others tell it by their history; one that is closed
// by its check-in can't. An undo that broke off, too, counts for what it has taken back: these aren't finished any
// more.
std::set<std::string> finishedByBrokenRuns(const Book& book, const std::string& package, const std::string& list,
                                           const std::string& listSum);

}  // namespace kelvane

// Differences of two model documents, member by member. Dry runs, events and the comparison of folders stand on it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "headless/store/json.h"

namespace headless {

struct Change {
  std::wstring path;    // "parameters/MASS/value"
  std::wstring before;  // empty: it wasn't there. Texts as they are, empty ones and anything else as JSON in one line
  std::wstring after;   // empty: it is gone
};

struct CompareOptions {
  bool history = true;  // false: external data of the class "kvpslot" is left aside
};

// Elements of arrays are matched by their id (with their type, where they have no name), else their name, else their
// symbol, the second of one key as "KEY[1]"; elements without any by their place. The path calls them by their name
// where it is the only one in its array and still the same, else by what they were matched by. Arrays of texts are
// compared as lines: only those that came, went or changed are told, each by its place from 0. An element that only
// moved is no difference, but a line is. In the order of `after`, with what is gone at the end of its level. The cost
// is near linear in the documents.
std::vector<Change> compareDocuments(const Json& before, const Json& after, const CompareOptions& options = {});
// The same on texts; a text that is no JSON counts as an empty document.
std::vector<Change> compareTexts(std::string_view before, std::string_view after, const CompareOptions& options = {});

}  // namespace headless

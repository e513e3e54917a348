// Records of a document in their lists: found by id or name.
#pragma once

#include <algorithm>
#include <string_view>
#include <vector>

#include "headless/store/names.h"

namespace headless {

// The record of that id; null for none.
template <class Record>
Record* recordOf(std::vector<Record>& records, int id) {
  const auto found =
      std::find_if(records.begin(), records.end(), [id](const Record& record) { return record.id == id; });
  return found == records.end() ? nullptr : &*found;
}
template <class Record>
Record* recordNamed(std::vector<Record>& records, std::string_view name) {
  const auto found = std::find_if(records.begin(), records.end(),
                                  [name](const Record& record) { return sameName(record.name, name); });
  return found == records.end() ? nullptr : &*found;
}

}  // namespace headless

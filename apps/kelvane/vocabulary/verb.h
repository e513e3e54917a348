// The verbs that tell the keys of a table: all of them in a line each, or one with all that its row says.
#pragma once

#include <span>

#include "kelvane/base/fault.h"
#include "kelvane/base/nearest.h"
#include "kelvane/base/verb.h"
#include "kelvane/vocabulary/vocabulary.h"
#include "text/encoding.h"

namespace kelvane {

// A Fault for a key that is none. what: "action".
template <class Row>
const Row& chosenRow(const Row* (*find)(std::wstring_view), const std::string& key, const char* what,
                     const std::vector<std::string>& keys) {
  if (const Row* row = find(text::fromUtf8(key))) return *row;
  throw Fault(std::string("there is no ") + what + " '" + key + "'" + didYouMean(key, keys));
}

// lineOf: what a row of the table is for, in a line.
template <class Row, class LineOf>
void tellRows(Console& console, std::span<const Row> rows, bool isJson, LineOf lineOf) {
  nlohmann::ordered_json all = nlohmann::ordered_json::array();
  std::size_t width = 0;
  for (const Row& row : rows) width = std::max(width, row.key.size());
  for (const Row& row : rows) {
    if (isJson) {
      all.push_back(described(row));
      continue;
    }
    std::string key = text::toUtf8(row.key);
    key.resize(width, ' ');
    console.result(console.inked(Ink::bold, key) + "  " + std::string(lineOf(row)));
  }
  if (isJson) console.resultJson(all.dump(2));
}

template <class Row>
void tellRow(Console& console, const Row& row, bool isJson) {
  if (isJson) return console.resultJson(described(row).dump(2));
  for (const std::string& line : told(row)) console.result(line);
}

}  // namespace kelvane

// A page of the documents, as far as tests hold it against the rows of the program.
#pragma once

#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "support/folders.h"
#include "support/world.h"

namespace test {

struct Section {
  std::string title;  // empty for what stands before the first one
  std::vector<std::string> lines;
};

// The sections "## title" of a page of docs, in their order.
inline std::vector<Section> sectionsOf(const std::string& page) {
  std::vector<Section> all(1);
  std::istringstream lines(readBytes(sourceFolder() + "/docs/" + page));
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with("## "))
      all.push_back({line.substr(3), {}});
    else
      all.back().lines.push_back(line);
  }
  return all;
}

// The text cut at each backtick: every second piece, from the one at 1 on, stands between two of them.
inline std::vector<std::string> atTicks(const std::string& text) {
  std::vector<std::string> pieces;
  std::istringstream rest(text);
  for (std::string piece; std::getline(rest, piece, '`');) pieces.push_back(piece);
  return pieces;
}
inline std::vector<std::string> inTicks(const std::string& text) {
  std::vector<std::string> found;
  const std::vector<std::string> pieces = atTicks(text);
  for (std::size_t i = 1; i < pieces.size(); i += 2) found.push_back(pieces[i]);
  return found;
}

struct AttributeLine {
  std::string names, value;  // the first cell, and what stands behind it
};
// The lines of a section's tables with the title "Attribute" that begin with a name.
inline std::vector<AttributeLine> attributeLines(const Section& section) {
  std::vector<AttributeLine> found;
  bool isIn = false;
  for (const std::string& line : section.lines) {
    isIn = line.starts_with("| Attribute |") || (isIn && line.starts_with("|"));
    const std::size_t end = line.find(" | ");
    if (isIn && line.starts_with("| `")) found.push_back({line.substr(2, end - 2), line.substr(end + 3)});
  }
  return found;
}

// The blocks of XML of a section, without their fences.
inline std::vector<std::string> xmlBlocks(const Section& section) {
  std::vector<std::string> blocks;
  bool isIn = false;
  for (const std::string& line : section.lines) {
    if (line == "```xml") blocks.emplace_back();
    if (isIn && line != "```") blocks.back() += line + "\n";
    isIn = line == "```xml" || (isIn && line != "```");
  }
  return blocks;
}

}  // namespace test

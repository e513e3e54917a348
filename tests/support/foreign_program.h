// What another program says of a file that this system wrote.
#pragma once

#include <cstdio>
#include <stdexcept>
#include <string>

namespace test {

// Standard output and errors of a shell command.
inline std::string said(const std::string& command) {
  std::FILE* const reader = popen((command + " 2>&1").c_str(), "r");
  if (!reader) throw std::runtime_error("can't run " + command);
  std::string all;
  char piece[4096];
  while (const std::size_t count = std::fread(piece, 1, sizeof piece, reader)) all.append(piece, count);
  pclose(reader);
  return all;
}

}  // namespace test

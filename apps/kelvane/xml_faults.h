// What of a list's or a filter's text the plug-in's reader drops, or takes for something else, without a word.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kelvane {

struct XmlFault {
  std::string_view rule;  // its name among the rules of findings
  std::size_t line = 0;   // from 1
  std::string text;
};
// Of a file's bytes, in UTF-8 or Windows-1252; by line. Each fault once: what follows from one isn't told again.
std::vector<XmlFault> xmlFaults(std::string_view bytes);

}  // namespace kelvane

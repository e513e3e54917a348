// What of a list's or a filter's text the plug-in's reader drops, or takes for something else, without a word.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "kelvane/check/edit.h"

namespace kelvane {

struct XmlFault {
  std::string_view rule;  // its name among the rules of findings
  std::size_t line = 0;   // from 1
  std::string text;
  int element = -1;  // its place among the elements; -1: it stands in none's tag
  Edits mend = {};   // what surely mends it; none: a person must
};
// Where an attribute stands that the plug-in's reader takes as it is meant.
struct XmlAttributePlace {
  Piece name, value;
};
struct XmlElementPlace {
  std::size_t line = 0;  // of the tag's "<", from 1
  Piece name;
  std::vector<XmlAttributePlace> attributes;
};
struct XmlScan {
  std::vector<XmlFault> faults;           // by line
  std::vector<XmlElementPlace> elements;  // in their order
};
// Of a file's bytes, in UTF-8 or Windows-1252. Each fault once: what follows from one isn't told again. Of UTF-16 the
// faults alone, without what mends them.
XmlScan scanXml(std::string_view bytes);
// By its mark.
bool isUtf16(std::string_view bytes);

}  // namespace kelvane

// Attributes of a row as patterns of RELAX NG.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/attribute.h"

namespace kelvane {

// XML that grows by elements; each stands on a line of its own.
class XmlText {
 public:
  // head: the tag without its angle brackets, `element name="task"`.
  void open(std::string_view head);
  void close();
  // An element without children.
  void leaf(std::string_view head);
  // An element with a text alone, or any other line that is XML already.
  void line(std::string_view xml);
  [[nodiscard]] const std::string& text() const { return text_; }

 private:
  std::string text_;
  std::vector<std::string> open_;  // names
};

// Patterns for all of the attributes; of two of one name the first counts. What checks of packages pass over is let
// through, too: empty values, and texts that are put together when an action runs. Attributes of one form that may be
// absent share a pattern, as some validators try each optional one with and without.
void addAttributes(XmlText& to, std::span<const core::Attribute> attributes);
// The definitions that those patterns refer to.
void addAttributeForms(XmlText& to);

}  // namespace kelvane

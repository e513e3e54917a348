#include "kelvane/base/xml_text.h"

namespace kelvane {

std::string escaped(std::string_view text) {
  std::string out;
  for (const char c : text) {
    switch (c) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      case '"':
        out += "&quot;";
        break;
      default:
        if (static_cast<unsigned char>(c) >= ' ') out += c;
    }
  }
  return out;
}

}  // namespace kelvane

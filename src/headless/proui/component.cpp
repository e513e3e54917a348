#include "headless/proui/component.h"

#include <iterator>

namespace headless {

std::string_view kindName(Kind kind) {
  constexpr std::string_view names[] = {"pushbutton",  "checkbutton", "optionmenu", "label",
                                        "progressbar", "textarea",    "layout",     "table",
                                        "tree",        "list",        "menu",       "inputpanel"};
  static_assert(std::size(names) == static_cast<std::size_t>(Kind::inputpanel) + 1);
  return names[static_cast<std::size_t>(kind)];
}

}  // namespace headless

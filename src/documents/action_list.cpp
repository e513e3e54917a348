#include "documents/action_list.h"

namespace documents {

ActionList actionList(const core::XmlDocument& document) {
  ActionList list;
  const core::XmlNode* top = document.root() ? core::xmlChildAt(document.root()->children, 0) : nullptr;
  if (!top) return list;
  const auto child = [top](std::size_t index) { return core::xmlChildAt(top->children, index); };
  list.head = child(0);
  list.body = child(1);
  list.filter = child(2);
  list.foot = child(4) ? child(4) : child(3);
  return list;
}

}  // namespace documents

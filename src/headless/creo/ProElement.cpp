#include "creo/ProElement.h"

#include <algorithm>

#include "headless/creo/operation.h"

namespace creo {

using headless::operation;
using State = headless::Session::State;

Got<ProElement> ProElemtreeElementGet(const ProElemtree& tree, int pathItem) {
  return operation("ProElemtreeElementGet", [&](State&) -> Got<ProElement> {
    const auto found = std::find_if(tree.elements.begin(), tree.elements.end(),
                                    [pathItem](const ProElement& one) { return one.id == pathItem; });
    if (found == tree.elements.end()) return ProNotFound;
    return *found;
  });
}

Got<int> ProElementIntegerGet(const ProElement& element) {
  return operation("ProElementIntegerGet", [&](State&) -> Got<int> {
    if (element.id == 0) return ProBadInputs;
    if (const int* value = std::get_if<int>(&element.value)) return *value;
    return element.value.index() == 0 ? ProInvalidType : ProGeneralError;
  });
}

}  // namespace creo

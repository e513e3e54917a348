#include "creo/ProElement.h"

#include <algorithm>
#include <cmath>

#include "headless/creo/operation.h"

namespace creo {

using headless::operation;
using State = headless::Session::State;

namespace {

template <class Value>
ProError setValue(std::string_view name, ProElement& element, Value value) {
  return operation(name, [&](State&) -> ProError {
    if (element.id == 0) return ProBadInputs;
    if constexpr (std::is_same_v<Value, double>)
      if (!std::isfinite(value)) return ProBadInputs;
    element.value = std::move(value);
    return ProNoError;
  });
}

}  // namespace

Got<ProElement> ProElemtreeElementGet(const ProElemtree& tree, int pathItem) {
  return operation("ProElemtreeElementGet", [&](State&) -> Got<ProElement> {
    const auto found = std::find_if(tree.elements.begin(), tree.elements.end(),
                                    [pathItem](const ProElement& element) { return element.id == pathItem; });
    if (found == tree.elements.end()) return ProNotFound;
    return *found;
  });
}

Got<int> ProElementIntegerGet(const ProElement& element) {
  return operation("ProElementIntegerGet", [&](State&) -> Got<int> {
    if (element.id == 0) return ProBadInputs;
    if (const int* value = std::get_if<int>(&element.value)) return *value;
    return ProInvalidType;
  });
}

Got<ProElement> ProElementAlloc(int id) {
  return operation("ProElementAlloc", [&](State&) -> Got<ProElement> {
    if (id <= 0) return ProBadInputs;
    ProElement element;
    element.id = id;
    return element;
  });
}

ProError ProElementIntegerSet(ProElement& element, int value) {
  return setValue("ProElementIntegerSet", element, value);
}

ProError ProElementDoubleSet(ProElement& element, double value) {
  return setValue("ProElementDoubleSet", element, value);
}

ProError ProElementWstringSet(ProElement& element, const std::wstring& value) {
  return setValue("ProElementWstringSet", element, value);
}

Got<ProValue> ProValueAlloc() {
  return operation("ProValueAlloc", [](State&) -> Got<ProValue> { return ProValue(); });
}

ProError ProValueDataSet(ProValue& value, const ProReference& reference) {
  return operation("ProValueDataSet", [&](State&) -> ProError {
    if (reference.item.type == ProItemType::none) return ProBadInputs;
    value.reference = reference;
    return ProNoError;
  });
}

ProError ProElementValueSet(ProElement& element, const ProValue& value) {
  return setValue("ProElementValueSet", element, value.reference);
}

ProError ProElemtreeElementAdd(ProElement& parent, ProElement child) {
  return operation("ProElemtreeElementAdd", [&](State&) -> ProError {
    if (parent.id == 0 || child.id == 0) return ProBadInputs;
    parent.children.push_back(std::move(child));
    return ProNoError;
  });
}

}  // namespace creo

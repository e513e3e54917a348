// Documents and predicates from a line of XML.
#pragma once

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <string>

#include "core/xml.h"
#include "documents/filter.h"
#include "text/encoding.h"

namespace test {

// The document of an element; single quotes stand for double ones.
inline std::unique_ptr<core::XmlDocument> parsed(std::wstring text) {
  std::replace(text.begin(), text.end(), L'\'', L'"');
  auto loaded = core::xmlParse(std::move(text));
  if (!loaded) throw std::invalid_argument(text::toUtf8(loaded.fault.sentence()));
  return std::move(loaded.value);
}
inline const core::XmlNode& element(const core::XmlDocument& document) { return *document.root()->next; }

// The answer, as a number, of the predicate that the attributes name.
inline int predicate(const std::wstring& attributes, creo::ProMdl model) {
  const auto document = parsed(L"<i " + attributes + L"/>");
  const core::XmlNode& item = element(*document);
  return static_cast<int>(documents::runPredicate(item, core::attrFind(item.attributes, L"type")->value, model));
}

}  // namespace test

// What the predicates share: their attributes, comparisons, the models that they apply to.
#pragma once

#include <optional>
#include <string_view>

#include "core/xml.h"
#include "creo/ProTypes.h"
#include "documents/predicates.h"
#include "language/compare.h"

namespace documents {

// An attribute's value.
std::wstring_view valueOf(const core::XmlNode& item, std::wstring_view name, std::wstring_view absent = {});
// Is it the literal "true"?
bool isTrue(const core::XmlNode& item, std::wstring_view name);
using language::matches;

// The result of a test of a number, told to whoever watches comparisons: "> 210" against "297".
bool noted(std::wstring_view sign, std::wstring_view wanted, double number, bool result);

// The model's type where it is one of those. Nothing: it isn't; one that can't be read has its line then.
std::optional<creo::ProMdlType> applicableType(creo::ProMdl model, Models to);

}  // namespace documents

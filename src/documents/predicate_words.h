// What the predicates share: their title lines, their attributes, the models that they apply to.
#pragma once

#include <optional>
#include <string_view>

#include "core/xml.h"
#include "creo/ProTypes.h"
#include "documents/predicates.h"

namespace documents {

// A title of the message table, or a fixed one.
void title(int id);
void title(std::wstring_view text);

// An attribute's value.
std::wstring_view valueOf(const core::XmlNode& item, std::wstring_view name, std::wstring_view absent = {});
// Is it the literal "true"?
bool isTrue(const core::XmlNode& item, std::wstring_view name);
// By wildcardCompare.
bool matches(std::wstring_view pattern, std::wstring_view text);

// The result of a test of a number, told to whoever watches comparisons: "> 210" against "297".
bool noted(std::wstring_view sign, std::wstring_view wanted, double held, bool result);

// The models that a predicate applies to. solids: all but drawings.
enum class AppliesTo { solids, parts, drawings, any };
// The model's type where the predicate applies. Nothing: the predicate answers kNotApplicable; a type that can't be
// read has its line then.
std::optional<creo::ProMdlType> applicableType(creo::ProMdl model, AppliesTo to);

}  // namespace documents

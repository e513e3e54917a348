// Faults that a text of a list or filter shows by itself, without a model.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kelvane {

// Unknown tokens and text functions, and a line break inside a name between two signs.
std::vector<std::string> templateFaults(std::wstring_view text);
// The forms "%NAME%" in it that stand for parameters.
std::vector<std::string> namedParameters(std::wstring_view text);
// Holds the text a form that is replaced when it is used?
bool hasVariables(std::wstring_view text);
// Why the text is no pattern; empty: it is one.
std::string patternFault(std::wstring_view text);
bool isInteger(std::wstring_view text);
// As people write one.
bool isNumber(std::wstring_view text);
// As filters tell one from a text: "12,5" and "1-2" are some, ".5" and "+5" aren't.
bool isReadAsNumber(std::wstring_view text);

}  // namespace kelvane

// Faults that a text of a list or filter shows by itself, without a model.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/xml.h"
#include "language/comparison_watch.h"

namespace kelvane {

// Unknown tokens and text functions, a line break inside a name between two signs, the expression of a text function
// that replaces where it doesn't compile.
std::vector<std::string> templateFaults(std::wstring_view text);
// Unknown tokens alone.
std::vector<std::string> unknownTokens(std::wstring_view text);
// The forms "%NAME%" in it that stand for parameters.
std::vector<std::string> namedParameters(std::wstring_view text);
// The user variables that it asks for: "%X%" for "%user:X%" and "%user:toupper:X%".
std::vector<std::string> namedUserVariables(std::wstring_view text);
// Holds the text a form that is replaced when it is used?
bool hasVariables(std::wstring_view text);
// Why the text is no pattern; empty: it is one.
std::string patternFault(std::wstring_view text);
// "an expression that doesn't compile (its reason): '/(/'"; empty for a pattern, for slashes alone, which are a text,
// and for what is put together when it is used.
std::string expressionFault(std::wstring_view text);
// "the expression '/[/' doesn't compile (its reason), so that it matches nothing".
std::string refusal(const language::RefusedExpression& refused);
bool isInteger(std::wstring_view text);
// As people write one.
bool isNumber(std::wstring_view text);
// As filters tell one from a text: "12,5" and "1-2" are some, ".5" and "+5" aren't.
bool isReadAsNumber(std::wstring_view text);

}  // namespace kelvane

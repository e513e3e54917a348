// Expressions in a syntax that all releases of the library read alike, and as PCRE 1 did: lists are older than the
// program that runs them.
#pragma once

#include <string>
#include <string_view>

namespace language {

// An escape that has no meaning, as "\j", is its letter. A brace that opens no quantifier stands for itself, which
// later releases see otherwise in "{,3}" and "{ 1 }". A hyphen beside a set of characters, as in "[\w-.]", is one.
// "(*UTF8)" at the start is "(*UTF)" now.
std::string inLastingSyntax(std::string_view expression);

}  // namespace language

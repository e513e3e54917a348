// Bytes to wide texts and back. None of these fails: what can't be read or written is replaced by a mark.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace text {

// UTF-8 to wide; each byte that isn't part of a valid sequence becomes U+FFFD. A byte-order mark is kept.
std::wstring fromUtf8(std::string_view bytes);
// The same into a buffer that has room for a character a byte; the number of characters.
std::size_t fromUtf8(std::string_view bytes, wchar_t* out);
// Wide to UTF-8; lone surrogates and numbers beyond U+10FFFF become U+FFFD.
std::string toUtf8(std::wstring_view text);
// True when the bytes are valid UTF-8.
bool isUtf8(std::string_view bytes);

// ISO 8859-1: each byte is its character. Characters above U+00FF become "?".
std::wstring fromLatin1(std::string_view bytes);
std::string toLatin1(std::wstring_view text);

// Windows code page 1252; the five unassigned bytes become U+FFFD. Characters that it lacks become "?".
std::wstring fromWindows1252(std::string_view bytes);
std::string toWindows1252(std::wstring_view text);

// A text file's content: a mark of UTF-8 or UTF-16 is dropped and says which; without one valid UTF-8 is UTF-8 and
// anything else is Windows-1252.
std::wstring fromTextFile(std::string_view bytes);

}  // namespace text

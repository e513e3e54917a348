// Taking wide texts apart and putting them together.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace text {

// Every occurrence of find replaced, left to right; a replacement isn't searched again. An empty find replaces nothing.
std::wstring replaceAll(std::wstring_view text, std::wstring_view find, std::wstring_view by);
std::string replaceAll(std::string_view text, std::string_view find, std::string_view by);

// The pieces between separators; an empty text gives one empty piece.
std::vector<std::wstring> split(std::wstring_view text, wchar_t separator);
// Lines of a text: split at LF, a CR before it dropped; a closing line feed makes no further line.
std::vector<std::wstring> lines(std::wstring_view text);

std::wstring join(const std::vector<std::wstring>& pieces, std::wstring_view separator);
// Without blanks, tabs, CR and LF at both ends.
std::wstring_view trimmed(std::wstring_view text);

}  // namespace text

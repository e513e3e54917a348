// Files that lists name: where they lie, and which of them a list may write.
#pragma once

#include <string>
#include <string_view>

namespace actions {

// A path without a drive that doesn't begin at a root is taken from the working folder, as Creo takes it; any other one
// stays as it is, an empty one too.
std::wstring wholePath(const std::wstring& path);

// May a list write a file there? False, with an error line: the path names no file, the document of a model, the log
// that is being written, or a file in the root of the machine. A model's document is written by saving alone.
// path: whole; extension: what the action appends to names, which alone names nothing; empty for none.
bool mayBeWritten(std::wstring_view path, std::wstring_view extension = {});
// The same without a line: is it one of those that nothing but Creo and the log writes?
bool isKeptFile(std::wstring_view path);

}  // namespace actions

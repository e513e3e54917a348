// Documents that begin in memory.
#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

#include "headless/model/document.h"

namespace headless {

// A name becomes that of a file, so it must not lead to another folder.
bool isFileName(std::wstring_view name);
// In UTF-16 units, of models and instances.
constexpr std::size_t kLongestModelName = 31;
// What Creo takes as a model's new name, in either case: at most 31 characters, of ASCII letters, digits, "_" and "-",
// the latter not in front; beyond ASCII all but blanks and control characters.
bool isModelName(std::wstring_view name);
// Empty and changed, without a folder.
std::shared_ptr<ModelDocument> newDocument(std::wstring_view name, creo::ProMdlType type);

}  // namespace headless

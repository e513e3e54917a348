// Documents that begin in memory.
#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

#include "headless/model/document.h"

namespace headless {

// A name becomes that of a file, so it must not lead to another folder.
bool isFileName(std::wstring_view name);
// Empty and changed, without a folder.
std::shared_ptr<ModelDocument> newDocument(std::wstring_view name, creo::ProMdlType type);

}  // namespace headless

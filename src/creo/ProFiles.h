// Folders and what they hold.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

// Paths of the files of a folder that one of the patterns fits, all versions, sorted by name; folders aside. filter:
// "*.mat,*.mtl", each a "*" and an ending, case-blind, at most 31 characters; empty: all files. ProNotFound: there is
// no such folder, or it can't be read.
Got<std::vector<std::wstring>> ProFilesList(const std::wstring& folder, const std::wstring& filter);

}  // namespace creo

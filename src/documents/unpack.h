// Packages: zip files in the package folder, unpacked under the temp folder and kept there until the file changes.
#pragma once

#include <string_view>

namespace documents {

enum class Unpacked {
  ready,       // unpacked now, or as it is already
  incomplete,  // a required member is missing, or a member couldn't be extracted; the rest is there
  refused,     // nothing that could be used: no zip, damaged, hostile, its folder can't be made, or an interrupt
};

// Makes `openKvzPath` the package's folder and unpacks into it unless that state of the file is there already. A name
// with its folder is taken when that is the package folder.
Unpacked unpackPackage(std::string_view name, int attempt = 0);

}  // namespace documents

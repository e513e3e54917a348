// Which zip files may be packages: judged before the first byte is unpacked, by the plug-in and by what hands it
// packages alike.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "documents/zip.h"
#include "text/fault.h"

namespace documents {

// Limits against zip bombs.
constexpr std::uint64_t kMostUnpacked = std::uint64_t{1} << 30;  // bytes
constexpr unsigned kMostRatio = 1000;                            // unpacked to packed

// Of a member's name, in UTF-16 units: as a whole, and of each folder and the file in it.
constexpr std::size_t kLongestName = 1024;
constexpr std::size_t kLongestPart = 255;

// Why no package has such a member, "has a member that is a link". Both separators are read as one.
text::Fault memberFault(const ZipMember& member);
// Why a zip file of that many bytes with these members is refused, "has a member that is a link: models/l".
text::Fault packageFault(const std::vector<ZipMember>& members, std::uint64_t fileSize);
// What a file that isn't refused may unpack to, in bytes.
std::uint64_t mostUnpacked(const std::vector<ZipMember>& members, std::uint64_t fileSize);

// A folder's name on its way up, as some system takes it: "..", ".. ", "...".
bool leadsUp(std::wstring_view part);

}  // namespace documents

// Packages as zip files: what they are refused for, and what comes out of them.
#include "documents/zip.h"

#include "documents/package_rules.h"
#include "fuzz/target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::uint64_t kMostHere = 8U << 20U;  // bytes that an input may unpack to before it is left
  const std::string_view bytes = fuzz::bytesOf(data, size);
  const auto reader = documents::ZipReader::openBytes(bytes);
  if (!reader) return 0;
  const auto& members = reader->members();
  const bool refused = static_cast<bool>(documents::packageFault(members, size));
  std::uint64_t all = 0;
  for (std::size_t i = 0; i < members.size() && all < kMostHere; ++i) {
    fuzz::holds(members[i].name.empty() || refused || !documents::memberFault(members[i]),
                "a package has no such member");
    std::uint64_t out = 0;
    const bool whole = reader->extract(i, [&](std::string_view piece) {
      out += piece.size();
      return out <= members[i].size && all + out < kMostHere;
    });
    all += out;
    fuzz::holds(!whole || out <= members[i].size, "a member that is whole has the size that it declares");
  }
  return 0;
}

// Zip files, read. The one door to the zip library.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "creo/ProTypes.h"
#include "text/fault.h"

namespace documents {

struct ZipMember {
  std::wstring name;       // as it stands in the file, mostly with "/"
  std::uint64_t size = 0;  // unpacked, as the file declares it
  std::uint64_t packed = 0;
  bool isFolder = false;
  bool isLink = false;
  bool isExecutable = false;  // by the file mode that Unix packers leave
  bool isEncrypted = false;
  bool isMethodKnown = true;  // how it is packed

  // Why it can't be extracted, "it is encrypted", as far as its entry tells; empty: it doesn't.
  [[nodiscard]] std::wstring_view obstacle() const;
};

// No package has more. Of a file with more the first ones are read, and one beyond.
constexpr std::size_t kMostMembers = 100'000;

class ZipReader {
 public:
  // A file of the system's form ("d:\packages\a.kvz"). A fault tells why it can't be read, "Permission denied". Null
  // without a fault: not a zip, or a truncated one.
  static text::Result<std::unique_ptr<ZipReader>> openFile(std::wstring_view path);
  // Bytes that outlive the reader. Null: not a zip, or a truncated one.
  static std::unique_ptr<ZipReader> openBytes(std::string_view bytes);
  ~ZipReader();
  ZipReader(const ZipReader&) = delete;
  ZipReader& operator=(const ZipReader&) = delete;

  // A member whose entry can't be read has an empty name.
  [[nodiscard]] const std::vector<ZipMember>& members() const { return members_; }
  // Hands the unpacked bytes of a member on in pieces until sink says false. True when all of them were handed on and
  // agree with the checksum.
  bool extract(std::size_t index, creo::FunctionRef<bool(std::string_view)> sink);

 private:
  struct Archive;
  explicit ZipReader(std::unique_ptr<Archive> archive);
  std::unique_ptr<Archive> archive_;
  std::vector<ZipMember> members_;
};

}  // namespace documents

#include "kelvane/package/packing.h"

#include <zip.h>

#include "kelvane/base/fault.h"

namespace kelvane {
namespace {

// 1980-01-01 00:00 in the zip format's own date, which knows no time zone.
constexpr zip_uint16_t kMemberDate = (1 << 5) | 1;

// What a packer on Unix notes: a plain file that everybody may read and run.
constexpr zip_uint32_t kProgram = zip_uint32_t{0100755} << 16;

struct Member {
  std::string bytes;
  bool isExecutable = false;
};
using Content = std::map<std::string, Member>;

Content contentOf(const PackageSource& source) {
  if (!source.has(kPackageIndex)) throw Fault("the package needs a file " + std::string(kPackageIndex));
  const MarkedPackage whole(source);
  Content content;
  for (const std::string& member : whole.members()) content[member] = {whole.read(member), whole.isExecutable(member)};
  return content;
}

struct SourceFree {
  void operator()(zip_source_t* source) const { ::zip_source_free(source); }
};

void require(bool good, const char* step) {
  if (!good) throw Fault(std::string("the package can't be packed: ") + step);
}

// content outlives the writing: its bytes are referred to.
void addMembers(zip_t* zip, const Content& content) {
  for (const auto& [name, member] : content) {
    const std::string& bytes = member.bytes;
    zip_source_t* source = ::zip_source_buffer(zip, bytes.data(), bytes.size(), 0);
    require(source != nullptr, "no memory");
    const zip_int64_t index = ::zip_file_add(zip, name.c_str(), source, ZIP_FL_ENC_UTF_8);
    if (index < 0) ::zip_source_free(source);
    require(index >= 0, ::zip_strerror(zip));
    const auto at = static_cast<zip_uint64_t>(index);
    require(::zip_set_file_compression(zip, at, ZIP_CM_DEFLATE, 9) == 0, ::zip_strerror(zip));
    require(::zip_file_set_dostime(zip, at, 0, kMemberDate, 0) == 0, ::zip_strerror(zip));
    // All others are left as the library writes them.
    if (member.isExecutable)
      require(::zip_file_set_external_attributes(zip, at, 0, ZIP_OPSYS_UNIX, kProgram) == 0, ::zip_strerror(zip));
  }
}

std::string bytesOf(zip_source_t* source) {
  require(::zip_source_open(source) == 0, "it can't be read back");
  std::string bytes;
  char block[1 << 16];
  for (zip_int64_t got = 0; (got = ::zip_source_read(source, block, sizeof block)) > 0;) {
    bytes.append(block, static_cast<std::size_t>(got));
  }
  ::zip_source_close(source);
  return bytes;
}

}  // namespace

std::string packed(const PackageSource& source) {
  const Content content = contentOf(source);
  zip_error_t error;
  ::zip_error_init(&error);
  const std::unique_ptr<zip_source_t, SourceFree> buffer(::zip_source_buffer_create(nullptr, 0, 0, &error));
  require(buffer != nullptr, "no memory");
  zip_t* zip = ::zip_open_from_source(buffer.get(), ZIP_TRUNCATE, &error);
  require(zip != nullptr, ::zip_error_strerror(&error));
  ::zip_source_keep(buffer.get());  // closing the archive gives one of two references back
  std::unique_ptr<zip_t, void (*)(zip_t*)> archive(zip, &::zip_discard);
  addMembers(zip, content);
  require(::zip_close(zip) == 0, ::zip_strerror(zip));
  (void)archive.release();
  return bytesOf(buffer.get());
}

}  // namespace kelvane

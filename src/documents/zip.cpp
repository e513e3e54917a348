#include "documents/zip.h"

#include <zip.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

#include "os/result.h"
#include "os/surroundings.h"
#include "text/encoding.h"

namespace documents {
namespace {

constexpr std::size_t kPiece = 256 * 1024;  // bytes

// The file mode that Unix packers put into the upper half of the external attributes.
constexpr zip_uint32_t kModeShift = 16, kModeKind = 0170000, kModeLink = 0120000, kModeRun = 0111;

ZipMember memberAt(zip_t* zip, zip_uint64_t index) {
  ZipMember member;
  zip_stat_t stat;
  zip_stat_init(&stat);
  if (zip_stat_index(zip, index, 0, &stat) != 0 || !(stat.valid & ZIP_STAT_NAME)) return member;
  member.name = text::fromUtf8(stat.name);
  if (stat.valid & ZIP_STAT_SIZE) member.size = stat.size;
  if (stat.valid & ZIP_STAT_COMP_SIZE) member.packed = stat.comp_size;
  member.isEncrypted = (stat.valid & ZIP_STAT_ENCRYPTION_METHOD) && stat.encryption_method != ZIP_EM_NONE;
  member.isMethodKnown =
      !(stat.valid & ZIP_STAT_COMP_METHOD) || zip_compression_method_supported(stat.comp_method, 0) != 0;
  member.isFolder = member.name.ends_with(L'/') || member.name.ends_with(L'\\');
  zip_uint8_t system = 0;
  zip_uint32_t attributes = 0;
  if (zip_file_get_external_attributes(zip, index, 0, &system, &attributes) == 0) {
    const zip_uint32_t mode = attributes >> kModeShift;
    member.isLink = (mode & kModeKind) == kModeLink;
    member.isExecutable = !member.isFolder && (mode & kModeRun) != 0;
  }
  return member;
}

}  // namespace

struct ZipReader::Archive {
  zip_t* zip = nullptr;
  explicit Archive(zip_t* z) : zip(z) {}
  ~Archive() { zip_discard(zip); }
  Archive(const Archive&) = delete;
  Archive& operator=(const Archive&) = delete;
};

std::wstring_view ZipMember::obstacle() const {
  if (isEncrypted) return L"it is encrypted";
  return isMethodKnown ? std::wstring_view() : L"it is packed by a method that isn't known here";
}

text::Result<std::unique_ptr<ZipReader>> ZipReader::openFile(std::wstring_view path) {
  int fault = 0;
  errno = 0;
  zip_t* zip = zip_open(os::mounts().machine(path).c_str(), ZIP_RDONLY, &fault);
  if (zip) return std::unique_ptr<ZipReader>(new ZipReader(std::make_unique<Archive>(zip)));
  zip_error_t error;
  zip_error_init_with_code(&error, fault);
  const int reason = fault == ZIP_ER_NOENT ? ENOENT : zip_error_system_type(&error) == ZIP_ET_SYS ? errno : 0;
  zip_error_fini(&error);
  if (reason == 0) return std::unique_ptr<ZipReader>();
  return os::faultOf({reason, std::generic_category()});
}

std::unique_ptr<ZipReader> ZipReader::openBytes(std::string_view bytes) {
  zip_source_t* source = zip_source_buffer_create(bytes.data(), bytes.size(), 0, nullptr);
  if (!source) return nullptr;
  zip_t* zip = zip_open_from_source(source, ZIP_RDONLY, nullptr);
  if (!zip) {
    zip_source_free(source);
    return nullptr;
  }
  return std::unique_ptr<ZipReader>(new ZipReader(std::make_unique<Archive>(zip)));
}

ZipReader::ZipReader(std::unique_ptr<Archive> archive) : archive_(std::move(archive)) {
  const auto count = std::min<zip_int64_t>(zip_get_num_entries(archive_->zip, 0), kMostMembers + 1);
  for (zip_int64_t i = 0; i < count; ++i) members_.push_back(memberAt(archive_->zip, static_cast<zip_uint64_t>(i)));
}

ZipReader::~ZipReader() = default;

bool ZipReader::extract(std::size_t index, creo::FunctionRef<bool(std::string_view)> sink) {
  const std::unique_ptr<zip_file_t, int (*)(zip_file_t*)> file(zip_fopen_index(archive_->zip, index, 0), &zip_fclose);
  if (!file) return false;
  std::string piece(kPiece, '\0');
  for (;;) {
    const zip_int64_t got = zip_fread(file.get(), piece.data(), piece.size());
    if (got < 0) return false;
    if (got == 0) return true;
    if (!sink(std::string_view(piece.data(), static_cast<std::size_t>(got)))) return false;
  }
}

}  // namespace documents

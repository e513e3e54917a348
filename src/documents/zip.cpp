#include "documents/zip.h"

#include <zip.h>

#include "os/surroundings.h"
#include "text/encoding.h"

namespace documents {
namespace {

constexpr std::size_t kPiece = 256 * 1024;  // bytes

// The file mode that Unix packers put into the upper half of the external attributes.
constexpr zip_uint32_t kModeShift = 16, kModeKind = 0170000, kModeLink = 0120000;

}  // namespace

struct ZipReader::Archive {
  zip_t* zip = nullptr;
  explicit Archive(zip_t* z) : zip(z) {}
  ~Archive() { zip_discard(zip); }
  Archive(const Archive&) = delete;
  Archive& operator=(const Archive&) = delete;
};

std::unique_ptr<ZipReader> ZipReader::openFile(std::wstring_view path) {
  int fault = 0;
  zip_t* zip = zip_open(os::mounts().machine(path).c_str(), ZIP_RDONLY, &fault);
  if (!zip) return nullptr;
  return std::unique_ptr<ZipReader>(new ZipReader(std::make_unique<Archive>(zip)));
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
  const zip_int64_t count = zip_get_num_entries(archive_->zip, 0);
  for (zip_int64_t i = 0; i < count; ++i) {
    const auto index = static_cast<zip_uint64_t>(i);
    ZipMember member;
    zip_stat_t stat;
    zip_stat_init(&stat);
    if (zip_stat_index(archive_->zip, index, 0, &stat) == 0 && (stat.valid & ZIP_STAT_NAME)) {
      member.name = text::fromUtf8(stat.name);
      if (stat.valid & ZIP_STAT_SIZE) member.size = stat.size;
      if (stat.valid & ZIP_STAT_COMP_SIZE) member.packed = stat.comp_size;
      member.isFolder = member.name.ends_with(L'/') || member.name.ends_with(L'\\');
      zip_uint8_t system = 0;
      zip_uint32_t attributes = 0;
      if (zip_file_get_external_attributes(archive_->zip, index, 0, &system, &attributes) == 0)
        member.isLink = ((attributes >> kModeShift) & kModeKind) == kModeLink;
    }
    members_.push_back(std::move(member));
  }
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

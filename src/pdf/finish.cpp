#include "pdf/finish.h"

#include <qpdf/qpdf-c.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <vector>

#include "pdf/font_file.h"
#include "text/encoding.h"

namespace pdf {
namespace {

// The library writes a character's number in UTF-16, and calls that a range of glyphs, which says nothing of
// characters. A range stays within one upper byte, and a block has a hundred at most.
std::string charactersAsWritten() {
  constexpr int kRanges = 256, kMostInABlock = 100;
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string map =
      "/CIDInit /ProcSet findresource begin\n12 dict begin\nbegincmap\n"
      "/CIDSystemInfo << /Registry (Adobe) /Ordering (UCS) /Supplement 0 >> def\n"
      "/CMapName /Adobe-Identity-UCS def\n/CMapType 2 def\n"
      "1 begincodespacerange\n<0000> <FFFF>\nendcodespacerange\n";
  for (int first = 0; first < kRanges; first += kMostInABlock) {
    const int count = std::min(kMostInABlock, kRanges - first);
    map += std::to_string(count) + " beginbfrange\n";
    for (int upper = first; upper < first + count; ++upper) {
      const char byte[] = {kDigits[static_cast<std::size_t>(upper >> 4)], kDigits[static_cast<std::size_t>(upper & 15)],
                           '\0'};
      map.append("<").append(byte).append("00> <").append(byte).append("FF> <").append(byte).append("00>\n");
    }
    map += "endbfrange\n";
  }
  return map + "endcmap\nCMapName currentdict /CMap defineresource pop\nend\nend\n";
}

struct Close {
  void operator()(_qpdf_data* file) const { qpdf_cleanup(&file); }
};
// Of one file; what it hands out lives as long as itself. A failed call leaves its error there.
using File = std::unique_ptr<_qpdf_data, Close>;

struct Free {
  void operator()(unsigned char* bytes) const { std::free(bytes); }
};

void replaceContent(_qpdf_data* file, qpdf_oh stream, std::string_view content) {
  const qpdf_oh none = qpdf_oh_new_null(file);
  qpdf_oh_replace_stream_data(file, stream, reinterpret_cast<const unsigned char*>(content.data()), content.size(),
                              none, none);
}

// The numbers that a font gives to characters (ISO 32000-1, 9.7.4.3).
std::vector<bool> glyphsOf(_qpdf_data* file, qpdf_oh map) {
  constexpr std::size_t kAll = 0x10000, kSize = 2;
  std::vector<bool> glyphs(kAll);
  unsigned char* bytes = nullptr;
  std::size_t size = 0;
  // Also with warnings, which odd names give, there are bytes.
  qpdf_oh_get_stream_data(file, map, qpdf_dl_generalized, nullptr, &bytes, &size);
  const std::unique_ptr<unsigned char, Free> owner(bytes);
  for (std::size_t at = 0; bytes && at + kSize <= size; at += kSize) glyphs[bytes[at] << 8 | bytes[at + 1]] = true;
  return glyphs;
}

// False: the font has no outlines to take.
bool finishFont(_qpdf_data* file, qpdf_oh font, std::string_view fontFile) {
  const qpdf_oh descendant = qpdf_oh_get_array_item(file, qpdf_oh_get_key(file, font, "/DescendantFonts"), 0);
  const qpdf_oh descriptor = qpdf_oh_get_key(file, descendant, "/FontDescriptor");
  const qpdf_oh embedded = qpdf_oh_get_key(file, descriptor, "/FontFile2");
  const std::string part = partOf(fontFile, glyphsOf(file, qpdf_oh_get_key(file, descendant, "/CIDToGIDMap")));
  if (part.empty()) return false;
  replaceContent(file, embedded, part);
  qpdf_oh_replace_key(file, qpdf_oh_get_dict(file, embedded), "/Length1",
                      qpdf_oh_new_integer(file, static_cast<long long>(part.size())));
  return true;
}

bool finishFonts(_qpdf_data* file, std::string_view fontFile) {
  // One more than the highest number of an object.
  int end = 0;
  if (!qpdf_oh_get_value_as_int(file, qpdf_oh_get_key(file, qpdf_get_trailer(file), "/Size"), &end)) return true;
  for (int number = 1; number < end; ++number) {
    const qpdf_oh object = qpdf_get_object_by_id(file, number, 0);
    if (!qpdf_oh_is_dictionary_of_type(file, object, "/Font", "/Type0")) continue;
    const qpdf_oh characters = qpdf_oh_new_stream(file);
    replaceContent(file, characters, charactersAsWritten());
    qpdf_oh_replace_key(file, object, "/ToUnicode", characters);
    if (!finishFont(file, object, fontFile)) return false;
  }
  return true;
}

}  // namespace

text::Result<std::string> finished(const std::string& bytes, std::string_view font) {
  const File file(qpdf_init());
  qpdf_silence_errors(file.get());
  qpdf_set_suppress_warnings(file.get(), QPDF_TRUE);
  qpdf_read_memory(file.get(), "a new file", bytes.data(), bytes.size(), nullptr);
  if (!qpdf_has_error(file.get()) && !finishFonts(file.get(), font)) return text::Fault{L"its font has no outlines"};
  if (!qpdf_has_error(file.get()) && qpdf_init_write_memory(file.get()) == QPDF_SUCCESS) {
    qpdf_set_deterministic_ID(file.get(), QPDF_TRUE);
    qpdf_write(file.get());
  }
  if (qpdf_has_error(file.get()))
    return text::Fault{text::fromUtf8(qpdf_get_error_full_text(file.get(), qpdf_get_error(file.get())))};
  return std::string(reinterpret_cast<const char*>(qpdf_get_buffer(file.get())), qpdf_get_buffer_length(file.get()));
}

}  // namespace pdf

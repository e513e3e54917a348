#include "pdf/finish.h"

#include <algorithm>
#include <exception>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFWriter.hh>

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
      const std::string byte{kDigits[static_cast<std::size_t>(upper >> 4)],
                             kDigits[static_cast<std::size_t>(upper & 15)]};
      map += "<" + byte + "00> <" + byte + "FF> <" + byte + "00>\n";
    }
    map += "endbfrange\n";
  }
  return map + "endcmap\nCMapName currentdict /CMap defineresource pop\nend\nend\n";
}

void finishFonts(QPDF& file, std::string_view font) {
  const QPDFObjectHandle none = QPDFObjectHandle::newNull();
  QPDFObjectHandle characters = none;
  for (QPDFObjectHandle& object : file.getAllObjects()) {
    if (object.isDictionaryOfType("/Font", "/Type0")) {
      if (characters.isNull()) characters = file.newStream(charactersAsWritten());
      object.replaceKey("/ToUnicode", characters);
    }
    if (font.empty() || !object.isDictionaryOfType("/FontDescriptor") || !object.hasKey("/FontFile2")) continue;
    QPDFObjectHandle subset = object.getKey("/FontFile2");
    const auto bytes = subset.getStreamData();
    const std::string whole =
        withComponents({reinterpret_cast<const char*>(bytes->getBuffer()), bytes->getSize()}, font);
    subset.replaceStreamData(whole, none, none);
    subset.getDict().replaceKey("/Length1", QPDFObjectHandle::newInteger(static_cast<long long>(whole.size())));
  }
}

}  // namespace

text::Result<std::string> finished(const std::string& bytes, std::string_view font) {
  try {
    QPDF file;
    file.setSuppressWarnings(true);
    file.processMemoryFile("a new file", bytes.data(), bytes.size());
    finishFonts(file, font);
    QPDFWriter writer(file);
    writer.setOutputMemory();
    writer.setDeterministicID(true);
    writer.write();
    const auto written = writer.getBufferSharedPointer();
    return std::string(reinterpret_cast<const char*>(written->getBuffer()), written->getSize());
  } catch (const std::exception& fault) {
    return text::Fault{text::fromUtf8(fault.what())};
  }
}

}  // namespace pdf

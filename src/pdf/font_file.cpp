#include "pdf/font_file.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <map>

#include "text/encoding.h"
#include "text/format.h"

namespace pdf {
namespace {

constexpr std::size_t kHeader = 12, kEntry = 16;  // of the directory of tables, in bytes
constexpr std::string_view kTrueType("\0\1\0\0", 4), kTrueTypeToo = "true";
// What the PDF library reads; it trusts that they are there.
constexpr std::string_view kNeeded[] = {"head", "maxp", "hhea", "hmtx", "cmap", "loca", "glyf", "name", "OS/2"};
// Those of an embedded font: the document itself tells which glyph a character has.
constexpr std::string_view kKept[] = {"cvt ", "fpgm", "glyf", "head", "hhea", "hmtx", "loca", "maxp", "prep"};
constexpr int kUnicode = 0, kWindows = 3;  // platforms whose tables map Unicode
constexpr std::size_t kWidthsAt = 34;      // how many glyphs have widths of their own, in bytes of "hhea"
constexpr std::uint64_t kSegments = 4;     // the format of a table for the basic plane

std::uint64_t number(std::string_view bytes, std::uint64_t at, int length) {
  std::uint64_t value = 0;
  for (int i = 0; i < length; ++i)
    value = value << 8 | static_cast<unsigned char>(bytes[static_cast<std::size_t>(at) + i]);
  return value;
}

// The tables, by name; a file that ends in the midst of one is told by `isCut`.
struct Tables {
  std::string_view bytes;
  std::size_t count = 0;
  bool isCut = false;

  explicit Tables(std::string_view file) : bytes(file), count(file.size() < kHeader ? 0 : number(file, 4, 2)) {
    isCut = kHeader > file.size() || kHeader + count * kEntry > file.size();
    for (std::size_t i = 0; i < count && !isCut; ++i)
      isCut = number(bytes, entry(i) + 8, 4) + number(bytes, entry(i) + 12, 4) > file.size();
  }
  [[nodiscard]] std::string_view name(std::size_t i) const { return bytes.substr(entry(i), 4); }
  [[nodiscard]] std::string_view table(std::string_view name) const {
    for (std::size_t i = 0; i < count; ++i)
      if (bytes.substr(entry(i), 4) == name)
        return bytes.substr(number(bytes, entry(i) + 8, 4), number(bytes, entry(i) + 12, 4));
    return {};
  }

 private:
  static std::size_t entry(std::size_t i) { return kHeader + i * kEntry; }
};

// Whether a search in such a table ends: the last segment reaches to the last character.
bool isEnded(std::string_view cmap, std::uint64_t at) {
  constexpr std::uint64_t kCountAt = 6, kEndsAt = 14, kLastCharacter = 0xFFFF;  // of segments, twice as many
  if (at + kEndsAt > cmap.size()) return false;
  const std::uint64_t last = at + kEndsAt + number(cmap, at + kCountAt, 2) / 2 * 2 - 2;
  return last >= at + kEndsAt && last + 2 <= cmap.size() && number(cmap, last, 2) == kLastCharacter;
}

bool mapsUnicode(std::string_view cmap) {
  constexpr std::uint64_t kMaps = 4, kMap = 8;  // where they are listed, in bytes
  if (cmap.size() < kMaps) return false;
  const std::uint64_t count = number(cmap, 2, 2);
  if (kMaps + count * kMap > cmap.size()) return false;
  bool isThere = false;
  for (std::uint64_t i = 0; i < count; ++i) {
    const auto platform = static_cast<int>(number(cmap, kMaps + i * kMap, 2));
    const std::uint64_t at = number(cmap, kMaps + i * kMap + 4, 4);
    if ((platform != kUnicode && platform != kWindows) || at + 2 > cmap.size()) continue;
    if (number(cmap, at, 2) != kSegments) continue;
    if (!isEnded(cmap, at)) return false;
    isThere = true;
  }
  return isThere;
}

// Whether glyphs are counted as their tables have them: the library divides and counts without a look.
bool isCounted(const Tables& tables) {
  constexpr std::size_t kHead = 54, kUnitsAt = 18, kMaximum = 6, kGlyphsAt = 4;  // bytes
  const std::string_view head = tables.table("head"), maximum = tables.table("maxp"), lines = tables.table("hhea");
  if (head.size() < kHead || maximum.size() < kMaximum || lines.size() < kWidthsAt + 2) return false;
  const std::uint64_t glyphs = number(maximum, kGlyphsAt, 2), widths = number(lines, kWidthsAt, 2);
  return number(head, kUnitsAt, 2) > 0 && widths > 0 && widths <= glyphs;
}

// The outlines of glyphs.
class Outlines {
 public:
  explicit Outlines(std::string_view font) {
    const Tables tables(font);
    glyphs_ = tables.table("glyf");
    places_ = tables.table("loca");
    const std::string_view head = tables.table("head");
    isLong_ = head.size() >= kFormatAt + 2 && number(head, kFormatAt, 2) != 0;
  }
  [[nodiscard]] std::size_t count() const {
    const std::size_t places = places_.size() / size();
    return places > 0 ? places - 1 : 0;
  }
  [[nodiscard]] bool isLong() const { return isLong_; }
  // The numbers of the glyphs that one is made of; none for one of outlines of its own.
  [[nodiscard]] std::vector<std::size_t> components(std::size_t glyph) const {
    // How its pieces are described: what stands behind a flag, and in how many bytes.
    constexpr std::uint64_t kWords = 1, kScale = 8, kMore = 32, kTwoScales = 64, kMatrix = 128;
    const std::string_view outline = of(glyph);
    std::vector<std::size_t> all;
    if (outline.size() < kOutlineHeader || number(outline, 0, 2) < kComposite) return all;
    std::uint64_t flags = kMore;
    for (std::uint64_t at = kOutlineHeader; (flags & kMore) && at + 4 <= outline.size();) {
      flags = number(outline, at, 2);
      all.push_back(static_cast<std::size_t>(number(outline, at + 2, 2)));
      at += 4 + (flags & kWords ? 4 : 2);
      at += flags & kScale ? 2 : flags & kTwoScales ? 4 : flags & kMatrix ? 8 : 0;
    }
    return all;
  }

  [[nodiscard]] std::string_view of(std::size_t glyph) const {
    if ((glyph + 2) * size() > places_.size()) return {};
    const auto place = [&](std::size_t i) {
      return number(places_, i * size(), static_cast<int>(size())) * (isLong_ ? 1 : 2);
    };
    const std::uint64_t begin = place(glyph), end = place(glyph + 1);
    return begin < end && end <= glyphs_.size() ? glyphs_.substr(begin, end - begin) : std::string_view();
  }

 private:
  static constexpr std::uint64_t kFormatAt = 50, kOutlineHeader = 10;  // bytes
  static constexpr std::uint64_t kComposite = 0x8000;                  // a negative number of contours

  [[nodiscard]] std::size_t size() const { return isLong_ ? 4 : 2; }

  std::string_view glyphs_, places_;
  bool isLong_ = false;
};

// Adds what the glyphs are made of.
void addComponents(const Outlines& outlines, std::vector<bool>& used) {
  std::vector<std::size_t> open;
  for (std::size_t i = 0; i < used.size(); ++i)
    if (used[i]) open.push_back(i);
  while (!open.empty()) {
    const std::size_t glyph = open.back();
    open.pop_back();
    for (const std::size_t part : outlines.components(glyph)) {
      if (part >= used.size() || used[part]) continue;
      used[part] = true;
      open.push_back(part);
    }
  }
}

// The widths, zeros for glyphs that aren't used: these take next to no room then.
std::string widthsOf(const Tables& tables, const std::vector<bool>& used) {
  constexpr std::size_t kWithWidth = 4, kWithout = 2;  // bytes
  const std::string_view header = tables.table("hhea");
  std::string widths(tables.table("hmtx"));
  const std::size_t count = header.size() < kWidthsAt + 2 ? 0 : number(header, kWidthsAt, 2);
  for (std::size_t glyph = 0; glyph < used.size(); ++glyph) {
    const bool isLast = glyph + 1 == count;  // whose width is that of all that follow, too
    if (used[glyph] || isLast) continue;
    const std::size_t size = glyph < count ? kWithWidth : kWithout;
    const std::size_t at = std::min(glyph, count) * kWithWidth + (glyph - std::min(glyph, count)) * kWithout;
    if (at + size <= widths.size()) widths.replace(at, size, size, '\0');
  }
  return widths;
}

void addNumber(std::string& bytes, std::uint64_t value, int length) {
  for (int shift = 8 * (length - 1); shift >= 0; shift -= 8) bytes += static_cast<char>(value >> shift & 0xFF);
}

// The sum of a table's numbers of four bytes.
std::uint64_t sumOf(std::string_view padded) {
  std::uint64_t sum = 0;
  for (std::size_t at = 0; at + 4 <= padded.size(); at += 4) sum += number(padded, at, 4);
  return sum & 0xFFFFFFFF;
}

// A file of the tables that are kept, some of them others.
std::string fileOf(const Tables& tables, const std::map<std::string_view, std::string>& others) {
  std::vector<std::string_view> names;
  for (std::size_t i = 0; i < tables.count; ++i)
    if (std::ranges::find(kKept, tables.name(i)) != std::end(kKept)) names.push_back(tables.name(i));
  std::string file(tables.bytes.substr(0, kTrueType.size())), body;
  const std::uint64_t all = names.size() * kEntry, searched = std::bit_floor(names.size()) * kEntry;
  addNumber(file, names.size(), 2);
  addNumber(file, searched, 2);
  addNumber(file, std::bit_width(names.size()) - 1, 2);
  addNumber(file, all - searched, 2);
  for (const std::string_view name : names) {
    const auto other = others.find(name);
    std::string table(other == others.end() ? tables.table(name) : std::string_view(other->second));
    const std::size_t length = table.size();
    table.resize((length + 3) / 4 * 4);
    file += name;
    addNumber(file, sumOf(table), 4);
    addNumber(file, kHeader + all + body.size(), 4);
    addNumber(file, length, 4);
    body += table;
  }
  return file + body;
}

}  // namespace

text::Fault fontFault(std::string_view bytes) {
  if (bytes.size() < kHeader || (!bytes.starts_with(kTrueType) && !bytes.starts_with(kTrueTypeToo)))
    return {L"it is no TrueType font"};
  const Tables tables(bytes);
  if (tables.isCut) return {L"the file is cut"};
  for (const std::string_view name : kNeeded)
    if (tables.table(name).empty()) return {text::format(L"its table '%s' is missing", text::fromUtf8(name))};
  if (!isCounted(tables)) return {L"its tables don't fit together"};
  if (!mapsUnicode(tables.table("cmap"))) return {L"it has no table of Unicode characters"};
  return {};
}

std::string partOf(std::string_view font, std::vector<bool> used) {
  const Tables tables(font);
  if (tables.isCut) return {};
  const Outlines outlines(font);
  used.resize(outlines.count());
  if (used.empty()) return {};
  used[0] = true;  // stands for what the font doesn't have
  addComponents(outlines, used);
  // Places of two bytes count in twos: wider gaps could lead beyond what they reach.
  const std::size_t step = outlines.isLong() ? 4 : 2;
  std::string glyphs, places;
  for (std::size_t i = 0; i <= used.size(); ++i) {
    addNumber(places, outlines.isLong() ? glyphs.size() : glyphs.size() / 2, outlines.isLong() ? 4 : 2);
    // Outlines that lie over each other could be more than all memory holds.
    if (i == used.size() || !used[i] || glyphs.size() > 2 * font.size()) continue;
    glyphs += outlines.of(i);
    glyphs.resize((glyphs.size() + step - 1) / step * step);
  }
  return fileOf(tables, {{"glyf", glyphs}, {"hmtx", widthsOf(tables, used)}, {"loca", places}});
}

}  // namespace pdf

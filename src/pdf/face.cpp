#include "pdf/face.h"

#include <hpdf_doc.h>
#include <hpdf_font.h>
#include <hpdf_fontdef.h>

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace pdf {
namespace {

constexpr char kEncoding[] = "UTF-8";
constexpr int kLastCharacter = 0xFFFF, kByte = 0xFF;
// Large tables that the document's font doesn't have, or has from the file. The library copies them by four bytes.
constexpr std::string_view kLeftOut[] = {"cmap", "hmtx", "post"};
constexpr HPDF_UINT32 kCopied = 4;

HPDF_TTFontDefAttr faceOf(HPDF_FontDef font) { return static_cast<HPDF_TTFontDefAttr>(font->attr); }

// What the library does for a font of a file, whose path it takes in the machine's old narrow form alone. Null,
// with the library's fault.
HPDF_FontDef load(HPDF_Doc doc, std::string_view file) {
  HPDF_Stream data = HPDF_MemStream_New(doc->mmgr, static_cast<HPDF_UINT>(file.size()));
  if (!data) return nullptr;
  if (HPDF_Stream_Write(data, reinterpret_cast<const HPDF_BYTE*>(file.data()), static_cast<HPDF_UINT>(file.size())) !=
      HPDF_OK) {
    HPDF_Stream_Free(data);
    return nullptr;
  }
  HPDF_FontDef font = HPDF_TTFontDef_Load(doc->mmgr, data, HPDF_TRUE);  // which owns the stream from here on
  if (!font) return nullptr;
  if (HPDF_List_Add(doc->fontdef_list, font) != HPDF_OK) {
    HPDF_FontDef_Free(font);
    return nullptr;
  }
  std::string tag = "HPDFAA";  // of the part of a font that a document embeds; ours has one font
  HPDF_TTFontDef_SetTagName(font, tag.data());
  return font;
}

// The glyphs of characters, up to the last one that is in use; 0 for those that aren't.
std::vector<HPDF_UINT16> usedGlyphs(HPDF_FontDef font) {
  const HPDF_TTFontDefAttr face = faceOf(font);
  std::vector<HPDF_UINT16> glyphs(1);
  const auto look = [&](int first, int last) {
    for (int character = first; character <= last; ++character) {
      const HPDF_UINT16 glyph = HPDF_TTFontDef_GetGlyphid(font, static_cast<HPDF_UINT16>(character));
      if (glyph == 0 || glyph >= face->num_glyphs || !face->glyph_tbl.flgs[glyph]) continue;
      glyphs.resize(static_cast<std::size_t>(character) + 1);
      glyphs.back() = glyph;
    }
  };
  // Each question is a search from the first segment on: what lies between segments isn't worth one.
  int next = 0;
  if (face->cmap.format == 0) look(next, kLastCharacter);
  for (int i = 0; face->cmap.format != 0 && i < face->cmap.seg_count_x2 / 2; ++i) {
    const int last = face->cmap.end_count[i];
    look(std::max<int>(next, face->cmap.start_count[i]), last);
    next = std::max(next, last + 1);
  }
  return glyphs;
}

// Runs of neighbouring characters, each as its first one and their widths (ISO 32000-1, 9.7.4.3).
void writeWidths(HPDF_Font font, HPDF_FontDef definition, const std::vector<HPDF_UINT16>& glyphs) {
  HPDF_Array all = HPDF_Array_New(font->mmgr), run = nullptr;
  for (std::size_t character = 0; all && character < glyphs.size(); ++character) {
    if (glyphs[character] == 0) {
      run = nullptr;
      continue;
    }
    if (!run) {
      HPDF_Array_AddNumber(all, static_cast<HPDF_INT32>(character));
      run = HPDF_Array_New(font->mmgr);
      if (HPDF_Array_Add(all, run) != HPDF_OK) break;
    }
    HPDF_Array_AddNumber(run, HPDF_TTFontDef_GetGidWidth(definition, glyphs[character]));
  }
  HPDF_Dict_Add(font, "W", all);
}

void writeGlyphs(HPDF_Stream stream, const std::vector<HPDF_UINT16>& glyphs) {
  std::string bytes;
  for (const HPDF_UINT16 glyph : glyphs) {
    bytes += static_cast<char>(glyph >> 8);
    bytes += static_cast<char>(glyph & kByte);
  }
  HPDF_MemStream_FreeData(stream);
  HPDF_Stream_Write(stream, reinterpret_cast<const HPDF_BYTE*>(bytes.data()), static_cast<HPDF_UINT>(bytes.size()));
}

}  // namespace

HPDF_Font unicodeFont(HPDF_Doc document, std::string_view file) {
  HPDF_FontDef definition = load(document, file);
  if (!definition) return nullptr;
  // The library searches a glyph for each of all characters, and tells of all. Meanwhile there is none to be found.
  std::array<HPDF_UINT16, kByte + 1> none = {};
  HPDF_TTF_CmapRange empty = {};
  empty.glyph_id_array = none.data();
  std::swap(faceOf(definition)->cmap, empty);
  HPDF_Font font = HPDF_GetFont(document, definition->base_font, kEncoding);
  std::swap(faceOf(definition)->cmap, empty);
  return font;
}

void keepUsed(HPDF_Font font) {
  const auto* attributes = static_cast<HPDF_FontAttr>(font->attr);
  if (attributes->type != HPDF_FONT_TYPE0_TT || !attributes->map_stream) return;
  const std::vector<HPDF_UINT16> glyphs = usedGlyphs(attributes->fontdef);
  writeWidths(attributes->descendant_font, attributes->fontdef, glyphs);
  writeGlyphs(attributes->map_stream->stream, glyphs);
  const HPDF_TTF_OffsetTbl& tables = faceOf(attributes->fontdef)->offset_tbl;
  for (HPDF_TTFTable* table = tables.table; table != tables.table + tables.num_tables; ++table)
    for (const std::string_view name : kLeftOut)
      if (std::string_view(table->tag, name.size()) == name) table->length = std::min(table->length, kCopied);
}

}  // namespace pdf

#include "headless/exports/dxf_frame.h"

#include <array>
#include <numeric>

#include "headless/pictures/dimension_pen.h"

namespace headless {
namespace {

// Handles of what every file has.
constexpr int kViewports = 0x8, kLineTypes = 0x5, kLayers = 0x2, kStyles = 0x3, kViews = 0x6, kSystems = 0x7,
              kApplications = 0x9, kDimensionStyles = 0xA, kBlockRecords = 0x1, kRoot = 0xC, kGroups = 0xD;
constexpr int kByBlock = 0x14, kByLayer = 0x15, kContinuous = 0x16, kHidden = 0x17, kCenter = 0x18;
constexpr int kStyle = 0x11, kApplication = 0x12, kDimensionStyle = 0x27, kViewport = 0x29;
constexpr int kPaperSpace = 0x1B, kFirstBlock = 0x20, kFirstLayer = 0x30;

constexpr std::string_view kDimensionLayer = "DIM";
constexpr int kBlackOrWhite = 7;  // as the reader's background asks for

// weight: of lines that have none of their own, in 1/100 mm.
struct Layer {
  std::string_view name, lineType;
  int weight;
};
constexpr Layer kLayerRows[] = {
    {"0", "Continuous", 25},       {"VISIBLE", "Continuous", 50}, {"HIDDEN", "HIDDEN", 25},
    {"CENTER", "CENTER", 25},      {"DIM", "Continuous", 25},     {"TEXT", "Continuous", 25},
    {"HATCH", "Continuous", 25},   {"FORMAT", "Continuous", 25},  {"TABLES", "Continuous", 25},
    {"SYMBOLS", "Continuous", 25}, {"LINES", "Continuous", 25}};

void addHeader(DxfText& out, const DxfExtent& extent, int nextHandle) {
  const auto variable = [&out](std::string_view name, int code, std::string_view value) {
    out.pair(9, name);
    out.pair(code, value);
  };
  const auto point = [&out](std::string_view name, double x, double y) {
    out.pair(9, name);
    out.point(10, x, y);
  };
  const bool isMm = extent.unit == 1;
  out.section("HEADER");
  variable("$ACADVER", 1, "AC1021");
  variable("$DWGCODEPAGE", 3, "ANSI_1252");
  point("$INSBASE", 0, 0);
  point("$EXTMIN", extent.left, extent.low);
  point("$EXTMAX", extent.right, extent.high);
  point("$LIMMIN", extent.left, extent.low);
  point("$LIMMAX", extent.right, extent.high);
  // Line types are in lengths of the sheet, whatever a view's scale is.
  variable("$LTSCALE", 40, "1.0");
  variable("$CELTSCALE", 40, "1.0");
  variable("$MEASUREMENT", 70, isMm ? "1" : "0");
  variable("$INSUNITS", 70, isMm ? "4" : "1");
  variable("$LWDISPLAY", 290, "1");
  out.pair(9, "$HANDSEED");
  out.handle(5, nextHandle);
  out.pair(0, "ENDSEC");
}

// Tables and their records.
class Tables {
 public:
  Tables(DxfText& out, const DxfExtent& extent, const DxfParts& parts, int nextHandle)
      : out_(out), extent_(extent), parts_(parts), next_(nextHandle) {}
  void add() {
    out_.section("TABLES");
    viewport();
    lineTypes();
    layers();
    style();
    begin("VIEW", kViews, 0);
    end();
    begin("UCS", kSystems, 0);
    end();
    begin("APPID", kApplications, 1);
    record("APPID", kApplication, "AcDbRegAppTableRecord", "ACAD");
    end();
    dimensionStyles();
    begin("BLOCK_RECORD", kBlockRecords, 2 + static_cast<int>(parts_.blocks.size()));
    blockRecord(kDxfModelSpace, "*Model_Space");
    blockRecord(kPaperSpace, "*Paper_Space");
    for (const DxfBlock& block : parts_.blocks) blockRecord(block.record, block.name);
    end();
    out_.pair(0, "ENDSEC");
  }

 private:
  void begin(std::string_view name, int handle, int entries) {
    table_ = handle;
    out_.pair(0, "TABLE");
    out_.pair(2, name);
    out_.handle(5, handle);
    out_.handle(330, 0);
    out_.pair(100, "AcDbSymbolTable");
    out_.whole(70, entries);
  }
  void end() { out_.pair(0, "ENDTAB"); }
  void named(std::string_view kind, std::string_view name) {
    out_.pair(100, "AcDbSymbolTableRecord");
    out_.pair(100, kind);
    out_.pair(2, name);
    out_.whole(70, 0);
  }
  void record(std::string_view type, int handle, std::string_view kind, std::string_view name) {
    out_.pair(0, type);
    out_.handle(5, handle);
    out_.handle(330, table_);
    named(kind, name);
  }
  void blockRecord(int handle, std::string_view name) {
    out_.pair(0, "BLOCK_RECORD");
    out_.handle(5, handle);
    out_.handle(330, table_);
    out_.pair(100, "AcDbSymbolTableRecord");
    out_.pair(100, "AcDbBlockTableRecord");
    out_.pair(2, name);
  }

  void dimensionStyle(int handle, std::string_view name) {
    out_.pair(0, "DIMSTYLE");
    out_.handle(105, handle);
    out_.handle(330, kDimensionStyles);
    named("AcDbDimStyleTableRecord", name);
  }
  // As the sheet's own dimensions look, so that a reader that draws them anew draws the same.
  void dimensionStyles() {
    begin("DIMSTYLE", kDimensionStyles, 1 + static_cast<int>(parts_.scales.size()));
    out_.pair(100, "AcDbDimStyleTable");
    dimensionStyle(kDimensionStyle, "Standard");
    for (std::size_t i = 0; i < parts_.scales.size(); ++i) {
      dimensionStyle(next_++, dxfDimensionStyle(i));
      out_.number(41, kArrow * extent_.unit);
      out_.number(42, kBeyondLine * extent_.unit);  // the gap of extension lines
      out_.number(44, kBeyondLine * extent_.unit);  // how far they go on
      out_.number(140, parts_.textHeight);
      out_.number(144, parts_.scales[i]);
      out_.number(147, kTextGap * extent_.unit);
      out_.whole(73, 0);  // texts lie along the line,
      out_.whole(74, 0);
      out_.whole(77, 1);  // above it,
      out_.whole(78, 8);  // without zeros at their end
      out_.whole(271, 4);
    }
    end();
  }

  // A reader opens the drawing as a whole.
  void viewport() {
    const double width = extent_.right - extent_.left, height = extent_.high - extent_.low;
    begin("VPORT", kViewports, 1);
    record("VPORT", kViewport, "AcDbViewportTableRecord", "*Active");
    out_.point(10, 0, 0);
    out_.point(11, 1, 1);
    out_.point(12, (extent_.left + extent_.right) / 2, (extent_.low + extent_.high) / 2);
    out_.number(40, height > 0 ? height : 1);
    out_.number(41, height > 0 && width > 0 ? width / height : 1);
    end();
  }
  void lineType(int handle, std::string_view name, std::string_view words, std::span<const double> dashes) {
    record("LTYPE", handle, "AcDbLinetypeTableRecord", name);
    out_.pair(3, words);
    out_.whole(72, 65);
    out_.whole(73, static_cast<int>(dashes.size()));
    out_.number(40, std::accumulate(dashes.begin(), dashes.end(), 0.0) * extent_.unit);
    for (std::size_t i = 0; i < dashes.size(); ++i) {
      out_.number(49, (i % 2 == 0 ? dashes[i] : -dashes[i]) * extent_.unit);
      out_.whole(74, 0);
    }
  }
  void lineTypes() {
    begin("LTYPE", kLineTypes, 5);
    lineType(kByBlock, "ByBlock", "", {});
    lineType(kByLayer, "ByLayer", "", {});
    lineType(kContinuous, "Continuous", "Solid line", {});
    lineType(kHidden, "HIDDEN", "Dashed __ __ __", dashesOf(LineKind::hidden));
    lineType(kCenter, "CENTER", "Long dashed dotted ____ . ____", dashesOf(LineKind::axis));
    end();
  }
  void layers() {
    begin("LAYER", kLayers, static_cast<int>(std::size(kLayerRows)));
    int handle = kFirstLayer;
    for (const Layer& layer : kLayerRows) {
      record("LAYER", handle++, "AcDbLayerTableRecord", layer.name);
      out_.whole(62, kBlackOrWhite);
      out_.pair(6, layer.lineType);
      out_.whole(370, layer.weight);
    }
    end();
  }
  void style() {
    begin("STYLE", kStyles, 1);
    record("STYLE", kStyle, "AcDbTextStyleTableRecord", "STANDARD");
    out_.number(40, 0);
    out_.number(41, 1);
    out_.number(50, 0);
    out_.whole(71, 0);
    out_.number(42, 1);
    out_.pair(3, "arial.ttf");
    out_.pair(4, "");
    end();
  }

  DxfText& out_;
  const DxfExtent& extent_;
  const DxfParts& parts_;
  int next_;
  int table_ = 0;
};

void addBlock(DxfText& out, std::string_view name, int owner, int handle, const DxfText* entities = nullptr) {
  const auto entity = [&](std::string_view type, std::string_view kind, int own) {
    out.pair(0, type);
    out.handle(5, own);
    out.handle(330, owner);
    out.pair(100, "AcDbEntity");
    out.pair(8, "0");
    out.pair(100, kind);
  };
  entity("BLOCK", "AcDbBlockBegin", handle);
  out.pair(2, name);
  out.whole(70, entities ? 1 : 0);  // 1: nobody gave it a name
  out.point(10, 0, 0);
  out.pair(3, name);
  out.pair(1, "");
  if (entities) out.add(*entities);
  entity("ENDBLK", "AcDbBlockEnd", handle + 1);
}

}  // namespace

std::string_view dxfLayer(const SheetPen& pen) {
  if (pen.kind == LineKind::hidden) return "HIDDEN";
  if (pen.kind == LineKind::axis) return "CENTER";
  if (pen.kind == LineKind::hatch) return "HATCH";
  if (pen.part == SheetPart::views) return "VISIBLE";
  if (pen.part == SheetPart::dimensions) return kDimensionLayer;
  return pen.part == SheetPart::notes ? "TEXT" : partName(pen.part);
}

std::string_view dxfTextLayer(SheetPart part) {
  const bool isPlain = part == SheetPart::notes || part == SheetPart::views;
  return part == SheetPart::dimensions ? kDimensionLayer : isPlain ? "TEXT" : partName(part);
}

std::string dxfDimensionStyle(std::size_t number) {
  return number == 0 ? "KELVANE" : "KELVANE_" + std::to_string(number + 1);
}

void addDxfHead(DxfText& out, const DxfExtent& extent, const DxfParts& parts, int nextHandle) {
  addHeader(out, extent, nextHandle + static_cast<int>(parts.scales.size()));
  Tables(out, extent, parts, nextHandle).add();
  out.section("BLOCKS");
  addBlock(out, "*Model_Space", kDxfModelSpace, kFirstBlock);
  addBlock(out, "*Paper_Space", kPaperSpace, kFirstBlock + 2);
  for (const DxfBlock& block : parts.blocks) addBlock(out, block.name, block.record, block.record + 1, &block.entities);
  out.pair(0, "ENDSEC");
}

void addDxfEnd(DxfText& out) {
  const auto dictionary = [&out](int handle, int owner) {
    out.pair(0, "DICTIONARY");
    out.handle(5, handle);
    out.handle(330, owner);
    out.pair(100, "AcDbDictionary");
    out.whole(281, 1);
  };
  out.section("OBJECTS");
  dictionary(kRoot, 0);
  out.pair(3, "ACAD_GROUP");
  out.handle(350, kGroups);
  dictionary(kGroups, kRoot);
  out.pair(0, "ENDSEC");
  out.pair(0, "EOF");
}

}  // namespace headless

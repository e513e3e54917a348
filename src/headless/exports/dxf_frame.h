// What an exchange drawing has around its entities: header, tables of layers and line types, blocks, objects.
#pragma once

#include <string>
#include <vector>

#include "headless/exports/dxf_text.h"
#include "headless/pictures/sheet_stroke.h"

namespace headless {

// The layer of a line, and of a text where one is asked for.
std::string_view dxfLayer(const SheetPen& pen);
std::string_view dxfTextLayer(SheetPart part);

// Lengths are in the drawing's unit.
struct DxfExtent {
  double left = 0, low = 0, right = 0, high = 0;
  double unit = 1;  // the length of a millimetre
};
// The block record of the model space, which owns all entities, and the first number that entities may have as handles.
constexpr int kDxfModelSpace = 0x1F, kDxfFirstEntity = 0x100;
// A block with what lies in it, in the drawing's coordinates. Its handles are three, from that of its record on, which
// its entities name as their owner.
struct DxfBlock {
  std::string name;
  int record = 0;
  DxfText entities;
};
// How dimensions look, at a scale of the drawing: "KELVANE", "KELVANE_2" and so on by their numbers from 0.
std::string dxfDimensionStyle(std::size_t number);
struct DxfParts {
  std::vector<DxfBlock> blocks;
  std::vector<double> scales;  // of the styles of dimensions: the model's length for a unit of the drawing
  double textHeight = 3.5;     // of dimensions, in the drawing's unit
};
// nextHandle: above those of the entities and blocks. The handles of styles are those from nextHandle on, too.
void addDxfHead(DxfText& out, const DxfExtent& extent, const DxfParts& parts, int nextHandle);
void addDxfEnd(DxfText& out);

}  // namespace headless

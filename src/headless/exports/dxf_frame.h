// What an exchange drawing has around its entities: header, tables of layers and line types, blocks, objects.
#pragma once

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
// nextHandle: above those of the entities.
void addDxfHead(DxfText& out, const DxfExtent& extent, int nextHandle);
void addDxfEnd(DxfText& out);

}  // namespace headless

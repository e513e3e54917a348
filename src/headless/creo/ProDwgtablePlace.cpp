// Where tables stand, and what the screen shows of them.
#include <cmath>

#include "creo/ProDwgtable.h"
#include "headless/creo/drawing_operation.h"
#include "headless/creo/on_top.h"

namespace creo {

using headless::Model;
using headless::onTable;
using headless::TableRecord;
using State = headless::Session::State;

namespace {

bool isPlace(const ProPoint& point) { return std::isfinite(point.x) && std::isfinite(point.y); }

}  // namespace

ProError ProDwgtableSegMove(const ProDwgtable& table, int segment, const ProPoint& place, bool /*repaint*/) {
  return onTable("ProDwgtableSegMove", table, [&](State&, Model& m, TableRecord& record) -> ProError {
    if (!isPlace(place)) return ProBadInputs;
    headless::SegmentRecord* moved = headless::segmentOf(record, segment);
    if (!moved) return ProNotFound;
    if (moved->position.x == place.x && moved->position.y == place.y) return ProNoError;
    moved->position.x = place.x;
    moved->position.y = place.y;
    m.document->touch(nullptr);
    return ProNoError;
  });
}

// What is on the screen is no part of the drawing.
ProError ProDwgtableDisplay(const ProDwgtable& table) {
  return onTable("ProDwgtableDisplay", table, [](State&, Model&, TableRecord&) { return ProNoError; });
}

ProError ProDwgtableErase(const ProDwgtable& table) {
  return onTable("ProDwgtableErase", table, [](State&, Model&, TableRecord&) { return ProNoError; });
}

// What cells show is worked out when they are asked for, so that nothing is ever behind.
ProError ProDrawingTablesUpdate(ProMdl drawing) {
  return headless::onDrawing("ProDrawingTablesUpdate", drawing, [](State& state, Model& m) {
    return headless::isOnTop(state, m) ? ProNoError : ProGeneralError;
  });
}

Got<ProPoint> ProPntTrfEval(const ProPoint& point, const ProSheetMatrix& matrix) {
  return headless::operation("ProPntTrfEval", [&](State&) -> Got<ProPoint> {
    const ProPoint moved{point.x * matrix.scaleX + matrix.offsetX, point.y * matrix.scaleY + matrix.offsetY};
    if (!isPlace(moved)) return ProBadInputs;
    return moved;
  });
}

}  // namespace creo

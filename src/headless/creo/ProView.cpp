#include "creo/ProView.h"

#include <algorithm>
#include <cmath>

#include "headless/creo/drawing_operation.h"
#include "headless/creo/solid_operation.h"
#include "headless/model/states.h"
#include "headless/model/symbols.h"
#include "text/encoding.h"

namespace creo {

using headless::Model;
using headless::ModelRecord;
using headless::onSolid;
using headless::ViewRecord;
using State = headless::Session::State;

namespace {

// Numbers of lists are rounded: 0.707 is meant for the root of a half.
constexpr double kNearness = 1e-3;

double dot(const ProViewMatrix& m, std::size_t row, std::size_t other) {
  return m[3 * row] * m[3 * other] + m[3 * row + 1] * m[3 * other + 1] + m[3 * row + 2] * m[3 * other + 2];
}

double determinant(const ProViewMatrix& m) {
  return m[0] * (m[4] * m[8] - m[5] * m[7]) - m[1] * (m[3] * m[8] - m[5] * m[6]) + m[2] * (m[3] * m[7] - m[4] * m[6]);
}

// Not for a matrix with something else than numbers in it: nothing is near them.
bool isRotation(const ProViewMatrix& matrix) {
  for (std::size_t row = 0; row < 3; ++row)
    for (std::size_t other = row; other < 3; ++other)
      if (!(std::fabs(dot(matrix, row, other) - (row == other ? 1 : 0)) < kNearness)) return false;
  return determinant(matrix) > 0;
}

// body: (model, view).
template <class Body>
ProError onSavedView(std::string_view operation, ProMdl solid, const std::wstring& name, Body body) {
  return onSolid(operation, solid, [&](State&, Model& m) -> ProError {
    ViewRecord* view = headless::recordNamed(m.document->record.views, text::toUtf8(name));
    return view ? body(m, *view) : ProNotFound;
  });
}

// body: (model, view).
template <class Body>
auto onSheetView(std::string_view operation, const ProView& view, Body body)
    -> std::invoke_result_t<Body, Model&, ViewRecord&> {
  using Result = std::invoke_result_t<Body, Model&, ViewRecord&>;
  return headless::onDrawing(operation, view.drawing, [&](State&, Model& m) -> Result {
    ViewRecord* record = headless::recordOf(m.document->record.views, view.id);
    if (!record) return Result(ProNotFound);
    return body(m, *record);
  });
}

}  // namespace

ProError ProViewRetrieve(ProMdl solid, const std::wstring& name) {
  return onSavedView("ProViewRetrieve", solid, name, [](Model& m, const ViewRecord& view) {
    headless::makeActive(m, &ModelRecord::activeView, view.name);
    return ProNoError;
  });
}

ProError ProViewReset(ProMdl solid) {
  return onSolid("ProViewReset", solid, [](State&, Model& m) {
    headless::makeActive(m, &ModelRecord::activeView, {});
    return ProNoError;
  });
}

ProError ProViewStore(ProMdl solid, const std::wstring& name, const ProViewMatrix& orientation) {
  return onSolid("ProViewStore", solid, [&](State&, Model& m) -> ProError {
    if (name.empty() || !isRotation(orientation)) return ProBadInputs;
    auto& views = m.document->record.views;
    ViewRecord* view = headless::recordNamed(views, text::toUtf8(name));
    if (!view) {
      const int id = headless::nextId(views);
      if (id == 0) return ProGeneralError;
      view = &views.emplace_back();
      view->id = id;
      view->name = text::toUtf8(name);
    } else if (std::equal(orientation.begin(), orientation.end(), view->matrix.begin(), view->matrix.end())) {
      return ProNoError;
    }
    view->matrix.assign(orientation.begin(), orientation.end());
    m.document->touch(nullptr);
    return ProNoError;
  });
}

ProError ProViewRename(ProMdl solid, const std::wstring& name, const std::wstring& newName) {
  return onSavedView("ProViewRename", solid, name, [&](Model& m, ViewRecord& view) {
    if (newName.empty()) return ProBadInputs;
    const std::string now = text::toUtf8(newName);
    const ViewRecord* other = headless::recordNamed(m.document->record.views, now);
    if (other && other != &view) return ProExists;
    if (view.name == now) return ProNoError;
    const std::string former = std::exchange(view.name, now);
    headless::replaceReferences(m, ProItemType::view, former, now);
    m.document->touch(nullptr);
    return ProNoError;
  });
}

Got<std::wstring> ProDrawingViewNameGet(const ProView& view) {
  return onSheetView("ProDrawingViewNameGet", view, [](Model&, const ViewRecord& record) -> Got<std::wstring> {
    if (record.name.empty()) return ProNotFound;
    return text::fromUtf8(record.name);
  });
}

Got<ProDisplayStyle> ProDrawingViewDisplayGet(const ProView& view) {
  return onSheetView("ProDrawingViewDisplayGet", view, [](Model&, const ViewRecord& record) -> Got<ProDisplayStyle> {
    return static_cast<ProDisplayStyle>(record.displayStyle);
  });
}

ProError ProDrawingViewDisplaySet(const ProView& view, ProDisplayStyle style) {
  return onSheetView("ProDrawingViewDisplaySet", view, [&](Model& m, ViewRecord& record) -> ProError {
    if (style == ProDisplayStyle::shaded) return ProBadInputs;
    if (record.displayStyle == static_cast<int>(style)) return ProNoError;
    record.displayStyle = static_cast<int>(style);
    m.document->touch(nullptr);
    return ProNoError;
  });
}

}  // namespace creo

#include "creo/ProDrawingView.h"

#include <algorithm>

#include "headless/creo/drawing_operation.h"
#include "headless/model/sheet_views.h"

namespace creo {

using headless::Model;
using headless::onDrawing;
using State = headless::Session::State;

namespace {

// gone: what a view that isn't there gives.
template <class Get>
Got<int> ofView(std::string_view operation, const ProView& view, ProError gone, Get get) {
  return onDrawing(operation, view.drawing, [&](State&, Model& m) -> Got<int> {
    if (const int sheet = headless::sheetOfOwnView(view.id); headless::sheetOf(*m.document, sheet)) {
      headless::ViewRecord own;
      own.id = view.id;
      own.sheet = sheet;
      return get(own);
    }
    const auto& views = m.document->record.views;
    const auto found = std::find_if(views.begin(), views.end(), [&](const auto& entry) { return entry.id == view.id; });
    if (found == views.end()) return gone;
    return get(*found);
  });
}

Got<ProView> ownViewOf(std::string_view operation, ProMdl drawing, int sheet) {
  return onDrawing(operation, drawing, [&](State&, Model& m) -> Got<ProView> {
    if (!headless::sheetOf(*m.document, sheet)) return ProGeneralError;
    return ProView{m.handle, headless::ownViewId(sheet)};
  });
}

}  // namespace

Got<std::vector<ProView>> ProDrawingViewsCollect(ProMdl drawing) {
  return onDrawing("ProDrawingViewsCollect", drawing, [](State&, Model& m) -> Got<std::vector<ProView>> {
    std::vector<ProView> views;
    for (const headless::ViewRecord& view : m.document->record.views) views.push_back({m.handle, view.id});
    return headless::collected(std::move(views));
  });
}

Got<int> ProDrawingViewIdGet(const ProView& view) {
  return ofView("ProDrawingViewIdGet", view, ProBadInputs,
                [](const headless::ViewRecord& record) { return record.id; });
}

// A view that names no sheet stands on the first.
Got<int> ProDrawingViewSheetGet(const ProView& view) {
  return ofView("ProDrawingViewSheetGet", view, ProNotFound,
                [](const headless::ViewRecord& record) { return std::max(record.sheet, 1); });
}

Got<ProView> ProDrawingBackgroundViewGet(ProMdl drawing, int sheet) {
  return ownViewOf("ProDrawingBackgroundViewGet", drawing, sheet);
}

Got<ProView> ProDrawingOverlayviewGet(ProMdl drawing, int sheet) {
  return ownViewOf("ProDrawingOverlayviewGet", drawing, sheet);
}

// The trees have no picture here: what is asked of them is always of this moment.
ProError ProTreetoolRefresh(ProMdl model) {
  return headless::onModel("ProTreetoolRefresh", model, [](State&, Model&) { return ProNoError; });
}

ProError ProDrawingtreeRefresh(ProMdl drawing, int window) {
  return onDrawing("ProDrawingtreeRefresh", drawing, [&](State& state, Model& m) {
    const int shown = window == kActiveWindow ? state.windows.current() : window;
    return state.windows.model(shown) == m.handle ? ProNoError : ProBadInputs;
  });
}

}  // namespace creo

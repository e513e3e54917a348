#include "creo/ProUIDrawingarea.h"

#include "headless/creo/proui_calls.h"

namespace creo {

using headless::change;
using headless::changeDialog;
using headless::Component;
using headless::Dialog;
using headless::Kind;
using headless::LabelPlace;
using headless::operation;
using State = headless::Session::State;

namespace {

// Changes how a label lies on its area.
template <class Apply>
ProError changePlace(std::string_view name, const std::string& device, const std::string& label, Apply apply) {
  return change(name, device, label, Kind::label, [&](Component& c) {
    auto* place = std::get_if<std::unique_ptr<LabelPlace>>(&c.content);
    if (place) apply(**place);
    return place ? ProNoError : ProBadInputs;
  });
}

}  // namespace

Got<std::string> ProNavigatorpanePHolderDevicenameGet(int window) {
  return operation("ProNavigatorpanePHolderDevicenameGet", [&](State& state) -> Got<std::string> {
    if (!state.windows.has(window)) return ProBadInputs;
    auto& device = state.ui.state().dialogs[headless::kWindowDevice];
    if (!device) {
      device = std::make_shared<Dialog>(headless::kWindowDevice);
      device->visible = true;
    }
    return std::string(headless::kWindowDevice);
  });
}

ProError ProUIDrawingareaLabelAdd(const std::string& device, const std::string& area, const std::string& label) {
  return changeDialog("ProUIDrawingareaLabelAdd", device, [&](Dialog& holder) -> ProError {
    if (area != kModelArea) return ProNotFound;
    Component made;
    made.kind = Kind::label;
    made.content = std::make_unique<LabelPlace>();
    return holder.addOverlay(label, std::move(made));
  });
}

ProError ProUIDrawingareaLabelRemove(const std::string& device, const std::string& area, const std::string& label) {
  return changeDialog("ProUIDrawingareaLabelRemove", device, [&](Dialog& holder) -> ProError {
    if (area != kModelArea) return ProNotFound;
    return holder.remove(label, Kind::label);
  });
}

ProError ProUILabelEnableResizing(const std::string& device, const std::string& label) {
  return changePlace("ProUILabelEnableResizing", device, label, [](LabelPlace& place) { place.resizes = true; });
}

ProError ProUILabelAnchorSet(const std::string& device, const std::string& label, const ProUIAnchor& anchor) {
  return changePlace("ProUILabelAnchorSet", device, label, [&](LabelPlace& place) { place.anchor = anchor; });
}

ProError ProUILabelPositionSet(const std::string& device, const std::string& label, int x, int y) {
  return changePlace("ProUILabelPositionSet", device, label, [&](LabelPlace& place) {
    place.x = x;
    place.y = y;
  });
}

ProError ProUILabelHelptextSet(const std::string& device, const std::string& label, const std::wstring& text) {
  return changePlace("ProUILabelHelptextSet", device, label, [&](LabelPlace& place) { place.help = text; });
}

ProError ProUILabelBitmapSet(const std::string& device, const std::string& label, const std::string& image) {
  return change("ProUILabelBitmapSet", device, label, Kind::label, [&](Component& c) { c.image = image; });
}

}  // namespace creo

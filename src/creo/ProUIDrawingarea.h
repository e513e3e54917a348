// Labels on drawing areas: small pictures that lie on Creo's own window.
#pragma once

#include "creo/ProUI.h"

namespace creo {

// The drawing area of a model window.
constexpr const char* kModelArea = "proe_win";

// The device that holds a window's navigator and drawing areas; it stands for a dialog in the calls on labels.
// ProBadInputs: no such window.
Got<std::string> ProNavigatorpanePHolderDevicenameGet(int window);

// A label is seen once it has a position. ProNotFound: no such area; ProExists: a label of that name is there.
ProError ProUIDrawingareaLabelAdd(const std::string& device, const std::string& area, const std::string& label);
ProError ProUIDrawingareaLabelRemove(const std::string& device, const std::string& area, const std::string& label);

// Where a label hangs: sides of the area that it keeps its distance from.
struct ProUIAnchor {
  int top = 0, left = 0, resizes = 0;
};
// This and the next two count for labels on drawing areas alone.
ProError ProUILabelEnableResizing(const std::string& device, const std::string& label);
ProError ProUILabelAnchorSet(const std::string& device, const std::string& label, const ProUIAnchor& anchor);
// In dots from the area's upper left corner.
ProError ProUILabelPositionSet(const std::string& device, const std::string& label, int x, int y);
ProError ProUILabelHelptextSet(const std::string& device, const std::string& label, const std::wstring& text);
ProError ProUILabelBitmapSet(const std::string& device, const std::string& label, const std::string& image);

}  // namespace creo

#include "creo/ProUIInputpanel.h"

#include "headless/creo/proui_calls.h"

namespace creo {

using headless::ask;
using headless::change;
using headless::Component;
using headless::Kind;

Got<std::wstring> ProUIInputpanelValueGet(const std::string& dialog, const std::string& panel) {
  return ask<std::wstring>("ProUIInputpanelValueGet", dialog, panel, Kind::inputpanel,
                           [](const Component& c) { return c.text; });
}

ProError ProUIInputpanelValueSet(const std::string& dialog, const std::string& panel, const std::wstring& value) {
  return change("ProUIInputpanelValueSet", dialog, panel, Kind::inputpanel, [&](Component& c) { c.text = value; });
}

ProError ProUIInputpanelActivateActionSet(const std::string& dialog, const std::string& panel, ProUIAction action) {
  return change("ProUIInputpanelActivateActionSet", dialog, panel, Kind::inputpanel,
                [&](Component& c) { c.action = headless::shared(std::move(action)); });
}

ProError ProUIInputpanelShow(const std::string& dialog, const std::string& panel) {
  return change("ProUIInputpanelShow", dialog, panel, Kind::inputpanel, [](Component& c) { c.shown = true; });
}

ProError ProUIInputpanelHide(const std::string& dialog, const std::string& panel) {
  return change("ProUIInputpanelHide", dialog, panel, Kind::inputpanel, [](Component& c) { c.shown = false; });
}

Got<bool> ProUIInputpanelIsVisible(const std::string& dialog, const std::string& panel) {
  return ask<bool>("ProUIInputpanelIsVisible", dialog, panel, Kind::inputpanel,
                   [](const Component& c) { return c.shown; });
}

}  // namespace creo

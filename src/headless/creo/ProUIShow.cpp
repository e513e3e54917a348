#include "creo/ProUIShow.h"

#include "headless/creo/proui_calls.h"

namespace creo {

using headless::Kind;

namespace {

ProError show(std::string_view name, const std::string& dialog, const std::string& component, Kind kind, bool on) {
  return headless::change(name, dialog, component, kind, [on](headless::Component& c) { c.shown = on; });
}

Got<bool> isShown(std::string_view name, const std::string& dialog, const std::string& component, Kind kind) {
  return headless::ask<bool>(name, dialog, component, kind, [](const headless::Component& c) { return c.shown; });
}

}  // namespace

ProError ProUILabelShow(const std::string& dialog, const std::string& label) {
  return show("ProUILabelShow", dialog, label, Kind::label, true);
}

ProError ProUILabelHide(const std::string& dialog, const std::string& label) {
  return show("ProUILabelHide", dialog, label, Kind::label, false);
}

ProError ProUIPushbuttonShow(const std::string& dialog, const std::string& pushbutton) {
  return show("ProUIPushbuttonShow", dialog, pushbutton, Kind::pushbutton, true);
}

ProError ProUIPushbuttonHide(const std::string& dialog, const std::string& pushbutton) {
  return show("ProUIPushbuttonHide", dialog, pushbutton, Kind::pushbutton, false);
}

ProError ProUICheckbuttonShow(const std::string& dialog, const std::string& checkbutton) {
  return show("ProUICheckbuttonShow", dialog, checkbutton, Kind::checkbutton, true);
}

ProError ProUICheckbuttonHide(const std::string& dialog, const std::string& checkbutton) {
  return show("ProUICheckbuttonHide", dialog, checkbutton, Kind::checkbutton, false);
}

ProError ProUIOptionmenuShow(const std::string& dialog, const std::string& optionmenu) {
  return show("ProUIOptionmenuShow", dialog, optionmenu, Kind::optionmenu, true);
}

ProError ProUIOptionmenuHide(const std::string& dialog, const std::string& optionmenu) {
  return show("ProUIOptionmenuHide", dialog, optionmenu, Kind::optionmenu, false);
}

Got<bool> ProUIOptionmenuIsVisible(const std::string& dialog, const std::string& optionmenu) {
  return isShown("ProUIOptionmenuIsVisible", dialog, optionmenu, Kind::optionmenu);
}

Got<bool> ProUICheckbuttonIsVisible(const std::string& dialog, const std::string& checkbutton) {
  return isShown("ProUICheckbuttonIsVisible", dialog, checkbutton, Kind::checkbutton);
}

ProError ProUITextareaShow(const std::string& dialog, const std::string& textarea) {
  return show("ProUITextareaShow", dialog, textarea, Kind::textarea, true);
}

ProError ProUITextareaHide(const std::string& dialog, const std::string& textarea) {
  return show("ProUITextareaHide", dialog, textarea, Kind::textarea, false);
}

ProError ProUITableShow(const std::string& dialog, const std::string& table) {
  return show("ProUITableShow", dialog, table, Kind::table, true);
}

ProError ProUITableHide(const std::string& dialog, const std::string& table) {
  return show("ProUITableHide", dialog, table, Kind::table, false);
}

}  // namespace creo

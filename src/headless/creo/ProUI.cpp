#include "creo/ProUI.h"

#include <algorithm>

#include "headless/creo/proui_calls.h"

namespace creo {

using headless::ask;
using headless::change;
using headless::Component;
using headless::Kind;
using headless::Progress;

namespace {

// A bar's ends never cross; its value stays between them.
ProError setRange(Progress& bar, int minimum, int maximum) {
  if (minimum > maximum) return ProBadInputs;
  bar = {minimum, maximum, std::clamp(bar.value, minimum, maximum)};
  return ProNoError;
}

}  // namespace

ProError ProUIPushbuttonActivateActionSet(const std::string& dialog, const std::string& button, ProUIAction action) {
  return change("ProUIPushbuttonActivateActionSet", dialog, button, Kind::pushbutton,
                [&](Component& c) { c.action = headless::shared(std::move(action)); });
}

ProError ProUIPushbuttonEnable(const std::string& dialog, const std::string& button) {
  return change("ProUIPushbuttonEnable", dialog, button, Kind::pushbutton, [](Component& c) { c.enabled = true; });
}

ProError ProUIPushbuttonDisable(const std::string& dialog, const std::string& button) {
  return change("ProUIPushbuttonDisable", dialog, button, Kind::pushbutton, [](Component& c) { c.enabled = false; });
}

ProError ProUIPushbuttonBitmapSet(const std::string& dialog, const std::string& button, const std::string& image) {
  return change("ProUIPushbuttonBitmapSet", dialog, button, Kind::pushbutton, [&](Component& c) { c.image = image; });
}

ProError ProUICheckbuttonActivateActionSet(const std::string& dialog, const std::string& button, ProUIAction action) {
  return change("ProUICheckbuttonActivateActionSet", dialog, button, Kind::checkbutton,
                [&](Component& c) { c.action = headless::shared(std::move(action)); });
}

ProError ProUICheckbuttonTextSet(const std::string& dialog, const std::string& button, const std::wstring& text) {
  return change("ProUICheckbuttonTextSet", dialog, button, Kind::checkbutton, [&](Component& c) { c.text = text; });
}

ProError ProUICheckbuttonSet(const std::string& dialog, const std::string& button) {
  return change("ProUICheckbuttonSet", dialog, button, Kind::checkbutton, [](Component& c) { c.checked = true; });
}

ProError ProUICheckbuttonUnset(const std::string& dialog, const std::string& button) {
  return change("ProUICheckbuttonUnset", dialog, button, Kind::checkbutton, [](Component& c) { c.checked = false; });
}

Got<bool> ProUICheckbuttonGetState(const std::string& dialog, const std::string& button) {
  return ask<bool>("ProUICheckbuttonGetState", dialog, button, Kind::checkbutton,
                   [](const Component& c) { return c.checked; });
}

ProError ProUIOptionmenuNamesSet(const std::string& dialog, const std::string& menu, std::vector<std::string> names) {
  return change("ProUIOptionmenuNamesSet", dialog, menu, Kind::optionmenu, [&](Component& c) {
    auto& choices = c.choices();
    choices.names = std::move(names);
    choices.labels.clear();
    choices.selected.assign(choices.names.begin(), choices.names.begin() + (choices.names.empty() ? 0 : 1));
  });
}

Got<std::vector<std::string>> ProUIOptionmenuNamesGet(const std::string& dialog, const std::string& menu) {
  return ask<std::vector<std::string>>("ProUIOptionmenuNamesGet", dialog, menu, Kind::optionmenu,
                                       [](const Component& c) { return c.choices().names; });
}

ProError ProUIOptionmenuLabelsSet(const std::string& dialog, const std::string& menu,
                                  std::vector<std::wstring> labels) {
  return change("ProUIOptionmenuLabelsSet", dialog, menu, Kind::optionmenu, [&](Component& c) {
    if (labels.size() != c.choices().names.size()) return ProBadInputs;
    c.choices().labels = std::move(labels);
    return ProNoError;
  });
}

ProError ProUIOptionmenuSelectednamesSet(const std::string& dialog, const std::string& menu,
                                         std::vector<std::string> names) {
  return change("ProUIOptionmenuSelectednamesSet", dialog, menu, Kind::optionmenu, [&](Component& c) {
    const auto& known = c.choices().names;
    if (names.size() > 1) return ProBadInputs;  // an option menu shows one
    if (!names.empty() && std::find(known.begin(), known.end(), names.front()) == known.end()) return ProNotFound;
    c.choices().selected = std::move(names);
    return ProNoError;
  });
}

Got<std::vector<std::string>> ProUIOptionmenuSelectednamesGet(const std::string& dialog, const std::string& menu) {
  return ask<std::vector<std::string>>("ProUIOptionmenuSelectednamesGet", dialog, menu, Kind::optionmenu,
                                       [](const Component& c) { return c.choices().selected; });
}

ProError ProUIOptionmenuSelectActionSet(const std::string& dialog, const std::string& menu, ProUIAction action) {
  return change("ProUIOptionmenuSelectActionSet", dialog, menu, Kind::optionmenu,
                [&](Component& c) { c.action = headless::shared(std::move(action)); });
}

ProError ProUILabelTextSet(const std::string& dialog, const std::string& label, const std::wstring& text) {
  return change("ProUILabelTextSet", dialog, label, Kind::label, [&](Component& c) { c.text = text; });
}

Got<std::string> ProUILabelBitmapGet(const std::string& dialog, const std::string& label) {
  return ask<std::string>("ProUILabelBitmapGet", dialog, label, Kind::label,
                          [](const Component& c) { return c.image; });
}

ProError ProUIProgressbarMinintegerSet(const std::string& dialog, const std::string& bar, int value) {
  return change("ProUIProgressbarMinintegerSet", dialog, bar, Kind::progressbar,
                [&](Component& c) { return setRange(c.progress(), value, c.progress().maximum); });
}

ProError ProUIProgressbarMaxintegerSet(const std::string& dialog, const std::string& bar, int value) {
  return change("ProUIProgressbarMaxintegerSet", dialog, bar, Kind::progressbar,
                [&](Component& c) { return setRange(c.progress(), c.progress().minimum, value); });
}

ProError ProUIProgressbarIntegerSet(const std::string& dialog, const std::string& bar, int value) {
  return change("ProUIProgressbarIntegerSet", dialog, bar, Kind::progressbar, [&](Component& c) {
    Progress& progress = c.progress();
    if (value < progress.minimum || value > progress.maximum) return ProBadInputs;
    progress.value = value;
    if (auto* observer = headless::Session::current().state().observer) observer->progress(value, progress.maximum);
    return ProNoError;
  });
}

Got<std::wstring> ProUITextareaValueGet(const std::string& dialog, const std::string& area) {
  return ask<std::wstring>("ProUITextareaValueGet", dialog, area, Kind::textarea,
                           [](const Component& c) { return c.text; });
}

ProError ProUITextareaValueSet(const std::string& dialog, const std::string& area, const std::wstring& value) {
  return change("ProUITextareaValueSet", dialog, area, Kind::textarea, [&](Component& c) { c.text = value; });
}

ProError ProUILayoutShow(const std::string& dialog, const std::string& layout) {
  return change("ProUILayoutShow", dialog, layout, Kind::layout, [](Component& c) { c.shown = true; });
}

ProError ProUILayoutHide(const std::string& dialog, const std::string& layout) {
  return change("ProUILayoutHide", dialog, layout, Kind::layout, [](Component& c) { c.shown = false; });
}

ProError ProUILayoutMappedSet(const std::string& dialog, const std::string& layout) {
  return change("ProUILayoutMappedSet", dialog, layout, Kind::layout, [](Component& c) { c.mapped = true; });
}

ProError ProUILayoutMappedUnset(const std::string& dialog, const std::string& layout) {
  return change("ProUILayoutMappedUnset", dialog, layout, Kind::layout, [](Component& c) { c.mapped = false; });
}

}  // namespace creo

#include "ui/indicator.h"

#include <string>
#include <utility>

#include "core/config.h"
#include "core/state.h"
#include "creo/ProEvent.h"
#include "creo/ProMdl.h"
#include "creo/ProParameter.h"
#include "creo/ProUIDrawingarea.h"
#include "creo/ProUtil.h"
#include "creo/ProWindow.h"
#include "text/encoding.h"
#include "text/numbers.h"
#include "ui/menu.h"

namespace ui {
namespace {

using namespace creo;

constexpr const char* kLabel = "kvd_parameter_lb";
constexpr const wchar_t* kImage = L"text\\usascii\\resource\\kvd_parameter_wrong.png";

int& callback() {
  static int number = 0;
  return number;
}

// The device that the label was put on; empty: there is none. Its window may have gone meanwhile, or another one may
// be current.
std::string& labelsDevice() {
  static std::string name;
  return name;
}

std::string image() { return text::toUtf8(core::normalisedTextPath(ProToolkitApplTextPathGet().value) + kImage); }

// Of the current window; empty: there is none.
std::string device() {
  const auto window = ProWindowCurrentGet();
  if (!window) return {};
  return ProNavigatorpanePHolderDevicenameGet(window.value).value;
}

bool isExpected(const ProParamvalue& value, const std::wstring& expected) {
  switch (value.type) {
    case ProParamvalueType::boolean:
      return expected == (value.boolean ? L"1" : L"0");
    case ProParamvalueType::string:
      return value.string == expected;
    case ProParamvalueType::integer:
      return text::parseInt(expected) == value.integer;
    case ProParamvalueType::real:
      return text::parseDouble(expected) == value.real;
    default:
      return false;
  }
}

// A model without the parameter is warned of, too.
bool isWrong(ProMdl model) {
  const core::PluginState& state = core::pluginState();
  const auto owner = ProMdlToModelitem(model);
  if (!owner) return true;
  const auto parameter = ProParameterInit(owner.value, state.checkParameter);
  if (!parameter) return true;
  const auto value = ProParameterValueGet(parameter.value);
  return !value || !isExpected(value.value, state.checkParameterValue);
}

void hide() {
  if (const std::string holder = std::exchange(labelsDevice(), {}); !holder.empty())
    ProUIDrawingareaLabelRemove(holder, kModelArea, kLabel);
}

void show(const std::string& holder) {
  const core::PluginState& state = core::pluginState();
  if (holder != labelsDevice()) hide();
  labelsDevice() = holder;
  ProUIDrawingareaLabelAdd(holder, kModelArea, kLabel);
  ProUILabelEnableResizing(holder, kLabel);
  ProUILabelTextSet(holder, kLabel, L"");
  ProUILabelAnchorSet(holder, kLabel, {0, 0, 1});
  ProUILabelPositionSet(holder, kLabel, 0, 0);
  ProUILabelHelptextSet(holder, kLabel, state.checkParameter + L" is not set to " + state.checkParameterValue);
  ProUILabelBitmapSet(holder, kLabel, image());
}

void test() {
  if (core::pluginState().checkParameter.empty()) return;
  const auto model = ProMdlCurrentGet();
  if (!model || !isWrong(model.value)) return hide();
  if (const std::string holder = device(); !holder.empty()) show(holder);
}

}  // namespace

void startParameterIndicator() {
  if (core::pluginState().checkParameter.empty()) return;
  if (const auto added = ProEventCallbackAdd(test)) callback() = added.value;
  addIndicatorCommand();
}

void stopParameterIndicator() {
  if (callback() == 0) return;
  ProEventCallbackRemove(std::exchange(callback(), 0));
  hide();
}

}  // namespace ui

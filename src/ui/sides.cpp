#include "ui/sides.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <string>

#include "core/log.h"
#include "core/state.h"
#include "creo/ProUI.h"
#include "creo/ProUIShow.h"
#include "creo/ProUITree.h"
#include "text/encoding.h"

namespace ui {
namespace {

using namespace core;
using namespace creo;

using Call = ProError (*)(const std::string& dialog, const std::string& component);

struct Part {
  const char* name;
  Call show, hide;
};
// In the order of showing.
constexpr Part kTableSide[] = {
    {"kvaneFilterLbl", &ProUILabelShow, &ProUILabelHide},
    {"kvanePrtFilterLbl", &ProUILabelShow, &ProUILabelHide},
    {"kvaneAsmFilterLbl", &ProUILabelShow, &ProUILabelHide},
    {"kvaneDrwFilterLbl", &ProUILabelShow, &ProUILabelHide},
    {"kvaneInstFilterLbl", &ProUILabelShow, &ProUILabelHide},
    {"kvaneCurModFilterLbl", &ProUILabelShow, &ProUILabelHide},
    {"kvanePrtFilter", &ProUICheckbuttonShow, &ProUICheckbuttonHide},
    {"kvaneAsmFilter", &ProUICheckbuttonShow, &ProUICheckbuttonHide},
    {"kvaneDrwFilter", &ProUICheckbuttonShow, &ProUICheckbuttonHide},
    {"kvaneInstFilter", &ProUICheckbuttonShow, &ProUICheckbuttonHide},
    {"kvaneCurModFilter", &ProUICheckbuttonShow, &ProUICheckbuttonHide},
    {"kvaneExtFilter", &ProUIPushbuttonShow, &ProUIPushbuttonHide},
    {"kvaneCheckout", &ProUIPushbuttonShow, &ProUIPushbuttonHide},
    {"LargeTable", &ProUITableShow, &ProUITableHide},
    {"kvaneLayerLeft", &ProUILayoutShow, &ProUILayoutHide},
    {"kvaneLayerLeft", &ProUILayoutMappedSet, &ProUILayoutMappedUnset},
};
constexpr Part kLogSide[] = {
    {"kvaneLayerLog", &ProUILayoutShow, &ProUILayoutHide},
    {"kvaneLogLbl", &ProUILabelShow, &ProUILabelHide},
    {"kvaneOpenLogFolder", &ProUIPushbuttonShow, &ProUIPushbuttonHide},
    {"kvaneLayerLogFilterChooser", &ProUIOptionmenuShow, &ProUIOptionmenuHide},
    {"kvaneLayerLogTitle", &ProUILayoutShow, &ProUILayoutHide},
};
// The log has one of two views.
constexpr Part kLogAsTree[] = {
    {"kvaneLogTA", &ProUITextareaHide, &ProUITextareaHide},
    {"kvaneLogTT", &ProUITreeShow, &ProUITreeHide},
    {"kvaneLayerLog", &ProUILayoutMappedSet, &ProUILayoutMappedUnset},
};
constexpr Part kLogAsText[] = {
    {"kvaneLogTT", &ProUITreeHide, &ProUITreeHide},
    {"kvaneLogTA", &ProUITextareaShow, &ProUITextareaHide},
    {"kvaneLayerLog", &ProUILayoutMappedSet, &ProUILayoutMappedUnset},
};

const std::string& dialog() { return pluginState().dialogName; }

void call(Call operation, const char* component) {
  if (operation(dialog(), component) != ProNoError) creoLog(L"<KVD> main - Error at set " + text::fromUtf8(component));
}

void showAll(std::span<const Part> parts) {
  for (const Part& part : parts) call(part.show, part.name);
}

// Backwards, so that the layout is unmapped before what it holds goes.
void hideAll(std::span<const Part> parts) {
  std::for_each(parts.rbegin(), parts.rend(), [](const Part& part) { call(part.hide, part.name); });
}

std::span<const Part> logView() {
  if (pluginState().logType == 1) return kLogAsTree;
  return kLogAsText;
}

}  // namespace

void showLogSide(bool show) {
  if (show) {
    showAll(kLogSide);
    showAll(logView());
  } else {
    hideAll(logView());
    hideAll(kLogSide);
  }
  pluginState().logVisible = show ? 1 : 0;
}

void showTableSide(bool show) {
  if (show) {
    showAll(kTableSide);
  } else {
    hideAll(kTableSide);
  }
  pluginState().treeVisible = show ? 1 : 0;
}

}  // namespace ui

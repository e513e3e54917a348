// What reports call the display status of a layer.
#pragma once

#include <string_view>

#include "creo/ProLayer.h"

namespace reports {

constexpr std::wstring_view layerStatusWord(creo::ProLayerDisplay status) {
  switch (status) {
    case creo::ProLayerDisplay::normal:
      return L"NORMAL";
    case creo::ProLayerDisplay::display:
      return L"DISPLAY";
    case creo::ProLayerDisplay::blank:
      return L"BLANK";
    case creo::ProLayerDisplay::hidden:
      return L"HIDDEN";
    case creo::ProLayerDisplay::skip:
      return L"SKIP";
    case creo::ProLayerDisplay::none:
      break;
  }
  return L"NONE";
}

}  // namespace reports

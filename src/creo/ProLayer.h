// Layers and layer states.
#pragma once

#include "creo/ProModelitem.h"

namespace creo {

enum class ProLayerDisplay : int { none = -1, normal = 1, display = 2, blank = 3, hidden = 5, skip = 6 };

struct ProLayer {
  ProMdl owner;
  int id = 0;
};
struct ProLayerstate {
  ProMdl owner;
  std::wstring name;
};

ProError ProMdlLayerVisit(ProMdl model, Visitor<ProLayer> visitor);
// ProNotFound: the layer has gone.
Got<std::wstring> ProLayerNameGet(const ProLayer& layer);
Got<ProLayerDisplay> ProLayerDisplaystatusGet(const ProLayer& layer);
// The same as ProLayerItemsGet, with what comes from the layer's rules.
Got<std::vector<ProModelitem>> ProLayerItemsPopulate(const ProLayer& layer);
// What is on a layer; none is an empty list.
Got<std::vector<ProModelitem>> ProLayerItemsGet(const ProLayer& layer);
// ProNotFound: the model has none.
Got<std::vector<ProLayerstate>> ProLayerstatesGet(ProMdl model);
Got<std::wstring> ProLayerstateNameGet(const ProLayerstate& state);

}  // namespace creo

#include "creo/ProModelitem.h"

#include "headless/creo/operation.h"
#include "headless/model/items.h"

namespace creo {

using headless::Model;
using headless::onModel;
using State = headless::Session::State;

Got<std::wstring> ProModelitemNameGet(const ProModelitem& item) {
  return onModel("ProModelitemNameGet", item.owner,
                 [&](State&, Model& m) -> Got<std::wstring> { return headless::itemName(m, item); });
}

Got<ProModelitem> ProModelitemByNameInit(ProMdl model, ProItemType type, const std::wstring& name) {
  return onModel("ProModelitemByNameInit", model,
                 [&](State&, Model& m) -> Got<ProModelitem> { return headless::itemNamed(m, type, name); });
}

}  // namespace creo

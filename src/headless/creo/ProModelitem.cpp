#include "creo/ProModelitem.h"

#include <algorithm>

#include "headless/creo/operation.h"
#include "headless/model/features.h"
#include "headless/model/items.h"

namespace creo {

using headless::Model;
using headless::onModel;
using State = headless::Session::State;

namespace {

// What is found by its name; the names of views, dimensions, sections and most states are asked of those themselves.
bool isFoundByName(ProItemType type) {
  return type == ProItemType::feature || type == ProItemType::coordinateSystem || type == ProItemType::layer ||
         type == ProItemType::combinedState || type == ProItemType::material;
}

}  // namespace

Got<std::wstring> ProModelitemNameGet(const ProModelitem& item) {
  return onModel("ProModelitemNameGet", item.owner, [&](State&, Model& m) -> Got<std::wstring> {
    if (item.type == ProItemType::none) return ProBadInputs;
    return headless::itemName(m, item);
  });
}

Got<std::wstring> ProModelitemDefaultnameGet(const ProModelitem& item) {
  return onModel("ProModelitemDefaultnameGet", item.owner, [&](State&, Model& m) -> Got<std::wstring> {
    const auto feature = item.type == ProItemType::feature ? headless::featureOf(m, item.id) : std::nullopt;
    if (!feature) return ProNotFound;
    const headless::FeatureRecord* record = feature->record();
    std::wstring kind = record ? text::fromUtf8(record->typeName) : std::wstring();
    if (kind.empty()) kind = L"FEATURE";
    std::replace(kind.begin(), kind.end(), L' ', L'_');
    return kind + L"_id_" + std::to_wstring(item.id);
  });
}

ProError ProModelitemNameSet(const ProModelitem& item, const std::wstring& name) {
  return onModel("ProModelitemNameSet", item.owner,
                 [&](State& state, Model& m) { return headless::renameItem(state.models, m, item, name); });
}

Got<ProModelitem> ProModelitemInit(ProMdl model, int id, ProItemType type) {
  return onModel("ProModelitemInit", model, [&](State&, Model& m) -> Got<ProModelitem> {
    for (const headless::NamedItem& item : headless::namedItems(m, type))
      if (item.id == id) return ProModelitem{type, id, m.handle, {}};
    return ProNotFound;
  });
}

Got<ProModelitem> ProModelitemByNameInit(ProMdl model, ProItemType type, const std::wstring& name) {
  return onModel("ProModelitemByNameInit", model, [&](State&, Model& m) -> Got<ProModelitem> {
    if (!isFoundByName(type)) return ProBadInputs;
    return headless::itemNamed(m, type, name);
  });
}

}  // namespace creo

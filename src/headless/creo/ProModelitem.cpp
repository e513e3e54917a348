#include "creo/ProModelitem.h"

#include "creo/ProMaterial.h"
#include "headless/creo/operation.h"
#include "headless/model/features.h"
#include "headless/model/items.h"
#include "text/encoding.h"

namespace creo {

using headless::Model;
using headless::onModel;
using State = headless::Session::State;

Got<std::wstring> ProModelitemNameGet(const ProModelitem& item) {
  return onModel("ProModelitemNameGet", item.owner,
                 [&](State&, Model& m) -> Got<std::wstring> { return headless::itemName(m, item); });
}

Got<std::wstring> ProModelitemDefaultnameGet(const ProModelitem& item) {
  return onModel("ProModelitemDefaultnameGet", item.owner, [&](State&, Model& m) -> Got<std::wstring> {
    const auto feature = item.type == ProItemType::feature ? headless::featureOf(m, item.id) : std::nullopt;
    if (!feature) return ProNotFound;
    const headless::FeatureRecord* record = feature->record();
    const std::wstring kind = record ? text::fromUtf8(record->typeName) : std::wstring();
    return (kind.empty() ? L"FEATURE" : kind) + L" id " + std::to_wstring(item.id);
  });
}

Got<ProModelitem> ProModelitemByNameInit(ProMdl model, ProItemType type, const std::wstring& name) {
  return onModel("ProModelitemByNameInit", model,
                 [&](State&, Model& m) -> Got<ProModelitem> { return headless::itemNamed(m, type, name); });
}

Got<ProRelset> ProModelitemToRelset(const ProModelitem& item) {
  return onModel("ProModelitemToRelset", item.owner, [&](State&, Model& m) -> Got<ProRelset> {
    const auto* lines = headless::relationLines(m, item);
    if (!lines) return ProBadInputs;
    if (lines->empty()) return ProNotFound;
    return ProRelset{item};
  });
}

// A set without lines leaves nothing in the document, so that the model isn't changed before something is written.
Got<ProRelset> ProRelsetCreate(const ProModelitem& item) {
  return onModel("ProRelsetCreate", item.owner, [&](State&, Model& m) -> Got<ProRelset> {
    const auto* lines = headless::relationLines(m, item);
    if (!lines) return ProBadInputs;
    if (!lines->empty()) return ProExists;
    return ProRelset{item};
  });
}

Got<std::vector<std::wstring>> ProRelsetRelationsGet(const ProRelset& relations) {
  using Lines = std::vector<std::wstring>;
  return onModel("ProRelsetRelationsGet", relations.owner.owner, [&](State&, Model& m) -> Got<Lines> {
    const auto* held = headless::relationLines(m, relations.owner);
    if (!held) return ProBadInputs;
    Lines lines;
    for (const std::string& line : *held) lines.push_back(text::fromUtf8(line));
    return lines;
  });
}

Got<ProMaterial> ProMaterialCurrentGet(ProMdl part) {
  return onModel("ProMaterialCurrentGet", part, [](State&, Model& m) -> Got<ProMaterial> {
    if (m.type() != ProMdlType::part) return ProBadInputs;
    std::wstring name = headless::currentMaterial(m);
    if (name.empty()) return ProNotFound;
    return ProMaterial{m.handle, std::move(name)};
  });
}

}  // namespace creo

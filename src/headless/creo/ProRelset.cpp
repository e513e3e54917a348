#include "creo/ProRelset.h"

#include "headless/creo/operation.h"
#include "headless/model/items.h"
#include "headless/model/regenerate.h"
#include "text/encoding.h"

namespace creo {

using headless::Model;
using headless::onModel;
using State = headless::Session::State;

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

ProError ProRelsetRegenerate(const ProRelset& relations) {
  return onModel("ProRelsetRegenerate", relations.owner.owner, [&](State& state, Model& m) -> ProError {
    if (!headless::relationLines(m, relations.owner)) return ProBadInputs;
    return headless::regenerateRelations(state.models, m, relations.owner.id == kPostRegeneration);
  });
}

}  // namespace creo

#include "creo/ProRelset.h"

#include "headless/creo/operation.h"
#include "headless/model/items.h"
#include "headless/model/regenerate.h"
#include "text/encoding.h"

namespace creo {

using headless::Model;
using headless::onModel;
using State = headless::Session::State;

namespace {

bool isPost(const ProModelitem& owner) { return owner.type == ProItemType::model && owner.id == kPostRegeneration; }

}  // namespace

Got<ProRelset> ProModelitemToRelset(const ProModelitem& item) {
  return onModel("ProModelitemToRelset", item.owner, [&](State&, Model& m) -> Got<ProRelset> {
    const auto* lines = isPost(item) ? nullptr : headless::relationLines(m, item);
    if (!lines) return ProBadInputs;
    if (lines->empty()) return ProNotFound;
    return ProRelset{item};
  });
}

Got<ProRelset> ProRelsetPostregenerationInit(ProMdl model) {
  return onModel("ProRelsetPostregenerationInit", model, [&](State&, Model& m) -> Got<ProRelset> {
    if (m.document->record.postRelations.empty()) return ProNotFound;
    return ProRelset{{ProItemType::model, kPostRegeneration, m.handle, {}}};
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
    const auto* present = headless::relationLines(m, relations.owner, relations.section);
    if (!present) return ProBadInputs;
    Lines lines;
    for (const std::string& line : *present) lines.push_back(text::fromUtf8(line));
    return lines;
  });
}

ProError ProRelsetRegenerate(const ProRelset& relations) {
  return onModel("ProRelsetRegenerate", relations.owner.owner, [&](State& state, Model& m) -> ProError {
    const auto* lines = headless::relationLines(m, relations.owner, relations.section);
    if (!lines) return ProBadInputs;
    if (relations.owner.type == ProItemType::feature)
      return headless::regenerateOwnRelations(state.models, m, relations.owner.id, *lines);
    return headless::regenerateRelations(state.models, m, isPost(relations.owner));
  });
}

ProError ProRelsetRelationsSet(const ProRelset& relations, const std::vector<std::wstring>& lines) {
  return onModel("ProRelsetRelationsSet", relations.owner.owner, [&](State&, Model& m) -> ProError {
    auto* present = headless::relationLines(m, relations.owner, relations.section);
    if (!present) return ProBadInputs;
    std::vector<std::string> written;
    written.reserve(lines.size());
    for (const std::wstring& line : lines) written.push_back(text::toUtf8(line));
    if (written == *present) return ProNoError;
    *present = std::move(written);
    m.document->relationsChanged();
    m.document->touch(nullptr);
    return ProNoError;
  });
}

Got<ProModelitem> ProRelsetToModelitem(const ProRelset& relations) {
  return onModel("ProRelsetToModelitem", relations.owner.owner, [&](State&, Model& m) -> Got<ProModelitem> {
    if (!headless::relationLines(m, relations.owner, relations.section)) return ProBadInputs;
    return relations.owner;
  });
}

ProError ProRelsetUnitsSensitiveSet(const ProRelset& relations, bool sensitive) {
  return onModel("ProRelsetUnitsSensitiveSet", relations.owner.owner, [&](State&, Model& m) -> ProError {
    const auto* lines = headless::relationLines(m, relations.owner, relations.section);
    auto* units = headless::relationUnits(m, relations.owner, relations.section);
    if (!lines || !units) return ProBadInputs;
    if (isPost(relations.owner) && lines->empty()) return ProNotFound;
    if (*units != sensitive) m.document->touch(nullptr);
    *units = sensitive;
    return ProNoError;
  });
}

}  // namespace creo

// What the sheet calls the things of a model.
#pragma once

#include <string>

#include "core/messages.h"
#include "creo/ProFeature.h"
#include "creo/ProModelitem.h"

namespace reports::sheet {

inline creo::ProModelitem itemOf(const creo::ProFeature& feature) {
  return {creo::ProItemType::feature, feature.id, feature.owner, {}};
}
// A name, or, for want of one, the words that say so.
inline std::wstring nameOrUnknown(const creo::Got<std::wstring>& name) {
  return name ? name.value : core::msgText(core::Message::unknownFeatureName);
}
inline std::wstring itemName(const creo::ProModelitem& item) { return nameOrUnknown(creo::ProModelitemNameGet(item)); }

}  // namespace reports::sheet

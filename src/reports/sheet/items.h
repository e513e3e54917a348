// What the sheet calls the things of a model.
#pragma once

#include <string>

#include "core/messages.h"
#include "creo/ProFeature.h"
#include "creo/ProModelitem.h"
#include "reports/sheet/sections.h"

namespace reports::sheet {

inline creo::ProModelitem itemOf(const creo::ProFeature& feature) {
  return {creo::ProItemType::feature, feature.id, feature.owner, {}};
}
// Each feature of a solid; no other model has any.
inline creo::ProError visitFeatures(const Subject& subject,
                                    creo::FunctionRef<creo::ProError(const creo::ProFeature&)> visit) {
  if (!subject.isSolid()) return creo::ProNotFound;
  const creo::ProError result = creo::ProSolidFeatVisit(subject.model, visit);
  subject.unread.visited(result, kFeatures);
  return result;
}
// A name, or, for want of one, the words that say so.
inline std::wstring nameOrUnknown(const creo::Got<std::wstring>& name) {
  return name ? name.value : core::msgText(core::Message::unknownFeatureName);
}
inline std::wstring itemName(const Subject& subject, const creo::ProModelitem& item) {
  const auto name = creo::ProModelitemNameGet(item);
  subject.unread.readAny(name, kItemNames);
  return nameOrUnknown(name);
}

}  // namespace reports::sheet

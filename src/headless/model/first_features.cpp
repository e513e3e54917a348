#include "headless/model/first_features.h"

#include "headless/model/insert_feature.h"
#include "headless/model/items.h"
#include "text/encoding.h"
#include "text/units.h"

namespace headless {

creo::Got<int> addDatum(const Model& solid, NewDatum datum) {
  if (datum.name.empty() || !text::fits(datum.name, text::kNameSize)) return creo::ProBadInputs;
  if (itemNamed(solid, creo::ProItemType::feature, datum.name)) return creo::ProExists;
  ModelDocument& document = *solid.document;
  FeatureRecord& feature = insertFeature(document, {});
  feature.type = datum.type;
  feature.name = text::toUtf8(datum.name);
  feature.typeName = std::move(datum.typeName);
  feature.subtype = std::move(datum.subtype);
  SolidRecord geometry = solidRecord(document.record.solid);
  DatumRecord& record = (geometry.*datum.list).emplace_back();
  record.feature = feature.id;
  record.placement = std::move(datum.placement);
  document.record.solid = rawSolid(geometry);
  document.solidChanged();
  document.touch(nullptr);
  return feature.id;
}

}  // namespace headless

#include "headless/model/first_features.h"

#include <algorithm>

#include "headless/model/features.h"
#include "headless/model/items.h"
#include "text/encoding.h"
#include "text/units.h"

namespace headless {

namespace {

// Puts a feature behind the place where new ones come, the last one's or that of insert mode.
FeatureRecord& addFeature(ModelDocument& document) {
  ModelRecord& record = document.record;
  giveComponentsRecords(document);
  int lastId = 0, lastNumber = 0;
  std::size_t at = record.features.size();
  for (const TreeFeature& one : document.tree.all(record)) {
    lastId = std::max(lastId, one.id);
    lastNumber = std::max(lastNumber, one.number);
    if (one.number == record.insertAfter) at = one.record + 1;
  }
  const bool inserts = record.insertAfter > 0 && record.insertAfter < lastNumber;
  if (!inserts) at = record.features.size();
  FeatureRecord added;
  added.id = lastId + 1;
  added.number = (inserts ? record.insertAfter : lastNumber) + 1;
  if (inserts) {
    for (FeatureRecord& one : record.features)
      if (one.number > record.insertAfter) ++one.number;
    ++record.insertAfter;
  }
  const auto place =
      record.features.insert(record.features.begin() + static_cast<std::ptrdiff_t>(at), std::move(added));
  document.tree.changed();
  return *place;
}

}  // namespace

creo::Got<int> addDatum(const Model& solid, NewDatum datum) {
  if (datum.name.empty() || !text::fits(datum.name, text::kNameSize)) return creo::ProBadInputs;
  if (itemNamed(solid, creo::ProItemType::feature, datum.name)) return creo::ProExists;
  ModelDocument& document = *solid.document;
  FeatureRecord& feature = addFeature(document);
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

#include "headless/model/insert_feature.h"

#include <algorithm>

#include "headless/model/features.h"

namespace headless {

int freeFeatureId(ModelDocument& document) {
  int last = 0;
  for (const TreeFeature& entry : document.tree.all(document.record)) last = std::max(last, entry.id);
  // A feature that has lost its parent mustn't take another one for it.
  for (const FeatureRecord& feature : document.record.features)
    for (const int id : feature.parents) last = std::max(last, id);
  return last + 1;
}

FeatureRecord& insertFeature(ModelDocument& document, FeatureRecord added) {
  ModelRecord& record = document.record;
  giveComponentsRecords(document);
  if (added.id == 0) added.id = freeFeatureId(document);
  int lastNumber = 0;
  std::size_t at = record.features.size();
  for (const TreeFeature& feature : document.tree.all(record)) {
    lastNumber = std::max(lastNumber, feature.number);
    if (feature.number == record.insertAfter) at = feature.record + 1;
  }
  const bool inserts = record.insertAfter > 0 && record.insertAfter < lastNumber;
  if (!inserts) at = record.features.size();
  added.number = (inserts ? record.insertAfter : lastNumber) + 1;
  if (inserts)
    for (FeatureRecord& entry : record.features)
      if (entry.number > record.insertAfter) ++entry.number;
  if (record.insertAfter > 0) ++record.insertAfter;
  const auto place =
      record.features.insert(record.features.begin() + static_cast<std::ptrdiff_t>(at), std::move(added));
  document.tree.changed();
  return *place;
}

}  // namespace headless

#include "headless/model/insert_feature.h"

#include <algorithm>

#include "headless/model/features.h"

namespace headless {

int freeFeatureId(ModelDocument& document) {
  int last = 0;
  for (const TreeFeature& one : document.tree.all(document.record)) last = std::max(last, one.id);
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
  for (const TreeFeature& one : document.tree.all(record)) {
    lastNumber = std::max(lastNumber, one.number);
    if (one.number == record.insertAfter) at = one.record + 1;
  }
  const bool inserts = record.insertAfter > 0 && record.insertAfter < lastNumber;
  if (!inserts) at = record.features.size();
  added.number = (inserts ? record.insertAfter : lastNumber) + 1;
  if (inserts)
    for (FeatureRecord& one : record.features)
      if (one.number > record.insertAfter) ++one.number;
  if (record.insertAfter > 0) ++record.insertAfter;
  const auto place =
      record.features.insert(record.features.begin() + static_cast<std::ptrdiff_t>(at), std::move(added));
  document.tree.changed();
  return *place;
}

}  // namespace headless

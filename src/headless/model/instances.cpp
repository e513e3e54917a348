#include "headless/model/instances.h"

#include <unordered_map>

#include "headless/model/models.h"
#include "headless/model/stand_alone.h"

namespace headless {

void removeRow(Models& models, const std::shared_ptr<ModelDocument>& document, RowRecord& row) {
  std::unordered_map<const RowRecord*, std::shared_ptr<ModelDocument>> own;  // of those that have become models
  const auto ownAbove = [&](const RowRecord& record) -> std::shared_ptr<ModelDocument> {
    for (const RowRecord* above = record.parent; above; above = above->parent)
      if (const auto found = own.find(above); found != own.end()) return found->second;
    return nullptr;
  };
  const auto leave = [&](RowRecord& entry) {
    const auto there = instanceInMemory(models, *document, entry);
    if (!there) return;
    Model& model = *models.find(there.value);
    models.change(model, [&] {
      if (const auto above = ownAbove(entry)) {
        model.document = above;
        model.row = above->row(model.name);
      } else {
        model.document = own[&entry] = standAlone(model, model.name, true);
        model.row = nullptr;
      }
    });
  };
  leave(row);
  if (row.familyTable) eachRow(*row.familyTable, leave);
  document->takeRow(row);
}

}  // namespace headless

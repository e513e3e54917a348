#include "headless/model/instances.h"

#include <unordered_map>

#include "headless/model/family.h"
#include "headless/model/models.h"
#include "headless/model/retrieve.h"
#include "headless/model/stand_alone.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/letters.h"

namespace headless {

using creo::Got;
using creo::ProMdl;

Got<ProMdl> instanceInMemory(const Models& models, const ModelDocument& document, const RowRecord& row) {
  const Model* model = models.named(text::fromUtf8(row.name), document.type);
  return model && model->row == &row ? Got<ProMdl>(model->handle) : creo::ProNotFound;
}

Got<ProMdl> retrieveInstance(Models& models, const std::shared_ptr<ModelDocument>& document, RowRecord& row) {
  const std::wstring name = text::upper(text::fromUtf8(row.name));
  if (const auto there = instanceInMemory(models, *document, row)) return there;
  if (models.named(name, document->type)) {
    models.message(
        text::format(L"%s<%s> can't be built: another model of that name is in memory", name, document->name));
    return creo::ProGeneralError;
  }
  if (const std::wstring fault = rowFault(*document, row); !fault.empty()) {
    models.message(text::format(L"%s<%s> can't be built: %s", name, document->name, fault));
    return creo::ProGeneralError;
  }
  const Model& built = models.add(document, &row, name);
  const ProMdl handle = built.handle;
  for (const UsedModelRecord& component : replacedComponents(built)) {
    if (retrieveModel(models, text::fromUtf8(component.name), component.type)) continue;
    models.message(text::format(L"%s<%s> can't be built: its component %s can't be retrieved", name, document->name,
                                text::upper(text::fromUtf8(component.name))));
    models.remove(*models.find(handle));
    return creo::ProGeneralError;
  }
  return handle;
}

void removeRow(Models& models, const std::shared_ptr<ModelDocument>& document, RowRecord& row) {
  std::unordered_map<const RowRecord*, std::shared_ptr<ModelDocument>> own;  // of those that have become models
  const auto ownAbove = [&](const RowRecord& one) -> std::shared_ptr<ModelDocument> {
    for (const RowRecord* above = one.parent; above; above = above->parent)
      if (const auto found = own.find(above); found != own.end()) return found->second;
    return nullptr;
  };
  const auto leave = [&](RowRecord& one) {
    const auto there = instanceInMemory(models, *document, one);
    if (!there) return;
    Model& model = *models.find(there.value);
    models.change(model, [&] {
      if (const auto above = ownAbove(one)) {
        model.document = above;
        model.row = above->row(model.name);
      } else {
        model.document = own[&one] = standAlone(model, model.name, true);
        model.row = nullptr;
      }
    });
  };
  leave(row);
  if (row.familyTable) eachRow(*row.familyTable, leave);
  document->takeRow(row);
}

}  // namespace headless

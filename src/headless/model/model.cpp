#include "headless/model/model.h"

#include <unordered_set>

#include "headless/model/family.h"
#include "headless/store/folder.h"

namespace headless {

std::vector<creo::ProDependency> dependencies(const Model& model) {
  const ModelRecord& record = model.document->record;
  std::vector<creo::ProDependency> out;
  std::unordered_set<std::wstring> seen;
  for (const UsedModelRecord& used : model.type() == creo::ProMdlType::drawing ? record.models : record.components) {
    const std::wstring name = componentOf(model, used);
    if (!name.empty() && seen.insert(modelKey(name, used.type)).second)
      out.push_back({name, creo::typeExtension(used.type), used.type});
  }
  return out;
}

}  // namespace headless

#include "headless/model/away.h"

#include <algorithm>
#include <functional>

#include "headless/model/drawing.h"
#include "headless/model/family.h"
#include "headless/model/flat_memory.h"
#include "headless/model/models.h"
#include "text/encoding.h"

namespace headless {
namespace {

std::size_t hashOf(std::wstring_view name, creo::ProMdlType type) {
  return std::hash<std::wstring>()(modelKey(name, type));
}

// Whoever a document names as a model: by "NAME", "NAME<GENERIC>" or "NAME.prt".
std::vector<std::size_t> mentionsOf(const ModelDocument& document) {
  std::vector<std::size_t> mentions;
  const auto add = [&mentions](const std::wstring& text, creo::ProMdlType type) {
    const ModelName name = modelName(text);
    for (const std::wstring& part : {name.name, name.generic})
      if (!part.empty()) mentions.push_back(hashOf(part, type));
  };
  const auto addLabel = [&add](const std::string& label) {
    if (const auto file = documentFile(text::fromUtf8(label))) add(file->name, file->type);
  };
  const ModelRecord& record = document.record;
  for (const auto* list : {&record.components, &record.models})
    for (const UsedModelRecord& used : *list) add(text::fromUtf8(used.name), used.type);
  // What a row puts in place of a component; the column tells whether part or assembly.
  if (record.familyTable)
    eachRow(*record.familyTable, [&add](const RowRecord& row) {
      for (const auto& value : row.values)
        for (const auto type : {creo::ProMdlType::part, creo::ProMdlType::assembly})
          if (const auto* text = std::get_if<std::string>(&value.value)) add(text::fromUtf8(*text), type);
    });
  addLabel(record.currentModel);
  for (const ViewRecord& view : record.views) addLabel(view.model);
  for (const ShownDimensionRecord& dimension : record.shownDimensions) addLabel(dimension.model);
  for (const SheetRecord& sheet : record.sheets) addLabel(sheet.format);
  std::sort(mentions.begin(), mentions.end());
  mentions.erase(std::unique(mentions.begin(), mentions.end()), mentions.end());
  mentions.shrink_to_fit();
  return mentions;
}

// Does its file say all that its record does?
bool isAsFiled(Models& models, const ModelDocument& document) {
  if (document.isContentModified() || document.hasRowsOfItsOwn() || document.modelOfTexts) return false;
  if (!document.activeRep.empty() || !document.moved.folder.empty()) return false;
  if (document.folder != models.folders().home().path()) return false;
  const auto& layers = document.record.layers;
  if (std::any_of(layers.begin(), layers.end(), [](const LayerRecord& layer) { return layer.unsaved.has_value(); }))
    return false;
  return models.folders().has(savedPath(document));
}

bool mayGo(Models& models, const Model& model) {
  const bool isShared = model.row || model.document.use_count() > 1;
  return !isShared && model.type() != creo::ProMdlType::format && !model.document->inWorkspace &&
         isAsFiled(models, *model.document);
}

}  // namespace

void putAway(Models& models, creo::FunctionRef<bool(creo::ProMdl)> stays) {
  FlatMemory* const memory = FlatMemory::inForce();
  if (!memory || memory->bytes < (memory->keep + 1) / 2) return;
  memory->bytes = 0;
  std::vector<creo::ProMdl> left;  // the latest first
  std::size_t kept = 0;
  for (auto at = memory->arrived.rbegin(); at != memory->arrived.rend(); ++at) {
    const Model* model = models.look(*at);
    if (!model || model->document->isAway()) continue;
    kept += model->document->textSize;
    if (kept <= memory->keep || stays(*at) || !mayGo(models, *model)) {
      left.push_back(*at);
    } else {
      model->document->putAway({dependencies(*model), mentionsOf(*model->document), {}, false});
    }
  }
  memory->arrived.assign(left.rbegin(), left.rend());
}

void readAhead(Models& models, std::wstring_view name, creo::ProMdlType type) {
  FlatMemory* const memory = FlatMemory::inForce();
  if (!memory) return;
  if (const auto there = models.inMemory(name, type)) {
    const ModelDocument& document = *models.look(there.value)->document;
    if (document.isAway()) memory->ahead.want(savedPath(document));
    return;
  }
  for (Folder* folder : models.folders().searched(type)) {
    const DocumentFile* file = folder->find(name, type);
    if (file) return memory->ahead.want(folder->path() + file->fileName);
  }
}

bool maySpeakOf(const Model& model, const std::wstring& name, creo::ProMdlType type) {
  if (!model.document->isAway()) return true;
  const auto& mentions = model.document->away().mentions;
  return std::binary_search(mentions.begin(), mentions.end(), hashOf(name, type));
}

}  // namespace headless

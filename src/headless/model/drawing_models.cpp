#include "headless/model/drawing_models.h"

#include <algorithm>
#include <charconv>

#include "headless/model/drawing.h"
#include "headless/model/family.h"
#include "headless/store/folder.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace headless {

using creo::ProDependency;
using creo::ProDrawingModelUse;

namespace {

bool isModel(const UsedModelRecord& entry, const ProDependency& model) {
  return entry.type == model.type && modelName(text::fromUtf8(entry.name)).name == model.name;
}

// Every text of the drawing in which a model may be called by its number.
template <class F>
void eachText(ModelRecord& record, F f) {
  for (TableRecord& table : record.tables)
    for (CellRecord& cell : table.cells)
      for (std::string& line : cell.lines) f(line);
  for (NoteRecord& note : record.notes)
    for (NoteLineRecord& line : note.lines)
      for (NoteTextRecord& piece : line.texts) f(piece.text);
  for (SymbolDefinitionRecord& definition : record.symbolDefinitions)
    for (SymbolTextRecord& entry : definition.texts) f(entry.text);
  for (SymbolRecord& symbol : record.symbols)
    for (std::string& item : symbol.texts) f(item);
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isNamePart(char c) {
  return isDigit(c) || c == '_' || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
         static_cast<unsigned char>(c) > 0x7F;
}

// Calls f(number) for each "&NAME:2" and writes the number that it gives.
template <class F>
void eachNumber(std::string& text, F f) {
  for (std::size_t at = text.find('&'); at != text.npos; at = text.find('&', at)) {
    std::size_t colon = ++at;
    while (colon < text.size() && isNamePart(text[colon])) ++colon;
    if (colon == at || colon >= text.size() || text[colon] != ':') continue;
    std::size_t end = colon + 1;
    while (end < text.size() && isDigit(text[end])) ++end;
    int number = 0;
    if (std::from_chars(text.data() + colon + 1, text.data() + end, number).ec != std::errc()) continue;
    const int wanted = f(number);
    if (wanted != number) text.replace(colon + 1, end - colon - 1, std::to_string(wanted));
    at = colon;
  }
}

}  // namespace

std::string usedName(const Model& model) {
  return text::toUtf8(model.row ? model.name + L'<' + model.document->name + L'>' : model.name);
}

int modelNumber(const Model& drawing, const ProDependency& model) {
  const auto models = dependencies(drawing);
  const auto found = std::find_if(models.begin(), models.end(), [&](const auto& entry) {
    return entry.name == model.name && entry.type == model.type;
  });
  return found == models.end() ? 0 : static_cast<int>(found - models.begin()) + 1;
}

ProDrawingModelUse modelUse(Model& drawing, const ProDependency& model) {
  ModelRecord& record = drawing.document->record;
  for (const ViewRecord& view : record.views)
    if (isLabelOf(view.model, model.name, model.type)) return ProDrawingModelUse::view;
  const int number = modelNumber(drawing, model);
  bool refers = false;
  for (const TableRecord& table : record.tables)
    for (const RepeatRegionRecord& region : table.repeatRegions) refers = refers || region.model == number;
  eachText(record, [&](std::string& text) {
    eachNumber(text, [&](int entry) {
      refers = refers || entry == number;
      return entry;
    });
  });
  return refers ? ProDrawingModelUse::text : ProDrawingModelUse::none;
}

void removeModel(Model& drawing, const ProDependency& model) {
  ModelRecord& record = drawing.document->record;
  const int number = modelNumber(drawing, model);
  const auto follow = [number](int entry) { return entry > number ? entry - 1 : entry; };
  for (TableRecord& table : record.tables)
    for (RepeatRegionRecord& region : table.repeatRegions) region.model = follow(region.model);
  eachText(record, [&](std::string& text) { eachNumber(text, follow); });
  std::erase_if(record.shownDimensions,
                [&](const auto& dimension) { return isLabelOf(dimension.model, model.name, model.type); });
  std::erase_if(record.models, [&](const auto& item) { return isModel(item, model); });
  if (isLabelOf(record.currentModel, model.name, model.type)) record.currentModel.clear();
  drawing.document->touch(nullptr);
}

void replaceModel(Model& drawing, const ProDependency& from, const Model& to) {
  ModelRecord& record = drawing.document->record;
  const std::string label = modelLabel(to.name, to.type());
  const auto follow = [&](std::string& text) {
    const bool follows = isLabelOf(text, from.name, from.type);
    if (follows) text = label;
    return follows;
  };
  for (ViewRecord& view : record.views) follow(view.model);
  std::erase_if(record.shownDimensions, [&](ShownDimensionRecord& entry) {
    return follow(entry.model) && !to.document->dimension(entry.id, entry.reference);
  });
  follow(record.currentModel);
  if (auto& ofTexts = drawing.document->modelOfTexts;
      ofTexts && ofTexts->name == from.name && ofTexts->type == from.type)
    ofTexts = ProDependency{to.name, {}, to.type()};
  for (UsedModelRecord& item : record.models) {
    if (!isModel(item, from)) continue;
    item.name = usedName(to);
    item.type = to.type();
  }
  drawing.document->touch(nullptr);
}

}  // namespace headless

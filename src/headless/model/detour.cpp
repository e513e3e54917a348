#include "headless/model/detour.h"

#include <algorithm>
#include <set>

#include "headless/model/drawing.h"
#include "headless/model/family.h"

namespace headless {
namespace {

// What a drawing shows, as its document says it: the first model, say, by its name or without one.
struct Shown {
  int sheet = 1;
  std::string model;
};
Shown shownBy(const ModelDocument& drawing) { return {drawing.record.currentSheet, drawing.record.currentModel}; }

// One at a time, as one list at a time goes through a drawing.
struct Detour {
  std::weak_ptr<ModelDocument> drawing;
  Shown from;
  std::set<int> tables;  // that were made on it
  ModelDocument::Marks before;
  std::size_t changes = 0;  // behind its last step; another number: somebody else changed or saved the drawing
};
Detour& lastDetour() {
  static Detour last;
  return last;
}

// The one that goes on, or that begins here.
Detour& detourOf(const Model& drawing) {
  Detour& last = lastDetour();
  const ModelDocument& document = *drawing.document;
  const bool isOther = last.drawing.lock() != drawing.document;
  const bool isDisturbed = !isOther && last.changes != document.marks().changes;
  if (isOther || (isDisturbed && !document.isContentModified()))
    last = {drawing.document, shownBy(document), {}, document.marks(), 0};
  else if (isDisturbed)
    last.before = document.marks();  // what somebody else changed stays changed; the way back stays the same
  return last;
}

// Behind a step.
void stepped(Model& drawing, Detour& detour) {
  ModelDocument& document = *drawing.document;
  document.touch(nullptr);
  detour.changes = document.marks().changes;
  const Shown now = shownBy(document);
  if (now.sheet != detour.from.sheet || now.model != detour.from.model || !detour.tables.empty()) return;
  document.setMarks(detour.before);
  lastDetour() = {};
}

const creo::ProDependency& labelled(const std::vector<creo::ProDependency>& models, const std::string& label) {
  const auto found = std::find_if(models.begin(), models.end(),
                                  [&](const auto& model) { return isLabelOf(label, model.name, model.type); });
  return found == models.end() ? models.front() : *found;
}

bool isSame(const creo::ProDependency& a, const creo::ProDependency& b) { return a.name == b.name && a.type == b.type; }

}  // namespace

void showSheet(Model& drawing, int sheet) {
  Detour& detour = detourOf(drawing);
  const bool isBack = std::clamp(detour.from.sheet, 1, sheetCount(*drawing.document)) == sheet;
  drawing.document->record.currentSheet = isBack ? detour.from.sheet : sheet;
  stepped(drawing, detour);
}

void showModel(Model& drawing, const creo::ProDependency& model) {
  Detour& detour = detourOf(drawing);
  const auto models = dependencies(drawing);
  auto& ofTexts = drawing.document->modelOfTexts;
  if (!ofTexts) ofTexts = currentModelOf(drawing);
  if (isSame(*ofTexts, model)) ofTexts.reset();
  std::string& label = drawing.document->record.currentModel;
  if (isSame(labelled(models, detour.from.model), model))
    label = detour.from.model;
  else
    label = isSame(models.front(), model) ? std::string() : modelLabel(model.name, model.type);  // it needs no mention
  stepped(drawing, detour);
}

void tableMade(Model& drawing, int id) {
  Detour& detour = detourOf(drawing);
  detour.tables.insert(id);
  stepped(drawing, detour);
}

void tableWritten(Model& drawing, int id) {
  Detour& last = lastDetour();
  const bool isOwn = last.drawing.lock() == drawing.document && last.tables.contains(id);
  if (!isOwn) return drawing.document->touch(nullptr);
  stepped(drawing, detourOf(drawing));
}

void tableGone(Model& drawing, int id) {
  Detour& last = lastDetour();
  const bool isOwn = last.drawing.lock() == drawing.document && last.changes == drawing.document->marks().changes &&
                     last.tables.erase(id) > 0;
  if (!isOwn) return drawing.document->touch(nullptr);
  stepped(drawing, last);
}

}  // namespace headless

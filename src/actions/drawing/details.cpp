#include "actions/drawing/details.h"

#include "actions/on_top.h"
#include "core/log.h"
#include "creo/ProDrawingView.h"
#include "creo/ProMdl.h"
#include "text/format.h"

namespace actions {

void sayDetail(std::wstring_view text) { core::logIndented(text, core::kNormal, 1); }
void failDetail(std::wstring_view text) { core::logWrite(text, core::kError); }

void tellResult(creo::ProError result, std::wstring_view success, std::wstring_view failure) {
  if (result == creo::ProNoError)
    sayDetail(success);
  else
    failDetail(failure);
}

void refreshTree(creo::ProMdl drawing) {
  if (const auto window = creo::ProMdlWindowGet(drawing)) creo::ProDrawingtreeRefresh(drawing, window.value);
}

bool turnsTo(creo::SheetGuard& current, int sheet) {
  if (current.change(sheet) == creo::ProNoError) return true;
  failDetail(text::format(L"Can't make sheet %d the current one", sheet));
  return false;
}

creo::ProError showNote(const creo::ProDtlnote& note) {
  return inCurrentWindow(note.drawing, [&] { return creo::ProDtlnoteShow(note); });
}

void eachSheetAndEntry(const Task& task, std::initializer_list<std::wstring_view> stems, SheetNumbers numbers,
                       SheetEntryWork work) {
  const auto entries = sheetEntries(task, stems, numbers);
  const int sheets = entries.empty() ? 0 : sheetCount(task.model());
  for (int sheet = 1; sheet <= sheets; ++sheet) {
    const auto frame = sheetFrame(task.model(), sheet);
    if (!frame) continue;
    for (const SheetEntry& entry : entries)
      if (isForSheet(task, entry, sheet, SheetWork::finding)) work(*frame, entry);
  }
}

std::optional<creo::ProPoint> placeForNew(const Task& task, const SheetEntry& entry, const SheetFrame& frame) {
  const auto given = placeOf(task, entry, L"posx_", L"posy_", SheetWork::adding);
  if (!given) return std::nullopt;
  const creo::ProPoint place = fromEdges(frame, *given), stored = toDrawing(frame, place);
  sayDetail(text::format(L"Input position x: %f, y:%f", place.x, place.y));
  sayDetail(text::format(L"Recalc input position x: %f, y:%f", stored.x, stored.y));
  return stored;
}

std::optional<creo::ProPoint> wantedPlace(const Task& task, const SheetEntry& entry, const SheetFrame& frame) {
  if (task.numbered(L"posx_%d", entry.number).value_or(L"").empty()) return std::nullopt;
  const auto given = placeOf(task, entry, L"posx_", L"posy_", SheetWork::finding);
  if (!given) return std::nullopt;
  return fromEdges(frame, *given);
}

bool standsAt(const SheetFrame& frame, const creo::ProDtlattach& attachment, const creo::ProPoint& wanted) {
  const creo::ProPoint stored = attachment.position, place = toSheet(frame, stored);
  sayDetail(text::format(L"x: %f, y: %f, m1:%f, m2:%f", stored.x, stored.y, frame.matrix.scaleX, frame.matrix.scaleY));
  sayDetail(text::format(L"recalc x: %f, y: %f", place.x, place.y));
  return isNear(place, wanted);
}

std::optional<creo::ProPoint> newPlace(const Task& task, const SheetEntry& entry, const SheetFrame& frame) {
  const auto given = placeOf(task, entry, L"nposx_", L"nposy_", SheetWork::finding);
  if (!given) return std::nullopt;
  sayDetail(text::format(L"values x: %f, y: %f", given->x, given->y));
  const creo::ProPoint stored = toDrawing(frame, fromEdges(frame, *given));
  sayDetail(text::format(L"set to recalc x: %f, y: %f", stored.x, stored.y));
  return stored;
}

creo::Got<creo::ProDtlattach> movedTo(const Task& task, const SheetEntry& entry, const SheetFrame& frame,
                                      const creo::ProDtlattach& attachment) {
  const auto stored = newPlace(task, entry, frame);
  if (!stored) return creo::ProBadInputs;
  return creo::ProDtlattachAlloc(attachment.type, attachment.view, *stored);
}

}  // namespace actions

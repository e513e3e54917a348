// What the actions on placed symbols and on notes have in common: each sheet with each entry, where a detail stands,
// where it goes.
#pragma once

#include <optional>
#include <string_view>

#include "actions/drawing/sheet_entries.h"
#include "creo/ProDtlattach.h"

namespace actions {

enum class DetailWork { move, remove, changeGroup };

// Lines of the log: plain ones at depth 1, and errors.
void sayDetail(std::wstring_view text);
void failDetail(std::wstring_view text);
// The matching one of the two.
void tellResult(creo::ProError result, std::wstring_view success, std::wstring_view failure);

bool isDrawing(creo::ProMdl model);

// Calls work for each sheet of the drawing and each entry that is for it, sheets first.
using SheetEntryWork = creo::FunctionRef<void(const SheetFrame& frame, const SheetEntry& entry)>;
void eachSheetAndEntry(const engine::Task& task, std::initializer_list<std::wstring_view> stems, SheetNumbers numbers,
                       SheetEntryWork work);
inline void eachSheetAndEntry(const engine::Task& task, std::initializer_list<std::wstring_view> stems,
                              SheetEntryWork work) {
  eachSheetAndEntry(task, stems, {}, work);
}

// `posx_N` and `posy_N` on a sheet as a new detail's place, in the drawing's coordinates. Nothing, with a line, where
// they can't be read.
std::optional<creo::ProPoint> placeForNew(const engine::Task& task, const SheetEntry& entry, const SheetFrame& frame);
// The place that the entry looks at, in the sheet's coordinates; nothing where it doesn't look for a place.
std::optional<creo::ProPoint> wantedPlace(const engine::Task& task, const SheetEntry& entry, const SheetFrame& frame);
// Whether a detail stands there.
bool standsAt(const SheetFrame& frame, const creo::ProDtlattach& attachment, const creo::ProPoint& wanted);
// The entry's new place `nposx_N`, `nposy_N` in the drawing's coordinates. Nothing, with a line, where it can't be
// read.
std::optional<creo::ProPoint> newPlace(const engine::Task& task, const SheetEntry& entry, const SheetFrame& frame);
// The attachment with the entry's new place `nposx_N`, `nposy_N`.
creo::Got<creo::ProDtlattach> movedTo(const engine::Task& task, const SheetEntry& entry, const SheetFrame& frame,
                                      const creo::ProDtlattach& attachment);

}  // namespace actions

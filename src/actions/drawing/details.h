// What the actions on placed symbols and on notes have in common: each sheet with each entry, where a detail stands,
// where it goes.
#pragma once

#include <optional>
#include <string_view>

#include "actions/action.h"
#include "actions/drawing/sheet_entries.h"
#include "creo/ProNote.h"
#include "creo/guards.h"

namespace actions {

enum class DetailWork { move, remove, changeGroup };

// Lines of the log: plain ones at depth 1, and errors.
void sayDetail(std::wstring_view text);
void failDetail(std::wstring_view text);
// The matching one of the two.
void tellResult(creo::ProError result, std::wstring_view success, std::wstring_view failure);

// Makes the sheet the current one. False, with an error line: it doesn't become that.
bool turnsTo(creo::SheetGuard& current, int sheet);

// Brings the tree beside the drawing up to date, where a window shows it.
void refreshTree(creo::ProMdl drawing);

// Lets its sheet show the note; the drawing is brought into the current window where Creo refuses for want of it.
creo::ProError showNote(const creo::ProDtlnote& note);

// Calls work for each sheet of the drawing and each entry that is for it, sheets first.
using SheetEntryWork = creo::FunctionRef<void(const SheetFrame& frame, const SheetEntry& entry)>;
void eachSheetAndEntry(const Task& task, std::initializer_list<std::wstring_view> stems, SheetNumbers numbers,
                       SheetEntryWork work);
inline void eachSheetAndEntry(const Task& task, std::initializer_list<std::wstring_view> stems, SheetEntryWork work) {
  eachSheetAndEntry(task, stems, {}, work);
}

// `posx_N` and `posy_N` on a sheet as a new detail's place, in the drawing's coordinates. Nothing, with a line, where
// they can't be read.
std::optional<creo::ProPoint> placeForNew(const Task& task, const SheetEntry& entry, const SheetFrame& frame);
// The place that the entry looks at, in the sheet's coordinates; nothing where it doesn't look for a place.
std::optional<creo::ProPoint> wantedPlace(const Task& task, const SheetEntry& entry, const SheetFrame& frame);
// Whether a detail stands there.
bool standsAt(const SheetFrame& frame, const creo::ProDtlattach& attachment, const creo::ProPoint& wanted);
// The entry's new place `nposx_N`, `nposy_N` in the drawing's coordinates. Nothing, with a line, where it can't be
// read.
std::optional<creo::ProPoint> newPlace(const Task& task, const SheetEntry& entry, const SheetFrame& frame);
// The attachment with the entry's new place `nposx_N`, `nposy_N`.
creo::Got<creo::ProDtlattach> movedTo(const Task& task, const SheetEntry& entry, const SheetFrame& frame,
                                      const creo::ProDtlattach& attachment);

// ---- what rows have in common

// Another model is left alone without a word.
constexpr Conditions kOnDrawings = {kFilter, {.test = Test::drawingType, .outcome = done}};

// Where something new stands, and on the sheets of which format.
constexpr core::Attribute kPlaceOfNew[] = {
    {.name = L"posx_%d",
     .kind = core::Kind::number,
     .need = core::Need::needed,
     .about = "where it stands, in the sheet's coordinates; below 0 from the right edge"},
    {.name = L"posy_%d",
     .kind = core::Kind::number,
     .need = core::Need::needed,
     .about = "the same; below 0 from the upper edge"},
    {.name = L"fn_%d",
     .kind = core::Kind::pattern,
     .need = core::Need::needed,
     .about = "the name of the sheet's format; empty: every sheet; no_format: one without"},
};
constexpr core::Attribute kSheet[] = {
    {.name = L"sheet_%d",
     .kind = core::Kind::integer,
     .variables = true,
     .about = "the number of the sheet; absent, empty, 0 or -1: all sheets"},
};
// What is looked for at a place, within 5 units; a text that it holds is the alternative.
constexpr core::Attribute kWantedPlace[] = {
    {.name = L"posx_%d",
     .kind = core::Kind::number,
     .need = core::Need::oneOf,
     .about = "a place that they stand at, within 5 units of the sheet; below 0 from the right edge"},
    {.name = L"posy_%d", .kind = core::Kind::number, .about = "the same; below 0 from the upper edge"},
};
constexpr core::Attribute kWantedFormat[] = {
    {.name = L"fn_%d",
     .kind = core::Kind::pattern,
     .about = "the name of the sheet's format; absent or empty: every sheet"},
};
constexpr core::Attribute kNewPlace[] = {
    {.name = L"nposx_%d",
     .kind = core::Kind::number,
     .need = core::Need::needed,
     .about = "the new place, in the sheet's coordinates; below 0 from the right edge"},
    {.name = L"nposy_%d",
     .kind = core::Kind::number,
     .need = core::Need::needed,
     .about = "the same; below 0 from the upper edge"},
};

}  // namespace actions

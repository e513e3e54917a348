// Notes: those of models, and those on the sheets of drawings. ProNotFound: the note has gone.
#pragma once

#include "creo/ProDatum.h"
#include "creo/ProDtlattach.h"

namespace creo {

struct ProNote {
  ProMdl owner;
  int id = 0;
};
// The notes of a solid; those of a drawing lie on its sheets.
ProError ProMdlNoteVisit(ProMdl model, Visitor<ProNote> visitor);
// ProNotFound also for one without a name.
Got<std::wstring> ProNoteNameGet(const ProNote& note);
// Its lines, as they were entered.
Got<std::vector<std::wstring>> ProNoteTextGet(const ProNote& note);

// A note in the space of a solid, without lines and without a place; it isn't seen before it is shown. ProExists: a
// note has the name, case-blind; ProBadInputs: no solid, or an empty name; ProGeneralError: a read-only model, here and
// below. Below ProBadInputs: a note of a drawing; ProCantWrite: a note that may only be read.
Got<ProNote> ProSolidNoteCreate(ProMdl solid, const std::wstring& name);
// Other lines, each of one piece, in place of those that it has; a note that is displayed has to be shown anew.
// ProGeneralError also for a text that can't be varied.
ProError ProNoteTextSet(const ProNote& note, const std::vector<std::wstring>& lines);
// It stands at a coordinate system of its solid from now on. ProNotFound also for one that has gone; ProBadInputs: one
// of another model, or without a name, by which the note knows it; ProGeneralError: the note's plane doesn't suit it.
ProError ProNotePlacementSet(const ProNote& note, const ProCsys& csys);
ProError ProNoteDelete(const ProNote& note);

struct ProDtlnote {
  ProMdl drawing;
  int id = 0;
};
// displayed: as the sheet shows it, "&" forms replaced, which a note that isn't displayed may leave as they are;
// symbolic: as it was entered.
enum class ProDtlText : int { displayed = 0, symbolic = 1 };

// The notes of a sheet. ProNotFound: it has none. ProBadInputs: no such sheet.
Got<std::vector<ProDtlnote>> ProDrawingDtlnotesCollect(ProMdl drawing, int sheet);
// ProNotFound also for one without a name.
Got<std::wstring> ProDtlnoteNameGet(const ProDtlnote& note);
Got<std::vector<std::wstring>> ProDtlnoteTextGet(const ProDtlnote& note, ProDtlText mode);
ProError ProDrawingDtlnoteVisit(ProMdl drawing, int sheet, Visitor<ProDtlnote> visitor);

// A piece of a line, symbolic, with its form. 0 and empty: what the drawing's detail options say. Height, width and
// thickness in units of the sheet, slant in degrees.
struct ProDtlnotetext {
  std::wstring text;
  double height = 0, width = 0, slant = 0, thickness = 0;
  std::wstring font;
};
struct ProDtlnoteline {
  std::vector<ProDtlnotetext> texts;
};
// What a note consists of; a modification leaves whatever isn't here as it is, such as its name.
struct ProDtlnotedata {
  std::vector<ProDtlnoteline> lines;
  ProDtlattach attachment;
};
// The height that a text has on the drawing's current sheet: its own, else that of the detail options.
Got<double> ProDtlnotetextHeightGet(ProMdl drawing, const ProDtlnotetext& text);
Got<ProDtlnotedata> ProDtlnoteDataGet(const ProDtlnote& note);
// A note on the sheet of the view that it hangs on, else on the current one; no sheet shows it yet. ProBadInputs: no
// attachment, no line, or a measure that is none; ProNotFound: no such view; ProGeneralError: a read-only drawing.
Got<ProDtlnote> ProDtlnoteCreate(ProMdl drawing, const ProDtlnotedata& data);
// The same codes; a note may lose all its lines.
ProError ProDtlnoteModify(const ProDtlnote& note, const ProDtlnotedata& data);
// Its sheet shows it from now on, or doesn't until the drawing is regenerated. ProGeneralError: the drawing isn't the
// current model, or it is read-only.
ProError ProDtlnoteShow(const ProDtlnote& note);
ProError ProDtlnoteErase(const ProDtlnote& note);
ProError ProDtlnoteDelete(const ProDtlnote& note);

// What the variable texts of a placed symbol say. ProNotFound also for one without any.
Got<std::vector<std::wstring>> ProDtlsyminstTextGet(const ProDtlsyminst& symbol, ProDtlText mode);

}  // namespace creo

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
// Its lines.
Got<std::vector<std::wstring>> ProNoteTextGet(const ProNote& note);

// A note in the space of a solid, without lines and without a place. ProExists: a note has the name, case-blind;
// ProBadInputs: no solid, or an empty name. Below ProBadInputs: a note of a drawing.
Got<ProNote> ProSolidNoteCreate(ProMdl solid, const std::wstring& name);
// Other lines, each of one piece, in place of those that it has.
ProError ProNoteTextSet(const ProNote& note, const std::vector<std::wstring>& lines);
// It stands at a coordinate system of its solid from now on. ProNotFound also for one that has gone; ProBadInputs: one
// of another model, or without a name, by which the note knows it.
ProError ProNotePlacementSet(const ProNote& note, const ProCsys& csys);
ProError ProNoteDelete(const ProNote& note);

struct ProDtlnote {
  ProMdl drawing;
  int id = 0;
};
// displayed: as the sheet shows it, "&" forms replaced; symbolic: as it was entered.
enum class ProDtlText : int { displayed = 0, symbolic = 1 };

// Empty for none.
Got<std::vector<ProDtlnote>> ProDrawingDtlnotesCollect(ProMdl drawing, int sheet);
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
// attachment, no line, or a measure that is none; ProNotFound: no such view.
Got<ProDtlnote> ProDtlnoteCreate(ProMdl drawing, const ProDtlnotedata& data);
// The same codes; a note may lose all its lines.
ProError ProDtlnoteModify(const ProDtlnote& note, const ProDtlnotedata& data);
// Its sheet shows it, or doesn't.
ProError ProDtlnoteShow(const ProDtlnote& note);
ProError ProDtlnoteErase(const ProDtlnote& note);
ProError ProDtlnoteDelete(const ProDtlnote& note);

// What the variable texts of a placed symbol say.
Got<std::vector<std::wstring>> ProDtlsyminstTextGet(const ProDtlsyminst& symbol, ProDtlText mode);

}  // namespace creo

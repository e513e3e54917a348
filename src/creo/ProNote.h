// Notes: those of models, and those on the sheets of drawings. ProNotFound: the note has gone.
#pragma once

#include "creo/ProDrawing.h"

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
// What the variable texts of a placed symbol say.
Got<std::vector<std::wstring>> ProDtlsyminstTextGet(const ProDtlsyminst& symbol, ProDtlText mode);

}  // namespace creo

#include "creo/ProNote.h"

#include <algorithm>

#include "headless/creo/drawing_operation.h"
#include "headless/model/drawing_text.h"
#include "text/encoding.h"

namespace creo {

using headless::Model;
using headless::NoteRecord;
using headless::onDrawing;
using headless::onModel;
using headless::SymbolRecord;
using Lines = std::vector<std::wstring>;
using State = headless::Session::State;

namespace {

Got<std::wstring> nameOf(Model& model, int id) {
  const NoteRecord* note = model.document->note(id);
  if (!note || note->name.empty()) return ProNotFound;
  return text::fromUtf8(note->name);
}

std::wstring entered(const std::string& line) { return text::fromUtf8(line); }
std::wstring entered(const headless::NoteLineRecord& line) { return text::fromUtf8(line.text()); }

template <class Line>
Lines entered(const std::vector<Line>& stored) {
  Lines lines;
  for (const Line& line : stored) lines.push_back(entered(line));
  return lines;
}

// Of a drawing, as the sheet shows them where that is wanted.
template <class Line>
Lines onSheetOf(State& state, const Model& drawing, int sheet, const std::vector<Line>& stored, ProDtlText mode) {
  Lines lines = entered(stored);
  if (mode == ProDtlText::symbolic) return lines;
  for (std::wstring& line : lines) line = headless::displayedText(state.models, state.parameters, drawing, sheet, line);
  return lines;
}

}  // namespace

ProError ProMdlNoteVisit(ProMdl model, Visitor<ProNote> visitor) {
  return onModel("ProMdlNoteVisit", model, [&](State&, Model& m) -> ProError {
    std::vector<ProNote> notes;
    if (!headless::hasSheets(m.type()))
      for (const NoteRecord& one : m.document->record.notes) notes.push_back({m.handle, one.id});
    return headless::visit<ProNote>(notes, visitor);
  });
}

Got<std::wstring> ProNoteNameGet(const ProNote& note) {
  return onModel("ProNoteNameGet", note.owner, [&](State&, Model& m) { return nameOf(m, note.id); });
}

Got<Lines> ProNoteTextGet(const ProNote& note) {
  return onModel("ProNoteTextGet", note.owner, [&](State&, Model& m) -> Got<Lines> {
    const NoteRecord* record = m.document->note(note.id);
    if (!record) return ProNotFound;
    return entered(record->lines);
  });
}

Got<std::vector<ProDtlnote>> ProDrawingDtlnotesCollect(ProMdl drawing, int sheet) {
  return headless::onSheet("ProDrawingDtlnotesCollect", drawing, sheet,
                           [&](State&, Model& m, const headless::SheetRecord&) -> Got<std::vector<ProDtlnote>> {
                             std::vector<ProDtlnote> notes;
                             for (const NoteRecord& one : m.document->record.notes)
                               if (one.sheet == sheet) notes.push_back({m.handle, one.id});
                             return notes;
                           });
}

Got<std::wstring> ProDtlnoteNameGet(const ProDtlnote& note) {
  return onDrawing("ProDtlnoteNameGet", note.drawing, [&](State&, Model& m) { return nameOf(m, note.id); });
}

Got<Lines> ProDtlnoteTextGet(const ProDtlnote& note, ProDtlText mode) {
  return onDrawing("ProDtlnoteTextGet", note.drawing, [&](State& state, Model& m) -> Got<Lines> {
    const NoteRecord* record = m.document->note(note.id);
    if (!record) return ProNotFound;
    return onSheetOf(state, m, record->sheet, record->lines, mode);
  });
}

Got<Lines> ProDtlsyminstTextGet(const ProDtlsyminst& symbol, ProDtlText mode) {
  return onDrawing("ProDtlsyminstTextGet", symbol.drawing, [&](State& state, Model& m) -> Got<Lines> {
    const auto& symbols = m.document->record.symbols;
    const auto found =
        std::find_if(symbols.begin(), symbols.end(), [&](const SymbolRecord& one) { return one.id == symbol.id; });
    if (found == symbols.end()) return ProNotFound;
    return onSheetOf(state, m, found->sheet, found->texts, mode);
  });
}

}  // namespace creo

#include "creo/ProNote.h"

#include <algorithm>

#include "headless/creo/drawing_operation.h"
#include "headless/creo/solid_operation.h"
#include "headless/model/drawing_text.h"
#include "headless/model/notes.h"
#include "headless/model/states.h"
#include "headless/model/symbols.h"
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
  const NoteRecord* note = headless::noteOf(*model.document, id);
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

// A note in the space of a solid. body: (model, record).
template <class Body>
ProError onSolidNote(std::string_view operation, const ProNote& note, Body body) {
  return headless::onSolid(operation, note.owner, [&](State&, Model& m) -> ProError {
    NoteRecord* record = headless::noteOf(*m.document, note.id);
    return record ? body(m, *record) : ProNotFound;
  });
}

}  // namespace

ProError ProMdlNoteVisit(ProMdl model, Visitor<ProNote> visitor) {
  return onModel("ProMdlNoteVisit", model, [&](State&, Model& m) -> ProError {
    const headless::NoteWalk walk(m.document);
    std::vector<ProNote> notes;
    if (!headless::hasSheets(m.type()))
      for (const NoteRecord& note : m.document->record.notes)
        if (!headless::isRemoved(*m.document, note.id)) notes.push_back({m.handle, note.id});
    return headless::visit<ProNote>(notes, visitor);
  });
}

Got<std::wstring> ProNoteNameGet(const ProNote& note) {
  return onModel("ProNoteNameGet", note.owner, [&](State&, Model& m) { return nameOf(m, note.id); });
}

Got<Lines> ProNoteTextGet(const ProNote& note) {
  return onModel("ProNoteTextGet", note.owner, [&](State&, Model& m) -> Got<Lines> {
    const NoteRecord* record = headless::noteOf(*m.document, note.id);
    if (!record) return ProNotFound;
    return entered(record->lines);
  });
}

Got<ProNote> ProSolidNoteCreate(ProMdl solid, const std::wstring& name) {
  return headless::onSolid("ProSolidNoteCreate", solid, [&](State&, Model& m) -> Got<ProNote> {
    auto& notes = m.document->record.notes;
    if (name.empty()) return ProBadInputs;
    if (headless::recordNamed(notes, text::toUtf8(name))) return ProExists;
    const int id = headless::nextId(notes);
    if (id == 0) return ProGeneralError;
    NoteRecord& note = notes.emplace_back();
    note.id = id;
    note.name = text::toUtf8(name);
    m.document->touch(nullptr);
    return ProNote{m.handle, id};
  });
}

ProError ProNoteTextSet(const ProNote& note, const Lines& lines) {
  return onSolidNote("ProNoteTextSet", note, [&](Model& m, NoteRecord& record) {
    if (entered(record.lines) == lines) return ProNoError;
    record.lines.clear();
    for (const std::wstring& line : lines) record.lines.emplace_back().texts.emplace_back().text = text::toUtf8(line);
    m.document->touch(nullptr);
    return ProNoError;
  });
}

ProError ProNotePlacementSet(const ProNote& note, const ProCsys& csys) {
  const auto name = ProCsysNameGet(csys);
  return onSolidNote("ProNotePlacementSet", note, [&](Model& m, NoteRecord& record) -> ProError {
    if (!name) return name.error;
    if (csys.owner != m.handle || name.value.empty()) return ProBadInputs;
    const std::string now = text::toUtf8(name.value);
    if (record.csys == now) return ProNoError;
    record.csys = now;
    m.document->touch(nullptr);
    return ProNoError;
  });
}

ProError ProNoteDelete(const ProNote& note) {
  return onSolidNote("ProNoteDelete", note, [&](Model& m, const NoteRecord& record) {
    headless::removeNote(*m.document, record);
    return ProNoError;
  });
}

Got<std::wstring> ProDtlnoteNameGet(const ProDtlnote& note) {
  return onDrawing("ProDtlnoteNameGet", note.drawing, [&](State&, Model& m) { return nameOf(m, note.id); });
}

Got<Lines> ProDtlnoteTextGet(const ProDtlnote& note, ProDtlText mode) {
  return onDrawing("ProDtlnoteTextGet", note.drawing, [&](State& state, Model& m) -> Got<Lines> {
    const NoteRecord* record = headless::noteOf(*m.document, note.id);
    if (!record) return ProNotFound;
    // A note that its sheet doesn't show has no text that is shown.
    return onSheetOf(state, m, record->sheet, record->lines, record->erased ? ProDtlText::symbolic : mode);
  });
}

Got<Lines> ProDtlsyminstTextGet(const ProDtlsyminst& symbol, ProDtlText mode) {
  return onDrawing("ProDtlsyminstTextGet", symbol.drawing, [&](State& state, Model& m) -> Got<Lines> {
    const auto& symbols = m.document->record.symbols;
    const auto found =
        std::find_if(symbols.begin(), symbols.end(), [&](const SymbolRecord& entry) { return entry.id == symbol.id; });
    if (found == symbols.end() || found->texts.empty()) return ProNotFound;
    return onSheetOf(state, m, found->sheet, found->texts, mode);
  });
}

}  // namespace creo

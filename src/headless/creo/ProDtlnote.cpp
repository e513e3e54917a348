// Notes on the sheets of drawings, with their lines and the forms of their texts.
#include <cmath>
#include <limits>

#include "creo/ProNote.h"
#include "headless/creo/drawing_operation.h"
#include "headless/creo/on_top.h"
#include "headless/model/notes.h"
#include "headless/model/sheet_units.h"
#include "headless/model/symbols.h"
#include "text/encoding.h"

namespace creo {

using headless::Model;
using headless::NoteLineRecord;
using headless::NoteRecord;
using headless::NoteTextRecord;
using headless::onDrawing;
using State = headless::Session::State;

namespace {

// body: (model, record). ProNotFound for a note that has gone.
template <class Body>
auto onNote(std::string_view name, const ProDtlnote& note, Body body)
    -> std::invoke_result_t<Body, Model&, NoteRecord&> {
  using Result = std::invoke_result_t<Body, Model&, NoteRecord&>;
  return onDrawing(name, note.drawing, [&](State&, Model& m) -> Result {
    NoteRecord* record = headless::noteOf(*m.document, note.id);
    if (!record) return Result(ProNotFound);
    return body(m, *record);
  });
}

// As onNote; ProGeneralError where the current window doesn't show the drawing.
template <class Body>
ProError onCurrentNote(std::string_view name, const ProDtlnote& note, Body body) {
  return onDrawing(name, note.drawing, [&](State& state, Model& m) -> ProError {
    NoteRecord* record = headless::noteOf(*m.document, note.id);
    if (!record) return ProNotFound;
    return headless::isOnTop(state, m) ? body(m, *record) : ProGeneralError;
  });
}

ProDtlnotetext textOf(const NoteTextRecord& record) {
  return {text::fromUtf8(record.text), record.height, record.width, record.slant, record.thickness,
          text::fromUtf8(record.font)};
}

bool isMeasure(double value) { return std::isfinite(value) && value >= 0; }
bool isForm(const ProDtlnotetext& text) {
  return isMeasure(text.height) && isMeasure(text.width) && isMeasure(text.thickness) && std::isfinite(text.slant);
}
bool areLines(const std::vector<ProDtlnoteline>& lines) {
  return std::all_of(lines.begin(), lines.end(), [](const ProDtlnoteline& line) {
    return std::all_of(line.texts.begin(), line.texts.end(), &isForm);
  });
}

void put(NoteTextRecord& record, const ProDtlnotetext& text) {
  record.text = text::toUtf8(text.text);
  record.height = text.height;
  record.width = text.width;
  record.slant = text.slant;
  record.thickness = text.thickness;
  record.font = text::toUtf8(text.font);
}

// Texts that stay in their place keep what only their document knows.
void put(std::vector<NoteLineRecord>& records, const std::vector<ProDtlnoteline>& lines) {
  records.resize(lines.size());
  for (std::size_t i = 0; i < lines.size(); ++i) {
    auto& texts = records[i].texts;
    texts.resize(lines[i].texts.size());
    for (std::size_t j = 0; j < texts.size(); ++j) put(texts[j], lines[i].texts[j]);
  }
}

// Puts the data into the note; nothing is changed where it fails.
ProError take(Model& m, NoteRecord& note, const ProDtlnotedata& data, int sheetWithoutView) {
  if (data.attachment.type == ProDtlattachType::none || !areLines(data.lines)) return ProBadInputs;
  const int sheet = headless::sheetOfView(*m.document, data.attachment.view, sheetWithoutView);
  if (sheet == 0) return ProNotFound;
  put(note.lines, data.lines);
  note.sheet = sheet;
  note.view = data.attachment.view;
  note.position.x = data.attachment.position.x;
  note.position.y = data.attachment.position.y;
  m.document->touch(nullptr);
  return ProNoError;
}

std::vector<ProDtlnote> notesOf(const Model& drawing, int sheet) {
  std::vector<ProDtlnote> notes;
  for (const NoteRecord& note : drawing.document->record.notes)
    if (note.sheet == sheet && !headless::isRemoved(*drawing.document, note.id))
      notes.push_back({drawing.handle, note.id});
  return notes;
}

}  // namespace

ProError ProDrawingDtlnoteVisit(ProMdl drawing, int sheet, Visitor<ProDtlnote> visitor) {
  return headless::onSheet("ProDrawingDtlnoteVisit", drawing, sheet,
                           [&](State&, Model& m, const headless::SheetRecord&) -> ProError {
                             const headless::NoteWalk walk(m.document);
                             return headless::visit<ProDtlnote>(notesOf(m, sheet), visitor);
                           });
}

Got<std::vector<ProDtlnote>> ProDrawingDtlnotesCollect(ProMdl drawing, int sheet) {
  return headless::onSheetOrCurrent("ProDrawingDtlnotesCollect", drawing, sheet, [](State&, Model& m, int number) {
    return headless::collected(notesOf(m, number));
  });
}

Got<double> ProDtlnotetextHeightGet(ProMdl drawing, const ProDtlnotetext& text) {
  return onDrawing("ProDtlnotetextHeightGet", drawing, [&](State&, Model& m) -> Got<double> {
    if (text.height > 0) return text.height;
    return headless::textHeight(*m.document, headless::currentSheetOf(*m.document));
  });
}

Got<ProDtlnotedata> ProDtlnoteDataGet(const ProDtlnote& note) {
  return onNote("ProDtlnoteDataGet", note, [](Model&, NoteRecord& record) -> Got<ProDtlnotedata> {
    ProDtlnotedata data;
    for (const NoteLineRecord& line : record.lines) {
      ProDtlnoteline& into = data.lines.emplace_back();
      for (const NoteTextRecord& text : line.texts) into.texts.push_back(textOf(text));
    }
    data.attachment = {ProDtlattachType::free, record.view, {record.position.x, record.position.y}};
    return data;
  });
}

Got<ProDtlnote> ProDtlnoteCreate(ProMdl drawing, const ProDtlnotedata& data) {
  return onDrawing("ProDtlnoteCreate", drawing, [&](State&, Model& m) -> Got<ProDtlnote> {
    auto& notes = m.document->record.notes;
    if (data.lines.empty()) return ProBadInputs;
    NoteRecord note;
    note.id = headless::nextId(notes);
    if (note.id == 0) return ProGeneralError;
    if (const ProError taken = take(m, note, data, headless::currentSheetOf(*m.document))) return taken;
    note.erased = true;
    const int id = note.id;
    notes.push_back(std::move(note));
    return ProDtlnote{m.handle, id};
  });
}

ProError ProDtlnoteModify(const ProDtlnote& note, const ProDtlnotedata& data) {
  return onNote("ProDtlnoteModify", note,
                [&](Model& m, NoteRecord& record) { return take(m, record, data, record.sheet); });
}

ProError ProDtlnoteShow(const ProDtlnote& note) {
  return onCurrentNote("ProDtlnoteShow", note, [](Model& m, NoteRecord& record) {
    if (record.erased) m.document->touch(nullptr);
    record.erased = false;
    return ProNoError;
  });
}

// What is on the screen is no part of the drawing.
ProError ProDtlnoteErase(const ProDtlnote& note) {
  return onCurrentNote("ProDtlnoteErase", note, [](Model&, NoteRecord&) { return ProNoError; });
}

ProError ProDtlnoteDelete(const ProDtlnote& note) {
  return onNote("ProDtlnoteDelete", note, [&](Model& m, NoteRecord& record) {
    headless::removeNote(*m.document, record);
    return ProNoError;
  });
}

}  // namespace creo

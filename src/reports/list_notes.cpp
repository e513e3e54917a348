// The list of notes and symbols.
#include "creo/ProNote.h"
#include "reports/list_rows.h"
#include "reports/sheet_names.h"
#include "text/format.h"

namespace reports {
namespace {

struct Annotation {
  const ListSubject& subject;
  std::wstring_view type;
  std::wstring name, value;
};

constexpr ListColumn<Annotation> kColumns[] = {
    {L"File name", L"fname", [](const Annotation& annotation) { return annotation.subject.file.name; }},
    {L"Item name", L"name", [](const Annotation& annotation) { return annotation.name; }},
    {L"Item value", L"value", [](const Annotation& annotation) { return annotation.value; }},
    {L"Item type", L"type", [](const Annotation& annotation) { return std::wstring(annotation.type); }},
};

// Notes without a name are told apart by their ids.
std::wstring nameOrId(const creo::Got<std::wstring>& name, int id) {
  return name ? name.value : text::format(L"%d", id);
}

void addSheet(const ListRows<Annotation>& rows, const ListSubject& subject, int sheet, creo::ProDtlText mode) {
  for (const creo::ProDtlnote& note : creo::ProDrawingDtlnotesCollect(subject.model, sheet).value)
    rows.add({subject, L"Detail note", nameOrId(creo::ProDtlnoteNameGet(note), note.id),
              joined(creo::ProDtlnoteTextGet(note, mode))});
  for (const creo::ProDtlsyminst& symbol : creo::ProDrawingDtlsyminstsCollect(subject.model, sheet).value) {
    rows.add({subject, L"Symbol instance", nameOrId(symbolName(symbol), symbol.id),
              joined(creo::ProDtlsyminstTextGet(symbol, mode))});
  }
}

}  // namespace

void noteList(CsvReport& report, const ListSubject& subject) {
  const ListRows<Annotation> rows(report, kColumns);
  if (subject.type == creo::ProMdlType::drawing) {
    const auto mode = subject.task.isTrue(L"txtform") ? creo::ProDtlText::displayed : creo::ProDtlText::symbolic;
    return eachSheet(subject.model, [&](int sheet) { addSheet(rows, subject, sheet, mode); });
  }
  creo::ProMdlNoteVisit(subject.model, [&](const creo::ProNote& note) {
    rows.add({subject, L"Note", nameOrId(creo::ProNoteNameGet(note), note.id), joined(creo::ProNoteTextGet(note))});
    return creo::ProNoError;
  });
}

}  // namespace reports

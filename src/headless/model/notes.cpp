#include "headless/model/notes.h"

namespace headless {

NoteWalk::~NoteWalk() {
  // Of notes of one id the first was meant.
  std::erase_if(document().record.notes, [this](const NoteRecord& note) { return removed_.erase(note.id) > 0; });
}

NoteRecord* noteOf(ModelDocument& document, int id) { return isRemoved(document, id) ? nullptr : document.note(id); }

bool isRemoved(const ModelDocument& document, int id) {
  const NoteWalk* walk = NoteWalk::of(document);
  return walk && walk->removed(id);
}

void removeNote(ModelDocument& document, const NoteRecord& note) {
  document.touch(nullptr);
  if (NoteWalk* walk = NoteWalk::of(document)) return walk->remove(note.id);
  auto& notes = document.record.notes;
  notes.erase(notes.begin() + (&note - notes.data()));
}

}  // namespace headless

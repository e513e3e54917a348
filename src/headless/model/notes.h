// The notes of a document, and what happens to them while they are walked.
#pragma once

#include <memory>
#include <unordered_set>

#include "headless/model/walks.h"

namespace headless {

// A walk over a document's notes. While one goes on a deleted note stays in its place, until the outermost walk of the
// document ends: deleting all of 8,000 notes moves none of them 8,000 times.
class NoteWalk : public WalkOver<NoteWalk> {
 public:
  explicit NoteWalk(std::shared_ptr<ModelDocument> document) : WalkOver(std::move(document)) {}
  ~NoteWalk();
  NoteWalk(const NoteWalk&) = delete;
  NoteWalk& operator=(const NoteWalk&) = delete;
  void remove(int id) { removed_.insert(id); }
  [[nodiscard]] bool removed(int id) const { return removed_.contains(id); }

 private:
  std::unordered_set<int> removed_;
};

// Null: the note has gone.
NoteRecord* noteOf(ModelDocument& document, int id);
// Has the note gone in a walk that still goes on?
bool isRemoved(const ModelDocument& document, int id);
// The note, one of the document's, goes.
void removeNote(ModelDocument& document, const NoteRecord& note);

}  // namespace headless

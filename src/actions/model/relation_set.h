// What the actions on relations have in common: sets, and writing them safely.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "actions/task.h"
#include "creo/ProRelset.h"

namespace actions {

using RelationLines = std::vector<std::wstring>;

// Of actions on relations and programs: an instance is refused.
constexpr Conditions kOnRelations = {kFilter, kNotInstance};

// A model's relations, or those behind its regeneration.
class RelationSet {
 public:
  RelationSet(const Task& task, bool post);
  // False: the model has no such set. make(): gives it an empty one; false, with an error line: it can't.
  [[nodiscard]] bool isThere() const { return static_cast<bool>(set_); }
  bool make();
  // True, with an error line: whether the model has such a set can't be told.
  [[nodiscard]] bool isLost() const;
  [[nodiscard]] const creo::ProRelset& set() const { return set_.value; }
  // None where there is no such set. Nothing, with an error line: they can't be reached or read, and writing others
  // would lose them.
  [[nodiscard]] std::optional<RelationLines> lines() const;

  // Runs the set as it is. A fault has its line: a warning where `ignoreFailure` says so, and true; else an error and
  // false, and nothing may be added.
  [[nodiscard]] bool isSound() const;
  // Writes the lines and runs them. Where they fail the old ones come back, unless `ignoreFailure` says otherwise.
  void write(const RelationLines& lines, const RelationLines& old) const;

 private:
  [[nodiscard]] bool tellLost() const;
  [[nodiscard]] creo::ProError tried(const RelationLines& lines) const;

  const Task& task_;
  bool post_, ignoresFailure_;
  creo::Got<creo::ProModelitem> owner_;
  creo::Got<creo::ProRelset> set_;
};

// Ends in a backslash, blanks behind it aside: the next line belongs to it.
bool isContinued(std::wstring_view line);

// Adds the lines `key`0, `key`1, ... (`key`c of them) and writes them safely. place: the line before which they come;
// nothing: at the start, or at the end where `onEnd` is "true".
void addRelationLines(const Task& task, RelationSet& set, std::wstring_view key, std::optional<std::size_t> place);

}  // namespace actions

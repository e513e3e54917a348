#include "actions/model/relation_set.h"

#include "core/log.h"
#include "core/messages.h"
#include "creo/ProMdl.h"
#include "documents/relations.h"
#include "language/variables.h"
#include "text/format.h"
#include "text/numbers.h"

namespace actions {

using core::Message;

namespace {

constexpr std::wstring_view kBlanks = L" \t\r\n";

// The owner of the set: the model, its id saying which.
creo::Got<creo::ProModelitem> ownerOf(const Task& task, bool post) {
  auto owner = creo::ProMdlToModelitem(task.model());
  if (owner && post) owner.value.id = creo::kPostRegeneration;
  return owner;
}

}  // namespace

RelationSet::RelationSet(const Task& task, bool post)
    : task_(task),
      post_(post),
      ignoresFailure_(task.has(L"ignoreFailure") && task.attribute(L"ignoreFailure") != L"false"),
      owner_(ownerOf(task, post)),
      set_(owner_ ? documents::relationsOf(owner_.value) : creo::Got<creo::ProRelset>(owner_.error)) {}

bool RelationSet::make() {
  if (isLost()) return false;
  if (!set_) set_ = creo::ProRelsetCreate(owner_.value);
  return set_ || !tellLost();
}

bool RelationSet::isLost() const {
  const bool isNone = set_.error == creo::ProNotFound || set_.error == creo::ProBadInputs;
  return !set_ && !(owner_ && isNone) && tellLost();
}

// True.
bool RelationSet::tellLost() const {
  core::logWrite(post_ ? L"Can't reach the post relations, they aren't changed"
                       : L"Can't reach the relations, they aren't changed",
                 core::kError);
  return true;
}

std::optional<RelationLines> RelationSet::lines() const {
  if (isLost()) return std::nullopt;
  if (!set_) return RelationLines();
  auto lines = creo::ProRelsetRelationsGet(set_.value);
  if (lines) return std::move(lines.value);
  core::logWrite(L"Can't read the relations, they aren't changed", core::kError);
  return std::nullopt;
}

bool RelationSet::isSound() const {
  if (creo::ProRelsetRegenerate(set_.value) == creo::ProNoError) return true;
  core::logMsgPlain(post_ ? Message::currentPostRelationsFail : Message::currentRelationsFail,
                    ignoresFailure_ ? core::kWarning : core::kError);
  return ignoresFailure_;
}

creo::ProError RelationSet::tried(const RelationLines& lines) const {
  if (const auto error = creo::ProRelsetRelationsSet(set_.value, lines)) return error;
  if (const auto owner = creo::ProRelsetToModelitem(set_.value); !owner) return owner.error;
  return creo::ProRelsetRegenerate(set_.value);
}

void RelationSet::write(const RelationLines& lines, const RelationLines& old) const {
  if (tried(lines) == creo::ProNoError) return;
  core::logMsgPlain(post_ ? Message::newPostRelationsFail : Message::newRelationsFail,
                    ignoresFailure_ ? core::kWarning : core::kError);
  if (ignoresFailure_) return;
  if (creo::ProRelsetRelationsSet(set_.value, old) != creo::ProNoError)
    core::logWrite(L"The old relations can't be written back", core::kError);
  creo::ProRelsetToModelitem(set_.value);
  creo::ProRelsetRegenerate(set_.value);
}

bool isContinued(std::wstring_view line) {
  const auto last = line.find_last_not_of(kBlanks);
  return last != line.npos && line[last] == L'\\';
}

namespace {

// The lines of the list with their variables replaced. Nothing, with an error line: one of them can't be built, and a
// part of the list would be other relations than those that were meant.
std::optional<RelationLines> newLines(const Task& task, std::wstring_view key, int count) {
  RelationLines lines;
  for (const Task::Numbered& entry : task.numberedAll(key, count)) {
    const bool isLast = entry.number == count - 1;
    if (entry.value.empty() && (isLast || (entry.number == 0 && count == 1))) continue;
    const auto replaced = language::replaceVariables(entry.value, task.model());
    if (!replaced.hasText()) {
      core::logWrite(text::format(L"The line '%s%d' can't be built, no relation lines are added", key, entry.number),
                     core::kError);
      return std::nullopt;
    }
    core::logIndented(replaced.text, core::kNormal, 2);
    lines.push_back(replaced.text);
  }
  return lines;
}

}  // namespace

void addRelationLines(const Task& task, RelationSet& set, std::wstring_view key, std::optional<std::size_t> place) {
  const int count = text::parseInt(task.attribute(std::wstring(key) + L"c"));
  if (count < 1 || (count == 1 && task.attribute(std::wstring(key) + L"0").empty())) return;
  if (!set.make() || !set.isSound()) return;
  const auto present = set.lines();
  const auto added = newLines(task, key, count);
  if (!present || !added || added->empty()) return;
  const RelationLines& old = *present;
  const std::size_t at = place ? std::min(*place, old.size()) : task.isTrue(L"onEnd") ? old.size() : 0;
  RelationLines lines(old.begin(), old.begin() + static_cast<std::ptrdiff_t>(at));
  lines.insert(lines.end(), added->begin(), added->end());
  lines.insert(lines.end(), old.begin() + static_cast<std::ptrdiff_t>(at), old.end());
  set.write(lines, old);
}

}  // namespace actions

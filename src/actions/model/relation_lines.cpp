// Actions that add, delete and edit lines of relations.
#include <algorithm>

#include "actions/model/relation_set.h"
#include "core/log.h"
#include "core/messages.h"
#include "language/compare.h"
#include "language/comparison_watch.h"
#include "language/variables.h"
#include "text/format.h"
#include "text/numbers.h"

namespace actions {
namespace {

using namespace language;

Outcome addModelRelationLines(const Task& task) {
  core::logMsgId(Message::inRelations, core::kNormal, 1);
  RelationSet relations(task, false);
  addRelationLines(task, relations, L"relationline", std::nullopt);
  core::logMsgId(Message::inPostRelations, core::kNormal, 1);
  RelationSet postRelations(task, true);
  addRelationLines(task, postRelations, L"postline", std::nullopt);
  return done;
}

// ---- deleting

// Lines that go, or become comments. Places stay what they are until result().
class LinesToDelete {
 public:
  LinesToDelete(RelationLines lines, bool commentOut)
      : lines_(std::move(lines)), gone_(lines_.size(), false), commentOut_(commentOut) {}

  [[nodiscard]] std::size_t count() const { return lines_.size(); }
  [[nodiscard]] bool isThere(std::size_t i) const { return !gone_[i]; }
  [[nodiscard]] const std::wstring& line(std::size_t i) const { return lines_[i]; }
  [[nodiscard]] bool changed() const { return changed_; }

  // A continued line goes with those that continue it, the last one first. The place behind them.
  std::size_t remove(std::size_t first) {
    std::vector<std::size_t> chain;
    for (std::size_t i = first; i < lines_.size(); ++i) {
      if (gone_[i]) continue;
      chain.push_back(i);
      if (!isContinued(lines_[i])) break;
    }
    for (std::size_t i = chain.size(); i-- > 0;) removeOne(chain[i]);
    return chain.empty() ? first + 1 : chain.back() + 1;
  }

  [[nodiscard]] RelationLines result() const {
    RelationLines left;
    for (std::size_t i = 0; i < lines_.size(); ++i)
      if (!gone_[i]) left.push_back(lines_[i]);
    return left;
  }

 private:
  void removeOne(std::size_t i) {
    std::wstring& line = lines_[i];
    if (!commentOut_) {
      core::logIndented(L"Delete line: " + line, core::kNormal, 1);
      gone_[i] = changed_ = true;
      return;
    }
    if (line.starts_with(L'/') || (line.size() > 1 && line[1] == L'*')) return;
    core::logIndented(L"Comment out line: " + line, core::kNormal, 1);
    line.insert(0, L"/* ");
    changed_ = true;
  }

  RelationLines lines_;
  std::vector<bool> gone_;
  bool commentOut_, changed_ = false;
};

void deleteSingleLines(const Task& task, LinesToDelete& lines) {
  core::logMsgId(Message::deleteSingleLines, core::kNormal, 1);
  const int count = text::parseInt(task.attribute(L"dellinec"));
  for (const Task::Numbered& pattern : task.numberedAll(L"delline", count))
    // What went, or became a comment, with a line before it isn't looked at again.
    for (std::size_t i = 0; i < lines.count();)
      i = lines.isThere(i) && matches(pattern.value, lines.line(i)) ? lines.remove(i) : i + 1;
}

bool isEndIf(std::wstring_view line) {
  static constexpr std::wstring_view kForms[] = {
      L"/(?i)^ENDIF$/",      L"/(?i)^ENDIF\\s.*$/",       L"/(?i)^.*\\sENDIF\\s.*$/",
      L"/(?i)^.*\\sENDIF$/", L"/(?i)^.*\\sENDIF/\\*.*$/", L"/(?i)^ENDIF/\\*.*$/"};
  return std::any_of(std::begin(kForms), std::end(kForms), [&](auto form) { return matches(form, line); });
}
bool isIf(std::wstring_view line) {
  return matches(L"/(?i)^IF\\s.*$/", line) || matches(L"/(?i)^.*\\sIF\\s.*$/", line);
}

// Finds where a block of lines ends: at a line of a pattern, or with the ENDIF of the first IF.
class BlockEnd {
 public:
  explicit BlockEnd(const Task& task) : byEndIf_(task.isTrue(L"endif")), pattern_(task.attribute(L"endline")) {}
  // Is the line, which stands behind the block's start or is it, the last of the block?
  bool isAt(const std::wstring& line) {
    if (!byEndIf_) return matches(pattern_, line);
    if (!matches(L"*IF*", line)) return false;
    if (isEndIf(line))
      --open_;
    else if (isIf(line))
      ++open_;
    else
      return false;
    return open_ == 0;
  }
  void startAgain() { open_ = 0; }

 private:
  bool byEndIf_;
  std::wstring_view pattern_;
  int open_ = 0;
};

void deleteBlocks(const Task& task, LinesToDelete& lines) {
  core::logMsgId(Message::deleteBlock, core::kNormal, 1);
  const std::wstring_view startLine = task.attribute(L"startline");
  BlockEnd end(task);
  const GivenUp givenUp;
  std::optional<std::size_t> start;
  for (std::size_t i = 0; i < lines.count(); ++i) {
    if (!lines.isThere(i)) continue;
    if (!start && matches(startLine, lines.line(i))) {
      start = i;
      end.startAgain();
    }
    const bool ends = start && end.isAt(lines.line(i));
    // Where the block ends isn't known: at a later line that fits, more would go than was meant.
    if (givenUp.any()) return;
    // A block has two lines at least.
    if (!ends || i == *start) continue;
    for (std::size_t inside = *start; inside <= i;) inside = lines.isThere(inside) ? lines.remove(inside) : inside + 1;
    start.reset();
  }
}

void deleteFrom(const Task& task, bool post) {
  const RelationSet set(task, post);
  const auto old = set.lines();
  if (!old) return;
  LinesToDelete lines(*old, task.isTrue(L"comment_out"));
  if (!task.attribute(L"delline0").empty()) deleteSingleLines(task, lines);
  if (!task.attribute(L"startline").empty()) deleteBlocks(task, lines);
  if (lines.changed())
    set.write(lines.result(), *old);
  else
    core::logIndented(L"No changes done on relations", core::kNormal, 1);
}

Outcome deleteModelRelationLines(const Task& task) {
  if (task.isTrue(L"rel")) deleteFrom(task, false);
  if (task.isTrue(L"postrel")) deleteFrom(task, true);
  return done;
}

// ---- editing

void editLines(const Task& task, const RelationSet& set) {
  core::logMsgId(Message::editLines, core::kNormal, 1);
  const auto old = set.lines();
  if (!old) return;
  RelationLines lines = *old;
  const int count = text::parseInt(task.attribute(L"editlinec"));
  for (const Task::Numbered& pattern : task.numberedAll(L"editline", count)) {
    for (std::wstring& line : lines) {
      if (!matches(pattern.value, line)) continue;
      const auto through = replaceVariablesLine(task.attribute(L"through"), task.model(), line);
      if (!through.hasText()) {
        core::logWrite(text::format(L"What replaces text in the line '%s' can't be built, the line stays", line),
                       core::kError);
        continue;
      }
      line = patternReplace(line, task.attribute(L"replWord"), through.text);
      core::logIndented(line, core::kNormal, 1);
    }
  }
  if (lines != *old) set.write(lines, *old);
}

void addAtPlace(const Task& task, RelationSet& set) {
  core::logMsgId(Message::addLines, core::kNormal, 1);
  const auto lines = set.lines();
  if (!lines) return;
  const auto found = std::find_if(lines->begin(), lines->end(),
                                  [&](const std::wstring& line) { return matches(task.attribute(L"locline"), line); });
  if (found == lines->end()) return;
  const auto at = static_cast<std::size_t>(found - lines->begin());
  addRelationLines(task, set, L"addText", task.attribute(L"location") == L"1" ? at : at + 1);
}

void editRelationLines(const Task& task, bool post) {
  RelationSet set(task, post);
  if (set.isLost()) return;
  if (!set.isThere()) {
    core::logIndented(L"no relset found", core::kNormal, 1);
    return;
  }
  if (!set.isSound()) return;
  if (text::parseInt(task.attribute(L"editlinec")) != 1 || !task.attribute(L"editline0").empty()) editLines(task, set);
  if (!task.attribute(L"locline").empty()) addAtPlace(task, set);
}

Outcome editModelRelationLines(const Task& task) {
  if (task.isTrue(L"rel")) editRelationLines(task, false);
  if (task.isTrue(L"postrel")) editRelationLines(task, true);
  return done;
}

void setUnitSensitive(const Task& task, bool post, std::wstring_view changed) {
  const RelationSet set(task, post);
  if (set.isLost()) return;
  if (!set.isThere()) {
    core::logIndented(L"no relset found", core::kNormal, 1);
    return;
  }
  if (creo::ProRelsetUnitsSensitiveSet(set.set(), task.isTrue(L"unitsensitive")) == creo::ProNoError)
    core::logIndented(changed, core::kNormal, 1);
  else
    core::logWrite(L"Can't change the unit sensitivity of the relations", core::kError);
}

Outcome setRelationUnitSensitive(const Task& task) {
  if (task.isTrue(L"rel")) setUnitSensitive(task, false, L"changed the relation unit sensitve");
  if (task.isTrue(L"postrel")) setUnitSensitive(task, true, L"changed the post relation unit sensitve");
  return done;
}

constexpr Attribute countOf(std::wstring_view name, std::string_view about) {
  return {.name = name, .kind = Kind::integer, .about = about};
}
constexpr Attribute kSets[] = {
    {.name = L"rel", .kind = Kind::flag, .words = L"true", .need = Need::oneOf, .about = "in the relations"},
    {.name = L"postrel",
     .kind = Kind::flag,
     .words = L"true",
     .need = Need::oneOf,
     .about = "in those behind the regeneration"},
};
constexpr Attribute kFailure[] = {
    {.name = L"ignoreFailure",
     .kind = Kind::flag,
     .words = L"false",
     .about = "present and not false: failing relations are a warning, and the new lines stay"},
};
constexpr Attribute kAdded[] = {
    countOf(L"relationlinec", "how many lines"),
    {.name = L"relationline%d",
     .kind = Kind::relation,
     .variables = true,
     .need = Need::oneOf,
     .numbers = Numbers::counted,
     .counter = L"relationlinec",
     .about = "the lines; an empty last one is left out"},
    countOf(L"postlinec", "how many lines behind the regeneration"),
    {.name = L"postline%d",
     .kind = Kind::relation,
     .variables = true,
     .need = Need::oneOf,
     .numbers = Numbers::counted,
     .counter = L"postlinec",
     .about = "those lines, in the same way"},
    {.name = L"onEnd",
     .kind = Kind::flag,
     .words = L"true",
     .about = "behind the lines that are there; else before them"},
};
constexpr Attribute kDeleted[] = {
    countOf(L"dellinec", "how many patterns"),
    {.name = L"delline%d",
     .kind = Kind::pattern,
     .numbers = Numbers::counted,
     .counter = L"dellinec",
     .about = "patterns of lines that go"},
    {.name = L"startline", .kind = Kind::pattern, .about = "the first line of blocks that go; empty: no block goes"},
    {.name = L"endline", .kind = Kind::pattern, .about = "their last line"},
    {.name = L"endif",
     .kind = Kind::flag,
     .words = L"true",
     .about = "a block ends with the ENDIF of its IF in place of endline"},
    {.name = L"comment_out", .kind = Kind::flag, .words = L"true", .about = "the lines become comments and stay"},
};
constexpr Attribute kEdited[] = {
    countOf(L"editlinec", "how many patterns"),
    {.name = L"editline%d",
     .kind = Kind::pattern,
     .numbers = Numbers::counted,
     .counter = L"editlinec",
     .about = "patterns of lines that are edited"},
    {.name = L"replWord", .kind = Kind::pattern, .about = "what is replaced in such a line"},
    {.name = L"through", .variables = true, .about = "what comes in its place; @line@ and @para@ are the line"},
    {.name = L"locline",
     .kind = Kind::pattern,
     .about = "the first line that fits is the place for new lines; empty: none are added"},
    {.name = L"location", .kind = Kind::word, .words = L"1|2|0", .about = "1: before that line; else behind it"},
    countOf(L"addTextc", "how many new lines"),
    {.name = L"addText%d",
     .kind = Kind::relation,
     .variables = true,
     .numbers = Numbers::counted,
     .counter = L"addTextc",
     .about = "the new lines"},
};
constexpr Attribute kUnits[] = {
    {.name = L"unitsensitive",
     .kind = Kind::flag,
     .words = L"true",
     .need = Need::needed,
     .about = "true: relations heed units; anything else: they don't"},
};
constexpr auto kAddAttributes = joined(kAdded, kFailure);
constexpr auto kDeleteAttributes = joined(kSets, kDeleted, kFailure);
constexpr auto kEditAttributes = joined(kSets, kEdited, kFailure);
constexpr auto kUnitAttributes = joined(kSets, kUnits);

constexpr Effects kEffects{.changes = Touched::model};

constexpr Action kActions[] = {
    {.key = L"addModelRelationLines",
     .place = 143,
     .group = Group::ownModelTest,
     .title = Message::addRelationLines,
     .conditions = kOnRelations,
     .attributes = kAddAttributes,
     .effects = kEffects,
     .about = "adds lines to relations",
     .function = &addModelRelationLines},
    {.key = L"deleteModelRelationLines",
     .place = 144,
     .group = Group::ownModelTest,
     .title = Message::deleteRelationLines,
     .conditions = kOnRelations,
     .attributes = kDeleteAttributes,
     .effects = kEffects,
     .about = "deletes lines of relations, or makes them comments",
     .function = &deleteModelRelationLines},
    {.key = L"editModelRelationLines",
     .place = 145,
     .group = Group::ownModelTest,
     .title = Message::editRelationLines,
     .conditions = kOnRelations,
     .attributes = kEditAttributes,
     .effects = kEffects,
     .about = "replaces text in lines of relations, and adds lines at a place",
     .function = &editModelRelationLines},
    {.key = L"setRelationUnitSensitive",
     .place = 146,
     .group = Group::ownModelTest,
     .title = L"Set relation unit sensitive",
     .conditions = kOnRelations,
     .attributes = kUnitAttributes,
     .effects = kEffects,
     .about = "says whether relations heed units",
     .function = &setRelationUnitSensitive},
};

}  // namespace

std::span<const Action> relationLineActions() { return kActions; }

}  // namespace actions

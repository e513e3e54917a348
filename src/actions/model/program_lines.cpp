// Actions that delete lines of a model's Pro/PROGRAM. It has no other door than a text file: written, changed, read
// back.
#include <algorithm>

#include "actions/model/relation_set.h"
#include "core/log.h"
#include "core/messages.h"
#include "core/state.h"
#include "creo/ProProgram.h"
#include "creo/guards.h"
#include "language/compare.h"
#include "language/comparison_watch.h"
#include "os/files.h"
#include "os/surroundings.h"
#include "os/text_files.h"
#include "text/format.h"
#include "text/letters.h"
#include "text/pieces.h"
#include "text/units.h"

namespace actions {
namespace {

using namespace language;

constexpr std::wstring_view kWritten = L"proProgram.txt", kChanged = L"proProgramChanged.txt";
constexpr std::size_t kMostDelline = 1000, kMostPattern = 260;
constexpr int kMostNames = 10'000;

// The two files in the log folder, removed at the end, whatever happened.
class ProgramFiles {
 public:
  ProgramFiles()
      : written_(core::pluginState().tempPath + std::wstring(kWritten)),
        changed_(core::pluginState().tempPath + std::wstring(kChanged)) {}
  ~ProgramFiles() {
    for (const std::wstring& path : {written_, changed_}) {
      if (!os::files().exists(path)) continue;
      const auto error = os::files().remove(path);
      core::logWrite(text::format(core::msgText(Message::deleteFile), path), error ? core::kError : core::kDebug);
    }
  }
  ProgramFiles(const ProgramFiles&) = delete;
  ProgramFiles& operator=(const ProgramFiles&) = delete;
  [[nodiscard]] const std::wstring& written() const { return written_; }
  [[nodiscard]] const std::wstring& changed() const { return changed_; }

 private:
  std::wstring written_, changed_;
};

bool fits(std::wstring_view pattern, std::wstring_view line) { return pattern == line || matches(pattern, line); }

// Where in a program a line stands, and whether it asks for the input above it.
class InputSection {
 public:
  enum class Line { other, input, prompt, remark };
  Line take(std::wstring_view line) {
    if (text::equalNoCase(line, L"INPUT") && state_ == State::before) {
      state_ = State::inside;
      return Line::other;
    }
    if (text::equalNoCase(line, L"END INPUT") && state_ == State::inside) state_ = State::behind;
    if (state_ != State::inside) return Line::other;
    const auto bare = text::trimmed(line);
    if (bare.empty() || bare.starts_with(L"/*")) return Line::remark;
    return bare.starts_with(L'"') ? Line::prompt : Line::input;
  }

 private:
  enum class State { before, inside, behind };
  State state_ = State::before;
};

enum class Filtered { failed, unchanged, changed };

// Copies the lines that stay. stays: (line, what it is in the section of inputs). What asks for an input that goes,
// goes with it: it would ask for the input above. Lines that go are logged.
template <class Stays>
Filtered filterFile(const ProgramFiles& files, Stays stays) {
  const auto content = os::readText(files.written());
  if (!content) {
    core::logWrite(L"Failure while read file", core::kDebug);
    return Filtered::failed;
  }
  std::wstring out;
  // A last line without its end stays one.
  std::wstring_view rest = content.value;
  if (rest.starts_with(L'\xFEFF')) rest.remove_prefix(1);
  InputSection section;
  bool changed = false, inputGoes = false;
  while (!rest.empty()) {
    const auto end = rest.find(L'\n');
    const bool hasEnd = end != rest.npos;
    std::wstring_view line = rest.substr(0, end);
    rest.remove_prefix(hasEnd ? end + 1 : rest.size());
    if (line.ends_with(L'\r')) line.remove_suffix(1);
    const InputSection::Line kind = section.take(line);
    const bool orphan = kind == InputSection::Line::prompt && inputGoes;
    const bool goes = !stays(line, kind) || orphan;
    if (kind == InputSection::Line::input) inputGoes = goes;
    if (goes) {
      core::logIndented(line, core::kNormal, 2);
      changed = true;
      continue;
    }
    out += line;
    if (hasEnd) out += L'\n';
  }
  if (!changed) {
    core::logIndented(L"No changes done on the Pro/PROGRAM", core::kNormal, 1);
    return Filtered::unchanged;
  }
  return os::writeText(files.changed(), out, {.mark = true, .crlf = true}) ? Filtered::failed : Filtered::changed;
}

// ---- lines and blocks of lines

struct ProgramLineFilter {
  std::vector<std::wstring> patterns;
  std::wstring_view startline, endline;
  bool endif = false;           // a block ends with ENDIF
  bool excl_start_end = false;  // its first and last line stay
  bool inBlock = false;
};

// The end of a condition, as programs write it or as relations do.
bool isEndif(std::wstring_view line) {
  const std::wstring upper = text::upper(line);
  return upper.find(L"ENDIF") != upper.npos || upper.find(L"END IF") != upper.npos;
}

// Whether the line stays.
bool stays(ProgramLineFilter& filter, std::wstring_view line) {
  bool isStart = false, isEnd = false, remove = false;
  if (!filter.inBlock && !filter.startline.empty() && fits(filter.startline, line)) {
    filter.inBlock = isStart = true;
    remove = !filter.excl_start_end;
  }
  if (filter.inBlock) {
    isEnd = filter.endif ? isEndif(line) : !filter.endline.empty() && fits(filter.endline, line);
    filter.inBlock = !isEnd;
    remove = true;
  }
  if (!remove)
    remove = std::any_of(filter.patterns.begin(), filter.patterns.end(),
                         [&](const auto& pattern) { return fits(pattern, line); });
  // Two of three: a border of a block whose borders stay, or a line that is a block by itself.
  const bool isKeptBorder = int{filter.excl_start_end} + isStart + isEnd >= 2;
  return !remove || isKeptBorder;
}

ProgramLineFilter filterOf(const Task& task) {
  ProgramLineFilter filter;
  filter.startline = task.attribute(L"startline");
  filter.endline = task.attribute(L"endline");
  filter.endif = task.attribute(L"endif") != L"false";
  filter.excl_start_end = task.attribute(L"excl_start_end") != L"false";
  const std::wstring delline = text::replaceAll(text::cut(task.attribute(L"delline"), kMostDelline), L"&#10;", L"\n");
  for (const std::wstring& pattern : text::split(delline, L'\n'))
    if (const auto cut = text::cut(pattern, kMostPattern); !cut.empty()) filter.patterns.emplace_back(cut);
  return filter;
}

bool exported(const Task& task, const ProgramFiles& files) {
  if (creo::ProOutputFileWrite(task.model(), files.written(), creo::ProInputFileType::program) == creo::ProNoError)
    return true;
  core::logMsgPlain(Message::programNotWritten, core::kError);
  return false;
}

void readBack(const Task& task, const std::wstring& path) {
  if (creo::ProInputFileRead(task.model(), path, creo::ProInputFileType::program) != creo::ProNoError)
    core::logMsgPlain(Message::programUnread, core::kError);
}

Outcome deleteModelProProgramLines(const Task& task) {
  const ProgramFiles files;
  if (exported(task, files)) {
    core::logMsgId(Message::deleteTheseProgramLines, core::kNormal, 1);
    ProgramLineFilter filter = filterOf(task);
    const GivenUp givenUp;
    const Filtered filtered = filterFile(files, [&](std::wstring_view line, auto) { return stays(filter, line); });
    // Where a block ends isn't known then, and more would go than was meant.
    if (givenUp.any()) {
      core::logWrite(L"The program stays as it is, as a pattern was given up", core::kError);
    } else if (filtered == Filtered::changed) {
      creo::DirectoryGuard directory;
      directory.change(core::pluginState().tempPath);
      readBack(task, std::wstring(kChanged));
    }
  }
  core::logMsgId(Message::deleteTemporaryFiles, core::kNormal, 1);
  return done;
}

// ---- lines of the INPUT section

std::wstring_view firstWord(std::wstring_view line) {
  line.remove_prefix(std::min(line.find_first_not_of(L' '), line.size()));
  return line.substr(0, line.find(L' '));
}

Outcome deleteModelProProgramInputLines(const Task& task) {
  std::vector<std::wstring_view> names;
  for (const Task::Numbered& entry : task.numberedAll(L"name_", kMostNames)) {
    if (entry.number != static_cast<int>(names.size())) break;
    names.push_back(entry.value);
  }
  const ProgramFiles files;
  core::logIndented(L"Export to file", core::kNormal, 1);
  if (exported(task, files)) {
    core::logIndented(L"Change the file", core::kNormal, 1);
    core::logMsgId(Message::deleteTheseInputLines, core::kNormal, 1);
    const Filtered filtered = filterFile(files, [&](std::wstring_view line, InputSection::Line kind) {
      const std::wstring_view name = firstWord(line);
      return kind == InputSection::Line::other || name.empty() ||
             std::none_of(names.begin(), names.end(), [&](auto item) { return fits(item, name); });
    });
    if (filtered == Filtered::changed) {
      core::logIndented(L"Reimport the file", core::kNormal, 1);
      readBack(task, files.changed());
    }
  }
  core::logIndented(L"Delete the file", core::kNormal, 1);
  return done;
}

constexpr Attribute kLineAttributes[] = {
    {.name = L"delline",
     .kind = Kind::pattern,
     .need = Need::oneOf,
     .about = "patterns of lines that go, with line feeds between them"},
    {.name = L"startline",
     .kind = Kind::pattern,
     .need = Need::oneOf,
     .about = "the first line of a block that goes; empty: no block goes"},
    {.name = L"endline", .kind = Kind::pattern, .about = "its last line"},
    {.name = L"endif",
     .kind = Kind::flag,
     .words = L"false",
     .about = "false: the block ends at endline; anything else: at a line with ENDIF or END IF"},
    {.name = L"excl_start_end",
     .kind = Kind::flag,
     .words = L"false",
     .about = "false: the first and the last line of a block go too; anything else: they stay"},
};
constexpr Attribute kInputAttributes[] = {
    {.name = L"name_%d",
     .kind = Kind::pattern,
     .need = Need::needed,
     .numbers = Numbers::toFirstGap,
     .most = kMostNames,
     .about = "patterns for the first word of lines that go"},
};

// The program goes through a text file, and into the model from Creo's working folder.
constexpr Effects kEffects{.reads = Touched::model | Touched::files,
                           .changes = Touched::model | Touched::files | Touched::session};

constexpr Action kActions[] = {
    {.key = L"deleteModelProProgramLines",
     .place = 152,
     .group = Group::ownModelTest,
     .title = Message::deleteProgramLines,
     .conditions = kOnRelations,
     .attributes = kLineAttributes,
     .effects = kEffects,
     .about = "deletes lines of a solid's Pro/PROGRAM",
     .function = &deleteModelProProgramLines},
    {.key = L"deleteModelProProgramInputLines",
     .place = 153,
     .group = Group::ownModelTest,
     .title = Message::deleteInputLines,
     .conditions = kOnRelations,
     .attributes = kInputAttributes,
     .effects = kEffects,
     .about = "deletes inputs of a solid's Pro/PROGRAM",
     .function = &deleteModelProProgramInputLines},
};

}  // namespace

std::span<const Action> programLineActions() { return kActions; }

}  // namespace actions

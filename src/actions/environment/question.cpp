// The action that asks the user for the value of a variable.
#include "actions/environment/question.h"

#include "actions/environment/question_dialog.h"
#include "actions/task.h"
#include "core/log.h"
#include "creo/ProFileChoose.h"
#include "language/user_variables.h"
#include "language/variables.h"
#include "text/units.h"

namespace actions {
namespace {

using namespace language;

// What the dialogs for files take, in UTF-16 units.
constexpr std::size_t kMostFilter = 80, kMostTitle = 31, kMostProposal = 180;

const OpenQuestion*& openNow() {
  static const OpenQuestion* open = nullptr;
  return open;
}

// A question inside another one (a trigger's list, run while it waits) gives way to it again.
class OpenGuard {
 public:
  explicit OpenGuard(const OpenQuestion& question) : outer_(std::exchange(openNow(), &question)) {}
  ~OpenGuard() { openNow() = outer_; }
  OpenGuard(const OpenGuard&) = delete;
  OpenGuard& operator=(const OpenGuard&) = delete;

 private:
  const OpenQuestion* outer_;
};

std::wstring cutAttribute(const Task& task, std::wstring_view name, std::size_t most) {
  return std::wstring(text::cut(task.attribute(name), most));
}

creo::Got<std::wstring> choosePath(const Task& task, QuestionKind kind) {
  const std::wstring start = replacedOrBare(task, L"varValue");
  const std::wstring title = cutAttribute(task, L"varDesc_0", kMostTitle);
  if (kind == QuestionKind::folder) return creo::ProDirectoryChoose(title, start);
  const creo::ProFilename parts = creo::ProFilenameParse(start);
  std::wstring proposal;
  if (!parts.extension.empty()) proposal = text::cut(parts.name + L"." + parts.extension, kMostProposal);
  const auto choose = kind == QuestionKind::saveFile ? &creo::ProFileMdlnameSave : &creo::ProFileMdlnameOpen;
  return choose(title, cutAttribute(task, L"extension", kMostFilter), parts.directory, proposal);
}

void askForPath(const Task& task, QuestionKind kind) {
  const auto chosen = choosePath(task, kind);
  if (chosen.error == creo::ProUserAbort) return core::logIndented(L"Exit with - Cancel", core::kNormal, 1);
  // Cut a path would name another file, and the one that was chosen before isn't the answer.
  const bool fits = text::fits(chosen.value, text::kTextSize);
  if (chosen && fits) return userVariables().set(task.attribute(L"varName"), chosen.value);
  userVariables().remove(task.attribute(L"varName"));
  core::logIndented(fits ? L"The dialog for files can't be shown" : L"The chosen path is too long for a user variable",
                    core::kError, 1);
}

Outcome setUserVariable(const Task& task) {
  const auto kind = questionKind(task.attribute(L"varType"));
  if (!kind) {
    core::logIndented(L"Type not supported now", core::kError, 1);
    return done;
  }
  const OpenQuestion question{*kind, task.attribute(L"varName")};
  const OpenGuard open(question);
  if (*kind >= QuestionKind::saveFile)
    askForPath(task, *kind);
  else
    askByDialog(task, *kind);
  return done;
}

constexpr Attribute kAttributes[] = {
    {.name = L"varType",
     .kind = Kind::word,
     .words = L"1|2|3|4|5|6|7",
     .need = Need::needed,
     .about = "1: a text; 2: a choice; 3: yes or no; 4: nothing, it tells; 5: a file to write; 6: a folder; 7: a file "
              "to read"},
    {.name = L"varName", .kind = Kind::variable, .about = "the variable's name; a question of type 4 needs none"},
    {.name = L"varValue", .variables = true, .about = "the text or the path at the start"},
    {.name = L"varDescc",
     .kind = Kind::integer,
     .range = {.least = 0, .most = 20},
     .about = "how many lines the dialog shows"},
    {.name = L"varDesc_%d",
     .variables = true,
     .numbers = Numbers::counted,
     .counter = L"varDescc",
     .about = "a line of the dialog; types 5 to 7: that of number 0 is the title"},
    {.name = L"combo_c", .kind = Kind::integer, .about = "how many entries the choice has"},
    {.name = L"combo_value_%d", .numbers = Numbers::counted, .counter = L"combo_c", .about = "the value of an entry"},
    {.name = L"combo_name_%d",
     .numbers = Numbers::counted,
     .counter = L"combo_c",
     .about = "what is shown for it; absent: the value"},
    {.name = L"combo_autosel",
     .kind = Kind::word,
     .words = L"0|1",
     .about = "1: the entries are the models of the drawing"},
    {.name = L"check_true", .variables = true, .about = "the value of yes"},
    {.name = L"check_false", .variables = true, .about = "the value of no"},
    {.name = L"check_def", .kind = Kind::flag, .words = L"true", .about = "at first it is yes"},
    {.name = L"extension", .about = "which files are shown"},
};

constexpr Action kActions[] = {
    {.key = L"setUserVariable",
     .place = 6,
     .group = Group::withoutModel,
     .title = L"Set user variable",
     .attributes = kAttributes,
     .effects = {.reads = Touched::model | Touched::users, .changes = Touched::variables, .known = false},
     .about = "asks the user for the value of a user variable",
     .function = &setUserVariable},
};

}  // namespace

std::optional<QuestionKind> questionKind(std::wstring_view varType) {
  if (varType.size() != 1 || varType[0] < L'1' || varType[0] > L'7') return std::nullopt;
  return static_cast<QuestionKind>(varType[0] - L'0');
}

const OpenQuestion* openQuestion() { return openNow(); }

std::span<const Action> questionActions() { return kActions; }

}  // namespace actions

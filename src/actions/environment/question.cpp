// The action that asks the user for the value of a variable.
#include "actions/environment/question.h"

#include "actions/environment/question_dialog.h"
#include "actions/families.h"
#include "core/log.h"
#include "creo/ProFileChoose.h"
#include "engine/task.h"
#include "text/units.h"

namespace actions {
namespace {

using namespace engine;

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
  if (const auto ended = begin(task, {.title = L"Set user variable"})) return *ended;
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

constexpr ActionFunction kActions[] = {{L"setUserVariable", &setUserVariable}};

}  // namespace

std::optional<QuestionKind> questionKind(std::wstring_view varType) {
  if (varType.size() != 1 || varType[0] < L'1' || varType[0] > L'7') return std::nullopt;
  return static_cast<QuestionKind>(varType[0] - L'0');
}

const OpenQuestion* openQuestion() { return openNow(); }

std::span<const ActionFunction> questionActions() { return kActions; }

}  // namespace actions

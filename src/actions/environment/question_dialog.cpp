#include "actions/environment/question_dialog.h"

#include "core/log.h"
#include "core/messages.h"
#include "creo/ProDrawing.h"
#include "creo/ProMdl.h"
#include "creo/ProUI.h"
#include "creo/ProUIInputpanel.h"
#include "creo/ProUIShow.h"
#include "language/user_variables.h"
#include "language/variables.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/numbers.h"
#include "text/units.h"

namespace actions {
namespace {

using namespace language;

using namespace question;

constexpr const char* kResource = "kvaneUserVariable";
constexpr const char* kModelLabel = "kvaneUVModel";
constexpr const char* kValueLabel = "kvaneUVValueLabel";
constexpr std::size_t kDescriptionReserve = 10;  // of a description line's buffer, kept free

// What the dialog's callbacks work on; empty once the question is over, whatever became of the dialog.
using Pending = std::shared_ptr<const Task*>;

class DialogGuard {
 public:
  explicit DialogGuard(Pending pending) : pending_(std::move(pending)) {}
  ~DialogGuard() {
    *pending_ = nullptr;
    creo::ProUIDialogDestroy(kDialog);
  }
  DialogGuard(const DialogGuard&) = delete;
  DialogGuard& operator=(const DialogGuard&) = delete;

 private:
  Pending pending_;
};

bool hideInputs() {
  return !creo::ProUIInputpanelHide(kDialog, kPanel) && !creo::ProUICheckbuttonHide(kDialog, kCheck) &&
         !creo::ProUIOptionmenuHide(kDialog, kMenu);
}

// ---- the inputs, each shown with its start value

bool showText(const Task& task) {
  return !creo::ProUIInputpanelShow(kDialog, kPanel) &&
         !creo::ProUIInputpanelValueSet(kDialog, kPanel, replacedOrBare(task, L"varValue"));
}

struct Entries {
  std::vector<std::string> names;
  std::vector<std::wstring> labels;
  void add(std::wstring_view name, std::wstring_view label) {
    names.push_back(text::toUtf8(name));
    labels.emplace_back(label);
  }
};

// The models of the drawing as files; none of another model.
Entries modelEntries(creo::ProMdl drawing) {
  Entries entries;
  const auto models = creo::ProDrawingSolidsCollect(drawing);
  if (!creo::isTold(models) && creo::ProMdlTypeGet(drawing).value == creo::ProMdlType::drawing)
    core::logWrite(L"The models of the drawing can't be read", core::kError);
  for (const creo::ProMdl model : models.value) {
    const auto name = creo::ProMdlNameGet(model);
    if (!name) continue;
    const bool isPart = creo::ProMdlTypeGet(model).value == creo::ProMdlType::part;
    const std::wstring file = name.value + (isPart ? L".prt" : L".asm");
    entries.add(file, file);
  }
  return entries;
}

// Those of the list, which may leave numbers out; an entry without a label shows its value.
Entries listedEntries(const Task& task) {
  Entries entries;
  for (const int number : task.numbers(L"combo_value_", text::parseInt(task.attribute(L"combo_c")))) {
    const std::wstring_view value = *task.numbered(L"combo_value_%d", number);
    entries.add(value, task.numbered(L"combo_name_%d", number).value_or(value));
  }
  return entries;
}

bool showChoice(const Task& task) {
  const bool ofModels = text::parseInt(task.attribute(L"combo_autosel")) == 1;
  Entries entries = ofModels ? modelEntries(task.model()) : listedEntries(task);
  return !creo::ProUIOptionmenuShow(kDialog, kMenu) &&
         !creo::ProUIOptionmenuNamesSet(kDialog, kMenu, std::move(entries.names)) &&
         !creo::ProUIOptionmenuLabelsSet(kDialog, kMenu, std::move(entries.labels));
}

bool showCheck(const Task& task) {
  const std::wstring both =
      text::format(L"%s / %s", replacedOrBare(task, L"check_true"), replacedOrBare(task, L"check_false"));
  const auto setState = task.isTrue(L"check_def") ? &creo::ProUICheckbuttonSet : &creo::ProUICheckbuttonUnset;
  return !creo::ProUICheckbuttonShow(kDialog, kCheck) && !creo::ProUICheckbuttonTextSet(kDialog, kCheck, both) &&
         !setState(kDialog, kCheck);
}

bool showInput(const Task& task, QuestionKind kind) {
  switch (kind) {
    case QuestionKind::text:
      return showText(task);
    case QuestionKind::choice:
      return showChoice(task);
    case QuestionKind::check:
      return showCheck(task);
    default:
      return !creo::ProUILabelHide(kDialog, kValueLabel);
  }
}

// ---- what is told beside them

void describe(const Task& task) {
  for (const int number : task.numbers(L"varDesc_", text::parseInt(task.attribute(L"varDescc")))) {
    const std::wstring line = replacedOrBare(task, text::format(L"varDesc_%d", number));
    if (!text::fits(line, text::kTextSize - kDescriptionReserve)) {
      core::logIndented(L"Description length > 150 Characters per line aren't supported atm.", core::kWarning, 1);
    } else if (creo::ProUILabelTextSet(kDialog, "kvaneUVDescription_" + std::to_string(number), line)) {
      core::logIndented(text::format(L"The dialog has no place for description line %d", number), core::kWarning, 1);
    }
  }
}

void showModel(creo::ProMdl model) {
  const auto name = creo::ProMdlNameGet(model);
  creo::ProUILabelTextSet(kDialog, kModelLabel, name ? name.value : core::msgText(Message::noModel));
}

// ---- the ends

// The variable doesn't keep what another question was answered.
void fail(const Task& task, std::wstring_view line) {
  userVariables().remove(task.attribute(L"varName"));
  core::logIndented(line, core::kError, 1);
}

void store(const Task& task) {
  const auto set = [&](std::wstring_view value) { userVariables().set(task.attribute(L"varName"), value); };
  bool isRead = true;
  if (creo::ProUIInputpanelIsVisible(kDialog, kPanel).value) {
    const auto typed = creo::ProUIInputpanelValueGet(kDialog, kPanel);
    if (typed) set(typed.value);
    isRead = isRead && typed;
  }
  if (creo::ProUIOptionmenuIsVisible(kDialog, kMenu).value) {
    const auto chosen = creo::ProUIOptionmenuSelectednamesGet(kDialog, kMenu);
    if (!chosen.value.empty()) set(text::fromUtf8(chosen.value.front()));
    isRead = isRead && chosen;
  }
  if (creo::ProUICheckbuttonIsVisible(kDialog, kCheck).value) {
    const auto on = creo::ProUICheckbuttonGetState(kDialog, kCheck);
    if (on) set(replacedOrBare(task, on.value ? L"check_true" : L"check_false"));
    isRead = isRead && on;
  }
  if (!isRead) fail(task, L"The answer can't be read");
}

creo::ProUIAction leaveBy(const Pending& pending, bool ok) {
  return [pending, ok](const std::string& dialog, const std::string&) {
    if (!*pending) return;
    if (ok) store(**pending);
    creo::ProUIDialogExit(dialog, 0);
    core::logIndented(ok ? L"Exit with - OK Button" : L"Exit with - Cancel", core::kNormal, 1);
  };
}

bool setActions(const Pending& pending) {
  return !creo::ProUIInputpanelActivateActionSet(kDialog, kPanel, leaveBy(pending, true)) &&
         !creo::ProUIPushbuttonActivateActionSet(kDialog, kOk, leaveBy(pending, true)) &&
         !creo::ProUIDialogCloseActionSet(kDialog, leaveBy(pending, false));
}

}  // namespace

std::wstring replacedOrBare(const Task& task, std::wstring_view attribute) {
  Replaced replaced = task.text(attribute);
  return replaced ? std::move(replaced.text) : std::wstring(task.attribute(attribute));
}

void askByDialog(const Task& task, QuestionKind kind) {
  const auto end = [&](std::wstring_view line) {
    // A dialog that only tells something sets nothing either.
    if (kind == QuestionKind::description) return core::logIndented(line, core::kError, 1);
    fail(task, line);
  };
  if (creo::ProUIDialogCreate(kDialog, kResource)) return end(L"Exit, with Error at PROUIDialogCreate");
  const Pending pending = std::make_shared<const Task*>(&task);
  const DialogGuard guard(pending);
  if (!hideInputs() || !showInput(task, kind) || !setActions(pending))
    return end(L"Exit, the question's dialog can't be filled");
  describe(task);
  showModel(task.model());
  if (!creo::ProUIDialogActivate(kDialog)) end(L"Exit, with Error at ProUIDialogActivate");
}

}  // namespace actions

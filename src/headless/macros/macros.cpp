#include "headless/macros/macros.h"

#include <algorithm>
#include <iterator>

#include "headless/macros/layer_steps.h"
#include "headless/macros/relation_steps.h"
#include "headless/macros/view_steps.h"
#include "headless/model/family.h"
#include "headless/model/models.h"
#include "os/paths.h"
#include "os/text_files.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/letters.h"
#include "text/numbers.h"
#include "text/pieces.h"

namespace headless {
namespace {

constexpr std::wstring_view kPageControlEnd = L"_control_btn";
constexpr std::wstring_view kFileDialog = L"file_open", kMessageDialog = L"UI Message Dialog";
constexpr int kDeepestTrail = 8;  // a trail file that opens a trail file that ...
constexpr int kMostSteps = 1'000'000;

MacroStep parsed(std::wstring_view text) {
  MacroStep step;
  if (!text.starts_with(L'~')) return step;
  text = text::trimmed(text.substr(1));
  const auto end = text.find_first_of(L" \t`");
  step.verb = text.substr(0, end);
  std::size_t open = 0;
  while ((open = text.find(L'`', open)) != std::wstring_view::npos) {
    const auto close = text.find(L'`', open + 1);
    if (close == std::wstring_view::npos) break;
    step.names.emplace_back(text::trimmed(text.substr(open + 1, close - open - 1)));
    open = close + 1;
    step.number = text::parseInt(text::trimmed(text.substr(open)));
  }
  return step;
}

// The dialogs with files of their own.
constexpr StepHandler kDialogs[] = {&layerSteps, &viewSteps, &relationSteps};

bool drawingIsCurrent(const MacroContext& context) {
  const Model* model = context.currentModel();
  return model && model->type() == creo::ProMdlType::drawing;
}

}  // namespace

// The effects of known steps.
struct MacroRun {
  const MacroContext& context;
  Macros& macros;
  int depth = 0;  // of the step that runs

  // The screen, and the sheets and details of a drawing, are always up to date here.
  void nothing() const {}
  // Updating a drawing's tables shows its tab; who listens is told at once.
  void updateTables() const {
    if (!drawingIsCurrent(context)) return;
    creo::ProNotification notification;
    notification.type = creo::ProNotifyType::pageControlShown;
    notification.model = context.windows.model(context.windows.active());
    notification.window = context.windows.active();
    notification.name = macros.pageControl_;
    context.notify(notification);
  }

  // The dialog of the family table: the parameter that is chosen in its list becomes a column when it is inserted.
  [[nodiscard]] bool familyTableDialog(const MacroStep& step) const {
    static constexpr std::wstring_view kDialogs[] = {L"ftb_edit_table", L"ftb_delete_item", L"params_dlg"};
    if (step.names.empty() || std::find(std::begin(kDialogs), std::end(kDialogs), step.names[0]) == std::end(kDialogs))
      return false;
    if (step.verb == L"Select" && step.names.size() == 4 && step.names[1] == L"ParamsPHLay.ParTable")
      macros.chosenRow_ = step.names[2];
    if (step.verb == L"Activate" && step.names.size() == 2 && step.names[1] == L"PBInsert") insertChosenColumn();
    return true;
  }
  void insertChosenColumn() const {
    constexpr std::wstring_view kRow = L"row";
    const Model* model = context.currentModel();
    FamilyTableRecord* table = model ? model->document->tableOf(model->row) : nullptr;
    if (!table || !macros.chosenRow_.starts_with(kRow)) return;
    const std::string column = text::toUtf8(macros.chosenRow_.substr(kRow.size()));
    if (addColumn(*table, creo::ProFamitemType::parameter, column) == creo::ProNoError)
      model->document->touch(model->row);
  }

  // The dialog that a trail file is opened with: its name is written, then "Open" is pressed.
  [[nodiscard]] bool trailDialog(const MacroStep& step) const {
    auto& dialog = macros.trailDialog_;
    if (!dialog.open || step.names.empty()) return false;
    if (step.verb == L"Trail") return step.names.back().starts_with(kFileDialog);  // where its preview stands
    if (step.names[0] != kFileDialog) return false;
    if ((step.is(L"Input", 3) || step.is(L"Update", 3)) && step.names[1] == L"Inputname") {
      dialog.path = text::replaceAll(step.names[2], L"\\\\", L"\\");
      return true;
    }
    if (!step.is(L"Activate", 2) || step.names[1] != L"Open") return false;
    dialog.open = false;
    playTrail(dialog.path);
    return true;
  }
  // Its steps come before all that waits.
  void playTrail(const std::wstring& name) const {
    const bool isWhole = !os::splitDevice(name).device.empty() || name.starts_with(L'\\') || name.starts_with(L'/');
    const std::wstring path = isWhole ? name : os::joined(context.models.folders().working(), name);
    if (depth == kDeepestTrail)
      return context.models.message(
          text::format(L"trail files open each other %d deep: %s isn't played", kDeepestTrail, path));
    const auto content = os::readText(path);
    if (!content)
      return context.models.message(
          text::format(L"the trail file %s can't be read: %s", path, text::fromUtf8(content.error.message())));
    std::vector<Macros::Waiting> steps;
    for (const std::wstring& line : text::lines(content.value)) {
      if (text::trimmed(line).starts_with(L'!')) continue;
      for (std::wstring& step : macroSteps(line)) steps.push_back({std::move(step), depth + 1});
    }
    macros.putOnTop(std::move(steps));
  }
  void openTrailDialog() const { macros.trailDialog_ = {true, {}}; }

  // "node0:view_12 92 0 -1 -1 -1" in the tree of a drawing: the view alone is selected.
  [[nodiscard]] bool drawingTree(const MacroStep& step) const {
    constexpr std::wstring_view kNode = L"node0:view_";
    if (!step.is(L"Select", 3) || step.names[1] != L"DrwAssyTree" || !step.names[2].starts_with(kNode) ||
        !drawingIsCurrent(context))
      return false;
    const Model& drawing = *context.currentModel();
    const int id = text::parseInt(std::wstring_view(step.names[2]).substr(kNode.size()));
    const auto& views = drawing.document->record.views;
    if (std::none_of(views.begin(), views.end(), [id](const ViewRecord& view) { return view.id == id; })) return false;
    context.selections = {{{creo::ProItemType::view, id, drawing.handle, {}}, {}}};
    return true;
  }

  [[nodiscard]] bool command(const std::wstring& name) const {
    static constexpr std::pair<std::wstring_view, void (MacroRun::*)() const> kCommands[] = {
        {L"ProCmdViewRepaint", &MacroRun::nothing},   {L"ProCmdDwgUpdateSheets", &MacroRun::nothing},
        {L"ProCmdDwgRegenDraft", &MacroRun::nothing}, {L"ProCmdDwgTblRegUpd", &MacroRun::updateTables},
        {L"ProCmdMmFamTab", &MacroRun::nothing},      {L"ProCmdUtilTrailTrain", &MacroRun::openTrailDialog},
    };
    for (const auto& [known, run] : kCommands) {
      if (known != name) continue;
      (this->*run)();
      return true;
    }
    return false;
  }

  // False: the step isn't known.
  [[nodiscard]] bool run(const MacroStep& step) const {
    if (step.is(L"Command", 1) && command(step.names[0])) return true;
    if (step.verb == L"Activate" && step.names.size() == 2 && step.names[0] == L"main_dlg_cur" &&
        step.names[1].ends_with(kPageControlEnd)) {
      macros.pageControl_ = step.names[1].substr(0, step.names[1].size() - kPageControlEnd.size());
      return true;
    }
    // An answer that no dialog asked for: there was nothing to tell.
    if (step.is(L"Activate", 2) && step.names[0] == kMessageDialog) return true;
    if (trailDialog(step) || drawingTree(step) || familyTableDialog(step)) return true;
    return std::any_of(std::begin(kDialogs), std::end(kDialogs),
                       [&](StepHandler handler) { return handler(context, step, macros.dialogs_); });
  }
};

std::vector<std::wstring> macroSteps(std::wstring_view text) {
  std::vector<std::wstring> steps;
  std::size_t start = 0;
  bool quoted = false;
  for (std::size_t i = 0; i <= text.size(); ++i) {
    if (i < text.size() && text[i] == L'`') quoted = !quoted;
    if (i < text.size() && (text[i] != L';' || quoted)) continue;
    if (const auto step = text::trimmed(text.substr(start, i - start)); !step.empty()) steps.emplace_back(step);
    start = i + 1;
  }
  return steps;
}

void Macros::putOnTop(std::vector<Waiting> steps) {
  steps_.insert(steps_.begin(), std::move_iterator(steps.begin()), std::move_iterator(steps.end()));
}

void Macros::load(std::wstring_view text) {
  std::vector<Waiting> loaded;
  for (std::wstring& step : macroSteps(text)) loaded.push_back({std::move(step)});
  putOnTop(std::move(loaded));
}

void Macros::runStep(const MacroContext& context) {
  const Waiting waiting = std::move(steps_.front());
  steps_.pop_front();
  ran_.push_back(waiting.step);
  const bool known = MacroRun{context, *this, waiting.depth}.run(parsed(waiting.step));
  if (!known && reported_.insert(waiting.step).second) {
    unknown_.push_back(waiting.step);
    context.models.message(text::format(L"unknown macro step: %s", waiting.step));
  }
  if (++withoutPause_ == kMostSteps && !steps_.empty()) {
    context.models.message(text::format(L"%d macro steps ran without a pause; the others are dropped", kMostSteps));
    steps_.clear();
  }
  if (steps_.empty()) withoutPause_ = 0;
}

std::optional<int> Macros::answerMessageDialog(const std::vector<std::wstring>& buttons) {
  std::optional<int> pressed;
  while (!pressed && !steps_.empty()) {
    const MacroStep step = parsed(steps_.front().step);
    if (!step.is(L"Activate", 2) || step.names[0] != kMessageDialog) break;
    const auto button = std::find_if(buttons.begin(), buttons.end(), [&](const std::wstring& entry) {
      return text::equalNoCase(entry, step.names[1]);
    });
    if (button != buttons.end()) pressed = static_cast<int>(button - buttons.begin());
    ran_.push_back(std::move(steps_.front().step));
    steps_.pop_front();
  }
  return pressed;
}

}  // namespace headless

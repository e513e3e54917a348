#include "headless/macros/macros.h"

#include <algorithm>

#include "headless/model/family.h"
#include "headless/session/state.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/pieces.h"

namespace headless {
namespace {

constexpr std::wstring_view kPageControlEnd = L"_control_btn";

// "~ Activate `main_dlg_cur` `page_Layout_control_btn` 1" taken apart: the verb, and what stands in backquotes.
struct Step {
  std::wstring verb;
  std::vector<std::wstring> names;
};
Step parsed(std::wstring_view text) {
  Step step;
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
  }
  return step;
}

bool drawingIsCurrent(Session::State& state) {
  const Model* model = state.models.find(state.windows.model(state.windows.current()));
  return model && model->type() == creo::ProMdlType::drawing;
}

}  // namespace

// The effects of known steps.
struct MacroRun {
  Session& session;
  Macros& macros;

  // The screen, and the sheets and details of a drawing, are always up to date here.
  void nothing() const {}
  // Updating a drawing's tables shows its tab; who listens is told at once.
  void updateTables() const {
    Session::State& state = session.state();
    if (!drawingIsCurrent(state)) return;
    creo::ProNotification told;
    told.type = creo::ProNotifyType::pageControlShown;
    told.model = state.windows.model(state.windows.current());
    told.window = state.windows.current();
    told.name = macros.pageControl_;
    state.notify(told);
  }

  // The dialog of the family table: the parameter that is chosen in its list becomes a column when it is inserted.
  [[nodiscard]] bool familyTableDialog(const Step& step) const {
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
    Session::State& state = session.state();
    const Model* model = state.models.find(state.windows.model(state.windows.current()));
    FamilyTableRecord* table = model ? model->document->tableOf(model->row) : nullptr;
    if (!table || !macros.chosenRow_.starts_with(kRow)) return;
    const std::string column = text::toUtf8(macros.chosenRow_.substr(kRow.size()));
    if (addColumn(*table, creo::ProFamitemType::parameter, column) == creo::ProNoError)
      model->document->touch(model->row);
  }

  [[nodiscard]] bool command(const std::wstring& name) const {
    static constexpr std::pair<std::wstring_view, void (MacroRun::*)() const> kCommands[] = {
        {L"ProCmdViewRepaint", &MacroRun::nothing},   {L"ProCmdDwgUpdateSheets", &MacroRun::nothing},
        {L"ProCmdDwgRegenDraft", &MacroRun::nothing}, {L"ProCmdDwgTblRegUpd", &MacroRun::updateTables},
        {L"ProCmdMmFamTab", &MacroRun::nothing},
    };
    for (const auto& [known, run] : kCommands) {
      if (known != name) continue;
      (this->*run)();
      return true;
    }
    return false;
  }

  // False: the step isn't known.
  [[nodiscard]] bool run(const Step& step) const {
    if (step.verb == L"Command" && step.names.size() == 1) return command(step.names[0]);
    if (step.verb == L"Activate" && step.names.size() == 2 && step.names[0] == L"main_dlg_cur" &&
        step.names[1].ends_with(kPageControlEnd)) {
      macros.pageControl_ = step.names[1].substr(0, step.names[1].size() - kPageControlEnd.size());
      return true;
    }
    return familyTableDialog(step);
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

void Macros::load(std::wstring_view text) {
  for (std::wstring& step : macroSteps(text)) steps_.push_back(std::move(step));
}

void Macros::runStep(Session& session) {
  const std::wstring step = std::move(steps_.front());
  steps_.pop_front();
  ran_.push_back(step);
  if (MacroRun{session, *this}.run(parsed(step)) || !reported_.insert(step).second) return;
  unknown_.push_back(step);
  session.showMessage(text::format(L"unknown macro step: %s", step));
}

}  // namespace headless

#include "headless/macros/view_steps.h"

#include "headless/model/states.h"
#include "text/encoding.h"

namespace headless {
namespace {

constexpr std::wstring_view kCommand = L"ProCmdViewVisTool", kDialog = L"visual_dlg0", kNoSection = L"no cross section";
const std::wstring kOpen = L"visual_dlg0", kRow = L"visual_dlg0/Table";

CrossSectionRecord* chosen(Model& model, const DialogState& dialogs) {
  const auto row = dialogs.find(kRow);
  return row == dialogs.end() ? nullptr : recordNamed(model.document->record.crossSections, text::toUtf8(row->second));
}

bool show(const Model& model, CrossSectionRecord& section, bool visible) {
  if (section.visible != visible) model.document->touch(nullptr);
  section.visible = visible;
  return true;
}

// A row of the table is pressed or selected: a cross section, or the row that stands for none.
bool tableStep(Model& model, const MacroStep& step, DialogState& dialogs) {
  const std::wstring& row = step.names[2];
  const bool none = row == kNoSection;
  if (!none && !recordNamed(model.document->record.crossSections, text::toUtf8(row))) return false;
  if (step.verb == L"Select") dialogs[kRow] = row;
  if (step.verb == L"Activate")
    makeActive(model, &ModelRecord::activeCrossSection,
               none ? std::string() : recordNamed(model.document->record.crossSections, text::toUtf8(row))->name);
  return step.verb == L"Select" || step.verb == L"Activate" || step.verb == L"Arm";
}

bool buttonStep(Model& model, const MacroStep& step, const DialogState& dialogs) {
  CrossSectionRecord* section = chosen(model, dialogs);
  if (!section) return false;
  if (step.names[1] == L"K03_VisibilityRMB") return show(model, *section, step.number != 0);
  if (step.names[1] != L"Activate") return false;
  makeActive(model, &ModelRecord::activeCrossSection, section->name);
  return show(model, *section, true);
}

}  // namespace

bool viewSteps(const MacroContext& context, const MacroStep& step, DialogState& dialogs) {
  if (step.is(L"Command", 1) && step.names[0] == kCommand) {
    dialogs[kOpen] = L"open";
    dialogs.erase(kRow);
    return true;
  }
  if (step.names.size() < 2 || step.names[0] != kDialog || !dialogs.contains(kOpen)) return false;
  if (step.is(L"Activate", 2) && step.names[1] == L"CloseBtn") {
    dialogs.erase(kOpen);
    dialogs.erase(kRow);
    return true;
  }
  // What kinds of things the table lists; cross sections are the ones that are known here.
  if (step.is(L"Select", 3) && step.names[1] == L"RadioSelApplMgr") return step.names[2] == L"xsec";
  Model* model = context.currentSolid();
  if (!model) return false;
  if (step.names.size() == 4 && step.names[1] == L"Table") return tableStep(*model, step, dialogs);
  return step.is(L"Activate", 2) && buttonStep(*model, step, dialogs);
}

}  // namespace headless

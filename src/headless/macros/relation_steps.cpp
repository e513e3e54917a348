#include "headless/macros/relation_steps.h"

#include "headless/model/features.h"
#include "headless/model/models.h"
#include "os/paths.h"
#include "os/text_files.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/numbers.h"
#include "text/pieces.h"

namespace headless {
namespace {

constexpr std::wstring_view kDialog = L"relation_dlg", kSearch = L"selspecdlg0", kFileDialog = L"file_open";
constexpr std::wstring_view kSearchedId = L"ExtRulesLayout.ExtBasicIDLayout.InputIDPanel";
// What is held between steps: the dialog with what its relations belong to, the search, the file dialog and its name.
constexpr const wchar_t *kOpen = L"relation_dlg", *kContext = L"relation_dlg/OMContext", *kSearching = L"selspecdlg0",
                        *kWanted = L"selspecdlg0/id", *kFound = L"relation_dlg/feature",
                        *kExporting = L"relation_dlg/export", *kPath = L"relation_dlg/path";
// What outlasts the dialog: the feature that it was opened for last, and which of its sketches it took.
constexpr const wchar_t *kLastFeature = L"relation_dlg/last feature", *kLastSketch = L"relation_dlg/last sketch";

bool open(const MacroContext& context, DialogState& dialogs) {
  if (!context.currentSolid()) return false;
  for (const wchar_t* entry : {kContext, kFound, kExporting, kPath}) dialogs.erase(entry);
  dialogs[kOpen] = L"open";
  return true;
}

// Which sketch is the next one of the feature.
std::size_t nextSketch(const Model& model, const std::wstring& id, std::size_t count, DialogState& dialogs) {
  const std::wstring feature = text::format(L"%lld:%s", model.handle.value, id);
  const auto last = static_cast<std::size_t>(text::parseInt(dialogs[kLastSketch]));
  const std::size_t next = dialogs[kLastFeature] == feature && last + 1 < count ? last + 1 : 0;
  dialogs[kLastFeature] = feature;
  dialogs[kLastSketch] = text::format(L"%d", next);
  return next;
}

// Writes the relations of the found feature's sketch.
bool exportRelations(const MacroContext& context, DialogState& dialogs) {
  dialogs.erase(kExporting);
  const Model* model = context.currentSolid();
  const std::wstring id = dialogs[kFound];
  const auto feature = model ? featureOf(*model, text::parseInt(id)) : std::nullopt;
  const FeatureRecord* record = feature ? feature->record() : nullptr;
  if (!record || record->sections.empty()) return false;
  const SectionRecord& sketch = record->sections[nextSketch(*model, id, record->sections.size(), dialogs)];
  if (sketch.relations.empty()) return true;
  std::wstring lines;
  for (const std::string& line : sketch.relations) lines += text::fromUtf8(line) + L'\n';
  const std::wstring& name = dialogs[kPath];
  const bool isWhole = !os::splitDevice(name).device.empty() || name.starts_with(L'\\') || name.starts_with(L'/');
  const std::wstring path = isWhole ? name : os::joined(context.models.folders().working(), name);
  if (const auto fault = os::writeText(path, lines, {.mark = true}))
    context.models.message(
        text::format(L"the relations can't be written to %s: %s", path, text::fromUtf8(fault.message())));
  return true;
}

bool searchStep(const MacroContext& context, const MacroStep& step, DialogState& dialogs) {
  if (!dialogs.contains(kSearching)) return false;
  if (step.is(L"Select", 3)) return step.names[2] == L"Feature" || step.names[2] == L"Misc";
  if (step.is(L"Update", 3) && step.names[1] == kSearchedId) {
    dialogs[kWanted] = step.names[2];
    return true;
  }
  if (!step.is(L"Activate", 2)) return false;
  if (step.names[1] == L"EvaluateBtn") return true;
  if (step.names[1] == L"CancelButton") {
    dialogs.erase(kSearching);
    dialogs.erase(kWanted);
    return true;
  }
  const Model* model = context.currentSolid();
  if (step.names[1] != L"ApplyBtn" || !model || !featureOf(*model, text::parseInt(dialogs[kWanted]))) return false;
  dialogs[kFound] = dialogs[kWanted];
  return true;
}

bool fileStep(const MacroStep& step, DialogState& dialogs) {
  if (!dialogs.contains(kExporting)) return false;
  if (step.verb == L"Trail") return step.names.back().starts_with(kFileDialog);  // where its preview stands
  if (step.names[0] != kFileDialog || !step.is(L"Update", 3) || step.names[1] != L"Inputname") return false;
  dialogs[kPath] = text::replaceAll(step.names[2], L"\\\\", L"\\");
  return true;
}

bool dialogStep(const MacroStep& step, DialogState& dialogs) {
  if (step.is(L"Select", 3) && step.names[1] == L"OMContext") {
    dialogs[kContext] = step.names[2];
    return true;
  }
  if (!step.is(L"Activate", 2)) return false;
  if (step.names[1] == L"PB_OK") {
    for (const wchar_t* entry : {kOpen, kContext, kFound, kExporting, kPath}) dialogs.erase(entry);
    return true;
  }
  if (step.names[1] != L"PBExport" || dialogs[kContext] != L"section" || !dialogs.contains(kFound)) return false;
  dialogs[kExporting] = L"open";
  return true;
}

}  // namespace

bool relationSteps(const MacroContext& context, const MacroStep& step, DialogState& dialogs) {
  if (step.is(L"Command", 1) && step.names[0] == L"ProCmdMmRels") return open(context, dialogs);
  if (step.names.empty() || !dialogs.contains(kOpen)) return false;
  if (step.is(L"Command", 1) && step.names[0] == L"ProCmdMdlTreeSearch") {
    dialogs[kSearching] = L"open";
    return true;
  }
  if (step.is(L"Command", 1) && step.names[0] == L"ProFileSelPushOpen@context_dlg_open_cmd")
    return dialogs.contains(kExporting) && exportRelations(context, dialogs);
  if (step.names[0] == kSearch) return searchStep(context, step, dialogs);
  if (step.names[0] == kDialog) return dialogStep(step, dialogs);
  return fileStep(step, dialogs);
}

}  // namespace headless

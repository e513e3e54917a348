// The relations of the model, of its features and of their sketches.
#include "core/messages.h"
#include "core/state.h"
#include "creo/ProMacro.h"
#include "creo/ProMdl.h"
#include "creo/ProSection.h"
#include "documents/relations.h"
#include "os/paths.h"
#include "os/surroundings.h"
#include "os/text_files.h"
#include "reports/sheet/items.h"
#include "reports/sheet/sections.h"
#include "text/format.h"
#include "text/pieces.h"

namespace reports::sheet {
namespace {

using core::Message;

constexpr double kHeadColumn = 75;

// Creo gives the relations of a sketch to its dialog alone: this macro lets the dialog export them, and names the
// feature by its id.
constexpr std::wstring_view kExportMacro =
    L"~ Command `ProCmdMmRels` ;~ Select `relation_dlg` `OMContext` 1 `section`;~ Command `ProCmdMdlTreeSearch` ;"
    L"~ Select `selspecdlg0` `SelOptionRadio` 1 `Feature`;~ Select `selspecdlg0` `RuleTab` 1 `Misc`;"
    L"~ Update `selspecdlg0` `ExtRulesLayout.ExtBasicIDLayout.InputIDPanel` `%d`;"
    L"~ Activate `selspecdlg0` `EvaluateBtn`;~ Activate `selspecdlg0` `ApplyBtn`;"
    L"~ Activate `selspecdlg0` `CancelButton`;~ Activate `relation_dlg` `PBExport`;"
    L"~ Trail `UI Desktop` `UI Desktop` `DLG_PREVIEW_POST` `file_open`;~ Update `file_open` `Inputname` `%s`;"
    L"~ Command `ProFileSelPushOpen@context_dlg_open_cmd` ;~ Activate `relation_dlg` `PB_OK`;";

void relationLine(Page& page, std::wstring_view line) { page.line(line, kRowSize, kFactColumn, kListStep); }

// A set of relations under the name of its owner; nothing for an owner without any.
void relationList(const Subject& subject, const creo::ProModelitem& owner) {
  const auto set = documents::relationsOf(owner);
  if (!set) return;
  const auto lines = creo::ProRelsetRelationsGet(set.value);
  if (!lines) return tellError(text::format(L"Failure while relset relations get: %d", static_cast<int>(lines.error)));
  if (lines.value.empty()) return;
  const bool fails = creo::ProRelsetRegenerate(set.value) != creo::ProNoError;
  head(subject, text::format(L"%s - Id: %d %s", itemName(subject, owner), owner.id,
                             fails ? core::msgText(Message::containFailures) : L""));
  for (const std::wstring& line : lines.value) relationLine(subject.page, line);
}

// The file that the macro leaves the relations in; there is none before and behind it.
class ExportedFile {
 public:
  ExportedFile() : path_(os::withBackslashes(core::pluginState().tempPath) + L"kv_creo_temp_outp.txt") { remove(); }
  ~ExportedFile() { remove(); }
  ExportedFile(const ExportedFile&) = delete;
  ExportedFile& operator=(const ExportedFile&) = delete;
  [[nodiscard]] const std::wstring& path() const { return path_; }

 private:
  void remove() const { os::files().remove(path_); }
  std::wstring path_;
};

void sketchRelations(const Subject& subject, const creo::ProFeature& feature, int number) {
  const auto sketch = creo::ProFeatureSectionCopy(feature, number);
  const auto name = sketch ? creo::ProSectionNameGet(sketch.value) : creo::Got<std::wstring>(sketch.error);
  const ExportedFile file;
  const std::wstring path = text::replaceAll(file.path(), L"\\", L"\\\\");
  if (creo::ProMacroLoad(text::format(kExportMacro, feature.id, path)) != creo::ProNoError) return;
  creo::ProMacroExecute();
  const auto relations = os::readText(file.path());
  if (!relations) return;
  head(subject, text::format(L"%s - at Id: %d", nameOrUnknown(name), feature.id));
  for (const std::wstring& line : text::lines(relations.value)) relationLine(subject.page, line);
}

void featureRelations(const Subject& subject) {
  tell(L"Report feature relations");
  head(subject, Message::featureRelations, kHeadColumn);
  visitFeatures(subject, [&](const creo::ProFeature& feature) {
    relationList(subject, itemOf(feature));
    const auto count = creo::ProFeatureNumSectionsGet(feature);
    if (!count) tellError(L"Can't get the sections number");
    for (int i = 0; count && i < count.value; ++i) sketchRelations(subject, feature, i);
    return creo::ProNoError;
  });
}

}  // namespace

void relationSection(const Subject& subject) {
  const bool before = subject.wants(L"rels"), after = subject.wants(L"postrel"), ofFeatures = subject.wants(L"kerel");
  if (!before && !after && !ofFeatures) return;
  if (before) tell(L"Report relations");
  title(subject, Message::relations);
  auto model = creo::ProMdlToModelitem(subject.model);
  subject.unread.read(model, L"relations");
  if (before) {
    head(subject, Message::preRelations, kHeadColumn);
    if (model) relationList(subject, model.value);
  }
  if (after) {
    head(subject, Message::postRelations, kHeadColumn);
    model.value.id = creo::kPostRegeneration;
    if (model) relationList(subject, model.value);
  }
  if (ofFeatures) featureRelations(subject);
  subject.page.endSection();
}

}  // namespace reports::sheet

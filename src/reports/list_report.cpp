// writeListReport: one list about the model, in a file of its own.
#include <algorithm>

#include "core/log.h"
#include "creo/ProMdl.h"
#include "reports/file_name.h"
#include "reports/list_rows.h"
#include "reports/open_report.h"
#include "text/letters.h"
#include "text/pieces.h"

namespace reports {

using namespace actions;

ModelFile modelFile(creo::ProMdl model) {
  auto data = creo::ProMdlDataGet(model);
  if (!data) return {};
  data.value.type = text::lower(data.value.type);
  return {fileNameValue(model, data.value), folderOf(data.value)};
}

std::wstring joined(const creo::Got<std::vector<std::wstring>>& lines, std::wstring_view separator) {
  return lines ? text::join(lines.value, separator) : std::wstring();
}

namespace {

// What the attribute `sel` chooses.
struct ListKind {
  std::wstring_view sel, line;
  bool drawingsOnly;  // for other models it adds nothing
  ListFunction write;
};
constexpr ListKind kLists[] = {
    {L"7", L"Instances", false, &instanceList},
    {L"8", L"Sheet formats / sizes", true, &sheetList},
    {L"9", L"Parameters", false, &parameterList},
    {L"10", L"All Annotations / Notes", false, &noteList},
    {L"11", L"All models", true, &drawingModelList},
    {L"15", L"All shown Model Dimensions", true, &shownDimensionList},
    {L"16", L"Layers", false, &layerList},
    {L"17", L"Dimensions", false, &dimensionList},
    {L"18", L"Dependencies", false, &dependencyList},
};
constexpr std::wstring_view kDeprecated = L"12";

// Null for none.
const ListKind* listKind(std::wstring_view sel) {
  const auto* kind =
      std::find_if(std::begin(kLists), std::end(kLists), [&](const auto& row) { return row.sel == sel; });
  return kind == std::end(kLists) ? nullptr : kind;
}

void writeList(CsvReport& report, const Task& task) {
  const std::wstring sel = task.text(L"sel").text;
  if (sel == kDeprecated)
    return core::logWrite(L"This type of report is deprecated. Please use KV Version 5.7.", core::kError);
  const ListKind* kind = listKind(sel);
  if (!kind) return;
  core::logIndented(kind->line, core::kNormal, 1);
  const auto type = creo::ProMdlTypeGet(task.model());
  if (kind->drawingsOnly && type.value != creo::ProMdlType::drawing) return;
  kind->write(report, {task, task.model(), type ? type.value : creo::ProMdlType::unused, modelFile(task.model())});
}

Outcome writeListReport(const Task& task) {
  CsvReport report;
  report.name = L"writeListReport";
  if (!openReport(report, task, {.changeComma = L"autochangenum"})) return done;
  writeList(report, task);
  reportFlush(report);
  reportClose(report);
  return done;
}

constexpr Attribute kSelection[] = {
    {.name = L"sel",
     .kind = Kind::word,
     .words = L"7|8|9|10|11|15|16|17|18",
     .variables = true,
     .need = Need::needed,
     .about = "which list: 7 instances, 8 sheets, 9 parameters, 10 notes, 11 models of a drawing, 15 dimensions that a "
              "drawing shows, 16 layers, 17 dimensions, 18 dependencies"},
};
constexpr Attribute kOfLists[] = {
    flag(L"autochangenum", "numbers are written with a comma"),
    flag(L"generics", "7: the model itself, where it has a family table"),
    flag(L"instances", "7: the instances of its table, or the model itself, where it is one without a table"),
    flag(L"mwFamtab", "7: the model itself, where it has no family table and is no instance"),
    flag(L"paras", "7: columns of parameters"),
    flag(L"txtform", "10: texts as they are shown, else as they were entered"),
    flag(L"onlyNamed", "17: only dimensions with a name of their own"),
};
constexpr auto kAttributes = core::joined(kSelection, kOpening, kOfLists);

// No filter: the list is about the model whatever its kind.
constexpr Action kActions[] = {
    {.key = L"writeListReport",
     .place = 156,
     .group = Group::ownModelTest,
     .title = L"write list report",
     .conditions = {kNoFilter},
     .attributes = kAttributes,
     .effects = {.reads = Touched::model | Touched::users | Touched::family,
                 .changes = Touched::reports | Touched::programs,
                 .takenBack = false},
     .about = "writes one list about the model into a file of its own",
     .function = &writeListReport},
};

}  // namespace

std::span<const actions::Action> listReportActions() { return kActions; }

}  // namespace reports

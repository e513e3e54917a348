// The report on a part's materials.
#include "creo/ProMaterial.h"
#include "reports/report_row.h"

namespace reports {
namespace {

using namespace actions;

std::wstring current(const creo::ProMdl& part) { return creo::ProPartMaterialNameGet(part).value; }

std::wstring all(const creo::ProMdl& part) {
  std::wstring names;
  for (const std::wstring& name : creo::ProPartMaterialsGet(part).value) appendLine(names, name);
  return names;
}

constexpr ReportColumn<creo::ProMdl> kColumns[] = {
    {L"actual", L"Current material", &current, "the current material"},
    {L"allInModel", L"All materials in model", &all, "all materials of the part"},
};

Outcome reportMaterials(const Task& task) {
  if (const auto row = ReportRow::of(task)) reportColumns<creo::ProMdl>(*row, task, kColumns, task.model());
  return done;
}

constexpr auto kAttributes = reportAttributes(kColumns);

constexpr Action kActions[] = {
    {.key = L"reportMaterials",
     .place = 26,
     .title = L"Report Material",
     .attributes = kAttributes,
     .effects = {.changes = Touched::reports},
     .about = "reports a part's materials",
     .function = &reportMaterials},
};

}  // namespace

std::span<const actions::Action> materialReportActions() { return kActions; }

}  // namespace reports

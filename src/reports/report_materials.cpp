// The report on a part's materials.
#include "actions/families.h"
#include "creo/ProMaterial.h"
#include "reports/report_row.h"

namespace reports {
namespace {

using namespace engine;

std::wstring current(const creo::ProMdl& part) { return creo::ProPartMaterialNameGet(part).value; }

std::wstring all(const creo::ProMdl& part) {
  std::wstring names;
  for (const std::wstring& name : creo::ProPartMaterialsGet(part).value) appendLine(names, name);
  return names;
}

constexpr ReportColumn<creo::ProMdl> kColumns[] = {
    {L"actual", L"Current material", &current},
    {L"allInModel", L"All materials in model", &all},
};

Outcome reportMaterials(const Task& task) {
  if (const auto ended = begin(task, {.title = L"Report Material"})) return *ended;
  if (const auto row = ReportRow::of(task)) reportColumns<creo::ProMdl>(*row, task, kColumns, task.model());
  return done;
}

constexpr actions::ActionFunction kActions[] = {{L"reportMaterials", &reportMaterials}};

}  // namespace
}  // namespace reports

namespace actions {
std::span<const ActionFunction> materialReportActions() { return reports::kActions; }
}  // namespace actions

// One column that a filter decides.
#include "actions/families.h"
#include "core/log.h"
#include "documents/filter.h"
#include "reports/report_row.h"

namespace reports {
namespace {

using namespace engine;

// The last child of that name, or null.
const XmlNode* filterOf(const XmlNode& task) {
  const XmlNode* found = nullptr;
  core::xmlEachChild(task, [&found](const XmlNode& child) {
    if (child.name == L"reportFilter") found = &child;
  });
  return found;
}

Outcome reportUniversal(const Task& task) {
  if (const auto ended = begin(task, {.title = L"Report Universal", .version = L"4"})) return *ended;
  constexpr std::wstring_view kColumn = L"universal";
  const auto row = ReportRow::of(task);
  if (!row) return done;
  row->column(kColumn, task.attribute(L"title"));
  const XmlNode* filter = filterOf(task.node());
  if (!filter) {
    core::logWrite(L"XML Structure for filter definition can't be found", core::kError);
    return done;
  }
  const bool holds = documents::filterCheck(*filter, task.subject().extension, task.model()) == documents::kFilterHolds;
  const Replaced value = task.text(holds ? L"trueissue" : L"falseissue");
  if (value.hasText()) row->value(kColumn, value.text);
  return done;
}

constexpr actions::ActionFunction kActions[] = {{L"reportUniversal", &reportUniversal}};

}  // namespace
}  // namespace reports

namespace actions {
std::span<const ActionFunction> universalReportActions() { return reports::kActions; }
}  // namespace actions

// One column that a filter decides.
#include "core/log.h"
#include "documents/filter.h"
#include "language/variables.h"
#include "reports/report_row.h"

namespace reports {
namespace {

using namespace language;
using namespace actions;

// The last child of that name, or null.
const XmlNode* filterOf(const XmlNode& task) {
  const XmlNode* found = nullptr;
  core::xmlEachChild(task, [&found](const XmlNode& child) {
    if (child.name == L"reportFilter") found = &child;
  });
  return found;
}

Outcome reportUniversal(const Task& task) {
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

constexpr Attribute kTexts[] = {
    {.name = L"title", .about = "the column's title"},
    {.name = L"trueissue",
     .variables = true,
     .need = Need::oneOf,
     .about = "what stands in the field when the filter holds"},
    {.name = L"falseissue",
     .variables = true,
     .need = Need::oneOf,
     .about = "what stands in the field when it doesn't"},
};
constexpr auto kAttributes = reportAttributes(kTexts);

constexpr Action kActions[] = {
    {.key = L"reportUniversal",
     .place = 23,
     .title = L"Report Universal",
     .version = L"4",
     .attributes = kAttributes,
     .effects = {.reads = Touched::model | Touched::users | Touched::family | Touched::files | Touched::session |
                          Touched::server | Touched::surroundings | Touched::variables,
                 .changes = Touched::reports},
     .about = "reports one of two texts, by a filter of its own in the child reportFilter",
     .function = &reportUniversal},
};

}  // namespace

std::span<const actions::Action> universalReportActions() { return kActions; }

}  // namespace reports

#include "reports/open_report.h"

#include "actions/families.h"
#include "core/log.h"
#include "os/surroundings.h"
#include "reports/side_file.h"

namespace reports {

using namespace engine;

namespace {

constexpr std::string_view kMark = "\xEF\xBB\xBF";

// Override mode: the file begins anew, with a mark where it is UTF-8.
void beginAnew(const CsvReport& report) {
  if (os::files().remove(report.path) == std::errc::permission_denied)
    core::logWrite(L"Access denied, can't override file", core::kError);
  if (!report.form.charsetUtf) return;
  if (auto file = os::files().append(report.path)) file.value->write(kMark);
}

}  // namespace

void openReport(CsvReport& report, const Task& task, const OpeningAttributes& attributes) {
  report.path = task.path(L"file", L"reports");
  report.form.winUnix = task.isTrue(L"winUnix");
  report.form.charsetUtf = task.isTrue(L"charsetUTF");
  report.form.semicolon = task.attribute(L"sep") == L"sem";
  report.form.fileNameFirst = attributes.hasFileNameFirst && task.isTrue(L"fnfirst");
  report.form.changeComma = task.isTrue(attributes.changeComma);
  report.beginsAnew = report.overwrite = task.isTrue(L"overwrite");
  core::logIndented(report.path, core::kNormal, 1);
  core::logIndented(report.overwrite ? L"Mode: override" : L"Mode: append", core::kNormal, 1);

  // Closed at once: that the file can be written is known before hours of collecting.
  if (reportOpenStream(report)) reportClose(report);
  if (report.overwrite)
    beginAnew(report);
  else if (!readSideFile(report))
    report.overwrite = true;  // a new report: its header line is still to be written
  if (report.form.fileNameFirst) reportAddColumn(report, kFileNameColumn, kFileNameColumn);
  report.openAfterCreation = task.isTrue(L"openAfterCreation");
}

namespace {

Outcome openCsvReport(const Task& task) {
  if (const auto ended = beginUnfiltered(task, {.title = L"Open report"})) return *ended;
  core::countAction();
  CsvReport& report = reportRegistry().add(task.attribute(L"name"));
  openReport(report, task, {.changeComma = L"changecomma", .hasFileNameFirst = true});
  report.newRowAtNewModel = task.isTrue(L"newRowAtNewModel");
  return done;
}

constexpr actions::ActionFunction kActions[] = {{L"openCSVReport", &openCsvReport}};

}  // namespace
}  // namespace reports

namespace actions {
std::span<const ActionFunction> openReportActions() { return reports::kActions; }
}  // namespace actions

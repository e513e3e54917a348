#include "reports/open_report.h"

#include "actions/output_file.h"
#include "core/log.h"
#include "os/surroundings.h"
#include "reports/csv_text.h"
#include "reports/side_file.h"

namespace reports {

using namespace actions;

namespace {

constexpr std::string_view kMark = "\xEF\xBB\xBF";

// Override mode: the file begins anew, with a mark where it is UTF-8. Emptied, not removed: a link stays one.
void beginAnew(CsvReport& report, bool isOpened) {
  const std::error_code fault =
      isOpened ? os::files().write(report.path, report.form.charsetUtf ? kMark : std::string_view())
               : std::make_error_code(std::errc::permission_denied);
  report.beginsAnew = !fault;
  report.lacksLineEnd = !report.beginsAnew;  // what couldn't be emptied is gone on with
  if (fault == std::errc::permission_denied && os::files().exists(report.path))
    core::logWrite(L"Access denied, can't override file", core::kError);
}

// Append mode: the columns of earlier runs, and whether a header line is still to be written.
void goOn(CsvReport& report, const FileEnds& found) {
  const bool knowsColumns = readSideFile(report, [&report](std::wstring_view key, std::wstring_view title) {
    reportAddColumn(report, key, title, ColumnSource::sideFile);
  });
  report.lacksLineEnd = found.lacksLineEnd;
  // A new report, or one whose file was taken away: the rows need their titles whatever the side file remembers.
  report.overwrite = !knowsColumns || found.isEmpty;
  report.headerIfEmpty = knowsColumns && found.isEmpty;
}

// The target's path; empty, with a line: the list may not write there.
std::wstring targetOf(const Task& task) {
  if (task.attribute(L"file").empty()) {
    core::logWrite(L"The attribute 'file' is missing", core::kError);
    return {};
  }
  std::wstring path = wholePath(task.path(L"file", L"reports"));
  if (!mayBeWritten(path)) return {};
  // The two files beside it mustn't be others either, as those of "gear.pr" would.
  for (const std::wstring_view beside : {L"t", L"header"})
    if (isKeptFile(path + std::wstring(beside)) && !mayBeWritten(path + std::wstring(beside))) return {};
  return path;
}

}  // namespace

bool openReport(CsvReport& report, const Task& task, const OpeningAttributes& attributes) {
  report.path = targetOf(task);
  if (report.path.empty()) return false;
  report.form.winUnix = task.isTrue(L"winUnix");
  report.form.charsetUtf = task.isTrue(L"charsetUTF");
  report.form.semicolon = task.attribute(L"sep") == L"sem";
  report.form.fileNameFirst = attributes.hasFileNameFirst && task.isTrue(L"fnfirst");
  report.form.changeComma = task.isTrue(attributes.changeComma);
  report.overwrite = task.isTrue(L"overwrite");
  core::logIndented(report.path, core::kNormal, 1);
  core::logIndented(report.overwrite ? L"Mode: override" : L"Mode: append", core::kNormal, 1);

  // Opened and closed at once: that the file can be written is known before hours of collecting. Opening makes it.
  const FileEnds found = report.overwrite ? FileEnds() : fileEnds(report);
  const bool isOpened = reportOpenStream(report);
  const bool keepsTop = !report.overwrite && os::files().exists(sideFilePath(report));
  if (isOpened && keepsTop) leaveHeaderLine(report, found);
  if (isOpened && !keepsTop) reportClose(report);
  if (report.overwrite)
    beginAnew(report, isOpened);
  else
    goOn(report, found);
  if (report.form.fileNameFirst) reportAddColumn(report, kFileNameColumn, kFileNameColumn);
  report.openAfterCreation = task.isTrue(L"openAfterCreation");
  return true;
}

namespace {

Outcome openCsvReport(const Task& task) {
  CsvReport& report = reportRegistry().add(task.attribute(L"name"));
  openReport(report, task, {.changeComma = L"changecomma", .hasFileNameFirst = true});
  report.newRowAtNewModel = task.isTrue(L"newRowAtNewModel");
  return done;
}

constexpr Attribute kName[] = {
    {.name = L"name", .need = Need::needed, .about = "by which report actions find it; of two of one name the later"},
};
constexpr Attribute kForm[] = {
    flag(L"fnfirst", "each line begins with the model's file name"),
    flag(L"changecomma", "numbers are written with a comma"),
    flag(L"newRowAtNewModel", "with fnfirst another model begins another row"),
};
constexpr auto kAttributes = joined(kName, kOpening, kForm);

constexpr Action kActions[] = {
    {.key = L"openCSVReport",
     .place = 11,
     .group = Group::withoutModel,
     .title = L"Open report",
     .conditions = {kNoFilter},
     .attributes = kAttributes,
     .effects = {.reads = Touched::nothing, .changes = Touched::reports | Touched::programs, .takenBack = false},
     .about = "opens a report that the report actions fill; it is written when the run ends",
     .function = &openCsvReport},
};

}  // namespace

std::span<const actions::Action> openReportActions() { return kActions; }

}  // namespace reports

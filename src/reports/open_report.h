// Opening a report: by the action that names one, and by the list report.
#pragma once

#include "actions/task.h"
#include "reports/csv_report.h"
#include "reports/report_attributes.h"

namespace reports {

// What the attributes of the two differ in.
struct OpeningAttributes {
  std::wstring_view changeComma;  // the attribute that asks for it
  bool hasFileNameFirst = false;  // is there one that asks for a leading "File name"?
};

// Reads path and form from the task, opens the file once to test it, and takes up the columns of earlier runs. False,
// with one error line: there is no file, or it mayn't be written; what is then collected goes nowhere, silently.
bool openReport(CsvReport& report, const actions::Task& task, const OpeningAttributes& attributes);

// The attributes that both have.
constexpr core::Attribute kOpening[] = {
    {.name = L"file",
     .kind = core::Kind::written,
     .variables = true,
     .need = core::Need::needed,
     .folder = L"reports",
     .about = "the report's path"},
    flag(L"winUnix", "kept, but changes nothing"),
    flag(L"charsetUTF", "UTF-8, else one byte a character"),
    {.name = L"sep",
     .kind = core::Kind::word,
     .words = L"sem|,|",
     .about = "sem: a semicolon between values, else a comma"},
    flag(L"overwrite", "the file begins anew, else rows are put behind those of earlier runs"),
    flag(L"openAfterCreation", "the system opens the file once it is written"),
};

}  // namespace reports

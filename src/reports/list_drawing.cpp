// The lists of a drawing's sheets and models.
#include "creo/ProMdl.h"
#include "reports/list_rows.h"
#include "reports/sheet_names.h"
#include "text/format.h"

namespace reports {

namespace {

struct Sheet {
  creo::ProMdl drawing;
  int number = 0;
};

std::wstring drawingName(const Sheet& sheet) {
  const auto name = creo::ProMdlNameGet(sheet.drawing);
  return name ? name.value + L".drw" : std::wstring();
}
std::wstring sheetNumber(const Sheet& sheet) { return text::format(L"%d", sheet.number); }
std::wstring formatName(const Sheet& sheet) {
  const auto format = creo::ProDrawingFormatGet(sheet.drawing, sheet.number);
  return format ? format.value : std::wstring();
}
std::wstring sheetSize(const Sheet& sheet) {
  return sizeName(creo::ProDrawingSheetSizeGet(sheet.drawing, sheet.number));
}

constexpr ListColumn<Sheet> kSheetColumns[] = {
    {L"File name", L"fname", &drawingName},
    {L"Sheet", L"sheet", &sheetNumber},
    {L"Formats", L"format", &formatName},
    {L"Sizes", L"size", &sheetSize},
};

struct ShownModel {
  const ModelFile &drawing, model;
};

constexpr ListColumn<ShownModel> kModelColumns[] = {
    {L"Drawing name", L"fname", [](const ShownModel& shown) { return shown.drawing.name; }},
    {L"Drawing path", L"fpath", [](const ShownModel& shown) { return shown.drawing.path; }},
    {L"Model name", L"name", [](const ShownModel& shown) { return shown.model.name; }},
    {L"Model path", L"path", [](const ShownModel& shown) { return shown.model.path; }},
};

}  // namespace

void sheetList(CsvReport& report, const ListSubject& subject) {
  const ListRows<Sheet> rows(report, kSheetColumns);
  eachSheet(subject.model, [&](int number) { rows.add({subject.model, number}); });
}

void drawingModelList(CsvReport& report, const ListSubject& subject) {
  const ListRows<ShownModel> rows(report, kModelColumns);
  for (const creo::ProMdl solid : creo::ProDrawingSolidsCollect(subject.model).value)
    rows.add({subject.file, modelFile(solid)});
}

}  // namespace reports

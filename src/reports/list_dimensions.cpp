// The lists of a model's dimensions, and of those that a drawing shows of its models.
#include "creo/ProDimension.h"
#include "creo/ProMdl.h"
#include "language/compare.h"
#include "reports/list_rows.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/numbers.h"
#include "text/pieces.h"

namespace reports {
namespace {

struct Dimension {
  const ListSubject& subject;
  const ModelFile& owner;
  creo::ProDimension handle;
};

std::wstring fileName(const Dimension& dimension) { return dimension.subject.file.name; }
std::wstring filePath(const Dimension& dimension) { return dimension.subject.file.path; }
std::wstring id(const Dimension& dimension) { return text::format(L"%d", dimension.handle.id); }
std::wstring symbol(const Dimension& dimension) { return creo::ProDimensionSymbolGet(dimension.handle).value; }

std::wstring value(const Dimension& dimension) {
  const auto value = creo::ProDimensionValueGet(dimension.handle);
  return value ? text::format(L"%f", value.value) : std::wstring();
}

std::wstring dimensionText(const Dimension& dimension) { return joined(creo::ProDimensionTextGet(dimension.handle)); }

// The text as a person reads it: with the value and the symbol in their places.
std::wstring interpreted(const Dimension& dimension) {
  const auto value = creo::ProDimensionValueGet(dimension.handle);
  if (!value) return {};
  const std::wstring shown = text::replaceAll(dimensionText(dimension), L"@D", text::shortest(value.value));
  return text::replaceAll(shown, L"@S", symbol(dimension));
}

std::wstring toleranceType(const Dimension& dimension) {
  static constexpr struct {
    creo::ProToleranceType type;
    std::wstring_view word;
  } kWords[] = {
      {creo::ProToleranceType::none, L"NULL"},
      {creo::ProToleranceType::standard, L"DIN/ISO"},
      {creo::ProToleranceType::limits, L"LIMITS"},
      {creo::ProToleranceType::plusMinus, L"PLUS/MINUS"},
      {creo::ProToleranceType::symmetric, L"SYMMETRIC"},
      {creo::ProToleranceType::symmetricSuperscript, L"SYMMETRIC_SUPERSCRIPT"},
  };
  const auto type = creo::ProDimensionTolTypeGet(dimension.handle);
  for (const auto& row : kWords)
    if (type && row.type == type.value) return std::wstring(row.word);
  return {};
}

constexpr ListColumn<Dimension> kShownColumns[] = {
    {L"File name", L"fname", &fileName},
    {L"File path", L"fpath", &filePath},
    {L"Model name", L"name", [](const Dimension& dimension) { return dimension.owner.name; }},
    {L"Model path", L"path", [](const Dimension& dimension) { return dimension.owner.path; }},
    {L"Dimension id", L"id", &id},
    {L"Dimension name", L"dimname", &symbol},
    {L"Dimension is associative", L"isassoc",
     [](const Dimension& dimension) { return truth(creo::ProDimensionIsAssociative(dimension.handle)); }},
    {L"Dimension is reference", L"isref", [](const Dimension& dimension) { return truth(dimension.handle.reference); }},
    {L"Dimension is relation driven", L"isreldrv",
     [](const Dimension& dimension) { return truth(creo::ProDimensionIsReldriven(dimension.handle)); }},
    {L"Dimension value", L"value", &value},
    {L"Dimension value interpreted", L"value_intrprt", &interpreted},
    {L"Dimension tolerance", L"toltype", &toleranceType},
    {L"Dimension text", L"text", &dimensionText},
};

constexpr ListColumn<Dimension> kColumns[] = {
    {L"File name", L"fname", &fileName},   {L"File path", L"fpath", &filePath},
    {L"Dimension Name", L"name", &symbol}, {L"Dimension ID", L"id", &id},
    {L"Value", L"value", &value},          {L"Tolerance Type", L"toltype", &toleranceType},
};

}  // namespace

void shownDimensionList(CsvReport& report, const ListSubject& subject) {
  const ListRows<Dimension> rows(report, kShownColumns);
  for (const creo::ProMdl solid : creo::ProDrawingSolidsCollect(subject.model).value) {
    const ModelFile owner = modelFile(solid);
    const auto add = [&](const creo::ProDimension& dimension) {
      const auto shown = creo::ProAnnotationIsShown(dimension, subject.model);
      if (shown && shown.value) rows.add({subject, owner, dimension});
      return creo::ProNoError;
    };
    for (const bool reference : {false, true}) creo::ProSolidDimensionVisit(solid, reference, add);
  }
}

void dimensionList(CsvReport& report, const ListSubject& subject) {
  const ListRows<Dimension> rows(report, kColumns);
  const bool onlyNamed = subject.task.isTrue(L"onlyNamed");
  const auto add = [&](const creo::ProDimension& dimension) {
    const Dimension entry{subject, subject.file, dimension};
    if (!onlyNamed || language::regexMatch("^[dp][0-9]+$", text::toUtf8(symbol(entry))) != 1) rows.add(entry);
    return creo::ProNoError;
  };
  if (subject.type == creo::ProMdlType::drawing)
    creo::ProDrawingDimensionVisit(subject.model, false, add);
  else
    creo::ProSolidDimensionVisit(subject.model, false, add);
}

}  // namespace reports

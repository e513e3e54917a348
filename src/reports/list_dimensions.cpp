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
std::wstring filePath(const Dimension& entry) { return entry.subject.file.path; }
std::wstring id(const Dimension& item) { return text::format(L"%d", item.handle.id); }
std::wstring symbol(const Dimension& candidate) { return creo::ProDimensionSymbolGet(candidate.handle).value; }

std::wstring value(const Dimension& element) {
  const auto value = creo::ProDimensionValueGet(element.handle);
  return value ? text::format(L"%f", value.value) : std::wstring();
}

std::wstring dimensionText(const Dimension& dimension) { return joined(creo::ProDimensionTextGet(dimension.handle)); }

// The text as a person reads it: with the value and the symbol in their places.
std::wstring interpreted(const Dimension& entry) {
  const auto value = creo::ProDimensionValueGet(entry.handle);
  if (!value) return {};
  const std::wstring shown = text::replaceAll(dimensionText(entry), L"@D", text::shortest(value.value));
  return text::replaceAll(shown, L"@S", symbol(entry));
}

std::wstring toleranceType(const Dimension& entry) {
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
  const auto type = creo::ProDimensionTolTypeGet(entry.handle);
  for (const auto& row : kWords)
    if (type && row.type == type.value) return std::wstring(row.word);
  return {};
}

constexpr ListColumn<Dimension> kShownColumns[] = {
    {L"File name", L"fname", &fileName},
    {L"File path", L"fpath", &filePath},
    {L"Model name", L"name", [](const Dimension& entry) { return entry.owner.name; }},
    {L"Model path", L"path", [](const Dimension& item) { return item.owner.path; }},
    {L"Dimension id", L"id", &id},
    {L"Dimension name", L"dimname", &symbol},
    {L"Dimension is associative", L"isassoc",
     [](const Dimension& candidate) { return truth(creo::ProDimensionIsAssociative(candidate.handle)); }},
    {L"Dimension is reference", L"isref", [](const Dimension& element) { return truth(element.handle.reference); }},
    {L"Dimension is relation driven", L"isreldrv",
     [](const Dimension& one) { return truth(creo::ProDimensionIsReldriven(one.handle)); }},
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

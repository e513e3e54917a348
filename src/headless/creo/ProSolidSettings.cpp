#include "creo/ProSolidSettings.h"

#include <cmath>
#include <set>

#include "headless/creo/solid_operation.h"
#include "headless/model/accuracy.h"
#include "os/paths.h"
#include "os/text_files.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/numbers.h"
#include "text/pieces.h"

namespace creo {

using headless::Model;
using headless::onSolid;
using State = headless::Session::State;

namespace {

constexpr double kCoarsest = 0.01;

// A line's name and number; nothing for a line that is otherwise.
std::optional<headless::ToleranceEntryRecord> entryOf(std::wstring_view line) {
  const auto blank = line.find_first_of(L" \t");
  if (blank == line.npos) return std::nullopt;
  const std::wstring_view written = text::trimmed(line.substr(blank));
  const auto value = text::readDouble(written);
  const bool isNumber = value.fault == text::NumberFault::none &&
                        written.find_first_not_of(L"0123456789+-.eE") == written.npos && std::isfinite(value.value);
  if (!isNumber) return std::nullopt;
  headless::ToleranceEntryRecord entry;
  entry.name = text::toUtf8(line.substr(0, blank));
  entry.value = value.value;
  return entry;
}

}  // namespace

ProError ProSolidAccuracySet(ProMdl solid, const ProAccuracy& accuracy) {
  return onSolid("ProSolidAccuracySet", solid, [&](State&, Model& m) -> ProError {
    const bool isRelative = accuracy.kind == ProAccuracyKind::relative;
    if (!std::isfinite(accuracy.value) || accuracy.value <= 0 || (isRelative && accuracy.value > kCoarsest))
      return ProBadInputs;
    const ProAccuracy before = headless::accuracyOf(m.document->record);
    if (before.kind == accuracy.kind && before.value == accuracy.value) return ProNoError;
    auto& stored = m.document->record.accuracy;
    if (!stored) stored = std::make_unique<headless::AccuracyRecord>();
    stored->kind = accuracy.kind;
    stored->value = accuracy.value;
    m.document->touch(nullptr);
    return ProNoError;
  });
}

ProError ProSolidModelclassSet(ProMdl solid, ProToleranceClass toleranceClass) {
  return onSolid("ProSolidModelclassSet", solid, [&](State&, Model& m) -> ProError {
    ProToleranceClass& stored = m.document->record.toleranceClass;
    if (stored != toleranceClass) m.document->touch(nullptr);
    stored = toleranceClass;
    return ProNoError;
  });
}

ProError ProSolidToleranceTableLoad(ProMdl solid, const std::wstring& path) {
  return onSolid("ProSolidToleranceTableLoad", solid, [&](State& state, Model& m) -> ProError {
    const auto content = os::readText(path);
    if (!content) return ProNotFound;
    std::vector<headless::ToleranceEntryRecord> entries;
    int number = 0;
    for (const std::wstring& whole : text::lines(content.value)) {
      ++number;
      const std::wstring_view line = text::trimmed(whole);
      if (line.empty() || line.starts_with(L'!')) continue;
      auto entry = entryOf(line);
      if (!entry) {
        state.showMessage(text::format(L"%s:%d: a line is a name and a number", path, number));
        return ProGeneralError;
      }
      entries.push_back(std::move(*entry));
    }
    auto& stored = m.document->record.toleranceTable;
    const auto same = [](const auto& a, const auto& b) { return a.name == b.name && a.value == b.value; };
    if (std::equal(stored.begin(), stored.end(), entries.begin(), entries.end(), same)) return ProNoError;
    stored = std::move(entries);
    m.document->touch(nullptr);
    return ProNoError;
  });
}

ProError ProDimensionBoundSet(const ProDimension& dimension, ProDimensionBound bound) {
  return onSolid("ProDimensionBoundSet", dimension.owner, [&](State&, Model& m) -> ProError {
    headless::DimensionRecord* record = m.document->dimension(dimension.id, dimension.reference);
    if (!record) return ProNotFound;
    if (!record->tolerance) return ProBadInputs;
    if (record->bound == bound) return ProNoError;
    record->bound = bound;
    m.document->touch(nullptr);
    return ProNoError;
  });
}

}  // namespace creo

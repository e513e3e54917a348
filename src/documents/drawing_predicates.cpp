// Predicates on a drawing: its models, formats and symbols.
#include <algorithm>

#include "core/log.h"
#include "creo/ProDrawing.h"
#include "creo/ProMdl.h"
#include "documents/predicate_families.h"
#include "documents/predicate_words.h"
#include "text/letters.h"

namespace documents {
namespace {

constexpr int kTitleFormatName = 22, kTitleFormatsOnSheets = 30, kTitleCurrentModel = 32, kNoSolidFound = 34,
              kTitleSymbolOnDrawing = 35;

// Calls f(sheet) for the sheets of a drawing in turn, until one gives true. False for none, and where the sheets can't
// be counted.
template <class F>
bool anySheet(creo::ProMdl drawing, F&& f) {
  const auto count = creo::ProDrawingSheetsCount(drawing);
  for (int sheet = 1; count && sheet <= count.value; ++sheet)
    if (f(sheet)) return true;
  return false;
}

// The line that a list of symbols leaves which can't be read.
constexpr std::wstring_view kListFailed = L"Failure while ProArraySizeGet";

bool isNamed(const creo::Got<creo::ProDtlsymdef>& definition, std::wstring_view name) {
  const auto found = definition ? creo::ProDtlsymdefNameGet(definition.value) : definition.error;
  return found && found.value == name;
}

}  // namespace

int multiModelDrawingPredicate(creo::ProMdl model, const core::XmlNode&) { return isMultiModelDrawing(model); }

int isMultiModelDrawing(creo::ProMdl model) {
  title(L"Extended filter: Is multi model drawing");
  const auto type = applicableType(model, AppliesTo::any);
  if (!type) return kNotApplicable;
  if (*type != creo::ProMdlType::drawing) return kFalse;
  const auto solids = creo::ProDrawingSolidsCollect(model);
  if (!solids) {
    core::logWrite(L"Can't collect solids", core::kError);
    return kFalse;
  }
  return solids.value.size() > 1 ? kTrue : kFalse;
}

int formatNamePredicate(creo::ProMdl model, const core::XmlNode& item) {
  title(kTitleFormatName);
  if (!applicableType(model, AppliesTo::drawings)) return kNotApplicable;
  const std::wstring_view pattern = valueOf(item, L"value");
  const bool found = anySheet(model, [&](int sheet) {
    const auto format = creo::ProDrawingFormatGet(model, sheet);
    return matches(pattern, format ? std::wstring_view(format.value) : L"noFormatFound");
  });
  return found ? kTrue : kFalse;
}

int formatsOnSheetsPredicate(creo::ProMdl model, const core::XmlNode& item) {
  title(kTitleFormatsOnSheets);
  if (!applicableType(model, AppliesTo::drawings)) return kNotApplicable;
  int sheets = 0, formats = 0;
  anySheet(model, [&](int sheet) {
    ++sheets;
    formats += creo::ProDrawingFormatGet(model, sheet) ? 1 : 0;
    return false;
  });
  const std::wstring_view wanted = valueOf(item, L"frm");
  if (wanted == L"0") return formats > 0 ? kTrue : kFalse;
  if (wanted == L"1") return sheets > 0 && formats == sheets ? kTrue : kFalse;
  return kFalse;
}

int currentModelPredicate(creo::ProMdl model, const core::XmlNode& item) {
  title(kTitleCurrentModel);
  if (!applicableType(model, AppliesTo::drawings)) return kNotApplicable;
  const auto solid = creo::ProDrawingCurrentsolidGet(model);
  if (!solid) {
    core::logMsgId(kNoSolidFound, core::kDebug, 1);
    return isTrue(item, L"inclnoact") ? kTrue : kFalse;
  }
  const auto name = creo::ProMdlNameGet(solid.value);
  if (!name) {
    core::logWrite(L"         - failure while read solid name\n", core::kError);
    return kFalse;
  }
  const auto type = applicableType(solid.value, AppliesTo::any);
  if (!type) return kNotApplicable;
  const std::wstring file = name.value + L"." + text::lower(creo::typeExtension(*type));
  return matches(valueOf(item, L"value"), file) ? kTrue : kFalse;
}

int symbolOnDrawingPredicate(creo::ProMdl model, const core::XmlNode& item) {
  title(kTitleSymbolOnDrawing);
  if (!applicableType(model, AppliesTo::drawings)) return kNotApplicable;
  const std::wstring_view wanted = valueOf(item, L"currmat");
  bool found = false;
  anySheet(model, [&](int sheet) {
    const auto symbols = creo::ProDrawingDtlsyminstsCollect(model, sheet);
    if (!symbols) core::logWrite(kListFailed, core::kError);
    found = symbols && std::any_of(symbols.value.begin(), symbols.value.end(), [&](const auto& symbol) {
              return isNamed(creo::ProDtlsyminstDefGet(symbol), wanted);
            });
    return found || !symbols;
  });
  return found ? kTrue : kFalse;
}

int symbolInDrawingPredicate(creo::ProMdl model, const core::XmlNode& item) {
  title(L"Extended filter: Symbol in drawing");
  if (!applicableType(model, AppliesTo::drawings)) return kNotApplicable;
  const auto definitions = creo::ProDrawingDtlsymdefsCollect(model);
  if (!definitions) {
    core::logWrite(kListFailed, core::kError);
    return kFalse;
  }
  const std::wstring_view wanted = valueOf(item, L"currmat");
  const bool found = std::any_of(definitions.value.begin(), definitions.value.end(),
                                 [&](const auto& definition) { return isNamed(definition, wanted); });
  return found ? kTrue : kFalse;
}

}  // namespace documents

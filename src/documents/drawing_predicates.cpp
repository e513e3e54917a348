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

using core::Message;

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

Answer multiModelDrawingPredicate(const Question& question) {
  if (question.type != creo::ProMdlType::drawing) return Answer::no;
  const auto solids = creo::ProDrawingSolidsCollect(question.model);
  if (!creo::isTold(solids)) {
    core::logWrite(L"Can't collect solids", core::kError);
    return Answer::no;
  }
  return answer(solids.value.size() > 1);
}

Answer formatNamePredicate(const Question& question) {
  const std::wstring_view pattern = question.value(L"value");
  const bool found = anySheet(question.model, [&](int sheet) {
    const auto format = creo::ProDrawingFormatGet(question.model, sheet);
    return matches(pattern, format ? std::wstring_view(format.value) : L"noFormatFound");
  });
  return answer(found);
}

Answer formatsOnSheetsPredicate(const Question& question) {
  int sheets = 0, formats = 0;
  anySheet(question.model, [&](int sheet) {
    ++sheets;
    formats += creo::ProDrawingFormatGet(question.model, sheet) ? 1 : 0;
    return false;
  });
  const std::wstring_view wanted = question.value(L"frm");
  if (wanted == L"0") return answer(formats > 0);
  if (wanted == L"1") return answer(sheets > 0 && formats == sheets);
  return Answer::no;
}

Answer currentModelPredicate(const Question& question) {
  const auto solid = creo::ProDrawingCurrentsolidGet(question.model);
  if (!solid) {
    core::logMsgId(Message::noSolidFound, core::kDebug, 1);
    return answer(question.isTrue(L"inclnoact"));
  }
  const auto name = creo::ProMdlNameGet(solid.value);
  if (!name) {
    core::logWrite(L"         - failure while read solid name\n", core::kError);
    return Answer::no;
  }
  const auto type = applicableType(solid.value, Models::typed);
  if (!type) return Answer::notApplicable;
  const std::wstring file = name.value + L"." + text::lower(creo::typeExtension(*type));
  return answer(matches(question.value(L"value"), file));
}

Answer symbolOnDrawingPredicate(const Question& question) {
  const std::wstring_view wanted = question.value(L"currmat");
  bool found = false;
  anySheet(question.model, [&](int sheet) {
    const auto symbols = creo::ProDrawingDtlsyminstsCollect(question.model, sheet);
    if (!creo::isTold(symbols)) core::logWrite(kListFailed, core::kError);
    found = std::any_of(symbols.value.begin(), symbols.value.end(),
                        [&](const auto& symbol) { return isNamed(creo::ProDtlsyminstDefGet(symbol), wanted); });
    return found || !creo::isTold(symbols);
  });
  return answer(found);
}

Answer symbolInDrawingPredicate(const Question& question) {
  const auto definitions = creo::ProDrawingDtlsymdefsCollect(question.model);
  if (!creo::isTold(definitions)) {
    core::logWrite(kListFailed, core::kError);
    return Answer::no;
  }
  const std::wstring_view wanted = question.value(L"currmat");
  const bool found = std::any_of(definitions.value.begin(), definitions.value.end(),
                                 [&](const auto& definition) { return isNamed(definition, wanted); });
  return answer(found);
}

constexpr Attribute kFormatName[] = {
    {.name = L"value",
     .kind = Kind::pattern,
     .need = Need::needed,
     .about = "the name of the format; a sheet without one reads noFormatFound"},
};
constexpr Attribute kFormatsOnSheets[] = {
    {.name = L"frm",
     .kind = Kind::word,
     .words = L"0|1",
     .need = Need::needed,
     .about = "0 asks for one sheet with a format, 1 for all"},
};
constexpr Attribute kCurrentModel[] = {
    {.name = L"value", .kind = Kind::pattern, .need = Need::needed, .about = "NAME.ext of the current model"},
    {.name = L"inclnoact",
     .kind = Kind::flag,
     .words = L"true",
     .about = "the answer for a drawing without a current model"},
};
constexpr Attribute kSymbol[] = {
    {.name = L"currmat", .need = Need::needed, .about = "the name of the symbol, exactly"},
};

constexpr Predicate kPredicates[] = {
    {.key = L"isMultiModelDrawing",
     .place = 3,
     .title = L"Extended filter: Is multi model drawing",
     .models = Models::typed,
     .about = "it is a drawing of more than one model",
     .function = &multiModelDrawingPredicate},
    {.key = L"formatName",
     .place = 15,
     .title = Message::filterFormatName,
     .models = Models::drawings,
     .attributes = kFormatName,
     .about = "the format of a sheet fits",
     .function = &formatNamePredicate},
    {.key = L"drawingCurrentModel",
     .place = 16,
     .title = Message::filterDrawingModel,
     .models = Models::drawings,
     .attributes = kCurrentModel,
     .about = "the name of the current model fits",
     .function = &currentModelPredicate},
    {.key = L"formatsOnSheets",
     .place = 19,
     .title = Message::filterSheetFormats,
     .models = Models::drawings,
     .attributes = kFormatsOnSheets,
     .about = "a sheet has a format, or all sheets have",
     .function = &formatsOnSheetsPredicate},
    {.key = L"symbolOnDrawing",
     .place = 20,
     .title = Message::filterSymbol,
     .models = Models::drawings,
     .attributes = kSymbol,
     .about = "a symbol of that name stands on a sheet",
     .function = &symbolOnDrawingPredicate},
    {.key = L"symbolInDrawing",
     .place = 21,
     .title = L"Extended filter: Symbol in drawing",
     .models = Models::drawings,
     .attributes = kSymbol,
     .about = "it has a symbol definition of that name",
     .function = &symbolInDrawingPredicate},
};

}  // namespace

std::span<const Predicate> drawingPredicates() { return kPredicates; }

}  // namespace documents

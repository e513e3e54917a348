#include "documents/predicate_words.h"

#include "core/log.h"
#include "core/messages.h"
#include "creo/ProMdl.h"
#include "engine/compare.h"
#include "engine/comparison_watch.h"
#include "text/format.h"
#include "text/numbers.h"

namespace documents {
namespace {

constexpr int kTypeFailed = 7;

}  // namespace

void title(int id) { core::logMsgId(id, core::kDebug, 1); }
void title(std::wstring_view text) { core::logIndented(text, core::kDebug, 1); }

std::wstring_view valueOf(const core::XmlNode& item, std::wstring_view name, std::wstring_view absent) {
  const core::XmlAttr* attribute = core::attrFind(item.attributes, name);
  return attribute ? attribute->value : absent;
}

bool isTrue(const core::XmlNode& item, std::wstring_view name) { return valueOf(item, name) == L"true"; }

bool matches(std::wstring_view pattern, std::wstring_view text) { return engine::wildcardCompare(pattern, text) == 1; }

bool noted(std::wstring_view sign, std::wstring_view wanted, double held, bool result) {
  if (engine::ComparisonWatch::on())
    engine::ComparisonWatch::note(text::format(L"%s %s", sign, wanted), text::shortest(held), result);
  return result;
}

std::optional<creo::ProMdlType> applicableType(creo::ProMdl model, AppliesTo to) {
  const auto type = creo::ProMdlTypeGet(model);
  if (!type) {
    core::logMsgPlain(kTypeFailed, core::kError);
    return {};
  }
  const bool isDrawing = type.value == creo::ProMdlType::drawing;
  const bool applies = to == AppliesTo::any || (to == AppliesTo::drawings && isDrawing) ||
                       (to == AppliesTo::solids && !isDrawing) ||
                       (to == AppliesTo::parts && type.value == creo::ProMdlType::part);
  if (!applies) return {};
  return type.value;
}

}  // namespace documents

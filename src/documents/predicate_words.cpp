#include "documents/predicate_words.h"

#include "core/log.h"
#include "core/messages.h"
#include "creo/ProMdl.h"
#include "language/compare.h"
#include "language/comparison_watch.h"
#include "text/format.h"
#include "text/numbers.h"

namespace documents {
namespace {

using core::Message;

bool applies(creo::ProMdlType type, Models to) {
  using creo::ProMdlType;
  switch (to) {
    case Models::all:
    case Models::typed:
      return true;
    case Models::solids:
      return type != ProMdlType::drawing;
    case Models::parts:
      return type == ProMdlType::part;
    case Models::assemblies:
      return type == ProMdlType::assembly;
    case Models::partsAndAssemblies:
      return type == ProMdlType::part || type == ProMdlType::assembly;
    case Models::drawings:
      return type == ProMdlType::drawing;
  }
  return false;
}

}  // namespace

std::wstring_view Question::value(std::wstring_view name, std::wstring_view absent) const {
  return valueOf(item, name, absent);
}
bool Question::isTrue(std::wstring_view name) const { return documents::isTrue(item, name); }

std::wstring_view valueOf(const core::XmlNode& item, std::wstring_view name, std::wstring_view absent) {
  const core::XmlAttr* attribute = core::attrFind(item.attributes, name);
  return attribute ? attribute->value : absent;
}

bool isTrue(const core::XmlNode& item, std::wstring_view name) { return valueOf(item, name) == L"true"; }

bool noted(std::wstring_view sign, std::wstring_view wanted, double number, bool result) {
  if (language::ComparisonWatch::on())
    language::ComparisonWatch::note(text::format(L"%s %s", sign, wanted), text::shortest(number), result);
  return result;
}

std::optional<creo::ProMdlType> applicableType(creo::ProMdl model, Models to) {
  const auto type = creo::ProMdlTypeGet(model);
  if (!type) {
    core::logMsgPlain(Message::typeUnread, core::kError);
    return {};
  }
  if (!applies(type.value, to)) return {};
  return type.value;
}

}  // namespace documents

// Predicates on a model as an object of the PDM system.
#include <algorithm>

#include "core/log.h"
#include "creo/ProMdl.h"
#include "documents/predicate_families.h"
#include "documents/predicate_words.h"
#include "documents/server_workspace.h"
#include "text/format.h"
#include "text/letters.h"

namespace documents {
namespace {

using core::Message;

constexpr std::wstring_view kServerPlaces[] = {L"wtws", L"wtpub", L"ilws", L"ilcs"};

bool beginsWithServerPlace(std::wstring_view text) {
  return std::any_of(std::begin(kServerPlaces), std::end(kServerPlaces),
                     [text](std::wstring_view place) { return text.starts_with(place); });
}

// "BRACKET.prt"
std::wstring fileName(const std::wstring& name, creo::ProMdlType type) {
  const bool known =
      type == creo::ProMdlType::part || type == creo::ProMdlType::assembly || type == creo::ProMdlType::drawing;
  return known ? name + L"." + text::lower(creo::typeExtension(type)) : name;
}

Answer pdmObjectPredicate(const Question& question) {
  const auto data = creo::ProMdlDataGet(question.model);
  if (!data) {
    core::logWrite(L"Can't read Mdl data", core::kError);
    return Answer::no;
  }
  const bool wanted = question.isTrue(L"pdmobj");
  const bool based = data.value.device.empty() || beginsWithServerPlace(data.value.device);
  if (!based) return answer(!wanted);
  if (!wanted) return Answer::no;
  if (!question.isTrue(L"pdmcheckedout")) return Answer::yes;
  const auto type = creo::ProMdlTypeGet(question.model);
  if (!type) {
    core::logWrite(text::format(L" -- Error %d", static_cast<int>(type.error)), core::kError);
    return Answer::no;
  }
  const auto status = statusIn(activeWorkspace(), fileName(data.value.name, type.value));
  return answer(status && question.value(L"pdmcheckedoutsel") == L"3" && status.value.checkedOut);
}

Answer pdmObject2Predicate(const Question& question) {
  const auto data = creo::ProMdlDataGet(question.model);
  const auto type = creo::ProMdlTypeGet(question.model);
  if (data && type) {
    const auto status = statusIn(activeWorkspace(), fileName(data.value.name, type.value));
    if (status && hasServerLocation(question.model))
      return answer(question.isTrue(status.value.checkedOut ? L"cs_checked_out" : L"cs_not_checked_out"));
  }
  const auto origin = creo::ProMdlOriginGet(question.model);
  if (origin && origin.value.empty()) return answer(question.isTrue(L"never_saved"));
  if (!data) return Answer::no;
  const bool inWorkspace = beginsWithServerPlace(data.value.device) || beginsWithServerPlace(data.value.path);
  return answer(question.isTrue(inWorkspace ? L"ws" : L"hdd"));
}

constexpr Attribute kPdmObject[] = {
    {.name = L"pdmobj",
     .kind = Kind::flag,
     .words = L"true",
     .need = Need::needed,
     .about = "true asks for models of the PDM system, else for others"},
    {.name = L"pdmcheckedout", .kind = Kind::flag, .words = L"true", .about = "that it is checked out is tested"},
    {.name = L"pdmcheckedoutsel",
     .kind = Kind::integer,
     .about = "3 asks for a model that is checked out; any other one gives no"},
};
constexpr Attribute kPdmObject2[] = {
    {.name = L"cs_checked_out",
     .kind = Kind::flag,
     .words = L"true",
     .need = Need::oneOf,
     .about = "the answer for one that is checked out"},
    {.name = L"cs_not_checked_out",
     .kind = Kind::flag,
     .words = L"true",
     .need = Need::oneOf,
     .about = "the answer for one that is not"},
    {.name = L"never_saved",
     .kind = Kind::flag,
     .words = L"true",
     .need = Need::oneOf,
     .about = "the answer for one that was never saved"},
    {.name = L"hdd",
     .kind = Kind::flag,
     .words = L"true",
     .need = Need::oneOf,
     .about = "the answer for one on a disk"},
    {.name = L"ws",
     .kind = Kind::flag,
     .words = L"true",
     .need = Need::oneOf,
     .about = "the answer for one in a workspace"},
};

constexpr Predicate kPredicates[] = {
    {.key = L"pdmobject",
     .place = 5,
     .title = Message::filterPdmObject,
     .attributes = kPdmObject,
     .about = "it comes from the PDM system, or does not",
     .function = &pdmObjectPredicate},
    {.key = L"pdmobject_2",
     .place = 6,
     .title = Message::filterPdmObject,
     .attributes = kPdmObject2,
     .about = "the attribute of its state in the PDM system is true",
     .function = &pdmObject2Predicate},
};

}  // namespace

std::span<const Predicate> pdmPredicates() { return kPredicates; }

}  // namespace documents

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

constexpr int kTitlePdmObject = 19;
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

}  // namespace

int pdmObjectPredicate(creo::ProMdl model, const core::XmlNode& item) {
  title(kTitlePdmObject);
  const auto data = creo::ProMdlDataGet(model);
  if (!data) {
    core::logWrite(L"Can't read Mdl data", core::kError);
    return kFalse;
  }
  const bool wanted = isTrue(item, L"pdmobj");
  const bool based = data.value.device.empty() || beginsWithServerPlace(data.value.device);
  if (!based) return wanted ? kFalse : kTrue;
  if (!wanted) return kFalse;
  if (!isTrue(item, L"pdmcheckedout")) return kTrue;
  const auto type = creo::ProMdlTypeGet(model);
  if (!type) {
    core::logWrite(text::format(L" -- Error %d", static_cast<int>(type.error)), core::kError);
    return kFalse;
  }
  const auto status = statusIn(activeWorkspace(), fileName(data.value.name, type.value));
  return status && valueOf(item, L"pdmcheckedoutsel") == L"3" && status.value.checkedOut ? kTrue : kFalse;
}

int pdmObject2Predicate(creo::ProMdl model, const core::XmlNode& item) {
  title(kTitlePdmObject);
  const auto data = creo::ProMdlDataGet(model);
  const auto type = creo::ProMdlTypeGet(model);
  const auto answer = [&item](std::wstring_view attribute) { return isTrue(item, attribute) ? kTrue : kFalse; };
  if (data && type) {
    const auto status = statusIn(activeWorkspace(), fileName(data.value.name, type.value));
    if (status && hasServerLocation(model))
      return answer(status.value.checkedOut ? L"cs_checked_out" : L"cs_not_checked_out");
  }
  const auto origin = creo::ProMdlOriginGet(model);
  if (origin && origin.value.empty()) return answer(L"never_saved");
  if (!data) return kFalse;
  const bool inWorkspace = beginsWithServerPlace(data.value.device) || beginsWithServerPlace(data.value.path);
  return answer(inWorkspace ? L"ws" : L"hdd");
}

}  // namespace documents

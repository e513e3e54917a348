// Predicates on a model as a file and as a member of a family.
#include "core/log.h"
#include "creo/ProFamtable.h"
#include "creo/ProMdl.h"
#include "documents/predicate_families.h"
#include "documents/predicate_words.h"
#include "text/letters.h"
#include "text/units.h"

namespace documents {
namespace {

constexpr int kTitleInstance = 6, kTitleGeneric = 8, kTitleFilename = 18;
constexpr std::size_t kFileNameField = 101;

}  // namespace

int instancePredicate(creo::ProMdl model, const core::XmlNode&) { return isInstance(model); }
int genericPredicate(creo::ProMdl model, const core::XmlNode&) { return isGeneric(model); }
int skeletonPredicate(creo::ProMdl model, const core::XmlNode&) { return isSkeleton(model); }

int filenamePredicate(creo::ProMdl model, const core::XmlNode& item) {
  title(kTitleFilename);
  const auto data = creo::ProMdlDataGet(model);
  if (!data) return kFalse;
  const std::wstring name = data.value.name + L"." + data.value.type;
  return matches(valueOf(item, L"filename"), text::cut(name, kFileNameField - 1)) ? kTrue : kFalse;
}

int isInstance(creo::ProMdl model) {
  title(kTitleInstance);
  if (!applicableType(model, AppliesTo::solids)) return kNotApplicable;
  const auto generic = creo::ProFaminstanceImmediategenericinfoGet(model);
  if (!generic || generic.value.version == -1) return kFalse;
  const auto name = creo::ProMdlNameGet(model);
  return name && !text::equalNoCase(name.value, generic.value.name) ? kTrue : kFalse;
}

int isGeneric(creo::ProMdl model) {
  title(kTitleGeneric);
  if (!applicableType(model, AppliesTo::solids)) return kNotApplicable;
  return creo::ProSolidFamtableCheck(model) == creo::ProNoError ? kTrue : kFalse;
}

int isSkeleton(creo::ProMdl model) {
  title(L"Extended filter: Is skeleton");
  const auto skeleton = creo::ProMdlIsSkeleton(model);
  return skeleton && skeleton.value ? kTrue : kFalse;
}

}  // namespace documents

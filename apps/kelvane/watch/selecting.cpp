#include "kelvane/watch/selecting.h"

#include <vector>

#include "creo/ProFeature.h"
#include "creo/ProMdl.h"
#include "creo/ProModelitem.h"
#include "kelvane/base/fault.h"
#include "kelvane/base/nearest.h"
#include "kelvane/show/model_folder.h"
#include "text/encoding.h"
#include "text/numbers.h"
#include "text/pieces.h"

namespace kelvane {
namespace {

using creo::ProMdl;

std::string nameOf(ProMdl model) { return label(creo::ProMdlNameGet(model).value, creo::ProMdlTypeGet(model).value); }

// One component further down; the first one of that name.
void stepDown(creo::ProAsmcomppath& path, ProMdl& at, const std::wstring& step) {
  const auto id = text::wholeInt(step);
  const ModelFileName name = id ? ModelFileName() : modelFileName(text::toUtf8(step));
  const std::string wanted = id ? text::toUtf8(step) : label(name.name, name.type);
  std::vector<std::string> others;
  bool isThere = false;
  creo::ProSolidFeatVisit(at, [&](const creo::ProFeature& feature) {
    if (id && feature.id != *id) return creo::ProNoError;
    path.components.push_back(feature.id);
    const auto component = creo::ProAsmcomppathMdlGet(path);
    const std::string found = component ? nameOf(component.value) : std::string();
    isThere = component && (id || found == wanted);
    if (isThere) return at = component.value, creo::ProUserAbort;
    path.components.pop_back();
    if (component) others.push_back(found);
    return creo::ProNoError;
  });
  if (!isThere) throw Fault("select: " + nameOf(at) + " has no component " + wanted + didYouMean(wanted, others));
}

}  // namespace

creo::ProSelection selectionNamed(const std::string& words, ProMdl model) {
  creo::ProSelection selection{{creo::ProItemType::model, 0, model, {}}, {model, {}}};
  std::vector<std::wstring> steps = text::split(text::fromUtf8(words), L'/');
  const auto feature = text::wholeInt(steps.back());
  if (feature || steps.back().empty()) steps.pop_back();
  for (const std::wstring& step : steps) stepDown(selection.path, selection.item.owner, step);
  if (!feature) return selection;
  const ProMdl owner = selection.item.owner;
  const auto item = creo::ProModelitemInit(owner, *feature, creo::ProItemType::feature);
  if (!item) throw Fault("select: " + nameOf(owner) + " has no feature " + std::to_string(*feature));
  selection.item = item.value;
  return selection;
}

}  // namespace kelvane

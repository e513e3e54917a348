#include "kelvane/watch/selecting.h"

#include <vector>

#include "creo/ProFeature.h"
#include "creo/ProMdl.h"
#include "kelvane/base/fault.h"
#include "kelvane/show/model_folder.h"
#include "text/encoding.h"
#include "text/numbers.h"
#include "text/pieces.h"

namespace kelvane {
namespace {

using creo::ProMdl;

bool isCalled(ProMdl model, const ModelFileName& name) {
  return creo::ProMdlNameGet(model).value == name.name && creo::ProMdlTypeGet(model).value == name.type;
}

// One component further down; the first one of that name.
bool stepDown(creo::ProAsmcomppath& path, ProMdl& at, const std::wstring& step) {
  const auto id = text::wholeInt(step);
  const ModelFileName name = id ? ModelFileName() : modelFileName(text::toUtf8(step));
  bool isThere = false;
  creo::ProSolidFeatVisit(at, [&](const creo::ProFeature& feature) {
    if (id && feature.id != *id) return creo::ProNoError;
    path.components.push_back(feature.id);
    const auto component = creo::ProAsmcomppathMdlGet(path);
    isThere = component && (id || isCalled(component.value, name));
    if (!isThere) return path.components.pop_back(), creo::ProNoError;
    at = component.value;
    return creo::ProUserAbort;
  });
  return isThere;
}

bool hasFeature(ProMdl model, int id) {
  bool isThere = false;
  creo::ProSolidFeatVisit(model, [&](const creo::ProFeature& feature) {
    isThere = feature.id == id;
    return isThere ? creo::ProUserAbort : creo::ProNoError;
  });
  return isThere;
}

}  // namespace

creo::ProSelection selectionNamed(const std::string& words, ProMdl model) {
  creo::ProSelection selection{{creo::ProItemType::model, 0, model, {}}, {model, {}}};
  std::vector<std::wstring> steps = text::split(text::fromUtf8(words), L'/');
  const auto feature = text::wholeInt(steps.back());
  if (feature || steps.back().empty()) steps.pop_back();
  for (const std::wstring& step : steps)
    if (!stepDown(selection.path, selection.item.owner, step))
      throw Fault("select " + words + ": there is no component " + text::toUtf8(step));
  if (!feature) return selection;
  if (!hasFeature(selection.item.owner, *feature))
    throw Fault("select " + words + ": there is no feature " + std::to_string(*feature));
  selection.item.type = creo::ProItemType::feature;
  selection.item.id = *feature;
  return selection;
}

}  // namespace kelvane

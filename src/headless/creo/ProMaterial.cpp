#include "creo/ProMaterial.h"

#include "headless/creo/operation.h"
#include "headless/model/density.h"
#include "headless/model/items.h"
#include "headless/model/materials.h"
#include "text/encoding.h"

namespace creo {

using headless::Model;
using headless::onModel;
using State = headless::Session::State;

namespace {

// Runs a getter's body on a part. get: (model).
template <class Get>
auto onPart(std::string_view name, ProMdl part, Get get) -> std::invoke_result_t<Get, Model&> {
  using Result = std::invoke_result_t<Get, Model&>;
  return onModel(name, part, [&](State&, Model& m) -> Result {
    if (m.type() != ProMdlType::part) return Result(ProBadInputs);
    return get(m);
  });
}

}  // namespace

Got<ProMaterial> ProMaterialCurrentGet(ProMdl part) {
  return onPart("ProMaterialCurrentGet", part, [](Model& m) -> Got<ProMaterial> {
    std::wstring name = headless::currentMaterial(m);
    if (name.empty()) return ProNotFound;
    return ProMaterial{m.handle, std::move(name)};
  });
}

Got<std::wstring> ProPartMaterialNameGet(ProMdl part) {
  return onPart("ProPartMaterialNameGet", part, [](Model& m) -> Got<std::wstring> {
    std::wstring name = headless::currentMaterial(m);
    if (name.empty()) return ProNotFound;
    return name;
  });
}

Got<std::vector<std::wstring>> ProPartMaterialsGet(ProMdl part) {
  using Names = std::vector<std::wstring>;
  return onPart("ProPartMaterialsGet", part, [](Model& m) -> Got<Names> {
    Names names;
    for (const headless::MaterialRecord& material : m.document->record.materials)
      names.push_back(text::fromUtf8(material.name));
    if (names.empty()) return ProNotFound;
    return names;
  });
}

ProError ProMaterialCurrentSet(const ProMaterial& material) {
  return onPart("ProMaterialCurrentSet", material.owner,
                [&](Model& m) { return headless::setCurrentMaterial(m, material.name); });
}

ProError ProMaterialDelete(const ProMaterial& material) {
  return onPart("ProMaterialDelete", material.owner,
                [&](Model& m) { return headless::deleteMaterial(m, material.name); });
}

ProError ProMaterialfileRead(ProMdl part, const std::wstring& name) {
  return onModel("ProMaterialfileRead", part, [&](State& state, Model& m) -> ProError {
    if (m.type() != ProMdlType::part) return ProBadInputs;
    return headless::readMaterialFile(state.models, state.configuration.values(L"pro_material_dir"), m, name);
  });
}

Got<double> ProPartDensityGet(ProMdl part) {
  return onPart("ProPartDensityGet", part, [](Model& m) -> Got<double> {
    const auto density = headless::partDensity(m);
    if (!density) return ProNotFound;
    return *density;
  });
}

}  // namespace creo

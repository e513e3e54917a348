#include "creo/ProAppearance.h"

#include <algorithm>
#include <tuple>

#include "headless/creo/solid_operation.h"
#include "headless/geometry/faces.h"
#include "headless/model/bodies.h"
#include "headless/model/features.h"
#include "text/encoding.h"

namespace creo {

using headless::AppearanceRecord;
using headless::Model;
using headless::onSolid;
using headless::SurfaceAppearanceRecord;
using State = headless::Session::State;

namespace {

ProAppearance appearanceOf(const AppearanceRecord& record) {
  const auto color = [&](std::size_t i) { return i < record.color.size() ? record.color[i] : 0.0; };
  return {color(0),
          color(1),
          color(2),
          record.ambient,
          record.diffuse,
          record.highlight,
          record.shininess,
          record.transparency,
          text::fromUtf8(record.label)};
}

// True: something changed.
bool give(AppearanceRecord& record, const ProAppearance& wanted) {
  AppearanceRecord now;
  now.color = {wanted.red, wanted.green, wanted.blue};
  now.ambient = wanted.ambient;
  now.diffuse = wanted.diffuse;
  now.highlight = wanted.highlight;
  now.shininess = wanted.shininess;
  now.transparency = wanted.transparency;
  now.label = text::toUtf8(wanted.label);
  const auto all = [](const AppearanceRecord& entry) {
    return std::tie(entry.color, entry.ambient, entry.diffuse, entry.highlight, entry.shininess, entry.transparency,
                    entry.label);
  };
  if (all(record) == all(now)) return false;
  now.extra = std::move(record.extra);
  record = std::move(now);
  return true;
}

using Look = std::unique_ptr<AppearanceRecord>;

// body: (model, the item's look).
template <class Body>
auto onLook(std::string_view operation, const ProModelitem& item, Body body)
    -> std::invoke_result_t<Body, Model&, Look&> {
  using Result = std::invoke_result_t<Body, Model&, Look&>;
  return onSolid(operation, item.owner, [&](State&, Model& m) -> Result {
    if (item.type == ProItemType::model) return body(m, m.document->record.appearance);
    if (item.type != ProItemType::feature) return Result(ProBadInputs);
    const auto feature = headless::featureOf(m, item.id);
    headless::FeatureRecord* record = feature ? feature->record() : nullptr;
    if (!record) return Result(ProNotFound);
    return body(m, record->appearance);
  });
}

// Runs a body on the place of a side's look in the model's list, or its end: body(model, place).
template <class Body>
auto onSide(std::string_view operation, const ProSurface& surface, ProSurfaceSide side, Body body)
    -> std::invoke_result_t<Body, Model&, std::vector<SurfaceAppearanceRecord>::iterator> {
  using Result = std::invoke_result_t<Body, Model&, std::vector<SurfaceAppearanceRecord>::iterator>;
  return onSolid(operation, surface.owner, [&](State& state, Model& m) -> Result {
    if (m.type() != ProMdlType::part) return Result(ProBadInputs);
    const auto body3d = state.bodies.body(m);
    if (!body3d) return Result(body3d.error);
    if (surface.id < 1 || static_cast<std::size_t>(surface.id) > headless::geometry::faces(*body3d.value).size())
      return Result(ProNotFound);
    auto& all = m.document->record.surfaceAppearances;
    return body(m, std::find_if(all.begin(), all.end(), [&](const SurfaceAppearanceRecord& entry) {
                  return entry.surface == surface.id && entry.side == static_cast<int>(side);
                }));
  });
}

}  // namespace

Got<ProAppearance> ProMdlVisibleAppearancepropsGet(const ProModelitem& item) {
  return onLook("ProMdlVisibleAppearancepropsGet", item, [](Model&, const Look& look) -> Got<ProAppearance> {
    if (!look) return ProNotFound;
    return appearanceOf(*look);
  });
}

ProError ProMdlVisibleAppearancepropsSet(const ProModelitem& item, const ProAppearance& appearance) {
  return onLook("ProMdlVisibleAppearancepropsSet", item, [&](Model& m, Look& look) -> ProError {
    if (!look) look = std::make_unique<AppearanceRecord>();
    if (give(*look, appearance)) m.document->touch(nullptr);
    return ProNoError;
  });
}

Got<ProAppearance> ProSurfaceSideAppearancepropsGet(const ProSurface& surface, ProSurfaceSide side) {
  return onSide("ProSurfaceSideAppearancepropsGet", surface, side, [](Model& m, auto place) -> Got<ProAppearance> {
    if (place == m.document->record.surfaceAppearances.end()) return ProNotFound;
    return appearanceOf(place->appearance);
  });
}

ProError ProSurfaceSideAppearancepropsSet(const ProSurface& surface, ProSurfaceSide side,
                                          const ProAppearance& appearance) {
  return onSide("ProSurfaceSideAppearancepropsSet", surface, side, [&](Model& m, auto place) -> ProError {
    auto& all = m.document->record.surfaceAppearances;
    if (place == all.end()) {
      place = all.emplace(all.end());
      place->surface = surface.id;
      place->side = static_cast<int>(side);
    }
    if (give(place->appearance, appearance)) m.document->touch(nullptr);
    return ProNoError;
  });
}

}  // namespace creo

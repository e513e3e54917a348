#include <cmath>
#include <map>
#include <set>

#include "headless/model/drawing.h"
#include "headless/model/measures.h"
#include "headless/model/placed.h"
#include "headless/pictures/model_picture.h"
#include "headless/pictures/shaded.h"
#include "headless/session/state.h"

namespace headless {

using creo::Got;
using creo::ProTransform;

namespace {

constexpr double kDeflection = 0.001;  // how far a triangle may be off its face, of the body's diagonal
// Looking from the front, the right and above.
constexpr ProTransform kTrimetric{{0.8192, 0, -0.5736}, {-0.2424, 0.9063, -0.3462}, {0.5198, 0.4226, 0.7424}, {}};

// A view's rows are where the model's axes point on the screen: the screen's axes are its columns.
ProTransform viewOf(const ModelRecord& record) {
  for (const ViewRecord& view : record.views)
    if (view.name == record.activeView && view.matrix.size() >= 9) {
      const auto& m = view.matrix;
      return {{m[0], m[3], m[6]}, {m[1], m[4], m[7]}, {m[2], m[5], m[8]}, {}};
    }
  return kTrimetric;
}

geometry::Mesh meshOf(const geometry::Body& body) {
  const creo::ProOutline box = geometry::outline(body, {});
  const double diagonal = std::hypot(box.max.x - box.min.x, box.max.y - box.min.y, box.max.z - box.min.z);
  return geometry::mesh(body, kDeflection * diagonal);
}

// All parts below a solid, each as often as it is used; a mesh is made once a body.
class Gathering {
 public:
  Gathering(Bodies& bodies, const Models& models) : bodies_(bodies), models_(models) {}

  creo::ProError gather(const Model& solid, const ProTransform& place, double scale, const AppearanceRecord* look) {
    if (!inside_.insert(solid.handle).second) return creo::ProNoError;  // an assembly inside itself
    if (const auto& own = solid.document->record.appearance) look = own.get();
    const creo::ProError result = solid.type() == creo::ProMdlType::part ? takePart(solid, place, scale, look)
                                                                         : takeAssembly(solid, place, scale, look);
    inside_.erase(solid.handle);
    return result;
  }
  std::vector<ShadedPart> parts;

 private:
  creo::ProError takePart(const Model& part, const ProTransform& place, double scale, const AppearanceRecord* look) {
    const auto body = bodies_.body(part);
    if (body.error == creo::ProNotFound) return creo::ProNoError;
    if (!body) return body.error;
    auto [known, isNew] = meshes_.try_emplace(body.value);
    if (isNew) known->second = meshOf(*body.value);
    ShadedPart shown{.mesh = &known->second, .place = place, .scale = scale};
    if (look && look->color.size() == 3) shown.color = {look->color[0], look->color[1], look->color[2]};
    if (look) shown.transparency = look->transparency;
    parts.push_back(shown);
    return creo::ProNoError;
  }

  creo::ProError takeAssembly(const Model& assembly, const ProTransform& place, double scale,
                              const AppearanceRecord* look) {
    for (const PlacedModel& placed : placedComponents(models_, assembly)) {
      ProTransform there = placed.place;  // in the assembly's units, which are `scale` of the picture's
      there.origin = {there.origin.x * scale, there.origin.y * scale, there.origin.z * scale};
      const double length = scale * unitRatio("m", *placed.model, assembly);
      if (const creo::ProError result = gather(*placed.model, creo::transformed(place, there), length, look))
        return result;
    }
    return creo::ProNoError;
  }

  Bodies& bodies_;
  const Models& models_;
  std::map<geometry::BodyPtr, geometry::Mesh> meshes_;
  std::set<creo::ProMdl> inside_;
};

}  // namespace

Got<Image> solidPicture(Bodies& bodies, const Models& models, const Model& solid, int width, int height) {
  Gathering all(bodies, models);
  try {
    if (const creo::ProError result = all.gather(solid, {}, 1, nullptr)) return result;
  } catch (const MeasureFault& fault) {
    models.message(solid.name + L'.' + creo::typeExtension(solid.type()) + L": " + fault.reason);
    return creo::ProGeneralError;
  }
  return shaded(all.parts, viewOf(solid.document->record), width, height);
}

Got<Image> modelPicture(Session::State& state, const Model& model, int width, int height) {
  if (!hasSheets(model.type())) return solidPicture(state.bodies, state.models, model, width, height);
  const SheetPicture sheet = sheetPicture(state, model, currentSheetOf(*model.document));
  return sheetImage(sheet, state.options.textFolder, width, height);
}

}  // namespace headless

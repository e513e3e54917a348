// The search for the smallest box around a solid.
#include <algorithm>
#include <cmath>
#include <set>

#include "actions/environment/bounding_box.h"
#include "core/log.h"
#include "creo/ProDatum.h"
#include "creo/ProMdl.h"
#include "creo/ProSurface.h"
#include "text/format.h"

namespace actions {
namespace {

using creo::Got;
using creo::ProError;
using creo::ProFeature;
using creo::ProFeatureStatus;
using creo::ProMdl;
using creo::ProMdlType;
using creo::ProSurface;
using creo::ProTransform;
using creo::ProVector;

// Creo's numbers of the kinds of entities that aren't solid. A box along a plane leaves the first one in.
constexpr int kNotSolid[] = {1, 2, 3, 4, 5, 6, 7};
constexpr std::span<const int> kAllExcludes(kNotSolid);
constexpr std::span<const int> kPlaneExcludes = kAllExcludes.subspan(1);

// Creo's numbers of feature types: what those leave in the model isn't of the body and would widen its box, and what
// is resumed only where the measure has put it away.
constexpr int kDistortingFeatures[] = {933, 1070};
constexpr int kRarelyResumedFeature = 1104;

bool isDistorting(int type) { return std::ranges::find(kDistortingFeatures, type) != std::end(kDistortingFeatures); }

// A visit over nothing is no failure.
ProError visited(ProError result) { return result == creo::ProNotFound ? creo::ProNoError : result; }

Got<std::vector<ProFeature>> featuresOf(ProMdl part) {
  std::vector<ProFeature> features;
  const ProError result = visited(creo::ProSolidFeatVisit(part, [&](const ProFeature& feature) {
    features.push_back(feature);
    return creo::ProNoError;
  }));
  if (result) return result;
  return features;
}

bool isSuppressed(ProFeatureStatus status) {
  return status == ProFeatureStatus::suppressed || status == ProFeatureStatus::familyTableSuppressed;
}

// Puts the features away that would distort the box of a part, with their children, which would fail without them. They
// are brought back by resume(), or else by the destructor, with an error line for each that Creo keeps away.
class DistortingFeatures {
 public:
  explicit DistortingFeatures(ProMdl part) : part_(part) {}
  ~DistortingFeatures() {
    if (!pending_) return;
    for (const int id : missing())
      if (bringBack(id) != creo::ProNoError)
        core::logWrite(text::format(L"Feature %d can't be resumed after the measure", id), core::kError);
  }
  DistortingFeatures(const DistortingFeatures&) = delete;
  DistortingFeatures& operator=(const DistortingFeatures&) = delete;

  ProError putAway() {
    const auto features = featuresOf(part_);
    if (!features) return features.error;
    for (const ProFeature& feature : features.value) {
      const auto status = creo::ProFeatureStatusGet(feature);
      if (!status) return status.error;
      if (isSuppressed(status.value)) before_.insert(feature.id);
      if (status.value == ProFeatureStatus::active) there_.insert(feature.id);
    }
    for (const ProFeature& feature : features.value) {
      const auto type = creo::ProFeatureTypeGet(feature);
      if (!type) return type.error;
      // What isn't there, for whatever reason, distorts nothing, and resuming it would do more than bring it back.
      if (!isDistorting(type.value) || !there_.contains(feature.id)) continue;
      pending_ = true;
      const ProError result = creo::ProFeatureWithoptionsSuppress(part_, {feature.id}, creo::ProChildren::goAlong);
      if (result) return result;
      away_.insert(feature.id);
    }
    return creo::ProNoError;
  }

  // The first error; what is still away then the destructor tries once more.
  ProError resume() {
    ProError first = creo::ProNoError;
    if (!pending_) return first;
    for (const int id : missing())
      if (const ProError result = bringBack(id); result && !first) first = result;
    pending_ = first != creo::ProNoError;
    return first;
  }

 private:
  // One that came back with another is there already: resuming it once more would be an error.
  [[nodiscard]] ProError bringBack(int id) const {
    const auto status = creo::ProFeatureStatusGet({part_, id});
    if (status && !isSuppressed(status.value)) return creo::ProNoError;
    return creo::ProFeatureResume(part_, {id});
  }

  // What is away now and wasn't before: also what Creo suppressed along with what it was told to. Parents come before
  // their children.
  [[nodiscard]] std::vector<int> missing() const {
    const auto features = featuresOf(part_);
    if (!features) return {away_.begin(), away_.end()};
    std::vector<int> ids;
    for (const ProFeature& feature : features.value) {
      const bool ours = away_.contains(feature.id);
      const auto status = creo::ProFeatureStatusGet(feature);
      const bool gone = status ? isSuppressed(status.value) && !before_.contains(feature.id) : ours;
      const bool wasThere = there_.contains(feature.id);
      if (!gone || (!wasThere && creo::ProFeatureTypeGet(feature).value == kRarelyResumedFeature)) continue;
      ids.push_back(feature.id);
    }
    return ids;
  }

  ProMdl part_;
  std::set<int> before_;  // suppressed all along
  std::set<int> there_;   // active before
  std::set<int> away_;    // by us
  bool pending_ = false;
};

// Turns a placement into the transform that leads into it.
ProTransform inverted(const ProTransform& t) {
  ProTransform turned;
  turned.xAxis = {t.xAxis.x, t.yAxis.x, t.zAxis.x};
  turned.yAxis = {t.xAxis.y, t.yAxis.y, t.zAxis.y};
  turned.zAxis = {t.xAxis.z, t.yAxis.z, t.zAxis.z};
  const ProVector back = creo::transformVector(turned, t.origin);
  turned.origin = {-back.x, -back.y, -back.z};
  return turned;
}

Got<BoxSides> sidesAlong(ProMdl solid, const Got<ProTransform>& axes, std::span<const int> excludes) {
  if (!axes) return axes.error;
  const auto matrix = creo::ProMatrixInit(axes.value.xAxis, axes.value.yAxis, axes.value.zAxis, axes.value.origin);
  if (!matrix) return matrix.error;
  const auto outline = creo::ProSolidOutlineCompute(solid, inverted(matrix.value), excludes);
  if (!outline) return outline.error;
  const auto& [min, max] = outline.value;
  const auto side = [](double low, double high) { return roundedLength(std::abs(high - low)); };
  return BoxSides{side(min.x, max.x), side(min.y, max.y), side(min.z, max.z)};
}

double volumeOf(const BoxSides& sides) { return sides.x * sides.y * sides.z; }

// A surface that can't be measured is left out.
std::vector<BoxSides> boxesAlongPlanes(ProMdl part, const std::vector<ProSurface>& surfaces) {
  std::vector<BoxSides> boxes;
  for (const ProSurface& surface : surfaces) {
    const auto type = creo::ProSurfaceTypeGet(surface);
    if (!type || type.value != creo::ProSurfaceType::plane) continue;
    const auto sides = sidesAlong(part, creo::ProSurfaceDataGet(surface), kPlaneExcludes);
    if (sides && volumeOf(sides.value) > 0) boxes.push_back(sides.value);
  }
  return boxes;
}

// The first coordinate system of the model is its default one. ProNotFound: it has none.
Got<BoxSides> boxAlongDefault(ProMdl solid) {
  Got<ProTransform> axes = creo::ProNotFound;
  const ProError result = creo::ProSolidCsysVisit(solid, [&](const creo::ProCsys& csys) {
    axes = creo::ProCsysDataGet(csys);
    return creo::ProStopVisit;
  });
  if (result != creo::ProStopVisit) return result ? result : creo::ProNotFound;
  return sidesAlong(solid, axes, kAllExcludes);
}

// The boxes of a part or an assembly, and the part's surfaces.
struct Candidates {
  std::vector<BoxSides> boxes;
  std::vector<ProSurface> surfaces;
};
Got<Candidates> candidatesOf(ProMdl solid, bool isPart) {
  Candidates found;
  DistortingFeatures distorting(solid);
  if (isPart) {
    if (const ProError result = distorting.putAway()) return result;
    const ProError result = visited(creo::ProSolidSurfaceVisit(solid, [&found](const ProSurface& surface) {
      found.surfaces.push_back(surface);
      return creo::ProNoError;
    }));
    if (result) return result;
    found.boxes = boxesAlongPlanes(solid, found.surfaces);
  }
  if (found.boxes.empty()) {
    const auto box = boxAlongDefault(solid);
    if (!box) return box.error;
    found.boxes.push_back(box.value);
  }
  if (const ProError result = distorting.resume()) return result;
  return found;
}

// The diameter of the first surface that makes the box a round bar's; 0 for none.
double diameterAmong(const std::vector<ProSurface>& surfaces, const BoxSides& sides) {
  for (const ProSurface& surface : surfaces) {
    const auto diameter = creo::ProSurfaceDiameterEval(surface);
    if (!diameter) continue;
    const double rounded = roundedLength(diameter.value);
    if (isRound(sides, rounded)) return rounded;
  }
  return 0;
}

}  // namespace

Got<BoxResult> modelBox(ProMdl model) {
  const auto sides = sidesAlong(model, ProTransform(), kAllExcludes);
  if (!sides) return sides.error;
  return BoxResult{.width = sides.value.x, .length = sides.value.z, .height = sides.value.y};
}

Got<BoxResult> searchedBox(ProMdl model, bool sorted) {
  const auto type = creo::ProMdlTypeGet(model);
  if (!type) return type.error;
  const bool isPart = type.value == ProMdlType::part;
  if (!isPart && type.value != ProMdlType::assembly) return BoxResult();
  const auto mass = creo::ProSolidMassPropertyGet(model);
  if (!mass) return mass.error;
  const auto candidates = candidatesOf(model, isPart);
  if (!candidates) return candidates.error;
  const auto& [boxes, surfaces] = candidates.value;
  BoxSides smallest = *std::ranges::min_element(boxes, {}, &volumeOf);
  const double area = mass.value.surfaceArea;
  if (area == 0) smallest = {};
  const bool ask = area > 0 && mayBeRound(smallest);
  return namedSides(smallest, ask ? diameterAmong(surfaces, smallest) : 0, sorted);
}

}  // namespace actions

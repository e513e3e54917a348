#include "headless/pictures/view_cut.h"

#include <cmath>

#include "headless/model/datums.h"
#include "headless/model/measures.h"
#include "headless/model/models.h"
#include "headless/model/placed.h"
#include "headless/model/records.h"
#include "headless/store/names.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/letters.h"

namespace headless {

using creo::ProTransform;
using creo::ProVector;
using geometry::SightCut;

namespace {

double dot(const ProVector& a, const ProVector& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }

std::optional<ProTransform> usualPlane(std::wstring name) {
  name = text::upper(name);
  for (const std::wstring_view head : {L"ASM_", L"DTM_"})
    if (name.starts_with(head)) name.erase(0, head.size());
  if (name == L"FRONT") return ProTransform{};
  if (name == L"TOP") return ProTransform{{0, 0, 1}, {1, 0, 0}, {0, 1, 0}, {}};
  if (name == L"RIGHT") return ProTransform{{0, 1, 0}, {0, 0, 1}, {1, 0, 0}, {}};
  return std::nullopt;
}

// Throws MeasureFault.
std::optional<ProTransform> planeNamed(const Model& solid, const std::wstring& name) {
  for (const DatumRecord& plane : solid.document->solid().planes)
    if (hasGeometry(solid, plane.feature) && text::equalNoCase(datumName(solid, plane), name))
      return datumPlacement(solid, plane);
  return usualPlane(name);
}

}  // namespace

SectionPlane sectionPlane(const Model& solid, std::string_view name) {
  const CrossSectionRecord* section = recordNamed(solid.document->record.crossSections, name);
  const auto faulty = [&](const std::wstring& fault) { return SectionPlane{{}, fault}; };
  if (!section) return faulty(text::format(L"the model has no cross section %s", text::fromUtf8(name)));
  if (section->type != creo::ProXsecType::planar || section->objects == creo::ProXsecObjects::quilts)
    return faulty(text::format(L"the cross section %s doesn't cut the model by one plane", text::fromUtf8(name)));
  const std::wstring plane = text::fromUtf8(section->plane);
  try {
    const auto place = planeNamed(solid, plane);
    if (!place)
      return faulty(text::format(L"the plane '%s' of the cross section %s has no place", plane, text::fromUtf8(name)));
    const ProVector &at = place->origin, &n = place->zAxis;
    const double by = section->distance;
    return {SightCut{{at.x + by * n.x, at.y + by * n.y, at.z + by * n.z}, n}, {}};
  } catch (const MeasureFault& fault) {
    return faulty(text::format(L"the cross section %s: %s", text::fromUtf8(name), fault.reason));
  }
}

std::optional<SightCut> towardsViewer(SightCut cut, const ProTransform& screen) {
  constexpr double kOnEdge = 1e-3;
  const double towards = dot(cut.normal, screen.zAxis);
  if (std::fabs(towards) < kOnEdge) return std::nullopt;
  if (towards < 0) cut.normal = {-cut.normal.x, -cut.normal.y, -cut.normal.z};
  return cut;
}

std::optional<SightCut> activeCut(const Models& models, const Model& solid, const ProTransform& screen) {
  const std::string& active = solid.document->record.activeCrossSection;
  if (active.empty()) return std::nullopt;
  const SectionPlane plane = sectionPlane(solid, active);
  auto cut = plane.cut ? towardsViewer(*plane.cut, screen) : std::nullopt;
  if (!cut)
    models.message(text::format(L"warning: %s.%s isn't cut: %s", solid.name, creo::typeExtension(solid.type()),
                                plane.cut ? std::wstring(L"it sees the plane on its edge") : plane.fault));
  return cut;
}

}  // namespace headless

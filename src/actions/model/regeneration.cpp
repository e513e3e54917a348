// Actions that regenerate models and compute their masses.
#include <set>

#include "actions/task.h"
#include "actions/visits.h"
#include "core/log.h"
#include "core/messages.h"
#include "creo/ProDatum.h"
#include "creo/ProDrawing.h"
#include "creo/ProMaterial.h"
#include "creo/ProMdl.h"
#include "creo/ProModelitem.h"
#include "text/format.h"
#include "text/letters.h"
#include "text/numbers.h"

namespace actions {
namespace {

// A model that needs yet another pass after so many never settles.
constexpr int kMostPasses = 4;

creo::ProError regenerated(creo::ProMdl solid, bool force) {
  const unsigned flags = force ? creo::kRegenerateForce | creo::kRegenerateUpdateInstances : creo::kRegenerateNoFlags;
  creo::ProError result = creo::ProRegenAgain;
  for (int pass = 0; pass < kMostPasses && result == creo::ProRegenAgain; ++pass)
    result = creo::ProSolidRegenerate(solid, flags);
  return result;
}

Outcome regenerateModel(const Task& task) {
  if (creo::ProMdlTypeGet(task.model()).value == creo::ProMdlType::drawing) {
    if (creo::ProDwgDraftRegenerate(task.model()) == creo::ProNoError)
      core::logMsgId(Message::modelRegenerated, core::kNormal, 1);
    else
      core::logMsgPlain(Message::drawingNotRegenerated, core::kError);
    return done;
  }
  switch (regenerated(task.model(), task.isTrue(L"force"))) {
    case creo::ProNoError:
      core::logMsgId(Message::modelRegenerated, core::kNormal, 1);
      break;
    case creo::ProUnattachedFeats:
      core::logMsgPlain(Message::unattachedFeatures, core::kWarning);
      break;
    case creo::ProRegenAgain:
      core::logWrite(text::format(L"%s: it needs another regeneration after %d",
                                  core::msgText(Message::modelNotRegenerated), kMostPasses),
                     core::kError);
      break;
    default:
      core::logMsgPlain(Message::modelNotRegenerated, core::kError);
  }
  return done;
}

// ---- masses

// Warns of each part of an assembly, or of the part itself, that has no density: it counts with 1. Nothing is stated,
// as that would go on counting when the part is given a material that tells none.
class Densities {
 public:
  void check(creo::ProMdl solid) {
    if (!seen_.insert(solid).second) return;
    if (creo::ProMdlTypeGet(solid).value == creo::ProMdlType::part) return checkPart(solid);
    for (const creo::ProDependency& used : usedBy(solid)) {
      if (used.type != creo::ProMdlType::part && used.type != creo::ProMdlType::assembly) continue;
      if (const auto model = creo::ProMdlInit(used.name, used.type)) check(model.value);
    }
  }

 private:
  static void checkPart(creo::ProMdl part) {
    if (creo::ProPartDensityGet(part) || creo::ProMdlIsSkeleton(part).value) return;
    core::logWrite(text::format(core::msgText(Message::noDensity), creo::ProMdlNameGet(part).value), core::kWarning);
  }
  std::set<creo::ProMdl> seen_;
};

std::optional<creo::ProCsys> csysNamed(creo::ProMdl solid, const std::wstring& name) {
  std::optional<creo::ProCsys> found;
  const creo::ProError visited = creo::ProSolidCsysVisit(solid, [&](const creo::ProCsys& csys) {
    if (!text::equalNoCase(creo::ProCsysNameGet(csys).value, name)) return creo::ProNoError;
    found = csys;
    return creo::ProStopVisit;
  });
  isWhole(visited, L"The coordinate systems");
  return found;
}

// A point of the model in a coordinate system's own coordinates.
creo::ProVector seenFrom(const creo::ProTransform& csys, const creo::ProVector& point) {
  const creo::ProVector way{point.x - csys.origin.x, point.y - csys.origin.y, point.z - csys.origin.z};
  const auto along = [&](const creo::ProVector& axis) { return way.x * axis.x + way.y * axis.y + way.z * axis.z; };
  return {along(csys.xAxis), along(csys.yAxis), along(csys.zAxis)};
}

Outcome regenerateMass(const Task& task) {
  std::optional<creo::ProTransform> csys;
  if (const auto name = task.text(L"csys"); !task.attribute(L"csys").empty()) {
    const auto found = name.hasText() ? csysNamed(task.model(), name.text) : std::nullopt;
    const auto place = found ? creo::ProCsysDataGet(*found) : creo::Got<creo::ProTransform>(creo::ProNotFound);
    if (!place) {
      core::logMsgPlain(Message::csysNotFound, core::kError);
      return done;
    }
    csys = place.value;
  }
  Densities().check(task.model());
  const auto mass = creo::ProSolidMassPropertyGet(task.model());
  if (!mass) {
    core::logMsgPlain(Message::massFailed, core::kError);
    return done;
  }
  core::logMsgId(Message::massComputed, core::kNormal, 1);
  const creo::ProVector center = csys ? seenFrom(*csys, mass.value.gravityCenter) : mass.value.gravityCenter;
  core::logIndented(text::format(L"mass %f, volume %f, centre of gravity %f, %f, %f", mass.value.mass,
                                 mass.value.volume, center.x, center.y, center.z),
                    core::kNormal, 2);
  return done;
}

// ---- rows

constexpr Attribute kMassAttributes[] = {
    {.name = L"csys",
     .variables = true,
     .about = "the coordinate system in which the centre of gravity is told; absent or empty: the model's own"},
};
constexpr Attribute kModelAttributes[] = {
    {.name = L"force",
     .kind = Kind::flag,
     .words = L"true",
     .need = Need::oneOf,
     .about = "true: everything, and the instances in memory too; anything else: what needs it"},
};

constexpr Action kActions[] = {
    {.key = L"regenerateMass",
     .place = 41,
     .title = Message::computeMass,
     .conditions = {kFilter, kSolids},
     .attributes = kMassAttributes,
     .effects = {.reads = Touched::model | Touched::users},
     .about = "computes the mass of a solid and tells it in the log",
     .function = &regenerateMass},
    {.key = L"regenerateModel",
     .place = 42,
     .title = Message::regenerateModel,
     .conditions = {kFilter, kAnyType, kAnyOfTheWork},
     .attributes = kModelAttributes,
     .effects = {.reads = Touched::model | Touched::users,
                 .changes = Touched::model | Touched::users | Touched::family},
     .about = "regenerates a solid with its components, or the draft of a drawing",
     .function = &regenerateModel},
};

}  // namespace

std::span<const Action> regenerationActions() { return kActions; }

}  // namespace actions

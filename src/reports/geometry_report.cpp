// Reports of what solids measure and of where their coordinate systems and datum points stand.
#include "creo/ProDatum.h"
#include "creo/ProFeature.h"
#include "creo/ProMdl.h"
#include "creo/ProSolid.h"
#include "language/compare.h"
#include "reports/report_row.h"
#include "text/format.h"

namespace reports {

using namespace actions;
using namespace language;

namespace {

std::wstring decimals(double value) { return text::format(L"%f", value); }
std::wstring decimals(const creo::ProVector& v) { return text::format(L"%f:%f:%f", v.x, v.y, v.z); }

// ---- reportGeometryProperties

struct Geometry {
  creo::ProMdl model;
  creo::ProMassProperty mass;
};

// A box on one side of the origin gets more than its length, as readers of these reports expect.
std::wstring boundingBox(const Geometry& geometry) {
  const auto box = creo::ProSolidOutlineGet(geometry.model);
  if (!box) return {};
  const auto& [low, high] = box.value;
  return decimals(creo::ProVector{std::abs(low.x) + std::abs(high.x), std::abs(low.y) + std::abs(high.y),
                                  std::abs(low.z) + std::abs(high.z)});
}

constexpr ReportColumn<Geometry> kGeometryColumns[] = {
    {L"mass", L"Mass", [](const Geometry& g) { return decimals(g.mass.mass); }, "the mass"},
    {L"volume", L"Volume", [](const Geometry& g) { return decimals(g.mass.volume); }, "the volume"},
    {L"gravity", L"Gravity center", [](const Geometry& g) { return decimals(g.mass.gravityCenter); },
     "the centre of gravity"},
    {L"boundingbox", L"Bounding box", &boundingBox,
     "the box along the model's axes, its distances from the origin added"},
    {L"surfacearea", L"Surface area", [](const Geometry& g) { return decimals(g.mass.surfaceArea); },
     "the area of the surface"},
};

Outcome reportGeometryProperties(const Task& task) {
  const auto row = ReportRow::of(task);
  if (!row) return done;
  const auto mass = creo::ProSolidMassPropertyGet(task.model());
  if (mass) reportColumns<Geometry>(*row, task, kGeometryColumns, {task.model(), mass.value});
  return done;
}

// ---- reportFeaturePositions

// The axes and the origin, a line each.
std::wstring matrix(const creo::ProTransform& t) {
  const auto line = [](const creo::ProVector& v, double last) {
    return text::format(L"%f,%f,%f,%f", v.x, v.y, v.z, last);
  };
  return line(t.xAxis, 0) + L"\n" + line(t.yAxis, 0) + L"\n" + line(t.zAxis, 0) + L"\n" + line(t.origin, 1);
}

class PositionReport {
 public:
  PositionReport(const Task& task, const ReportRow& row) : task_(task), row_(row) {}

  // The model's own items, then those of its components. parent: from the model's coordinates to the top's.
  void of(creo::ProMdl model, const creo::ProTransform& parent) {
    const auto name = creo::ProMdlNameGet(model);
    if (!name) return;
    if (task_.isTrue(L"tcs")) coordinateSystems(model, name.value, parent);
    if (task_.isTrue(L"tdp")) datumPoints(model, name.value, parent);
    if (task_.isTrue(L"recursive") && creo::ProMdlTypeGet(model).value == creo::ProMdlType::assembly) components(model);
  }

 private:
  void coordinateSystems(creo::ProMdl model, const std::wstring& modelName, const creo::ProTransform& parent) {
    creo::ProSolidCsysVisit(model, [&](const creo::ProCsys& csys) {
      const auto name = creo::ProCsysNameGet(csys);
      if (!name || !matches(name.value)) return creo::ProNoError;
      if (const auto place = creo::ProCsysDataGet(csys))
        report(modelName, name.value, transformed(parent, place.value));
      return creo::ProNoError;
    });
  }

  // A point stands on axes parallel to its model's.
  void datumPoints(creo::ProMdl model, const std::wstring& modelName, const creo::ProTransform& parent) {
    creo::ProSolidDatumPointVisit(model, [&](const creo::ProDatumPoint& point) {
      const auto name = creo::ProDatumPointNameGet(point);
      if (!name || !matches(name.value)) return creo::ProNoError;
      const auto at = creo::ProDatumPointGet(point);
      if (!at) return creo::ProNoError;
      creo::ProTransform place;
      place.origin = at.value;
      report(modelName, name.value, transformed(parent, place));
      return creo::ProNoError;
    });
  }

  void components(creo::ProMdl assembly) {
    // Not an assembly that is inside itself, which would never end.
    if (std::find(above_.begin(), above_.end(), assembly) != above_.end()) return;
    above_.push_back(assembly);
    creo::ProSolidFeatVisit(assembly, [&](const creo::ProFeature& feature) {
      if (creo::ProFeatureTypeGet(feature).value == creo::kComponentFeature) component(feature);
      return creo::ProNoError;
    });
    above_.pop_back();
  }

  void component(const creo::ProFeature& feature) {
    path_.push_back(feature.id);
    const auto model = creo::ProAsmcompMdlGet(feature);
    const auto place = model ? creo::ProAsmcomppathTrfGet(task_.model(), path_) : creo::ProNotFound;
    if (place) of(model.value, place.value);
    path_.pop_back();
  }

  [[nodiscard]] bool matches(const std::wstring& name) const {
    return language::matches(task_.attribute(L"fname"), name);
  }

  void report(const std::wstring& model, const std::wstring& item, const creo::ProTransform& place) const {
    const std::wstring title = model + L"-" + item;
    row_.column(L"reportFeaturePositions-" + title, title);
    row_.value(L"reportFeaturePositions-" + title, matrix(place));
  }

  const Task& task_;
  const ReportRow& row_;
  std::vector<int> path_;            // components from the top down to where the walk is
  std::vector<creo::ProMdl> above_;  // the assemblies on the way
};

Outcome reportFeaturePositions(const Task& task) {
  const auto row = ReportRow::of(task);
  if (row) PositionReport(task, *row).of(task.model(), {});
  return done;
}

constexpr auto kGeometryAttributes = reportAttributes(kGeometryColumns);
constexpr Attribute kItems[] = {
    {.name = L"fname",
     .kind = Kind::pattern,
     .need = Need::needed,
     .about = "names of coordinate systems, or of the points' features"},
    columnSwitch(L"tcs", "coordinate systems"),
    columnSwitch(L"tdp", "datum points"),
    flag(L"recursive", "down through the components of an assembly"),
};
constexpr auto kPositionAttributes = reportAttributes(kItems);
constexpr Effects kEffects{.reads = Touched::model | Touched::users, .changes = Touched::reports};

constexpr Action kActions[] = {
    {.key = L"reportGeometryProperties",
     .place = 28,
     .title = L"Report Geometry properties",
     .attributes = kGeometryAttributes,
     .effects = kEffects,
     .about = "reports what a part or an assembly measures",
     .function = &reportGeometryProperties},
    {.key = L"reportFeaturePositions",
     .place = 31,
     .title = L"Report Feature Positions",
     .attributes = kPositionAttributes,
     .effects = kEffects,
     .about = "reports where coordinate systems and datum points stand, a column each",
     .function = &reportFeaturePositions},
};

}  // namespace

std::span<const actions::Action> geometryReportActions() { return kActions; }

}  // namespace reports

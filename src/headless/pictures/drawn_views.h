// What the views of a drawing show of its models.
#pragma once

#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "headless/geometry/sight.h"
#include "headless/model/model.h"
#include "headless/pictures/picture_sources.h"
#include "headless/pictures/shown_parts.h"
#include "headless/pictures/view_marks.h"

namespace headless {

// How a line that is seen is drawn. isWire: what lies behind faces is drawn like the rest.
SheetStroke strokeOf(geometry::SeenCurve seen, bool isWire);

// The models that views show, each gathered once for all of them.
class ShownModels {
 public:
  explicit ShownModels(const PictureSources& sources) : sources_(sources) {}
  // Where its parts stand, in its own coordinates and unit; empty: there is nothing to be seen.
  const PlacedParts& find(const Model& model, PlacedFor purpose);
  // Tell of a view that isn't drawn at all ("the view ...") and of one that isn't drawn as it should be.
  void tell(const std::wstring& text) const;
  void warn(const std::wstring& text) const;

 private:
  PictureSources sources_;
  std::map<std::pair<creo::ProMdl, PlacedFor>, PlacedParts> models_;
};

// From where a view shows its model, and at which scale.
struct ViewPlane {
  const Model* model = nullptr;
  creo::ProTransform screen;  // its axes in the model's coordinates: x to the right, y up, z to the viewer
  double scale = 1;           // mm on paper for a unit of the model
};
// sheetScale: of a view that has none of its own. Nothing: the model isn't in memory, the scale is no number over 0, or
// the view is a detail or broken.
std::optional<ViewPlane> planeOf(const Models& models, const ViewRecord& view, double sheetScale);

struct DrawnView {
  double width = 0, height = 0;
  geometry::FlatPoint middle;  // of a whole view where its place lies, from where the model's origin is seen
  ViewLines lines;             // from the view's place, the middle of what is seen of the model
  std::wstring label;          // that stands above it: of a section or a detail
  bool isFaceted = false;      // its edges are those of facets
};

// The views of one sheet.
class DrawnViews {
 public:
  // width, height: of the sheet, in mm; unit: of its drawing's coordinates, in mm; scale: of views that have none of
  // their own. The drawing and the models must outlive it.
  DrawnViews(const Models& inMemory, ShownModels& models, const Model& drawing, double width, double height,
             double unit, double scale)
      : inMemory_(inMemory),
        models_(models),
        drawing_(drawing),
        width_(width),
        height_(height),
        unit_(unit),
        scale_(scale) {}

  // Works out the lines of these views side by side, before each is drawn. What keeps one from being drawn is told
  // when it is drawn.
  void prepare(const std::vector<const ViewRecord*>& views);

  // A view that names a cross section is cut by it, but for a plane that it sees on its edge, which is a warning; one
  // that is seen on its edge has its cutting line in the first view of the model on the sheet that is cut by none. A
  // detail shows its circle of the view that it names, cut as that one. Hidden lines are there where the view shows
  // them. Nothing: the model isn't in memory or has no geometry, or all of it would be larger than the sheet, so that
  // the view shows a detail of which the document doesn't say more, or its lines can't be worked out, with a line of
  // the message area. A warning there tells that they had to be facets', and that some had to be put right.
  std::optional<DrawnView> draw(const ViewRecord& view);

 private:
  struct Asked;
  [[nodiscard]] std::wstring nameOf(const ViewRecord& view, const Model& model) const;
  [[nodiscard]] double scaleOf(const ViewRecord& view) const;
  [[nodiscard]] const ViewRecord* viewOf(int id) const;
  // What is asked for it; nothing: its model isn't in memory, has no geometry or no scale.
  std::optional<Asked> ask(const ViewRecord& view);
  void cut(Asked& asked) const;
  void finish(DrawnView& drawn, const ViewRecord& view, const Asked& asked, const geometry::Seen& seen) const;
  void addMarks(DrawnView& drawn, const ViewRecord& view, const Asked& asked, const geometry::FlatPoint& middle) const;
  void shorten(DrawnView& drawn, const ViewRecord& view) const;
  const Models& inMemory_;
  ShownModels& models_;
  const Model& drawing_;
  double width_, height_, unit_, scale_;
};

}  // namespace headless

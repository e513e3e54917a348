// What the views of a drawing show of its models.
#pragma once

#include <map>
#include <optional>
#include <vector>

#include "headless/geometry/sight.h"
#include "headless/model/model.h"
#include "headless/pictures/picture_sources.h"
#include "headless/pictures/sheet_stroke.h"

namespace headless {

// How a line that is seen is drawn. isWire: what lies behind faces is drawn like the rest.
SheetStroke strokeOf(geometry::SeenCurve seen, bool isWire);

// The models that views show, each gathered once for all of them.
class ShownModels {
 public:
  explicit ShownModels(const PictureSources& sources) : sources_(sources) {}
  // Where its parts stand, in its own coordinates and unit; empty: there is nothing to be seen.
  const std::vector<geometry::PlacedBody>& find(const Model& model);
  // Tell of a view that isn't drawn at all ("the view ...") and of one that isn't drawn as it should be.
  void tell(const std::wstring& text) const;
  void warn(const std::wstring& text) const;

 private:
  PictureSources sources_;
  std::map<creo::ProMdl, std::vector<geometry::PlacedBody>> models_;
};

// From where a view shows its model, and at which scale.
struct ViewPlane {
  const Model* model = nullptr;
  creo::ProTransform screen;  // its axes in the model's coordinates: x to the right, y up, z to the viewer
  double scale = 1;           // mm on paper for a unit of the model
};
// sheetScale: of a view that has none of its own. Nothing: the model isn't in memory, or the scale is no number over 0.
std::optional<ViewPlane> planeOf(const Models& models, const ViewRecord& view, double sheetScale);

struct DrawnView {
  double width = 0, height = 0;
  std::vector<SheetStroke> strokes;  // from the view's place, the middle of the model
  bool isFaceted = false;            // its edges are those of facets
};

// The views of one sheet.
class DrawnViews {
 public:
  // width, height: of the sheet, in mm. The drawing and the models must outlive it.
  DrawnViews(const Models& inMemory, ShownModels& models, const Model& drawing, double width, double height)
      : inMemory_(inMemory), models_(models), drawing_(drawing), width_(width), height_(height) {}

  // scale: of a view that has none of its own. Hidden lines are there where the view shows them. Nothing: the model
  // isn't in memory or has no geometry, or all of it would be larger than the sheet, so that the view shows a detail of
  // which the document doesn't say more, or its lines can't be worked out, with a line of the message area. A warning
  // there tells that they had to be facets', and that some had to be put right.
  std::optional<DrawnView> draw(const ViewRecord& view, double scale);

 private:
  const Models& inMemory_;
  ShownModels& models_;
  const Model& drawing_;
  double width_, height_;
};

}  // namespace headless

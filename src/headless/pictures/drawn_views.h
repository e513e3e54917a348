// What the views of a drawing show of its models.
#pragma once

#include <map>
#include <optional>
#include <vector>

#include "headless/model/model.h"
#include "headless/pictures/picture_sources.h"
#include "headless/pictures/projection.h"
#include "headless/pictures/shown_parts.h"

namespace headless {

// The models that views show, each cut up once for all of them.
class ShownModels {
 public:
  explicit ShownModels(const PictureSources& sources) : sources_(sources) {}
  // Null: there is nothing to be seen.
  const ShownParts* find(const Model& model);

 private:
  PictureSources sources_;
  std::map<creo::ProMdl, std::optional<ShownParts>> models_;
};

// The views of one sheet.
class DrawnViews {
 public:
  // width, height: of the sheet, in mm. The models must outlive it.
  DrawnViews(const Models& inMemory, ShownModels& models, double width, double height)
      : inMemory_(inMemory), models_(models), width_(width), height_(height) {}

  // The view's lines in mm from its place, the middle of the model; those that are hidden are among them where the view
  // shows them. scale: of a view that has none of its own. Nothing: the model isn't in memory or has no geometry, or
  // all of it would be larger than the sheet, so that the view shows a detail of which the document doesn't say more.
  std::optional<std::vector<ProjectedLine>> lines(const ViewRecord& view, double scale);

 private:
  const Models& inMemory_;
  ShownModels& models_;
  double width_, height_;
};

}  // namespace headless

// What the document of a part or an assembly holds beside parameters, dimensions and its family table.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "creo/ProFeature.h"
#include "creo/ProLayer.h"
#include "creo/ProSolid.h"
#include "creo/ProState.h"
#include "headless/store/fields.h"
#include "headless/store/parameter_record.h"

namespace headless {

// A thing of the model that a layer or a state refers to.
struct ItemRecord : Open {
  creo::ProItemType type = creo::ProItemType::none;
  int id = 0;
};

struct EntityRecord : Open {
  int id = 0, type = 0;
};
// A sketch.
struct SectionRecord : Open {
  std::vector<EntityRecord> entities;
};

// What makes a feature a pattern.
struct PatternRecord : Open {
  bool group = false;   // of a group
  Scalar regeneration;  // Creo's number of how its members regenerate
};
// What a flexible component varies in its model.
struct VariantItemRecord : Open {
  creo::ProItemType type = creo::ProItemType::none;
  int id = 0;
  std::string name;  // parameters only
};

struct FeatureRecord : Open {
  int id = 0, number = 0, type = 0;
  std::string name, typeName, subtype;
  creo::ProFeatureStatus status = creo::ProFeatureStatus::active;
  bool geometryChecks = false;
  bool hidden = false;  // the model tree doesn't show it
  std::unique_ptr<PatternRecord> pattern;
  std::vector<VariantItemRecord> variantItems;
  std::vector<int> dimensions;
  std::vector<SectionRecord> sections;
  std::unique_ptr<ParameterList> parameters;
};

struct MaterialRecord : Open {
  std::string name;
  ParameterList parameters;
};

struct AccuracyRecord : Open {
  creo::ProAccuracyKind kind = creo::ProAccuracyKind::relative;
  double value = 0;
};

struct LayerRecord : Open {
  int id = 0;
  std::string name;
  creo::ProLayerDisplay status = creo::ProLayerDisplay::normal;
  std::vector<ItemRecord> items;
};
struct LayerStatusRecord : Open {
  std::string name;
  creo::ProLayerDisplay status = creo::ProLayerDisplay::normal;
};
struct LayerStateRecord : Open {
  std::string name;
  std::vector<LayerStatusRecord> layers;
};

// What is kept under a name: a simplified representation, an exploded, combined or style state.
struct StateRecord : Open {
  int id = 0;
  std::string name;
};
struct CrossSectionRecord : Open {
  int id = 0;
  std::string name;
  creo::ProXsecType type = creo::ProXsecType::planar;
  creo::ProXsecObjects objects = creo::ProXsecObjects::model;
};
// A layout that the model declares.
struct LayoutRecord : Open {
  std::string name;
};

}  // namespace headless

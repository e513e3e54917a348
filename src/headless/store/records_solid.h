// What the document of a part or an assembly holds beside parameters, dimensions and its family table.
#pragma once

#include <memory>
#include <optional>
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
  std::vector<std::string> relations;
  std::optional<bool> unitSensitive;  // the relations, as those of a model
};

// A member of a table pattern: its number, and what it gives the dimensions that drive the pattern.
struct PatternMemberRecord : Open {
  int number = 0;
  std::vector<double> values;
};
// What makes a feature a pattern.
struct PatternRecord : Open {
  bool group = false;           // of a group
  Scalar regeneration;          // Creo's number of how its members regenerate
  std::vector<int> dimensions;  // a table pattern: ids of those that drive it
  std::vector<PatternMemberRecord> members;
};
// What a flexible component varies in its model.
struct VariantItemRecord : Open {
  creo::ProItemType type = creo::ProItemType::none;
  int id = 0;
  std::string name;       // parameters only
  std::string parameter;  // of the component: gives the item its value; empty: none
};

// How a model, a feature or a surface looks.
struct AppearanceRecord : Open {
  std::vector<double> color;  // red, green, blue, each 0 to 1
  double ambient = 0, diffuse = 0, highlight = 0, shininess = 0, transparency = 0;
  std::string label;
};
struct FeatureRecord : Open {
  int id = 0, number = 0, type = 0;
  std::string name, typeName, subtype;
  creo::ProFeatureStatus status = creo::ProFeatureStatus::active;
  bool geometryChecks = false;
  bool hidden = false;  // the model tree doesn't show it
  std::unique_ptr<PatternRecord> pattern;
  std::vector<VariantItemRecord> variantItems;
  std::vector<int> parents;  // ids of the features that it refers to
  std::vector<int> dimensions;
  std::vector<SectionRecord> sections;
  std::vector<std::string> relations;
  std::optional<bool> unitSensitive;  // the relations, as those of a model
  std::unique_ptr<ParameterList> parameters;
  std::unique_ptr<AppearanceRecord> appearance;
};

struct SurfaceAppearanceRecord : Open {
  int surface = 0;
  int side = 0;
  AppearanceRecord appearance;
};

struct MaterialRecord : Open {
  std::string name;
  ParameterList parameters;
};

// An entry of a table of tolerances that was loaded.
struct ToleranceEntryRecord : Open {
  std::string name;
  double value = 0;
};
struct UnitSystemRecord : Open {
  std::string name;
  std::string length, mass, time, temperature;  // "mm", "kg", "s", "K"
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
  bool ruleBased = false, associativeRules = false, independentRules = false;
  std::vector<std::string> rules;
  // Not written: the status that it shows in this session and that wasn't saved yet.
  std::optional<creo::ProLayerDisplay> unsaved;
};
struct LayerStatusRecord : Open {
  std::string name;
  creo::ProLayerDisplay status = creo::ProLayerDisplay::normal;
};
struct LayerStateRecord : Open {
  std::string name;
  std::vector<LayerStatusRecord> layers;
};

// What an exploded or a style state does with a component.
struct StateItemRecord : Open {
  int feature = 0;
  std::vector<double> move;  // three lengths in the assembly's coordinates; none: it stays
  bool blanked = false, transparent = false;
};
// An exploded or a style state.
struct StateRecord : Open {
  int id = 0;
  std::string name;
  std::vector<StateItemRecord> items;
};
// What a simplified representation does with a feature or a component, and by what it is replaced.
struct SimplifiedRepItemRecord : Open {
  int feature = 0;
  creo::ProSimprepAction action = creo::ProSimprepAction::none;
  creo::ProSubstitutionKind substitution = creo::ProSubstitutionKind::none;
  std::string substitute;  // the name of that representation
};
struct SimplifiedRepRecord : Open {
  int id = 0;
  std::string name;
  creo::ProSimprepAction defaultAction = creo::ProSimprepAction::include;
  std::vector<SimplifiedRepItemRecord> items;
};
// What a combined state refers to, by name; empty: it leaves that alone.
struct CombinedStateRecord : Open {
  int id = 0;
  std::string name;
  std::string view, layerState, simplifiedRep, explodedState, styleState, crossSection;
  bool exploded = false;
  int sectionVisibility = 0;  // Creo's number of how the cross section shows
};
struct CrossSectionRecord : Open {
  int id = 0;
  std::string name;
  creo::ProXsecType type = creo::ProXsecType::planar;
  creo::ProXsecObjects objects = creo::ProXsecObjects::model;
  std::string plane;    // the datum plane's name
  double distance = 0;  // from the plane
  int dimension = 0;    // id of the dimension that says so; 0: none does
  bool visible = false;
  bool oldForm = false;  // made by an older release and not converted yet
};
// A layout that the model declares.
struct LayoutRecord : Open {
  std::string name;
};

}  // namespace headless

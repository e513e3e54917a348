// Features: what a solid is built of, one by one. An assembly's components are features too, of the type kComponent.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

// Creo's number of the feature type of an assembly's component.
constexpr int kComponentFeature = 1000;
// That of a pattern.
constexpr int kPatternFeature = 1232;

enum class ProFeatureStatus : int {
  active = 0,
  inactive = 1,
  familyTableSuppressed = 2,
  simplifiedRepSuppressed = 3,
  programSuppressed = 4,
  suppressed = 5,
  unregenerated = 6,
};

// Creo's number of a parameter among model items.
constexpr auto kParameterItem = static_cast<ProItemType>(240);

struct ProFeature {
  ProMdl owner;
  int id = 0;
};
// An entity of a sketch.
struct ProSectionEntity {
  int id = 0, type = 0;
};

// What becomes of the children of features that go, be it for good or not: those that stay fail in the regeneration
// that follows.
enum class ProChildren { stay, goAlong };
// And of suppressed parents of features that come back.
enum class ProParents { mustBeThere, comeBackToo };

// In the order of the model tree, Creo's internal features among them, which ProFeatureVisibilityGet tells apart.
// ProNotFound: there are none; ProBadInputs: no solid. Below, ProNotFound: the feature has gone.
ProError ProSolidFeatVisit(ProMdl solid, Visitor<ProFeature> visitor);
// Its name; a component's is its model's. ProNotFound: it has none.
Got<std::wstring> ProFeatureNameGet(const ProFeature& feature);
// Creo's number of the type.
Got<int> ProFeatureTypeGet(const ProFeature& feature);
// The type in words: "HOLE". Empty where nothing is known.
Got<std::wstring> ProFeatureTypenameGet(const ProFeature& feature);
Got<std::wstring> ProFeatureSubtypeGet(const ProFeature& feature);
// Its number in the tree, from 1. ProNotFound also: it is suppressed.
Got<int> ProFeatureNumberGet(const ProFeature& feature);
Got<ProFeatureStatus> ProFeatureStatusGet(const ProFeature& feature);
// Does the model tree show it? Creo keeps some features to itself.
Got<bool> ProFeatureVisibilityGet(const ProFeature& feature);
// Is the pattern one of a group, not of a single feature?
Got<bool> ProFeatureGrppatternStatusGet(const ProFeature& pattern);
// Does it have geometry checks, such as tiny edges?
Got<bool> ProFeatureHasGeomchks(const ProFeature& feature);
// How many sketches it has.
Got<int> ProFeatureNumSectionsGet(const ProFeature& feature);
// The entities of a sketch. section: from 0. ProNotFound: the feature has no such sketch, or it can't be had, such as a
// trajectory that was chosen. Kinds of entities that Creo doesn't hand out are left out.
Got<std::vector<ProSectionEntity>> ProFeatureSectionEntitiesGet(const ProFeature& feature, int section);

// The model of a component. ProBadInputs: no component; ProNotFound: its model isn't in memory.
Got<ProMdl> ProAsmcompMdlGet(const ProFeature& component);
Got<bool> ProAsmcompIsFlexible(const ProFeature& component);
// What a flexible component varies of its model's dimensions, features and annotations, and the parameters that it
// varies, of the type kParameterItem and by name. ProBadInputs: no component; ProNotFound: nothing of the kind varies,
// or its model isn't in memory.
ProError ProVariantfeatItemsVisit(const ProFeature& component, Visitor<ProModelitem> visitor);
ProError ProVariantfeatParamsVisit(const ProFeature& component, Visitor<ProModelitem> visitor);

// New features come behind this one until insert mode is cancelled; those behind it are as good as suppressed
// meanwhile. Behind the last feature insert mode is off. Creo refuses a read-only model, here and below.
ProError ProFeatureInsertModeActivate(const ProFeature& feature);
// New features come at the end again. resume: those behind the place come back, else they stay suppressed. ProNotFound:
// insert mode is off.
ProError ProInsertModeCancel(ProMdl solid, bool resume);

}  // namespace creo

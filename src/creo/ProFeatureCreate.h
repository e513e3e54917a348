// New features of solids: datum points and planes on coordinate systems, and patterns of datum points. Creo refuses to
// change a read-only solid.
#pragma once

#include "creo/ProElement.h"
#include "creo/ProSolid.h"

namespace creo {

constexpr int kDatumPointFeature = 931;

// The elements that a tree is made of, by ids of this system's own.
// Of a feature: its type and its name, the coordinate system that it refers to, and where it is from there.
constexpr int kFeatureTree = 1, kFeatureTypeElement = 2, kFeatureNameElement = 3, kFeatureReferenceElement = 4;
constexpr int kOffsetXElement = 5, kOffsetYElement = 6, kOffsetZElement = 7;  // of a point, along the three axes
constexpr int kOffsetDistanceElement = 8;                                     // of a plane, along z
// Of a table pattern: the dimensions that drive it, and a row a member. A row holds the member's number and the values
// of the dimensions, in their order.
constexpr int kPatternTree = 20, kPatternTypeElement = 21, kTableDimensionElement = 22, kTableRowElement = 23;
constexpr int kMemberNumberElement = 24, kMemberValueElement = 25;

enum class ProPatternType : int { table = 2 };

// A datum point (kDatumPointFeature) or a datum plane (923). It stands where insert mode says, at the end without; its
// offsets become dimensions, and it lies on the default layers of its kind. ProBadInputs: the tree isn't whole, its
// reference is no coordinate system of the solid, or the name is too long; ProExists: a feature has the name.
Got<ProFeature> ProFeatureCreate(ProMdl solid, const ProElement& tree);
// A pattern whose first member is the point, with the table's members beside it; a datum point stands for each.
// ProBadInputs: no datum point, dimensions that aren't its own, a row that lacks a value, or a number that comes twice.
Got<ProFeature> ProPatternCreate(const ProFeature& leader, ProPatternType type, const ProElement& tree);
// The features go, with their dimensions and datums, from layers and from family tables. Relations that read their
// dimensions stay, and fail in the regeneration that follows, as children do that don't go along; windows aren't
// repainted. ProNotFound: one has gone already; nothing changed.
ProError ProFeatureDelete(ProMdl solid, const std::vector<int>& features, ProChildren children = ProChildren::stay);
// The dimensions that a feature has, in its order. ProNotFound: the feature has gone, or has none.
ProError ProFeatureDimensionVisit(const ProFeature& feature, Visitor<ProDimension> visitor);

}  // namespace creo

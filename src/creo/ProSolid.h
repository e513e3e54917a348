// What parts and assemblies hold as a whole. Every operation gives ProBadInputs for a model that is no solid.
#pragma once

#include "creo/ProTransform.h"
#include "creo/ProTypes.h"

namespace creo {

// ---- dimensions, of solids and drawings

struct ProDimension {
  ProMdl owner;
  int id = 0;
  bool reference = false;
};
struct ProDimensionTolerance {
  double upper = 0, lower = 0;
};

// Dimensions, or the reference dimensions, of a solid; those made in a drawing too, unless the option
// create_drawing_dims_only keeps them there. ProNotFound: there are none.
ProError ProSolidDimensionVisit(ProMdl solid, bool reference, Visitor<ProDimension> visitor);
// Such as "d12", or the name it was given. ProNotFound, here and below: it has gone.
Got<std::wstring> ProDimensionSymbolGet(const ProDimension& dimension);
// The lines of its text, of any length; "@D" stands for the value.
Got<std::vector<std::wstring>> ProDimensionTextGet(const ProDimension& dimension);
// ProNotFound also: it has none.
Got<ProDimensionTolerance> ProDimensionToleranceGet(const ProDimension& dimension);

// ---- accuracy and tolerance

enum class ProAccuracyKind : int { relative = 1, absolute = 2 };
struct ProAccuracy {
  ProAccuracyKind kind = ProAccuracyKind::relative;
  double value = 0;
};
// A solid always has one; an absolute one is in the solid's units. An assembly's says nothing of its parts.
Got<ProAccuracy> ProSolidAccuracyGet(ProMdl solid);

// Classes of the ISO 2768 tables.
enum class ProToleranceClass : int { none = -1, fine = 0, medium = 1, coarse = 2, veryCoarse = 3 };
// ProNotFound: the model has no class, as it follows no tables of ISO or DIN.
Got<ProToleranceClass> ProSolidModelclassGet(ProMdl solid);

// ---- regeneration

enum class ProRegenerationStatus : int { regenerated = 0, needed = 1, failed = 2, connectFailed = 3 };
// Flags of ProSolidRegenerate; they add up.
constexpr unsigned kRegenerateNoFlags = 0;
constexpr unsigned kRegenerateForce = 16;
constexpr unsigned kRegenerateUpdateInstances = 256;

// May stay at `needed`, as of a solid with circular references: what two regenerations leave so is up to date.
Got<ProRegenerationStatus> ProSolidRegenerationstatusGet(ProMdl solid);
// Raises notifications 21, 42 for each feature, and 22. ProGeneralError: a relation or a feature fails or a component
// is missing, the message area says which; ProRegenAgain: the model needs another pass; ProUnattachedFeats: it is
// regenerated, but a feature lost what it was attached to. Flags that don't go together are refused, and a read-only
// model. Windows and the model tree show nothing of it before they are refreshed.
ProError ProSolidRegenerate(ProMdl solid, unsigned flags);
// Is a feature other than the last the place where new ones come?
Got<bool> ProInsertModeIsActive(ProMdl solid);

// ---- geometry, in the solid's units

struct ProMassProperty {
  double volume = 0, surfaceArea = 0;
  double density = 0, mass = 0;  // of an assembly the density is the mean one
  ProVector gravityCenter;
};
struct ProOutline {
  ProVector min, max;
};

// In the model's own coordinates. A part's density is that of its current material, else the part's own, else 1; an
// assembly counts the components that aren't suppressed, skeletons aside. ProNotFound: there is no body;
// ProGeneralError: one can't be built, the message area says why.
Got<ProMassProperty> ProSolidMassPropertyGet(ProMdl solid);
// A box around all that is in the solid; it may be larger than the geometry, ProSolidOutlineCompute has an exact one.
// into: leads from the model's coordinates to those in which the box is wanted; null: the model's own. Results as
// above.
Got<ProOutline> ProSolidOutlineGet(ProMdl solid, const ProTransform* into = nullptr);

// Name of the principal system of units: "millimeter Newton Second (mmNs)".
Got<std::wstring> ProMdlPrincipalunitsystemGet(ProMdl model);

}  // namespace creo

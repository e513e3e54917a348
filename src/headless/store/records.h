// A model document as records. docs/model-document.md describes each member for users; the tables stand in document.cpp
// and the tables_ headers.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "creo/ProDimension.h"
#include "creo/ProExtdata.h"
#include "creo/ProFamtable.h"
#include "creo/ProParameter.h"
#include "headless/store/fields.h"
#include "headless/store/parameter_record.h"
#include "headless/store/records_drawing.h"
#include "headless/store/records_solid.h"

namespace headless {

constexpr int kDocumentFormat = 1;

// A slot that nothing was written to has no value.
struct SlotRecord : Open {
  creo::ProExtdataType type{};
  Scalar value;
};
using SlotList = Members<SlotRecord>;
using ExternalData = Members<SlotList>;

// How far a dimension may be off.
struct ToleranceRecord : Open {
  double upper = 0, lower = 0;
  creo::ProToleranceType type = creo::ProToleranceType::none;  // none: what the two values say
};
struct DimensionRecord : Open {
  int id = 0;
  std::string symbol;
  Scalar value;
  bool reference = false;
  bool associative = true;
  bool angular = false;  // in degrees
  bool flipped = false;  // measured in the other direction
  std::unique_ptr<ToleranceRecord> tolerance;
  creo::ProDimensionBound bound = creo::ProDimensionBound::nominal;
  std::vector<std::string> text;  // lines; none: "@D" alone
};

struct ColumnRecord : Open {
  creo::ProFamitemType type = creo::ProFamitemType::unused;
  std::string name;
};

struct FamilyTableRecord;
struct RowRecord : Open {
  std::string name;
  std::vector<Member<Scalar>> values;  // by column; a column that isn't there has the generic's value
  std::unique_ptr<ParameterList> parameters;
  std::unique_ptr<ExternalData> externalData;
  std::unique_ptr<FamilyTableRecord> familyTable;
  creo::ProVerification verification = creo::ProVerification::notVerified;
  bool locked = false;
  // Not written: where the row hangs, and whether it differs from what is on disk.
  RowRecord* parent = nullptr;
  bool changed = false;
};
struct FamilyTableRecord : Open {
  NamedList<ColumnRecord> items;
  std::vector<std::unique_ptr<RowRecord>> instances;  // rows stay where they are while the table grows
};

// A model that another one uses. The name may be "NAME<GENERIC>".
struct UsedModelRecord : Open {
  std::string name;
  creo::ProMdlType type = creo::ProMdlType::unused;
  // Components only.
  int feature = 0;
  bool flexible = false;
  bool packaged = false;  // it stands where it was put, without references to others
  RawJson placement;
};

struct ModelRecord : Open {
  int format = kDocumentFormat;
  bool readOnly = false, skeleton = false;
  int subtype = 1;
  std::string commonName, units, material;
  ParameterList parameters;
  std::vector<DimensionRecord> dimensions;
  std::vector<std::string> relations, postRelations;
  // Of the two sets of relations; nothing: as the option relations_units_sensitive says.
  std::optional<bool> unitSensitive, postUnitSensitive;
  std::vector<LayerRecord> layers;
  std::vector<LayerStateRecord> layerStates;
  std::vector<ViewRecord> views;
  std::string activeView;  // the one that was shown last; empty: none
  std::vector<NoteRecord> notes;
  std::unique_ptr<FamilyTableRecord> familyTable;
  ExternalData externalData;

  // ---- parts and assemblies
  std::vector<FeatureRecord> features;
  std::vector<MaterialRecord> materials;
  std::unique_ptr<AccuracyRecord> accuracy;
  creo::ProToleranceClass toleranceClass = creo::ProToleranceClass::none;
  std::vector<ToleranceEntryRecord> toleranceTable;
  std::vector<UnitSystemRecord> unitSystems;  // of the model's own, beside those that Creo brings
  creo::ProRegenerationStatus regeneration = creo::ProRegenerationStatus::regenerated;
  int insertAfter = 0;  // number of the feature behind which new ones come; 0: insert mode is off
  std::vector<SimplifiedRepRecord> simplifiedReps;
  std::vector<StateRecord> explodedStates, styleStates;
  std::vector<CombinedStateRecord> combinedStates;
  std::vector<CrossSectionRecord> crossSections;
  // The names of those that are active; empty: none.
  std::string activeLayerState, activeExplodedState, activeStyleState, activeCombinedState, activeCrossSection;
  std::vector<std::string> program;  // the text of its Pro/PROGRAM; none: what the model itself says
  double density = 0;                // that was stated for the part itself; 0: none. Its material's comes before it
  bool densityEstimated = false;     // nobody has stated it
  std::unique_ptr<AppearanceRecord> appearance;
  std::vector<SurfaceAppearanceRecord> surfaceAppearances;
  std::vector<LayoutRecord> layouts;
  std::vector<UsedModelRecord> components;
  RawJson solid;

  // ---- drawings
  std::vector<UsedModelRecord> models;
  std::string currentModel;  // "GEAR.prt"; empty: the first
  int currentSheet = 1;
  std::vector<SheetRecord> sheets;
  std::vector<TableRecord> tables;
  std::vector<SymbolDefinitionRecord> symbolDefinitions;
  std::vector<SymbolRecord> symbols;
  std::vector<DraftRecord> drafts;
  std::vector<ShownDimensionRecord> shownDimensions;
  std::vector<DetailOptionRecord> detailOptions;
};

}  // namespace headless

// The predicates that the table names, by the file that holds them. Each gets the model and the filter item and answers
// kFalse, kTrue or kNotApplicable.
#pragma once

#include "core/xml.h"
#include "creo/ProTypes.h"

namespace documents {

// family_predicates.cpp
int instancePredicate(creo::ProMdl model, const core::XmlNode& item);
int genericPredicate(creo::ProMdl model, const core::XmlNode& item);
int skeletonPredicate(creo::ProMdl model, const core::XmlNode& item);
int instanceNamePredicate(creo::ProMdl model, const core::XmlNode& item);
int unregeneratedInstancePredicate(creo::ProMdl model, const core::XmlNode& item);

// file_predicates.cpp
int pathPredicate(creo::ProMdl model, const core::XmlNode& item);
int filenamePredicate(creo::ProMdl model, const core::XmlNode& item);
int fileExistsPredicate(creo::ProMdl model, const core::XmlNode& item);
int modelExistsPredicate(creo::ProMdl model, const core::XmlNode& item);
int modifiedPredicate(creo::ProMdl model, const core::XmlNode& item);
int circularReferencesPredicate(creo::ProMdl model, const core::XmlNode& item);

// parameter_predicate.cpp
int parameterPredicate(creo::ProMdl model, const core::XmlNode& item);
int parameterTypePredicate(creo::ProMdl model, const core::XmlNode& item);
int doubleDefinedPredicate(creo::ProMdl model, const core::XmlNode& item);

// pdm_predicates.cpp
int pdmObjectPredicate(creo::ProMdl model, const core::XmlNode& item);
int pdmObject2Predicate(creo::ProMdl model, const core::XmlNode& item);

// session_predicates.cpp
int userVariablePredicate(creo::ProMdl model, const core::XmlNode& item);
int creoVersionPredicate(creo::ProMdl model, const core::XmlNode& item);
int environmentVariablePredicate(creo::ProMdl model, const core::XmlNode& item);

// drawing_predicates.cpp
int multiModelDrawingPredicate(creo::ProMdl model, const core::XmlNode& item);
int formatNamePredicate(creo::ProMdl model, const core::XmlNode& item);
int formatsOnSheetsPredicate(creo::ProMdl model, const core::XmlNode& item);
int currentModelPredicate(creo::ProMdl model, const core::XmlNode& item);
int symbolOnDrawingPredicate(creo::ProMdl model, const core::XmlNode& item);
int symbolInDrawingPredicate(creo::ProMdl model, const core::XmlNode& item);

// sheet_predicate.cpp
int sheetSizePredicate(creo::ProMdl model, const core::XmlNode& item);

// table_predicate.cpp
int tableOnDrawingPredicate(creo::ProMdl model, const core::XmlNode& item);

// dimension_predicates.cpp
int dimensionTextPredicate(creo::ProMdl model, const core::XmlNode& item);
int dimensionTolerancePredicate(creo::ProMdl model, const core::XmlNode& item);

// solid_predicates.cpp
int relationPredicate(creo::ProMdl model, const core::XmlNode& item);
int currentMaterialPredicate(creo::ProMdl model, const core::XmlNode& item);
int materialParameterPredicate(creo::ProMdl model, const core::XmlNode& item);
int unitSystemPredicate(creo::ProMdl model, const core::XmlNode& item);
int modelSubtypePredicate(creo::ProMdl model, const core::XmlNode& item);
int accuracyPredicate(creo::ProMdl model, const core::XmlNode& item);
int tolerancePredicate(creo::ProMdl model, const core::XmlNode& item);
int insertModePredicate(creo::ProMdl model, const core::XmlNode& item);
int regeneratePredicate(creo::ProMdl model, const core::XmlNode& item);

// feature_predicates.cpp
int featureExistsPredicate(creo::ProMdl model, const core::XmlNode& item);
int featureSuppressedPredicate(creo::ProMdl model, const core::XmlNode& item);
int featureFromTypePredicate(creo::ProMdl model, const core::XmlNode& item);
int geometryCheckPredicate(creo::ProMdl model, const core::XmlNode& item);
int flexibleComponentPredicate(creo::ProMdl model, const core::XmlNode& item);
int sketchEntitiesPredicate(creo::ProMdl model, const core::XmlNode& item);

// state_predicates.cpp
int layerPredicate(creo::ProMdl model, const core::XmlNode& item);
int layerStatePredicate(creo::ProMdl model, const core::XmlNode& item);
int viewPredicate(creo::ProMdl model, const core::XmlNode& item);
int combinedStatePredicate(creo::ProMdl model, const core::XmlNode& item);
int combinedStateExistsPredicate(creo::ProMdl model, const core::XmlNode& item);
int simplifiedRepPredicate(creo::ProMdl model, const core::XmlNode& item);
int styleStatePredicate(creo::ProMdl model, const core::XmlNode& item);
int crossSectionPredicate(creo::ProMdl model, const core::XmlNode& item);
int explodedStatePredicate(creo::ProMdl model, const core::XmlNode& item);

}  // namespace documents

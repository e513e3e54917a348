// The predicates that the table names, by the file that holds them. Each gets the model and the filter item and answers
// kFalse, kTrue or kNotApplicable.
#pragma once

#include "core/xml.h"
#include "creo/ProTypes.h"

namespace documents {

// model_predicates.cpp
int instancePredicate(creo::ProMdl model, const core::XmlNode& item);
int genericPredicate(creo::ProMdl model, const core::XmlNode& item);
int skeletonPredicate(creo::ProMdl model, const core::XmlNode& item);
int filenamePredicate(creo::ProMdl model, const core::XmlNode& item);

// parameter_predicate.cpp
int parameterPredicate(creo::ProMdl model, const core::XmlNode& item);

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

}  // namespace documents

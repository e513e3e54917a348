#include "documents/predicates.h"

#include "documents/predicate_families.h"

namespace documents {
namespace {

constexpr Predicate kTable[] = {
    {L"isInstance", &instancePredicate},
    {L"isGeneric", &genericPredicate},
    {L"isSkeleton", &skeletonPredicate},
    {L"isMultiModelDrawing", &multiModelDrawingPredicate},
    {L"parameter", &parameterPredicate},
    {L"pdmobject", &pdmObjectPredicate},
    {L"pdmobject_2", &pdmObject2Predicate},
    {L"path", &pathPredicate},
    {L"filename", &filenamePredicate},
    {L"relation", &relationPredicate},
    {L"currentMaterialName", &currentMaterialPredicate},
    {L"layer", &layerPredicate},
    {L"sheetsize", &sheetSizePredicate},
    {L"unitSystem", &unitSystemPredicate},
    {L"keExists", &featureExistsPredicate},
    {L"formatName", &formatNamePredicate},
    {L"drawingCurrentModel", &currentModelPredicate},
    {L"keSuppressed", &featureSuppressedPredicate},
    {L"materialParameter", &materialParameterPredicate},
    {L"formatsOnSheets", &formatsOnSheetsPredicate},
    {L"symbolOnDrawing", &symbolOnDrawingPredicate},
    {L"symbolInDrawing", &symbolInDrawingPredicate},
    {L"keFromType", &featureFromTypePredicate},
    {L"geomchk", &geometryCheckPredicate},
    {L"modelsubtype", &modelSubtypePredicate},
    {L"userVariable", &userVariablePredicate},
    {L"simpRepExists", &simplifiedRepPredicate},
    {L"creoVersion", &creoVersionPredicate},
    {L"tableOnDrawing", &tableOnDrawingPredicate},
    {L"accuracy", &accuracyPredicate},
    {L"hasInstanceWithName", &instanceNamePredicate},
    {L"environmentVariable", &environmentVariablePredicate},
    {L"drawingDimensionText", &dimensionTextPredicate},
    {L"hasUnregeneratedInstance", &unregeneratedInstancePredicate},
    {L"viewexists", &viewPredicate},
    {L"tolerance", &tolerancePredicate},
    {L"doubleDefinedParameters", &doubleDefinedPredicate},
    {L"combinedState", &combinedStatePredicate},
    {L"keIsFlexible", &flexibleComponentPredicate},
    {L"fileexists", &fileExistsPredicate},
    {L"modelexists", &modelExistsPredicate},
    {L"insertmodeisactive", &insertModePredicate},
    {L"layerstateexists", &layerStatePredicate},
    {L"combstateexists", &combinedStateExistsPredicate},
    {L"stylestateexists", &styleStatePredicate},
    {L"xsecexists", &crossSectionPredicate},
    {L"explodestateexists", &explodedStatePredicate},
    {L"sketchhasentities", &sketchEntitiesPredicate},
    {L"parametertype", &parameterTypePredicate},
    {L"isregenerateable", &regeneratePredicate},
    {L"dimensiontolerance", &dimensionTolerancePredicate},
    {L"ismodified", &modifiedPredicate},
    {L"containsCircularReferences", &circularReferencesPredicate},
};
static_assert(std::size(kTable) == 53);

}  // namespace

std::span<const Predicate> predicateTable() { return kTable; }

}  // namespace documents

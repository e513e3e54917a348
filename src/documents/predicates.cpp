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
    {L"relation", nullptr},
    {L"currentMaterialName", nullptr},
    {L"layer", nullptr},
    {L"sheetsize", &sheetSizePredicate},
    {L"unitSystem", nullptr},
    {L"keExists", nullptr},
    {L"formatName", &formatNamePredicate},
    {L"drawingCurrentModel", &currentModelPredicate},
    {L"keSuppressed", nullptr},
    {L"materialParameter", nullptr},
    {L"formatsOnSheets", &formatsOnSheetsPredicate},
    {L"symbolOnDrawing", &symbolOnDrawingPredicate},
    {L"symbolInDrawing", &symbolInDrawingPredicate},
    {L"keFromType", nullptr},
    {L"geomchk", nullptr},
    {L"modelsubtype", nullptr},
    {L"userVariable", &userVariablePredicate},
    {L"simpRepExists", nullptr},
    {L"creoVersion", &creoVersionPredicate},
    {L"tableOnDrawing", &tableOnDrawingPredicate},
    {L"accuracy", nullptr},
    {L"hasInstanceWithName", &instanceNamePredicate},
    {L"environmentVariable", &environmentVariablePredicate},
    {L"drawingDimensionText", &dimensionTextPredicate},
    {L"hasUnregeneratedInstance", &unregeneratedInstancePredicate},
    {L"viewexists", nullptr},
    {L"tolerance", nullptr},
    {L"doubleDefinedParameters", &doubleDefinedPredicate},
    {L"combinedState", nullptr},
    {L"keIsFlexible", nullptr},
    {L"fileexists", &fileExistsPredicate},
    {L"modelexists", &modelExistsPredicate},
    {L"insertmodeisactive", nullptr},
    {L"layerstateexists", nullptr},
    {L"combstateexists", nullptr},
    {L"stylestateexists", nullptr},
    {L"xsecexists", nullptr},
    {L"explodestateexists", nullptr},
    {L"sketchhasentities", nullptr},
    {L"parametertype", &parameterTypePredicate},
    {L"isregenerateable", nullptr},
    {L"dimensiontolerance", &dimensionTolerancePredicate},
    {L"ismodified", &modifiedPredicate},
    {L"containsCircularReferences", &circularReferencesPredicate},
};
static_assert(std::size(kTable) == 53);

}  // namespace

std::span<const Predicate> predicateTable() { return kTable; }

}  // namespace documents

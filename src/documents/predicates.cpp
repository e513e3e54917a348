#include "documents/predicates.h"

#include "documents/predicate_families.h"

namespace documents {
namespace {

constexpr Predicate kTable[] = {
    {L"isInstance", &instancePredicate},
    {L"isGeneric", &genericPredicate},
    {L"isSkeleton", &skeletonPredicate},
    {L"isMultiModelDrawing", nullptr},
    {L"parameter", &parameterPredicate},
    {L"pdmobject", &pdmObjectPredicate},
    {L"pdmobject_2", &pdmObject2Predicate},
    {L"path", &pathPredicate},
    {L"filename", &filenamePredicate},
    {L"relation", nullptr},
    {L"currentMaterialName", nullptr},
    {L"layer", nullptr},
    {L"sheetsize", nullptr},
    {L"unitSystem", nullptr},
    {L"keExists", nullptr},
    {L"formatName", nullptr},
    {L"drawingCurrentModel", nullptr},
    {L"keSuppressed", nullptr},
    {L"materialParameter", nullptr},
    {L"formatsOnSheets", nullptr},
    {L"symbolOnDrawing", nullptr},
    {L"symbolInDrawing", nullptr},
    {L"keFromType", nullptr},
    {L"geomchk", nullptr},
    {L"modelsubtype", nullptr},
    {L"userVariable", &userVariablePredicate},
    {L"simpRepExists", nullptr},
    {L"creoVersion", &creoVersionPredicate},
    {L"tableOnDrawing", nullptr},
    {L"accuracy", nullptr},
    {L"hasInstanceWithName", &instanceNamePredicate},
    {L"environmentVariable", &environmentVariablePredicate},
    {L"drawingDimensionText", nullptr},
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
    {L"dimensiontolerance", nullptr},
    {L"ismodified", &modifiedPredicate},
    {L"containsCircularReferences", &circularReferencesPredicate},
};
static_assert(std::size(kTable) == 53);

}  // namespace

std::span<const Predicate> predicateTable() { return kTable; }

}  // namespace documents

#include "documents/predicate_attributes.h"

#include <algorithm>

namespace documents {
namespace {

using enum AttributeKind;
constexpr bool kRequired = true, kOptional = false;

constexpr PredicateAttribute kAttributes[] = {
    {L"parameter", L"param", kRequired, templatePattern},
    {L"parameter", L"value", kRequired, templatePattern},
    {L"parameter", L"epsilon", kOptional, number},
    {L"parameter", L"ncomp", kOptional, integer, L"1 2 3 4 5"},
    {L"pdmobject", L"pdmobj", kRequired, truth},
    {L"pdmobject", L"pdmcheckedout", kOptional, truth},
    {L"pdmobject", L"pdmcheckedoutsel", kOptional, integer},
    {L"pdmobject_2", L"cs_checked_out", kOptional, truth},
    {L"pdmobject_2", L"cs_not_checked_out", kOptional, truth},
    {L"pdmobject_2", L"never_saved", kOptional, truth},
    {L"pdmobject_2", L"hdd", kOptional, truth},
    {L"pdmobject_2", L"ws", kOptional, truth},
    {L"path", L"path", kRequired, pattern},
    {L"filename", L"filename", kRequired, pattern},
    {L"relation", L"rel", kOptional, truth},
    {L"relation", L"posrel", kOptional, truth},
    {L"relation", L"search", kRequired, pattern},
    {L"currentMaterialName", L"currmat", kRequired, pattern},
    {L"currentMaterialName", L"whenNoCurr", kOptional, truth},
    {L"layer", L"currmat", kRequired, pattern},
    {L"layer", L"aomi", kRequired, truth},
    {L"layer", L"aomisign", kOptional, AttributeKind::text, L"= > <"},
    {L"layer", L"aomitf", kOptional, integer},
    {L"sheetsize", L"hs", kOptional, plainNumber},
    {L"sheetsize", L"he", kOptional, plainNumber},
    {L"sheetsize", L"hb", kOptional, plainNumber},
    {L"sheetsize", L"ws", kOptional, plainNumber},
    {L"sheetsize", L"we", kOptional, plainNumber},
    {L"sheetsize", L"wb", kOptional, plainNumber},
    {L"unitSystem", L"us", kRequired, pattern},
    {L"keExists", L"ke", kRequired, AttributeKind::text},
    {L"formatName", L"value", kRequired, pattern},
    {L"drawingCurrentModel", L"value", kRequired, pattern},
    {L"drawingCurrentModel", L"inclnoact", kOptional, truth},
    {L"keSuppressed", L"ke", kRequired, pattern},
    {L"materialParameter", L"param", kRequired, AttributeKind::text},
    {L"materialParameter", L"value", kRequired, pattern},
    {L"formatsOnSheets", L"frm", kRequired, integer, L"0 1"},
    {L"symbolOnDrawing", L"currmat", kRequired, AttributeKind::text},
    {L"symbolInDrawing", L"currmat", kRequired, AttributeKind::text},
    {L"keFromType", L"version", kRequired, integer, L"4"},
    {L"keFromType", L"featnamesel", kOptional, truth},
    {L"keFromType", L"featname", kOptional, pattern},
    {L"keFromType", L"featnumsel", kOptional, truth},
    {L"keFromType", L"featnum", kOptional, integer},
    {L"keFromType", L"featidsel", kOptional, truth},
    {L"keFromType", L"featid", kOptional, integer},
    {L"keFromType", L"feattypesel", kOptional, truth},
    {L"keFromType", L"feattype", kOptional, featureCode},
    {L"modelsubtype", L"subtype", kRequired, pattern},
    {L"userVariable", L"param", kRequired, templatePattern},
    {L"userVariable", L"value", kRequired, templatePattern},
    {L"simpRepExists", L"simpRepName", kRequired, pattern},
    {L"creoVersion", L"creo2", kOptional, truth},
    {L"creoVersion", L"creo3", kOptional, truth},
    {L"creoVersion", L"creo4", kOptional, truth},
    {L"creoVersion", L"creo5", kOptional, truth},
    {L"creoVersion", L"creo6", kOptional, truth},
    {L"creoVersion", L"creo7", kOptional, truth},
    {L"creoVersion", L"creo8", kOptional, truth},
    {L"tableOnDrawing", L"sheet", kOptional, templateText},
    {L"tableOnDrawing", L"filterand", kOptional, truth},
    {L"tableOnDrawing", L"pos-x", kOptional, number},
    {L"tableOnDrawing", L"pos-y", kOptional, number},
    {L"tableOnDrawing", L"cell-s", kOptional, pattern},
    {L"tableOnDrawing", L"cell-x", kOptional, integerOrStar},
    {L"tableOnDrawing", L"cell-y", kOptional, integerOrStar},
    {L"accuracy", L"valtype", kRequired, AttributeKind::text},
    {L"accuracy", L"value", kRequired, number},
    {L"accuracy", L"eq", kRequired, integer, L"0 1 2"},
    {L"hasInstanceWithName", L"filename", kRequired, templatePattern},
    {L"environmentVariable", L"param", kRequired, templateText},
    {L"environmentVariable", L"value", kRequired, templatePattern},
    {L"drawingDimensionText", L"ddt", kRequired, pattern},
    {L"hasUnregeneratedInstance", L"level", kOptional, AttributeKind::text},
    {L"viewexists", L"viewname", kRequired, pattern},
    {L"tolerance", L"tol", kRequired, integer, L"0 1 2 3 4"},
    {L"combinedState", L"csname", kRequired, pattern},
    {L"keIsFlexible", L"ke", kRequired, pattern},
    {L"fileexists", L"filename", kRequired, templateText},
    {L"modelexists", L"filename", kRequired, templateText},
    {L"modelexists", L"vcheck", kOptional, integer},
    {L"modelexists", L"vcheckvalue", kOptional, templateText},
    {L"modelexists", L"vcheckcontent", kOptional, templateText},
    {L"layerstateexists", L"statename", kRequired, pattern},
    {L"combstateexists", L"statename", kRequired, pattern},
    {L"stylestateexists", L"stylename", kRequired, pattern},
    {L"xsecexists", L"xsecname", kRequired, pattern},
    {L"explodestateexists", L"expldname", kRequired, pattern},
    {L"parametertype", L"pname", kRequired, AttributeKind::text},
    {L"parametertype", L"ptype", kRequired, integer, L"0 1 2 3"},
    {L"isregenerateable", L"force", kOptional, truth},
    {L"dimensiontolerance", L"asymmetric", kRequired, truth},
};

}  // namespace

std::span<const PredicateAttribute> predicateAttributes() { return kAttributes; }

std::span<const PredicateAttribute> predicateAttributes(std::wstring_view key) {
  const auto isOf = [key](const PredicateAttribute& row) { return row.key == key; };
  const auto* first = std::find_if(std::begin(kAttributes), std::end(kAttributes), isOf);
  const auto* last = std::find_if_not(first, std::end(kAttributes), isOf);
  return {first, last};
}

}  // namespace documents

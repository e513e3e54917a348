// The texts of enumerations in documents.
#pragma once

#include <string_view>
#include <utility>

#include "headless/store/records.h"

namespace headless {

template <class E>
using Texts = std::pair<std::string_view, E>;

template <>
struct EnumTexts<creo::ProParamvalueType> {
  static constexpr Texts<creo::ProParamvalueType> texts[] = {{"string", creo::ProParamvalueType::string},
                                                             {"integer", creo::ProParamvalueType::integer},
                                                             {"double", creo::ProParamvalueType::real},
                                                             {"boolean", creo::ProParamvalueType::boolean},
                                                             {"note", creo::ProParamvalueType::noteId}};
};
template <>
struct EnumTexts<creo::ProParameterDriver> {
  static constexpr Texts<creo::ProParameterDriver> texts[] = {{"none", creo::ProParameterDriver::none},
                                                              {"parameter", creo::ProParameterDriver::parameter},
                                                              {"function", creo::ProParameterDriver::function},
                                                              {"relation", creo::ProParameterDriver::relation}};
};
template <>
struct EnumTexts<creo::ProExtdataType> {
  static constexpr Texts<creo::ProExtdataType> texts[] = {{"integer", creo::ProExtdataType::integer},
                                                          {"text", creo::ProExtdataType::text}};
};
template <>
struct EnumTexts<creo::ProFamitemType> {
  static constexpr Texts<creo::ProFamitemType> texts[] = {{"parameter", creo::ProFamitemType::parameter},
                                                          {"dimension", creo::ProFamitemType::dimension},
                                                          {"feature", creo::ProFamitemType::feature},
                                                          {"component", creo::ProFamitemType::component}};
};
template <>
struct EnumTexts<creo::ProMdlType> {
  static constexpr Texts<creo::ProMdlType> texts[] = {{"prt", creo::ProMdlType::part},
                                                      {"asm", creo::ProMdlType::assembly},
                                                      {"drw", creo::ProMdlType::drawing},
                                                      {"frm", creo::ProMdlType::format},
                                                      {"mfg", creo::ProMdlType::manufacturing}};
};

template <>
struct EnumTexts<creo::ProVerification> {
  static constexpr Texts<creo::ProVerification> texts[] = {{"verified", creo::ProVerification::verified},
                                                           {"failed", creo::ProVerification::failed},
                                                           {"notVerified", creo::ProVerification::notVerified}};
};
template <>
struct EnumTexts<creo::ProItemType> {
  using E = creo::ProItemType;
  static constexpr Texts<E> texts[] = {{"feature", E::feature},
                                       {"dimension", E::dimension},
                                       {"referenceDimension", E::referenceDimension},
                                       {"layer", E::layer},
                                       {"crossSection", E::crossSection},
                                       {"coordinateSystem", E::coordinateSystem},
                                       {"explodedState", E::explodedState},
                                       {"simplifiedRep", E::simplifiedRep},
                                       {"combinedState", E::combinedState},
                                       {"styleState", E::styleState},
                                       {"view", E::view},
                                       {"parameter", creo::kParameterItem}};
};
template <>
struct EnumTexts<creo::ProFeatureStatus> {
  using E = creo::ProFeatureStatus;
  static constexpr Texts<E> texts[] = {{"active", E::active},
                                       {"inactive", E::inactive},
                                       {"familyTableSuppressed", E::familyTableSuppressed},
                                       {"simplifiedRepSuppressed", E::simplifiedRepSuppressed},
                                       {"programSuppressed", E::programSuppressed},
                                       {"suppressed", E::suppressed},
                                       {"unregenerated", E::unregenerated}};
};
template <>
struct EnumTexts<creo::ProAccuracyKind> {
  using E = creo::ProAccuracyKind;
  static constexpr Texts<E> texts[] = {{"relative", E::relative}, {"absolute", E::absolute}};
};
template <>
struct EnumTexts<creo::ProToleranceClass> {
  using E = creo::ProToleranceClass;
  static constexpr Texts<E> texts[] = {{"none", E::none},
                                       {"fine", E::fine},
                                       {"medium", E::medium},
                                       {"coarse", E::coarse},
                                       {"veryCoarse", E::veryCoarse}};
};
template <>
struct EnumTexts<creo::ProToleranceType> {
  using E = creo::ProToleranceType;
  static constexpr Texts<E> texts[] = {{"standard", E::standard},
                                       {"limits", E::limits},
                                       {"plusMinus", E::plusMinus},
                                       {"symmetric", E::symmetric},
                                       {"symmetricSuperscript", E::symmetricSuperscript}};
};
template <>
struct EnumTexts<creo::ProDimensionBound> {
  using E = creo::ProDimensionBound;
  static constexpr Texts<E> texts[] = {
      {"nominal", E::nominal}, {"upper", E::upper}, {"lower", E::lower}, {"middle", E::middle}};
};
template <>
struct EnumTexts<creo::ProRegenerationStatus> {
  using E = creo::ProRegenerationStatus;
  static constexpr Texts<E> texts[] = {{"regenerated", E::regenerated},
                                       {"needed", E::needed},
                                       {"failed", E::failed},
                                       {"connectFailed", E::connectFailed}};
};
template <>
struct EnumTexts<creo::ProLayerDisplay> {
  using E = creo::ProLayerDisplay;
  static constexpr Texts<E> texts[] = {{"normal", E::normal}, {"display", E::display}, {"blank", E::blank},
                                       {"hidden", E::hidden}, {"skip", E::skip},       {"none", E::none}};
};
template <>
struct EnumTexts<creo::ProXsecType> {
  using E = creo::ProXsecType;
  static constexpr Texts<E> texts[] = {{"planar", E::planar}, {"offset", E::offset}};
};
template <>
struct EnumTexts<creo::ProSimprepAction> {
  using E = creo::ProSimprepAction;
  static constexpr Texts<E> texts[] = {{"reverse", E::reverse},
                                       {"include", E::include},
                                       {"exclude", E::exclude},
                                       {"substitute", E::substitute},
                                       {"geometry", E::geometry},
                                       {"graphics", E::graphics},
                                       {"symbolic", E::symbolic},
                                       {"boundaryBox", E::boundaryBox},
                                       {"lightGraphics", E::lightGraphics},
                                       {"none", E::none}};
};
template <>
struct EnumTexts<creo::ProSubstitutionKind> {
  using E = creo::ProSubstitutionKind;
  static constexpr Texts<E> texts[] = {{"none", E::none}, {"partRep", E::partRep}, {"assemblyRep", E::assemblyRep}};
};
template <>
struct EnumTexts<creo::ProXsecObjects> {
  using E = creo::ProXsecObjects;
  static constexpr Texts<E> texts[] = {
      {"model", E::model}, {"quilts", E::quilts}, {"modelAndQuilts", E::modelAndQuilts}};
};
template <>
struct EnumTexts<creo::ProSymbolGroups> {
  using E = creo::ProSymbolGroups;
  static constexpr Texts<E> texts[] = {
      {"interactive", E::interactive}, {"all", E::all}, {"none", E::none}, {"custom", E::custom}};
};
template <>
struct EnumTexts<creo::ProSheetSize> {
  using E = creo::ProSheetSize;
  static constexpr Texts<E> texts[] = {{"A0", E::a0},
                                       {"A1", E::a1},
                                       {"A2", E::a2},
                                       {"A3", E::a3},
                                       {"A4", E::a4},
                                       {"A", E::a},
                                       {"B", E::b},
                                       {"C", E::c},
                                       {"D", E::d},
                                       {"E", E::e},
                                       {"F", E::f},
                                       {"empty", E::empty},
                                       {"emptyMm", E::emptyMm},
                                       {"variable", E::variable},
                                       {"variableMm", E::variableMm}};
};

}  // namespace headless

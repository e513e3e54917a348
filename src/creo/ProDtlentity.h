// Symbol definitions that are made line by line. ProNotFound: the definition has gone.
#pragma once

#include <optional>
#include <string>

#include "creo/ProDrawing.h"
#include "creo/ProDrawingView.h"

namespace creo {

// ---- definitions

// What a definition consists of before it has lines.
struct ProDtlsymdefdata {
  ProMdl drawing;
  std::wstring path;
};
Got<ProDtlsymdefdata> ProDtlsymdefdataAlloc(ProMdl drawing);
// The definition's name; in front of it may stand the folder that its file would lie in. ProBadInputs: it is empty or
// holds control characters.
ProError ProDtlsymdefdataPathSet(ProDtlsymdefdata& data, const std::wstring& path);
// A definition without lines. ProBadInputs: no name; ProExists: the drawing has one of that name, case-blind;
// ProGeneralError: the drawing is read-only, or the definition can't be made.
Got<ProDtlsymdef> ProDtlsymdefCreate(const ProDtlsymdefdata& data);
// Placed symbols stay; they show the next definition of that name.
ProError ProDtlsymdefDelete(const ProDtlsymdef& definition);

// ---- lines

struct ProCurvedata {
  ProPoint from, to;
};
// How the colour of an entity is told; Creo's numbers. type: by the color number of its data.
enum class ProColorMethod : int { byDefault = 0, type = 1 };
struct ProDtlentity {
  ProDtlsymdef definition;
  int id = 0;  // its place among the definition's lines, from 1
};
struct ProDtlentitydata {
  ProMdl drawing;
  std::optional<ProCurvedata> curve;
  int view = 0;  // its id; 0: none
  ProColorMethod colorMethod = ProColorMethod::byDefault;
  int color = 0;
  double width = 0;  // of the stroke, in the drawing's coordinates; 0: the thinnest
};
// A straight line. ProBadInputs: an end that isn't finite.
Got<ProCurvedata> ProCurvedataAlloc(const ProPoint& from, const ProPoint& to);
// An empty record for a line of a definition.
Got<ProDtlentitydata> ProDtlentitydataAlloc(ProMdl drawing);
ProError ProDtlentitydataCurveSet(ProDtlentitydata& data, const ProCurvedata& curve);
// ProBadInputs: definitions hold no construction lines.
ProError ProDtlentitydataConstructionSet(ProDtlentitydata& data, bool isConstruction);
// A view of the drawing, or the one that a sheet has of its own. ProBadInputs: a view of another drawing.
ProError ProDtlentitydataViewSet(ProDtlentitydata& data, const ProView& view);
ProError ProDtlentitydataColorSet(ProDtlentitydata& data, ProColorMethod method, int color);
// ProBadInputs: below 0, or not finite.
ProError ProDtlentitydataWidthSet(ProDtlentitydata& data, double width);
// A line behind those of the definition. ProBadInputs: data without a curve, or of another drawing; ProGeneralError:
// the definition of a special symbol, which can't be drawn into.
Got<ProDtlentity> ProDtlentityCreate(const ProDtlsymdef& definition, const ProDtlentitydata& data);

}  // namespace creo

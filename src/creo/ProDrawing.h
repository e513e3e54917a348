// Drawings: their models, sheets, symbols and dimensions. Every operation gives ProBadInputs for a model that is no
// drawing or format; those that name a sheet (from 1) give ProNotFound for one that isn't there.
#pragma once

#include "creo/ProSolid.h"

namespace creo {

struct ProPoint {
  double x = 0, y = 0;
};

// Creo's numbers of sheet sizes.
enum class ProSheetSize : int {
  a = 0,
  b = 1,
  c = 2,
  d = 3,
  e = 4,
  a4 = 5,
  a3 = 6,
  a2 = 7,
  a1 = 8,
  a0 = 9,
  f = 10,
  empty = 11,
  emptyMm = 12,
  variable = 99,
  variableMm = 100,
};
struct ProSheetDimensions {
  ProSheetSize size{};
  double width = 0, height = 0;  // mm for A4 to A0, variableMm and emptyMm, else inches
};
struct ProSheetInfo {
  int width = 0, height = 0;  // whole units of the sheet
};
// From drawing to sheet coordinates; of the matrix only what places tables and symbols.
struct ProSheetMatrix {
  double scaleX = 1, scaleY = 1, offsetX = 0, offsetY = 0;
};

// ---- models

// The models of a drawing, in its order; empty for one without. A model that can't be retrieved is left out, with a
// line in the message area.
Got<std::vector<ProMdl>> ProDrawingSolidsCollect(ProMdl drawing);
ProError ProDrawingSolidsVisit(ProMdl drawing, Visitor<ProMdl> visitor);
// The drawing's current model. ProNotFound: it has none.
Got<ProMdl> ProDrawingCurrentsolidGet(ProMdl drawing);
// ProNotFound: the drawing doesn't show that model.
ProError ProDrawingCurrentsolidSet(ProMdl drawing, ProMdl solid);
// A new drawing of the model, with the sheets, tables and symbols of a drawing that serves as template and lies in the
// working folder (or that of the models). ProExists: a drawing of that name is in memory; ProNotFound: no such
// template. Raises notification 100.
Got<ProMdl> ProDrawingFromTmpltCreate(const std::wstring& name, const std::wstring& templateName, ProMdl model,
                                      unsigned options);
// ProGeneralError: a model of the drawing can't be retrieved.
ProError ProDwgDraftRegenerate(ProMdl drawing);

// ---- sheets

Got<int> ProDrawingSheetsCount(ProMdl drawing);
Got<int> ProDrawingCurrentSheetGet(ProMdl drawing);
ProError ProDrawingCurrentSheetSet(ProMdl drawing, int sheet);
Got<std::wstring> ProDrawingSheetNameGet(ProMdl drawing, int sheet);
Got<ProSheetDimensions> ProDrawingSheetSizeGet(ProMdl drawing, int sheet);
Got<ProSheetInfo> ProDrawingSheetInfoGet(ProMdl drawing, int sheet);
Got<ProSheetMatrix> ProDrawingSheetTrfGet(ProMdl drawing, int sheet);
// The scale at which a sheet shows a model.
Got<double> ProDrawingScaleGet(ProMdl drawing, ProMdl solid, int sheet);
// The name of the sheet's format. ProNotFound also for a sheet without one.
Got<std::wstring> ProDrawingFormatGet(ProMdl drawing, int sheet);

// ---- dimensions

// The drawing's own dimensions (type dimension) or reference dimensions.
ProError ProDrawingDimensionVisit(ProMdl drawing, bool reference, Visitor<ProDimension> visitor);
// Does the drawing show the dimension? Its own are always shown.
Got<bool> ProAnnotationIsShown(const ProDimension& dimension, ProMdl drawing);

// ---- symbols

// Which groups of its definition a placed symbol shows; Creo's numbers.
enum class ProSymbolGroups : int { interactive = 0, all = 1, none = 2, custom = 3 };

struct ProDtlsymdef {
  ProMdl drawing;
  int id = 0;
};
struct ProDtlsyminst {
  ProMdl drawing;
  int id = 0;
};
// Empty for none.
Got<std::vector<ProDtlsymdef>> ProDrawingDtlsymdefsCollect(ProMdl drawing);
Got<std::wstring> ProDtlsymdefNameGet(const ProDtlsymdef& definition);
Got<std::vector<ProDtlsyminst>> ProDrawingDtlsyminstsCollect(ProMdl drawing, int sheet);
// ProNotFound: the drawing lacks the definition of the symbol.
Got<ProDtlsymdef> ProDtlsyminstDefGet(const ProDtlsyminst& symbol);

}  // namespace creo

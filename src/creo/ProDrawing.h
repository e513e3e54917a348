// Drawings: their models, sheets, symbols and dimensions. Every operation gives ProBadInputs for a model that is no
// drawing or format, and for a sheet (from 1) that isn't there. What stands on a sheet stands in screen coordinates,
// "the drawing's own" here and in the other headers of drawings; people measure in the sheet's units.
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
// From the drawing's own coordinates to the sheet's units; of the matrix only what places tables and symbols.
struct ProSheetMatrix {
  double scaleX = 1, scaleY = 1, offsetX = 0, offsetY = 0;
};

// ---- models

// The models of a drawing, in its order, also those that no view shows; of an assembly its top alone. ProNotFound: it
// has none. A model that can't be retrieved is left out, with a line in the message area.
Got<std::vector<ProMdl>> ProDrawingSolidsCollect(ProMdl drawing);
ProError ProDrawingSolidsVisit(ProMdl drawing, Visitor<ProMdl> visitor);
// The drawing's current model. ProNotFound: it has none.
Got<ProMdl> ProDrawingCurrentsolidGet(ProMdl drawing);
// What the texts of the drawing say of its current model follows when the sheet is regenerated. ProNotFound: the
// drawing lacks that model. ProGeneralError: the drawing is read-only.
ProError ProDrawingCurrentsolidSet(ProMdl drawing, ProMdl solid);
// A new drawing of the model, with the sheets, tables and symbols of a drawing that serves as template and lies in the
// working folder (or that of the models); both names have at most 31 characters. options: Creo's numbers, that show the
// drawing, show the errors of its template or write them to a file. ProExists: a drawing of that name is in memory;
// ProNotFound: no such template or model; ProBadInputs: a name that can't be one. Errors inside the template don't
// count as long as there is a drawing. Raises notification 100.
Got<ProMdl> ProDrawingFromTmpltCreate(const std::wstring& name, const std::wstring& templateName, ProMdl model,
                                      unsigned options);
// Works out the draft items of the drawing, such as its notes, whose texts follow the current model. ProGeneralError: a
// model of the drawing can't be retrieved.
ProError ProDwgDraftRegenerate(ProMdl drawing);

// ---- sheets

Got<int> ProDrawingSheetsCount(ProMdl drawing);
Got<int> ProDrawingCurrentSheetGet(ProMdl drawing);
ProError ProDrawingCurrentSheetSet(ProMdl drawing, int sheet);
// Its own name, else the one that Creo gives it by its number.
Got<std::wstring> ProDrawingSheetNameGet(ProMdl drawing, int sheet);
Got<ProSheetDimensions> ProDrawingSheetSizeGet(ProMdl drawing, int sheet);
Got<ProSheetInfo> ProDrawingSheetInfoGet(ProMdl drawing, int sheet);
Got<ProSheetMatrix> ProDrawingSheetTrfGet(ProMdl drawing, int sheet);
// The scale at which a sheet shows a model; a sheet below 1 is the current one. No model: the drawing's default one,
// and 1 where it has none. ProGeneralError: the drawing lacks the model.
Got<double> ProDrawingScaleGet(ProMdl drawing, ProMdl solid, int sheet);
// The name of the sheet's format. ProNotFound: it has none.
Got<std::wstring> ProDrawingFormatGet(ProMdl drawing, int sheet);

// ---- dimensions

// The dimensions (type dimension) or reference dimensions that the drawing stores. Others that were made in it lie in
// its models: the option create_drawing_dims_only decides.
ProError ProDrawingDimensionVisit(ProMdl drawing, bool reference, Visitor<ProDimension> visitor);
// Does the drawing show the dimension? Its own are always shown. ProNotFound: the dimension has gone. ProNoLicense:
// Creo answers with a license alone.
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
// ProNotFound: the drawing has none.
Got<std::vector<ProDtlsymdef>> ProDrawingDtlsymdefsCollect(ProMdl drawing);
Got<std::wstring> ProDtlsymdefNameGet(const ProDtlsymdef& definition);
// The placed symbols of a sheet. ProNotFound: it has none.
Got<std::vector<ProDtlsyminst>> ProDrawingDtlsyminstsCollect(ProMdl drawing, int sheet);
// ProNotFound: the drawing lacks the definition of the symbol.
Got<ProDtlsymdef> ProDtlsyminstDefGet(const ProDtlsyminst& symbol);

}  // namespace creo

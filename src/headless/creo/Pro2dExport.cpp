// Drawings as exchange drawings.
#include "creo/ProIntf.h"
#include "headless/creo/drawing_operation.h"
#include "headless/exports/dxf_file.h"
#include "headless/exports/export_file.h"
#include "headless/pictures/drawn_views.h"

namespace creo {

using headless::Model;
using headless::onModel;
using headless::operation;
using State = headless::Session::State;

Got<Pro2dExportdata> Pro2dExportdataAlloc() {
  return operation("Pro2dExportdataAlloc", [](State&) -> Got<Pro2dExportdata> { return Pro2dExportdata{}; });
}

ProError Pro2dExportdataSheetoptionSet(Pro2dExportdata& data, Pro2dSheets sheets) {
  return operation("Pro2dExportdataSheetoptionSet", [&](State&) -> ProError {
    data.sheets = sheets;
    return ProNoError;
  });
}

ProError Pro2dExport(Pro2dFormat format, const std::wstring& name, ProMdl drawing, const Pro2dExportdata& data) {
  return onModel("Pro2dExport", drawing, [&](State& state, Model& m) -> ProError {
    if (name.empty() || name.ends_with(L'\\') || name.ends_with(L'/')) return ProBadInputs;
    if (!headless::hasSheets(m.type())) return ProInvalidType;
    if (format == Pro2dFormat::dwg) return ProNoLicense;
    const int current = headless::currentSheetOf(*m.document);
    const bool isAll = data.sheets == Pro2dSheets::all;
    const int first = isAll ? 1 : current, last = isAll ? headless::sheetCount(*m.document) : current;
    std::vector<headless::SheetPicture> sheets;
    headless::ShownModels models(state.pictureSources());
    for (int sheet = first; sheet <= last; ++sheet)
      sheets.push_back(headless::sheetPicture(state.pictureSources(), models, m, sheet));
    return headless::writeExport(state.models, name + L".dxf", headless::dxfOf(sheets));
  });
}

ProError Pro2dExportdataFree(Pro2dExportdata& data) {
  return operation("Pro2dExportdataFree", [&](State&) -> ProError {
    data = {};
    return ProNoError;
  });
}

}  // namespace creo
